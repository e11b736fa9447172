// Windows without a screen, with a user made of test code.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/Form.h"
#include "platform/MainWindow.h"
#include "platform/headless/HeadlessBoxes.h"
#include "platform/headless/HeadlessControls.h"
#include "platform/headless/HeadlessEvents.h"

namespace velmoor::headless {

class HeadlessForms;

// The commands of a layout. Throws std::logic_error for a name that it does not have.
class HeadlessCommands {
 public:
  explicit HeadlessCommands(const Layout& layout);
  [[nodiscard]] HeadlessCommand& At(std::size_t place) { return commands_.at(place); }
  [[nodiscard]] HeadlessCommand& Named(const std::string& name);

 private:
  const Layout& layout_;
  std::deque<HeadlessCommand> commands_;
};

// As its layout has it when it opens.
class HeadlessForm final : public Form {
 public:
  HeadlessForm(HeadlessForms& forms, const Layout& layout);
  ~HeadlessForm() override;
  HeadlessForm(const HeadlessForm&) = delete;
  HeadlessForm& operator=(const HeadlessForm&) = delete;

  void SetCaption(const std::string& caption) override { caption_ = caption; }
  [[nodiscard]] std::string Caption() const override { return caption_; }
  void SetChanged(bool changed) override { changed_ = changed; }
  [[nodiscard]] bool Changed() const { return changed_; }
  void Show(FormMode mode) override;
  [[nodiscard]] bool IsShown() const override { return shown_; }
  void Activate() override;
  bool Unload() override;

  // By name. Throws std::logic_error where the layout has none of that name and kind.
  HeadlessButton& button(const std::string& name) { return Named<HeadlessButton>(name); }
  HeadlessTextBox& textBox(const std::string& name) { return Named<HeadlessTextBox>(name); }
  HeadlessComboBox& comboBox(const std::string& name) { return Named<HeadlessComboBox>(name); }
  HeadlessCheckBox& checkBox(const std::string& name) { return Named<HeadlessCheckBox>(name); }
  HeadlessOptionGroup& optionGroup(const std::string& name) {
    return Named<HeadlessOptionGroup>(name);
  }
  HeadlessLabel& label(const std::string& name) { return Named<HeadlessLabel>(name); }
  HeadlessLamp& lamp(const std::string& name) { return Named<HeadlessLamp>(name); }
  HeadlessProgressBar& progressBar(const std::string& name) {
    return Named<HeadlessProgressBar>(name);
  }
  HeadlessGrid& grid(const std::string& name) { return Named<HeadlessGrid>(name); }
  HeadlessChart& chart(const std::string& name) { return Named<HeadlessChart>(name); }
  HeadlessTimeChart& timeChart(const std::string& name) { return Named<HeadlessTimeChart>(name); }
  HeadlessTerminalScreen& terminalScreen(const std::string& name) {
    return Named<HeadlessTerminalScreen>(name);
  }
  HeadlessDrawing& drawing(const std::string& name) { return Named<HeadlessDrawing>(name); }
  HeadlessPageView& pageView(const std::string& name) { return Named<HeadlessPageView>(name); }
  // The same for a command.
  HeadlessCommand& command(const std::string& name) { return commands_.Named(name); }

  // ---- as the user. What a user could not do (a disabled or hidden control, a form that is not on
  // show or lies under a modal one) is a failure.
  void Press(const std::string& button);
  void Hold(const std::string& button);
  void LetGo(const std::string& button);
  void Type(const std::string& textBox, const std::string& text);  // replaces the text
  bool Leave(const std::string& textBox);  // false: the field keeps the focus
  void Select(const std::string& comboBox, const std::string& item);
  void Check(const std::string& checkBox, bool checked);
  void Choose(const std::string& optionGroup, int index);
  bool EditCell(const std::string& grid, int row, int column, const std::string& text);
  void PressKey(const std::string& grid, KeyEvent key);
  void ChooseCommand(const std::string& command);

 private:
  friend class HeadlessForms;
  Control& ControlAt(std::size_t place) override { return *controls_.at(place); }
  Command& CommandAt(std::size_t place) override { return commands_.At(place); }
  [[nodiscard]] Control& ControlNamed(const std::string& name) const;
  template <typename Kind>
  Kind& Named(const std::string& name) {
    if (auto* const found = dynamic_cast<Kind*>(&ControlNamed(name))) return *found;
    throw std::logic_error(Name() + " has a control " + name + " of another kind");
  }
  // Reports a failure and returns false when a user could not reach the control.
  bool Reach(const std::string& name, const Control& control);
  bool CanAct(const std::string& what) const;
  void CloseNow();

