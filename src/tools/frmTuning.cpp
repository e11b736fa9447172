#include "tools/frmTuning.h"

#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Utility.h"

namespace velmoor {
namespace {

constexpr const char* kSwitch = "Pn408";
constexpr const char* kFrequency = "Pn409";
constexpr std::int16_t kOfflineLevel = 4;

std::vector<std::string> RigidityTexts() {
  return {"Low Rigidity [1/10]",    "Low Rigidity [2/10]",    "Low Rigidity [3/10]",
          "Medium Rigidity [4/10]", "Medium Rigidity [5/10]", "Medium Rigidity [6/10]",
          "High Rigidity [7/10]",   "High Rigidity [8/10]",   "High Rigidity [9/10]",
          "High Rigidity [10/10]!"};
}

}  // namespace

void frmTuning::FormLoad() {
  digits_.Bind(ui().lblDigit, ui().cmbDigit, connections_, [this](const std::string& text) {
    const int row = CurrentRow();
    if (row > 0 && !PutValue(row, text)) CurrentRowChanged(row);
  });
  ParameterGridWindow::FormLoad();
  HideRows();
  ShowNotchFilter();
  ui().cmbRigidity.SetItems(RigidityTexts());
  rigidityBefore_ = iRigidity_;
  changedBefore_ = blnChangedRigidity_;
  UpdateRigidity();
  connections_ += ui().chkNotchFilter.Click.Connect([this] { chkNotchFilter_Click(); });
  connections_ += ui().txtNotchFilterFrequency.Validate.Connect(
      [this](bool&) { (void)CheckNotchFilterFrequency(); });
  connections_ += ui().cmdTry.Click.Connect([this] {
    // The project's values are tried: those that are on show.
    if (CommitPending()) Requested.Raise(WindowRequest::tryIt);
  });
  connections_ += ui().cmbRigidity.Click.Connect([this] { cmbRigidity_Click(); });
  connections_ += ChangeCanceled.Connect([this] { TakeBackRigidity(); });
}

void frmTuning::HideRows() {
  for (const char* const strPn : {kSwitch, kFrequency}) {
    const int row = tool().FindRow(strPn);
    if (row > 0) grid().SetRowHidden(row, true);
  }
}

void frmTuning::CurrentRowChanged(int row) {
  ParameterGridWindow::CurrentRowChanged(row);
  if (row >= 1 && row <= tool().RowsInArray()) digits_.Show(tool().Describe(row), false);
}

void frmTuning::RefreshGrid() {
  ParameterGridWindow::RefreshGrid();
  if (IsOpen()) ShowNotchFilter();
}

// ---- the notch filter: Pn408 as a check box, Pn409 as a text box

void frmTuning::ShowNotchFilter() {
  const int row = tool().FindRow(kSwitch);
  const int frequency = tool().FindRow(kFrequency);
  if (row == 0 || frequency == 0) return;
  const bool on = Right(tool().Text(row, Column::value), 1) == "1";
  ui().chkNotchFilter.SetValue(on);
  ui().txtNotchFilterFrequency.SetText(tool().Text(frequency, Column::value));
  ui().txtNotchFilterFrequency.SetEnabled(on);
}

void frmTuning::PutSetting(const char* strPn, const std::string& value) {
  const int row = tool().FindRow(strPn);
  if (row == 0) return;
  BeforeEdit();
  tool().EditValue(row, value);
  MarkEdited();
  EditDone();
}

void frmTuning::chkNotchFilter_Click() {
  const bool on = ui().chkNotchFilter.Value();
  // The other digits are always sent as 0.
  PutSetting(kSwitch, on ? "0001" : "0000");
  ui().txtNotchFilterFrequency.SetEnabled(on);
}

// False: the text was refused, of which the user was told, and is the old one again.
bool frmTuning::CheckNotchFilterFrequency() {
  TextBox& box = ui().txtNotchFilterFrequency;
  const int row = tool().FindRow(kFrequency);
  const std::string text(Trim(box.Text()));
  if (row == 0 || text.empty()) return true;
  const ParameterRow described = tool().Describe(row);
  if (text == described.value) return true;
  std::string strError;
  const std::int32_t low = Int32FromCell(described.minimum);
  const std::int32_t high = Int32FromCell(described.maximum);
  if (IsIntegerText(text, strError) && Int32FromText(text) >= low && Int32FromText(text) <= high) {
    PutSetting(kFrequency, NumberText(Int32FromText(text)));
    return true;
  }
  // The old text first: the box takes the focus away, which would check once more.
  box.SetText(described.value);
  ShowExclamation(
      "Frequency value entered is out of range!\rValue must be an integer in the range "
      "from " +
      NumberText(low) + " and " + NumberText(high) + ".\rPrevious value will be restored.");
  return false;
}

// ---- the rigidity

void frmTuning::cmbRigidity_Click() {
  iRigidity_ = Narrow<std::int16_t>(ui().cmbRigidity.ListIndex() + 1);
  blnChangedRigidity_ = true;
  rigidityAsked_ = false;
  SetNotCommitted(true);
  RigidityChanged.Raise();
}

// A level that waits for its download stays chosen, whatever the amplifier has.
void frmTuning::UpdateRigidity() {
  std::string text = "Offline";
  std::int16_t level = kOfflineLevel;
  if (gMainForm->IsOnline()) {
    const bool known = gMainForm->Helix7()->GetRigidity(level) == kSuccess;
    text = known ? NumberText(level) : "Unknown";
  }
  if (!blnChangedRigidity_) iRigidity_ = level;
  ui().lblRigidity.SetText(text);
  ui().cmbRigidity.SetListIndex(iRigidity_ - 1);
}

void frmTuning::QueryToResetChangedRigidity() {
  if (!blnChangedRigidity_ || rigidityAsked_) return;
  rigidityAsked_ = AskOkCancel(
      "Rigidity setting has been changed.\r"
      "Parameters 100, 101, 102, and 401 will be changed during download.");
  if (rigidityAsked_) return;
  blnChangedRigidity_ = false;
  RigidityChanged.Raise();
  ShowInformation("Rigidity change has been canceled.");
  UpdateRigidity();
}

void frmTuning::TakeBackRigidity() {
  iRigidity_ = rigidityBefore_;
  blnChangedRigidity_ = changedBefore_;
  rigidityAsked_ = changedBefore_;
  RigidityChanged.Raise();
}

bool frmTuning::HoldsMore() const {
  return blnChangedRigidity_ != changedBefore_ || iRigidity_ != rigidityBefore_;
}

bool frmTuning::MayCommit() {
  if (!CheckNotchFilterFrequency()) return false;
  QueryToResetChangedRigidity();
  rigidityBefore_ = iRigidity_;
  changedBefore_ = blnChangedRigidity_;
  return true;
}

void frmTuning::cmdDownload_Click() {
  if (!AskOkCancel("Existing gain tuning parameters in hardware will be overwritten!\r"
                   "Do you wish to proceed?")) {
    return;
  }
  // What is sent is what the window shows.
  if (!CommitPending()) return;
  Requested.Raise(WindowRequest::download);
  changedBefore_ = blnChangedRigidity_;
  UpdateRigidity();
}

}  // namespace velmoor
