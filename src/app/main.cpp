// velmoor: the desktop program.

#include <exception>
#include <optional>
#include <string>
#include <utility>

#include "app/MainModule.h"
#include "app/Version.h"
#include "platform/Files.h"
#include "platform/IniSettings.h"
#include "platform/LoggedPort.h"
#include "platform/MessageBoxes.h"
#include "platform/Rx900Utils.h"
#include "platform/World.h"
#include "platform/cli/RunProgram.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixSerialPort.h"
#include "platform/posix/PosixSerialPorts.h"
#include "platform/posix/PosixSingleInstance.h"
#include "platform/posix/ProgramPlaces.h"
#include "platform/posix/TerminationSignals.h"
#include "platform/posix/ThrowTrace.h"
#include "platform/qt/QtEventPump.h"
#include "platform/qt/QtProgram.h"
#include "platform/qt/QtSerialAdapters.h"
#include "platform/spdlog/RotatingLog.h"
#include "platform/sqlcipher/Engine.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "platform/toml/TomlTexts.h"
#include "project/data/CatalogueLibrary.h"

namespace {

const velmoor::ProgramTable& DesktopTable() {
  static const velmoor::ProgramTable kTable{
      .name = "velmoor",
      .about = "set up, tune, program and watch one servo axis",
      .options = {},
      .arguments = {{.value = {"PROJECT.spj", velmoor::ValueEntry::Kind::file}, .required = false}},
      .notes = "The user guide is inside: F1 in any window.\n"};
  return kTable;
}

// What a start needs of the user's folders, and the session until its window closes. Throws
// std::runtime_error where one of them cannot be used.
int RunSession(velmoor::qt::QtProgram& program, velmoor::IniSettings& settings,
               velmoor::World& adapters, const std::string& projectName) {
  using namespace velmoor;

  std::optional<posix::CatalogueCopyPlace> copyPlace(std::in_place);
  adapters.catalogueCopyDirectory = copyPlace->Directory();
  posix::PosixSerialPort comm;
  posix::PosixSerialPorts serialPorts(
      comm, settings, JoinPath(posix::ProgramDirectory(), "velmoor-simulator"), qt::SerialAdapters);
  adapters.serialPorts = &serialPorts;
  posix::PosixSingleInstance instance(qt::WatchDescriptor);
  LoggedPort logged(comm);
  MainModule module(logged, instance, projectName);
  adapters.onUnhandledError = [&module](const UnhandledError& error) {
    UnhandledError readable = error;
    readable.type = posix::ReadableName(error.type.c_str());
    return module.HandleUnhandledError(readable);
  };
  const posix::TerminationSignals signals(qt::WatchDescriptor, [&module, &copyPlace] {
    module.LeaveAtOnce();
    copyPlace.reset();
  });
  bool gone = false;
  const Connection closed = module.Closed.Connect([&] {
    gone = true;
    program.Quit();
  });
  if (module.Main() && !gone) program.Run();
  module.Terminate();
  LogInformation("session", "Velmoor ends");
  return 0;
}

int Run(int& argc, char** argv, const std::string& projectName) {
  using namespace velmoor;

  posix::PosixFiles files;
  IniSettings settings(files, posix::SettingsFile());
  qt::QtProgram program(argc, argv, &settings);
  posix::PosixClock clock;
  sqlcipher::SqlcipherDatabases databases;
  StandardRx900Utils rx900Utils;
  toml_texts::TomlTexts keyedTexts;
  CatalogueLibrary catalogue;

  World adapters;
  program.FillWorld(adapters);
  adapters.clock = &clock;
  adapters.settings = &settings;
  adapters.files = &files;
  adapters.databases = &databases;
  adapters.rx900Utils = &rx900Utils;
  adapters.keyedTexts = &keyedTexts;
  adapters.catalogue = &catalogue;
  adapters.appDirectory = posix::ProgramDirectory();
  adapters.workDirectory = JoinPath(posix::StateDirectory(), "work");
  adapters.reportDirectory = posix::StateDirectory();
  adapters.foundations = [] {
    std::vector<std::string> versions = qt::QtProgram::Versions();
    for (std::string& version : sqlcipher::EngineVersions()) versions.push_back(version);
    return versions;
  };
  adapters.lastThrowTrace = posix::LastThrowTrace;
  rotating::RotatingLog log(posix::StateDirectory());
  adapters.log = &log;
  SetWorld(&adapters);
  LogInformation("session", "Velmoor " + std::string(kProgramVersion) + " starts");
  try {
    return RunSession(program, settings, adapters, projectName);
  } catch (const std::exception& error) {
    // Whoever starts it from a menu sees no terminal. What the handler knew is gone.
    adapters.onUnhandledError = {};
    ShowCritical(std::string("Velmoor cannot start!\r") + error.what());
    return kFailed;
  }
}

}  // namespace

int main(int argc, char** argv) {
  return velmoor::RunProgram(DesktopTable(), argc, argv, [&](const velmoor::CommandLine& line) {
    return Run(argc, argv, line.Arguments().empty() ? std::string() : line.Arguments().front());
  });
}
