// The window of the direct parameter editor.

#include "ParameterWindows.h"

namespace velmoor {
namespace {

// Which rows the editor shows, in the choices that it offers.
class EditorFilters : public ParameterWindows {
 protected:
  Texts Visible(HeadlessForm& form) {
    const clsHX7Editor& tool = project().Editor();
    Texts names;
    for (int row = 1; row <= tool.RowsInArray(); ++row) {
      if (!form.grid("vsFG").RowHidden(row)) names.push_back(tool.Text(row, Column::name));
    }
    return names;
  }
  static void ChooseGroup(HeadlessForm& form, const std::string& name) {
    auto& tree = form.grid("vsGroups");
    for (int row = 1; row < tree.Source()->Rows(); ++row) {
      if (tree.RowHidden(row) || !tree.Source()->Text(row, 0).ends_with(name)) continue;
      EXPECT_TRUE(tree.GoTo(row, 0));
      return;
    }
    ADD_FAILURE() << "no branch in sight is named " << name;
  }
  static std::string Notes(HeadlessForm& form, int row) {
    return form.grid("vsFG").Source()->Text(row, ParameterGrid::kNotes);
  }
};

TEST_F(EditorFilters, TextsAndGroupsNarrowTheRowsTogether) {
  clsHX7Editor& tool = project().Editor();
  OpenEditor([&](HeadlessForm& form) {
    EXPECT_EQ(std::ssize(Visible(form)), tool.RowsInArray());
    form.Type("txtFilter", "pn81b");
    EXPECT_EQ(Visible(form), Texts{"Pn81B"});
    EXPECT_EQ(form.label("lblHelp").Text(), tool.Help(RowOf(tool, "Pn81B")))
        << "the cursor does not stay in a hidden row";
    form.Type("txtFilter", " POSITIVE limit ");
    EXPECT_EQ(Visible(form), Texts{"Pn81B"});
    form.Type("txtFilter", "");
    ChooseGroup(form, "Homing");
    EXPECT_EQ(Visible(form),
              (Texts{"Pn81D", "Pn823", "Pn824", "Pn825", "Pn826", "Pn827", "Pn828"}));
    ChooseGroup(form, "Gains");
    EXPECT_EQ(std::ssize(Visible(form)), 32) << "with all groups within it";
    ChooseGroup(form, "Second set");
    EXPECT_EQ(Visible(form), (Texts{"Pn107", "Pn108", "Pn116"}));
    form.Type("txtFilter", "integral");
    EXPECT_EQ(Visible(form), Texts{"Pn108"});
    const auto& tree = *form.grid("vsGroups").Source();
    EXPECT_EQ(tree.Text(1, 0), "All parameters");
    EXPECT_EQ(tree.Text(1, 1), "3") << "what is found in each branch is counted";
    form.Press("cmdCancel");
  });
}

TEST_F(EditorFilters, AStateIsShownByItselfAndToldInWords) {
  clsHX7Editor& tool = project().Editor();
  session.GoOnline();
  ASSERT_TRUE(project().UploadParts({Tool::editor}) && project().CommitUpload());
  amplifier().State().memory.parameters.Write(0x103, "250");
  OpenEditor([&](HeadlessForm& form) {
    form.Select("cmbShow", "changed");
    EXPECT_EQ(Visible(form), Texts{});
    form.Select("cmbShow", "all rows");
    ASSERT_TRUE(Type(form, tool, "Pn100", "77"));
    EXPECT_EQ(Notes(form, RowOf(tool, "Pn100")), "changed; not default");
    form.Select("cmbShow", "changed");
    EXPECT_EQ(Visible(form), Texts{"Pn100"});
    form.Press("cmdApply");
    EXPECT_EQ(Notes(form, RowOf(tool, "Pn100")), "to download; amplifier has 40; not default");
    form.Select("cmbShow", "to download");
    EXPECT_EQ(Visible(form), Texts{"Pn100"});
    form.Select("cmbShow", "not default");
    EXPECT_EQ(std::ranges::count(Visible(form), "Pn100"), 1);
    EXPECT_EQ(std::ranges::count(Visible(form), "Pn101"), 0);
    form.Select("cmbShow", "differs from hardware");
    EXPECT_EQ(Visible(form), Texts{"Pn100"}) << "nobody has asked for Pn103 since";
    ASSERT_TRUE(project().UploadParts({Tool::editor}));
    project().DropUpload();
    form.Select("cmbShow", "differs from hardware");
    EXPECT_EQ(Visible(form), (Texts{"Pn100", "Pn103"}));
    ASSERT_TRUE(tool.Download(false));
    form.Select("cmbShow", "differs from hardware");
    EXPECT_EQ(Visible(form), Texts{"Pn103"}) << "what is acknowledged is known to be there";
    form.Press("cmdCancel");
  });
}

TEST_F(EditorFilters, ValuesGoBackToTheirDefaultsThroughTheRulesOfTyping) {
  clsHX7Editor& tool = project().Editor();
  OpenEditor([&](HeadlessForm& form) {
    ASSERT_TRUE(Type(form, tool, "Pn107", "55"));
    ASSERT_TRUE(Type(form, tool, "Pn108", "1000"));
    ASSERT_TRUE(Type(form, tool, "Pn81E", "5"));
    const auto row = [&](const char* strPn) { return RowOf(tool, strPn); };
    form.grid("vsFG").GoTo(row("Pn107"), ParameterGrid::kValue);
    form.Press("cmdDefault");
    EXPECT_EQ(Shown(tool, "Pn107"), tool.DefaultText(row("Pn107")));
    EXPECT_FALSE(form.button("cmdDefault").Enabled()) << "it is the default now";
    form.grid("vsFG").GoTo(row("Pn81E"), ParameterGrid::kValue);
    form.Press("cmdDefault");
    EXPECT_EQ(Shown(tool, "Pn81E"), "16.667") << "1000 counts a minute, in mm/sec";
    ASSERT_TRUE(Type(form, tool, "Pn107", "55"));
    ChooseGroup(form, "Gains");
    world.boxes.Expect(
        "2 values of 'Gains' will be set to their defaults.\rDo you wish to proceed?",
        BoxAnswer::yes);
    form.Press("cmdDefaultGroup");
    EXPECT_TRUE(tool.IsDefault(row("Pn107")) && tool.IsDefault(row("Pn108")));
    tool.Window().Undo();
    EXPECT_EQ(Shown(tool, "Pn107") + " " + Shown(tool, "Pn108"), "55 1000") << "one step";
    form.grid("vsFG").GoTo(row("Pn104"), ParameterGrid::kValue);
    EXPECT_FALSE(form.button("cmdDefault").Enabled()) << "a locked row stays";
    world.boxes.Expect(kDiscard, BoxAnswer::yes);
    form.Press("cmdCancel");
  });
}

TEST_F(EditorFilters, ARefusedTextStaysUnderEditWithItsRange) {
  clsHX7Editor& tool = project().Editor();
  OpenEditor([&](HeadlessForm& form) {
    auto& grid = form.grid("vsFG");
    const struct {
      const char* strPn;
      const char* text;
      const char* hint;
    } kCases[] = {{"Pn100", "9999", "Range: 1 to 2000"},
                  {"Pn81B", "far", "Range: -99999.999 to 99999.999"},
                  {"Pn001", "9999", "Range: 0000 to 1122"},
                  {"Pn100", "", ""}};
    for (const auto& entry : kCases) {
      SCOPED_TRACE(entry.text);
      ASSERT_TRUE(grid.GoTo(RowOf(tool, entry.strPn), ParameterGrid::kValue));
      ASSERT_TRUE(grid.TypeInCell(entry.text));
      EXPECT_FALSE(grid.FinishEdit());
      EXPECT_EQ(grid.Hint(), entry.hint);
      EXPECT_EQ(grid.IsEditing(), *entry.hint != '\0');
      grid.GiveUpEdit();
    }
    EXPECT_EQ(Boxes().size(), 3U) << "the given box stands beside it";
    form.Press("cmdCancel");
  });
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
      ASSERT_TRUE(form.grid("vsFG").GoTo(RowOf(tool, strPn), ParameterGrid::kValue));
      EXPECT_EQ(Boxes(), Texts{}) << "nobody has tried to edit it";
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
    EXPECT_EQ(form.label("lblDigit2").Text(), "Digit 2: Main supply");
    EXPECT_EQ(form.comboBox("cmbDigit2").Items(), (Texts{"0: AC", "1: DC"}));
    form.Select("cmbDigit1", "2: brake and coast");
    EXPECT_EQ(Shown(tool, "Pn001"), "0020");
    EXPECT_EQ(form.grid("vsFG").Source()->Text(RowOf(tool, "Pn001"), ParameterGrid::kNotes),
              "changed; not default; Stop at servo off and alarm 0: dynamic brake, Stop at over "
              "travel 2: brake and coast, Main supply 0: AC, Warnings 0: on the panel only");
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
