// Inertia ratio, home position, product information.

#include "AppSession.h"
#include "platform/Events.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

class SmallTools : public AppSession {
 protected:
  void SetUp() override { StartOnline(); }
  using User = std::function<void(headless::HeadlessForm&)>;
  void With(const char* command, const char* form, const User& user) {
    data.forms.OnShow(form, user);
    Main().Choose(command);
  }
};

TEST_F(SmallTools, TheInertiaRatioIsReadEveryTwoSecondsAndStored) {
  With("mnuToolsInertiaRatio", "frmInertiaRatio", [this](headless::HeadlessForm& form) {
    EXPECT_EQ(form.label("lblIdentified").Text(), "-");
    PauseInSec(2.1F);
    EXPECT_EQ(form.label("lblIdentified").Text() + " " + form.label("lblActual").Text(), "300 0");
    form.Press("cmdSet");
    PauseInSec(2.1F);
    EXPECT_EQ(form.label("lblActual").Text(), "300");
    line.faults.Add({.kind = FaultKind::deviceError, .match = "TUNESTORE", .text = "E5A1"});
    form.Press("cmdSet");
    EXPECT_EQ(Boxes(),
              (Texts{"Inertia Ratio was set successfully!",
                     "Inertia Ratio failed to set!\rDevice is busy\r\rStoring the inertia ratio "
                     "(0TUNESTORE): refused with E5A1 \"Device is busy\"."}));
    line.faults.Add({.kind = FaultKind::notGood, .match = "PRM103"});
    PauseInSec(2.1F);
    EXPECT_FALSE(data.forms.IsOpen("frmInertiaRatio"));
  });
  EXPECT_EQ(Boxes(),
            Texts{"Cannot identify or read inertia ratio!\rCheck communications and retry!\r\r"
                  "Reading Pn103 (0PRM103): no usable value in the answer \"0NG\"."});
  EXPECT_FALSE(Form().ToolOpened(ToolWindow::inertiaRatio));
}

TEST_F(SmallTools, TheHomeOffsetGoesToHardwareAndProject) {
  const char* const kAsk =
      "Caution!  This action will set the home offset position!\rDo you wish to proceed?";
  With("mnuToolsHomePosition", "frmHomePosition", [&](headless::HeadlessForm& form) {
    EXPECT_EQ(form.textBox("txtOffset").Text(), "0.000");
    EXPECT_EQ(form.label("lblUnits").Text(), "mm");
    EXPECT_FALSE(form.button("cmdAbsReset").Enabled());
    const std::pair<const char*, std::string> refused[] = {
        {"x", "Value must be numeric!\rOffset value must be numeric!"},
        {"100000",
         "Offset value out of range!\rValue must be in the range from -99999.999 and "
         "99999.999!"}};
    for (const auto& [text, words] : refused) {
      form.Type("txtOffset", text);
      EXPECT_FALSE(form.Leave("txtOffset"));
      EXPECT_EQ(Boxes(), Texts{words});
      EXPECT_EQ(form.textBox("txtOffset").Text(), "0.000");
    }
    form.Type("txtOffset", "99999.999");
    EXPECT_TRUE(form.Leave("txtOffset"));
    form.Type("txtOffset", "-1.2345");
    EXPECT_TRUE(form.Leave("txtOffset"));
    data.boxes.Expect(kAsk, BoxAnswer::no);
    form.Press("cmdUpdate");
    EXPECT_EQ(Amplifier().State().memory.parameters.Value(0x81D), 0);
    line.faults.Add({.kind = FaultKind::deviceError, .match = "ZSET", .text = "E5A1"});
    data.boxes.Expect(kAsk, BoxAnswer::yes);
    form.Press("cmdUpdate");
    EXPECT_EQ(data.boxes.shown.back().text,
              "Error setting home offset position!\rDevice is busy\r\rSetting the home offset "
              "(0ZSET-1235): refused with E5A1 \"Device is busy\".");
    data.boxes.Expect(kAsk, BoxAnswer::yes);
    form.Press("cmdUpdate");
    EXPECT_FALSE(data.forms.IsOpen("frmHomePosition"));
  });
  EXPECT_EQ(Amplifier().State().memory.parameters.Value(0x81D), -1235);
  EXPECT_EQ(Project().Homing().GetHomingOffset(), "-1.235");
  EXPECT_EQ(Status(), "System Status: Home Offset Position Update Complete");
  EXPECT_TRUE(Project().NeedsSaving());
}

