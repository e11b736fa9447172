// The machine's description on its way to the amplifier and back.

#include "link/clsHX7Helix7.h"
#include "mechanics/MachineUnits.h"
#include "mechanics/clsHX7MechanicalSystem.h"
#include "mechanics/frmMechanicalSystem.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "platform/World.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tools/ParameterToolBase.h"
#include "tools/UnitConversion.h"

namespace velmoor {

using schema::Parameters;

namespace {

// The right eight digits of a half of a 16-digit text, leading zeros restored.
std::string Half(const std::string& answer) {
  return PadToDigits(Right(Trim(answer), 8), 8);
}

bool IsZero(const std::string& digits) {
  return digits.find_first_not_of('0') == std::string::npos;
}

}  // namespace

// ---- download

bool clsHX7MechanicalSystem::Download(bool blnOverRide) {
  return Trapped("clsMechanicalSystem.Download: ", [&] {
    const std::int16_t total = blnOverRide ? NumMechSystemPns() : GetNumberOfNewRows();
    const auto database = OpenForWriting(strSaveDBPath_);
    const auto records = database->OpenTable(Parameters::kTable);
    std::int16_t count = 0;
    for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
      const std::string strPn = records->Text(Parameters::kPn);
      if (!IsMechSystemPn(strPn)) continue;
      if (!blnOverRide && records->Text(Parameters::kDirty) != "1") continue;
      if (gMainForm->StopProcedure()) {
        MechanicalSystemStatus.Raise("Download Terminated");
        return false;
      }
      MechanicalSystemDownloading.Raise(++count, total);
      if (!DownloadRecord(*database, *records, strPn)) {
        MechanicalSystemStatus.Raise("Download Failed");
        return false;
      }
      YieldEvents();
    }
    MechanicalSystemStatus.Raise("Download Complete");
    return true;
  });
}

bool clsHX7MechanicalSystem::DownloadRecord(Database& database, RowSet& records,
                                            const std::string& strPn) {
  const std::string value = records.Text(Parameters::kControllerValue);
  if (gMainForm->Helix7()->SetParameter(WireNumber(strPn), value) != 0) return false;
  records.Edit();
  records.Set(Parameters::kDirty, "0");
  records.Update();
  database.Commit();
  const int row = arBlockMatrix_.FindRow(strPn);
  if (row > 0) {
    arBlockMatrix_.Set(row, Column::dirty, "0");
    UpdateUploadedParameter(row, value);
    arBlockMatrix_.ClearTouched(row);
  }
  return true;
}

// ---- upload

bool clsHX7MechanicalSystem::Upload() {
  return Trapped("clsMechanicalSystem.Upload: ", [this] {
    const BlockMatrix before = arBlockMatrix_;
    if (!ReadParameters()) return false;
    try {
      UploadedTexts texts = TakeUploadedDescription();
      // The project computes its factors anew in this event; the values below need them.
      MechanicalSystemUnitsChanged.Raise(false);
      TakeUploadedValues(texts);
      return DecideUpload(texts, before);
    } catch (const NumberError&) {
      // An answer that is no number fails like one that does not come; foreign factors must not
      // stay.
      arBlockMatrix_ = before;
      UpdateProjectMechanicalSystemValues();
      MechanicalSystemUnitsChanged.Raise(false);
      MechanicalSystemStatus.Raise("Upload Failed");
      return false;
    }
  });
}

// Reads all real rows into column 4 as they come.
bool clsHX7MechanicalSystem::ReadParameters() {
  std::int16_t count = 0;
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const std::string name = arBlockMatrix_.Text(row, Column::name);
    if (name.size() != 5) continue;  // a view row
    if (gMainForm->StopProcedure()) {
      MechanicalSystemStatus.Raise("Upload Terminated");
      return false;
    }
    MechanicalSystemUploading.Raise(++count, NumPns());
    std::string answer;
    if (gMainForm->Helix7()->GetParameter(WireNumber(name), answer) != 0) {
      MechanicalSystemStatus.Raise("Upload Failed");
      return false;
    }
    arBlockMatrix_.Set(row, Column::value, answer);
    YieldEvents();
  }
  return true;
}

