#include "platform/qt/QtForm.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <algorithm>
#include <array>
#include <map>

#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtChart.h"
#include "platform/qt/QtControls.h"
#include "platform/qt/QtDrawing.h"
#include "platform/qt/QtForms.h"
#include "platform/qt/QtGrid.h"
#include "platform/qt/QtPageView.h"
#include "platform/qt/QtTerminalScreen.h"
#include "platform/qt/QtTimeChart.h"
#include "platform/qt/ScrolledPage.h"
#include "platform/qt/WindowSizes.h"

namespace velmoor::qt {
namespace {

template <typename Adapter, typename Widget>
std::unique_ptr<Control> Make(QWidget& widget) {
  return std::make_unique<Adapter>(dynamic_cast<Widget&>(widget));
}

// In the order of ControlKind.
constexpr std::array kMakers{
    Make<QtButton, QAbstractButton>,    Make<QtTextBox, QLineEdit>,
    Make<QtComboBox, QComboBox>,        Make<QtCheckBox, QCheckBox>,
    Make<QtOptionGroup, QWidget>,       Make<QtLabel, QLabel>,
    Make<QtLamp, LampWidget>,           Make<QtProgressBar, QProgressBar>,
    Make<QtGrid, QTableView>,           Make<QtChart, ChartWidget>,
    Make<QtTimeChart, TimeChartWidget>, Make<QtTerminalScreen, TerminalWidget>,
    Make<QtDrawing, DrawingWidget>,     Make<QtPageView, PageViewWidget>};

std::vector<std::unique_ptr<Control>> MakeControls(const Layout& layout, const QWidget& root) {
  std::map<std::string, QWidget*> widgets;
  for (QWidget* const widget : root.findChildren<QWidget*>()) {
    widgets.emplace(FromQt(widget->objectName()), widget);
  }
  std::vector<std::unique_ptr<Control>> controls;
  for (const ControlLayout& control : layout.controls) {
    QWidget& widget = *widgets.at(std::string(control.name));
    controls.push_back(kMakers.at(static_cast<std::size_t>(control.kind))(widget));
  }
  return controls;
}

}  // namespace

QtForm::QtForm(QtForms& forms, const Layout& layout, QWidget* root)
    : Form(layout),
      forms_(forms),
      caption_(FromQt(root->windowTitle())),
      root_(root),
      controls_(MakeControls(layout, *root)),
      commands_(*root, layout) {
  watch_ = std::make_unique<EventWatch>(*root, [this](QEvent& event) { return LookAtRoot(event); });
  SetCaption(caption_);
  ApplyIcons(*root);
  SetUpKeys();
}

QtForm::~QtForm() {
  if (shown_ && mode_ == FormMode::page) forms_.ShowPage(nullptr);
  *closed_ = true;
  forms_.Forget(*this);
  watch_.reset();
  controls_.clear();
  // One of the widget's own events may be what ends the form.
  if (subWindow_) {
    subWindow_->hide();
    subWindow_->deleteLater();
  } else if (root_) {
    root_->hide();
    root_->deleteLater();
  }
}

// A layout's window is no dialog of Qt's own, which would close itself on Escape without asking.
void QtForm::SetUpKeys() {
  for (auto* const button : root_->findChildren<QPushButton*>()) {
    if (button->objectName() == QLatin1String("cmdCancel")) SetUpKey(Qt::Key_Escape, *button);
    if (button->objectName() == QLatin1String("cmdHelp")) {
      QObject::connect(button, &QPushButton::clicked, &context_,
                       [this] { forms_.HelpAsked.Raise(this); });
    }
    if (!button->isDefault()) continue;
    SetUpKey(Qt::Key_Return, *button);
    SetUpKey(Qt::Key_Enter, *button);
  }
}

void QtForm::SetUpKey(Qt::Key key, QPushButton& button) {
  auto* const shortcut = new QShortcut(QKeySequence(key), root_);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  QObject::connect(shortcut, &QShortcut::activated, &button, &QPushButton::click);
}

void QtForm::SetCaption(const std::string& caption) {
  caption_ = caption;
  root_->setWindowTitle(ToQt(caption) + QStringLiteral("[*]"));
}

void QtForm::SetChanged(bool changed) {
  root_->setWindowModified(changed);
  if (subWindow_) subWindow_->setWindowModified(changed);
}

void QtForm::Show(FormMode mode) {
  if (shown_) return Activate();
  mode_ = mode;
  shown_ = true;
  closed_ = std::make_shared<bool>(false);
  forms_.Add(*this);
  switch (mode) {
    case FormMode::modeless:
      ShowAsChild();
      break;
    case FormMode::splash:
      ShowAsSplash();
      break;
    case FormMode::page:
      forms_.ShowPage(root_);
      return;
    case FormMode::modal:
    case FormMode::blocking:
      ShowAsDialog();
      break;
  }
  openedWith_ = root_->size();
  forms_.NoteActive(this);
  if (mode == FormMode::modal) WaitUntilClosed();
}

void QtForm::ShowAsChild() {
  subWindow_ = forms_.AddChild(*root_);
  subWindow_->show();
  // The area may be smaller than the window would like to be.
  const QSize area = subWindow_->parentWidget()->size();
  const QSize frame = subWindow_->size() - root_->size();
  const QSize wanted = WantedSize();
  const QSize bar = LetScrollWithin(*root_, area - frame);
  subWindow_->resize((wanted + bar + frame).boundedTo(area));
  subWindow_->move(
      std::clamp(subWindow_->x(), 0, std::max(0, area.width() - subWindow_->width())),
      std::clamp(subWindow_->y(), 0, std::max(0, area.height() - subWindow_->height())));
}

void QtForm::ShowAsDialog() {
  QWidget* const parent = forms_.DialogParent(*this);
  const Qt::WindowFlags frame = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
  root_->setParent(parent, frame);
  root_->setWindowModality(Qt::ApplicationModal);
  // A window that stays beside others is not to vanish by a stray key; a dialog is.
  if (auto* const exit = root_->findChild<QPushButton*>(QStringLiteral("cmdExit"))) {
    SetUpKey(Qt::Key_Escape, *exit);
  }
  // The size of the layout where it tells one.
  if (!root_->testAttribute(Qt::WA_Resized)) root_->adjustSize();
  const QSize wanted = WantedSize();
  // The screen may be a smaller one than then.
  const QSize room = FittingScreen(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
  root_->resize((wanted + LetScrollWithin(*root_, room)).boundedTo(room));
  if (parent != nullptr)
    root_->move(OntoScreen(
        QRect(parent->frameGeometry().center() - root_->rect().center(), root_->size())));
  root_->show();
}

void QtForm::ShowAsSplash() {
  root_->setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
  root_->adjustSize();
  root_->show();
}

QSize QtForm::WantedSize() const {
  const QSize size = StoredWindowSize(Name()).value_or(root_->size());
  return size.expandedTo(NeededSize(*root_, size.width()));
}

void QtForm::KeepSize() {
  const bool filled = subWindow_ && (subWindow_->isMaximized() || subWindow_->isMinimized());
  if (mode_ == FormMode::splash || filled || root_->size() == openedWith_) return;
  StoreWindowSize(Name(), root_->size());
}

// The desktop looks for the next window itself, and may find none where a box and the dialog below
// it close at once.
void QtForm::GiveKeyboardBack() {
  if (subWindow_ || mode_ == FormMode::splash) return;
  QWidget* const modal = QApplication::activeModalWidget();
  QWidget* const next = modal != nullptr ? modal : root_->parentWidget();
  if (next != nullptr && next->isVisible()) next->window()->activateWindow();
}

void QtForm::WaitUntilClosed() {
  const std::shared_ptr<bool> closed = closed_;
  QEventLoop loop;
  while (!*closed) loop.processEvents(QEventLoop::WaitForMoreEvents);
}

void QtForm::Activate() {
  if (mode_ == FormMode::page) return;
  if (subWindow_) {
    if (subWindow_->isMinimized()) subWindow_->showNormal();
    forms_.ActivateChild(*subWindow_);
  } else {
    root_->raise();
    root_->activateWindow();
  }
}

bool QtForm::Unload() {
  if (!shown_) return true;
  if (mode_ == FormMode::page) return LeavePage();
  const std::shared_ptr<bool> closed = closed_;
  QWidget* const window = subWindow_ ? static_cast<QWidget*>(subWindow_.data()) : root_.data();
  window->close();
  return *closed;
}

bool QtForm::LeavePage() {
  shown_ = false;
  *closed_ = true;
  forms_.Forget(*this);
  forms_.ShowPage(nullptr);
  Unloaded.Raise();
  return true;
}

bool QtForm::LookAtRoot(QEvent& event) {
  if (event.type() == QEvent::WindowActivate && CountsAsShown() && !subWindow_) {
    forms_.NoteActive(this);
  }
  if (event.type() != QEvent::Close || !shown_) return false;
  event.setAccepted(TryToClose());
  return true;
}

bool QtForm::TryToClose() {
  if (asking_) return false;
  const std::shared_ptr<bool> closed = closed_;
  asking_ = true;
  bool cancel = false;
  QueryUnload.Raise(cancel);
  if (*closed) return true;
  asking_ = false;
  if (cancel) return false;
  KeepSize();
  *closed_ = true;
  shown_ = false;
  forms_.Forget(*this);
  root_->hide();
  GiveKeyboardBack();
  Unloaded.Raise();
  return true;
}

}  // namespace velmoor::qt