TEST_F(SmallTools, OnlyAnAbsoluteEncoderThatIsUsedAsOneCanBeReset) {
  struct Case {
    const char* encoder;
    const char* pn002;
    bool enabled;
  };
  const Case cases[] = {
      {"00000011", "0000", false}, {"00000111", "0100", false}, {"00000111", "0000", true}};
  for (const Case& row : cases) {
    SCOPED_TRACE(std::string(row.encoder) + ", Pn002 " + row.pn002);
    Amplifier().State().settings.encoder = row.encoder;
    ASSERT_TRUE(Amplifier().State().memory.parameters.Write(2, row.pn002));
    With("mnuToolsHomePosition", "frmHomePosition", [&](headless::HeadlessForm& form) {
      EXPECT_EQ(form.button("cmdAbsReset").Enabled(), row.enabled) << row.encoder << row.pn002;
      if (row.enabled) {
        data.boxes.Expect(
            "Caution!  This action will clear the absolute encoder position!\r"
            "Do you wish to proceed?",
            BoxAnswer::yes);
        form.Press("cmdAbsReset");
        EXPECT_EQ(data.boxes.shown.back().text, "Successful encoder reset!");
        EXPECT_EQ(Amplifier().Asked("ABSPGRES"), 1);
      }
      form.Press("cmdCancel");
    });
  }
}

TEST_F(SmallTools, AlarmsAreLookedAtWithoutAProject) {
  Main().Choose("mnuFileClose");
  Amplifier().State().alarm.current = "A.40";
  Amplifier().State().alarm.error = "E210";
  With("mnuToolsAlarms", "frmAlarms", [this](headless::HeadlessForm& form) {
    EXPECT_TRUE(form.label("lblNow").Text().starts_with("A.40: ")) << form.label("lblNow").Text();
    EXPECT_EQ(form.label("lblNow").TextTone(), Tone::alarm);
    EXPECT_TRUE(form.label("lblCard").Text().starts_with("E210")) << form.label("lblCard").Text();
    form.Press("cmdReset");
    EXPECT_EQ(form.label("lblNow").TextTone(), Tone::good) << form.label("lblNow").Text();
    line.faults.Add({.kind = FaultKind::notGood, .match = "ALM0"});
    form.Press("cmdRead");
    EXPECT_NE(form.label("lblHistory").Text().find("ALM0"), std::string::npos)
        << form.label("lblHistory").Text();
    form.Press("cmdExit");
  });
}

TEST_F(SmallTools, TheProductInformationIsWhatTheHardwareSays) {
  With("mnuToolsProductInformation", "frmProductInfo", [](headless::HeadlessForm& form) {
    Texts shown;
    for (int i = 0; i < 9; ++i) shown.push_back(form.label("lblValues_" + NumberText(i)).Text());
    EXPECT_EQ(shown, (Texts{"0003", "Standard", "VKLM-04AE", "0012", "Standard", "VMMAH-04AA",
                            "Incremental", "13-Bit", "0001"}));
    form.Press("cmdExit");
  });
  line.faults.Add({.kind = FaultKind::notGood, .match = "VER"});
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PGVER", .text = "E5A1"});
  With("mnuToolsProductInformation", "frmProductInfo",
       [](headless::HeadlessForm& form) { form.Press("cmdExit"); });
  EXPECT_EQ(Boxes(), Texts{"Option Information Error: Read value not found error.\r"
                           "Asking VER (0VER): no usable value in the answer \"0NG\".\r\r"
                           "Encoder Information Error: Device is busy\r"
                           "Asking PGVER (0PGVER): refused with E5A1 \"Device is busy\"."});
  Main().Choose("mnuToolsMonitoring");
  Main().Choose("mnuToolsProductInformation");
  EXPECT_EQ(Boxes(), Texts{"Product Information can only be viewed when\r"
                           "Monitoring and Terminal Emulator are closed."});
}

}  // namespace
}  // namespace velmoor
