// Port: the controls of a window, the grid apart (Grid.h).
//
// A control belongs to its Form and lives as long. Events come from the user alone: setting a
// control from code raises nothing. Texts are UTF-8; in captions "&" marks the access key.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/Event.h"
#include "platform/Keys.h"

namespace velmoor {

class Control {
 public:
  virtual ~Control() = default;
  virtual void SetEnabled(bool enabled) = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;
  virtual void SetVisible(bool visible) = 0;
  // Whether the control itself was left visible; the window's own state does not matter.
  [[nodiscard]] virtual bool Visible() const = 0;
  virtual void SetToolTip(const std::string& text) = 0;
  [[nodiscard]] virtual std::string ToolTip() const = 0;
  virtual void SetFocus() = 0;
};

class Button : public Control {
 public:
  virtual void SetCaption(const std::string& caption) = 0;
  [[nodiscard]] virtual std::string Caption() const = 0;

  Event<> Click;
  // For actions that last while the button is held. Up comes exactly once for each Down, also when
  // the button is disabled, hidden or loses the keyboard or the pointer meanwhile.
  Event<> Down;
  Event<> Up;
};

class TextBox : public Control {
 public:
  virtual void SetText(const std::string& text) = 0;
  [[nodiscard]] virtual std::string Text() const = 0;
  virtual void SelectAll() = 0;

  Event<> Change;
  // The user leaves the field, or presses Enter in it. A handler that sets the flag keeps the focus
  // in the field.
  Event<bool&> Validate;
};

class ComboBox : public Control {
 public:
  // Replaces the items; none is selected afterwards.
  virtual void SetItems(const std::vector<std::string>& items) = 0;
  [[nodiscard]] virtual std::vector<std::string> Items() const = 0;
  // From 0; -1 is no selection. An index outside selects none.
  virtual void SetListIndex(int index) = 0;
  [[nodiscard]] virtual int ListIndex() const = 0;
  // The selected item's text; empty without a selection.
  [[nodiscard]] virtual std::string Text() const = 0;

  Event<> Click;  // the user chose an item
};

class CheckBox : public Control {
 public:
  virtual void SetValue(bool checked) = 0;
  [[nodiscard]] virtual bool Value() const = 0;
  virtual void SetCaption(const std::string& caption) = 0;
  [[nodiscard]] virtual std::string Caption() const = 0;

  Event<> Click;
};

// Choices of which one at most is set, with indices from 0. In a layout the choices of the group
// "optBaudRate" are "optBaudRate_0", "optBaudRate_1", ...
class OptionGroup : public Control {
 public:
  virtual void SetValue(int index) = 0;  // -1: none
  [[nodiscard]] virtual int Value() const = 0;
  [[nodiscard]] virtual int Count() const = 0;
  virtual void SetChoiceEnabled(int index, bool enabled) = 0;
  [[nodiscard]] virtual bool ChoiceEnabled(int index) const = 0;
  virtual void SetChoiceCaption(int index, const std::string& caption) = 0;
  [[nodiscard]] virtual std::string ChoiceCaption(int index) const = 0;

  Event<int> Click;
};

// What a text or lamp says beside its words; the adapter chooses the colours.
enum class Tone { normal, good, busy, alarm, faint };

class Label : public Control {
 public:
  virtual void SetText(const std::string& text) = 0;  // "\r" separates lines
  [[nodiscard]] virtual std::string Text() const = 0;
  virtual void SetTone(Tone tone) = 0;
  [[nodiscard]] virtual Tone TextTone() const = 0;
};

// A round indicator: normal is dark, good is green.
class Lamp : public Control {
 public:
  virtual void SetTone(Tone tone) = 0;
  [[nodiscard]] virtual Tone LampTone() const = 0;
};

class ProgressBar : public Control {
 public:
  // Shows `value` of `maximum`; a value beyond shows full, a maximum of 0 shows empty.
  virtual void SetProgress(int value, int maximum) = 0;
  [[nodiscard]] virtual int Value() const = 0;
  [[nodiscard]] virtual int Maximum() const = 0;
};

// An entry of a menu, with the tools that stand for it; or a menu.
class Command {
 public:
  virtual ~Command() = default;
  virtual void SetEnabled(bool enabled) = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;
  virtual void SetVisible(bool visible) = 0;
  [[nodiscard]] virtual bool Visible() const = 0;
  virtual void SetChecked(bool checked) = 0;
  [[nodiscard]] virtual bool Checked() const = 0;
  virtual void SetText(const std::string& text) = 0;
  [[nodiscard]] virtual std::string Text() const = 0;

  Event<> Chosen;  // of a menu: it is about to show
};

// Made by Forms; its ticks end with it. Starts disabled.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual void SetInterval(std::chrono::milliseconds interval) = 0;
  virtual void SetEnabled(bool enabled) = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;

  Event<> Tick;
};

// A screen of fixed rows and columns, counted from 1, with a cursor. What has scrolled away stays
// in reach of the user, who looks back at it and selects in it.
class TerminalScreen : public Control {
 public:
  [[nodiscard]] virtual int Rows() const = 0;
  [[nodiscard]] virtual int Columns() const = 0;
  [[nodiscard]] virtual int CursorRow() const = 0;
  [[nodiscard]] virtual int CursorColumn() const = 0;
  virtual void MoveCursor(int row, int column) = 0;
  // Writes over what stands at the cursor; a text beyond the last column continues in the next row.
  virtual void Write(const std::string& text) = 0;
  virtual void SetBold(bool bold) = 0;  // of what is written from now on
  virtual void ScrollUp() = 0;          // all rows one up, the last becomes empty; the cursor stays
  virtual void Clear() = 0;             // with what has scrolled away
  [[nodiscard]] virtual std::string RowText(int row) const = 0;  // without trailing blanks
  [[nodiscard]] virtual std::string SelectedText() const = 0;
  virtual void SetFont(const std::string& name, int points) = 0;
  // 0xRRGGBB.
  virtual void SetColors(std::uint32_t text, std::uint32_t bold, std::uint32_t background) = 0;
  // Makes the window as large as it takes to show all rows and columns.
  virtual void FitWindow() = 0;

  // For each key first KeyDown, then, for one that types, KeyPress with its ASCII character.
  Event<KeyEvent&> KeyDown;
  Event<char> KeyPress;
};

}  // namespace velmoor
