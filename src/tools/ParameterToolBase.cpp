#include "tools/ParameterToolBase.h"

#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tools/ComboListText.h"
#include "tools/ParameterRules.h"
#include "tools/UnitConversion.h"

namespace velmoor {

using schema::Parameters;

std::int16_t ParameterToolBase::RowsInArray() const {
  return Narrow<std::int16_t>(arBlockMatrix_.Rows());
}

std::string ParameterToolBase::Prefix(std::string_view procedure) const {
  return className_ + "." + std::string(procedure) + ": ";
}

std::unique_ptr<Database> ParameterToolBase::OpenWorkingFile() const {
  return OpenForWriting(strSaveDBPath_);
}

// ---- reading

bool ParameterToolBase::ReadFromDB() {
  // "ReadToDB" is how this message is spelled, on purpose.
  return Trapped(Prefix("ReadToDB"), [this] {
    ReadDefinitions();
    ReadValues();
    arBlockMatrix_.ClearTouched();
    return true;
  });
}

void ParameterToolBase::ReadDefinitions() {
  int row = 0;
  for (const ParameterDefinition& definition :
       ReadParameterDefinitions(strDatabasePath_, strTable_)) {
    if (!Takes(definition)) continue;
    ++row;
    if (row > arBlockMatrix_.Rows()) arBlockMatrix_.SetRows(row);
    FillRow(row, definition);
  }
  arBlockMatrix_.SetRows(row);
  DefinitionsRead();
}

void ParameterToolBase::FillRow(int row, const ParameterDefinition& definition) {
  arBlockMatrix_.Set(row, Column::name, definition.user_constant);
  arBlockMatrix_.Set(row, Column::description, definition.parameter_name);
  arBlockMatrix_.Set(row, Column::minimum, definition.Min);
  arBlockMatrix_.Set(row, Column::maximum, definition.Max);
  arBlockMatrix_.Set(row, Column::initial, definition.initial_value);
  const auto kind = UnitKindOf(definition.user_constant);
  arBlockMatrix_.Set(row, Column::unit, kind ? UnitWord(*kind) : definition.Unit);
  arBlockMatrix_.Set(row, Column::listKey, definition.dec_data_id);
  help_.resize(static_cast<std::size_t>(row));
  help_.back() = definition.help;
}

const std::string& ParameterToolBase::Help(int row) const {
  return help_.at(static_cast<std::size_t>(row) - 1);
}

ParameterRow ParameterToolBase::Describe(int row) const {
  return DescribeRow(arBlockMatrix_, row);
}

// Nothing where the working file has no record of the row.
std::optional<std::string> ParameterToolBase::StoredValue(RowSet& records, int row) const {
  if (!records.FindFirst(Parameters::kPn, arBlockMatrix_.Text(row, Column::name))) {
    return std::nullopt;
  }
  const std::string value = records.Text(Parameters::kValue);
  return value.empty() ? arBlockMatrix_.Text(row, Column::initial) : value;
}

void ParameterToolBase::ReadValues() {
  const auto database = OpenForReading(strSaveDBPath_);
  const auto records = database->OpenTable(Parameters::kTable);
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    if (const auto value = StoredValue(*records, row)) {
      arBlockMatrix_.Set(row, Column::value, *value);
    }
  }
}

bool ParameterToolBase::ReadUntouchedRows() {
  bool changed = false;
  Trapped(Prefix("ReadToDB"), [&] {
    const auto database = OpenForReading(strSaveDBPath_);
    const auto records = database->OpenTable(Parameters::kTable);
    for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
      if (arBlockMatrix_.IsTouched(row)) continue;
      const auto value = StoredValue(*records, row);
      if (!value || *value == arBlockMatrix_.Text(row, Column::value)) continue;
      arBlockMatrix_.Set(row, Column::value, *value);
      arBlockMatrix_.ClearTouched(row);
      changed = true;
    }
    return true;
  });
  return changed;
}

