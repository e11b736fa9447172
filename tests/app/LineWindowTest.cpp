// The line in the main window: what its page shows, what its buttons do on the wire and in the
// files, and the way to an axis and back.
#include <algorithm>

#include "AppSession.h"
#include "project/ProjectCompare.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;
using headless::HeadlessForm;

class LineWindow : public AppSession {
 protected:
  enum Column { kChosen, kAxis, kName, kState, kAlarm, kProject, kAmplifier, kMotor, kFirmware };

  // Three axes of which one is not there.
  void SetUp() override {
    line.AddAmplifier({.axis = '3'});
    for (const char* const name : {"x.spj", "y.spj", "z.spj"}) data.MakeProject(name);
    file = data.folder.At("cell.toml");
    data.files.WriteDurably(file,
                            "port = \"COM2\"\nbaud = 9600\n"
                            "[axis.0]\nname = \"feed\"\nproject = \"x.spj\"\n"
                            "[axis.3]\nname = \"lift\"\nproject = \"y.spj\"\n"
                            "[axis.A]\nname = \"gripper\"\nproject = \"z.spj\"\n");
    data.dialogs.answers.push_back(std::nullopt);
    ASSERT_TRUE(Start(""));
    data.boxes.shown.clear();
  }
  void Open() {
    data.dialogs.answers.push_back(file);
    Main().Choose("mnuLineOpen");
  }
  HeadlessForm& Page() { return data.forms.Get("frmLine"); }
  std::string Cell(int row, int column) {
    return Page().grid("vsAxes").Source()->Text(row, column);
  }
  Texts States() { return {Cell(1, kState), Cell(2, kState), Cell(3, kState)}; }
  // Presses a button of the page and gives the rows of the results: axis, result and what stands
  // behind it.
  std::vector<Texts> Do(const std::string& button) {
    std::vector<Texts> rows;
    data.forms.OnShow("frmResults", [&rows](HeadlessForm& form) {
      const GridSource& source = *form.grid("vsFG").Source();
      for (int row = 1; row < source.Rows(); ++row) {
        rows.push_back({source.Text(row, 0)});
        for (int column = 2; column + 1 < source.Columns(); ++column) {
          rows.back().push_back(source.Text(row, column));
        }
      }
      form.Press("cmdCancel");
    });
    Page().Press(button);
    return rows;
  }
  void Idle(std::chrono::milliseconds time) {
    for (auto passed = 0ms; passed < time; passed += 50ms) {
      port.Advance(50ms);
      data.events.Yield();
    }
  }
  int Asked(char axis, const char* word) { return line.Amplifier(axis)->Asked(word); }
  void SetGain(const std::string& name, const std::string& value) {
    const auto database = OpenForWriting(data.folder.At(name));
    const auto rows = database->OpenTable(schema::Parameters::kTable);
    rows->FindFirst(schema::Parameters::kPn, "Pn100");
    rows->Edit();
    rows->Set(schema::Parameters::kValue, value);
    rows->Set(schema::Parameters::kControllerValue, value);
    rows->Update();
    database->Commit();
  }
  std::string GainOf(const std::string& name) {
    const auto database = OpenForReading(data.folder.At(name));
    const auto rows = database->OpenTable(schema::Parameters::kTable);
    rows->FindFirst(schema::Parameters::kPn, "Pn100");
    return rows->Text(schema::Parameters::kControllerValue);
  }

  std::string file;
};

