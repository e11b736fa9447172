// velmoorctl: puts the adapters together and runs one command.

#include <signal.h>
#include <unistd.h>

#include <exception>
#include <iostream>

#include "console/Commands.h"
#include "console/ConsoleBoxes.h"
#include "platform/Files.h"
#include "platform/Rx900Utils.h"
#include "platform/World.h"
#include "platform/posix/PdfModule.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixEvents.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixSerialPort.h"
#include "platform/posix/ProgramPlaces.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "project/data/CatalogueLibrary.h"

namespace {

// SIGINT, SIGTERM and SIGHUP are a Stop: what is under way ends at its next step, with its words,
// its marks and without a file left behind.
volatile sig_atomic_t stopAsked = 0;

void ListenToSignals() {
  struct sigaction action {};
  action.sa_handler = [](int) { stopAsked = 1; };
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) ::sigaction(signal, &action, nullptr);
}

void SetDevice(velmoor::SerialPort& port, const std::string& path) {
  static_cast<velmoor::posix::PosixSerialPort&>(port).SetDeviceMap({{"COM1", path}});
}

int Run(const std::vector<std::string>& words) {
  using namespace velmoor;
  // A copy of the catalogue for this process alone: a running Velmoor keeps its own.
  const auto copyPlace = posix::CatalogueCopyPlace::OfThisProcess();
  posix::PosixClock clock;
  posix::PosixEvents events;
  posix::PosixFiles files;
  sqlcipher::SqlcipherDatabases databases;
  StandardRx900Utils rx900Utils;
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
  adapters.catalogue = &catalogue;
  adapters.pdf = &pdf;
  adapters.appDirectory = posix::ProgramDirectory();
  adapters.catalogueCopyDirectory = copyPlace.Directory();
  SetWorld(&adapters);
  ListenToSignals();
  std::ostream* const progress = ::isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr;
  const int status = RunCommand(words, {std::cout, std::cerr, boxes, port, SetDevice, progress,
                                        [] { return stopAsked != 0; }});
  std::cout.flush();
  SetWorld(nullptr);
  return std::cout ? status : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
