#include "mechanics/clsHX7MechanicalSystem.h"

#include <algorithm>
#include <array>

#include "mechanics/MachineUnits.h"
#include "mechanics/frmMechanicalSystem.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "platform/World.h"
#include "project/data/ParameterCatalogue.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tools/UnitConversion.h"

namespace velmoor {

using schema::Parameters;

namespace {

constexpr std::array<std::string_view, 7> kSharedPns{"Pn202", "Pn203", "Pn81E", "Pn81F",
                                                     "Pn820", "Pn821", "Pn822"};
constexpr std::array<std::string_view, 8> kMechSystemPns{"Pn829", "Pn82A", "Pn82B", "Pn82C",
                                                         "Pn82D", "Pn82E", "Pn82F", "Pn830"};

// Descriptions that are the tool's own; the rest come from the catalogue or the project.
std::string OwnDescription(std::string_view strPn) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kTable{{
      {"Pn202", "Electronic Gear Ratio (B)"},
      {"Pn203", "Electronic Gear Ratio (A)"},
      {"Pn81E", "Default Speed"},
      {"Pn821", "In Position Window"},
      {"Pn822", "Near Position Window"},
      {"Pn82B", "N1"},
      {"Pn82C", "N2"},
      {"Pn82D", "Resolution"},
  }};
  const auto* const found = std::find_if(kTable.begin(), kTable.end(),
                                         [&](const auto& entry) { return entry.first == strPn; });
  return found == kTable.end() ? std::string() : std::string(found->second);
}

struct Range {
  const char* low;
  const char* high;
};

Range OtherRange(std::string_view strPn) {
  if (strPn == "Pn82B" || strPn == "Pn82C") return {"1", "32767"};
  if (strPn == "Pn82D") return {"0", "22"};
  return {"-99999999", "99999999"};
}

}  // namespace

bool IsMechSystemPn(std::string_view strPn) {
  return std::find(kMechSystemPns.begin(), kMechSystemPns.end(), strPn) != kMechSystemPns.end();
}

bool IsSharedPn(std::string_view strPn) {
  return std::find(kSharedPns.begin(), kSharedPns.end(), strPn) != kSharedPns.end();
}

std::int32_t SelectionDigit(const std::string& bits, int digit) {
  const auto fromRight = static_cast<std::size_t>(digit) + 1;
  if (bits.size() < fromRight) return -1;
  const auto value = ParseHex(bits.substr(bits.size() - fromRight, 1));
  return value ? static_cast<std::int32_t>(*value) : -1;
}

clsHX7MechanicalSystem::clsHX7MechanicalSystem()
    : frm_(std::make_unique<frmMechanicalSystem>(*this)) {
  connections_ += frm_->ChangeAccepted.Connect([this] {
    ChangeAccepted(frm_->TakeForCommit());
    frm_->Committed();
  });
  connections_ += frm_->ChangeCanceled.Connect([this] { ChangeCanceled(); });
  connections_ += frm_->Closed.Connect([this] { MechanicalSystemClosed.Raise(); });
}

clsHX7MechanicalSystem::~clsHX7MechanicalSystem() {
  connections_.Clear();
}

bool clsHX7MechanicalSystem::Show_MechanicalSystem() {
  return frm_->Show("Mechanical System", FormMode::modal);
}

void clsHX7MechanicalSystem::Unload_MechanicalSystem() {
  frm_->Unload();
}

std::int16_t clsHX7MechanicalSystem::RowsInArray() const {
  return Narrow<std::int16_t>(arBlockMatrix_.Rows());
}

std::string clsHX7MechanicalSystem::SelectedSystemName() const {
  return MechanicalSystemFromIndex(machine_.system);
}

std::string clsHX7MechanicalSystem::ValueOf(const char* name) const {
  const int row = arBlockMatrix_.FindRow(name);
  return row > 0 ? arBlockMatrix_.Text(row, Column::value) : std::string();
}

// ---- reading

bool clsHX7MechanicalSystem::ReadFromDB() {
  return Trapped("clsMechanicalSystem.ReadFromDB: ", [this] {
    arBlockMatrix_.SetRows(0);
    const auto step = [](const char* prefix, const char* words, auto&& work) {
      const bool done = Trapped(prefix, [&] {
        work();
        return true;
      });
      if (!done) ShowExclamation(words);
      return done;
    };
    if (!step("clsMechanicalSystem.ReadEditorPnsFromDB: ", "Error reading parameters!",
              [this] { ReadEditorPnsFromDB(); })) {
      return false;
    }
    if (!step("clsMechanicalSystem.ReadOtherPnsFromDB: ",
              "Error reading Mechanical System parameters from project!",
              [this] { ReadOtherPnsFromDB(); })) {
      return false;
    }
    SetUnits();
    SortBlockMatrix();
    arBlockMatrix_.ClearTouched();
    return true;
  });
}

