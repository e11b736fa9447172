// What a layout holds, and how the code that is made of it reaches the controls of a window.
//
// When the program is built each .ui file becomes a header, "layouts/frmZone.h": its captions,
// choices and states as a Layout, its commands as an enumeration, and a struct with a member for
// each control, made from an open window of that layout. A name that the file does not have does
// not compile. Whatever else a window looks like is the adapter's affair.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "platform/Chart.h"
#include "platform/Controls.h"
#include "platform/Drawing.h"
#include "platform/Event.h"
#include "platform/Grid.h"
#include "platform/PageView.h"
#include "platform/TimeChart.h"

namespace velmoor {

enum class ControlKind {
  button,
  textBox,
  comboBox,
  checkBox,
  optionGroup,
  label,
  lamp,
  progressBar,
  grid,
  chart,
  timeChart,
  terminalScreen,
  drawing,
  pageView
};

// What a control is as its window opens. Texts are UTF-8.
struct ControlLayout {
  std::string_view name;
  ControlKind kind;
  std::string_view text{};  // the caption, or what a label or text box shows
  std::string_view toolTip{};
  std::span<const std::string_view> choices{};  // of a combo box or an option group
  int chosen = -1;                              // the choice that is set
  bool enabled = true;
  bool visible = true;
  bool checked = false;  // of a check box
};

// An entry of a menu, or a menu. A tool that stands for the same command has no entry of its own.
struct CommandLayout {
  std::string_view name;
  std::string_view text{};
  bool enabled = true;
  bool visible = true;
  bool checked = false;
};

struct Layout {
  std::string_view name;
  std::string_view caption;
  std::span<const ControlLayout> controls;
  std::span<const CommandLayout> commands;
};

// A window with a layout. Its controls and commands are reached by their places in the layout,
// which the structs of the layouts alone do.
class LaidOut {
 public:
  explicit LaidOut(const Layout& layout) : layout_(layout) {}
  virtual ~LaidOut() = default;
  LaidOut(const LaidOut&) = delete;
  LaidOut& operator=(const LaidOut&) = delete;

  [[nodiscard]] const Layout& GetLayout() const { return layout_; }

 private:
  friend class LayoutAccess;
  virtual Control& ControlAt(std::size_t place) = 0;
  virtual Command& CommandAt(std::size_t place) = 0;

  const Layout& layout_;
};

// The kinds of controls as the program knows them. A twin has kinds of its own.
struct Ports {
  using Button = velmoor::Button;
  using TextBox = velmoor::TextBox;
  using ComboBox = velmoor::ComboBox;
  using CheckBox = velmoor::CheckBox;
  using OptionGroup = velmoor::OptionGroup;
  using Label = velmoor::Label;
  using Lamp = velmoor::Lamp;
  using ProgressBar = velmoor::ProgressBar;
  using Grid = velmoor::Grid;
  using Chart = velmoor::Chart;
  using TimeChart = velmoor::TimeChart;
  using TerminalScreen = velmoor::TerminalScreen;
  using Drawing = velmoor::Drawing;
  using PageView = velmoor::PageView;
};

// Controls of one name with a number behind it: "lblValue_0", "lblValue_1" are lblValue_[0] and
// [1].
template <typename Kind, std::size_t N>
class ControlRow {
 public:
  explicit ControlRow(const std::array<Kind*, N>& controls) : controls_(controls) {}
  [[nodiscard]] Kind& operator[](std::size_t number) const { return *controls_.at(number); }
  [[nodiscard]] static constexpr std::size_t size() { return N; }

 private:
  std::array<Kind*, N> controls_;
};

class LayoutAccess {
 public:
  // Throws std::logic_error where the window has another layout.
  LayoutAccess(LaidOut& window, const Layout& layout);

  template <typename Kind>
  [[nodiscard]] Kind& At(std::size_t place) const {
    return dynamic_cast<Kind&>(window_.ControlAt(place));
  }
  template <typename Kind, typename... Places>
  [[nodiscard]] ControlRow<Kind, sizeof...(Places)> Row(Places... places) const {
    return ControlRow<Kind, sizeof...(Places)>({&At<Kind>(static_cast<std::size_t>(places))...});
  }
  [[nodiscard]] Command& CommandAt(std::size_t place) const { return window_.CommandAt(place); }
  [[nodiscard]] const Layout& GetLayout() const { return window_.GetLayout(); }

 private:
  LaidOut& window_;
};

// The commands of a window, by the enumeration of its layout.
template <typename Id>
class CommandSet {
 public:
  explicit CommandSet(const LayoutAccess& access) : access_(access) {}

  [[nodiscard]] Command& operator[](Id id) const {
    return access_.CommandAt(static_cast<std::size_t>(id));
  }
  // "mnuFileOpen"
  [[nodiscard]] std::string NameOf(Id id) const {
    return std::string(access_.GetLayout().commands[static_cast<std::size_t>(id)].name);
  }
  // Whichever the user chooses.
  [[nodiscard]] Connections OnChosen(const std::function<void(Id)>& handler) const {
    Connections held;
    for (std::size_t place = 0; place < access_.GetLayout().commands.size(); ++place) {
      held += access_.CommandAt(place).Chosen.Connect(
          [handler, place] { handler(static_cast<Id>(place)); });
    }
    return held;
  }

 private:
  LayoutAccess access_;
};

}  // namespace velmoor
