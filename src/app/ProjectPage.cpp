#include "app/ProjectPage.h"

#include <array>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

enum Column { kNumber, kStep, kPurpose, kState, kAction, kColumns };
constexpr std::array<const char*, kColumns> kHeadings{"", "Step", "What it is for", "State",
                                                      "Next"};
constexpr std::array<int, kColumns> kWidths{3, 22, 52, 40, 18};

}  // namespace

void ProjectPage::FormLoad() {
  Grid& grid = ui().vsRoad;
  grid.Bind(this);
  for (int column = 0; column < kColumns; ++column) {
    grid.SetColumnWidth(column, kWidths.at(static_cast<std::size_t>(column)));
  }
  grid.SetColumnShare(kState);
  connections_ += grid.RowChosen.Connect([this](int row) { ChooseRow(row); });
  connections_ += grid.CellButton.Connect([this](int row, int) { ChooseRow(row); });
  connections_ += grid.Tip.Connect(
      [this](int row, int, std::string& tip) { tip = At(row).action + ": " + At(row).title; });
  ShowAll();
  grid.SetCurrent(1, kStep);
}

void ProjectPage::ShowContents(Contents contents) {
  const bool same = contents.title == contents_.title && contents.place == contents_.place &&
                    contents.module == contents_.module && contents.rows == contents_.rows;
  if (same && IsOpen()) return;
  const bool moved = contents.module != contents_.module;
  contents_ = std::move(contents);
  if (!IsOpen()) {
    (void)Show(FormMode::page);
    return;
  }
  ShowAll();
  if (moved) ui().vsRoad.SetCurrent(1, kStep);
}

void ProjectPage::ShowAll() {
  ui().lblTitle.SetText(contents_.title);
  ui().lblPlace.SetText(contents_.place);
  ui().lblModule.SetText(contents_.module);
  ui().vsRoad.Refresh();
  ui().vsRoad.SetRowsInSight(static_cast<int>(contents_.rows.size()));
}

void ProjectPage::ChooseRow(int row) {
  const MainCommand command = At(row).command;
  choose_(command);
}

int ProjectPage::Rows() const {
  return static_cast<int>(contents_.rows.size()) + 1;
}

int ProjectPage::Columns() const {
  return kColumns;
}

const RoadRow& ProjectPage::At(int row) const {
  return contents_.rows.at(static_cast<std::size_t>(row) - 1);
}

std::string ProjectPage::Text(int row, int column) const {
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  switch (column) {
    case kNumber:
      return NumberText(row);
    case kStep:
      return At(row).title;
    case kPurpose:
      return At(row).purpose;
    case kState:
      return At(row).state;
    default:
      return At(row).action;
  }
}

CellTraits ProjectPage::Traits(int row, int column) const {
  CellTraits traits;
  if (column == kState) traits.tone = At(row).tone;
  traits.action = column == kAction;
  return traits;
}

}  // namespace velmoor
