#include "app/LinePage.h"

#include <algorithm>

#include "platform/Files.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

enum Column {
  kChosen,
  kAxis,
  kName,
  kState,
  kAlarm,
  kProject,
  kAmplifier,
  kMotor,
  kFirmware,
  kColumns
};
constexpr std::array<const char*, kColumns> kHeadings{
    "Chosen",  "Axis",      "Name",           "State",           "Alarm",
    "Project", "Amplifier", "Motor, Encoder", "Firmware, Option"};
constexpr std::array<int, kColumns> kWidths{7, 5, 20, 15, 22, 14, 16, 26, 14};

}  // namespace

void LinePage::ShowLine(const std::string& title, const std::string& place) {
  if (!IsOpen() && !Show(FormMode::page)) return;
  if (ui().lblTitle.Text() == title && ui().lblPlace.Text() == place) return;
  ui().lblTitle.SetText(title);
  ui().lblPlace.SetText(place);
  Refresh();
}

std::array<Button*, kLineActions> LinePage::Buttons() const {
  const layouts::frmLine& page = ui();
  return {&page.cmdInfo,        &page.cmdCompare, &page.cmdDownloadNew,
          &page.cmdDownloadAll, &page.cmdUpload,  &page.cmdResetAlarm,
          &page.cmdSet,         &page.cmdCopy,    &page.cmdReport};
}

void LinePage::FormLoad() {
  const auto buttons = Buttons();
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    connections_ += buttons.at(i)->Click.Connect(
        [this, action = static_cast<LineAction>(i)] { hooks_.act(action); });
  }
  connections_ += ui().cmdAll.Click.Connect([this] { ChooseAll(true); });
  connections_ += ui().cmdNone.Click.Connect([this] { ChooseAll(false); });
  Grid& grid = ui().vsAxes;
  grid.Bind(this);
  for (int column = 0; column < kColumns; ++column) {
    grid.SetColumnWidth(column, kWidths.at(static_cast<std::size_t>(column)));
  }
  connections_ += grid.CellButton.Connect([this](int row, int) { Choose(row); });
  connections_ += grid.KeyDown.Connect([this](KeyEvent& key) { OnKey(key); });
  connections_ += grid.RowColChange.Connect([this] { OfferActions(); });
  connections_ +=
      grid.RowChosen.Connect([this](int row) { hooks_.open(static_cast<std::size_t>(row) - 1); });
  connections_ += grid.Tip.Connect([this](int row, int column, std::string& tip) {
    tip = column == kProject ? At(row).axis.project : Text(row, column);
  });
}

void LinePage::Refresh() {
  if (!IsOpen()) return;
  const int row = std::max(ui().vsAxes.Row(), 1);
  ui().vsAxes.Refresh();
  if (Rows() > 1) ui().vsAxes.SetCurrent(std::min(row, Rows() - 1), kName);
  ui().lblSummary.SetText(states_.Summary());
  OfferActions();
}

void LinePage::RefreshAxis(std::size_t place) {
  if (!IsOpen()) return;
  ui().vsAxes.RefreshRow(static_cast<int>(place) + 1);
  if (ui().lblSummary.Text() != states_.Summary()) ui().lblSummary.SetText(states_.Summary());
}

void LinePage::ShowRemark(const std::string& remark) {
  if (IsOpen() && ui().lblRemark.Text() != remark) ui().lblRemark.SetText(remark);
}

std::size_t LinePage::Current() const {
  return static_cast<std::size_t>(std::max(ui().vsAxes.Row(), 1) - 1);
}

// ---- choosing

void LinePage::Choose(int row) {
  LineAxisState& state = states_.Axes().at(static_cast<std::size_t>(row) - 1);
  state.chosen = !state.chosen;
  ui().vsAxes.RefreshRow(row);
  OfferActions();
}

void LinePage::ChooseAll(bool chosen) {
  states_.ChooseAll(chosen);
  for (int row = 1; row < Rows(); ++row) ui().vsAxes.RefreshRow(row);
  OfferActions();
}

// The space bar chooses what is selected, or takes it out where all of it is chosen.
void LinePage::OnKey(KeyEvent& key) {
  if (key.code != keys::kSpace || key.AnyShift()) return;
  key.handled = true;
  const GridBlock block = ui().vsAxes.Selection();
  const int top = std::max(block.top, 1), bottom = std::min(block.bottom, Rows() - 1);
  bool all = true;
  for (int row = top; row <= bottom; ++row) all = all && At(row).chosen;
  for (int row = top; row <= bottom; ++row) {
    if (At(row).chosen == all) Choose(row);
  }
}

void LinePage::OfferActions() {
  const auto chosen = static_cast<int>(states_.Chosen().size());
  for (Button* const button : Buttons()) button->SetEnabled(chosen > 0);
  const LineAxisState& from = At(static_cast<int>(Current()) + 1);
  ui().cmdCopy.SetEnabled(chosen > (from.chosen ? 1 : 0));
  ui().lblChosen.SetText(NumberText(chosen) +
                         (chosen == 1 ? " axis is chosen" : " axes are chosen"));
}

// ---- rows

int LinePage::Columns() const {
  return kColumns;
}

std::string LinePage::Text(int row, int column) const {
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  const LineAxisState& state = At(row);
  switch (column) {
    case kChosen:
      return state.chosen ? "\u2713 yes" : "no";
    case kAxis:
      return state.axis.address;
    case kName:
      return state.axis.name;
    case kState:
      return state.StateText();
    case kAlarm:
      return state.AlarmText();
    case kProject:
      return GetFileTitle(state.axis.project);
    case kAmplifier:
      return state.amplifier;
    case kMotor:
      return state.motor + (state.encoder.empty() ? "" : ", " + state.encoder);
    default:
      return state.firmware;
  }
}

CellTraits LinePage::Traits(int row, int column) const {
  CellTraits traits;
  traits.action = column == kChosen;
  if (row > 0 && column == kState) traits.tone = At(row).StateTone();
  if (row > 0 && column == kAlarm) traits.tone = At(row).AlarmTone();
  return traits;
}

}  // namespace velmoor
