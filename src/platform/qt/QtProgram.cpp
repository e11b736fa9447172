#include "platform/qt/QtProgram.h"

#include <cxxabi.h>

#include <QApplication>
#include <QLocale>
#include <QPointer>
#include <QSysInfo>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <typeinfo>

#include "platform/MessageBoxes.h"
#include "platform/Settings.h"
#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

// An exception must not leave an event handler.
class Application final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    const QPointer<QObject> alive(receiver);
    for (;;) {
      try {
        return QApplication::notify(receiver, event);
      } catch (const std::exception& error) {
        if (!Retries(Report(typeid(error), error.what()), alive)) return true;
      } catch (...) {
        // Thrown by a library, or a type of its own: without words.
        const std::type_info* const type = abi::__cxa_current_exception_type();
        if (!Retries(Report(type != nullptr ? *type : typeid(void), "none"), alive)) return true;
      }
    }
  }

 private:
  // The receiver may have gone with what was under way.
  static bool Retries(ErrorChoice choice, const QPointer<QObject>& receiver) {
    return choice == ErrorChoice::retry && receiver;
  }

  static ErrorChoice Report(const std::type_info& type, const char* description) {
    UnhandledError unhandled{.type = type.name(), .description = description, .trace = {}};
    if (world().lastThrowTrace) unhandled.trace = world().lastThrowTrace();
    if (world().onUnhandledError) return world().onUnhandledError(unhandled);
    ShowCritical(kUnexpectedError + ("Description: " + unhandled.description));
    return ErrorChoice::goOn;
  }
};

// Qt aborts where it finds no display; that is no crash, and leaves no core.
void EndWithoutDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  if (type != QtFatalMsg) return;
  std::fputs("velmoor: There is no display that its windows could open on\n", stderr);
  std::fputs(text.section(QLatin1Char('\n'), 0, 0).toLocal8Bit().constData(), stderr);
  std::fputs("\n", stderr);
  std::_Exit(1);
}

std::unique_ptr<Application> MakeApplication(int& argc, char** argv) {
  const QtMessageHandler before = qInstallMessageHandler(EndWithoutDisplay);
  auto application = std::make_unique<Application>(argc, argv);
  qInstallMessageHandler(before);
  return application;
}

bool StartsDark(const Settings* settings) {
  const std::string theme =
      settings == nullptr ? std::string() : settings->ReadText(kThemeSetting, "");
  return theme.empty() ? DesktopIsDark() : theme == kDarkTheme;
}

}  // namespace

QtProgram::QtProgram(int& argc, char** argv, const Settings* settings)
    : application_(MakeApplication(argc, argv)) {
  KeepOrderOfHashes();
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
  target.helpViewer = &helpViewer_;
  target.pdf = &pdf_;
  target.printing = &printing_;
  target.events = &events_;
  target.forms = &forms_;
}

std::vector<std::string> QtProgram::Versions() {
  const QString system = QSysInfo::prettyProductName() + QStringLiteral(", ") +
                         QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion() +
                         QStringLiteral(", ") + QSysInfo::currentCpuArchitecture();
  return {std::string("Qt ") + qVersion(), FromQt(system)};
}

int QtProgram::Run() {
  return QApplication::exec();
}

void QtProgram::Quit() {
  QCoreApplication::exit(0);
}

}  // namespace velmoor::qt