void ParameterToolBase::SetComboLists(const ComboLists& lists) {
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const std::int32_t key = Int32FromCell(arBlockMatrix_.Text(row, Column::listKey));
    if (key == 0) continue;
    arBlockMatrix_.Set(row, Column::list, lists.at(static_cast<std::size_t>(key) - 1));
    if (!arBlockMatrix_.Text(row, Column::value).empty()) continue;
    const std::int32_t initial = Int32FromCell(arBlockMatrix_.Text(row, Column::initial));
    arBlockMatrix_.Set(row, Column::value, GetSelectedComboListItem(row, initial));
  }
}

// ---- display form and controller form

std::optional<std::string> ParameterToolBase::GetSelectedComboListIndex(int row) {
  const std::string value = arBlockMatrix_.Text(row, Column::value);
  const std::string& list = arBlockMatrix_.Text(row, Column::list);
  if (!list.empty()) return NumberText(ComboListIndex(list, value));
  const auto kind = UnitKindOf(arBlockMatrix_.Text(row, Column::name));
  return kind ? ConvertUnitsToCounts(row, *kind) : value;
}

std::optional<std::string> ParameterToolBase::ConvertUnitsToCounts(int row, UnitKind kind) {
  const std::string value = arBlockMatrix_.Text(row, Column::value);
  const LimitedCounts counts =
      UnitsToLimitedCounts(value, FactorOf(OpenedProject(), kind), OpenedProject().Resolution());
  if (!counts.valid) {
    const std::string& strPn = arBlockMatrix_.Text(row, Column::name);
    ShowExclamation("Overflow error while converting " + strPn +
                    " value to encoder counts!\rPlease modify " + strPn + " until satisfactory.");
    return std::nullopt;
  }
  if (counts.clamped) {
    arBlockMatrix_.Set(row, Column::value, counts.text);
    blnDataInvalidated_ = true;
  }
  return NumberText(counts.counts);
}

std::string ParameterToolBase::GetSelectedComboListItem(int row, std::int32_t selected) const {
  const std::string& list = arBlockMatrix_.Text(row, Column::list);
  if (!list.empty()) return ComboListItem(list, selected);
  const auto kind = UnitKindOf(arBlockMatrix_.Text(row, Column::name));
  if (!kind) return NumberText(selected);
  return CountsToUnits(selected, FactorOf(OpenedProject(), *kind), OpenedProject().Resolution());
}

// ---- writing

bool ParameterToolBase::SaveToDB() {
  return Trapped(Prefix("SaveToDB"), [this] {
    const auto database = OpenWorkingFile();
    const auto records = database->OpenTable(Parameters::kTable);
    for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
      const bool found =
          records->FindFirst(Parameters::kPn, arBlockMatrix_.Text(row, Column::name));
      if (found && !arBlockMatrix_.IsTouched(row)) continue;
      if (found) {
        records->Edit();
        if (arBlockMatrix_.IsDirty(row)) records->Set(Parameters::kDirty, "1");
      } else {
        records->AddNew();
        records->Set(Parameters::kPn, arBlockMatrix_.Text(row, Column::name));
        records->Set(Parameters::kDirty, "1");
      }
      WriteRecord(*records, row);
    }
    database->Commit();
    return true;
  });
}

// Completes the edit of a record with the row's value in both forms.
void ParameterToolBase::WriteRecord(RowSet& records, int row) {
  const auto controllerValue = GetSelectedComboListIndex(row);
  if (!controllerValue) return;
  records.Set(Parameters::kValue, arBlockMatrix_.Text(row, Column::value));
  records.Set(Parameters::kControllerValue, *controllerValue);
  records.Update();
  arBlockMatrix_.ClearTouched(row);
}

void ParameterToolBase::RewriteRows(const NewValue& newValue) {
  const auto database = OpenWorkingFile();
  const auto records = database->OpenTable(Parameters::kTable);
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const auto value = newValue(row);
    if (!value) continue;
    arBlockMatrix_.Set(row, Column::value, *value);
    arBlockMatrix_.Set(row, Column::dirty, "1");
    if (!records->FindFirst(Parameters::kPn, arBlockMatrix_.Text(row, Column::name))) continue;
    records->Edit();
    records->Set(Parameters::kDirty, "1");
    WriteRecord(*records, row);
  }
  database->Commit();
}

