#include "online/RecordButton.h"

#include "platform/Numbers.h"
#include "recordings/Recorder.h"
#include "session/Session.h"

namespace velmoor {

void RecordButton::Bind(Button& button, Connections& connections) {
  button_ = &button;
  Recorder* const recorder = gMainForm->Record();
  button.SetVisible(recorder != nullptr);
  if (recorder == nullptr) return;
  connections += button.Click.Connect([recorder] { recorder->Asked.Raise(); });
  connections += recorder->Changed.Connect([this] { Show(); });
  Show();
}

void RecordButton::Show() {
  const Recorder* const recorder = gMainForm->Record();
  if (recorder == nullptr) return;
  switch (recorder->Now()) {
    case Recorder::State::idle:
      button_->SetCaption("Record");
      break;
    case Recorder::State::waiting:
      button_->SetCaption("Stop Waiting");
      break;
    case Recorder::State::running:
      button_->SetCaption("Stop (" + FixedText(recorder->Seconds(), 1) + " s)");
      break;
  }
  const std::string words = recorder->Words();
  button_->SetToolTip(words.empty() ? "Records what is read, as the window Recordings has it set"
                                    : words);
}

}  // namespace velmoor
