#include "console/WatchCommand.h"

#include <array>
#include <optional>
#include <stdexcept>

#include "console/ConsoleLine.h"
#include "online/clsHX7Alarm.h"
#include "plant/LineWatcher.h"
#include "platform/Database.h"
#include "platform/Files.h"
#include "platform/World.h"

namespace velmoor {
namespace {

struct TextOption {
  const char* name;
  std::string WatchSettings::*field;
  bool isPath;
};
constexpr std::array kOptions{TextOption{"broker", &WatchSettings::broker, false},
                              TextOption{"csv", &WatchSettings::csv, true},
                              TextOption{"metrics", &WatchSettings::metrics, true},
                              TextOption{"listen", &WatchSettings::listen, false},
                              TextOption{"folder", &WatchSettings::folder, true}};

// What the command line says stands before what the file says.
LineFile ReadLine(const Context& context) {
  LineFile line = ReadLineFile(world().files->Absolute(context.Argument(1)));
  for (const TextOption& option : kOptions) {
    const auto value = context.line.Value(option.name);
    if (!value) continue;
    line.watch.*option.field = option.isPath ? world().files->Absolute(*value) : *value;
  }
  if (const auto items = context.line.Value("items")) {
    try {
      line.watch.items = WatchedItems(SplitAtCommas(*items));
    } catch (const std::invalid_argument& unknown) {
      throw UsageError(unknown.what());
    }
  }
  if (const auto axes = context.line.Value("axes")) line.axes = AxesNamed(line, *axes);
  return line;
}

}  // namespace

bool Watch(const Context& context) {
  const ConsoleProgram& program = context.program;
  if (program.watchHost == nullptr) throw std::runtime_error("This program watches no lines.");
  WatchHost& host = *program.watchHost;
  clsHX7Alarm names;
  names.ReadFromCatalogue(JoinPath(world().appDirectory, "IdeInfo.mdb"));
  const std::string path = world().files->Absolute(context.Argument(1));
  std::optional<LineFile> former;
  while (!host.Ends()) {
    std::optional<LineWatcher> watcher;
    const auto make = [&](const LineFile& line) {
      program.setDevice(program.port, line.port);
      host.Begin(line.port, line.watch);
      watcher.emplace(host, program.port, names, line, path);
      former = line;
    };
    try {
      make(ReadLine(context));
    } catch (const std::runtime_error& error) {
      // A file that became bad ends no watch.
      if (!former) throw;
      host.Tell(std::string(error.what()) + "; the watch goes on as before.");
      make(LineFile(*former));
    }
    watcher->Run();
  }
  return true;
}

}  // namespace velmoor
