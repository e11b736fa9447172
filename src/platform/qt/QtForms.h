// Makes the windows and knows which are on show.
#pragma once

#include <QMdiArea>
#include <QPointer>
#include <vector>

#include "platform/Form.h"
#include "platform/qt/EventWatch.h"

namespace velmoor::qt {

class QtForm;
class QtMainWindow;

class QtForms final : public Forms {
 public:
  QtForms();
  QtForms(const QtForms&) = delete;
  QtForms& operator=(const QtForms&) = delete;

  [[nodiscard]] std::unique_ptr<Form> Load(const Layout& layout) override;
  [[nodiscard]] std::unique_ptr<MainWindow> LoadMainWindow(const Layout& layout) override;
  [[nodiscard]] std::unique_ptr<Timer> NewTimer() override;
  [[nodiscard]] std::vector<Form*> Shown() const override;
  [[nodiscard]] Form* Active() const override;
  [[nodiscard]] bool InputBlocked() const override;

 private:
  friend class QtForm;
  friend class QtMainWindow;

  // F1 in any window but the guide's own.
  bool LookForHelpKey(QEvent& event);
  void Add(QtForm& form);
  void Forget(QtForm& form);
  // Raises Activated when another form than before takes the keyboard.
  void NoteActive(QtForm* form);
  void NoteActiveChild(const QMdiSubWindow* child);
  QMdiSubWindow* AddChild(QWidget& content);
  // The page of the main window, which every modeless form covers; null: none.
  void ShowPage(QWidget* page);
  void CoverPage();
  void ForgetMain() { main_ = nullptr; }
  void ActivateChild(QMdiSubWindow& child);
  // Over which window a dialog of `form` lies; null before the main window is on show.
  [[nodiscard]] QWidget* DialogParent(const QtForm& form) const;

  std::vector<QtForm*> open_;
  QtForm* active_ = nullptr;
  QPointer<QMdiArea> area_;
  QtMainWindow* main_ = nullptr;
  EventWatch helpKey_;
};

}  // namespace velmoor::qt
