// Port: windows.
//
// A window class asks Forms for the form of its name, binds to its controls by their names, and
// destroys the form when it has unloaded, from within Unloaded too. A form is nothing but controls;
// how they are laid out is the adapter's affair.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Chart.h"
#include "platform/Controls.h"
#include "platform/Drawing.h"
#include "platform/Event.h"
#include "platform/Grid.h"
#include "platform/PageView.h"
#include "platform/TimeChart.h"

namespace velmoor {

// Commands of menus and tool bars, by the names of their menu entries, such as "mnuFileOpen". A
// tool that stands for the same command has no name of its own. An unknown name throws
// std::logic_error.
class CommandSet {
 public:
  virtual ~CommandSet() = default;
  virtual void SetCommandEnabled(const std::string& name, bool enabled) = 0;
  [[nodiscard]] virtual bool CommandEnabled(const std::string& name) const = 0;
  virtual void SetCommandVisible(const std::string& name, bool visible) = 0;
  [[nodiscard]] virtual bool CommandVisible(const std::string& name) const = 0;
  virtual void SetCommandChecked(const std::string& name, bool checked) = 0;
  [[nodiscard]] virtual bool CommandChecked(const std::string& name) const = 0;

  Event<const std::string&> CommandChosen;  // the user's choice, by the command's name
};

enum class FormMode {
  modeless,  // a child of the main window; Show returns at once
  modal,     // Show returns when the form has closed; no other window takes input meanwhile
  blocking,  // no other window takes input, but Show returns at once
  splash     // takes no input, counts nowhere; Show returns at once
};

class Form : public CommandSet {
 public:
  // Takes the form away without a word: neither event is raised.
  ~Form() override = default;

  [[nodiscard]] virtual std::string Name() const = 0;  // "frmZone"
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

  // Control by name. Throws std::logic_error where the layout has none of that name and kind.
  virtual Button& button(const std::string& name) = 0;
  virtual TextBox& textBox(const std::string& name) = 0;
  virtual ComboBox& comboBox(const std::string& name) = 0;
  virtual CheckBox& checkBox(const std::string& name) = 0;
  virtual OptionGroup& optionGroup(const std::string& name) = 0;
  virtual Label& label(const std::string& name) = 0;
  virtual Lamp& lamp(const std::string& name) = 0;
  virtual ProgressBar& progressBar(const std::string& name) = 0;
  virtual Grid& grid(const std::string& name) = 0;
  virtual Chart& chart(const std::string& name) = 0;
  virtual TimeChart& timeChart(const std::string& name) = 0;
  virtual TerminalScreen& terminalScreen(const std::string& name) = 0;
  virtual Drawing& drawing(const std::string& name) = 0;
  virtual PageView& pageView(const std::string& name) = 0;
  virtual Timer& timer(const std::string& name) = 0;

  Event<> Activated;         // shown, or came to the front
  Event<bool&> QueryUnload;  // about to close; a handler that sets the flag keeps it open
  Event<> Unloaded;          // closing, raised before the closing call returns
};

class MainWindow;

class Forms {
 public:
  virtual ~Forms() = default;
  // The form of that name, not shown yet. Throws std::logic_error where no layout has the name.
  [[nodiscard]] virtual std::unique_ptr<Form> Load(const std::string& name) = 0;
  [[nodiscard]] virtual std::unique_ptr<MainWindow> LoadMainWindow() = 0;
  // The forms on show, oldest first, without splashes and the main window.
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
