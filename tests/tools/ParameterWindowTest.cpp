// What all windows of the parameter tools share: commit, undo, two windows on one parameter.

#include <filesystem>

#include "ParameterWindows.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

// ---- the frame

TEST_F(ParameterWindows, ApplyStoresAndAnUnchangedWindowClosesWithoutAQuestion) {
  clsHX7OverTravel& tool = project().OverTravel();
  ASSERT_TRUE(tool.Show_OverTravel());
  EXPECT_EQ(Window().Caption(), "Over Travel Configuration");
  EXPECT_FALSE(Window().button("cmdApply").Enabled());
  EXPECT_TRUE(Type(Window(), tool, "Pn81B", "12.5"));
  EXPECT_EQ(Shown(tool, "Pn81B"), "12.500") << "an edit is in the rows before any Apply";
  EXPECT_FALSE(project().NeedsSaving());
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
  EXPECT_FALSE(tool.IsMarked(RowOf(tool, "Pn81B")));
  EXPECT_FALSE(project().NeedsSaving());
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
  const std::string working = project().ProjectDatabasePath();
  std::filesystem::rename(working, working + ".away");
  Window().Press("cmdOK");
  ASSERT_TRUE(world.forms.IsOpen("frmProperties"));
  EXPECT_TRUE(Window().button("cmdApply").Enabled());
  EXPECT_EQ(Boxes().front().substr(0, 24), "clsOverTravel.SaveToDB: ");
  EXPECT_EQ(Shown(tool, "Pn81B"), "7.000");
  std::filesystem::rename(working + ".away", working);
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

TEST_F(ParameterWindows, OnlyTheValueCanBeCurrentAndTabGoesThroughTheRows) {
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
  grid.SetRowHidden(2, true);
  Window().PressKey("vsFG", {.code = keys::kTab});
  EXPECT_EQ(grid.Row(), 3);
}

TEST_F(ParameterWindows, EnterTakesAnEditAndGoesDownUnlessItIsRefused) {
  clsHX7OverTravel& tool = project().OverTravel();
  ASSERT_TRUE(tool.Show_OverTravel());
  auto& grid = Window().grid("vsFG");
  const int row = RowOf(tool, "Pn81B");
  grid.GoTo(row, ParameterGrid::kValue);
  grid.TypeInCell("far");
  Window().PressKey("vsFG", {.code = keys::kEnter});
  EXPECT_EQ(grid.Row(), row);
  EXPECT_EQ(Boxes().size(), 1U);
  grid.TypeInCell("7");
  Window().PressKey("vsFG", {.code = keys::kEnter});
  EXPECT_EQ(Shown(tool, "Pn81B"), "7.000");
  EXPECT_EQ(grid.Row(), row + 1);
  EXPECT_EQ(Window().label("lblHelp").Text(), tool.Help(row + 1));
  grid.TypeInCell("-7");
  Window().PressKey("vsFG", {.code = keys::kEnter, .shift = true});
  EXPECT_EQ(grid.Row(), row);
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
  EXPECT_FALSE(tool.IsMarked(RowOf(tool, "Pn81B")));
  EXPECT_FALSE(tool.HoldsEdits());
  EXPECT_FALSE(Window().button("cmdApply").Enabled());
  press(true);
  EXPECT_EQ(Shown(tool, "Pn81B"), "12.500");
  EXPECT_TRUE(tool.IsMarked(RowOf(tool, "Pn81B")));
  press(false);
  Window().Press("cmdCancel");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_FALSE(tool.IsDirty());
}

TEST_F(ParameterWindows, UndoEndsAtTheLastApplyAndLeavesWhatCameFromElsewhere) {
  clsHX7Homing& tool = project().Homing();
  ASSERT_TRUE(tool.Show_Homing());
  Type(Window(), tool, "Pn81D", "1");
  Window().Press("cmdApply");
  EXPECT_FALSE(tool.Window().CanUndo());
  Type(Window(), tool, "Pn81D", "2");
  EXPECT_TRUE(tool.Window().CanUndo());
  session.GoOnline();
  ASSERT_TRUE(project().UploadParts({Tool::homing}) && project().CommitUpload());
  EXPECT_EQ(Shown(tool, "Pn81D"), "2.000") << "the edit stands beside what the upload has brought";
  tool.Window().Undo();
  EXPECT_EQ(Shown(tool, "Pn81D"), "0.000") << "what the upload has brought";
  EXPECT_FALSE(Window().button("cmdApply").Enabled());
}

TEST_F(ParameterWindows, UndoneChoicesReachTheSisterTheLocksAndTheNotchFilter) {
  clsHX7FlexibleIO& io = project().FlexibleIO();
  ASSERT_TRUE(project().OverTravel().Show_OverTravel());
  ASSERT_TRUE(io.Show_FlexibleIO());
  HeadlessForm& form = *dynamic_cast<HeadlessForm*>(world.world.forms->Shown().back());
  ASSERT_TRUE(Type(form, io, "Pn80C", "Disabled"));
  EXPECT_EQ(Shown(project().OverTravel(), "Pn80C"), "Disabled");
  io.Window().Undo();
  EXPECT_EQ(Shown(project().OverTravel(), "Pn80C"), "Normally closed");
  io.Unload_FlexibleIO();
  project().OverTravel().Unload_OverTravel();
  clsHX7Homing& homing = project().Homing();
  ASSERT_TRUE(homing.Show_Homing());
  ASSERT_TRUE(Type(Window(), homing, "Pn823", "dec and c-phase"));
  homing.Window().Undo();
  EXPECT_EQ(Locked(Window(), homing), "824 825 826 827 828 ");
  clsHX7Tuning& tuning = project().Tuning();
  world.forms.OnShow("frmTuning", [&](HeadlessForm& gains) {
    gains.Check("chkNotchFilter", true);
    gains.PressKey("vsFG", {.code = 'Z', .ctrl = true});
    EXPECT_FALSE(gains.checkBox("chkNotchFilter").Value());
    EXPECT_FALSE(gains.button("cmdApply").Enabled());
    EXPECT_TRUE(gains.grid("vsFG").RowHidden(RowOf(tuning, "Pn408")));
    gains.Press("cmdCancel");
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
    using schema::Parameters;
    const auto database = OpenForReading(project().ProjectDatabasePath());
    const auto records = database->OpenTable(Parameters::kTable);
    EXPECT_TRUE(records->FindFirst(Parameters::kPn, "Pn825"));
    return records->Text(Parameters::kValue);
  };
  const struct {
    const char* button;
    bool upload;
    const char* value;
  } kCases[] = {{"cmdApply", false, "6.000"},
                {"cmdOK", false, "6.000"},
                {"cmdCancel", false, "7.000"},
                {"cmdOK", true, "6.000"},
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
      ASSERT_TRUE(project().CommitUpload());
    }
    Window().Activate();
    EXPECT_EQ(Shown(homing, "Pn825"), "6.000");
    const bool asks = std::string(entry.button) == "cmdCancel";
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
    ASSERT_TRUE(project().CommitUpload());
    world.boxes.shown.clear();
  }
}

TEST_F(ParameterWindows, ARefusedUploadLeavesTheEditsOfEveryOpenWindow) {
  clsHX7Homing& homing = project().Homing();
  session.GoOnline();
  ASSERT_TRUE(homing.Show_Homing());
  ASSERT_TRUE(Type(Window(), homing, "Pn81D", "6"));
  ASSERT_TRUE(project().UploadParts({Tool::editor}));
  project().DropUpload();
  EXPECT_EQ(Shown(homing, "Pn81D"), "6.000");
  EXPECT_TRUE(Window().button("cmdApply").Enabled());
  Window().Press("cmdOK");
  EXPECT_EQ(homing.GetNumberOfNewRows(), 1);
}

}  // namespace
}  // namespace velmoor
