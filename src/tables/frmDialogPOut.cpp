#include "tables/frmDialogPOut.h"

#include <string_view>

#include "tables/CellRules.h"

namespace velmoor {
namespace {

constexpr std::string_view kStates = "AN:Z";

}  // namespace

char frmDialogPOut::GetStateChar(int iIndex) {
  return kStates.at(static_cast<std::size_t>(iIndex));
}

void frmDialogPOut::SetPOutState(const std::string& state) {
  strPOutState_ = CheckOutputs(state).accepted ? state : std::string(kOutputs, ':');
}

void frmDialogPOut::FormLoad() {
  for (std::size_t output = 0; output < kOutputs; ++output) {
    ui().cmbPOut[output].SetItems({"A - on", "N - off", ": - as it was", "Z - zone signal"});
  }
  SetSelectedPOut();
}

void frmDialogPOut::SetSelectedPOut() {
  for (std::size_t output = 0; output < kOutputs; ++output) {
    const std::size_t choice = kStates.find(strPOutState_[output]);
    ui().cmbPOut[output].SetListIndex(static_cast<int>(choice));
  }
}

void frmDialogPOut::SetStateString() {
  for (std::size_t output = 0; output < kOutputs; ++output) {
    strPOutState_[output] = GetStateChar(ui().cmbPOut[output].ListIndex());
  }
}

bool frmDialogPOut::TakeResult() {
  SetStateString();
  return true;
}

}  // namespace velmoor