// The selections, the resolution and the measure, with their view rows.
clsHX7MechanicalSystem::UploadedTexts clsHX7MechanicalSystem::TakeUploadedDescription() {
  const auto put = [this](const char* name, const std::string& value) {
    const int row = arBlockMatrix_.FindRow(name);
    if (row > 0) arBlockMatrix_.Set(row, Column::value, value);
  };
  UploadedTexts texts;
  texts.bits = Right(ValueOf("Pn82E"), 4);
  const std::string measure1 = Half(ValueOf("Pn82F"));
  const std::string measure2 = Half(ValueOf("Pn830"));
  texts.measure = measure1 + measure2;
  machine_.resolution = Narrow<std::int16_t>(Int32FromText(ValueOf("Pn82D")));
  put("Pn82D", NumberText(machine_.resolution));
  put("Pn82E", texts.bits);
  put("Pn82F", measure1);
  put("Pn830", measure2);
  DigestBits(texts.bits);
  machine_.length = world().rx900Utils->DecToFloat(texts.measure);
  put("Pn82E.3", NumberText(machine_.encoderCount));
  put("Pn82E.2", SelectedSystemName());
  put("Pn82E.1", sTimeUnits_);
  put("Pn82E.0", sDistanceUnits_);
  put("Pn82F.0", NumberText(machine_.length));
  const int measureRow = arBlockMatrix_.FindRow("Pn82F.0");
  if (measureRow > 0) {
    arBlockMatrix_.Set(measureRow, Column::description, SystemMeasureDescription(machine_.system));
  }
  UpdateDerivedUnits();
  UpdateUnitsColumn();
  return texts;
}

void clsHX7MechanicalSystem::TakeUploadedValues(UploadedTexts& texts) {
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const std::string& name = arBlockMatrix_.Text(row, Column::name);
    if (name.size() != 5 || name == "Pn82D" || name == "Pn82E") continue;
    UpdateUploadedParameter(row, std::string(arBlockMatrix_.Text(row, Column::value)));
  }
  texts.checksum = ValueOf("Pn829") + ValueOf("Pn82A");
  DigestRows();
}

// Normalises one row by its name.
void clsHX7MechanicalSystem::UpdateUploadedParameter(int row, const std::string& strValue) {
  const std::string& name = arBlockMatrix_.Text(row, Column::name);
  std::string value;
  if (const auto kind = UnitKindOf(name)) {
    value = CountsToUnits(Int32FromText(strValue), FactorOf(OpenedProject(), *kind));
  } else if (name == "Pn829" || name == "Pn82A" || name == "Pn82F" || name == "Pn830") {
    value = Half(strValue);
  } else if (name == "Pn82E") {
    value = Right(strValue, 4);
  } else {
    value = NumberText(Int32FromText(strValue));
  }
  arBlockMatrix_.Set(row, Column::value, value);
}

bool clsHX7MechanicalSystem::DecideUpload(const UploadedTexts& texts, const BlockMatrix& before) {
  const std::string expected = world().rx900Utils->MechSystemChecksum(
      machine_.n1, machine_.n2, machine_.resolution, machine_.length, texts.bits);
  const bool zeroSystem = machine_.length == 0.0F || machine_.n1 == 0 || machine_.n2 == 0;
  if (texts.checksum != expected) {
    if (zeroSystem) return RefuseUpload(before, MechanicalSystemZeroSystem);
    // A described system under another checksum stays as it was read, and counts as a success.
    MechanicalSystemCheckSumFailed.Raise();
    return true;
  }
  if (IsZero(texts.checksum)) return RefuseUpload(before, MechanicalSystemNoCheckSum);
  if (zeroSystem) return RefuseUpload(before, MechanicalSystemZeroSystem);
  UpdateProjectMechanicalSystemValues();
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    arBlockMatrix_.Set(row, Column::dirty, "0");
  }
  frm_->PostUpload();
  UpdateEditorBlockMatrix(false);
  MechanicalSystemUnitsChanged.Raise(false);
  MechanicalSystemStatus.Raise("Upload Complete");
  return true;
}

bool clsHX7MechanicalSystem::RefuseUpload(const BlockMatrix& before, const Event<>& reason) {
  arBlockMatrix_ = before;
  UpdateProjectMechanicalSystemValues();
  reason.Raise();
  return false;
}

}  // namespace velmoor
