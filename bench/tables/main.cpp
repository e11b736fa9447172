// Times what a user waits for at the motion tables: opening the index window on a full programme,
// the check of an edit, the path and picture after it, storing, and the exchanges of a transfer.
// bench_tables [FOLDER] works in FOLDER. Draws into memory where there is no display.
#include <QApplication>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "console/ConsoleSession.h"
#include "platform/MainWindow.h"
#include "platform/Rx900Utils.h"
#include "platform/World.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixFiles.h"
#include "platform/qt/QtProgram.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "project/data/CatalogueLibrary.h"
#include "simulator/InProcessPort.h"
#include "tables/CellRules.h"
#include "tables/MotionPlot.h"
#include "tables/TableCsv.h"
#include "tables/TableWindow.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Position = clsHX7Position;

void Time(const std::string& what, int runs, const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const auto start = Clock::now();
    work();
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  std::ranges::sort(times);
  std::cout << std::left << std::setw(44) << what << std::right << std::fixed
            << std::setprecision(3) << std::setw(10) << times[times.size() / 2] << std::setw(10)
            << times.back() << "\n";
}

// Each step leads to the next, the last back to the first.
std::string FullProgramme() {
  std::string text = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
  for (int step = 1; step <= 128; ++step) {
    text += "label" + std::to_string(step) + ",I+" + std::to_string(step) +
            ".125,50,-,10,AN:ZA,SEL1T100,2,label" + std::to_string(step % 128 + 1) + "\n";
  }
  return text;
}

void TimeWindow(clsHX7Project& project) {
  clsHX7Position& index = project.Position();
  Time("Open the index window, drawn", 20, [&] {
    (void)index.Show();
    QApplication::processEvents();
    index.Unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  });
  Time("Check every cell of a step", 200, [&] {
    for (int column = 0; column <= Position::next; ++column) {
      (void)CheckIndexCell(project, index, 128, column, index.Text(128, column));
    }
  });
  Time("Path and picture of 128 steps", 200, [&] {
    (void)PlotMotion(index, FollowProgramme(index, 1), {1000, 1000, 1});
  });
}

void TimeStore(clsHX7Project& project) {
  clsHX7Position& index = project.Position();
  Time("Apply 128 changed steps", 50, [&] {
    for (int row = 1; row <= 128; ++row) {
      index.SetText(row, Position::loop, index.Text(row, Position::loop) == "2" ? "3" : "2");
    }
    (void)index.ChangeAccepted();
  });
}

void CountExchanges(clsHX7Project& project, SimulatedAmplifier& amplifier, InProcessPort& port) {
  const auto count = [&](const std::string& what, const std::function<bool()>& transfer) {
    amplifier.ForgetWhatWasAsked();
    const Micros start = port.Now();
    const bool done = transfer();
    int exchanges = 0;
    for (const auto& [word, asked] : amplifier.Counts()) exchanges += asked;
    std::cout << what << (done ? "" : " FAILED") << ": " << exchanges << " exchanges, "
              << std::chrono::duration<double>(port.Now() - start).count()
              << " s on a paced line\n";
  };
  count("Download of 128 steps", [&] { return project.Position().Download(true); });
  count("Upload of 128 steps", [&] { return project.Position().Upload(); });
}

int Run(const std::string& folder) {
  const std::string file = folder + "/tables.spj";
  fs::copy_file(std::string(VELMOOR_CATALOGUE_DIRECTORY) + "/Velmoor.spt", file,
                fs::copy_options::overwrite_existing);
  const auto main = world().forms->LoadMainWindow();
  main->Show();
  SimulatedLine line;
  SimulatedAmplifier& amplifier = line.AddAmplifier();
  InProcessPort port(line);
  ConsoleSession session(port, nullptr);
  if (!session.Start("400") || !session.Open(file)) return 1;
  clsHX7Project& project = session.project();
  for (const std::string& fault : ImportCsv(project, project.Position(), FullProgramme())) {
    std::cerr << fault << "\n";
    return 1;
  }
  if (!project.Position().ChangeAccepted()) return 1;
  std::cout << "                                            median ms  worst ms\n";
  TimeWindow(project);
  TimeStore(project);
  if (!session.GoOnline("Cannot go online!")) return 1;
  port.SetPaced(true);
  CountExchanges(project, amplifier, port);
  return 0;
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  using namespace velmoor;
  if (qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const std::string folder =
      argc > 1 ? argv[1] : (fs::temp_directory_path() / "velmoor-bench-tables").string();
  fs::create_directories(folder);
  qt::QtProgram program(argc, argv, nullptr);
  posix::PosixClock clock;
  posix::PosixFiles files;
  sqlcipher::SqlcipherDatabases databases;
  StandardRx900Utils rx900Utils;
  CatalogueLibrary catalogue;
  World adapters;
  program.FillWorld(adapters);
  adapters.clock = &clock;
  adapters.files = &files;
  adapters.databases = &databases;
  adapters.rx900Utils = &rx900Utils;
  adapters.catalogue = &catalogue;
  adapters.appDirectory = VELMOOR_CATALOGUE_DIRECTORY;
  adapters.catalogueCopyDirectory = folder;
  SetWorld(&adapters);
  const int status = Run(folder);
  SetWorld(nullptr);
  return status;
}
