// Times what a user waits for at the parameter tools: opening the editor on the full catalogue, a
// key in its filter, an Apply of every row; and counts the exchanges of a transfer.
// bench_tools [FOLDER] works in FOLDER. Draws into memory where there is no display.
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>

#include "Timing.h"
#include "WindowBench.h"
#include "console/ConsoleSession.h"
#include "platform/MainWindow.h"
#include "platform/World.h"
#include "simulator/InProcessPort.h"
#include "tools/ComboListText.h"
#include "tools/ParameterRules.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;

// The editor blocks: `work` runs within it, once it is on the screen.
void WithinEditor(clsHX7Editor& editor, const std::function<void()>& work) {
  QTimer::singleShot(0, [&] {
    QApplication::processEvents();
    work();
    editor.Unload_Editor();
  });
  editor.Show_Editor();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void PressKey(QWidget& widget, int key, const QString& text) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(&widget, &press);
  QApplication::processEvents();
}

void TimeEditor(clsHX7Editor& editor) {
  bench::Time("Open the parameter editor, drawn", 30, "< 150",
              [&] { WithinEditor(editor, [] {}); });
  WithinEditor(editor, [] {
    QWidget& window = *QApplication::activeModalWidget();
    auto* const filter = window.findChild<QLineEdit*>("txtFilter");
    const auto* const grid = window.findChild<QTableView*>("vsFG");
    const auto inSight = [grid] {
      int rows = 0;
      for (int row = 0; row < grid->model()->rowCount(); ++row)
        rows += grid->isRowHidden(row) ? 0 : 1;
      return rows;
    };
    bool typed = false;
    bench::Time("A key in the filter, drawn", 100, "< 30", [&] {
      typed = !typed;
      PressKey(*filter, typed ? Qt::Key_G : Qt::Key_Backspace, typed ? "g" : "\b");
    });
    std::cout << inSight() << " rows in sight";
    PressKey(*filter, Qt::Key_G, "g");
    std::cout << ", " << inSight() << " with the key\n";
  });
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

void EditEveryRow(clsHX7Editor& editor) {
  for (int row = 1; row <= editor.RowsInArray(); ++row) {
    editor.EditValue(row, OtherValue(editor.Describe(row)));
  }
}

void CountExchanges(clsHX7Project& project, SimulatedAmplifier& amplifier, InProcessPort& port) {
  const auto count = [&](const std::string& what, const char* word,
                         const std::function<bool()>& transfer) {
    amplifier.ForgetWhatWasAsked();
    const Micros start = port.Now();
    const bool done = transfer();
    int exchanges = 0;
    for (const auto& [asked, times] : amplifier.Counts()) exchanges += times;
    std::cout << what << (done ? "" : " FAILED") << ": " << amplifier.Asked(word)
              << " exchanges of rows, " << exchanges - amplifier.Asked(word) << " others, "
              << std::chrono::duration<double>(port.Now() - start).count()
              << " s on a paced line\n";
  };
  std::cout << "The editor holds " << project.Editor().RowsInArray()
            << " rows, 10 of which are never sent.\n";
  count("Download of every parameter", "PRM=", [&] { return project.Editor().Download(true); });
  count("Upload of every parameter", "PRM", [&] { return project.Editor().Upload(); });
}

int Run(const std::string& folder) {
  const std::string file = folder + "/tools.spj";
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
  if (!session.GoOnline("Cannot go online!")) return 1;
  port.SetPaced(true);
  CountExchanges(project, amplifier, port);
  bench::Heading();
  TimeEditor(project.Editor());
  bool applied = true;
  bench::Time("Apply every row of the editor", 50, "< 60", [&] {
    EditEveryRow(project.Editor());
    applied = applied && project.Editor().AcceptEdits();
  });
  std::cout << project.Editor().GetNumberOfNewRows() << " rows are marked"
            << (applied ? "" : ", an Apply FAILED") << "\n";
  return applied ? 0 : 1;
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  return velmoor::bench::RunWithWindows("bench-tools", argc, argv, velmoor::Run);
}
