// An error that no procedure handled.

#include "AppSession.h"
#include "platform/Events.h"
#include "project/ProjectCompare.h"

namespace velmoor {
namespace {

class LastResort : public AppSession {
 protected:
  void SetUp() override {
    StartOnline();
    data.world.reportDirectory = data.folder.At("reports");
  }
  static UnhandledError Error() {
    return {.type = "std::out_of_range",
            .description = "no such row",
            .trace = {"velmoor::clsHX7Zone::Row(int)  (velmoor)", "main  (velmoor)"}};
  }
  ErrorChoice Handle(const std::string& button) {
    data.forms.OnShow("frmError", [this, button](headless::HeadlessForm& form) {
      words = form.label("lblError").Text();
      report = form.label("lblReport").Text();
      form.Press(button);
    });
    return module->HandleUnhandledError(Error());
  }
  std::string words, report;
};

TEST_F(LastResort, TellsWhatFailedAndWritesAReport) {
  data.clock.SetTimeOfDay(14, 5, 9);
  EXPECT_EQ(Handle("cmdContinue"), ErrorChoice::goOn);
  EXPECT_EQ(words,
            "An unexpected error has occured in this application: \r\rError std::out_of_range\r"
            "Description: no such row\rProcedure: velmoor::clsHX7Zone::Row(int)\rLine: unknown\r"
            "Module: velmoor\rProject: line1\rVersion: " VELMOOR_VERSION);
  ASSERT_TRUE(report.starts_with("A report was written to\r"));
  const std::string file = report.substr(report.find('\r') + 1);
  EXPECT_NE(file.find("/Error Report Files/Error "), std::string::npos);
  EXPECT_TRUE(file.ends_with(" 14-05-09.txt"));
  const std::string text = data.files.ReadAll(file);
  EXPECT_NE(text.find("Description: no such row\n"), std::string::npos);
  EXPECT_NE(text.find("  main  (velmoor)\n"), std::string::npos);
  EXPECT_NE(text.find("What went before:\n"), std::string::npos);
  EXPECT_NE(text.find("  session: Online\n"), std::string::npos);
  EXPECT_NE(text.find("\nVelmoor " VELMOOR_VERSION "\n"), std::string::npos);
  EXPECT_EQ(Handle("cmdRetry"), ErrorChoice::retry);
}

TEST_F(LastResort, StopsTheTestRunFirst) {
  data.boxes.Expect("Use extreme caution!", BoxAnswer::yes);
  data.forms.OnShow("frmServoJog", [this](headless::HeadlessForm& form) {
    form.Press("cmdServo");
    form.Hold("cmdJog_0");
    Amplifier().ForgetWhatWasAsked();
    (void)Handle("cmdContinue");
    EXPECT_EQ(Amplifier().Journal().front().line, "0SKIP");
    EXPECT_FALSE(Amplifier().State().axis.IsServoOn());
    form.Unload();
  });
  Main().Choose("mnuToolsServoJog");
}

// ---- a signal that ends the process

TEST_F(LastResort, ASignalStopsTheMotorAndLeavesNothingBehind) {
  data.settings.values["Axis"] = "7";
  const std::string working = Project().ProjectDatabasePath();
  ASSERT_TRUE(data.files.Exists(working));
  data.boxes.Expect("Use extreme caution!", BoxAnswer::yes);
  data.forms.OnShow("frmServoJog", [&](headless::HeadlessForm& form) {
    form.Press("cmdServo");
    form.Hold("cmdJog_0");
    data.boxes.shown.clear();
    Amplifier().ForgetWhatWasAsked();
    module->LeaveAtOnce();
    EXPECT_EQ(Amplifier().Journal().front().line, "0SKIP");
    EXPECT_FALSE(Amplifier().State().axis.IsServoOn());
    EXPECT_EQ(Boxes(), Texts{});
    form.Unload();  // the process would be gone
  });
  Main().Choose("mnuToolsServoJog");
  EXPECT_FALSE(data.files.Exists(working));
  EXPECT_FALSE(data.files.Exists(data.folder.At("tempIdeInfo.mdb")));
  EXPECT_FALSE(instance.claimed);
  EXPECT_EQ(data.settings.values["Axis"], "0");
}

TEST_F(LastResort, ASignalLeavesWorkThatIsNotSavedInTheWorkingFile) {
  const std::string working = Project().ProjectDatabasePath();
  const std::string saved = data.files.ReadAll(path);
  Project().Editor().EditValue(Project().Editor().FindRow("Pn100"), "55");
  ASSERT_TRUE(Project().Editor().AcceptEdits());
  ASSERT_TRUE(Project().NeedsSaving());
  data.settings.refuseWrites = true;
  module->LeaveAtOnce();
  EXPECT_EQ(Boxes(), Texts{});
  EXPECT_EQ(data.files.ReadAll(path), saved);
  const std::string rescued = data.folder.At("rescued.spj");
  data.files.ReplaceDurably(working, rescued);
  Texts changed;
  for (const PartComparison& part : CompareProjects(path, rescued)) {
    for (const ProjectDifference& d : part.differences) changed.push_back(d.row + " " + d.second);
  }
  EXPECT_EQ(changed, Texts{"Pn100 55"});
}

TEST_F(LastResort, EndsTheProgramByItsWindowSoThatNothingIsLost) {
  Project().SetNeedsSaving(true);
  data.boxes.Expect("Project line1 has not been saved yet.", BoxAnswer::yes);
  EXPECT_EQ(Handle("cmdEnd"), ErrorChoice::end);
  YieldEvents();
  EXPECT_EQ(closings, 1);
}

TEST_F(LastResort, GoesOnWhereNoReportCanBeWrittenAndInAnErrorOfItsOwn) {
  data.world.reportDirectory = "/proc/nowhere";
  EXPECT_EQ(Handle("cmdContinue"), ErrorChoice::goOn);
  EXPECT_TRUE(report.starts_with("No report could be written: "));
  data.forms.OnShow("frmError", [this](headless::HeadlessForm& form) {
    EXPECT_EQ(module->HandleUnhandledError(Error()), ErrorChoice::goOn);
    form.Press("cmdContinue");
  });
  (void)module->HandleUnhandledError(Error());
  EXPECT_EQ(Boxes(), Texts{"An unexpected error has occured in this application: \r\r"
                           "Description: no such row"});
}

}  // namespace
}  // namespace velmoor
