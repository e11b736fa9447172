#include "platform/qt/QtForms.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QScopedValueRollback>
#include <algorithm>

#include "platform/qt/FormLayouts.h"
#include "platform/qt/HelpWindow.h"
#include "platform/qt/QtControls.h"
#include "platform/qt/QtForm.h"
#include "platform/qt/QtMainWindow.h"

namespace velmoor::qt {

QtForms::QtForms()
    : helpKey_(*QCoreApplication::instance(),
               [this](QEvent& event) { return LookForHelpKey(event); }) {}

namespace {

// An open list has Escape and Enter for itself: they are no shortcuts of its window then. Enter is
// taken by the list from this very event.
bool KeepsForOpenList(QKeyEvent& key) {
  static bool passing = false;
  const QWidget* const popup = QApplication::activePopupWidget();
  auto* const list = popup == nullptr ? nullptr : popup->findChild<QAbstractItemView*>();
  const bool enters = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  if (passing || list == nullptr || (!enters && key.key() != Qt::Key_Escape)) return false;
  if (enters) {
    const QScopedValueRollback guard(passing, true);
    QKeyEvent same(QEvent::ShortcutOverride, key.key(), key.modifiers());
    QApplication::sendEvent(list, &same);
  }
  key.accept();
  return true;
}

}  // namespace

bool QtForms::LookForHelpKey(QEvent& event) {
  const bool asked = event.type() == QEvent::ShortcutOverride;
  if (asked && KeepsForOpenList(static_cast<QKeyEvent&>(event))) return true;
  if (!asked && event.type() != QEvent::KeyPress) return false;
  if (!static_cast<const QKeyEvent&>(event).matches(QKeySequence::HelpContents)) return false;
  if (IsHelpWindow(QApplication::activeWindow())) return false;
  // The menu's shortcut knows nothing of the window that is active.
  event.accept();
  if (!asked && !static_cast<const QKeyEvent&>(event).isAutoRepeat()) HelpAsked.Raise(active_);
  return true;
}

std::unique_ptr<Form> QtForms::Load(const Layout& layout) {
  return std::make_unique<QtForm>(*this, layout, MakeLayout(std::string(layout.name)));
}

std::unique_ptr<Timer> QtForms::NewTimer() {
  return std::make_unique<QtTimer>();
}

std::unique_ptr<MainWindow> QtForms::LoadMainWindow(const Layout& layout) {
  auto* const root = qobject_cast<QMainWindow*>(MakeLayout(std::string(layout.name)));
  auto window = std::make_unique<QtMainWindow>(*this, layout, *root);
  area_ = &window->Area();
  main_ = window.get();
  return window;
}

std::vector<Form*> QtForms::Shown() const {
  std::vector<Form*> shown;
  for (QtForm* const form : open_) {
    if (form->CountsAsShown()) shown.push_back(form);
  }
  return shown;
}

Form* QtForms::Active() const {
  return active_;
}

bool QtForms::InputBlocked() const {
  return QApplication::activeModalWidget() != nullptr;
}

void QtForms::Add(QtForm& form) {
  open_.push_back(&form);
}

void QtForms::ShowPage(QWidget* page) {
  if (main_ == nullptr) return;
  main_->SetPage(page);
  CoverPage();
}

void QtForms::CoverPage() {
  if (main_ == nullptr) return;
  main_->CoverPage(std::any_of(open_.begin(), open_.end(), [](const QtForm* form) {
    return form->Mode() == FormMode::modeless;
  }));
}

void QtForms::Forget(QtForm& form) {
  std::erase(open_, &form);
  CoverPage();
  if (active_ != &form) return;
  // The window below a dialog was never told that it lost the keyboard.
  const QMdiSubWindow* const child = area_ != nullptr ? area_->activeSubWindow() : nullptr;
  const auto below = std::find_if(open_.rbegin(), open_.rend(), [child](const QtForm* candidate) {
    const bool isDialog =
        candidate->Mode() == FormMode::modal || candidate->Mode() == FormMode::blocking;
    return isDialog || (child != nullptr && candidate->SubWindow() == child);
  });
  active_ = below == open_.rend() ? nullptr : *below;
}

void QtForms::NoteActive(QtForm* form) {
  if (active_ == form) return;
  active_ = form;
  if (form != nullptr) form->Activated.Raise();
}

void QtForms::NoteActiveChild(const QMdiSubWindow* child) {
  // The main window going to the background is no change among its children.
  if (child == nullptr) return;
  const auto form = std::find_if(open_.begin(), open_.end(), [child](const QtForm* candidate) {
    return candidate->SubWindow() == child;
  });
  if (form != open_.end()) NoteActive(*form);
}

QMdiSubWindow* QtForms::AddChild(QWidget& content) {
  if (area_ == nullptr) throw std::logic_error("There is no main window for a child window");
  CoverPage();
  QMdiSubWindow* const child = area_->addSubWindow(&content);
  child->setAttribute(Qt::WA_DeleteOnClose, false);
  child->setWindowIcon(QApplication::windowIcon());
  // The size of the layout where it tells one, and no more than there is room for.
  const QSize designed =
      content.testAttribute(Qt::WA_Resized) ? content.size() : content.sizeHint();
  child->resize((designed.expandedTo(content.minimumSizeHint()) + QSize(16, 32))
                    .boundedTo(area_->viewport()->size()));
  return child;
}

void QtForms::ActivateChild(QMdiSubWindow& child) {
  if (area_ != nullptr) area_->setActiveSubWindow(&child);
}

QWidget* QtForms::DialogParent(const QtForm& form) const {
  for (auto open = open_.rbegin(); open != open_.rend(); ++open) {
    if (*open != &form && (*open)->Mode() == FormMode::modal) return &(*open)->Root();
  }
  return area_ != nullptr && area_->window()->isVisible() ? area_->window() : nullptr;
}

}  // namespace velmoor::qt
