// What each of the four tools and gain tuning add to the window of the parameter tools.

#include "ParameterWindows.h"

namespace velmoor {
namespace {

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

TEST_F(ParameterWindows, AnUploadIsHeldApartFromTheWindowUntilItsCommit) {
  session.GoOnline();
  clsHX7OverTravel& tool = project().OverTravel();
  ASSERT_TRUE(tool.Show_OverTravel());
  Type(Window(), tool, "Pn81B", "5");
  amplifier().State().memory.parameters.Write(0x81C, "-1000");
  ASSERT_TRUE(project().UploadParts({Tool::overTravel}));
  EXPECT_EQ(Shown(tool, "Pn81B"), "5.000") << "the edit stands";
  EXPECT_EQ(Shown(tool, "Pn81C"), "-99999.999");
  project().DropUpload();
  Window().Press("cmdApply");
  EXPECT_EQ(tool.GetNumberOfNewRows(), 1);
  ASSERT_TRUE(project().UploadParts({Tool::overTravel}));
  ASSERT_TRUE(project().CommitUpload());
  EXPECT_EQ(Shown(tool, "Pn81C"), "-1.000");
  EXPECT_EQ(Shown(tool, "Pn81B"), "99999.999");
  EXPECT_FALSE(Window().button("cmdApply").Enabled());
  EXPECT_EQ(tool.GetNumberOfNewRows(), 0) << "none of it is to be sent back";
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
  const std::string low = tool.Text(RowOf(tool, "Pn409"), Column::minimum);
  const std::string high = tool.Text(RowOf(tool, "Pn409"), Column::maximum);
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
