#include "online/MonitoredItems.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "session/Project.h"

namespace velmoor {
namespace {

constexpr std::array<MonitoredItem, kMonitoredItems - 1> kItems{{
    {"Current Position:", ValueCommand::currentPosition, ValueKind::distance, 0},
    {"Following Error:", ValueCommand::followingError, ValueKind::distance, 0},
    {"Target Position:", ValueCommand::targetPosition, ValueKind::distance, 0},
    {"Distance to Target:", ValueCommand::distanceToTarget, ValueKind::distance, 0},
    {"Registration Position:", ValueCommand::registrationPosition, ValueKind::distance, 0},
    {"Distance to Registration:", ValueCommand::distanceToRegistration, ValueKind::distance, 0},
    {"Current Motor Position:", ValueCommand::motorPosition, ValueKind::distance, 0},
    {"Motor Speed:", ValueCommand::motorSpeed, ValueKind::speed, 0},
    {"Speed Reference:", ValueCommand::speedReference, ValueKind::speed, 0},
    {"Torque:", ValueCommand::torque, ValueKind::torque, 0},
    {"Status Flags:", ValueCommand::status, ValueKind::bits, 7},
    {"VKLM Inputs", ValueCommand::amplifierInputs, ValueKind::bits, 8},
    {"RX900 Inputs", ValueCommand::optionInputs, ValueKind::bits, 8},
    {"VKLM Outputs", ValueCommand::amplifierOutputs, ValueKind::bits, 8},
    {"RX900 Outputs", ValueCommand::optionOutputs, ValueKind::bits, 8},
}};

constexpr std::array<std::string_view, 7> kStatusFlags{"In Position",
                                                       "Near",
                                                       "Reference Position Complete",
                                                       "Free Hold",
                                                       "Program Operation",
                                                       "Current Limit Active",
                                                       "Main Power On"};

// Of items 11 to 14.
constexpr std::array<std::array<std::string_view, 8>, 4> kLines{
    {{"/S-ON, Pin 40", "/SEL5, Pin 41", "P-OT, Pin 42", "N-OT, Pin 43", "/DEC, Pin 44",
      "/SEL6, Pin 45", "/RGRT, Pin 46", "Fixed @ 0"},
     {"/MODE0/1, Pin 3", "/START-STOP;/HOME, Pin 5", "/PGMRES;/JOGP, Pin 7", "/SEL0;/JOGN, Pin 9",
      "/SEL1;/JOG0, Pin 11", "/SEL2;/JOG1, Pin 13", "/SEL3;/JOG2, Pin 15", "/SEL4;/JOG3, Pin 17"},
     {"ALM, Pin 31,32", "/WRN, Pin 25,26", "/BK, Pin 27,28", "/S-RDY, Pin 29,30", "AL01, Pin 37",
      "AL02, Pin 38", "AL03, Pin 39", "Fixed @ 0"},
     {"/INPOSITION, Pin 19,20", "/POUT0, Pin 21,22", "/POUT1, Pin 23,24", "/POUT2, Pin 25,26",
      "/POUT3, Pin 27,28", "/POUT4, Pin 29,30", "Unused", "Unused"}}};

}  // namespace

std::span<const MonitoredItem> MonitoredItems() {
  return kItems;
}

std::string_view WordOf(ValueCommand command) {
  return kValueCommands.at(static_cast<std::size_t>(command));
}

std::string NameOf(const MonitoredItem& item) {
  return std::string(item.label.substr(0, item.label.find(':')));
}

std::optional<int> ItemNamed(std::string_view word) {
  const std::string wanted = UpperCase(Trim(word));
  const auto* const found = std::ranges::find_if(
      kItems, [&wanted](const MonitoredItem& item) { return WordOf(item.command) == wanted; });
  if (found == kItems.end()) return std::nullopt;
  return static_cast<int>(found - kItems.begin());
}

std::string NoItem(std::string_view word) {
  std::string refusal = "'" + UpperCase(Trim(word)) + "' is none of";
  for (const MonitoredItem& item : kItems) refusal.append(" ").append(WordOf(item.command));
  return refusal;
}

std::span<const std::string_view> StatusFlags() {
  return kStatusFlags;
}

std::array<std::string, 8> LineNames(int item, bool isOptionVersionNew) {
  std::array<std::string, 8> names;
  const auto& lines = kLines.at(static_cast<std::size_t>(item - kStatusItem - 1));
  for (std::size_t i = 0; i < names.size(); ++i) {
    names[i] = lines[i];
    const bool isNew = lines[i].starts_with("/SEL5,") || lines[i].starts_with("/SEL6,");
    if (isNew && !isOptionVersionNew) names[i].replace(0, names[i].find(','), "Unavailable");
  }
  return names;
}

std::string BitWords(int item, std::int32_t raw) {
  std::string words;
  for (std::size_t bit = 0; bit < kItems.at(static_cast<std::size_t>(item)).bits; ++bit) {
    if (((static_cast<std::uint32_t>(raw) >> bit) & 1U) == 0) continue;
    const std::string name =
        item == kStatusItem ? std::string(kStatusFlags.at(bit)) : LineNames(item, true).at(bit);
    words += (words.empty() ? "" : ", ") + name.substr(0, name.find(','));
  }
  return words;
}

// ---- units

MonitoredUnits::MonitoredUnits(const Project& project, float feedConstant)
    : sUnits_(project.DistanceUnits()),
      sTimeUnits_(project.TimeUnits()),
      dblConversionForDistance_(project.ConversionForDistance()),
      dblConversionForTime_(project.ConversionForTime()),
      sngFeedConstant_(feedConstant),
      intRes_(project.Resolution()) {}

bool MonitoredUnits::Converts(ValueKind kind) const {
  return machineUnits_ && (kind == ValueKind::distance || kind == ValueKind::speed);
}

std::string MonitoredUnits::UnitOf(ValueKind kind) const {
  switch (kind) {
    case ValueKind::distance:
      return machineUnits_ ? sUnits_ : "reference units";
    case ValueKind::speed:
      // The time unit's whole word, deliberately.
      return machineUnits_ ? sUnits_ + "/" + sTimeUnits_ : "rpm";
    case ValueKind::torque:
      return "% of rated torque";
    case ValueKind::bits:
      break;
  }
  return {};
}

double MonitoredUnits::Convert(std::int32_t raw, ValueKind kind) const {
  const auto value = static_cast<double>(raw);
  if (!Converts(kind)) return value;
  if (kind == ValueKind::distance) {
    return dblConversionForDistance_ == 0 ? 0 : value / dblConversionForDistance_;
  }
  return value / dblConversionForTime_ * static_cast<double>(sngFeedConstant_);
}

int MonitoredUnits::Decimals(ValueKind kind) const {
  return Converts(kind) ? intRes_ : 0;
}

std::string MonitoredUnits::Text(std::int32_t raw, ValueKind kind) const {
  return Converts(kind) ? FixedText(Convert(raw, kind), intRes_) : NumberText(raw);
}

}  // namespace velmoor
