#include "instruments/TriggerChoices.h"

#include "online/MonitoredItems.h"
#include "platform/Numbers.h"

namespace velmoor {

std::vector<TriggerChoice> TriggerChoices(const std::vector<RecordedItem>& items) {
  using Kind = TriggerChoice::Kind;
  std::vector<TriggerChoice> choices{{.text = "by hand"}};
  for (int i = 0; i < kMonitoredValues; ++i) {
    const RecordedItem& item = items.at(static_cast<std::size_t>(i));
    choices.push_back({item.name, Kind::value, item});
  }
  choices.push_back({"Alarm", Kind::alarm, items.back()});
  choices.push_back({"Programme step", Kind::step});
  for (int i = kStatusItem; i < kAlarmItem; ++i) {
    const RecordedItem& item = items.at(static_cast<std::size_t>(i));
    const std::size_t bits = MonitoredItems()[static_cast<std::size_t>(i)].bits;
    for (std::size_t bit = 0; bit < bits; ++bit) {
      const std::string name =
          i == kStatusItem ? std::string(StatusFlags()[bit]) : LineNames(i, true).at(bit);
      if (name == "Unused" || name == "Fixed @ 0") continue;
      choices.push_back({item.name + ": " + name, Kind::bit, item, static_cast<int>(bit)});
    }
  }
  return choices;
}

std::vector<std::string> EventsOf(const TriggerChoice& choice) {
  switch (choice.kind) {
    case TriggerChoice::Kind::value:
      return {"rises to", "falls to"};
    case TriggerChoice::Kind::bit:
      return {"turns on", "turns off"};
    default:
      return {};
  }
}

std::optional<Trigger> TriggerOf(const TriggerChoice& choice, int event, const std::string& level) {
  const bool second = event == 1;
  if (choice.kind == TriggerChoice::Kind::alarm) {
    return Trigger{choice.item.name, TriggerKind::rises, 1, "an alarm comes"};
  }
  const std::string words = choice.text + " " + EventsOf(choice).at(second ? 1 : 0);
  if (choice.kind == TriggerChoice::Kind::bit) {
    return Trigger{choice.item.name, second ? TriggerKind::bitOff : TriggerKind::bitOn,
                   static_cast<double>(choice.bit), words};
  }
  const auto number = ParseFloat(Trim(level));
  if (!number) return std::nullopt;
  return Trigger{choice.item.name, second ? TriggerKind::falls : TriggerKind::rises, *number,
                 words + " " + NumberText(*number) + " " + choice.item.unit};
}

}  // namespace velmoor
