// Times what a user waits for at the motion tables: opening the index window on a full programme,
// the check of an edit, the path and picture after it, storing, and a transfer against its time
// on a paced line of 38400 bit/s.
// bench_tables [FOLDER] works in FOLDER. Draws into memory where there is no display.
#include <QApplication>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QTableView>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>

#include "BenchMain.h"
#include "CountingPort.h"
#include "SimulatorChild.h"
#include "Timing.h"
#include "WindowBench.h"
#include "console/ConsoleSession.h"
#include "platform/MainWindow.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "platform/posix/PosixSerialPort.h"
#include "platform/qt/QtForm.h"
#include "tables/CellRules.h"
#include "tables/MotionPlot.h"
#include "tables/TableCsv.h"
#include "tables/TableWindow.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Position = clsHX7Position;
constexpr std::int32_t kBaudRate = 38400;

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
  bench::Time("Open the index window, drawn", 20, "150", [&] {
    (void)index.Show();
    QApplication::processEvents();
    index.Unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  });
  bench::Time("Check every cell of a step", 200, "5", [&] {
    for (int column = 0; column <= Position::next; ++column) {
      (void)CheckIndexCell(project, index, 128, column, index.Text(128, column));
    }
  });
  bench::Time("Path and picture of 128 steps", 200, "", [&] {
    (void)PlotMotion(index, FollowProgramme(index, 1), {1000, 1000, 1});
  });
}

// All that an edit of a cell sets off: check, references, history, path and picture.
void TimeEdit(clsHX7Project& project) {
  (void)project.Position().Show();
  auto& form = dynamic_cast<qt::QtForm&>(*world().forms->Active());
  Grid& grid = form.grid("vsFG");
  int speed = 0;
  bench::Time("An edit in the window, drawing apart", 200, "5", [&] {
    grid.SetCurrent(64, 1 + Position::speed);
    grid.BeginEdit();
    auto& editor = *form.Root().findChild<QTableView*>("vsFG")->findChild<QLineEdit*>();
    editor.setText(QString::number(50 + ++speed % 100));
    if (!grid.FinishEdit()) throw std::runtime_error("the edit was refused");
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  });
  if (project.Position().Text(64, Position::speed) != "50.000") {
    throw std::runtime_error("no edit arrived");
  }
  project.Position().Unload();
}

void TimeStore(clsHX7Project& project) {
  clsHX7Position& index = project.Position();
  bench::Time("Apply 128 changed steps", 50, "60", [&] {
    for (int row = 1; row <= 128; ++row) {
      index.SetText(row, Position::loop, index.Text(row, Position::loop) == "2" ? "3" : "2");
    }
    if (!index.ChangeAccepted()) throw std::runtime_error("nothing was stored");
  });
}

int Run(const std::string& folder, const std::string& simulator) {
  const std::string file = folder + "/tables.spj";
  fs::copy_file(std::string(VELMOOR_CATALOGUE_DIRECTORY) + "/Velmoor.spt", file,
                fs::copy_options::overwrite_existing);
  const auto main = world().forms->LoadMainWindow();
  main->Show();
  const bench::SimulatorChild child(simulator, kBaudRate, true);
  posix::PosixSerialPort line;
  line.SetDeviceMap({{"COM1", child.Link()}});
  bench::CountingPort port(line);
  ConsoleSession session(port, nullptr);
  session.SetBaudRate(kBaudRate);
  if (!session.Start("400") || !session.Open(file)) return 1;
  clsHX7Project& project = session.project();
  for (const std::string& fault : ImportCsv(project, project.Position(), FullProgramme())) {
    std::cerr << fault << "\n";
    return 1;
  }
  if (!project.Position().ChangeAccepted()) return 1;
  bench::Heading();
  TimeWindow(project);
  TimeEdit(project);
  TimeStore(project);
  if (!session.GoOnline("Cannot go online!")) return 1;
  // The download asks for the firmware before the first step.
  bench::MeasureTransfer("Download of 128 steps", port, kBaudRate,
                         [&] { return project.Position().Download(true); });
  bench::MeasureTransfer("Upload of 128 steps", port, kBaudRate,
                         [&] { return project.Position().Upload(); });
  return 0;
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  using namespace velmoor;
  return bench::RunWithWindows("bench-tables", argc, argv, [](const std::string& folder) {
    return Run(folder, bench::ProgramBeside("velmoor-simulator"));
  });
}
