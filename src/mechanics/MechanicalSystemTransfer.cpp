// The machine's description on its way to the amplifier and back.

#include <array>

#include "link/clsHX7Helix7.h"
#include "mechanics/clsHX7MechanicalSystem.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/data/MachineUnits.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tools/ParameterToolBase.h"

namespace velmoor {

using schema::Parameters;

namespace {

constexpr std::array<const char*, 8> kMechSystemPns{"Pn829", "Pn82A", "Pn82B", "Pn82C",
                                                    "Pn82D", "Pn82E", "Pn82F", "Pn830"};
// In the order of the window's rows.
constexpr std::array<const char*, 15> kUploadedPns{"Pn82B", "Pn82C", "Pn82D", "Pn81E", "Pn81F",
                                                   "Pn820", "Pn821", "Pn822", "Pn829", "Pn82A",
                                                   "Pn82E", "Pn82F", "Pn830", "Pn202", "Pn203"};

bool IsZero(const std::string& digits) {
  return digits.find_first_not_of('0') == std::string::npos;
}

}  // namespace

std::int16_t clsHX7MechanicalSystem::GetNumberOfNewRows() const {
  std::int16_t count = 0;
  for (const char* const strPn : kMechSystemPns) {
    if (store_.Get(strPn).IsMarked()) ++count;
  }
  return count;
}

bool clsHX7MechanicalSystem::Download(bool blnOverRide) {
  return Trapped("clsMechanicalSystem.Download: ", [&] {
    const std::int16_t total = blnOverRide ? NumMechSystemPns() : GetNumberOfNewRows();
    const auto database = OpenForWriting(store_.WorkingFile());
    const auto records = database->OpenTable(Parameters::kTable);
    std::int16_t count = 0;
    for (const std::string strPn : kMechSystemPns) {
      const Parameter& parameter = store_.Get(strPn);
      if (!parameter.recorded || (!blnOverRide && !parameter.IsMarked())) continue;
      if (gMainForm->StopProcedure()) {
        MechanicalSystemStatus.Raise("Download Terminated");
        return false;
      }
      MechanicalSystemDownloading.Raise(++count, total);
      const std::string value = parameter.controller;
      store_.AboutToSend(strPn);
      if (gMainForm->Helix7()->SetParameter(WireNumber(strPn), value) != kSuccess) {
        MechanicalSystemStatus.Raise("Download Failed");
        return false;
      }
      store_.Acknowledge(*database, *records, strPn, value);
      YieldEvents();
    }
    MechanicalSystemStatus.Raise("Download Complete");
    return true;
  });
}

// ---- upload

bool clsHX7MechanicalSystem::Upload() {
  return Trapped("clsMechanicalSystem.Upload: ", [this] {
    const bool read = ReadParameters() && DecideUpload();
    if (!read) DropUpload();
    return read;
  });
}

bool clsHX7MechanicalSystem::ReadParameters() {
  std::int16_t count = 0;
  for (const std::string strPn : kUploadedPns) {
    if (gMainForm->StopProcedure()) {
      MechanicalSystemStatus.Raise("Upload Terminated");
      return false;
    }
    MechanicalSystemUploading.Raise(++count, NumPns());
    std::string answer;
    bool read = gMainForm->Helix7()->GetParameter(WireNumber(strPn), answer) == kSuccess;
    try {
      if (read) store_.Stage(strPn, answer);
    } catch (const NumberError&) {
      read = false;  // an answer that is no value fails like one that does not come
    }
    if (!read) {
      MechanicalSystemStatus.Raise("Upload Failed");
      return false;
    }
    YieldEvents();
  }
  return true;
}

bool clsHX7MechanicalSystem::DecideUpload() {
  const auto text = [this](const char* strPn) { return store_.Staged().find(strPn)->second; };
  const auto whole = [&](const char* strPn) {
    return Narrow<std::int16_t>(Int32FromText(text(strPn)));
  };
  const std::string checksum = text("Pn829") + text("Pn82A");
  std::int16_t n1 = 0, n2 = 0, resolution = 0;
  try {
    n1 = whole("Pn82B");
    n2 = whole("Pn82C");
    resolution = whole("Pn82D");
    (void)store_.UnitsAfter(store_.StagedChanges());
  } catch (const std::exception&) {
    // No units to show anything in: like an answer that does not come.
    MechanicalSystemStatus.Raise("Upload Failed");
    return false;
  }
  const float length = world().rx900Utils->DecToFloat(text("Pn82F") + text("Pn830"));
  const std::string expected =
      world().rx900Utils->MechSystemChecksum(n1, n2, resolution, length, text("Pn82E"));
  const bool zeroSystem = length == 0.0F || n1 == 0 || n2 == 0;
  if (checksum != expected) {
    // A described system under another checksum stays as it was read, and counts as a success.
    (zeroSystem ? MechanicalSystemZeroSystem : MechanicalSystemCheckSumFailed).Raise();
    return !zeroSystem;
  }
  if (IsZero(checksum) || zeroSystem) {
    (IsZero(checksum) ? MechanicalSystemNoCheckSum : MechanicalSystemZeroSystem).Raise();
    return false;
  }
  MechanicalSystemStatus.Raise("Upload Complete");
  return true;
}

void clsHX7MechanicalSystem::DropUpload() {
  for (const char* const strPn : kUploadedPns) store_.DropStaged(strPn);
}

}  // namespace velmoor
