// The machine's window as a user without a screen meets it.

#include "support/ProjectWorld.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

using headless::HeadlessForm;

constexpr int kValue = 2;  // the grid's value column

class MechanicalSystemWindow : public ProjectWorld {
 protected:
  void SetUp() override { OpenNew("a.spj"); }
  void Use(const headless::HeadlessForms::Script& script) {
    world.forms.OnShow("frmMechanicalSystem", script);
    EXPECT_TRUE(project().MechanicalSystem().Show_MechanicalSystem());
  }
  // The grid's row of a parameter.
  static int RowOf(HeadlessForm& form, const std::string& name) {
    auto& grid = form.grid("vsFG");
    for (int row = 1; row < grid.Source()->Rows(); ++row) {
      if (grid.Source()->Text(row, 0) == name) return row;
    }
    ADD_FAILURE() << name << " is not shown";
    return 0;
  }
  static bool Edit(HeadlessForm& form, const std::string& name, const std::string& text) {
    return form.EditCell("vsFG", RowOf(form, name), kValue, text);
  }
  static std::string Shown(HeadlessForm& form, const std::string& name) {
    return form.grid("vsFG").Source()->Text(RowOf(form, name), kValue);
  }
};

TEST_F(MechanicalSystemWindow, ShowsTheMachineItsFiguresAndItsPicture) {
  Use([&](HeadlessForm& form) {
    EXPECT_EQ(form.comboBox("cmbSystem").Text(), "Leadscrew");
    EXPECT_EQ(form.comboBox("cmbEncoder").Text(), "2048");
    std::string results;
    const GridSource& table = *form.grid("vsResults").Source();
    for (int row = 1; row < table.Rows(); ++row) {
      for (int column = 0; column < 3; ++column) results += table.Text(row, column) + "|";
    }
    EXPECT_EQ(results,
              "Gear ratio B/A|8192/5000||Travel per motor turn|5|mm|Smallest step|0.001|mm|"
              "Counts per mm|1000|counts|Allowable resolution|2 to 5|decimal places|"
              "Top speed, the motor at its limit of 5000 rpm (Pn30D)|416.667|mm/sec|"
              "Largest speed that can be written|1666667|mm/sec|");
    EXPECT_EQ(form.label("lblFigures").Text(), "");
    std::string texts;
    for (const DrawingShape& shape : form.drawing("picSystem").Shapes()) texts += shape.text + ";";
    for (const char* const text : {"Lead = 5 mm;", "N1 = 1;", "N2 = 1;", "2048 lines;"}) {
      EXPECT_NE(texts.find(text), std::string::npos) << texts;
    }
    EXPECT_FALSE(form.button("cmdApply").Enabled());
    form.Press("cmdCancel");
  });
  EXPECT_TRUE(world.boxes.shown.empty());
}

TEST_F(MechanicalSystemWindow, ARefusedEditKeepsTheOldValue) {
  Use([&](HeadlessForm& form) {
    Edit(form, "Pn82B", "1.5");
    EXPECT_EQ(Shown(form, "Pn82B"), "1");
    world.boxes.Expect("Restore previous value?", BoxAnswer::yes);
    Edit(form, "Pn82D", "9");
    EXPECT_EQ(Shown(form, "Pn82D"), "3");
    world.boxes.Expect("Restore previous value?", BoxAnswer::no);
    Edit(form, "Pn82C", "0");
    EXPECT_EQ(Shown(form, "Pn82C"), "1");
    EXPECT_FALSE(form.button("cmdApply").Enabled());
    // A No to the question about the whole keeps what was typed; Apply waits, and the window says
    // for what.
    world.boxes.Expect("Restore previous value?", BoxAnswer::no);
    Edit(form, "Pn82D", "6");
    EXPECT_EQ(Shown(form, "Pn82D"), "6");
    EXPECT_FALSE(form.button("cmdApply").Enabled());
    EXPECT_NE(form.label("lblFigures").Text().find("Selected resolution is out of range"),
              std::string::npos);
    Edit(form, "Pn82F.0", "0.005");
    EXPECT_TRUE(form.button("cmdApply").Enabled());
    world.boxes.Expect("Modified values will be lost", BoxAnswer::yes);
    form.Press("cmdCancel");
  });
  EXPECT_EQ(world.boxes.Count("Value must be an integer!\rPrevious value will be restored!"), 1);
}

TEST_F(MechanicalSystemWindow, CancelAsksAndLeavesTheMachineAsItWas) {
  Use([&](HeadlessForm& form) {
    Edit(form, "Pn82F.0", "10");
    EXPECT_EQ(Shown(form, "Pn203"), "10000");
    world.boxes.Expect("Modified values will be lost if changes are cancelled!", BoxAnswer::no);
    form.Press("cmdCancel");
    ASSERT_TRUE(form.IsShown());
    world.boxes.Expect("Modified values will be lost if changes are cancelled!", BoxAnswer::yes);
    form.Press("cmdCancel");
  });
  EXPECT_EQ(project().MechanicalSystem().A_Value(), 5000);
  EXPECT_FALSE(project().NeedsSaving());
}

