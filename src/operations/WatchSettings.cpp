#include "operations/WatchSettings.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "online/MonitoredItems.h"
#include "platform/Files.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::int64_t kMostMegabytes = 1'000'000;
constexpr std::int64_t kMostSeconds = 3600;

struct TextKey {
  const char* name;
  std::string WatchSettings::*field;
  bool isPath;
};
constexpr std::array kTexts{TextKey{"broker", &WatchSettings::broker, false},
                            TextKey{"topic", &WatchSettings::topic, false},
                            TextKey{"user", &WatchSettings::user, false},
                            TextKey{"password_file", &WatchSettings::passwordFile, true},
                            TextKey{"authority", &WatchSettings::authority, true},
                            TextKey{"certificate", &WatchSettings::certificate, true},
                            TextKey{"key", &WatchSettings::key, true},
                            TextKey{"folder", &WatchSettings::folder, true},
                            TextKey{"csv", &WatchSettings::csv, true},
                            TextKey{"metrics", &WatchSettings::metrics, true},
                            TextKey{"listen", &WatchSettings::listen, false}};

struct NumberKey {
  const char* name;
  std::int64_t WatchSettings::*field;
  std::int64_t least, most;
};
constexpr std::array kNumbers{
    NumberKey{"spool", &WatchSettings::spool, 8, kMostMegabytes},
    NumberKey{"recordings", &WatchSettings::recordings, 1, kMostMegabytes},
    NumberKey{"csv_limit", &WatchSettings::csvLimit, 1, kMostMegabytes},
    NumberKey{"every", &WatchSettings::every, 0, kMostSeconds}};

std::string KeyNames() {
  std::string names;
  for (const TextKey& key : kTexts) names += std::string(key.name) + ", ";
  for (const NumberKey& key : kNumbers) names += std::string(key.name) + ", ";
  return DropRight(names, 2) + " and items";
}

class WatchReader {
 public:
  using Fault = std::function<void(int, const std::string&)>;
  WatchReader(const std::string& folder, const Fault& fault) : folder_(folder), fault_(fault) {}

  void Take(const KeyedEntry& entry) {
    if (const auto* const text = std::ranges::find(kTexts, entry.key, &TextKey::name);
        text != kTexts.end()) {
      TakeText(*text, entry);
    } else if (const auto* const number = std::ranges::find(kNumbers, entry.key, &NumberKey::name);
               number != kNumbers.end()) {
      TakeNumber(*number, entry);
    } else if (entry.key == "items") {
      TakeItems(entry);
    } else {
      fault_(entry.value.line, "'" + entry.key + "' is none of " + KeyNames());
    }
  }

  WatchSettings settings;

 private:
  void TakeText(const TextKey& key, const KeyedEntry& entry) {
    const std::string& text = entry.value.text;
    if (entry.value.kind != KeyedNode::Kind::text || text.empty()) {
      return fault_(entry.value.line, entry.key + " takes a text in quotes");
    }
    const bool joins = key.isPath && !text.starts_with('/');
    settings.*key.field = joins ? JoinPath(folder_, text) : text;
  }

  void TakeNumber(const NumberKey& key, const KeyedEntry& entry) {
    const auto number =
        entry.value.kind == KeyedNode::Kind::whole ? ParseWhole(entry.value.text) : std::nullopt;
    if (!number || *number < key.least || *number > key.most) {
      return fault_(entry.value.line, entry.key + " takes a whole number from " +
                                          NumberText(key.least) + " to " + NumberText(key.most));
    }
    settings.*key.field = *number;
  }

  void TakeItems(const KeyedEntry& entry) {
    std::vector<std::string> words;
    for (const KeyedNode& item : entry.value.items) words.push_back(item.text);
    if (entry.value.kind != KeyedNode::Kind::list) {
      return fault_(entry.value.line, "items takes a list of words in quotes");
    }
    try {
      settings.items = WatchedItems(words);
    } catch (const std::invalid_argument& unknown) {
      fault_(entry.value.line, unknown.what());
    }
  }

  const std::string& folder_;
  const Fault& fault_;
};

}  // namespace

WatchSettings ReadWatchSettings(const KeyedNode& table, const std::string& folder,
                                const std::function<void(int, const std::string&)>& fault) {
  WatchReader reader(folder, fault);
  for (const KeyedEntry& entry : table.entries) reader.Take(entry);
  return reader.settings;
}

const std::vector<int>& AlwaysWatched() {
  static const std::vector<int> kItems{kStatusItem, kPositionItem, kSpeedItem, kTorqueItem};
  return kItems;
}

std::vector<int> WatchedItems(const std::vector<std::string>& words) {
  std::vector<int> chosen;
  for (const std::string& word : words) {
    const auto item = ItemNamed(word);
    if (!item) throw std::invalid_argument(NoItem(word));
    const auto has = [&item](const std::vector<int>& list) {
      return std::ranges::find(list, *item) != list.end();
    };
    if (!has(AlwaysWatched()) && !has(chosen)) chosen.push_back(*item);
  }
  return chosen;
}

}  // namespace velmoor
