// The button of a window that reads the axis: records what is read, and tells how far that is.
#pragma once

#include "platform/Controls.h"

namespace velmoor {

class RecordButton {
 public:
  // Of a window that has opened. Nobody records: the button is gone.
  void Bind(Button& button, Connections& connections);
  // As the recorder is now; to be called as values come.
  void Show();

 private:
  Button* button_ = nullptr;
};

}  // namespace velmoor
