// The tables between project file and amplifier.
#include <gmock/gmock.h>

#include <random>

#include "TableSession.h"
#include "platform/Utility.h"
#include "tables/CellRules.h"
#include "tables/ProgrammeEdits.h"
#include "tables/TableGrid.h"

namespace velmoor {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

// A programme of 128 steps with every kind of cell, the same for the same seed.
class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::string Csv() {
    std::string text = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
    for (int step = 1; step <= 128; ++step) text += Step(step) + "\n";
    return text;
  }

 private:
  int Below(int limit) { return std::uniform_int_distribution<>(0, limit - 1)(random_); }
  std::string Number(int most) {
    return std::to_string(Below(most)) + "." + std::to_string(Below(1000));
  }
  // A multiple of three counts, so that its decimals stand for counts exactly; other speeds come
  // back as the nearest count.
  std::string Speed() {
    const int hundredths = 5 * Below(20);
    return std::to_string(Below(9999)) + (hundredths < 10 ? ".0" : ".") +
           std::to_string(hundredths);
  }
  std::string Move() {
    static const char* const kWords[] = {"+INFINITE", "-INFINITE", "STOP", "-"};
    if (Below(4) == 0) return kWords[Below(4)];
    const std::string sign = Below(2) == 0 ? "+" : "-";
    return (Below(2) == 0 ? "I" : "A") + sign + Number(99999);
  }
  std::string Outputs() {
    std::string text;
    for (int i = 0; i < 5; ++i) text += "AN:Z"[Below(4)];
    return text;
  }
  std::string Event() {
    static const char* const kWords[] = {"I",    "N",    "D",    ":",    "",     "SEL0",
                                         "SEL1", "SEL2", "SEL3", "SEL4", "SEL5", "SEL6"};
    return kWords[Below(12)] + std::string("T") + std::to_string(Below(100000));
  }
  std::string Step(int step) {
    const int next = Below(129);
    const bool end = next == 0 || next == step;
    return "label" + std::to_string(step) + "," + Move() + "," + Speed() + "," +
           (Below(2) == 0 ? "-" : Number(9999)) + "," + Speed() + "," + Outputs() + "," + Event() +
           "," + std::to_string(1 + Below(99999)) + "," +
           (end ? "END" : "label" + std::to_string(next));
  }
  std::mt19937 random_;
};

class Transfers : public TableSession {
 protected:
  void FillIndex(unsigned seed) {
    ASSERT_EQ(ImportCsv(Project(), Index(), Generator(seed).Csv()), std::vector<std::string>());
    ASSERT_TRUE(Index().ChangeAccepted());
  }
  // Applies a table without a cell.
  static void Empty(MotionTable& table) {
    const int columns = static_cast<int>(table.Layout().columns.size());
    const MotionTable::Rows before = table.Cells();
    for (int row = 1; row <= table.RowsInArray(); ++row) {
      for (int column = 0; column < columns; ++column) {
        if (table.Layout().columns[static_cast<std::size_t>(column)].kind != CellKind::fixed) {
          table.SetText(row, column, "");
        }
      }
    }
    table.MarkChangesSince(before);
    ASSERT_TRUE(table.ChangeAccepted());
  }
  void ChangeResolutionTo(const std::string& digits) {
    MachineEdit edit = Project().MechanicalSystem().Edit();
    ASSERT_TRUE(edit.SetValue("Pn82D", digits).Accepted());
    ASSERT_TRUE(Project().MechanicalSystem().Accept(edit));
  }
  void Fetch(Tool tool) {
    ASSERT_TRUE(Project().UploadParts({tool}));
    ASSERT_TRUE(Project().CommitUpload());
  }
  int Exchanges() {
    int all = 0;
    for (const auto& [word, count] : Amplifier().Counts()) all += count;
    return all;
  }
};

