// The machine's rows on their way into the project's file, and to the direct editor that holds
// seven of them too.

#include "mechanics/clsHX7MechanicalSystem.h"
#include "platform/Trapped.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tools/UnitConversion.h"

namespace velmoor {

using schema::Parameters;

std::string clsHX7MechanicalSystem::ControllerValueOf(int row) const {
  const std::string& value = arBlockMatrix_.Text(row, Column::value);
  const auto kind = UnitKindOf(arBlockMatrix_.Text(row, Column::name));
  return kind ? UnitsToCounts(value, FactorOf(OpenedProject(), *kind)) : value;
}

bool clsHX7MechanicalSystem::SaveToDB() {
  return Trapped("clsMechanicalSystem.SaveToDB: ", [this] {
    const auto database = OpenForWriting(strSaveDBPath_);
    const char* words = nullptr;
    if (!SaveEditorPnsToDB(*database)) {
      words = "Error writing parameters to project file!";
    } else if (!SaveOtherPnsToDB(*database)) {
      words = "Error writing Mechanical System parameters to project file!";
    }
    if (words != nullptr) {
      database->Rollback();
      ShowExclamation(words);
      return false;
    }
    database->Commit();
    UpdateEditorBlockMatrix(true);
    arBlockMatrix_.ClearTouched();
    return true;
  });
}

namespace {

// Writes the touched rows that `belongs` selects; `controllerValue` gives their form on the wire.
template <typename Belongs, typename ControllerValue>
void WriteRows(Database& database, const BlockMatrix& rows, Belongs&& belongs,
               ControllerValue&& controllerValue) {
  const auto records = database.OpenTable(Parameters::kTable);
  for (int row = 1; row <= rows.Rows(); ++row) {
    const std::string& name = rows.Text(row, Column::name);
    if (!belongs(name) || !rows.IsTouched(row)) continue;
    if (!records->FindFirst(Parameters::kPn, name)) continue;
    records->Edit();
    records->Set(Parameters::kValue, rows.Text(row, Column::value));
    records->Set(Parameters::kControllerValue, controllerValue(row));
    if (rows.IsDirty(row)) records->Set(Parameters::kDirty, "1");
    records->Update();
  }
}

}  // namespace

bool clsHX7MechanicalSystem::SaveEditorPnsToDB(Database& database) {
  return Trapped("clsMechanicalSystem.SaveEditorPnsToDB: ", [&] {
    WriteRows(database, arBlockMatrix_, IsSharedPn,
              [this](int row) { return ControllerValueOf(row); });
    return true;
  });
}

bool clsHX7MechanicalSystem::SaveOtherPnsToDB(Database& database) {
  return Trapped("clsMechanicalSystem.SaveOtherPnsToDB: ", [&] {
    WriteRows(database, arBlockMatrix_, IsMechSystemPn,
              [this](int row) { return arBlockMatrix_.Text(row, Column::value); });
    return true;
  });
}

// Hands the shared rows to the editor, the only tool that sends the gear terms. `withMarks` also
// hands over the marks, and with them the editor's need of a download.
void clsHX7MechanicalSystem::UpdateEditorBlockMatrix(bool withMarks) const {
  SharedParameterTool& editor = OpenedProject().EditorSister();
  BlockMatrix copy;
  editor.GetBlockMatrix(copy);
  bool changed = false;
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const std::string& name = arBlockMatrix_.Text(row, Column::name);
    const int to = IsSharedPn(name) ? copy.FindRow(name) : 0;
    if (to == 0) continue;
    copy.ChangeValue(to, arBlockMatrix_.Text(row, Column::value));
    if (!withMarks || !arBlockMatrix_.IsDirty(row) || !arBlockMatrix_.IsTouched(row)) continue;
    copy.Set(to, Column::dirty, "1");
    changed = true;
  }
  editor.LetBlockMatrix(copy);
  if (changed) OpenedProject().EditorService().MarkChanged();
}

void clsHX7MechanicalSystem::UpdateFromEditorBlockMatrix() {
  BlockMatrix editor;
  OpenedProject().EditorSister().GetBlockMatrix(editor);
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const std::string& name = arBlockMatrix_.Text(row, Column::name);
    const int from = IsSharedPn(name) ? editor.FindRow(name) : 0;
    if (from > 0) arBlockMatrix_.Set(row, Column::value, editor.Text(from, Column::value));
  }
}

void clsHX7MechanicalSystem::HandRowsToEditor() {
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    if (IsSharedPn(arBlockMatrix_.Text(row, Column::name))) {
      arBlockMatrix_.Set(row, Column::dirty, "1");
    }
  }
  SaveToDB();
}

std::int16_t clsHX7MechanicalSystem::GetNumberOfNewRows() const {
  std::int16_t count = 0;
  Trapped("clsMechanicalSystem.GetNumberOfNewRows: ", [&] {
    const auto database = OpenForReading(strSaveDBPath_);
    const auto records = database->OpenTable(Parameters::kTable);
    for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
      const bool own = IsMechSystemPn(records->Text(Parameters::kPn));
      if (own && records->Text(Parameters::kDirty) == "1") ++count;
    }
    return true;
  });
  return count;
}

}  // namespace velmoor
