#include "tools/frmProperties.h"

#include <algorithm>

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr int kHomingRows = 7;
constexpr int kMostRowsInSight = 12;

// What a homing method does with a row.
enum class RowState { asItIs, locked, open };

RowState StateFor(const std::string& strMode, const std::string& strPn) {
  const std::string mode = LowerCase(Trim(strMode));
  const bool noReturn = mode == "no zero point return";
  const bool withoutPhaseSearch = mode == "dec only" || mode == "c-phase only";
  if (!noReturn && !withoutPhaseSearch && mode != "dec and c-phase") return RowState::asItIs;
  if (strPn == "Pn823" || (noReturn && strPn == "Pn81D")) return RowState::asItIs;
  if (noReturn || (withoutPhaseSearch && strPn == "Pn825")) return RowState::locked;
  return RowState::open;
}

}  // namespace

frmProperties::frmProperties(ParameterToolBase& tool, std::string formType)
    : WindowOf(tool, ParameterWindow::properties), strFormType_(std::move(formType)) {}

bool frmProperties::IsType(const char* lowerCase) const {
  return LowerCase(strFormType_) == lowerCase;
}

void frmProperties::FormLoad() {
  ParameterGridWindow::FormLoad();
  grid().SetRowsInSight(std::min<int>(tool().RowsInArray(), kMostRowsInSight));
  connections_ +=
      grid().ChangeEdit.Connect([this](const GridEdit& edit) { vsFG_ChangeEdit(edit); });
  if (IsType("homing")) UpdateHomingGrid(GetPnValueFromGrid("Pn823"));
  if (IsType("flexibleio")) UpdateFlexibleIOGrid();
}

std::string frmProperties::GetPnValueFromGrid(const std::string& strPn) {
  const int row = tool().FindRow(strPn);
  return row > 0 ? tool().Text(row, Column::value) : std::string();
}

void frmProperties::UpdateHomingGrid(const std::string& strMode) {
  const int rows = std::min<int>(kHomingRows, tool().RowsInArray());
  for (int row = 1; row <= rows; ++row) {
    const RowState state = StateFor(strMode, tool().Text(row, Column::name));
    if (state == RowState::asItIs) continue;
    source().SetLocked(row, state == RowState::locked
                                ? "Not used by the homing method \"" + strMode + "\"."
                                : std::string());
    if (IsOpen()) grid().RefreshRow(row);
  }
}

void frmProperties::UpdateFlexibleIOGrid() {
  const bool hidden = gMainForm->IsOnline() && !gMainForm->Helix7()->IsOptionVersionNew();
  for (int row = tool().RowsInArray(); row >= 1; --row) {
    if (NeedsNewOptionVersion(tool().Text(row, Column::name))) {
      grid().SetRowHidden(row, hidden);
    }
  }
}

void frmProperties::StoreChanged() {
  ParameterGridWindow::StoreChanged();
  if (IsOpen()) ShowHomingMethod();
}

// The rows follow the text while the user is still choosing, and keep to it when a Cancel is taken
// back.
void frmProperties::vsFG_ChangeEdit(const GridEdit& edit) {
  if (!IsType("homing") || tool().Text(edit.row, Column::name) != "Pn823") return;
  UpdateHomingGrid(edit.text);
}

void frmProperties::ShowHomingMethod() {
  if (IsType("homing")) UpdateHomingGrid(GetPnValueFromGrid("Pn823"));
}

// A choice that was given up leaves no trace once the cell is left.
void frmProperties::CurrentRowChanged(int row) {
  ParameterGridWindow::CurrentRowChanged(row);
  ShowHomingMethod();
}

void frmProperties::AfterEdit(int row) {
  const std::string strPn = tool().Text(row, Column::name);
  if (strPn == "Pn80C" || strPn == "Pn80D") {
    PropertiesOverTravelChanged.Raise(strPn, tool().Text(row, Column::value));
  }
}

}  // namespace velmoor