TEST_F(Transfers, GeneratedProgrammesSurviveFileAndWire) {
  GoOnline();
  for (const unsigned seed : {1U, 2U, 3U}) {
    FillIndex(seed);
    const MotionTable::Rows written = Index().Cells();
    Index().ReadFromDB();
    EXPECT_TRUE(Index().Cells() == written) << seed;
    ASSERT_TRUE(Project().DownloadTable(Tool::position, false));
    Empty(Index());
    Fetch(Tool::position);
    EXPECT_TRUE(Index().Cells() == written) << seed;
    Index().ReadFromDB();
    EXPECT_TRUE(Index().Cells() == written) << seed;
    EXPECT_EQ(Index().GetNumberOfNewRows(), 0);
  }
}

// What the wire rounds or does not carry: labels of any characters, speeds of any decimals, blank
// steps between others.
TEST_F(Transfers, GeneratedCellsSurviveFileAndCsv) {
  std::mt19937 random(11);
  const auto below = [&](int limit) {
    return std::uniform_int_distribution<>(0, limit - 1)(random);
  };
  const std::string characters = "aZ09 ,;\"'=<>&%\\/_-.:()[]{}#$!?*+~^`@";
  ASSERT_EQ(ImportCsv(Project(), Index(), Generator(4).Csv()), std::vector<std::string>());
  for (int row = 1; row <= 128; ++row) {
    std::string label = std::to_string(row);
    while (label.size() < 16) {
      label += characters[static_cast<std::size_t>(below(static_cast<int>(characters.size())))];
    }
    label.back() = '\'';  // outer blanks are no part of a label
    for (int other = 1; other <= 128; ++other) {
      if (Index().Text(other, Position::next) == Index().Text(row, Position::label)) {
        Index().SetText(other, Position::next, label);
      }
    }
    Index().SetText(row, Position::label, label);
    const CellCheck speed =
        CheckIndexCell(Project(), Index(), row, Position::speed,
                       std::to_string(below(9999)) + "." + std::to_string(below(1000)));
    ASSERT_TRUE(speed.accepted) << speed.words;
    Index().SetText(row, Position::speed, speed.text);
  }
  DeleteStep(Index(), 100);
  for (int row = 1; row <= 128; ++row) {
    if (Index().Text(row, Position::next).empty()) Index().SetText(row, Position::next, "END");
  }
  for (int column = 0; column <= Position::next; ++column) Index().SetText(128, column, "");
  const MotionTable::Rows written = Index().Cells();
  ASSERT_TRUE(Index().ChangeAccepted());
  Index().ReadFromDB();
  EXPECT_TRUE(Index().Cells() == written);
  const std::string text = ExportCsv(Index());
  Empty(Index());
  EXPECT_EQ(ImportCsv(Project(), Index(), text), std::vector<std::string>());
  EXPECT_TRUE(Index().Cells() == written);
}

TEST_F(Transfers, AWholeTableCostsEightExchangesARow) {
  FillIndex(7);
  GoOnline();
  ASSERT_TRUE(Index().Upload());
  EXPECT_EQ(Exchanges(), 1024);
  Amplifier().ForgetWhatWasAsked();
  ASSERT_TRUE(Index().Download(true));
  // One more asks for the firmware, before the first row.
  EXPECT_EQ(Exchanges(), 1025);
  EXPECT_EQ(Amplifier().Asked("POST=") + Amplifier().Asked("NEXTT="), 256);
}

TEST_F(Transfers, OnlyChangedRowsGoOutAndWhatWentOutIsClean) {
  Programme({"a,A+0,50,-,1,:::::,IT0,1,b", "b,I+10,50,5,2.5,A::::,T250,3,END"});
  GoOnline();
  EXPECT_EQ(Index().GetNumberOfNewRows(), 2);
  ASSERT_TRUE(Index().Download(false));
  EXPECT_EQ(Index().GetNumberOfNewRows(), 0);
  EXPECT_THAT(Marks(Index(), 3), Each("0"));
  EXPECT_EQ(Amplifier().Asked("POST="), 2);
  Amplifier().ForgetWhatWasAsked();
  ASSERT_TRUE(Index().Download(false));
  EXPECT_EQ(Amplifier().Asked("POST="), 0);
}

