// The window of the index table: the grid of steps with its three dialogs, and beside it where the
// programme goes and how the axis moves.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "layouts/frmPosition.h"
#include "tables/ProgrammeView.h"
#include "tables/TableWindow.h"

namespace velmoor {

class clsHX7Position;

class frmPosition final : public WindowOf<layouts::frmPosition, TableWindow> {
 public:
  explicit frmPosition(clsHX7Position& position);
  ~frmPosition() override;

  // ---- the buffer of one step; its label stays behind, since it is unique
  [[nodiscard]] bool CanCopyRow() const { return CurrentCell().row > 0; }
  [[nodiscard]] bool CanPasteRow() const { return CanCopyRow() && HoldsBuffer(); }

 protected:
  void FormLoad() override;
  void LayOutColumns() override;
  bool MayCommit() override;
  [[nodiscard]] CellCheck Check(int row, int column, const std::string& text) const override;
  [[nodiscard]] std::string ExportText() const override;
  [[nodiscard]] std::vector<std::string> ImportText(const std::string& text) override;
  void FollowEdits(const MotionTable::Rows& before) override;
  [[nodiscard]] std::string CellTip(int row, int column) const override;
  void RowsShown() override;
  void OnKey(KeyEvent& key) override;

  void CopyIntoBuffer(int row, int column) override;
  void CutIntoBuffer(int row, int column) override;
  void PasteFromBuffer(int row, int column) override;
  [[nodiscard]] bool HoldsBuffer() const override { return !arTempBuffer_.empty(); }
  [[nodiscard]] CellBlock BufferBlock(int row, int column) const override;

 private:
  void SetTraits(int row, int column, CellTraits& traits) const;
  void LaunchPopUp(int row, int column);
  [[nodiscard]] std::optional<std::string> AskPosition(const std::string& cell) const;
  [[nodiscard]] std::optional<std::string> AskPOut(const std::string& cell) const;
  [[nodiscard]] std::optional<std::string> AskEvent(const std::string& cell) const;
  void InsertRow();
  void DeleteRow();

  clsHX7Position& position_;
  std::vector<std::string> arTempBuffer_;  // from the position column on
  ProgrammeView view_;
};

}  // namespace velmoor
