// The window of the direct parameter editor.

#include "ParameterWindows.h"

namespace velmoor {
namespace {

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
      SCOPED_TRACE(strPn);
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

}  // namespace
}  // namespace velmoor
