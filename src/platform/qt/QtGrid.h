// The grid on a QTableView.
#pragma once

#include "platform/Grid.h"
#include "platform/qt/GridDelegate.h"
#include "platform/qt/GridModel.h"
#include "platform/qt/QtControls.h"

class QTableView;

namespace velmoor::qt {

class QtGrid final : public QtControl<Grid> {
 public:
  explicit QtGrid(QTableView& view);
  ~QtGrid() override;
  QtGrid(const QtGrid&) = delete;
  QtGrid& operator=(const QtGrid&) = delete;

  void Bind(GridSource* source) override;
  void Refresh() override;
  void RefreshRow(int row) override;
  void SetColumnHidden(int column, bool hidden) override;
  [[nodiscard]] bool ColumnHidden(int column) const override;
  void SetRowHidden(int row, bool hidden) override;
  [[nodiscard]] bool RowHidden(int row) const override;
  void SetColumnWidth(int column, int characters) override;
  void SetColumnShare(int column) override;
  void SetRowsInSight(int rows) override;
  void SetSortMark(int column, bool descending) override;
  [[nodiscard]] int Row() const override;
  [[nodiscard]] int Column() const override;
  void SetCurrent(int row, int column) override;
  [[nodiscard]] GridBlock Selection() const override;
  void Select(const GridBlock& block) override;
  [[nodiscard]] bool IsEditing() const override;
  void BeginEdit() override;
  bool FinishEdit() override;

 private:
  void SetUpView();
  void Commit(GridEdit edit);
  void CurrentMoved();
  void CellClicked(const QModelIndex& index);
  void ChooseRow(const QModelIndex& index);
  void EditorClosed();
  bool LookAtKey(const QKeyEvent& event);
  bool LookAtViewport(QEvent& event);
  bool ShowTip(const QHelpEvent& help, int row, int column);
  void OpenContextMenu(const QPoint& place);
  bool Denies(const QModelIndex& index);
  void KeepRefused(const GridEdit& edit);
  void FitRows();
  void FitColumns();

  QTableView& view_;
  GridModel* model_;  // children of the view
  GridDelegate* delegate_;
  EventWatch keyWatch_;
  EventWatch viewportWatch_;
  EventWatch headingWatch_;
  bool fromCode_ = false;  // the current cell is being moved by the logic
  bool committing_ = false;
  int pressed_ = -1;         // the current row as the mouse was pressed
  bool finishing_ = false;   // by the logic, not by a cell that was left
  bool refused_ = false;     // how the last commit ended
  GridEdit kept_;            // the refused edit that stays open; row 0: none
  std::vector<int> widths_;  // asked for by the logic, by column; 0: by the contents
};

}  // namespace velmoor::qt
