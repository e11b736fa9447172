#include "platform/qt/QtProgram.h"

#include <QApplication>
#include <QLocale>
#include <exception>

#include "platform/MessageBoxes.h"
#include "platform/Settings.h"
#include "platform/qt/QtAppearance.h"

namespace velmoor::qt {
namespace {

// An exception must not leave an event handler.
class Application final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
      ShowCritical(std::string("An unexpected error has occured in this application: \r\r") +
                   "Description: " + error.what());
      return true;
    }
  }
};

bool StartsDark(const Settings* settings) {
  const std::string theme =
      settings == nullptr ? std::string() : settings->ReadText(kThemeSetting, "");
  return theme.empty() ? DesktopIsDark() : theme == kDarkTheme;
}

}  // namespace

QtProgram::QtProgram(int& argc, char** argv, const Settings* settings)
    : application_(std::make_unique<Application>(argc, argv)) {
  QApplication::setApplicationName(QStringLiteral("velmoor"));
  // The windows decide when the program ends, not Qt.
  QApplication::setQuitOnLastWindowClosed(false);
  // What Qt itself words and formats stays in the program's language.
  QLocale::setDefault(QLocale::c());
  SetUpAppearance(StartsDark(settings));
  QApplication::setWindowIcon(ProgramIcon(QStringLiteral("velmoor")));
}

QtProgram::~QtProgram() = default;

void QtProgram::FillWorld(World& target) {
  target.boxes = &boxes_;
  target.dialogs = &dialogs_;
  target.clipboard = &clipboard_;
  target.appearance = &appearance_;
  target.textViewer = &textViewer_;
  target.events = &events_;
  target.forms = &forms_;
}

int QtProgram::Run() {
  return QApplication::exec();
}

void QtProgram::Quit() {
  QCoreApplication::exit(0);
}

}  // namespace velmoor::qt
