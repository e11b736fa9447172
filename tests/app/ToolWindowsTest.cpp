// Opening the parameter tools, and the transfers of a single tool.

#include "AppSession.h"
#include "tools/ParameterGrid.h"

namespace velmoor {
namespace {

using headless::HeadlessForm;

class ToolWindows : public AppSession {
 protected:
  void SetUp() override { StartOnline(); }

  HeadlessForm& Window() { return data.forms.Get("frmProperties"); }
  void Edit(HeadlessForm& form, ParameterToolBase& tool, const char* strPn,
            const std::string& text) {
    ASSERT_TRUE(form.EditCell("vsFG", tool.FindRow(strPn), ParameterGrid::kValue, text));
  }
  // The lines with a parameter, without those by which every way online begins.
  int Exchanges(const char* beginning) {
    const auto& journal = Amplifier().Journal();
    return static_cast<int>(std::count_if(journal.begin(), journal.end(), [&](const auto& entry) {
      return entry.line.starts_with(beginning) && !entry.line.starts_with("0PRM80");
    }));
  }
  static std::string Shown(const ParameterToolBase& tool, const char* strPn) {
    return tool.Text(tool.FindRow(strPn), Column::value);
  }
};

TEST_F(ToolWindows, AToolOpensOnceAndComesToTheFrontThen) {
  const struct {
    const char* command;
    Tool window;
    const char* type;
    const char* caption;
  } kTools[] = {
      {"mnuToolsIndexerInterface", Tool::interface, "Interface", "Interface Configuration"},
      {"mnuToolsIndexerFlexibleIO", Tool::flexibleIO, "FlexibleIO", "Flexible I/O Configuration"},
      {"mnuToolsIndexerOverTravel", Tool::overTravel, "OverTravel", "Over Travel Configuration"},
      {"mnuToolsIndexerHoming", Tool::homing, "Homing", "Homing Routine Configuration"}};
  for (const auto& tool : kTools) {
    EXPECT_FALSE(IsToolWindowOpened(tool.type));
    Main().Choose(tool.command);
    Main().Choose(tool.command);
    EXPECT_EQ(data.world.forms->Shown().size(), 1u);
    EXPECT_EQ(Window().Caption(), tool.caption);
    EXPECT_TRUE(Form().ToolOpened(tool.window));
    EXPECT_TRUE(IsToolWindowOpened(tool.type));
    Window().Press("cmdCancel");
    EXPECT_FALSE(Form().ToolOpened(tool.window));
  }
}

TEST_F(ToolWindows, TheEditorBlocksAndClearsItsFlag) {
  data.forms.OnShow("frmEditor", [this](HeadlessForm& form) {
    EXPECT_TRUE(Form().ToolOpened(Tool::editor));
    form.Press("cmdOK");
  });
  Main().Choose("mnuToolsEditor");
  EXPECT_FALSE(Form().ToolOpened(Tool::editor));
}

TEST_F(ToolWindows, ALeftEditIsAskedForBeforeTheProjectGoes) {
  Main().Choose("mnuToolsIndexerOverTravel");
  Edit(Window(), Project().OverTravel(), "Pn81B", "5");
  data.boxes.Expect("All module forms will be unloaded.\rDo you wish to proceed?", BoxAnswer::ok);
  data.boxes.Expect("Do you wish to discard changes?", BoxAnswer::no);
  Main().Close();
  EXPECT_TRUE(data.forms.IsOpen("frmProperties"));
  EXPECT_EQ(Shown(Project().OverTravel(), "Pn81B"), "5.000");
}

TEST_F(ToolWindows, EditApplyDownloadAndUploadAgree) {
  Main().Choose("mnuToolsIndexerHoming");
  Edit(Window(), Project().Homing(), "Pn81D", "1.25");
  Window().Press("cmdOK");
  Amplifier().ForgetWhatWasAsked();
  data.boxes.Expect("The following items have been modified:\rHoming parameters\r", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadNew");
  EXPECT_EQ(Exchanges("0PRM"), 1);
  EXPECT_EQ(Amplifier().State().memory.parameters.Value(0x81D), 1250);
  EXPECT_EQ(Main().Panel(StatusPanel::pending), "");
}

TEST_F(ToolWindows, ASingleUploadAsksTwiceAndCommitsOnYesOnly) {
  clsHX7OverTravel& tool = Project().OverTravel();
  constexpr const char* kWarn =
      "Existing Over Travel Parameters will be overwritten with hardware data!\r"
      "Do you wish to continue?";
  constexpr const char* kCommit =
      "Over Travel Parameters successfully uploaded from controller.\r"
      "Commit uploaded data to project?";
  Amplifier().State().memory.parameters.Write(0x81B, "7500");
  data.boxes.Expect(kWarn, BoxAnswer::no);
  Main().Choose("mnuToolsUploadParameterOverTravel");
  EXPECT_EQ(Shown(tool, "Pn81B"), "99999.999");
  for (const BoxAnswer answer : {BoxAnswer::no, BoxAnswer::yes}) {
    Amplifier().ForgetWhatWasAsked();
    data.boxes.Expect(kWarn, BoxAnswer::yes);
    data.boxes.Expect(kCommit, answer);
    data.forms.OnShow("frmCompare", [](headless::HeadlessForm& form) { form.Press("cmdCancel"); });
    Main().Choose("mnuToolsUploadParameterOverTravel");
    EXPECT_EQ(Exchanges("0PRM"), 4) << "and Pn80C and Pn80D";
    EXPECT_EQ(Shown(tool, "Pn81B"), answer == BoxAnswer::yes ? "7.500" : "99999.999");
    EXPECT_EQ(Project().NeedsSaving(), answer == BoxAnswer::yes);
    EXPECT_EQ(Form().Procedure(), nullptr);
  }
  EXPECT_FALSE(tool.IsDirty());
}

TEST_F(ToolWindows, AStoppedOrFailedSingleUploadLeavesNoTrace) {
  clsHX7OverTravel& tool = Project().OverTravel();
  Amplifier().State().memory.parameters.Write(0x80C, "2");
  Main().Choose("mnuToolsIndexerOverTravel");
  Edit(Window(), tool, "Pn81C", "-3");
  data.boxes.Expect("Do you wish to continue?", BoxAnswer::yes);
  data.forms.OnShow("frmDialogStop", [](HeadlessForm& form) { form.Press("cmdStop"); });
  Main().Choose("mnuToolsUploadParameterOverTravel");
  EXPECT_EQ(data.boxes.shown.back().text, "Upload Over Travel Parameters terminated!");
  data.boxes.Expect("Do you wish to continue?", BoxAnswer::yes);
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PRM81A"});
  Main().Choose("mnuToolsUploadParameterOverTravel");
  EXPECT_EQ(data.boxes.shown.back().text,
            "Could not upload Over Travel Parameters from controller!\r\r"
            "Reading Pn81A (0PRM81A): refused with E5A1 \"Device is busy\".\r\r"
            "The project is unchanged.");
  EXPECT_EQ(Shown(tool, "Pn80C"), "Normally closed");
  EXPECT_EQ(Shown(tool, "Pn81C"), "-3.000") << "an edit that was not applied is still there";
  EXPECT_TRUE(Window().button("cmdApply").Enabled());
}

TEST_F(ToolWindows, TheTuningWindowSendsWhatItShowsAndTheRigidityLast) {
  clsHX7Tuning& tool = Project().Tuning();
  data.forms.OnShow("frmTuning", [&](HeadlessForm& form) {
    Edit(form, tool, "Pn103", "150");
    form.Select("cmbRigidity", "High Rigidity [8/10]");
    Amplifier().ForgetWhatWasAsked();
    data.boxes.Expect("Existing gain tuning parameters in hardware will be overwritten!",
                      BoxAnswer::ok);
    data.boxes.Expect("Rigidity setting has been changed.", BoxAnswer::ok);
    data.boxes.Expect("Rigidity setting changed successfully.", BoxAnswer::yes);
    form.Press("cmdDownload");
    EXPECT_EQ(LastHead(), "Download Tuning Parameters complete!");
    EXPECT_EQ(form.label("lblRigidity").Text(), "8");
    EXPECT_EQ(Exchanges("0PRM"), 24) << "twelve writes, and twelve reads after the rigidity";
    // The Yes has taken the amplifier's new gains into the project.
    EXPECT_EQ(Shown(tool, "Pn100"),
              std::to_string(Amplifier().State().memory.parameters.Value(0x100)));
    form.Press("cmdOK");
  });
  Main().Choose("mnuToolsTuning");
  EXPECT_FALSE(tool.ChangedRigidity());
  EXPECT_FALSE(tool.IsDirty());
  EXPECT_EQ(tool.GetNumberOfNewRows(), 0);
}

// ---- downloads of a single tool

class SingleDownloads : public ToolWindows {
 protected:
  void SetUp() override {
    ToolWindows::SetUp();
    Amplifier().ForgetWhatWasAsked();
  }
  std::string Sent(const char* number) {
    const std::string beginning = std::string("0PRM") + number + "=";
    for (const auto& entry : Amplifier().Journal()) {
      if (entry.line.starts_with(beginning)) return entry.line.substr(beginning.size());
    }
    return "nothing";
  }
  int Writes() { return Amplifier().Asked("PRM="); }
};

TEST_F(SingleDownloads, EachToolSendsItsRowsAndNoOthersAndRestartsWhereNeeded) {
  const struct {
    const char* command;
    const char* name;
    int rows;
    int restarts;
  } kTools[] = {{"mnuToolsDownloadParameterInterface", "Interface Parameters", 3, 1},
                {"mnuToolsDownloadParameterFlexibleIO", "Flexible I/O Parameters", 24, 1},
                {"mnuToolsDownloadParameterHoming", "Homing Parameters", 7, 1},
                {"mnuToolsDownloadParameterOverTravel", "Over Travel Parameters", 6, 1},
                {"mnuToolsDownloadParameterTuning", "Tuning Parameters", 12, 0}};
  for (const auto& tool : kTools) {
    Amplifier().ForgetWhatWasAsked();
    data.boxes.Expect("Do you wish to proceed?", BoxAnswer::ok);
    Main().Choose(tool.command);
    EXPECT_EQ(LastHead(), "Download " + std::string(tool.name) + " complete!");
    // Asking it again, and finding it behind a restart, writes Pn802.
    EXPECT_EQ(Writes() - 1 - tool.restarts, tool.rows) << tool.name;
    EXPECT_EQ(Amplifier().Asked("RES"), tool.restarts) << tool.name;
    EXPECT_EQ(Project().WhatIsDirty(), "");
    PauseInSec(1);
  }
}

TEST_F(SingleDownloads, TheWindowsButtonAcceptsWhatItShowsAfterTheQuestion) {
  clsHX7Homing& tool = Project().Homing();
  Main().Choose("mnuToolsIndexerHoming");
  Edit(Window(), tool, "Pn81D", "1.25");
  data.boxes.Expect(
      "Homing Parameters of the project will be downloaded to the controller.\r"
      "Do you wish to proceed?",
      BoxAnswer::cancel);
  Window().Press("cmdDownload");
  EXPECT_TRUE(Window().button("cmdApply").Enabled()) << "a Cancel accepts nothing";
  EXPECT_EQ(Sent("81D"), "nothing");
  data.boxes.Expect("Homing Parameters of the project", BoxAnswer::ok);
  Window().Press("cmdDownload");
  EXPECT_EQ(Sent("81D"), "1250");
  EXPECT_FALSE(Window().button("cmdApply").Enabled());
  // An access key presses the button while the cell is still under edit.
  PauseInSec(1);
  Amplifier().ForgetWhatWasAsked();
  Window().grid("vsFG").GoTo(tool.FindRow("Pn81D"), ParameterGrid::kValue);
  ASSERT_TRUE(Window().grid("vsFG").TypeInCell("2.5"));
  data.boxes.Expect("Homing Parameters of the project", BoxAnswer::ok);
  Window().Press("cmdDownload");
  EXPECT_EQ(Sent("81D"), "2500");
  EXPECT_FALSE(tool.IsMarked(tool.FindRow("Pn81D")));
  EXPECT_EQ(Project().WhatIsDirty(), "");
}

TEST_F(SingleDownloads, WhatASisterHadToSendIsSentAndWhatIsLeftStaysMarked) {
  data.forms.OnShow("frmEditor", [this](HeadlessForm& form) {
    Edit(form, Project().Editor(), "Pn825", "6");
    Edit(form, Project().Editor(), "Pn100", "41");
    form.Press("cmdOK");
  });
  Main().Choose("mnuToolsEditor");
  data.boxes.Expect("Homing Parameters of the project", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadParameterHoming");
  EXPECT_EQ(Sent("825"), "360");
  EXPECT_EQ(Sent("100"), "nothing");
  const clsHX7Editor& editor = Project().Editor();
  EXPECT_FALSE(editor.IsMarked(editor.FindRow("Pn825")));
  EXPECT_TRUE(editor.IsMarked(editor.FindRow("Pn100")));
  EXPECT_EQ(Project().WhatIsDirty(), "All parameters");
}

TEST_F(SingleDownloads, ACutOneIsCompletedByDownloadNew) {
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PRM826="});
  data.boxes.Expect("Homing Parameters of the project", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadParameterHoming");
  EXPECT_EQ(data.boxes.shown.back().text,
            "Error downloading data to controller!\r\r"
            "Writing Pn826 (0PRM826=1200): refused with E5A1 \"Device is busy\".\r\r"
            "3 items stay on offer (Homing parameters): Download New completes it.");
  EXPECT_EQ(Project().WhatIsDirty(), "Homing parameters");
  EXPECT_EQ(Project().Homing().GetNumberOfNewRows(), 3) << "from the refused one on";
  EXPECT_FALSE(Project().NeedsSaving()) << "the project's file has the marks already";
  data.forms.OnShow("frmDialogStop", [](HeadlessForm& form) { form.Press("cmdStop"); });
  data.boxes.Expect("Homing Parameters of the project", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadParameterHoming");
  EXPECT_EQ(data.boxes.shown.back().text,
            "Download Homing Parameters terminated!\r\r"
            "6 items stay on offer (Homing parameters): Download New completes it.");
}

TEST_F(SingleDownloads, TheEditorsButtonsMoveAllParametersWithinTheWindow) {
  data.forms.OnShow("frmEditor", [this](HeadlessForm& form) {
    Edit(form, Project().Editor(), "Pn100", "41");
    data.boxes.Expect("All Parameters of the project will be downloaded", BoxAnswer::ok);
    form.Press("cmdDownload");
    EXPECT_EQ(LastHead(), "Download All Parameters complete!");
    EXPECT_FALSE(form.button("cmdApply").Enabled());
    PauseInSec(1);
    ASSERT_TRUE(Amplifier().State().memory.parameters.Write(0x100, "77"));
    data.boxes.Expect("Existing All Parameters will be overwritten", BoxAnswer::yes);
    data.boxes.Expect("Commit uploaded data to project?", BoxAnswer::yes);
    form.Press("cmdUpload");
    EXPECT_EQ(Shown(Project().Editor(), "Pn100"), "77");
    form.Press("cmdCancel");
  });
  data.forms.OnShow("frmCompare", [](HeadlessForm& form) { form.Press("cmdCancel"); });
  Main().Choose("mnuToolsEditor");
  EXPECT_EQ(Sent("100"), "41");
  EXPECT_EQ(Project().WhatIsDirty(), "");
}

// ---- the Edit menu

TEST_F(ToolWindows, TheEditMenuActsOnTheParameterWindowInFront) {
  clsHX7Homing& tool = Project().Homing();
  Main().Choose("mnuToolsIndexerHoming");
  EXPECT_FALSE(Main().command("mnuEditUndo").Enabled());
  Edit(Window(), tool, "Pn81D", "1.25");
  EXPECT_TRUE(Main().command("mnuEditUndo").Enabled());
  EXPECT_TRUE(Main().command("mnuEditCopy").Enabled());
  EXPECT_FALSE(Main().command("mnuEditCut").Enabled()) << "a value is never emptied";
  Main().Choose("mnuEditUndo");
  EXPECT_EQ(Shown(tool, "Pn81D"), "0.000");
  EXPECT_FALSE(Main().command("mnuEditUndo").Enabled());
  Main().Choose("mnuEditRedo");
  EXPECT_EQ(Shown(tool, "Pn81D"), "1.250");
  Main().Choose("mnuEditCopy");
  EXPECT_EQ(data.clipboard.Text(), "1.250");
}

}  // namespace
}  // namespace velmoor
