// velmoorctl: puts the adapters together and runs one command.

#include <iostream>
#include <memory>

#include "console/Commands.h"
#include "console/ConsoleBoxes.h"
#include "console/service/WatchHosts.h"
#include "platform/Files.h"
#include "platform/Rx900Utils.h"
#include "platform/World.h"
#include "platform/cli/RunProgram.h"
#include "platform/json/NlohmannJson.h"
#include "platform/native/Native.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "platform/toml/TomlTexts.h"
#include "project/data/CatalogueLibrary.h"

namespace {

void SetDevice(velmoor::SerialPort& port, const std::string& path) {
  static_cast<velmoor::native::SerialPort&>(port).SetDeviceMap({{"COM1", path}});
}

int Run(const velmoor::CommandLine& line) {
  using namespace velmoor;
  const native::Signals signals;
  // A copy of the catalogue for this process alone: a running Velmoor keeps its own.
  const native::CatalogueCopyPlace copyPlace;
  native::Clock clock;
  native::Events events;
  native::Files files;
  sqlcipher::SqlcipherDatabases databases;
  StandardRx900Utils rx900Utils;
  toml_texts::TomlTexts keyedTexts;
  json_texts::NlohmannJson jsonTexts;
  CatalogueLibrary catalogue;
  ConsoleBoxes boxes(std::cerr);
  native::SerialPort port;
  native::PdfModule pdf(JoinPath(native::ExecutableDirectory(), native::kPagesModule));
  World adapters;
  adapters.boxes = &boxes;
  adapters.events = &events;
  adapters.clock = &clock;
  adapters.files = &files;
  adapters.databases = &databases;
  adapters.rx900Utils = &rx900Utils;
  adapters.keyedTexts = &keyedTexts;
  adapters.jsonTexts = &jsonTexts;
  adapters.catalogue = &catalogue;
  adapters.pdf = &pdf;
  adapters.appDirectory = native::ProgramDirectory();
  adapters.catalogueCopyDirectory = copyPlace.Directory();
  adapters.workDirectory = JoinPath(native::StateDirectory(), "work");
  SetWorld(&adapters);
  std::ostream* const progress = native::IsErrorStreamWatched() ? &std::cerr : nullptr;
  const std::unique_ptr<WatchHost> watchHost = MakeWatchHost(std::cerr, port);
  const int status = RunCommand(line, {std::cout, std::cerr, boxes, port, SetDevice, progress,
                                       native::Signals::Came, watchHost.get()});
  SetWorld(nullptr);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  const int status = velmoor::RunProgram(velmoor::ConsoleTable(),
                                         velmoor::native::CommandLineWords(argc, argv), Run);
  velmoor::native::EndBySignal();
  return status;
}
