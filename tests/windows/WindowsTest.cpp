// Every window of the program, one after the other, on the screen of this process.
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableView>

#include "ScreenSession.h"
#include "layouts/AllLayouts.h"
#include "platform/Numbers.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform_qt/QtTestUser.h"
#include "support/DoubtfulProject.h"

namespace velmoor::qt {
namespace {

class Windows : public ScreenSession {
 protected:
  static void Press(const char* button) {
    Widget<QPushButton>(button).click();
    ServeEvents();
  }
  // The cell of a row, in the column of that heading.
  static QModelIndex CellOf(const QTableView& grid, int row, const char* heading) {
    const QAbstractItemModel& model = *grid.model();
    for (int column = 0; column < model.columnCount(); ++column) {
      const QString told = model.headerData(column, Qt::Horizontal).toString();
      if (told.startsWith(QLatin1String(heading))) return model.index(row, column);
    }
    throw std::logic_error(std::string("No column is headed ") + heading);
  }
  void PositionDialogs();
  std::string DoubtfulProject();
  std::string ProjectBehindAKill();
  std::string LineOfSixteen();
  // In the machine's window, up to what it would rescale.
  static void ChangeResolution();
};

void Windows::ChangeResolution() {
  auto& grid = Widget<QTableView>("vsFG");
  int row = 0;
  while (grid.model()->index(row, 0).data().toString() != QLatin1String("Pn82D")) ++row;
  const QModelIndex cell = CellOf(grid, row, "Value");
  grid.setCurrentIndex(cell);
  grid.edit(cell);
  auto& line = *grid.findChild<QLineEdit*>();
  line.selectAll();
  TypeText(line, QStringLiteral("2"));
  PressKey(line, Qt::Key_Return);
  ServeEvents();
  Press("cmdApply");
}

void Windows::PositionDialogs() {
  auto& grid = *Child("frmPosition").findChild<QTableView*>(QStringLiteral("vsFG"));
  for (const char* const heading : {"Position", "POUT", "Event"}) {
    SCOPED_TRACE(heading);
    grid.setCurrentIndex(CellOf(grid, 0, heading));
    InDialog([&grid] { PressKey(grid, Qt::Key_F9); });
  }
}

// One of whose values shows something else than it sends.
std::string Windows::DoubtfulProject() {
  std::string path = data.MakeProject("doubtful.spj");
  {
    const auto database = OpenForWriting(path);
    PutDoubtfulJogSpeed(*database);
    database->Commit();
  }
  data.databases.Release(path);
  return path;
}

// Whose working file holds what was not saved.
std::string Windows::ProjectBehindAKill() {
  const std::string left = data.files.ReadAll(DoubtfulProject());
  data.files.WriteDurably(data.folder.At("killed.tmp"), left);
  return data.MakeProject("killed.spj");
}

// Of which one answers, with names of some length.
std::string Windows::LineOfSixteen() {
  std::string text = "port = \"COM1\"\n";
  for (std::uint32_t i = 0; i < 16; ++i) {
    const std::string axis = HexText(i);
    data.MakeProject("station" + axis + ".spj");
    text += "[axis." + axis + "]\nname = \"lift of station " + axis + "\"\nproject = \"station" +
            axis + ".spj\"\n";
  }
  data.files.WriteDurably(data.folder.At("cell.toml"), text);
  return data.folder.At("cell.toml");
}

TEST_F(Windows, ShowAllOfThemselves) {
  const QSize room = QGuiApplication::primaryScreen()->size();
  std::printf("The screen has %d x %d units.\n", room.width(), room.height());
  Start();
  for (const char* const command :
       {"mnuToolsIndexerInterface", "mnuToolsIndexerFlexibleIO", "mnuToolsIndexerOverTravel",
        "mnuToolsIndexerHoming", "mnuToolsIndexerJog", "mnuToolsIndexerZone"}) {
    Choose(command);
    CloseChildren();
  }
  Choose("mnuToolsIndexerPosition");
  PositionDialogs();
  Child("frmPosition").findChild<QPushButton*>(QStringLiteral("cmdRehearse"))->click();
  PauseInSec(1);
  Look();
  CloseChildren();
  const auto nothing = [] {};
  for (const char* const command :
       {"mnuToolsEditor", "mnuToolsTuning", "mnuToolsCommunicationsSettings", "mnuHelpAbout"}) {
    Choose(command, nothing);
  }
  Choose("mnuToolsMechanicalSystem", [this] {
    data.boxes.Expect("discard", BoxAnswer::yes);
    InDialog(ChangeResolution);
  });
  Choose("mnuToolsOnline");
  for (const char* const command :
       {"mnuToolsServoJog", "mnuToolsHomePosition", "mnuToolsInertiaRatio", "mnuToolsAlarms",
        "mnuToolsProductInformation"}) {
    Choose(command, nothing);
  }
  Choose("mnuToolsTuning", [this] { InDialog([] { Press("cmdTry"); }); });
  Choose("mnuToolsRecordings");
  CloseChildren();
  Choose("mnuToolsCompare", nothing);
  Choose("mnuViewHistory", nothing);
  Choose("mnuToolsMonitoring");
  CloseChildren();
  Choose("mnuHelpLog");
  CloseChildren();
  Choose("mnuToolsTerminal");
  InDialog([this] {
    Child("frmTerminal").findChild<QAction*>(QStringLiteral("mnuViewOptions"))->trigger();
  });
  CloseChildren();
  Choose("mnuFilePrint", [this] {
    Widget<QCheckBox>("chkPrint_0").click();
    InDialog([] { Press("cmdPreview"); });
  });
  Choose("mnuHelpContents");
  InDialog([this] {
    (void)module->HandleUnhandledError(
        {.type = "std::runtime_error", .description = "A text of some length", .trace = {}});
  });
  InDialog([this] {
    std::string lines;
    for (int i = 0; i < 6; ++i) {
      lines += "A cause that fills a line of its own, and tells in full what is to be done\r";
    }
    (void)windows.boxes->Show(BoxKind::exclamation, BoxButtons::yesNoCancel, lines, "", nullptr);
  });
  data.dialogs.answers.push_back(ProjectBehindAKill());
  data.boxes.Expect("has not been saved yet.", BoxAnswer::no);
  Choose("mnuFileOpen", nothing);
  data.dialogs.answers.push_back(DoubtfulProject());
  Choose("mnuFileOpen", nothing);
  data.dialogs.answers.push_back(LineOfSixteen());
  Choose("mnuLineOpen");
  InDialog([] { Press("cmdSet"); });
  InDialog([] { Press("cmdCompare"); });
  for (const Layout* const layout : layouts::kAll) {
    EXPECT_TRUE(seen.contains(std::string(layout->name))) << layout->name;
  }
}

}  // namespace
}  // namespace velmoor::qt