TEST_F(Transfers, AStopLeavesTheUnsentRowsMarked) {
  Programme({"a,A+0,50,-,1,:::::,IT0,1,b", "b,I+10,50,5,2.5,A::::,T250,3,END"});
  GoOnline();
  std::vector<std::string> status;
  Connections held;
  held += Index().Status.Connect([&](const std::string& text) { status.push_back(text); });
  held += Index().Downloading.Connect(
      [](std::int16_t, std::int16_t) { gMainForm->SetStopProcedure(true); });
  EXPECT_FALSE(Index().Download(false));
  EXPECT_THAT(status, ElementsAre("Download Terminated"));
  EXPECT_EQ(Index().GetNumberOfNewRows(), 1);
  EXPECT_THAT(Marks(Index(), 2), ElementsAre("0", "1"));
  held.Clear();
  held += Index().Status.Connect([&](const std::string& text) { status.push_back(text); });
  gMainForm->SetStopProcedure(false);
  port.Unplug();
  EXPECT_FALSE(Index().Download(false));
  EXPECT_EQ(status.back(), "Download Failed");
  EXPECT_FALSE(Index().Upload());
  EXPECT_EQ(status.back(), "Upload Failed");
  EXPECT_EQ(Index().GetNumberOfNewRows(), 1);
}

TEST_F(Transfers, OldFirmwareGetsNothingOfAProgrammeWithNewEvents) {
  Programme({"a,A+0,50,-,1,:::::,SEL5T0,1,END"});
  Amplifier().State().settings.firmware = 2;
  GoOnline();
  EXPECT_FALSE(Index().Download(false));
  EXPECT_THAT(Boxes(), ElementsAre("The firmware in controller does not support SEL5 or SEL6 "
                                   "events in Index table!"));
  EXPECT_EQ(Amplifier().Asked("POST="), 0);
}

// The marks of a row whose edit was not applied when it was sent come back with the Apply.
TEST_F(Transfers, AnEditThatWasOpenDuringADownloadIsNotForgotten) {
  Programme({"a,A+0,50,-,1,:::::,IT0,1,END"});
  GoOnline();
  headless::HeadlessForm& form = OpenIndex();
  ASSERT_TRUE(form.EditCell("vsFG", 1, 7, "SEL3T0"));
  ASSERT_TRUE(Index().Download(false));
  EXPECT_EQ(Index().GetNumberOfNewRows(), 0);
  EXPECT_EQ(Index().DirtyCell(1), "1") << "the edit is still to go";
  form.Press("cmdApply");
  EXPECT_EQ(Index().GetNumberOfNewRows(), 1);
}

TEST_F(Transfers, JumpsReachTheAmplifierAsNumbersFromZero) {
  Programme(
      {"a,A+0,50,-,1,:::::,IT0,1,c", "b,-,50,-,1,:::::,IT0,1,END", "c,-,50,-,1,:::::,IT00100,1,a"});
  EXPECT_EQ(Position::GetControllerNext("c", Index().Cells()), "2");
  EXPECT_EQ(Position::GetControllerNext("END", Index().Cells()), "END");
  // Intended: the window finds dangling labels before anything is saved.
  EXPECT_EQ(Position::GetControllerNext("nobody", Index().Cells()), "END");
  GoOnline();
  ASSERT_TRUE(Index().Download(false));
  Fetch(Tool::position);
  EXPECT_THAT(Column(Position::next, 3), ElementsAre("label3", "END", "label1"));
  EXPECT_EQ(Index().Text(3, Position::event), "IT100");
}

TEST_F(Transfers, ARefusedUploadLeavesTheEdits) {
  Programme({"a,A+0,50,-,1,:::::,IT0,1,END"});
  GoOnline();
  headless::HeadlessForm& form = OpenIndex();
  ASSERT_TRUE(form.EditCell("vsFG", 1, 8, "7"));
  ASSERT_TRUE(Project().UploadParts({Tool::position}));
  Project().DropUpload();
  EXPECT_EQ(Index().Text(1, Position::loop), "7");
  EXPECT_TRUE(form.button("cmdApply").Enabled());
  Main().Choose("mnuEditUndo");
  EXPECT_EQ(Index().Text(1, Position::loop), "1");
  EXPECT_FALSE(form.button("cmdApply").Enabled());
}

