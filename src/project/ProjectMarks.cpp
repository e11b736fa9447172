// The marks of what the hardware does not have: set for a transfer, and kept in the project's file
// whatever else there is unsaved.

#include <algorithm>

#include "platform/Database.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/ScopedFlag.h"
#include "platform/World.h"
#include "project/TransferRecord.h"
#include "project/clsHX7Project.h"
#include "project/data/Schema.h"

namespace velmoor {

using schema::Parameters;

namespace {

constexpr std::string_view kDirty = schema::Position::kDirty;

std::vector<int> AllRows(const MotionTable& table) {
  std::vector<int> rows;
  for (int row = 1; row <= table.RowsInArray(); ++row) rows.push_back(row);
  return rows;
}

// Sets the current record's mark, unless it is that already. True: it was changed.
bool PutMark(RowSet& record, bool marked) {
  const std::string_view mark = marked ? "1" : "0";
  if (record.Text(kDirty) == mark) return false;
  record.Edit();
  record.Set(kDirty, mark);
  record.Update();
  return true;
}

// The record of a table holds those texts for the amplifier.
bool HoldsRow(const RowSet& record, const TableLayout& layout,
              const std::vector<std::string>& controller) {
  for (std::size_t i = 0; i < layout.columns.size(); ++i) {
    const std::string_view field = SentField(layout.columns[i]);
    if (!field.empty() && record.Text(field) != controller[i]) return false;
  }
  return true;
}

bool MergeTable(Database& database, const MotionTable& table) {
  bool changed = false;
  const TableLayout& layout = table.Layout();
  const auto records = database.OpenTable(layout.table, layout.order);
  const std::int64_t first = schema::ProjectTableNamed(layout.table).first;
  for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
    // By its number, for the file may lack records that were laid anew in the working file.
    const auto number = ParseWhole(records->Text(layout.order));
    if (!number || *number < first || *number >= first + layout.rows) continue;
    const MotionTable::AmplifierRow& copy =
        table.AmplifierCopy(static_cast<int>(*number - first) + 1);
    if (!copy.told) continue;
    const bool held = copy.controller && HoldsRow(*records, layout, *copy.controller);
    changed = PutMark(*records, !held) || changed;
  }
  return changed;
}

bool MergeParameters(Database& database, const ParameterStore& store) {
  bool changed = false;
  const auto records = database.OpenTable(Parameters::kTable);
  for (int place = 0; place < store.Count(); ++place) {
    const Parameter& parameter = store.At(place);
    if (parameter.amplifier.state == AmplifierCopy::State::untold) continue;
    if (!records->FindFirst(Parameters::kPn, parameter.Pn())) continue;
    const bool held = parameter.amplifier.state == AmplifierCopy::State::held &&
                      records->Text(Parameters::kControllerValue) == parameter.amplifier.value;
    changed = PutMark(*records, !held) || changed;
  }
  return changed;
}

// A size that the file has by now stays.
bool PutMotorSize(Database& database, const std::string& watts) {
  using schema::Misc;
  const auto records = database.OpenTable(Misc::kTable);
  if (records->FindFirst(Misc::kPropertyName, Misc::kMotorSize)) return false;
  records->AddNew();
  records->Set(Misc::kPropertyName, Misc::kMotorSize);
  records->Set(Misc::kValue, watts);
  records->Update();
  return true;
}

}  // namespace

void clsHX7Project::MarkPart(Tool part) {
  if (MotionTable* const table = TableOf(part)) return table->Mark(AllRows(*table));
  std::vector<std::string> names;
  for (int place = 0; place < parameters_.Count(); ++place) {
    const std::string& strPn = parameters_.At(place).Pn();
    if (Shows(part, strPn)) names.push_back(strPn);
  }
  parameters_.Mark(names, part);
}

void clsHX7Project::MarkEverything() {
  for (const Tool part :
       {Tool::position, Tool::jog, Tool::zone, Tool::editor, Tool::mechanicalSystem}) {
    MarkPart(part);
  }
}

// Whatever goes out may reach the amplifier though nobody hears of it: the project's file is to say
// so before the first line, for a program that is killed has nothing more to say.
bool clsHX7Project::BeginDownload() {
  latestRestart_ = RestartOutcome::none;
  DoubtMarked();
  try {
    SaveMarks();
    return true;
  } catch (const std::exception& error) {
    return AskExclamationYesNo(
        "What this download changes in the controller cannot be noted in the project file!\r" +
        std::string(error.what()) +
        "\rIf it is cut short, Download New will not know what is missing after the next start."
        "\rDo you wish to proceed?");
  }
}

void clsHX7Project::DoubtMarked() {
  for (int place = 0; place < parameters_.Count(); ++place) {
    const Parameter& parameter = parameters_.At(place);
    if (parameter.IsMarked()) parameters_.AboutToSend(parameter.Pn());
  }
  for (MotionTable* const table : Tables()) table->AboutToSendMarked();
}

void clsHX7Project::EndDownload() {
  MarkAfterStrayWrite();
  try {
    SaveMarks();
  } catch (const std::exception&) {
    // The next saving takes them along.
    if (!savedElsewhere_) blnNeedsSaving_ = true;
  }
  parameters_.Changed.Raise();
}

void clsHX7Project::MarkHeldOtherwise(const HeldOtherwise& what) {
  if (!what.parameters.empty()) parameters_.Mark(what.parameters, Tool::editor);
  for (const auto& [part, rows] : what.rows) {
    std::vector<int> sorted = rows;
    std::ranges::sort(sorted);
    TableOf(part)->Mark(sorted);
  }
  DoubtMarked();
  EndDownload();
}

void clsHX7Project::MarkLost(std::span<const Tool> parts) {
  for (const Tool part : parts) MarkPart(part);
  DoubtMarked();
  EndDownload();
}

void clsHX7Project::SaveMarks() {
  Files& files = *world().files;
  const std::string copy = MarksFile();
  files.LayWorkingCopy(sFileName_, copy);
  const bool known = HoldsWhatIsKnown(copy);
  bool changed = false;
  try {
    const auto database = OpenForWriting(copy);
    changed = MergeParameters(*database, parameters_);
    for (const MotionTable* const table : Tables()) {
      changed = MergeTable(*database, *table) || changed;
    }
    if (motorNoted_) changed = PutMotorSize(*database, motorSize_) || changed;
    for (const Tool tool : sent_) {
      changed = PutTransfer(*database, tool, transfers_.at(tool)) || changed;
    }
    database->Commit();
  } catch (...) {
    world().databases->Release(copy);
    files.Remove(copy);
    throw;
  }
  world().databases->Release(copy);
  try {
    if (changed && files.HasOtherNames(sFileName_)) {
      throw FileError(sFileName_ + ": it has another name, a hard link, which would be parted");
    }
    if (changed) files.SaveDurably(copy, sFileName_, sFileName_);
  } catch (...) {
    files.Remove(copy);
    throw;
  }
  if (!sent_.empty()) {
    const auto working = OpenForWriting(strProjectDatabasePath_);
    for (const Tool tool : sent_) (void)PutTransfer(*working, tool, transfers_.at(tool));
    working->Commit();
  }
  // What another program has changed in the file stays unknown.
  if (changed && known) KnowProjectFile(copy);
  files.Remove(copy);
  if (changed) (void)TakeProjectFile();
}

}  // namespace velmoor
