#include "tables/frmDialogPosition.h"

#include <array>

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "tables/CellRules.h"

namespace velmoor {
namespace {

// The cells of the kinds without a distance, by the kind's number.
constexpr std::array<const char*, 6> kWords{"", "", "+INFINITE", "-INFINITE", "-", "STOP"};

}  // namespace

void frmDialogPosition::SetPositionCell(const std::string& cell) {
  intPosition_ = 0;
  strDistance_.clear();
  const std::string kind = Left(cell, 1);
  if (kind == "I" || kind == "A") {
    intPosition_ = kind == "A" ? 1 : 0;
    strDistance_ = cell.substr(1);
    return;
  }
  for (std::size_t i = 2; i < kWords.size(); ++i) {
    if (cell == kWords[i]) intPosition_ = static_cast<int>(i);
  }
}

std::string frmDialogPosition::PositionCell() const {
  if (!TakesDistance()) return kWords[static_cast<std::size_t>(intPosition_)];
  const char sign = strDistance_.empty() ? '+' : strDistance_.front();
  const std::string kind = intPosition_ == 1 ? "A" : "I";
  return kind + (sign == '+' || sign == '-' ? "" : "+") + strDistance_;
}

void frmDialogPosition::FormLoad() {
  ui().optPosition.SetValue(intPosition_);
  ui().txtDistance.SetText(strDistance_);
  ui().lblUnit.SetText(project_.DistanceUnits());
  connections_ += ui().optPosition.Click.Connect([this](int index) {
    intPosition_ = index;
    EnableDistanceBox();
  });
  connections_ +=
      ui().txtDistance.Validate.Connect([this](bool& cancel) { txtDistance_Validate(cancel); });
  EnableDistanceBox();
}

void frmDialogPosition::EnableDistanceBox() {
  ui().txtDistance.SetEnabled(TakesDistance());
}

void frmDialogPosition::txtDistance_Validate(bool& cancel) {
  TextBox& box = ui().txtDistance;
  const std::string text(Trim(box.Text()));
  if (text.empty()) {
    strDistance_.clear();
    return;
  }
  const CellCheck check = CheckDialogDistance(project_, text);
  if (!check.accepted) {
    ShowExclamation(check.words);
    box.SetText(strDistance_);
    box.SelectAll();
    cancel = true;
    return;
  }
  strDistance_ = check.text;
  box.SetText(strDistance_);
}

bool frmDialogPosition::TakeResult() {
  if (!TakesDistance()) return true;
  bool cancel = false;
  txtDistance_Validate(cancel);
  if (cancel) return false;
  if (!strDistance_.empty()) return true;
  ShowExclamation("Distance is required for relative or absolute moves!");
  return false;
}

}  // namespace velmoor
