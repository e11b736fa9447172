// Port: windows.
//
// A window class asks Forms for a form of its layout, reaches the controls through the layout's
// struct, and destroys the form when it has unloaded, from within Unloaded too. A form is nothing
// but controls; how they are laid out is the adapter's affair.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Layout.h"

namespace velmoor {

enum class FormMode {
  modeless,  // a child of the main window; Show returns at once
  modal,     // Show returns when the form has closed; no other window takes input meanwhile
  blocking,  // no other window takes input, but Show returns at once
  splash,    // takes no input, counts nowhere; Show returns at once
  page       // fills the main window while no modeless form is on show; counts nowhere and is never
             // the active one. There is one at a time; Show returns at once
};

class Form : public LaidOut {
 public:
  using LaidOut::LaidOut;
  // Takes the form away without a word: neither event is raised.
  ~Form() override = default;

  [[nodiscard]] std::string Name() const { return std::string(GetLayout().name); }  // "frmZone"
  virtual void SetCaption(const std::string& caption) = 0;
  [[nodiscard]] virtual std::string Caption() const = 0;
  // Marks the caption as holding changes that are not kept yet.
  virtual void SetChanged(bool changed) = 0;

  virtual void Show(FormMode mode) = 0;
  [[nodiscard]] virtual bool IsShown() const = 0;
  // To the front, restored when it was reduced to an icon.
  virtual void Activate() = 0;
  // Closes as the user does, through both events. Returns whether it is closed; the form may be
  // destroyed then.
  virtual bool Unload() = 0;

  Event<> Activated;         // shown, or came to the front
  Event<bool&> QueryUnload;  // about to close; a handler that sets the flag keeps it open
  Event<> Unloaded;          // closing, raised before the closing call returns
};

class MainWindow;

class Forms {
 public:
  virtual ~Forms() = default;
  // A form of that layout, not shown yet.
  [[nodiscard]] virtual std::unique_ptr<Form> Load(const Layout& layout) = 0;
  [[nodiscard]] virtual std::unique_ptr<MainWindow> LoadMainWindow(const Layout& layout) = 0;
  [[nodiscard]] virtual std::unique_ptr<Timer> NewTimer() = 0;
  // The forms on show, oldest first, without splashes, pages and the main window.
  [[nodiscard]] virtual std::vector<Form*> Shown() const = 0;
  // The one that takes the keyboard, or null.
  [[nodiscard]] virtual Form* Active() const = 0;
  // A modal or blocking form, a message box or a file dialog is up.
  [[nodiscard]] virtual bool InputBlocked() const = 0;

  // The user asks for help: by F1, or by the button cmdHelp of a form. The form that has the
  // keyboard, or the one below a box; null where there is none but the main window.
  Event<const Form*> HelpAsked;
};

}  // namespace velmoor