TEST_F(MechanicalSystemWindow, ANewGearRatioAsksAndCancelCommitsNothing) {
  Use([&](HeadlessForm& form) {
    Edit(form, "Pn82F.0", "10");
    world.boxes.Expect("Electronic gear ratio has been changed!", BoxAnswer::cancel);
    form.Press("cmdApply");
    EXPECT_EQ(world.boxes.Count("Commit data change has been canceled."), 1);
    EXPECT_EQ(project().MechanicalSystem().A_Value(), 5000);
    world.boxes.Expect("Electronic gear ratio has been changed!", BoxAnswer::ok);
    form.Press("cmdOK");
    EXPECT_FALSE(world.forms.IsOpen("frmMechanicalSystem"));
  });
  EXPECT_EQ(project().MechanicalSystem().A_Value(), 10000);
  EXPECT_TRUE(project().NeedsSaving());
  EXPECT_EQ(project().WhatIsDirty(), "Mechanical System, All parameters");
}

TEST_F(MechanicalSystemWindow, AResolutionShowsWhatItRescalesBeforeItIsCommitted) {
  ASSERT_TRUE(ImportCsv(project(), project().Jog(), "jog,speed\n2,10.5\n").empty());
  ASSERT_TRUE(project().Jog().ChangeAccepted());
  Use([&](HeadlessForm& form) {
    Edit(form, "Pn82D", "2");
    world.forms.OnShow("frmRescalePreview", [](HeadlessForm& preview) {
      const GridSource& source = *preview.grid("vsFG").Source();
      EXPECT_EQ(source.Text(1, 0), "Jog Table row 2, Speed");
      EXPECT_EQ(source.Text(1, 1), "10.500");
      EXPECT_EQ(source.Text(1, 2), "10.50");
      EXPECT_EQ(source.Text(1, 3), "630");
      EXPECT_EQ(source.Text(1, 4), "63");
      EXPECT_EQ(source.Text(1, 5), "0.000");
      preview.Press("cmdCancel");
    });
    form.Press("cmdApply");
    EXPECT_EQ(project().Resolution(), 3);
    world.forms.OnShow("frmRescalePreview", [](HeadlessForm& preview) { preview.Press("cmdOK"); });
    form.Press("cmdOK");
  });
  EXPECT_EQ(world.boxes.Count("Programming resolution has been changed!\r\rAll values have been "
                              "updated to the new resolution.\rPlease review values to check if "
                              "changes are acceptable."),
            1);
  EXPECT_EQ(project().Resolution(), 2);
  EXPECT_EQ(project().Jog().Text(3, clsHX7Jog::speed), "10.50");
}

TEST_F(MechanicalSystemWindow, SystemAndUnitsMustFit) {
  Use([&](HeadlessForm& form) {
    form.Select("cmbSystem", "Rotary Table");
    form.Press("cmdOK");
    EXPECT_EQ(world.boxes.Count("Selected system cannot have linear units!"), 1);
    ASSERT_TRUE(form.IsShown());
    Edit(form, "Pn82E.0", "deg");
    // The same gear ratio commits without a word, but not without a look at the travel limits.
    world.forms.OnShow("frmRescalePreview", [](HeadlessForm& preview) {
      const GridSource& source = *preview.grid("vsFG").Source();
      EXPECT_EQ(source.Text(1, 2), "Rotary(Shortest Path)");
      EXPECT_EQ(source.Text(2, 2), "4.999");
      EXPECT_EQ(source.Text(3, 2), "0.000");
      EXPECT_EQ(preview.label("lblSummary").Text(), "3 values take a limit or follow the machine.");
      preview.Press("cmdOK");
    });
    form.Press("cmdOK");
    EXPECT_FALSE(world.forms.IsOpen("frmMechanicalSystem"));
  });
  EXPECT_EQ(project().MechanicalSystem().SelectedSystemName(), "Rotary Table");
  EXPECT_EQ(project().DistanceUnits(), "deg");
}

TEST_F(MechanicalSystemWindow, TheEncoderIsReadFromTheHardware) {
  Use([&](HeadlessForm& form) {
    form.Press("cmdGetEncoder");
    EXPECT_EQ(world.boxes.Count("Error reading resolution from encoder!"), 1);
    amplifier().State().settings.encoder = "00000011";
    session.GoOnline();
    form.Press("cmdGetEncoder");
    EXPECT_EQ(form.comboBox("cmbEncoder").Text(), "32768");
    EXPECT_EQ(Shown(form, "Pn202"), "16384");
    EXPECT_EQ(Shown(form, "Pn203"), "625");
    world.boxes.Expect("Modified values will be lost", BoxAnswer::yes);
    form.Press("cmdCancel");
  });
}

}  // namespace
}  // namespace velmoor