int clsHX7MechanicalSystem::AddRow(const std::string& name, const std::string& description,
                                   const std::string& value) {
  const int row = arBlockMatrix_.Rows() + 1;
  arBlockMatrix_.SetRows(row);
  arBlockMatrix_.Set(row, Column::name, name);
  arBlockMatrix_.Set(row, Column::description, description);
  arBlockMatrix_.Set(row, Column::value, value);
  return row;
}

void clsHX7MechanicalSystem::ReadEditorPnsFromDB() {
  const auto database = OpenForReading(strSaveDBPath_);
  const auto records = database->OpenTable(Parameters::kTable);
  for (const ParameterDefinition& definition :
       ReadParameterDefinitions(strDatabasePath_, strTable_)) {
    const std::string& strPn = definition.user_constant;
    if (!IsSharedPn(strPn)) continue;
    const std::string own = OwnDescription(strPn);
    const bool found = records->FindFirst(Parameters::kPn, strPn);
    const int row = AddRow(strPn, own.empty() ? definition.parameter_name : own,
                           found ? records->Text(Parameters::kValue) : "");
    arBlockMatrix_.Set(row, Column::minimum, definition.Min);
    arBlockMatrix_.Set(row, Column::maximum, definition.Max);
    arBlockMatrix_.Set(row, Column::initial, definition.initial_value);
    const auto kind = UnitKindOf(strPn);
    arBlockMatrix_.Set(row, Column::unit, kind ? UnitWord(*kind) : "");
  }
}

void clsHX7MechanicalSystem::ReadOtherPnsFromDB() {
  const auto database = OpenForReading(strSaveDBPath_);
  const auto records = database->OpenTable(Parameters::kTable);
  for (const std::string_view strPn : kMechSystemPns) {
    if (records->FindFirst(Parameters::kPn, strPn)) AddOtherRow(*records);
  }
  AddViewRows(ValueOf("Pn82E"),
              PadToDigits(ValueOf("Pn82F"), 8) + PadToDigits(ValueOf("Pn830"), 8));
  DigestRows();
}

void clsHX7MechanicalSystem::AddOtherRow(const RowSet& record) {
  const std::string strPn = record.Text(Parameters::kPn);
  std::string value = record.Text(Parameters::kControllerValue);
  if (strPn == "Pn82E") value = Right(value, 4);
  const std::string own = OwnDescription(strPn);
  const int row = AddRow(strPn, own.empty() ? record.Text(Parameters::kDescription) : own, value);
  arBlockMatrix_.Set(row, Column::initial, record.Text(Parameters::kValue));
  const Range range = OtherRange(strPn);
  arBlockMatrix_.Set(row, Column::minimum, range.low);
  arBlockMatrix_.Set(row, Column::maximum, range.high);
}

void clsHX7MechanicalSystem::AddViewRows(const std::string& bits, const std::string& measure) {
  const auto addView = [this](const std::string& name, const std::string& description,
                              const std::string& value) {
    const int row = AddRow(name, description, value);
    arBlockMatrix_.Set(row, Column::minimum, "0");
    arBlockMatrix_.Set(row, Column::initial, "0");
    return row;
  };
  const std::int32_t system = SelectionDigit(bits, 2);
  addView("Pn82E.0", "Machine Units Base", DistanceUnitsFromIndex(SelectionDigit(bits, 0)));
  addView("Pn82E.1", "Time Base", TimeUnitsFromIndex(SelectionDigit(bits, 1)));
  addView("Pn82E.2", "System", MechanicalSystemFromIndex(system));
  addView("Pn82E.3", "Encoder Count", NumberText(EncoderCountFromIndex(SelectionDigit(bits, 3))));
  const int row = addView("Pn82F.0", SystemMeasureDescription(system),
                          NumberText(world().rx900Utils->DecToFloat(measure)));
  arBlockMatrix_.Set(row, Column::maximum, "1E+16");
  arBlockMatrix_.Set(row, Column::unit, UnitWord(UnitKind::distance));
}

void clsHX7MechanicalSystem::SetUnits() {
  UpdateDerivedUnits();
  UpdateUnitsColumn();
}

void clsHX7MechanicalSystem::UpdateDerivedUnits() {
  sSpeedUnits_ = SpeedUnitsOf(sDistanceUnits_, sTimeUnits_);
  sAccelerationUnits_ = AccelerationUnitsOf(sDistanceUnits_, sTimeUnits_);
}

