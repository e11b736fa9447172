#include "operations/TransferHistory.h"

#include <algorithm>

#include "platform/Files.h"
#include "platform/KeyedText.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

using Kind = KeyedNode::Kind;

constexpr const char* kList = "history.toml";
constexpr const char* kHead =
    "# What Velmoor has moved between this project and its amplifiers; the states lie beside it.\n";

std::string WordsOf(const std::vector<Tool>& parts) {
  std::string words;
  for (const Tool part : parts)
    words += (words.empty() ? "" : ",") + std::string(InfoOf(part).word);
  return words;
}

std::vector<Tool> PartsNamed(const std::string& words) {
  std::vector<Tool> parts;
  for (const Tool part : kUploadOrder) {
    if (("," + words + ",").find("," + std::string(InfoOf(part).word) + ",") != std::string::npos) {
      parts.push_back(part);
    }
  }
  return parts;
}

// A file of the folder, and of no other.
bool IsPlainName(const std::string& name) {
  return name.find('/') == std::string::npos && !name.starts_with('.');
}

std::string TextOf(const KeyedNode& table, const char* key) {
  const KeyedNode* const found = table.Find(key);
  return found != nullptr && found->kind == Kind::text ? found->text : std::string();
}

HistoryEntry EntryIn(int number, const KeyedNode& table) {
  HistoryEntry entry{.number = number,
                     .moment = TextOf(table, "moment"),
                     .axis = TextOf(table, "axis"),
                     .name = TextOf(table, "transfer"),
                     .upload = TextOf(table, "way") == "upload",
                     .parts = PartsNamed(TextOf(table, "parts")),
                     .result = TextOf(table, "result"),
                     .cause = TextOf(table, "cause"),
                     .before = TextOf(table, "before"),
                     .after = TextOf(table, "after"),
                     .read = TextOf(table, "known") == "read"};
  if (!IsPlainName(entry.before)) entry.before.clear();
  if (!IsPlainName(entry.after)) entry.after.clear();
  return entry;
}

std::string Line(const char* key, const std::string& text) {
  return text.empty() ? std::string() : std::string(key) + " = " + QuotedText(text) + "\n";
}

std::string InText(const HistoryEntry& entry) {
  return "\n[entry." + NumberText(entry.number) + "]\n" + Line("moment", entry.moment) +
         Line("axis", entry.axis) + Line("transfer", entry.name) +
         Line("way", entry.upload ? "upload" : "download") + Line("parts", WordsOf(entry.parts)) +
         Line("result", entry.result) + Line("cause", entry.cause) + Line("before", entry.before) +
         Line("known", entry.before.empty() ? ""
                       : entry.read         ? "read"
                                            : "sent") +
         Line("after", entry.after);
}

bool IsWhole(const HistoryEntry& entry) {
  return entry.parts.size() == kUploadOrder.size();
}

}  // namespace

std::string ResultOf(const HistoryEntry& entry) {
  return entry.result == kUnderWay ? "interrupted" : entry.result;
}

std::string PartsOf(const HistoryEntry& entry) {
  if (IsWhole(entry)) return "everything";
  std::string parts;
  for (const Tool part : entry.parts) {
    parts += (parts.empty() ? "" : ", ") + std::string(InfoOf(part).item);
  }
  return parts;
}

TransferHistory::TransferHistory(const std::string& project)
    : project_(project),
      folder_(
          JoinPath(GetFileDirectory(project), DropRight(GetFileTitle(project), 4) + ".history")) {
  Read();
}

void TransferHistory::Read() {
  const std::string path = JoinPath(folder_, kList);
  if (!world().files->Exists(path)) return;
  if (world().keyedTexts == nullptr) throw FileError(path + ": this program reads no history");
  try {
    const KeyedNode root = world().keyedTexts->Read(world().files->ReadAll(path));
    const KeyedNode* const next = root.Find("next");
    if (next != nullptr) next_ = static_cast<int>(ParseWhole(next->text).value_or(1));
    const KeyedNode* const list = root.Find("entry");
    if (list == nullptr) return;
    for (const KeyedEntry& each : list->entries) {
      const auto number = ParseWhole(each.key);
      if (!number || each.value.kind != Kind::table) continue;
      entries_.push_back(EntryIn(static_cast<int>(*number), each.value));
      next_ = std::max(next_, entries_.back().number + 1);
    }
  } catch (const KeyedTextError& error) {
    throw FileError(path + ":" + NumberText(error.Line()) + ": " + error.what());
  }
  std::ranges::sort(entries_, {}, &HistoryEntry::number);
}

void TransferHistory::Write() const {
  std::string text = std::string(kHead) + "next = " + NumberText(next_) + "\n";
  for (const HistoryEntry& entry : entries_) text += InText(entry);
  const std::string path = JoinPath(folder_, kList);
  world().files->WriteDurably(path, text);
}

const HistoryEntry* TransferHistory::Find(int number) const {
  const auto found = std::ranges::find(entries_, number, &HistoryEntry::number);
  return found == entries_.end() ? nullptr : &*found;
}

std::string TransferHistory::PathOf(const std::string& state) const {
  return JoinPath(folder_, state);
}

bool TransferHistory::IsContentKnown(const std::string& axis) const {
  return std::ranges::any_of(entries_, [&axis](const HistoryEntry& entry) {
    if (entry.axis != axis) return false;
    return !entry.before.empty() || (IsWhole(entry) && entry.result.starts_with("complete"));
  });
}

std::string TransferHistory::KnownState(const std::string& axis) const {
  for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
    if (entry->axis != axis) continue;
    const bool known = IsWhole(*entry) && entry->result.starts_with("complete");
    return known ? entry->after : std::string();
  }
  return {};
}

std::string TransferHistory::Keep(int number, const std::string& what, const std::string& source) {
  const std::string name = NumberText(number) + "-" + what + ".spj";
  world().files->MakeOwnFolder(folder_, project_);
  world().files->SaveDurably(source, PathOf(name), project_);
  return name;
}

void TransferHistory::Put(const HistoryEntry& entry) {
  const auto place = std::ranges::find(entries_, entry.number, &HistoryEntry::number);
  if (place == entries_.end()) {
    entries_.push_back(entry);
  } else {
    *place = entry;
  }
  next_ = std::max(next_, entry.number + 1);
  world().files->MakeOwnFolder(folder_, project_);
  DropOldest();
  Write();
}

bool TransferHistory::IsStateOf(const std::string& state) const {
  return std::ranges::any_of(entries_, [&state](const HistoryEntry& entry) {
    return entry.before == state || entry.after == state;
  });
}

// A state may be that of two entries: what one has brought is what the next has overwritten.
void TransferHistory::DropOldest() {
  while (entries_.size() > kEntries) {
    const HistoryEntry oldest = entries_.front();
    entries_.erase(entries_.begin());
    for (const std::string& state : {oldest.before, oldest.after}) {
      if (!state.empty() && !IsStateOf(state)) world().files->Remove(PathOf(state));
    }
  }
}

}  // namespace velmoor
