// The base of the windows that work on the live hardware, and of those that print: open, close,
// tell that it closed.
//
// Owned by its tool for as long as the tool lives; the form exists only while the window is open.
#pragma once

#include <memory>
#include <string>

#include "platform/Form.h"

namespace velmoor {

// The name of one control of a row of them: "lblValue_" and 3 give "lblValue_3".
[[nodiscard]] std::string Numbered(const std::string& name, int number);

class OnlineWindow {
 public:
  virtual ~OnlineWindow();
  OnlineWindow(const OnlineWindow&) = delete;
  OnlineWindow& operator=(const OnlineWindow&) = delete;

  // Modal and blocking windows as Form tells. False when the form cannot be had, of which the user
  // was told.
  bool Show(FormMode mode);
  void Unload();
  void BringToFront();
  [[nodiscard]] bool IsOpen() const { return form_ != nullptr; }

  Event<> Closed;

 protected:
  explicit OnlineWindow(std::string formName) : formName_(std::move(formName)) {}

  // Binds the form's controls and shows what they begin with; runs once each time it opens.
  virtual void FormLoad() = 0;
  // The window closes; its controls are still there.
  virtual void FormUnload() {}

  [[nodiscard]] Form& form() { return *form_; }
  // Whether the form that was open when the token was taken still is: to be asked after every
  // yield.
  [[nodiscard]] std::weak_ptr<const void> Token() const { return token_; }

  Connections connections_;  // of the open form; cleared as it closes

 private:
  void OnUnloaded();

  std::string formName_;
  std::unique_ptr<Form> form_;
  std::shared_ptr<const void> token_;
};

}  // namespace velmoor
