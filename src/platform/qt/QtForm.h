// A window from a layout, with an adapter for each of its controls.
#pragma once

#include <QPointer>
#include <memory>
#include <vector>

#include "platform/Form.h"
#include "platform/qt/EventWatch.h"
#include "platform/qt/QtCommands.h"

class QMdiSubWindow;
class QPushButton;

namespace velmoor::qt {

class QtForms;

class QtForm final : public Form {
 public:
  // Takes `root` over.
  QtForm(QtForms& forms, const Layout& layout, QWidget* root);
  ~QtForm() override;
  QtForm(const QtForm&) = delete;
  QtForm& operator=(const QtForm&) = delete;

  void SetCaption(const std::string& caption) override;
  [[nodiscard]] std::string Caption() const override { return caption_; }
  void SetChanged(bool changed) override;
  void Show(FormMode mode) override;
  [[nodiscard]] bool IsShown() const override { return shown_; }
  void Activate() override;
  bool Unload() override;

  [[nodiscard]] FormMode Mode() const { return mode_; }
  [[nodiscard]] bool CountsAsShown() const {
    return mode_ != FormMode::splash && mode_ != FormMode::page;
  }
  [[nodiscard]] QWidget& Root() const { return *root_; }
  [[nodiscard]] QMdiSubWindow* SubWindow() const { return subWindow_; }

 private:
  Control& ControlAt(std::size_t place) override { return *controls_.at(place); }
  Command& CommandAt(std::size_t place) override { return commands_.At(place); }
  void ShowAsChild();
  void ShowAsDialog();
  void ShowAsSplash();
  bool LeavePage();
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
  std::string caption_;
  QPointer<QWidget> root_;
  QPointer<QMdiSubWindow> subWindow_;
  std::unique_ptr<EventWatch> watch_;
  FormMode mode_ = FormMode::modeless;
  QSize openedWith_;
  bool shown_ = false;
  bool asking_ = false;                             // within QueryUnload
  std::vector<std::unique_ptr<Control>> controls_;  // in the order of the layout
  QtCommands commands_;
  QObject context_;  // ends the connections with the form
  std::shared_ptr<bool> closed_ = std::make_shared<bool>(true);  // outlives the form in Show
};

}  // namespace velmoor::qt