  HeadlessForms& forms_;
  std::string caption_;
  FormMode mode_ = FormMode::modeless;
  bool changed_ = false;
  bool shown_ = false;
  bool unloading_ = false;
  std::vector<std::unique_ptr<Control>> controls_;  // in the order of the layout
  HeadlessCommands commands_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

class HeadlessMainWindow final : public MainWindow {
 public:
  HeadlessMainWindow(HeadlessForms& forms, const Layout& layout)
      : MainWindow(layout), forms_(forms), commands_(layout) {}
  ~HeadlessMainWindow() override;
  HeadlessMainWindow(const HeadlessMainWindow&) = delete;
  HeadlessMainWindow& operator=(const HeadlessMainWindow&) = delete;

  void SetCaption(const std::string& caption) override { caption_ = caption; }
  [[nodiscard]] std::string Caption() const override { return caption_; }
  void SetChanged(bool changed) override { changed_ = changed; }
  [[nodiscard]] bool Changed() const { return changed_; }
  void SetPanel(StatusPanel panel, const std::string& text) override;
  [[nodiscard]] std::string Panel(StatusPanel panel) const override;
  void SetStatusTone(Tone tone) override { tone_ = tone; }
  [[nodiscard]] Tone StatusTone() const override { return tone_; }
  void SetRecentEntries(const std::vector<std::string>& captions) override { recent_ = captions; }
  [[nodiscard]] std::vector<std::string> RecentEntries() const override { return recent_; }
  void SetToolBarVisible(ToolBar bar, bool on) override { toolBars[bar] = on; }
  void SetStatusBarVisible(bool on) override { statusBarVisible = on; }
  void Arrange(Arrangement arrangement) override { arrangements.push_back(arrangement); }
  void Show() override { visible = true; }
  [[nodiscard]] bool IsVisible() const override { return visible; }
  [[nodiscard]] bool IsMinimised() const override { return minimised; }
  void Activate() override;
  [[nodiscard]] WindowGeometry Geometry() const override { return geometry; }
  void SetGeometry(std::optional<int> left, std::optional<int> top, std::optional<int> width,
                   std::optional<int> height) override;
  bool Close() override;

  HeadlessCommand& command(const std::string& name) { return commands_.Named(name); }

  // ---- as the user
  void Choose(const std::string& command);
  void ChooseRecent(int place);
  void ChoosePanel(StatusPanel panel) { PanelChosen.Raise(panel); }

  std::vector<std::string> statusTexts;  // all that the status panel showed, oldest first
  std::map<ToolBar, bool> toolBars;
  std::vector<Arrangement> arrangements;
  WindowGeometry geometry{100, 100, 1000, 700};
  bool statusBarVisible = true;
  bool visible = false;
  bool minimised = false;
  int activations = 0;

 private:
  Control& ControlAt(std::size_t place) override;
  Command& CommandAt(std::size_t place) override { return commands_.At(place); }

  HeadlessForms& forms_;
  HeadlessCommands commands_;
  std::string caption_;
  bool changed_ = false;
  std::map<StatusPanel, std::string> panels_;
  Tone tone_ = Tone::normal;
  std::vector<std::string> recent_;
  bool closing_ = false;
};

class HeadlessForms final : public Forms {
 public:
  HeadlessForms(HeadlessEvents& events, const HeadlessBoxes& boxes)
      : events_(events), boxes_(boxes) {}

  [[nodiscard]] std::unique_ptr<Form> Load(const Layout& layout) override;
  [[nodiscard]] std::unique_ptr<MainWindow> LoadMainWindow(const Layout& layout) override;
  [[nodiscard]] std::unique_ptr<Timer> NewTimer() override;
  [[nodiscard]] std::vector<Form*> Shown() const override;
  [[nodiscard]] Form* Active() const override;
  [[nodiscard]] bool InputBlocked() const override;

  // Acts as the user on the next form of that name that is shown, once: within Show for a modal
  // form, which must be closed when the script ends; at the next yield for the others.
  using Script = std::function<void(HeadlessForm&)>;
  void OnShow(const std::string& name, Script script);
  // The user's F1, wherever the keyboard is.
  void PressHelpKey() { HelpAsked.Raise(active_); }
  // Every script has run; otherwise a failure.
  void Verify();

  // The form on show of that name, splashes included; a failure and an exception where none is.
  [[nodiscard]] HeadlessForm& Get(const std::string& name) const;
  [[nodiscard]] bool IsOpen(const std::string& name) const;
  [[nodiscard]] HeadlessMainWindow& Main() const;
  // Names in the order of showing, splashes included and pages not.
  std::vector<std::string> shownNames;

 private:
  friend class HeadlessForm;
  friend class HeadlessMainWindow;
  Script TakeScript(const std::string& name);

  HeadlessEvents& events_;
  const HeadlessBoxes& boxes_;
  std::vector<HeadlessForm*> open_;
  HeadlessForm* active_ = nullptr;
  HeadlessMainWindow* main_ = nullptr;
  std::map<std::string, std::deque<Script>> scripts_;
};

}  // namespace velmoor::headless