bool ParameterToolBase::ScalesWithResolution(int row) const {
  return Int32FromCell(arBlockMatrix_.Text(row, Column::listKey)) == 0 &&
         !arBlockMatrix_.Text(row, Column::value).empty();
}

bool ParameterToolBase::ChangeResolutionOfRows(const std::string& prefix, std::int16_t digits) {
  return Trapped(prefix, [&] {
    RewriteRows([&](int row) -> std::optional<std::string> {
      if (!ScalesWithResolution(row)) return std::nullopt;
      return FixedText(std::string_view(arBlockMatrix_.Text(row, Column::value)), digits);
    });
    MarkDirty();
    RefreshWindow();
    return true;
  });
}

std::int16_t ParameterToolBase::GetNumberOfNewRows() const {
  std::int16_t count = 0;
  Trapped(Prefix("GetNumberOfNewRows"), [&] {
    const auto database = OpenForReading(strSaveDBPath_);
    const auto records = database->OpenTable(Parameters::kTable);
    for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
      const bool found =
          records->FindFirst(Parameters::kPn, arBlockMatrix_.Text(row, Column::name));
      if (found && records->Text(Parameters::kDirty) == "1") ++count;
    }
    return true;
  });
  return count;
}

// ---- sister tools

void ParameterToolBase::UpdateBlockMatrix() {
  BlockMatrix editor;
  OpenedProject().EditorSister().GetBlockMatrix(editor);
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const int from = editor.FindRow(arBlockMatrix_.Text(row, Column::name));
    if (from > 0) arBlockMatrix_.ChangeValue(row, editor.Text(from, Column::value));
  }
}

void ParameterToolBase::CopyValuesInto(SharedParameterTool& sister) const {
  BlockMatrix copy;
  sister.GetBlockMatrix(copy);
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    if (!arBlockMatrix_.IsTouched(row)) continue;
    const int to = copy.FindRow(arBlockMatrix_.Text(row, Column::name));
    if (to > 0) copy.ChangeValue(to, arBlockMatrix_.Text(row, Column::value));
  }
  sister.LetBlockMatrix(copy);
}

void ParameterToolBase::CopyEditsInto(SharedParameterTool& sister) const {
  BlockMatrix copy;
  sister.GetBlockMatrix(copy);
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const int to = copy.FindRow(arBlockMatrix_.Text(row, Column::name));
    const std::string& value = arBlockMatrix_.Text(row, Column::value);
    const bool edited = arBlockMatrix_.IsTouched(row) && arBlockMatrix_.IsDirty(row);
    if (to == 0 || !edited || copy.Text(to, Column::value) == value) continue;
    copy.Set(to, Column::value, value);
    copy.Set(to, Column::dirty, "1");
  }
  sister.LetBlockMatrix(copy);
}

void ParameterToolBase::UpdateEditorBlockMatrix() const {
  CopyValuesInto(OpenedProject().EditorSister());
}

bool ParameterToolBase::SaveAndHandToEditor() {
  std::vector<int> touched;
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    if (arBlockMatrix_.IsTouched(row)) touched.push_back(row);
  }
  if (!SaveToDB()) return false;
  if (!HandsRowsToEditor()) return true;
  BlockMatrix editor;
  SharedParameterTool& sister = OpenedProject().EditorSister();
  sister.GetBlockMatrix(editor);
  for (const int row : touched) {
    const int to = editor.FindRow(arBlockMatrix_.Text(row, Column::name));
    // A row that could not be stored is not the file's.
    if (to == 0 || arBlockMatrix_.IsTouched(row)) continue;
    editor.Set(to, Column::value, arBlockMatrix_.Text(row, Column::value));
    editor.ClearTouched(to);
  }
  sister.LetBlockMatrix(editor);
  return true;
}

// ---- helpers of the pattern

bool NeedsNewOptionVersion(std::string_view strPn) {
  return strPn == "Pn833" || strPn == "Pn834";
}

std::string WireNumber(std::string_view strPn) {
  return Right(strPn, 3);
}

void TrimCurrentUnits(std::string& strText) {
  const std::size_t at = strText.find('(');
  if (at != std::string::npos) strText = Trim(std::string_view(strText).substr(0, at));
}

}  // namespace velmoor
