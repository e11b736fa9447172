// The life of a window: load, show, come to the front, close.
//
// Owned by its tool or by the caller of Show for as long as that wishes; the form exists only while
// the window is open. A window class derives from WindowOf, which gives it the controls of its
// layout.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/Form.h"

namespace velmoor {

class Window {
 public:
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  // Returns as Form tells of the mode. False when the form cannot be had, of which the user was
  // told.
  bool Show(FormMode mode);
  // Closes as the user does, with the questions.
  void Unload();
  void BringToFront();
  [[nodiscard]] bool IsOpen() const { return form_ != nullptr; }
  // It takes the keyboard.
  [[nodiscard]] bool IsActive() const;

  Event<> Closed;

 protected:
  explicit Window(const Layout& layout) : layout_(layout) {}

  // Binds the form's controls and shows what they begin with; runs once each time it opens.
  virtual void FormLoad() = 0;
  // It came to the front.
  virtual void FormActivate() {}
  // About to close; `cancel` keeps it open.
  virtual void FormQueryUnload(bool& /*cancel*/) {}
  // It closes; its controls are still there.
  virtual void FormUnload() {}

  [[nodiscard]] Form& form() const { return *form_; }
  [[nodiscard]] std::string FormName() const { return std::string(layout_.name); }
  // Whether the form that was open when the token was taken still is: to be asked after every
  // yield.
  [[nodiscard]] std::weak_ptr<const void> Token() const { return token_; }
  // A base of several windows takes from their layouts the controls that all of them have.
  template <typename Ui>
  void Take(const Ui& /*ui*/) {}

  Connections connections_;  // of the open form; cleared as it closes

 private:
  virtual void TakeControls(Form& form) = 0;
  void OnUnloaded();

  const Layout& layout_;
  std::unique_ptr<Form> form_;
  std::shared_ptr<const void> token_;
};

// `Ui` is the layout's struct, layouts::frmZone.
template <typename Ui, typename Base = Window>
class WindowOf : public Base {
 protected:
  template <typename... Args>
  explicit WindowOf(Args&&... args) : Base(Ui::kLayout, std::forward<Args>(args)...) {}
  // The controls of the open form.
  [[nodiscard]] const Ui& ui() const {
    (void)this->form();  // a window that has closed has none
    return *ui_;
  }

 private:
  void TakeControls(Form& form) final {
    ui_.emplace(form);
    this->Take(*ui_);
  }

  std::optional<Ui> ui_;
};

}  // namespace velmoor
