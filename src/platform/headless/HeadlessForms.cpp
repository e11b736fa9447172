#include "platform/headless/HeadlessForms.h"

#include <algorithm>
#include <stdexcept>

#include "platform/headless/HeadlessFailure.h"

namespace velmoor::headless {
namespace {

bool Blocks(FormMode mode) {
  return mode == FormMode::modal || mode == FormMode::blocking;
}

}  // namespace

HeadlessCommands::HeadlessCommands(const Layout& layout) : layout_(layout) {
  for (const CommandLayout& command : layout.commands) commands_.emplace_back(command);
}

HeadlessCommand& HeadlessCommands::Named(const std::string& name) {
  const auto found = std::ranges::find(layout_.commands, name, &CommandLayout::name);
  if (found != layout_.commands.end()) {
    return At(static_cast<std::size_t>(found - layout_.commands.begin()));
  }
  throw std::logic_error(std::string(layout_.name) + " has no command " + name);
}

HeadlessForm::HeadlessForm(HeadlessForms& forms, const Layout& layout)
    : Form(layout), forms_(forms), caption_(layout.caption), commands_(layout) {
  for (const ControlLayout& control : layout.controls) controls_.push_back(MakeTwin(control));
}

HeadlessForm::~HeadlessForm() {
  *alive_ = false;
  CloseNow();
}

void HeadlessForm::CloseNow() {
  shown_ = false;
  std::erase(forms_.open_, this);
  if (forms_.active_ == this) forms_.active_ = nullptr;
}

void HeadlessForm::Show(FormMode mode) {
  const std::shared_ptr<bool> alive = alive_;
  mode_ = mode;
  if (!shown_) {
    shown_ = true;
    forms_.open_.push_back(this);
    if (mode != FormMode::page) forms_.shownNames.push_back(Name());
  }
  Activate();
  HeadlessForms::Script script = forms_.TakeScript(Name());
  if (mode != FormMode::modal) {
    if (script) {
      forms_.events_.Post([this, alive, script] {
        if (*alive && shown_) script(*this);
      });
    }
    return;
  }
  const std::string name = Name();
  if (script) {
    script(*this);
  } else {
    Fail("No script for the modal form " + name);
  }
  if (*alive && shown_) {
    if (script) Fail("The script left the modal form " + name + " open");
    CloseNow();
    Unloaded.Raise();
  }
}

void HeadlessForm::Activate() {
  if (mode_ == FormMode::page) return;
  if (mode_ != FormMode::splash) forms_.active_ = this;
  Activated.Raise();
}

bool HeadlessForm::Unload() {
  if (!shown_) return true;
  if (unloading_) return false;
  const std::shared_ptr<bool> alive = alive_;
  unloading_ = true;
  bool cancel = false;
  QueryUnload.Raise(cancel);
  if (!*alive) return true;
  unloading_ = false;
  if (cancel) return false;
  CloseNow();
  Unloaded.Raise();
  return true;
}

Control& HeadlessForm::ControlNamed(const std::string& name) const {
  const auto controls = GetLayout().controls;
  const auto found = std::ranges::find(controls, name, &ControlLayout::name);
  if (found == controls.end()) throw std::logic_error(Name() + " has no control " + name);
  return *controls_[static_cast<std::size_t>(found - controls.begin())];
}

bool HeadlessForm::CanAct(const std::string& what) const {
  std::string why;
  if (!shown_ || mode_ == FormMode::splash) why = "it is not on show";
  if (forms_.boxes_.IsUp()) why = "a box is up";
  const auto above = std::find(forms_.open_.begin(), forms_.open_.end(), this);
  for (auto form = above; why.empty() && form != forms_.open_.end(); ++form) {
    if (*form != this && Blocks((*form)->mode_)) why = (*form)->Name() + " is in front of it";
  }
  if (why.empty() && mode_ == FormMode::page && !forms_.Shown().empty()) why = "it is covered";
  if (!why.empty()) Fail("The user cannot reach " + what + " of " + Name() + ": " + why);
  return why.empty();
}

bool HeadlessForm::Reach(const std::string& name, const Control& control) {
  if (!CanAct(name)) return false;
  if (control.Enabled() && control.Visible()) return true;
  Fail("The user cannot reach " + name + " of " + Name() + ": it is disabled or hidden");
  return false;
}

void HeadlessForm::Press(const std::string& name) {
  HeadlessButton& control = button(name);
  if (!Reach(name, control)) return;
  if (name == "cmdHelp") return forms_.HelpAsked.Raise(this);
  control.Click.Raise();
}

void HeadlessForm::Hold(const std::string& name) {
  HeadlessButton& control = button(name);
  if (Reach(name, control)) control.Hold();
}

void HeadlessForm::LetGo(const std::string& name) {
  button(name).LetGo();
}

void HeadlessForm::Type(const std::string& name, const std::string& text) {
  HeadlessTextBox& control = textBox(name);
  if (!Reach(name, control)) return;
  control.SetText(text);
  control.Change.Raise();
}

bool HeadlessForm::Leave(const std::string& name) {
  bool cancel = false;
  textBox(name).Validate.Raise(cancel);
  return !cancel;
}

void HeadlessForm::Select(const std::string& name, const std::string& item) {
  HeadlessComboBox& control = comboBox(name);
  if (!Reach(name, control)) return;
  const std::vector<std::string> items = control.Items();
  const auto at = std::find(items.begin(), items.end(), item);
  if (at == items.end()) return Fail(name + " of " + Name() + " has no item " + item);
  control.SetListIndex(static_cast<int>(at - items.begin()));
  control.Click.Raise();
}

void HeadlessForm::Check(const std::string& name, bool checked) {
  HeadlessCheckBox& control = checkBox(name);
  if (!Reach(name, control) || control.Value() == checked) return;
  control.SetValue(checked);
  control.Click.Raise();
}

void HeadlessForm::Choose(const std::string& name, int index) {
  HeadlessOptionGroup& control = optionGroup(name);
  if (!Reach(name, control)) return;
  if (!control.ChoiceEnabled(index)) return Fail("A choice of " + name + " is disabled");
  control.SetValue(index);
  control.Click.Raise(index);
}

bool HeadlessForm::EditCell(const std::string& name, int row, int column, const std::string& text) {
  HeadlessGrid& control = grid(name);
  return Reach(name, control) && control.EditCell(row, column, text);
}

void HeadlessForm::PressKey(const std::string& name, KeyEvent key) {
  HeadlessGrid& control = grid(name);
  if (Reach(name, control)) control.KeyDown.Raise(key);
}

void HeadlessForm::ChooseCommand(const std::string& command) {
  if (!CanAct(command)) return;
  HeadlessCommand& chosen = commands_.Named(command);
  if (!chosen.Enabled() || !chosen.Visible()) {
    return Fail(command + " of " + Name() + " is disabled");
  }
  chosen.Chosen.Raise();
}

std::unique_ptr<Form> HeadlessForms::Load(const Layout& layout) {
  return std::make_unique<HeadlessForm>(*this, layout);
}

std::unique_ptr<Timer> HeadlessForms::NewTimer() {
  return std::make_unique<HeadlessTimer>(events_);
}

std::unique_ptr<MainWindow> HeadlessForms::LoadMainWindow(const Layout& layout) {
  auto window = std::make_unique<HeadlessMainWindow>(*this, layout);
  main_ = window.get();
  return window;
}

std::vector<Form*> HeadlessForms::Shown() const {
  std::vector<Form*> shown;
  for (HeadlessForm* form : open_) {
    if (form->mode_ != FormMode::splash && form->mode_ != FormMode::page) shown.push_back(form);
  }
  return shown;
}

Form* HeadlessForms::Active() const {
  return active_;
}

bool HeadlessForms::InputBlocked() const {
  return boxes_.IsUp() || std::any_of(open_.begin(), open_.end(),
                                      [](const HeadlessForm* form) { return Blocks(form->mode_); });
}

void HeadlessForms::OnShow(const std::string& name, Script script) {
  scripts_[name].push_back(std::move(script));
}

HeadlessForms::Script HeadlessForms::TakeScript(const std::string& name) {
  std::deque<Script>& waiting = scripts_[name];
  if (waiting.empty()) return {};
  Script script = std::move(waiting.front());
  waiting.pop_front();
  return script;
}

void HeadlessForms::Verify() {
  for (const auto& [name, waiting] : scripts_) {
    if (!waiting.empty()) Fail("The form " + name + " was not shown");
  }
  scripts_.clear();
}

HeadlessForm& HeadlessForms::Get(const std::string& name) const {
  for (HeadlessForm* form : open_) {
    if (form->Name() == name) return *form;
  }
  throw std::logic_error("The form " + name + " is not on show");
}

bool HeadlessForms::IsOpen(const std::string& name) const {
  return std::any_of(open_.begin(), open_.end(),
                     [&](const HeadlessForm* form) { return form->Name() == name; });
}

HeadlessMainWindow& HeadlessForms::Main() const {
  if (main_ == nullptr) throw std::logic_error("There is no main window");
  return *main_;
}

}  // namespace velmoor::headless
