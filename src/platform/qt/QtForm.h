// A window from a layout, its controls found by their names.
#pragma once

#include <QPointer>
#include <map>
#include <memory>

#include "platform/Form.h"
#include "platform/qt/EventWatch.h"
#include "platform/qt/QtCommands.h"

class QMdiSubWindow;
class QPushButton;

namespace velmoor::qt {

class QtForms;

class QtForm final : public QtCommands<Form> {
 public:
  // Takes `root` over.
  QtForm(QtForms& forms, std::string name, QWidget* root);
  ~QtForm() override;
  QtForm(const QtForm&) = delete;
  QtForm& operator=(const QtForm&) = delete;

  [[nodiscard]] std::string Name() const override { return name_; }
  void SetCaption(const std::string& caption) override;
  [[nodiscard]] std::string Caption() const override { return caption_; }
  void SetChanged(bool changed) override;
  void Show(FormMode mode) override;
  [[nodiscard]] bool IsShown() const override { return shown_; }
  void Activate() override;
  bool Unload() override;

  Button& button(const std::string& name) override;
  TextBox& textBox(const std::string& name) override;
  ComboBox& comboBox(const std::string& name) override;
  CheckBox& checkBox(const std::string& name) override;
  OptionGroup& optionGroup(const std::string& name) override;
  Label& label(const std::string& name) override;
  Lamp& lamp(const std::string& name) override;
  ProgressBar& progressBar(const std::string& name) override;
  Grid& grid(const std::string& name) override;
  Chart& chart(const std::string& name) override;
  TimeChart& timeChart(const std::string& name) override;
  TerminalScreen& terminalScreen(const std::string& name) override;
  Drawing& drawing(const std::string& name) override;
  PageView& pageView(const std::string& name) override;
  Timer& timer(const std::string& name) override;

  [[nodiscard]] FormMode Mode() const { return mode_; }
  [[nodiscard]] QWidget& Root() const { return *root_; }
  [[nodiscard]] QMdiSubWindow* SubWindow() const { return subWindow_; }

 private:
  template <typename Adapter, typename Widget>
  Adapter& Find(const std::string& name);
  void ShowAsChild();
  void ShowAsDialog();
  void ShowAsSplash();
  void WaitUntilClosed();
  bool LookAtRoot(QEvent& event);
  // The size that the user gave it before, or the one that it has.
  [[nodiscard]] QSize WantedSize() const;
  void GiveKeyboardBack();
  // Keeps a size that is not the one the window opened with.
  void KeepSize();
  // False: a handler of QueryUnload refused.
  bool TryToClose();
  void SetUpKeys();
  void SetUpKey(Qt::Key key, QPushButton& button);

  QtForms& forms_;
  std::string name_;
  std::string caption_;
  QPointer<QWidget> root_;
  QPointer<QMdiSubWindow> subWindow_;
  std::unique_ptr<EventWatch> watch_;
  FormMode mode_ = FormMode::modeless;
  QSize openedWith_;
  bool shown_ = false;
  bool asking_ = false;  // within QueryUnload
  std::map<std::string, std::unique_ptr<Control>> controls_;
  std::map<std::string, std::unique_ptr<Timer>> timers_;
  std::shared_ptr<bool> closed_ = std::make_shared<bool>(true);  // outlives the form in Show
};

}  // namespace velmoor::qt
