#include "platform/headless/HeadlessControls.h"

#include <algorithm>
#include <array>

namespace velmoor::headless {
namespace {

template <typename Twin>
std::unique_ptr<Control> Make(const ControlLayout& layout) {
  return std::make_unique<Twin>(layout);
}

}  // namespace

void HeadlessButton::SetEnabled(bool enabled) {
  HeadlessControl::SetEnabled(enabled);
  if (!enabled) LetGo();
}

void HeadlessButton::SetVisible(bool visible) {
  HeadlessControl::SetVisible(visible);
  if (!visible) LetGo();
}

void HeadlessButton::Hold() {
  if (held_) return;
  held_ = true;
  Down.Raise();
}

void HeadlessButton::LetGo() {
  if (!held_) return;
  held_ = false;
  Up.Raise();
}

void HeadlessComboBox::SetItems(const std::vector<std::string>& items) {
  items_ = items;
  index_ = -1;
}

void HeadlessComboBox::SetListIndex(int index) {
  index_ = index >= 0 && index < static_cast<int>(items_.size()) ? index : -1;
}

std::string HeadlessComboBox::Text() const {
  return index_ < 0 ? std::string() : items_[static_cast<std::size_t>(index_)];
}

void HeadlessOptionGroup::SetChoiceEnabled(int index, bool enabled) {
  if (enabled) {
    disabled_.erase(index);
  } else {
    disabled_.insert(index);
  }
}

void HeadlessTerminalScreen::MoveCursor(int row, int column) {
  row_ = std::clamp(row, 1, Rows());
  column_ = std::clamp(column, 1, Columns());
}

void HeadlessTerminalScreen::Write(const std::string& text) {
  if (bold_) boldText += text;
  for (const char character : text) {
    if (column_ > Columns()) {
      column_ = 1;
      if (row_ == Rows()) {
        ScrollUp();
      } else {
        ++row_;
      }
    }
    rows_[static_cast<std::size_t>(row_ - 1)][static_cast<std::size_t>(column_ - 1)] = character;
    ++column_;
  }
}

void HeadlessTerminalScreen::ScrollUp() {
  rows_.erase(rows_.begin());
  rows_.emplace_back(static_cast<std::size_t>(Columns()), ' ');
}

void HeadlessTerminalScreen::Clear() {
  rows_.assign(static_cast<std::size_t>(Rows()),
               std::string(static_cast<std::size_t>(Columns()), ' '));
  row_ = column_ = 1;
}

std::string HeadlessTerminalScreen::RowText(int row) const {
  const std::string& text = rows_.at(static_cast<std::size_t>(row - 1));
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

void HeadlessTerminalScreen::SetFont(const std::string& name, int points) {
  fontName = name;
  fontPoints = points;
}

void HeadlessTerminalScreen::SetColors(std::uint32_t text, std::uint32_t bold,
                                       std::uint32_t background) {
  textColor = text;
  boldColor = bold;
  backgroundColor = background;
}

void HeadlessGrid::Bind(GridSource* source) {
  source_ = source;
  SetCurrent(-1, -1);
  edit_.reset();
}

void HeadlessGrid::Refresh() {
  edit_.reset();
  if (source_ == nullptr || row_ >= source_->Rows()) SetCurrent(-1, -1);
}

void HeadlessGrid::SetColumnHidden(int column, bool hidden) {
  if (hidden) {
    hiddenColumns_.insert(column);
  } else {
    hiddenColumns_.erase(column);
  }
}

void HeadlessGrid::SetRowHidden(int row, bool hidden) {
  if (hidden) {
    hiddenRows_.insert(row);
  } else {
    hiddenRows_.erase(row);
  }
}

void HeadlessGrid::SetCurrent(int row, int column) {
  row_ = row;
  column_ = column;
  block_.reset();
}

GridBlock HeadlessGrid::Selection() const {
  return block_.value_or(GridBlock{row_, column_, row_, column_});
}

void HeadlessGrid::Select(const GridBlock& block) {
  SetCurrent(block.top, block.left);
  block_ = block;
}

void HeadlessGrid::BeginEdit() {
  if (source_ == nullptr || row_ < 1) return;
  const CellTraits traits = source_->Traits(row_, column_);
  if (traits.locked) EditDenied.Raise(row_);
  if (!traits.editable) return;
  edit_ = GridEdit{.row = row_, .column = column_, .text = source_->Text(row_, column_)};
}

bool HeadlessGrid::FinishEdit() {
  if (!edit_) return true;
  GridEdit edit = *edit_;
  edit_.reset();
  edit.cancel = false;
  edit.hint.clear();
  ValidateEdit.Raise(edit);
  if (edit.cancel && !edit.hint.empty()) edit_ = edit;
  if (edit.cancel) return false;
  source_->SetText(edit.row, edit.column, edit.text);
  AfterEdit.Raise(edit.row, edit.column);
  return true;
}

bool HeadlessGrid::GoTo(int row, int column) {
  const bool reachable = source_ != nullptr && row >= 1 && row < source_->Rows() && column >= 0 &&
                         column < source_->Columns() && !RowHidden(row) && !ColumnHidden(column);
  if (!reachable || !FinishEdit()) return false;
  if (row_ == row && column_ == column) return true;
  SetCurrent(row, column);
  RowColChange.Raise();
  return true;
}

bool HeadlessGrid::TypeInCell(const std::string& text) {
  if (!edit_) BeginEdit();
  if (!edit_) return false;
  const CellTraits traits = source_->Traits(edit_->row, edit_->column);
  const auto& items = traits.comboItems;
  const auto item = std::find(items.begin(), items.end(), text);
  if (!items.empty() && item == items.end() && !traits.comboOpen) {
    edit_.reset();
    return false;
  }
  edit_->text = text;
  edit_->comboIndex = item == items.end() ? -1 : static_cast<int>(item - items.begin());
  ChangeEdit.Raise(*edit_);
  return true;
}

bool HeadlessGrid::EditCell(int row, int column, const std::string& text) {
  // A handler may move the current cell on, as for a column that alone can be current.
  const bool taken = GoTo(row, column) && TypeInCell(text) && FinishEdit();
  if (!taken) GiveUpEdit();
  return taken;
}

std::string HeadlessGrid::TipAt(int row, int column) const {
  std::string tip;
  Tip.Raise(row, column, tip);
  return tip;
}

std::unique_ptr<Control> MakeTwin(const ControlLayout& layout) {
  // In the order of ControlKind.
  static constexpr std::array kMakers{
      Make<HeadlessButton>,   Make<HeadlessTextBox>,     Make<HeadlessComboBox>,
      Make<HeadlessCheckBox>, Make<HeadlessOptionGroup>, Make<HeadlessLabel>,
      Make<HeadlessLamp>,     Make<HeadlessProgressBar>, Make<HeadlessGrid>,
      Make<HeadlessChart>,    Make<HeadlessTimeChart>,   Make<HeadlessTerminalScreen>,
      Make<HeadlessDrawing>,  Make<HeadlessPageView>};
  return kMakers.at(static_cast<std::size_t>(layout.kind))(layout);
}

}  // namespace velmoor::headless