// Whether the line has garbled it, or the amplifier holds what this program does not know: it is
// kept as found, told, and does not go back unasked.
TEST_F(Transfers, AWordOfNoKnownFormIsKeptAsFoundAndInDoubt) {
  GoOnline();
  FillIndex(5);
  ASSERT_TRUE(Index().Download(false));
  for (const char* const answer :
       {"0POUTT2=NNXNN", "0POUTT2=NNN", "0EVENTT2=SEL0T", "0EVENTT2=QT5", "0POST2=JUMP",
        "0LOOPT2=00000", "0NEXTT2=-77", "0NEXTT2=label1"}) {
    const std::string text(answer);
    const std::string word = text.substr(1, text.find('=') - 1);
    line.faults.Add({.kind = FaultKind::wrongAnswer, .match = word, .text = text});
    ASSERT_TRUE(Project().UploadParts({Tool::position})) << answer;
    ASSERT_TRUE(Project().CommitUpload()) << answer;
    const auto doubts = Index().Doubts();
    const bool time = text.ends_with("SEL0T");  // an event without its time is one of time 0
    ASSERT_EQ(doubts.size(), time ? 0U : 1U) << answer;
    if (!time) {
      EXPECT_EQ(doubts.front().row, 3) << answer;
      EXPECT_EQ(doubts.front().kind, Doubt::Kind::unknown) << answer;
      const std::string found = word == "LOOPT2" ? "0" : text.substr(text.find('=') + 1);
      EXPECT_EQ(Index().Text(3, doubts.front().column), found) << answer;
    }
    line.faults.Clear();
    Fetch(Tool::position);
    EXPECT_TRUE(Index().Doubts().empty()) << answer;
  }
}

TEST_F(Transfers, ANumberThatIsNoneFailsTheUploadAndShowsNothingOfItsRow) {
  GoOnline();
  FillIndex(5);
  ASSERT_TRUE(Index().Download(false));
  for (const char* const answer : {"0SPDT2=12x4", "0POST2=A+12x4"}) {
    const std::string_view text(answer);
    const MotionTable::Rows before = Index().Cells();
    line.faults.Add({.kind = FaultKind::wrongAnswer,
                     .match = std::string(text.substr(1, text.find('=') - 1)),
                     .text = answer});
    EXPECT_FALSE(Index().Upload()) << answer;
    EXPECT_TRUE(Index().Cells() == before) << answer;
    line.faults.Clear();
  }
}

// ---- other units

TEST_F(Transfers, AChangedResolutionKeepsNumbersAndLeavesWordsAlone) {
  Programme({"a,A+1.5,50,-,1,:::::,IT0,1,b", "b,+INFINITE,50,5.25,2.5,A::::,T250,3,END",
             "c,STOP,1,-,1,:::::,IT0,1,END"});
  GoOnline();
  ASSERT_TRUE(Index().Download(false));
  headless::HeadlessForm& form = OpenIndex();
  ASSERT_TRUE(form.EditCell("vsFG", 4, 1, "half"));
  ASSERT_TRUE(form.EditCell("vsFG", 4, 3, "2.55"));  // a step that is not complete
  ChangeResolutionTo("2");
  EXPECT_THAT(Column(Position::position, 3), ElementsAre("A+1.50", "+INFINITE", "STOP"));
  EXPECT_EQ(Index().Text(2, Position::registrationDistance), "5.25");
  EXPECT_EQ(Index().GetNumberOfNewRows(), 3) << "those with another count";
  EXPECT_EQ(Index().Text(4, Position::speed), "2.55") << "the edit stands";
  EXPECT_TRUE(form.button("cmdApply").Enabled());
  EXPECT_EQ(Index().Stored(4).cells[Position::speed], "") << "and is not stored by another window";
}

