#include "tools/clsHX7Tuning.h"

#include <algorithm>
#include <array>

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"

namespace velmoor {

bool clsHX7Tuning::Takes(const ParameterDefinition& definition) const {
  static constexpr std::array<std::string_view, 12> kRows{"Pn100", "Pn101", "Pn102", "Pn103",
                                                          "Pn107", "Pn108", "Pn109", "Pn10A",
                                                          "Pn110", "Pn401", "Pn408", "Pn409"};
  return std::find(kRows.begin(), kRows.end(), definition.user_constant) != kRows.end();
}

void clsHX7Tuning::FillRow(int row, const ParameterDefinition& definition) {
  ParameterToolBase::FillRow(row, definition);
  arBlockMatrix_.Set(row, Column::size, definition.Size);
  arIsNibble_.resize(static_cast<std::size_t>(row));
  arIsNibble_.back() = definition.nibble_data_id;
}

void clsHX7Tuning::DefinitionsRead() {
  nibbles_ = ReadNibbleDefinitions(CataloguePath(), strNibbleTable_);
}

bool clsHX7Tuning::Download(bool blnOverRide) {
  if (!DownloadRows(blnOverRide)) return false;
  if (blnChangedRigidity_ && PerformRigidityChange() == kSuccess) {
    blnChangedRigidity_ = false;
    RigidityChanged.Raise();
  }
  return true;
}

ResultCode clsHX7Tuning::PerformRigidityChange() {
  if (!blnChangedRigidity_ || iRigidity_ < 1 || iRigidity_ > 10) return kSuccess;
  return gMainForm->Helix7()->SetRigidity(iRigidity_);
}

std::string clsHX7Tuning::UploadedValue(int row, const std::string& answer) const {
  if (IsNibbleKey(arIsNibble_.at(static_cast<std::size_t>(row) - 1))) return Right(answer, 4);
  return ParameterToolBase::UploadedValue(row, answer);
}

void clsHX7Tuning::AfterUpload() {
  UpdateEditorBlockMatrix();
  PostUpload();
}

}  // namespace velmoor
