// The windows of the zone and jog tables: numbers that may be empty, beside the bits of their row.
#pragma once

#include <optional>
#include <string>

#include "session/Project.h"
#include "tables/MotionTable.h"
#include "tables/TableGrid.h"
#include "tools/GridWindow.h"

namespace velmoor {

class LimitWindow : public GridWindow {
 public:
  // The unit's words changed.
  void UpdateUnitsInHeader();

  // ---- the cell buffer of the Edit menu
  [[nodiscard]] bool CanCopyCell() const;
  [[nodiscard]] bool CanPasteCell() const;
  void CopyCellContentsIntoBuffer();
  void CutCellContentsIntoBuffer();
  void PasteCellContentsFromBuffer();

 protected:
  LimitWindow(std::string formName, MotionTable& table, UnitKind kind, std::string numberHeading);

  // One heading for each column, in the project's units.
  [[nodiscard]] virtual std::vector<std::string> Headings(const Project& project) const = 0;
  void FormLoad() override;

 private:
  void vsFG_ValidateEdit(GridEdit& edit);
  void vsFG_AfterEdit(int row);
  // The table's column under the cursor; -1 on the number, a bit, or nothing.
  [[nodiscard]] int CurrentColumn() const;
  void PutIntoCurrentCell(const std::string& text);
  [[nodiscard]] static Project& project();

  MotionTable& table_;
  UnitKind kind_;
  TableGrid source_;
  std::optional<std::string> strTempBuffer_;
};

}  // namespace velmoor