// ---- zones and jog speeds

class Limits : public Transfers {
 protected:
  headless::HeadlessForm& Zones() { return Open("mnuToolsIndexerZone"); }
  headless::HeadlessForm& Jogs() { return Open("mnuToolsIndexerJog"); }
};

TEST_F(Limits, ZonesAreEditedWithWordsStoredWholeAndSent) {
  headless::HeadlessForm& form = Zones();
  EXPECT_FALSE(form.EditCell("vsFG", 32, 1, "left"));
  EXPECT_THAT(Boxes(), ElementsAre("Value must be numeric!\rPrevious value has been restored!"));
  EXPECT_TRUE(form.EditCell("vsFG", 32, 1, "-5"));
  form.Press("cmdApply");
  EXPECT_THAT(Boxes(),
              ElementsAre("Definition in zone 31 is incomplete!\rPlease edit definition."));
  EXPECT_TRUE(form.EditCell("vsFG", 32, 2, "10.5"));
  form.Press("cmdOK");
  GoOnline();
  clsHX7Zone& zone = Project().Zone();
  EXPECT_EQ(zone.GetNumberOfNewRows(), 1);
  ASSERT_TRUE(zone.Download(false));
  EXPECT_EQ(Exchanges(), 2);
  const std::string lower = zone.Text(32, clsHX7Zone::lower);
  Empty(zone);
  Fetch(Tool::zone);
  EXPECT_EQ(zone.Text(32, clsHX7Zone::lower), lower);
}

TEST_F(Limits, ACellOfTheTableTravelsThroughTheBufferAndMayBeEmpty) {
  headless::HeadlessForm& form = Zones();
  EXPECT_TRUE(form.EditCell("vsFG", 1, 1, "3"));
  form.grid("vsFG").GoTo(1, 1);
  Main().Choose("mnuEditCut");
  EXPECT_EQ(Project().Zone().Text(1, 0), "");
  form.grid("vsFG").GoTo(2, 2);
  Main().Choose("mnuEditPaste");
  EXPECT_EQ(Project().Zone().Text(2, 1), FormatToResolution("3", Project().Resolution()));
  form.grid("vsFG").GoTo(2, 3);
  EXPECT_FALSE(Project().Zone().Window().CanPaste());
  EXPECT_TRUE(form.EditCell("vsFG", 2, 2, ""));
  EXPECT_EQ(Project().Zone().Text(2, 1), "");
}

TEST_F(Limits, BitsAreLampsOfTheRowsNumber) {
  Jogs();
  TableGrid grid(Project().Jog(), "Jog", 0);
  std::vector<CellLamp> lamps;
  for (int column = 2; column <= 5; ++column) {
    EXPECT_FALSE(grid.Traits(7, column).editable);
    EXPECT_EQ(grid.Text(7, column), "");
    lamps.push_back(grid.Traits(7, column).lamp);
  }
  // Row 7 is number 6.
  EXPECT_THAT(lamps, ElementsAre(CellLamp::off, CellLamp::on, CellLamp::on, CellLamp::off));
}

TEST_F(Limits, JogSpeedsKeepTheirTextsWhenTheResolutionChanges) {
  headless::HeadlessForm& form = Jogs();
  EXPECT_FALSE(form.EditCell("vsFG", 1, 1, "-1"));
  EXPECT_THAT(Boxes(), ElementsAre(testing::HasSubstr("-1 is out of range!\rValue must be")));
  EXPECT_TRUE(form.EditCell("vsFG", 1, 1, "20"));
  form.Press("cmdApply");
  clsHX7Jog& jog = Project().Jog();
  ChangeResolutionTo("2");
  EXPECT_EQ(jog.Text(1, clsHX7Jog::speed), "20.00");
  EXPECT_EQ(jog.GetNumberOfNewRows(), 1);
}

}  // namespace
}  // namespace velmoor
