// What a user waits for in the windows: until one is drawn, until a key or an edit shows, until
// Apply has stored.
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>
#include <functional>
#include <iostream>
#include <string>

#include "Timing.h"
#include "WindowUser.h"
#include "Workbench.h"
#include "layouts/frmPosition.h"
#include "mechanics/GearRatio.h"
#include "mechanics/MachineEdit.h"
#include "project/data/ComboListText.h"
#include "simulator/InProcessPort.h"
#include "tables/CellRules.h"
#include "tables/MotionPlot.h"
#include "tools/ParameterRules.h"

namespace velmoor::bench {
namespace {

using Position = clsHX7Position;

constexpr Goal kDrawn{150};
constexpr Goal kCellChecked{5};
constexpr Goal kApplied{60};

// ---- opening

template <auto tool, auto show>
void Open(clsHX7Project& project) {
  (void)((project.*tool)().*show)();
}

using P = clsHX7Project;

struct Opening {
  const char* what;
  void (*open)(clsHX7Project& project);
};

constexpr Opening kOpenings[] = {
    {"Parameter editor, drawn", Open<&P::Editor, &clsHX7Editor::Show_Editor>},
    {"Index table, drawn", Open<&P::Position, &clsHX7Position::Show_Position>},
    {"Zone table, drawn", Open<&P::Zone, &clsHX7Zone::Show_Zone>},
    {"Jog table, drawn", Open<&P::Jog, &clsHX7Jog::Show_Jog>},
    {"Machine, drawn", Open<&P::MechanicalSystem, &clsHX7MechanicalSystem::Show_MechanicalSystem>},
    {"Interface, drawn", Open<&P::Interface, &clsHX7Interface::Show_Interface>},
    {"Flexible I/O, drawn", Open<&P::FlexibleIO, &clsHX7FlexibleIO::Show_FlexibleIO>},
    {"Over travel, drawn", Open<&P::OverTravel, &clsHX7OverTravel::Show_OverTravel>},
    {"Homing, drawn", Open<&P::Homing, &clsHX7Homing::Show_Homing>},
    {"Gain tuning, drawn", Open<&P::Tuning, &clsHX7Tuning::Show_Tuning>},
    {"Monitoring, drawn", Open<&P::Monitoring, &clsHX7Monitoring::Show_Monitoring>},
    {"Terminal, drawn", Open<&P::Terminal, &clsHX7Terminal::Show_Terminal>},
};

void MeasureOpening(Workbench& bench, clsHX7Project& project, const Opening& opening) {
  constexpr int kRuns = 20;
  Figure figure{opening.what, kMilliseconds, {}, kDrawn, {}};
  for (int i = 0; i < kRuns; ++i) {
    const Stopwatch watch;
    WithinWindow([&] { opening.open(project); },
                 [&] { figure.samples.push_back(watch.Seconds()); });
  }
  bench.table.Add(figure);
}

// ---- within the editor

void PressKey(QWidget& widget, int key, const QString& text) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(&widget, &press);
  QApplication::processEvents();
}

int RowsInSight(const QTableView& grid) {
  int rows = 0;
  for (int row = 0; row < grid.model()->rowCount(); ++row) rows += grid.isRowHidden(row) ? 0 : 1;
  return rows;
}

void TimeFilter(Workbench& bench) {
  auto& filter = InWindow<QLineEdit>("txtFilter");
  const auto& grid = InWindow<QTableView>("vsFG");
  const int all = RowsInSight(grid);
  bool typed = false;
  bench.Time("A key in the editor's filter, drawn", kMilliseconds, 101, Goal{30}, [&] {
    typed = !typed;
    PressKey(filter, typed ? Qt::Key_G : Qt::Key_Backspace, typed ? "g" : "\b");
  });
  Require(typed && RowsInSight(grid) < all, "the filter");
}

// Another value of the same kind each time.
std::string OtherValue(const ParameterRow& row) {
  if (!row.list.empty()) {
    const std::string first = ComboListItem(row.list, 0);
    return row.value == first ? ComboListItem(row.list, 1) : first;
  }
  if (row.nibble != nullptr) return row.value == "0000" ? "0001" : "0000";
  return row.value == "1" ? "2" : "1";
}

void MeasureEditor(Workbench& bench, clsHX7Editor& editor) {
  WithinWindow([&] { (void)editor.Show_Editor(); }, [&] { TimeFilter(bench); });
  bench.Time("Apply of every row of the editor", kMilliseconds, 50, kApplied, [&] {
    for (int row = 1; row <= editor.RowsInArray(); ++row) {
      editor.EditValue(row, OtherValue(editor.Describe(row)));
    }
    Require(editor.AcceptEdits(), "an Apply");
  });
}

// ---- within the index table

// All that an edit of a cell sets off: check, references, history, path and picture.
void TimeEdit(Workbench& bench, const clsHX7Position& index) {
  constexpr int kStep = 64;
  Grid& grid = layouts::frmPosition(*world().forms->Active()).vsFG;
  const auto& view = InWindow<QTableView>("vsFG");
  int speed = 0;
  bench.Time("An edit in the index table, drawing apart", kMilliseconds, 201, kCellChecked, [&] {
    grid.SetCurrent(kStep, 1 + Position::speed);
    grid.BeginEdit();
    view.findChild<QLineEdit*>()->setText(QString::number(50 + ++speed % 100));
    Require(grid.FinishEdit(), "an edit");
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  });
  Require(index.Text(kStep, Position::speed) == "51.000", "an edit");
}

void MeasureIndex(Workbench& bench, clsHX7Project& project) {
  clsHX7Position& index = project.Position();
  WithinWindow([&] { (void)index.Show(); }, [&] { TimeEdit(bench, index); });
  bench.Time("Check of every cell of a step", kMicroseconds, 200, Goal{5000}, [&] {
    for (int column = 0; column <= Position::next; ++column) {
      (void)CheckIndexCell(project, index, 128, column, index.Text(128, column));
    }
  });
  bench.Time("Path and picture of 128 steps", kMicroseconds, 200, Goal{5000}, [&] {
    (void)PlotMotion(index, FollowProgramme(index, 1), {1000, 1000, 1});
  });
  bench.Time("Apply of 128 changed steps", kMilliseconds, 50, kApplied, [&] {
    for (int row = 1; row <= 128; ++row) {
      index.SetText(row, Position::loop, index.Text(row, Position::loop) == "2" ? "3" : "2");
    }
    Require(index.ChangeAccepted(), "an Apply");
  });
}

// ---- the machine

void MeasureMachine(Workbench& bench, clsHX7Project& project) {
  bench.Time("Gear ratio reduced to what fits", kMicroseconds, 101, Goal{2000}, [] {
    double a = 157079.633;
    double b = 8192;
    (void)ReduceGearRatio(a, b);
  });
  const MachineEdit edit = project.MechanicalSystem().Edit();
  bench.Time("The machine's figures after an edit", kMicroseconds, 101, Goal{5000},
             [&] { (void)edit.Figures(); });
}

}  // namespace

void MeasureWindows(Workbench& bench) {
  const auto window = ShowMainWindow();
  SimulatedLine line;
  line.AddAmplifier();
  InProcessPort port(line);
  ConsoleSession session(port, std::cerr);
  bench::Open(session, bench.fullProject);
  GoOnline(session);
  clsHX7Project& project = session.project();
  for (const Opening& opening : kOpenings) MeasureOpening(bench, project, opening);
  MeasureEditor(bench, project.Editor());
  MeasureIndex(bench, project);
  MeasureMachine(bench, project);
}

}  // namespace velmoor::bench
