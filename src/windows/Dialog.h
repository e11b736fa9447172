// The base of the dialogs with OK and Cancel: modal. Their result stays in their properties until
// it is read.
#pragma once

#include "windows/Window.h"

namespace velmoor {

class Dialog : public Window {
 public:
  // Returns when the dialog has closed; true after OK.
  [[nodiscard]] bool Ask();

 protected:
  using Window::Window;
  // Shows what the properties hold and binds the controls.
  void FormLoad() override = 0;
  // The last checks behind OK, with their words. True: the properties hold the result.
  virtual bool TakeResult() { return true; }
  // The layouts have cmdOK and cmdCancel.
  template <typename Ui>
  void Take(const Ui& ui) {
    connections_ += ui.cmdOK.Click.Connect([this] { Accept(); });
    connections_ += ui.cmdCancel.Click.Connect([this] { Unload(); });
  }

 private:
  void Accept();

  bool accepted_ = false;
};

}  // namespace velmoor
