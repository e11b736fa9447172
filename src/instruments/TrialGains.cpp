#include "instruments/TrialGains.h"

#include <algorithm>
#include <array>

#include "platform/Numbers.h"
#include "tools/clsHX7Tuning.h"

namespace velmoor {
namespace {

enum Column { kNumber, kName, kPresent, kNext };
constexpr std::array<const char*, 4> kHeadings{"Gain", "Name", "Now", "To Be Sent"};

}  // namespace

void TrialGains::Read(const clsHX7Tuning& tuning) {
  gains_.clear();
  for (int row = 1; row <= tuning.RowsInArray(); ++row) {
    const ParameterRow described = tuning.Describe(row);
    gains_.push_back({described.name, described.description, described.value, described.value});
  }
}

bool TrialGains::IsEdited() const {
  return std::ranges::any_of(gains_, [](const Gain& gain) { return gain.edited != gain.value; });
}

std::vector<std::string> TrialGains::Values() const {
  std::vector<std::string> values;
  for (const Gain& gain : gains_) values.push_back(gain.value);
  return values;
}

std::vector<std::string> TrialGains::Edited() const {
  std::vector<std::string> values;
  for (const Gain& gain : gains_) values.push_back(gain.edited);
  return values;
}

void TrialGains::Edit(const std::vector<std::string>& values) {
  for (std::size_t i = 0; i < gains_.size(); ++i) gains_[i].edited = values.at(i);
}

std::vector<std::string> TrialGains::Assignments(const std::vector<std::string>& values) const {
  std::vector<std::string> assignments;
  for (std::size_t i = 0; i < gains_.size(); ++i) {
    const std::string& value = values.at(i);
    if (value != gains_[i].value) assignments.push_back(gains_[i].number + "=" + value);
  }
  return assignments;
}

std::string TrialGains::Text(int row, int column) const {
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  const Gain& gain = gains_.at(static_cast<std::size_t>(row) - 1);
  const std::array<const std::string*, 4> cells{&gain.number, &gain.name, &gain.value,
                                                &gain.edited};
  return *cells.at(static_cast<std::size_t>(column));
}

void TrialGains::SetText(int row, int column, const std::string& text) {
  if (column == kNext) gains_.at(static_cast<std::size_t>(row) - 1).edited = Trim(text);
}

CellTraits TrialGains::Traits(int row, int column) const {
  CellTraits traits;
  if (row == 0) return traits;
  const Gain& gain = gains_.at(static_cast<std::size_t>(row) - 1);
  traits.editable = column == kNext;
  traits.bold = column == kNext && gain.edited != gain.value;
  return traits;
}

}  // namespace velmoor
