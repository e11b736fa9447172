#include "ScreenSession.h"

#include <QAction>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScrollArea>

#include "Examination.h"
#include "platform/World.h"
#include "platform_qt/QtTestUser.h"
#include "tables/TableCsv.h"

namespace velmoor::qt {

void ScreenSession::Pump::Yield() {
  ServeEvents();
  session_.Look();
}

void ScreenSession::Pump::WaitForEvents(std::chrono::milliseconds limit) {
  Yield();
  session_.data.clock.Advance(limit);
}

void ScreenSession::Pump::Post(std::function<void()> work) {
  session_.windows.events->Post(std::move(work));
}

ScreenSession::ScreenSession() : windows(world()), port(line) {
  data.world.rx900Utils = &rx900Utils;
  data.world.forms = windows.forms;
  data.world.helpViewer = windows.helpViewer;
  data.world.events = &pump_;
  data.world.foundations = windows.foundations;
  line.AddAmplifier();
}

ScreenSession::~ScreenSession() {
  data.boxes.shown.clear();
  module.reset();
  ServeEvents();
}

void ScreenSession::Start() {
  module = std::make_unique<MainModule>(port, instance, data.MakeProject("line1.spj"));
  ASSERT_TRUE(module->Main());
  auto& project = dynamic_cast<clsHX7Project&>(*gMainForm->CurrentProject());
  const auto fill = [&](auto& table, const std::string& name) {
    const std::string text = data.files.ReadAll(std::string(VELMOOR_SAMPLE) + "/" + name + ".csv");
    EXPECT_TRUE(ImportCsv(project, table, text).empty());
    EXPECT_TRUE(table.ChangeAccepted());
  };
  fill(project.Position(), "index");
  fill(project.Zone(), "zone");
  fill(project.Jog(), "jog");
}

QMainWindow& ScreenSession::Main() const {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    auto* const main = qobject_cast<QMainWindow*>(window);
    if (main != nullptr && main->isVisible()) return *main;
  }
  throw std::logic_error("There is no main window");
}

QWidget& ScreenSession::Child(const char* layout) {
  return *Main().findChild<QWidget*>(QString::fromLatin1(layout));
}

namespace {

const QLatin1String kProgress("frmDialogStop");

void Leave(QWidget& dialog) {
  for (const char* const name : {"cmdCancel", "cmdExit", "cmdContinue"}) {
    auto* const button = dialog.findChild<QPushButton*>(QString::fromLatin1(name));
    if (button != nullptr) return button->click();
  }
  dialog.close();
}

}  // namespace

void ScreenSession::InDialog(const std::function<void()>& work,
                             const std::function<void()>& inside) {
  const QWidget* const before = QApplication::activeModalWidget();
  bool came = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    QWidget* const dialog = QApplication::activeModalWidget();
    // The progress of a transfer goes by itself.
    if (dialog == before || dialog == nullptr || dialog->objectName() == kProgress) return;
    watch.stop();
    came = true;
    ServeEvents();
    Look();
    if (inside) inside();
    Leave(*dialog);
  });
  watch.start();
  work();
  ServeEvents();
  EXPECT_TRUE(came);
}

void ScreenSession::Choose(const char* command, const std::function<void()>& inside) {
  SCOPED_TRACE(command);
  auto* const action = Main().findChild<QAction*>(QString::fromLatin1(command));
  ASSERT_TRUE(action != nullptr && action->isEnabled());
  if (inside) {
    InDialog([action] { action->trigger(); }, inside);
  } else {
    action->trigger();
    ServeEvents();
  }
  Look();
}

void ScreenSession::CloseChildren() {
  for (QMdiSubWindow* const child : Main().findChildren<QMdiSubWindow*>()) child->close();
  ServeEvents();
}

void ScreenSession::Look() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    const bool passing = window->windowType() == Qt::ToolTip || window->windowType() == Qt::Popup;
    if (window->isVisible() && !passing) Examine(*window);
    for (const QMdiSubWindow* const child : window->findChildren<QMdiSubWindow*>()) {
      if (child->isVisible()) Examine(*child->widget());
    }
    const auto* const page = window->findChild<QScrollArea*>(QStringLiteral("page"));
    if (page != nullptr && page->isVisible() && page->widget() != nullptr) Examine(*page->widget());
  }
}

// A layout that serves several tools is known by its caption too.
void ScreenSession::Examine(QWidget& window) {
  const QString name = window.objectName() + QLatin1Char(' ') + window.windowTitle();
  if (!examined_.insert(name).second) return;
  seen.insert(window.objectName().toStdString());
  ServeEvents();
  SCOPED_TRACE(name.toStdString());
  for (const QString& fault : FaultsOf(window)) ADD_FAILURE() << fault.toStdString();
}

}  // namespace velmoor::qt