void clsHX7MechanicalSystem::UpdateUnitsColumn() {
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const std::string& name = arBlockMatrix_.Text(row, Column::name);
    const auto kind = name == "Pn82F.0" ? UnitKind::distance : UnitKindOf(name);
    if (!kind) continue;
    const std::string& word = *kind == UnitKind::distance ? sDistanceUnits_
                              : *kind == UnitKind::speed  ? sSpeedUnits_
                                                          : sAccelerationUnits_;
    arBlockMatrix_.Set(row, Column::unit, word);
  }
}

void clsHX7MechanicalSystem::SortBlockMatrix() {
  for (const char* name : {"Pn82D", "Pn82C", "Pn82B", "Pn82F.0", "Pn82E.1", "Pn82E.0"}) {
    arBlockMatrix_.MoveToFront(name);
  }
  arBlockMatrix_.MoveToEnd("Pn202");
  arBlockMatrix_.MoveToEnd("Pn203");
}

// ---- digested fields

void clsHX7MechanicalSystem::DigestBits(const std::string& bits) {
  machine_.system = SelectionDigit(bits, 2);
  machine_.encoderCount = EncoderCountFromIndex(SelectionDigit(bits, 3));
  sTimeUnits_ = TimeUnitsFromIndex(SelectionDigit(bits, 1));
  sDistanceUnits_ = DistanceUnitsFromIndex(SelectionDigit(bits, 0));
}

void clsHX7MechanicalSystem::DigestRows() {
  DigestBits(ValueOf("Pn82E"));
  machine_.n1 = Narrow<std::int16_t>(Int32FromCell(ValueOf("Pn82B")));
  machine_.n2 = Narrow<std::int16_t>(Int32FromCell(ValueOf("Pn82C")));
  machine_.resolution = Narrow<std::int16_t>(Int32FromCell(ValueOf("Pn82D")));
  machine_.length = static_cast<float>(ParseFloat(ValueOf("Pn82F.0")).value_or(0));
  ratio_.a = Int32FromCell(ValueOf("Pn203"));
  ratio_.b = Int32FromCell(ValueOf("Pn202"));
}

void clsHX7MechanicalSystem::UpdateProjectMechanicalSystemValues() {
  DigestRows();
  UpdateDerivedUnits();
}

// ---- commits

void clsHX7MechanicalSystem::ChangeAccepted(const MechanicalSystemEdit& edit) {
  Trapped("clsMechanicalSystem.ChangeAccepted: ", [&] {
    arBlockMatrix_ = edit.rows;
    blnIsDirty_ = blnIsDirty_ || edit.isDirty;
    MechanicalSystemOKed.Raise();
    UpdateProjectMechanicalSystemValues();
    UpdateUnitsColumn();
    // The counts below are computed with the project's factors: they must be those of the new
    // units.
    MechanicalSystemUnitsChanged.Raise(false);
    if (edit.isDirty) {
      blnNeedsSaving_ = true;
      if (!SaveToDB()) return false;
      MechanicalSystemOKed.Raise();
    }
    if (edit.resolutionDirty) {
      if (edit.systemDirty) {
        SystemAndResolutionChanged.Raise(machine_.length);
      } else {
        ResolutionChanged.Raise();
      }
    }
    YieldEvents();
    if (edit.needUpdateOverTravel) {
      OpenedProject().OverTravelLimits().UpdateOverTravel(machine_.resolution, machine_.length);
    }
    return true;
  });
}

void clsHX7MechanicalSystem::ChangeCanceled() {
  ReadFromDB();
  UpdateProjectMechanicalSystemValues();
  MechanicalSystemUnitsChanged.Raise(false);
}

void clsHX7MechanicalSystem::CommitUploadedData(bool bState) {
  frm_->PostUploadCommitted();
  if (!bState) return;
  blnNeedsSaving_ = true;
  blnIsDirty_ = false;
  SaveToDB();
}

clsHX7MechanicalSystem::Snapshot clsHX7MechanicalSystem::TakeSnapshot() const {
  return {arBlockMatrix_, blnIsDirty_, blnNeedsSaving_};
}

void clsHX7MechanicalSystem::RestoreSnapshot(const Snapshot& snapshot) {
  arBlockMatrix_ = snapshot.rows;
  blnIsDirty_ = snapshot.isDirty;
  blnNeedsSaving_ = snapshot.needsSaving;
  UpdateProjectMechanicalSystemValues();
  MechanicalSystemUnitsChanged.Raise(false);
}

}  // namespace velmoor