TEST_F(LineWindow, ShowsWhoIsThereAndFollowsTheirStateWhileIdle) {
  Open();
  EXPECT_EQ(port.PortName(), "COM2");
  EXPECT_EQ(Page().label("lblTitle").Text(), "cell.toml");
  EXPECT_EQ(Cell(1, kName), "feed");
  EXPECT_EQ(Cell(1, kAlarm), "none");
  EXPECT_NE(Cell(2, kAmplifier), "");
  EXPECT_NE(Cell(2, kMotor), "");
  EXPECT_EQ(Cell(3, kState), "absent");
  EXPECT_EQ(Page().label("lblSummary").Text(), "3 axes, 2 present, 1 absent");
  line.Amplifier('3')->RaiseAlarm("A.40");
  Idle(1s);
  EXPECT_EQ(Cell(2, kAlarm), "A.40: Overspeed");
  EXPECT_EQ(Page().label("lblSummary").Text(), "3 axes, 2 present, 1 absent, 1 in alarm");
  line.Amplifier('3')->State().settings.axis = 'A';
  Idle(2s);
  EXPECT_EQ(Cell(2, kState), "absent");
  EXPECT_NE(Cell(3, kState), "absent");
  Main().Choose("mnuLineClose");
  EXPECT_FALSE(port.IsOpen());
  EXPECT_FALSE(data.forms.IsOpen("frmLine"));
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(LineWindow, SendsAndComparesAxisByAxisPastOneThatIsNotThere) {
  SetGain("y.spj", "77");
  Open();
  data.boxes.Expect("All of each project will be downloaded to its axis: axes 0, 3, A.",
                    BoxAnswer::ok);
  EXPECT_EQ(Do("cmdDownloadAll"),
            (std::vector<Texts>{{"0", "downloaded"}, {"3", "downloaded"}, {"A", "absent"}}));
  EXPECT_EQ(States(), (Texts{"equal", "equal", "absent"}));
  (void)line.Amplifier('3')->Execute("PRM100=0050", Micros(0));
  EXPECT_EQ(
      Do("cmdCompare"),
      (std::vector<Texts>{{"0", "equal", "0"}, {"3", "different", "1"}, {"A", "absent", ""}}));
  EXPECT_EQ(States(), (Texts{"equal", "1 differ", "absent"}));
  Page().grid("vsAxes").GoTo(1, kName);
  Page().PressKey("vsAxes", {.code = keys::kSpace});
  EXPECT_EQ(Page().label("lblChosen").Text(), "2 axes are chosen");
  line.Amplifier('0')->ForgetWhatWasAsked();
  data.boxes.Expect("All data of each project will be overwritten", BoxAnswer::yes);
  EXPECT_EQ(Do("cmdUpload"), (std::vector<Texts>{{"3", "uploaded"}, {"A", "absent"}}));
  EXPECT_EQ(Asked('0', "PRM"), 0) << "it was taken out";
  EXPECT_EQ(GainOf("y.spj"), "50");
  EXPECT_EQ(GainOf("x.spj"), "40");
  EXPECT_EQ(gMainForm->CurrentProject(), nullptr);
  EXPECT_FALSE(port.IsOpen());
  EXPECT_FALSE(data.files.Exists(data.folder.At("y.tmp")));
  EXPECT_EQ(Boxes().size(), 2u) << "the two questions";
}

// Stop holds for all that follow, and what failed is told in its row.
TEST_F(LineWindow, StopsBetweenRowsAndTellsWhatFailed) {
  data.files.Remove(data.folder.At("x.spj"));
  Open();
  Idle(500ms);
  EXPECT_EQ(Cell(1, kState), "no project file");
  std::string told;
  data.forms.OnShow("frmResults", [&told](HeadlessForm& form) {
    const GridSource& source = *form.grid("vsFG").Source();
    told = source.Text(1, source.Columns() - 1);
    EXPECT_EQ(source.Text(2, 2), "stopped");
    EXPECT_EQ(source.Text(3, 2), "stopped");
    form.Press("cmdCancel");
  });
  line.Amplifier('3')->ForgetWhatWasAsked();
  const std::function<void()> stop = [&] {
    if (Asked('3', "PRM") < 10) return data.events.AtYield(0, stop);
    EXPECT_GT(data.forms.Get("frmDialogStop").progressBar("pgbTotal").Maximum(), 2);
    data.forms.Get("frmDialogStop").Press("cmdStop");
  };
  data.events.AtYield(0, stop);
  Page().Press("cmdCompare");
  EXPECT_EQ(told.substr(0, 41), "Project file x.spj cannot be found at " + told.substr(38, 3));
  EXPECT_GT(Asked('3', "PRM"), 5);
  EXPECT_LT(Asked('3', "PRM"), 100) << "it was stopped";
  EXPECT_FALSE(gMainForm->StopProcedure());
}

// Its time-outs freeze nothing: events are served all along, and Stop is heard in one of them.
TEST_F(LineWindow, AnAxisThatFallsSilentLeavesTheWindowAlive) {
  Open();
  const auto compare = [this](const bool stop) {
    bool stops = stop;
    SimulatedAmplifier& lift = *line.Amplifier('3');
    lift.ForgetWhatWasAsked();
    const auto begin = data.clock.Monotonic();
    auto last = begin;
    auto longest = 0ms;
    bool runs = true;
    bool silent = false;
    const std::function<void()> look = [&] {
      const auto now = data.clock.Monotonic();
      longest = std::max(longest, now - std::exchange(last, now));
      if (silent && std::exchange(stops, false)) data.forms.Get("frmDialogStop").Press("cmdStop");
      silent = silent || lift.Asked("PRM") >= 50;
      // From then on nobody listens there.
      if (silent) lift.State().settings.axis = '9';
      if (runs) data.events.AtYield(0, look);
    };
    data.events.AtYield(0, look);
    const std::vector<Texts> results = Do("cmdCompare");
    runs = false;
    data.events.Yield();
    lift.State().settings.axis = '3';
    EXPECT_EQ(results.at(0).at(1), "different");
    EXPECT_EQ(results.at(1).at(1), stop ? "stopped" : "failed");
    EXPECT_EQ(results.at(2).at(1), stop ? "stopped" : "absent");
    EXPECT_LE(longest, 100ms);
    return data.clock.Monotonic() - begin;
  };
  EXPECT_GT(compare(false), 5s) << "its time-outs passed";
  compare(true);
}

TEST_F(LineWindow, SetsAndCopiesProjectsBehindALookAtWhatWouldChange) {
  Open();
  data.forms.OnShow("frmLineSet", [](HeadlessForm& form) {
    form.EditCell("vsFG", 1, 0, "100");
    form.EditCell("vsFG", 1, 1, "3000");
    form.Press("cmdOK");
  });
  EXPECT_EQ(Do("cmdSet"), (std::vector<Texts>{{"0", "failed"}, {"3", "failed"}, {"A", "failed"}}));
  EXPECT_EQ(GainOf("x.spj"), "40");
  Page().Press("cmdNone");
  Page().grid("vsAxes").GoTo(1, kName);
  Page().PressKey("vsAxes", {.code = keys::kSpace});
  data.forms.OnShow("frmLineSet", [](HeadlessForm& form) {
    form.EditCell("vsFG", 1, 0, "Pn100");
    form.EditCell("vsFG", 1, 1, "60");
    form.Press("cmdOK");
  });
  EXPECT_EQ(Do("cmdSet"), (std::vector<Texts>{{"0", "set"}}));
  Idle(500ms);
  EXPECT_EQ(Cell(1, kState), "1 to download");
  Page().Press("cmdAll");
  data.forms.OnShow("frmCompare", [](HeadlessForm& form) {
    const GridSource& source = *form.grid("vsFG").Source();
    EXPECT_EQ(source.Rows(), 3);
    EXPECT_EQ(source.Text(1, 0), "Axis 3: Parameters");
    EXPECT_EQ(source.Text(2, 0), "Axis A: Parameters");
    EXPECT_EQ(source.Text(1, 3), "40");
    EXPECT_EQ(source.Text(1, 4), "60");
    form.Press("cmdAgree");
  });
  EXPECT_EQ(Do("cmdCopy"), (std::vector<Texts>{{"3", "copied", "1"}, {"A", "copied", "1"}}));
  EXPECT_FALSE(Differs(CompareProjects(data.folder.At("x.spj"), data.folder.At("z.spj"))));
}

TEST_F(LineWindow, OpensAnAxisAndComesBack) {
  Open();
  Page().grid("vsAxes").RowChosen.Raise(2);
  EXPECT_EQ(Project().FileName(), data.folder.At("y.spj"));
  EXPECT_TRUE(Form().IsOnline());
  EXPECT_EQ(Form().Axis(), "3");
  EXPECT_FALSE(data.forms.IsOpen("frmLine"));
  EXPECT_TRUE(data.forms.IsOpen("frmProject"));
  line.Amplifier('0')->ForgetWhatWasAsked();
  Idle(2s);
  EXPECT_EQ(Asked('0', "ALM"), 0) << "the line rests";
  Main().Choose("mnuLineBack");
  EXPECT_TRUE(data.forms.IsOpen("frmLine"));
  EXPECT_FALSE(Form().IsOnline());
  Idle(1s);
  EXPECT_GT(Asked('0', "ALM"), 0);
  Main().Choose("mnuLineClose");
  EXPECT_EQ(Form().Axis(), "0");
  EXPECT_EQ(Form().COM(), 0);
}

TEST_F(LineWindow, SearchesTheLineAndMakesItsFileAndProjects) {
  path = data.folder.At("new/line.toml");
  data.files.MakeDirectories(data.folder.At("new"));
  data.dialogs.answers.push_back(path);
  data.boxes.Expect("2 axes have no project yet.", BoxAnswer::yes);
  Main().Choose("mnuLineSearch");
  EXPECT_EQ(Page().label("lblSummary").Text(), "2 axes, 2 present");
  EXPECT_TRUE(data.files.Exists(data.folder.At("new/axis3.spj")));
  data.files.WriteDurably(path, "port = 5\n[axis.Q]\n");
  data.forms.OnShow("frmResults", [this](HeadlessForm& form) {
    EXPECT_EQ(form.grid("vsFG").Source()->Text(1, 0), path + ":1: port takes a text in quotes");
    form.Press("cmdCancel");
  });
  data.dialogs.answers.push_back(path);
  Main().Choose("mnuLineOpen");
}

}  // namespace
}  // namespace velmoor
