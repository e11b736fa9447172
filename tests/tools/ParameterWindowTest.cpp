// The windows of the parameter tools, with a user made of test code.

#include "support/ProjectWorld.h"
#include "tools/ParameterGrid.h"

namespace velmoor {
namespace {

using headless::HeadlessForm;
using Texts = std::vector<std::string>;

constexpr const char* kDiscard =
    "Modified values will be lost if changes are cancelled!\rDo you wish to discard changes?";

class ParameterWindows : public ProjectWorld {
 protected:
  void SetUp() override { OpenNew("a.spj"); }

  HeadlessForm& Window() { return world.forms.Get("frmProperties"); }
  static int RowOf(const ParameterToolBase& tool, const char* strPn) {
    return tool.Rows().FindRow(strPn);
  }
  static std::string Shown(const ParameterToolBase& tool, const char* strPn) {
    return tool.Rows().Text(RowOf(tool, strPn), Column::value);
  }
  static bool Type(HeadlessForm& form, const ParameterToolBase& tool, const char* strPn,
                   const std::string& text) {
    return form.EditCell("vsFG", RowOf(tool, strPn), ParameterGrid::kValue, text);
  }
  // The names of the rows that the window locks.
  static std::string Locked(HeadlessForm& form, const ParameterToolBase& tool) {
    std::string names;
    for (int row = 1; row <= tool.RowsInArray(); ++row) {
      form.grid("vsFG").SetCurrent(row, ParameterGrid::kValue);
      const std::string tip = form.grid("vsFG").TipAt(row, ParameterGrid::kValue);
      if (tip.find('\n') != std::string::npos) {
        names += tool.Rows().Text(row, Column::name).substr(2) + " ";
      }
    }
    return names;
  }
  void OpenEditor(const std::function<void(HeadlessForm&)>& script) {
    world.forms.OnShow("frmEditor", script);
    project().Editor().Show_Editor();
  }
  Texts Boxes() { return world.boxes.TakeTexts(); }
};

// ---- the frame

TEST_F(ParameterWindows, ApplyStoresAndAnUnchangedWindowClosesWithoutAQuestion) {
  clsHX7OverTravel& tool = project().OverTravel();
  ASSERT_TRUE(tool.Show_OverTravel());
  EXPECT_EQ(Window().Caption(), "Over Travel Configuration");
  EXPECT_FALSE(Window().button("cmdApply").Enabled());
  EXPECT_TRUE(Type(Window(), tool, "Pn81B", "12.5"));
  EXPECT_EQ(Shown(tool, "Pn81B"), "12.500") << "an edit is in the rows before any Apply";
  EXPECT_FALSE(tool.NeedsSaving());
  EXPECT_TRUE(Window().button("cmdApply").Enabled());
  Window().Press("cmdApply");
  EXPECT_FALSE(Window().button("cmdApply").Enabled());
  EXPECT_TRUE(tool.IsDirty());
  EXPECT_TRUE(project().NeedsSaving());
  EXPECT_EQ(tool.GetNumberOfNewRows(), 1);
  Window().Press("cmdCancel");
  EXPECT_FALSE(world.forms.IsOpen("frmProperties"));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ParameterWindows, CancelAsksAndYesRestoresTheValues) {
  clsHX7OverTravel& tool = project().OverTravel();
  ASSERT_TRUE(tool.Show_OverTravel());
  Type(Window(), tool, "Pn81B", "12.5");
  world.boxes.Expect(kDiscard, BoxAnswer::no);
  Window().Press("cmdCancel");
  ASSERT_TRUE(world.forms.IsOpen("frmProperties"));
  EXPECT_EQ(Shown(tool, "Pn81B"), "12.500");
  world.boxes.Expect(kDiscard, BoxAnswer::yes);
  Window().Press("cmdCancel");
  EXPECT_EQ(Shown(tool, "Pn81B"), "99999.999");
  EXPECT_TRUE(tool.Rows().IsDirty(RowOf(tool, "Pn81B")));
  EXPECT_FALSE(tool.NeedsSaving());
}

TEST_F(ParameterWindows, OkTakesAnOpenEditAndARefusedOneKeepsTheWindow) {
  clsHX7OverTravel& tool = project().OverTravel();
  ASSERT_TRUE(tool.Show_OverTravel());
  auto& grid = Window().grid("vsFG");
  grid.GoTo(RowOf(tool, "Pn81B"), ParameterGrid::kValue);
  grid.TypeInCell("far");
  Window().Press("cmdOK");
  EXPECT_EQ(Boxes(), Texts{"Value must be a float number in the range from -99999.999 and "
                           "99999.999.\rPrevious value has been restored!"});
  ASSERT_TRUE(world.forms.IsOpen("frmProperties"));
  EXPECT_EQ(Shown(tool, "Pn81B"), "99999.999");
  EXPECT_FALSE(Window().button("cmdApply").Enabled()) << "a refused edit sets no flag";
  grid.TypeInCell("7");
  Window().Press("cmdOK");
  EXPECT_FALSE(world.forms.IsOpen("frmProperties"));
  EXPECT_EQ(Shown(tool, "Pn81B"), "7.000");
  EXPECT_EQ(tool.GetNumberOfNewRows(), 1);
}

TEST_F(ParameterWindows, AStoringThatFailsKeepsTheWindowAndItsEdits) {
  clsHX7OverTravel& tool = project().OverTravel();
  ASSERT_TRUE(tool.Show_OverTravel());
  Type(Window(), tool, "Pn81B", "7");
  tool.SetSaveDBPath(world.folder.At("missing.tmp"));
  Window().Press("cmdOK");
  ASSERT_TRUE(world.forms.IsOpen("frmProperties"));
  EXPECT_TRUE(Window().button("cmdApply").Enabled());
  EXPECT_EQ(Boxes().front().substr(0, 24), "clsOverTravel.SaveToDB: ");
  tool.SetSaveDBPath(project().ProjectDatabasePath());
  Window().Press("cmdOK");
  EXPECT_EQ(tool.GetNumberOfNewRows(), 1);
}

TEST_F(ParameterWindows, AnEmptiedCellIsRestoredWithoutAWord) {
  clsHX7Homing& tool = project().Homing();
  ASSERT_TRUE(tool.Show_Homing());
  EXPECT_FALSE(Type(Window(), tool, "Pn81D", ""));
  EXPECT_EQ(Shown(tool, "Pn81D"), "0.000");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ParameterWindows, OnlyTheValueCanBeCurrentAndShiftTabGoesUp) {
  clsHX7Homing& tool = project().Homing();
  ASSERT_TRUE(tool.Show_Homing());
  auto& grid = Window().grid("vsFG");
  grid.GoTo(3, ParameterGrid::kDescription);
  EXPECT_EQ(grid.Column(), ParameterGrid::kValue);
  EXPECT_EQ(Window().label("lblHelp").Text(), tool.Help(3));
  for (const int row : {2, 1, 1}) {
    Window().PressKey("vsFG", {.code = keys::kTab, .shift = true});
    EXPECT_EQ(grid.Row(), row);
  }
}

TEST_F(ParameterWindows, EnterEditsAndCtrlCCopiesTheSelection) {
  clsHX7Homing& tool = project().Homing();
  ASSERT_TRUE(tool.Show_Homing());
  auto& grid = Window().grid("vsFG");
  grid.GoTo(2, ParameterGrid::kValue);
  Window().PressKey("vsFG", {.code = 'C', .ctrl = true});
  EXPECT_EQ(world.clipboard.Text(), "no zero point return");
  grid.SetRowHidden(2, true);
  grid.Select({1, ParameterGrid::kParameter, 3, ParameterGrid::kValue});
  Window().PressKey("vsFG", {.code = 'C', .ctrl = true});
  EXPECT_EQ(world.clipboard.Text(),
            "Pn81D\tHome offset (mm)\t0.000\nPn824\tHoming direction\tForward");
  grid.SetCurrent(1, ParameterGrid::kValue);
  EXPECT_FALSE(grid.IsEditing());
  Window().PressKey("vsFG", {.code = keys::kEnter});
  EXPECT_TRUE(grid.IsEditing());
  Window().PressKey("vsFG", {.code = 'C', .ctrl = true});
  EXPECT_TRUE(grid.IsEditing()) << "a key within an edit is the edit's";
  grid.GiveUpEdit();
}

// ---- undo

TEST_F(ParameterWindows, UndoGoesBackToAWindowThatClosesWithoutAQuestion) {
  clsHX7OverTravel& tool = project().OverTravel();
  ASSERT_TRUE(tool.Show_OverTravel());
  ASSERT_TRUE(Type(Window(), tool, "Pn81B", "12.5"));
  ASSERT_TRUE(Type(Window(), tool, "Pn819", "Stop at once and hold"));
  const auto press = [this](bool shift) {
    Window().PressKey("vsFG", {.code = 'Z', .shift = shift, .ctrl = true});
  };
  press(false);
  EXPECT_EQ(Shown(tool, "Pn819"), "Decelerate and hold");
  EXPECT_EQ(Window().grid("vsFG").Row(), RowOf(tool, "Pn819")) << "the row is brought into sight";
  EXPECT_TRUE(Window().button("cmdApply").Enabled()) << "the other edit stands";
  press(false);
  press(false);
  EXPECT_EQ(Shown(tool, "Pn81B"), "99999.999");
  EXPECT_FALSE(tool.Rows().IsDirty(RowOf(tool, "Pn81B")));
  EXPECT_FALSE(tool.Rows().IsAnyTouched());
  EXPECT_FALSE(Window().button("cmdApply").Enabled());
  press(true);
  EXPECT_EQ(Shown(tool, "Pn81B"), "12.500");
  EXPECT_TRUE(tool.Rows().IsDirty(RowOf(tool, "Pn81B")));
  press(false);
  Window().Press("cmdCancel");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_FALSE(tool.IsDirty());
}

TEST_F(ParameterWindows, UndoEndsAtTheLastApplyAndAtWhatCameFromElsewhere) {
  clsHX7Homing& tool = project().Homing();
  ASSERT_TRUE(tool.Show_Homing());
  Type(Window(), tool, "Pn81D", "1");
  Window().Press("cmdApply");
  EXPECT_FALSE(tool.Window().CanUndo());
  Type(Window(), tool, "Pn81D", "2");
  EXPECT_TRUE(tool.Window().CanUndo());
  session.GoOnline();
  ASSERT_TRUE(tool.Upload());
  EXPECT_FALSE(tool.Window().CanUndo());
  Type(Window(), tool, "Pn81D", "3");
  tool.Window().Undo();
  EXPECT_EQ(Shown(tool, "Pn81D"), "0.000") << "what the upload has brought";
  EXPECT_TRUE(Window().button("cmdApply").Enabled()) << "which was not accepted";
}

TEST_F(ParameterWindows, UndoneChoicesReachTheSisterTheLocksAndTheNotchFilter) {
  clsHX7FlexibleIO& io = project().FlexibleIO();
  ASSERT_TRUE(io.Show_FlexibleIO());
  ASSERT_TRUE(Type(Window(), io, "Pn80C", "Disabled"));
  EXPECT_EQ(Shown(project().OverTravel(), "Pn80C"), "Disabled");
  io.Window().Undo();
  EXPECT_EQ(Shown(project().OverTravel(), "Pn80C"), "Normally closed");
  io.Unload_FlexibleIO();
  clsHX7Homing& homing = project().Homing();
  ASSERT_TRUE(homing.Show_Homing());
  ASSERT_TRUE(Type(Window(), homing, "Pn823", "dec and c-phase"));
  homing.Window().Undo();
  EXPECT_EQ(Locked(Window(), homing), "824 825 826 827 828 ");
  clsHX7Tuning& tuning = project().Tuning();
  world.forms.OnShow("frmTuning", [&](HeadlessForm& form) {
    form.Check("chkNotchFilter", true);
    form.PressKey("vsFG", {.code = 'Z', .ctrl = true});
    EXPECT_FALSE(form.checkBox("chkNotchFilter").Value());
    EXPECT_FALSE(form.button("cmdApply").Enabled());
    EXPECT_TRUE(form.grid("vsFG").RowHidden(RowOf(tuning, "Pn408")));
    form.Press("cmdCancel");
  });
  tuning.Show_Tuning();
}

// ---- two windows on one parameter

// Homing holds an edit of Pn825 that was not applied while the editor applies another value, or an
// upload of all parameters brings one.
TEST_F(ParameterWindows, TheLastAcceptedOfTwoWindowsStandsAndACancelKeepsTheOthers) {
  clsHX7Homing& homing = project().Homing();
  clsHX7Editor& editor = project().Editor();
  session.GoOnline();
  const auto stored = [&] {
    BlockMatrix before;
    homing.GetBlockMatrix(before);
    EXPECT_TRUE(homing.ReadFromDB());
    const std::string value = Shown(homing, "Pn825");
    homing.LetBlockMatrix(before);
    return value;
  };
  const struct {
    const char* button;
    bool upload;
    const char* value;
  } kCases[] = {{"cmdApply", false, "6.000"},
                {"cmdOK", false, "6.000"},
                {"cmdCancel", false, "7.000"},
                {"cmdOK", true, "8.000"},
                {"cmdCancel", true, "8.000"}};
  for (const auto& entry : kCases) {
    SCOPED_TRACE(std::string(entry.button) + (entry.upload ? " after an upload" : ""));
    ASSERT_TRUE(homing.Show_Homing());
    ASSERT_TRUE(Type(Window(), homing, "Pn823", "dec and c-phase"));
    ASSERT_TRUE(Type(Window(), homing, "Pn825", "6"));
    OpenEditor([&](HeadlessForm& form) {
      ASSERT_TRUE(Type(form, editor, "Pn825", "7"));
      form.Press("cmdOK");
    });
    if (entry.upload) {
      amplifier().State().memory.parameters.Write(0x825, "480");
      ASSERT_TRUE(project().UploadParts({Tool::editor}));
      project().CommitUploadedParts({Tool::editor});
    }
    Window().Activate();
    EXPECT_EQ(Shown(homing, "Pn825"), entry.upload ? "8.000" : "6.000");
    const bool asks = std::string(entry.button) == "cmdCancel" && !entry.upload;
    if (asks) world.boxes.Expect(kDiscard, BoxAnswer::yes);
    Window().Press(entry.button);
    EXPECT_EQ(stored(), entry.value);
    EXPECT_EQ(Shown(homing, "Pn825"), entry.value);
    homing.Unload_Homing();
    OpenEditor([&](HeadlessForm& form) {
      EXPECT_EQ(Shown(editor, "Pn825"), entry.value);
      form.Press("cmdCancel");
    });
    amplifier().State().memory.parameters.Write(0x825, "300");
    ASSERT_TRUE(project().UploadParts({Tool::editor}));
    project().CommitUploadedParts({Tool::editor});
    world.boxes.shown.clear();
  }
}

TEST_F(ParameterWindows, ARefusedUploadBringsBackTheEditsOfEveryOpenWindow) {
  clsHX7Homing& homing = project().Homing();
  session.GoOnline();
  ASSERT_TRUE(homing.Show_Homing());
  ASSERT_TRUE(Type(Window(), homing, "Pn81D", "6"));
  ASSERT_TRUE(project().UploadParts({Tool::editor}));
  EXPECT_EQ(Shown(homing, "Pn81D"), "0.000");
  project().RestoreSnapshot();
  EXPECT_EQ(Shown(homing, "Pn81D"), "6.000");
  EXPECT_TRUE(Window().button("cmdApply").Enabled());
  Window().Press("cmdOK");
  EXPECT_EQ(homing.GetNumberOfNewRows(), 1);
}

// ---- what the four tools add

TEST_F(ParameterWindows, TheSerialRowsKeepTheirItem) {
  clsHX7Interface& tool = project().Interface();
  ASSERT_TRUE(tool.Show_Interface());
  const std::string before = Shown(tool, "Pn800");
  EXPECT_FALSE(Type(Window(), tool, "Pn800", "RS485"));
  EXPECT_EQ(Boxes(),
            Texts{"Existing version functions only with RS422 + Echoback (RS232 + Echoback)!\r"
                  "Value has been restored!"});
  EXPECT_EQ(Shown(tool, "Pn800"), before);
  EXPECT_FALSE(Window().button("cmdApply").Enabled());
}

TEST_F(ParameterWindows, TheHomingMethodLocksRowsWhileItIsChosen) {
  clsHX7Homing& tool = project().Homing();
  ASSERT_TRUE(tool.Show_Homing());
  EXPECT_EQ(Locked(Window(), tool), "824 825 826 827 828 ");
  auto& grid = Window().grid("vsFG");
  grid.GoTo(RowOf(tool, "Pn823"), ParameterGrid::kValue);
  grid.TypeInCell("dec only");
  EXPECT_EQ(Shown(tool, "Pn823"), "no zero point return") << "still being chosen";
  grid.SetCurrent(RowOf(tool, "Pn823"), ParameterGrid::kValue);
  EXPECT_EQ(Locked(Window(), tool), "825 ");
  ASSERT_TRUE(grid.FinishEdit());
  EXPECT_EQ(Locked(Window(), tool), "825 ");
  ASSERT_TRUE(Type(Window(), tool, "Pn823", "dec and c-phase"));
  EXPECT_EQ(Locked(Window(), tool), "");
  ASSERT_TRUE(Type(Window(), tool, "Pn823", "c-phase only"));
  world.boxes.Expect(kDiscard, BoxAnswer::no);
  Window().Press("cmdCancel");
  EXPECT_EQ(Locked(Window(), tool), "825 ") << "a No to Cancel keeps what is shown";
}

TEST_F(ParameterWindows, ALimitReachesTheSisterWindowBeforeAnyApplyAndIsNotRecalled) {
  clsHX7FlexibleIO& io = project().FlexibleIO();
  clsHX7OverTravel& travel = project().OverTravel();
  ASSERT_TRUE(travel.Show_OverTravel());
  HeadlessForm& sister = Window();
  ASSERT_TRUE(Type(sister, travel, "Pn81B", "5"));
  sister.Press("cmdApply");
  ASSERT_TRUE(io.Show_FlexibleIO());
  HeadlessForm& form = *dynamic_cast<HeadlessForm*>(world.world.forms->Shown().back());
  ASSERT_TRUE(Type(form, io, "Pn80C", "Disabled"));
  EXPECT_EQ(Shown(travel, "Pn80C"), "Disabled");
  EXPECT_TRUE(sister.button("cmdApply").Enabled());
  world.boxes.Expect(kDiscard, BoxAnswer::yes);
  form.Press("cmdCancel");
  EXPECT_EQ(Shown(io, "Pn80C"), "Normally closed");
  EXPECT_EQ(Shown(travel, "Pn80C"), "Disabled");
  sister.Press("cmdOK");
  EXPECT_TRUE(travel.IsDirty()) << "the sister's own edits are still to be sent";
  EXPECT_EQ(travel.GetNumberOfNewRows(), 2) << "what it shows was accepted in it";
}

TEST_F(ParameterWindows, AnOlderCardsInputsAreHiddenOnlyWhileItIsConnected) {
  clsHX7FlexibleIO& tool = project().FlexibleIO();
  amplifier().State().settings.firmware = 2;
  ASSERT_TRUE(tool.Show_FlexibleIO());
  EXPECT_FALSE(Window().grid("vsFG").RowHidden(RowOf(tool, "Pn833")));
  tool.Unload_FlexibleIO();
  session.GoOnline();
  amplifier().ForgetWhatWasAsked();
  ASSERT_TRUE(tool.Show_FlexibleIO());
  EXPECT_TRUE(Window().grid("vsFG").RowHidden(RowOf(tool, "Pn833")));
  EXPECT_TRUE(Window().grid("vsFG").RowHidden(RowOf(tool, "Pn834")));
  EXPECT_FALSE(Window().grid("vsFG").RowHidden(RowOf(tool, "Pn818")));
  EXPECT_LE(amplifier().Journal().size(), 1u) << "the card is asked once, not for each row";
}

TEST_F(ParameterWindows, AnUploadShowsAsNotAcceptedAndARefusalBringsTheEditsBack) {
  session.GoOnline();
  clsHX7OverTravel& tool = project().OverTravel();
  ASSERT_TRUE(tool.Show_OverTravel());
  Type(Window(), tool, "Pn81B", "5");
  project().TakeSnapshot();
  ASSERT_TRUE(tool.Upload());
  EXPECT_EQ(Shown(tool, "Pn81B"), "99999.999");
  project().RestoreSnapshot();
  EXPECT_EQ(Shown(tool, "Pn81B"), "5.000");
  EXPECT_TRUE(Window().button("cmdApply").Enabled());
  Window().Press("cmdApply");
  EXPECT_EQ(tool.GetNumberOfNewRows(), 1);
  // Apply accepts what an upload has brought, and none of it is to be sent back.
  amplifier().State().memory.parameters.Write(0x81C, "-1000");
  ASSERT_TRUE(tool.Upload());
  EXPECT_TRUE(Window().button("cmdApply").Enabled());
  Window().Press("cmdApply");
  ASSERT_TRUE(tool.ReadFromDB());
  EXPECT_EQ(Shown(tool, "Pn81C"), "-1.000");
}

// ---- the direct parameter editor

TEST_F(ParameterWindows, TheEditorFindsByNameAndDescriptionAndShowsWhatChanged) {
  clsHX7Editor& tool = project().Editor();
  OpenEditor([&](HeadlessForm& form) {
    auto& grid = form.grid("vsFG");
    const auto visible = [&] {
      int count = 0;
      for (int row = 1; row <= tool.RowsInArray(); ++row) count += grid.RowHidden(row) ? 0 : 1;
      return count;
    };
    EXPECT_EQ(visible(), tool.RowsInArray());
    form.Type("txtFilter", "pn81b");
    EXPECT_EQ(visible(), 1);
    EXPECT_FALSE(grid.RowHidden(RowOf(tool, "Pn81B")));
    EXPECT_EQ(form.label("lblHelp").Text(), tool.Help(RowOf(tool, "Pn81B")))
        << "the cursor does not stay in a hidden row";
    form.Type("txtFilter", " POSITIVE limit ");
    EXPECT_EQ(visible(), 1);
    ASSERT_TRUE(Type(form, tool, "Pn81B", "9"));
    form.Type("txtFilter", "");
    form.Check("chkChangedOnly", true);
    EXPECT_EQ(visible(), 1);
    form.Check("chkChangedOnly", false);
    form.Select("cmbCategory", "RX900");
    EXPECT_TRUE(grid.RowHidden(RowOf(tool, "Pn100")));
    EXPECT_FALSE(grid.RowHidden(RowOf(tool, "Pn800")));
    form.Press("cmdOK");
  });
  EXPECT_TRUE(tool.IsDirty());
  EXPECT_EQ(tool.GetNumberOfNewRows(), 1);
}

TEST_F(ParameterWindows, AHeadingSortsTheEditorAndEditsKeepToTheirRow) {
  clsHX7Editor& tool = project().Editor();
  OpenEditor([&](HeadlessForm& form) {
    auto& grid = form.grid("vsFG");
    const auto first = [&] { return grid.Source()->Text(1, ParameterGrid::kParameter); };
    grid.GoTo(RowOf(tool, "Pn100"), ParameterGrid::kValue);
    grid.HeadingClick.Raise(ParameterGrid::kCategory);
    EXPECT_EQ(first(), "Pn800") << "RX900 before VKLM";
    grid.HeadingClick.Raise(ParameterGrid::kParameter);
    EXPECT_EQ(first(), "Pn000");
    grid.HeadingClick.Raise(ParameterGrid::kParameter);
    EXPECT_EQ(first(), "Pn834") << "a second click turns it round";
    EXPECT_EQ(grid.Source()->Text(grid.Row(), ParameterGrid::kParameter), "Pn100");
    EXPECT_EQ(form.label("lblHelp").Text(), tool.Help(RowOf(tool, "Pn100")));
    ASSERT_TRUE(form.EditCell("vsFG", grid.Row(), ParameterGrid::kValue, "41"));
    EXPECT_EQ(Shown(tool, "Pn100"), "41");
    form.Type("txtFilter", "pn81b");
    EXPECT_FALSE(grid.RowHidden(tool.RowsInArray() + 1 - RowOf(tool, "Pn81B")));
    form.PressKey("vsFG", {.code = 'Z', .ctrl = true});
    EXPECT_EQ(Shown(tool, "Pn100"), "40");
    EXPECT_EQ(grid.Source()->Text(grid.Row(), ParameterGrid::kParameter), "Pn100")
        << "an undone edit is shown although the filter had hidden it";
    form.Press("cmdCancel");
  });
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ParameterWindows, TheEditorTellsWhyARowIsLocked) {
  clsHX7Editor& tool = project().Editor();
  OpenEditor([&](HeadlessForm& form) {
    const std::pair<const char*, const char*> kRows[] = {
        {"Pn104", "Parameter Pn104 cannot be modified by Velmoor!"},
        {"Pn203",
         "Parameter Pn203 can only be modified by changing values within the 'Mechanical System' "
         "window!"},
        {"Pn408", "Parameter Pn408 can only be modified with 'Gain Tuning' window!"}};
    for (const auto& [strPn, words] : kRows) {
      EXPECT_FALSE(Type(form, tool, strPn, "1"));
      EXPECT_EQ(Boxes(), Texts{words});
    }
    form.Press("cmdCancel");
  });
}

TEST_F(ParameterWindows, DigitsAreChosenOneByOneAndCheckedAsTheWholeText) {
  clsHX7Editor& tool = project().Editor();
  OpenEditor([&](HeadlessForm& form) {
    form.grid("vsFG").GoTo(RowOf(tool, "Pn001"), ParameterGrid::kValue);
    EXPECT_EQ(form.label("lblDigit2").Text(), "Digit 2: Main supply: 0 AC, 1 DC");
    EXPECT_EQ(form.comboBox("cmbDigit1").Items(), (Texts{"0", "1", "2"}));
    form.Select("cmbDigit1", "2");
    EXPECT_EQ(Shown(tool, "Pn001"), "0020");
    form.grid("vsFG").GoTo(RowOf(tool, "Pn100"), ParameterGrid::kValue);
    EXPECT_FALSE(form.comboBox("cmbDigit0").Visible());
    form.grid("vsFG").GoTo(RowOf(tool, "Pn002"), ParameterGrid::kValue);
    EXPECT_TRUE(form.comboBox("cmbDigit0").Enabled());
    form.Press("cmdOK");
  });
  EXPECT_EQ(tool.GetNumberOfNewRows(), 1);
}

TEST_F(ParameterWindows, TheEditorsCommitReachesAnOpenWindowAsItComesToTheFront) {
  clsHX7FlexibleIO& tool = project().FlexibleIO();
  ASSERT_TRUE(tool.Show_FlexibleIO());
  ASSERT_TRUE(Type(Window(), tool, "Pn805", "Normally closed"));
  OpenEditor([&](HeadlessForm& form) {
    ASSERT_TRUE(Type(form, project().Editor(), "Pn804", "Normally closed"));
    form.Press("cmdOK");
  });
  Window().Activate();
  EXPECT_EQ(Shown(tool, "Pn804"), "Normally closed");
  EXPECT_EQ(Shown(tool, "Pn805"), "Normally closed") << "its own edit stays";
  Window().Press("cmdOK");
  EXPECT_EQ(tool.GetNumberOfNewRows(), 2);
}

// ---- gain tuning

class TuningWindow : public ParameterWindows {
 protected:
  void Open(const std::function<void(HeadlessForm&)>& script) {
    world.forms.OnShow("frmTuning", script);
    project().Tuning().Show_Tuning();
  }
};

TEST_F(TuningWindow, OfflineItShowsLevelFourAndTheFilterRowsAsControls) {
  clsHX7Tuning& tool = project().Tuning();
  Open([&](HeadlessForm& form) {
    EXPECT_EQ(form.label("lblRigidity").Text(), "Offline");
    EXPECT_EQ(form.comboBox("cmbRigidity").Text(), "Medium Rigidity [4/10]");
    EXPECT_TRUE(form.grid("vsFG").RowHidden(RowOf(tool, "Pn408")));
    EXPECT_TRUE(form.grid("vsFG").RowHidden(RowOf(tool, "Pn409")));
    EXPECT_FALSE(form.checkBox("chkNotchFilter").Value());
    EXPECT_FALSE(form.textBox("txtNotchFilterFrequency").Enabled());
    form.Check("chkNotchFilter", true);
    EXPECT_EQ(Shown(tool, "Pn408"), "0001");
    EXPECT_TRUE(form.textBox("txtNotchFilterFrequency").Enabled());
    form.Check("chkNotchFilter", false);
    EXPECT_EQ(Shown(tool, "Pn408"), "0000");
    form.Check("chkNotchFilter", true);
    form.Press("cmdOK");
  });
  EXPECT_EQ(tool.GetNumberOfNewRows(), 1);
}

TEST_F(TuningWindow, TheFrequencyKeepsToItsLimits) {
  clsHX7Tuning& tool = project().Tuning();
  const std::string low = tool.Rows().Text(RowOf(tool, "Pn409"), Column::minimum);
  const std::string high = tool.Rows().Text(RowOf(tool, "Pn409"), Column::maximum);
  Open([&](HeadlessForm& form) {
    form.Check("chkNotchFilter", true);
    for (const std::string& text : {low, high}) {
      form.Type("txtNotchFilterFrequency", text);
      EXPECT_TRUE(form.Leave("txtNotchFilterFrequency"));
      EXPECT_EQ(Shown(tool, "Pn409"), text);
    }
    EXPECT_TRUE(Boxes().empty());
    form.Type("txtNotchFilterFrequency", "1e3");
    form.Leave("txtNotchFilterFrequency");
    EXPECT_EQ(Boxes(), Texts{"Frequency value entered is out of range!\r"
                             "Value must be an integer in the range from " +
                             low + " and " + high + ".\rPrevious value will be restored."});
    EXPECT_EQ(form.textBox("txtNotchFilterFrequency").Text(), high);
    form.Type("txtNotchFilterFrequency", "");
    form.Leave("txtNotchFilterFrequency");
    EXPECT_EQ(Shown(tool, "Pn409"), high);
    form.Press("cmdOK");
  });
}

TEST_F(TuningWindow, AChosenRigidityIsConfirmedAndOfferedForDownload) {
  constexpr const char* kAsk =
      "Rigidity setting has been changed.\r"
      "Parameters 100, 101, 102, and 401 will be changed during download.";
  clsHX7Tuning& tool = project().Tuning();
  Open([&](HeadlessForm& form) {
    form.Select("cmbRigidity", "High Rigidity [8/10]");
    EXPECT_TRUE(tool.ChangedRigidity());
    world.boxes.Expect(kAsk, BoxAnswer::cancel);
    form.Press("cmdApply");
    EXPECT_EQ(Boxes().back(), "Rigidity change has been canceled.");
    EXPECT_FALSE(tool.ChangedRigidity());
    form.Select("cmbRigidity", "High Rigidity [7/10]");
    world.boxes.Expect(kAsk, BoxAnswer::ok);
    form.Press("cmdOK");
  });
  EXPECT_EQ(tool.GetRigidity(), 7);
  EXPECT_TRUE(tool.ChangedRigidity());
  EXPECT_EQ(project().WhatIsDirty(), "Gain and Tuning parameters");
  Open([&](HeadlessForm& form) {
    EXPECT_EQ(form.comboBox("cmbRigidity").Text(), "High Rigidity [7/10]");
    form.Select("cmbRigidity", "Low Rigidity [1/10]");
    world.boxes.Expect(kDiscard, BoxAnswer::yes);
    form.Press("cmdCancel");
  });
  EXPECT_EQ(tool.GetRigidity(), 7) << "a Cancel drops the choice of this window only";
}

TEST_F(TuningWindow, OnlineItShowsTheAmplifiersLevelAndTakesWholeNumbersOnly) {
  session.GoOnline();
  clsHX7Tuning& tool = project().Tuning();
  std::int16_t level = 0;
  ASSERT_EQ(gMainForm->Helix7()->GetRigidity(level), kSuccess);
  Open([&](HeadlessForm& form) {
    EXPECT_EQ(form.label("lblRigidity").Text(), std::to_string(level));
    EXPECT_EQ(form.comboBox("cmbRigidity").ListIndex(), level - 1);
    EXPECT_FALSE(Type(form, tool, "Pn100", "40.5"));
    EXPECT_EQ(Boxes().size(), 1u);
    EXPECT_TRUE(Type(form, tool, "Pn100", "41"));
    form.Press("cmdOK");
  });
  EXPECT_EQ(tool.GetNumberOfNewRows(), 1);
}

}  // namespace
}  // namespace velmoor
