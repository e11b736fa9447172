#include "tools/clsHX7Tuning.h"

#include <algorithm>
#include <array>

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"
#include "tools/ParameterRules.h"

namespace velmoor {

clsHX7Tuning::clsHX7Tuning(ParameterStore& store)
    : ParameterToolBase(store, Tool::tuning, "clsTuning") {
  AttachWindow(frm_);
  windowConnections_ += frm_.RigidityChanged.Connect([this] {
    blnChangedRigidity_ = frm_.ChangedRigidity();
    if (!blnChangedRigidity_) acceptedRigidity_ = false;
  });
}

void clsHX7Tuning::SetChangedRigidity(bool changed) {
  blnChangedRigidity_ = changed;
  if (!changed) acceptedRigidity_ = false;
  frm_.SetChangedRigidity(changed);
}

ParameterRow clsHX7Tuning::Describe(int row) const {
  ParameterRow result = ParameterToolBase::Describe(row);
  result.nibble = ParameterOf(row).nibble;
  if (result.nibble == nullptr) return result;
  // The tool's own limits are numbers; they are shown as digits.
  const auto hex = [](const std::string& number) {
    return HexText(static_cast<std::uint32_t>(Int32FromCell(number)), 4);
  };
  result.minimum = hex(result.minimum);
  result.maximum = hex(result.maximum);
  return result;
}

bool clsHX7Tuning::Takes(const ParameterDefinition& definition) const {
  static constexpr std::array<std::string_view, 12> kRows{"Pn100", "Pn101", "Pn102", "Pn103",
                                                          "Pn107", "Pn108", "Pn109", "Pn10A",
                                                          "Pn110", "Pn401", "Pn408", "Pn409"};
  return std::find(kRows.begin(), kRows.end(), definition.user_constant) != kRows.end();
}

bool clsHX7Tuning::Download(bool blnOverRide) {
  if (!DownloadRows(blnOverRide)) return false;
  if (blnChangedRigidity_ && PerformRigidityChange() == kSuccess) {
    SetChangedRigidity(false);
    RigidityChanged.Raise();
  }
  return true;
}

ResultCode clsHX7Tuning::PerformRigidityChange() {
  const std::int16_t level = GetRigidity();
  if (!blnChangedRigidity_ || level < 1 || level > 10) return kSuccess;
  return gMainForm->Helix7()->SetRigidity(level);
}

bool clsHX7Tuning::frm_PropertiesChangeAccepted() {
  if (!ParameterToolBase::frm_PropertiesChangeAccepted()) return false;
  acceptedRigidity_ = blnChangedRigidity_;
  return true;
}

}  // namespace velmoor
