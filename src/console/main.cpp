// velmoorctl: puts the adapters together and runs one command.

#include <unistd.h>

#include <iostream>

#include "console/Commands.h"
#include "console/ConsoleBoxes.h"
#include "console/service/ServiceHost.h"
#include "platform/Files.h"
#include "platform/Rx900Utils.h"
#include "platform/World.h"
#include "platform/cli/RunProgram.h"
#include "platform/json/NlohmannJson.h"
#include "platform/posix/NotedSignals.h"
#include "platform/posix/PdfModule.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixEvents.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixSerialPort.h"
#include "platform/posix/ProgramPlaces.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "platform/toml/TomlTexts.h"
#include "project/data/CatalogueLibrary.h"

namespace {

void SetDevice(velmoor::SerialPort& port, const std::string& path) {
  static_cast<velmoor::posix::PosixSerialPort&>(port).SetDeviceMap({{"COM1", path}});
}

int Run(const velmoor::CommandLine& line) {
  using namespace velmoor;
  const posix::NotedSignals signals;
  // A copy of the catalogue for this process alone: a running Velmoor keeps its own.
  const posix::CatalogueCopyPlace copyPlace;
  posix::PosixClock clock;
  posix::PosixEvents events;
  posix::PosixFiles files;
  sqlcipher::SqlcipherDatabases databases;
  StandardRx900Utils rx900Utils;
  toml_texts::TomlTexts keyedTexts;
  json_texts::NlohmannJson jsonTexts;
  CatalogueLibrary catalogue;
  ConsoleBoxes boxes(std::cerr);
  posix::PosixSerialPort port;
  posix::PdfModule pdf(JoinPath(posix::ExecutableDirectory(), "velmoor-pages.so"));
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
  adapters.appDirectory = posix::ProgramDirectory();
  adapters.catalogueCopyDirectory = copyPlace.Directory();
  adapters.workDirectory = JoinPath(posix::StateDirectory(), "work");
  SetWorld(&adapters);
  std::ostream* const progress = ::isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr;
  ServiceHost watchHost(std::cerr, port);
  const int status = RunCommand(line, {std::cout, std::cerr, boxes, port, SetDevice, progress,
                                       posix::NotedSignals::Came, &watchHost});
  SetWorld(nullptr);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  const int status = velmoor::RunProgram(velmoor::ConsoleTable(), argc, argv, Run);
  velmoor::posix::EndBySignal();
  return status;
}
