#include "app/frmHistory.h"

#include <array>

#include "platform/Numbers.h"
#include "platform/Trapped.h"

namespace velmoor {
namespace {

enum Column { kMoment, kAxis, kTransfer, kParts, kResult, kBefore, kColumns };
constexpr std::array<const char*, kColumns> kHeadings{"When", "Axis",   "Transfer",
                                                      "What", "Result", "Before It"};
constexpr std::array<int, kColumns> kWidths{22, 6, 24, 28, 22, 26};

constexpr std::array<const char*, 5> kChangeHeadings{"Part", "Row", "Field", "Before", "Behind"};
constexpr std::array<int, 5> kChangeWidths{18, 10, 26, 24, 24};

std::string BeforeOf(const HistoryEntry& entry) {
  if (entry.before.empty()) return "not known";
  if (entry.upload) return "the project's values";
  return entry.read ? "read from the amplifier" : "as it was sent last";
}

Tone ToneOf(const HistoryEntry& entry) {
  return entry.result.starts_with("complete") ? Tone::good : Tone::alarm;
}

template <std::size_t Count>
void SetWidths(Grid& grid, const std::array<int, Count>& widths) {
  for (std::size_t i = 0; i < Count; ++i) grid.SetColumnWidth(static_cast<int>(i), widths[i]);
}

}  // namespace

frmHistory::frmHistory(const std::string& project, Actions actions)
    : project_(project), actions_(std::move(actions)), history_(project) {}

void frmHistory::FormLoad() {
  ui().vsEntries.Bind(this);
  ui().vsFG.Bind(&changes_);
  SetWidths(ui().vsEntries, kWidths);
  SetWidths(ui().vsFG, kChangeWidths);
  connections_ += ui().vsEntries.RowColChange.Connect([this] { ShowEntry(); });
  connections_ += ui().vsEntries.Tip.Connect([this](int row, int column, std::string& tip) {
    tip =
        row > 0 && column == kResult && !At(row).cause.empty() ? At(row).cause : Text(row, column);
  });
  connections_ += ui().optState.Click.Connect([this](int) { OfferState(); });
  connections_ += ui().cmdCompare.Click.Connect([this] {
    const HistoryChoice choice = Chosen();
    Trapped("frmHistory.cmdCompare_Click: ", [&] {
      actions_.compare(choice, PathOf(choice));
      return true;
    });
  });
  connections_ += ui().cmdSend.Click.Connect([this] { SendBack(); });
  connections_ += ui().cmdCancel.Click.Connect([this] { Unload(); });
  ShowAll();
}

int frmHistory::Columns() const {
  return kColumns;
}

const HistoryEntry& frmHistory::At(int row) const {
  return history_.Entries().at(history_.Entries().size() - static_cast<std::size_t>(row));
}

std::string frmHistory::Text(int row, int column) const {
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  const HistoryEntry& entry = At(row);
  switch (column) {
    case kMoment:
      return entry.moment;
    case kAxis:
      return entry.axis;
    case kTransfer:
      return entry.name;
    case kParts:
      return PartsOf(entry);
    case kResult:
      return ResultOf(entry);
    default:
      return BeforeOf(entry);
  }
}

CellTraits frmHistory::Traits(int row, int column) const {
  CellTraits traits;
  if (row > 0 && column == kResult) traits.tone = ToneOf(At(row));
  return traits;
}

int frmHistory::Changes::Columns() const {
  return static_cast<int>(kChangeHeadings.size());
}

std::string frmHistory::Changes::Text(int row, int column) const {
  if (row == 0) return kChangeHeadings.at(static_cast<std::size_t>(column));
  const ProjectDifference& value = values.at(static_cast<std::size_t>(row) - 1);
  const std::array<const std::string*, 5> cells{&value.part, &value.row, &value.field, &value.first,
                                                &value.second};
  return *cells.at(static_cast<std::size_t>(column));
}

HistoryChoice frmHistory::Chosen() const {
  const int row = ui().vsEntries.Row();
  if (row < 1 || row >= Rows()) return {};
  return {&At(row), ui().optState.Value() == 1};
}

std::string frmHistory::PathOf(const HistoryChoice& choice) const {
  return history_.PathOf(choice.after ? choice.entry->after : choice.entry->before);
}

void frmHistory::ShowAll() {
  const std::size_t count = history_.Entries().size();
  ui().lblSummary.SetText(
      count == 0
          ? "Nothing was sent to the amplifier yet, and nothing read from it."
          : NumberText(count) + (count == 1 ? " transfer" : " transfers") +
                ", the newest first. A state can be compared with the project and sent back.");
  ui().vsEntries.Refresh();
  if (count > 0) ui().vsEntries.SetCurrent(1, kMoment);
  ShowEntry();
}

void frmHistory::ShowEntry() {
  changes_.values.clear();
  const HistoryEntry* const entry = Chosen().entry;
  std::string words;
  if (entry != nullptr) {
    const bool known = !entry->before.empty() && !entry->after.empty();
    words = "What it has changed is not known: nothing was kept of what was there before.";
    if (known) {
      Trapped("frmHistory.ShowEntry: ", [&] {
        for (PartComparison& part :
             CompareProjects(history_.PathOf(entry->before), history_.PathOf(entry->after))) {
          for (ProjectDifference& value : part.differences) {
            changes_.values.push_back(std::move(value));
          }
        }
        return true;
      });
      words = "Values that it was to change: " + NumberText(changes_.values.size()) + ".";
    }
    if (!entry->cause.empty()) words += "  " + entry->cause;
  }
  ui().lblChanges.SetText(words);
  ui().vsFG.Refresh();
  ui().optState.SetValue(entry != nullptr && entry->upload ? 1 : 0);
  OfferState();
}

void frmHistory::OfferState() {
  const HistoryChoice choice = Chosen();
  const bool has = choice.entry != nullptr &&
                   !(choice.after ? choice.entry->after : choice.entry->before).empty();
  ui().cmdCompare.SetEnabled(has);
  ui().cmdSend.SetEnabled(has);
}

void frmHistory::SendBack() {
  const HistoryChoice choice = Chosen();
  if (choice.entry == nullptr) return;
  const HistoryEntry entry = *choice.entry;
  (void)actions_.sendBack({&entry, choice.after});
  Trapped("frmHistory.SendBack: ", [this] {
    history_ = TransferHistory(project_);
    return true;
  });
  ShowAll();
}

}  // namespace velmoor
