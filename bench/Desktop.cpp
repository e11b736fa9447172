#include "Desktop.h"

#include <unistd.h>

#include <QApplication>
#include <QWidget>
#include <fstream>
#include <utility>

#include "BenchMain.h"
#include "Timing.h"
#include "Workbench.h"

namespace velmoor::bench {
namespace {

Child::Variables Telling(Child::Variables variables) {
  variables.emplace_back("QT_QPA_PLATFORM", "offscreen");
  variables.emplace_back("QT_LOGGING_RULES", "qt.widgets.painting=true");
  variables.emplace_back("QT_LOGGING_TO_CONSOLE", "1");
  return variables;
}

// A log of an earlier start would tell of its project.
std::filesystem::path FreshHome(const std::filesystem::path& folder) {
  std::filesystem::path home = folder / "home";
  std::filesystem::remove_all(home);
  std::filesystem::create_directories(home / "velmoor");
  std::filesystem::permissions(home, std::filesystem::perms::owner_all);
  std::ofstream(home / "velmoor" / "velmoor.ini") << "[Velmoor]\nCOM1=/nonexistent\n";
  return home;
}

Child::Variables At(const std::string& home) {
  return {{"XDG_CONFIG_HOME", home}, {"XDG_STATE_HOME", home}, {"XDG_RUNTIME_DIR", home}};
}

std::vector<std::string> Words(const std::string& project) {
  return project.empty() ? std::vector<std::string>() : std::vector{project};
}

}  // namespace

WindowProgram::WindowProgram(const std::string& program, const std::vector<std::string>& words,
                             Variables variables)
    : Child(program, words, Telling(std::move(variables))) {}

void WindowProgram::WaitForWindow(const std::string& name) {
  (void)WaitForLine({"Flushing QRegion", "name=\"" + name + "\""});
}

Desktop::Desktop(const std::filesystem::path& folder, const std::string& project)
    : WindowProgram(ProgramBeside("velmoor"), Words(project), At(FreshHome(folder))),
      log_(folder / "home" / "velmoor" / "velmoor.log") {}

void Desktop::WaitForProject() {
  WaitForLogged("' opened.");
}

void Desktop::WaitForLineFile() {
  WaitForLogged("Line 'line.toml' opened.");
}

void Desktop::WaitForLogged(const std::string& words) {
  const Stopwatch watch;
  for (std::string text; text.find(words) == std::string::npos;) {
    Require(watch.Seconds() < 60, "the opening by velmoor");
    usleep(500);
    DropErrors();
    std::ifstream log(log_);
    text.assign(std::istreambuf_iterator<char>(log), {});
  }
}

BareWindow::BareWindow() : WindowProgram(ProgramBeside("velmoor-bench"), {kWord}) {}

int BareWindow::Show(int argc, char** argv) {
  QApplication application(argc, argv);
  QWidget window;
  window.setObjectName("bare");
  window.resize(800, 760);
  window.show();
  return QApplication::exec();
}

}  // namespace velmoor::bench
