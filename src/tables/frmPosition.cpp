#include "tables/frmPosition.h"

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "session/Session.h"
#include "tables/CellRules.h"
#include "tables/CellWords.h"
#include "tables/ProgrammeEdits.h"
#include "tables/TableCsv.h"
#include "tables/clsHX7Position.h"
#include "tables/frmDialogEvent.h"
#include "tables/frmDialogPOut.h"
#include "tables/frmDialogPosition.h"

namespace velmoor {
namespace {

using Position = clsHX7Position;

bool HasDialog(int column) {
  return column == Position::position || column == Position::outputs || column == Position::event;
}

}  // namespace

frmPosition::frmPosition(Position& position)
    : WindowOf(TableWindowInfo{"Index Table", "Step", 1}, position),
      position_(position),
      view_(position) {
  source().SetTraitsOf(
      [this](int row, int column, CellTraits& traits) { SetTraits(row, column, traits); });
}

frmPosition::~frmPosition() = default;

void frmPosition::SetTraits(int, int column, CellTraits& traits) const {
  traits.button = HasDialog(column);
  if (column == Position::next) SetComboList(traits, GetNewNextComboList(position_));
}

// A number alone is a move of the kind that the cell has.
CellCheck frmPosition::Check(int row, int column, const std::string& text) const {
  const std::string kind = Left(position_.Text(row, column), 1);
  const bool keeps = column == Position::position && (kind == "A" || kind == "I");
  return CheckIndexCell(OpenedProject(), position_, row, column,
                        keeps && ParseFloat(text) ? kind + text : text);
}

std::string frmPosition::ExportText() const {
  return ExportCsv(position_);
}

std::vector<std::string> frmPosition::ImportText(const std::string& text) {
  return ImportCsv(OpenedProject(), position_, text);
}

void frmPosition::FollowEdits(const MotionTable::Rows& before) {
  FollowLabels(position_, before);
}

void frmPosition::FormLoad() {
  TableWindow::FormLoad();
  Connect(ui(), layouts::frmPosition::Id::mnuTableInsert, [this] { InsertRow(); });
  Connect(ui(), layouts::frmPosition::Id::mnuTableDelete, [this] { DeleteRow(); });
  connections_ +=
      ui().cmdRehearse.Click.Connect([this] { Requested.Raise(WindowRequest::rehearse); });
  connections_ += grid().CellButton.Connect([this](int row, int column) {
    if (grid().FinishEdit()) LaunchPopUp(row, column - 1);
  });
  connections_ += grid().RowColChange.Connect([this] { view_.Select(CurrentCell().row); });
  view_.Bind(form(), ui(), [this](int row) {
    if (!grid().FinishEdit()) return;
    grid().SetCurrent(row, 1);
  });
  RowsShown();
}

std::string frmPosition::CellTip(int row, int column) const {
  const std::string words = CellInWords(OpenedProject(), column, position_.Text(row, column));
  if (!HasDialog(column)) return words;
  return "Press [F9] key to invoke dialog box." + (words.empty() ? "" : "\n" + words);
}

void frmPosition::LayOutColumns() {
  constexpr int kWidths[] = {4, 17, 16, 12, 10, 12, 11, 15, 6, 16};
  for (int column = 0; column < source().Columns(); ++column) {
    grid().SetColumnWidth(column, kWidths[column]);
  }
}

void frmPosition::RowsShown() {
  view_.Refresh(OpenedProject());
}

bool frmPosition::MayCommit() {
  AutoFillNoDistance(position_, OpenedProject().Resolution());
  EditDone();
  const auto fault = FindProgrammeFault(position_);
  if (fault) ShowExclamation(*fault);
  return !fault;
}

// ---- the dialogs

std::optional<std::string> frmPosition::AskPosition(const std::string& cell) const {
  frmDialogPosition dialog(OpenedProject());
  dialog.SetPositionCell(cell);
  if (!dialog.Ask()) return std::nullopt;
  return dialog.PositionCell();
}

std::optional<std::string> frmPosition::AskPOut(const std::string& cell) const {
  frmDialogPOut dialog;
  dialog.SetPOutState(cell);
  if (!dialog.Ask()) return std::nullopt;
  return dialog.POutState();
}

std::optional<std::string> frmPosition::AskEvent(const std::string& cell) const {
  frmDialogEvent dialog;
  dialog.SetEventCell(cell);
  if (!dialog.Ask()) return std::nullopt;
  return dialog.EventCell();
}

void frmPosition::LaunchPopUp(int row, int column) {
  const std::string& cell = position_.Text(row, column);
  std::optional<std::string> answer;
  if (column == Position::position) answer = AskPosition(cell);
  if (column == Position::outputs) answer = AskPOut(cell);
  if (column == Position::event) answer = AskEvent(cell);
  if (!answer) return;
  if (Accepted(PutTexts(position_, {{row, column, *answer}}, Context()))) EditDone();
}

void frmPosition::OnKey(KeyEvent& key) {
  if (key.code != keys::kF9 || key.AnyShift()) return TableWindow::OnKey(key);
  key.handled = true;
  const CellPlace cell = CurrentCell();
  if (cell.row > 0 && HasDialog(cell.column) && grid().FinishEdit()) {
    LaunchPopUp(cell.row, cell.column);
  }
}

// ---- whole steps

void frmPosition::CopyIntoBuffer(int row, int) {
  arTempBuffer_.clear();
  for (int column = Position::position; column <= Position::next; ++column) {
    arTempBuffer_.push_back(position_.Text(row, column));
  }
}

void frmPosition::CutIntoBuffer(int row, int) {
  for (int column = Position::position; column <= Position::next; ++column) {
    position_.SetText(row, column, "");
  }
}

void frmPosition::PasteFromBuffer(int row, int) {
  std::vector<CellText> texts;
  int column = Position::position;
  for (const std::string& text : arTempBuffer_) texts.push_back({row, column++, text});
  (void)Accepted(PutTexts(position_, texts, Context()));
}

CellBlock frmPosition::BufferBlock(int row, int) const {
  return {row, Position::position, row, Position::next};
}

void frmPosition::InsertRow() {
  const CellPlace cell = CurrentCell();
  if (cell.row == 0) return;
  if (!InsertStep(position_, cell.row)) {
    ShowExclamation("The table is full: step 128 is in use!");
    return;
  }
  EditDone();
}

void frmPosition::DeleteRow() {
  const CellPlace cell = CurrentCell();
  if (cell.row == 0) return;
  DeleteStep(position_, cell.row);
  EditDone();
}

}  // namespace velmoor
