#include "tables/frmDialogEvent.h"

#include <array>

#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "session/Session.h"
#include "tables/CellRules.h"
#include "tables/clsHX7Position.h"

namespace velmoor {
namespace {

// The event texts in the order of the options; the last waits for the time alone.
constexpr std::array<const char*, 12> kEvents{"I",    "N",    "D",    "SEL0", "SEL1", "SEL2",
                                              "SEL3", "SEL4", "SEL5", "SEL6", ":",    ""};
constexpr int kTimeOnly = 11;
constexpr const char* kVersionLine =
    "\rEvents SEL5 and SEL6 are only functional with firmware version 3 or newer!";

std::string EventText(int index) {
  return kEvents[static_cast<std::size_t>(index)];
}

}  // namespace

frmDialogEvent::frmDialogEvent()
    : blnIsOnline_(gMainForm->IsOnline()),
      blnNewOptionVersion_(blnIsOnline_ && gMainForm->Helix7()->IsOptionVersionNew()) {}

void frmDialogEvent::SetOnline(bool online, bool newOptionVersion) {
  blnIsOnline_ = online;
  blnNewOptionVersion_ = newOptionVersion;
}

void frmDialogEvent::SetEventCell(const std::string& cell) {
  const std::size_t at = cell.find('T');
  const std::string event = cell.substr(0, at);
  intEventNumber_ = cell.empty() ? 0 : kTimeOnly;
  for (std::size_t i = 0; i < kEvents.size(); ++i) {
    if (!event.empty() && event == kEvents[i]) intEventNumber_ = static_cast<int>(i);
  }
  strEventTime_ = at == std::string::npos ? "" : cell.substr(at + 1);
}

std::string frmDialogEvent::EventCell() const {
  return EventText(intEventNumber_) + "T" + (strEventTime_.empty() ? "0" : strEventTime_);
}

void frmDialogEvent::FormLoad() {
  ui().optEvent.SetValue(intEventNumber_);
  ui().txtTime.SetText(strEventTime_);
  connections_ += ui().optEvent.Click.Connect([this](int index) { optEvent_Click(index); });
  connections_ += ui().txtTime.Validate.Connect([this](bool& cancel) { txtTime_Validate(cancel); });
  EnableTime(true);
}

// Every event takes a time behind it.
void frmDialogEvent::EnableTime(bool bState) {
  ui().txtTime.SetEnabled(bState);
}

bool frmDialogEvent::FirmwareKnows(int index) const {
  if (!IsNewEvent(EventText(index)) || !blnIsOnline_ || blnNewOptionVersion_) return true;
  ShowExclamation("Current RX900 firmware version does not support SEL5 and SEL6 events!" +
                  std::string(kVersionLine));
  return false;
}

void frmDialogEvent::optEvent_Click(int index) {
  if (!FirmwareKnows(index)) {
    ui().optEvent.SetValue(intEventNumber_);
    return;
  }
  // Offline the choice stands, on purpose: nobody knows what will be connected.
  if (IsNewEvent(EventText(index)) && !blnIsOnline_) {
    ShowExclamation("Velmoor was unable to retrieve firmware version while offline!" +
                    std::string(kVersionLine));
  }
  intEventNumber_ = index;
}

void frmDialogEvent::txtTime_Validate(bool& cancel) {
  TextBox& box = ui().txtTime;
  const std::string text(Trim(box.Text()));
  if (text.empty()) {
    strEventTime_.clear();
    return;
  }
  const CellCheck check = CheckEventTime(text);
  if (!check.accepted) {
    ShowExclamation(check.words);
    box.SetText(strEventTime_);
    box.SelectAll();
    cancel = true;
    return;
  }
  strEventTime_ = check.text;
  box.SetText(strEventTime_);
}

bool frmDialogEvent::TakeResult() {
  bool cancel = false;
  txtTime_Validate(cancel);
  return !cancel && FirmwareKnows(intEventNumber_);
}

}  // namespace velmoor
