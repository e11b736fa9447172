// Going online and offline, and connecting by hand.

#include "AppSession.h"

namespace velmoor {
namespace {

class Online : public AppSession {
 protected:
  void SetUp() override {
    path = data.MakeProject("line1.spj");
    ASSERT_TRUE(Start(path));
  }
  void OpenCommunications(std::function<void(headless::HeadlessForm&)> user) {
    data.forms.OnShow("frmCommunications", std::move(user));
    Main().Choose("mnuToolsCommunicationsSettings");
  }
};

TEST_F(Online, OnlineShowsTheModelAndKeepsTheMotorSize) {
  Main().Choose("mnuToolsOnline");
  EXPECT_EQ(Status(), "System Status: Online");
  EXPECT_EQ(Main().Panel(StatusPanel::model), "VKLM-04AE");
  EXPECT_EQ(Main().StatusTone(), Tone::good);
  EXPECT_EQ(Form().LastMotorSize(), "400");
  const auto& texts = Main().statusTexts;
  EXPECT_EQ(*(texts.end() - 3), "System Status: Polling to Go Online...");
  EXPECT_EQ(*(texts.end() - 2), "System Status: Asking axis 0 at 9600 bit/s");
  EXPECT_FALSE(Main().command("mnuToolsOnline").Enabled());
  Form().Hardware().connection.GoOnline();
  EXPECT_EQ(Boxes(), Texts{"System is already online!"});
  Main().Choose("mnuToolsOffline");
  EXPECT_EQ(Status(), "System Status: Offline");
  EXPECT_EQ(Main().Panel(StatusPanel::model), "");
  EXPECT_FALSE(port.IsOpen());
  EXPECT_FALSE(Main().command("mnuToolsOffline").Enabled());
  Form().Hardware().connection.GoOffline();
  EXPECT_EQ(Boxes(), Texts{"System is already offline!"});
}

TEST_F(Online, AFailedSearchOffersTheHandOrTellsToCheck) {
  port.Unplug();
  data.boxes.Expect(
      "Error autoconnecting with hardware!\r"
      "Do you wish to establish communications manually?",
      BoxAnswer::no);
  Main().Choose("mnuToolsOnline");
  EXPECT_EQ(data.boxes.shown.back().text,
            "Error communicating with hardware!  Check connections and setup!");
  EXPECT_EQ(Main().StatusTone(), Tone::faint);
  data.boxes.Expect("Error autoconnecting", BoxAnswer::yes);
  data.forms.OnShow("frmCommunications", [](headless::HeadlessForm& f) { f.Press("cmdCancel"); });
  Main().Choose("mnuToolsOnline");
  EXPECT_FALSE(Form().ToolOpened(ToolWindow::communicationsSettings));
}

TEST_F(Online, TheWindowShowsTheSessionAndOneProtocol) {
  Form().SetAxis("A");
  Form().SetCOM(2);
  Form().SetBaudRate(19200);
  OpenCommunications([this](headless::HeadlessForm& form) {
    EXPECT_TRUE(Form().ToolOpened(ToolWindow::communicationsSettings));
    EXPECT_EQ(form.grid("vsPorts").Row(), 3);
    EXPECT_EQ(form.optionGroup("optBaudRate").Value(), 1);
    EXPECT_EQ(form.optionGroup("optProtocol").Value(), 1);
    EXPECT_FALSE(form.optionGroup("optProtocol").ChoiceEnabled(0));
    EXPECT_TRUE(form.optionGroup("optProtocol").ChoiceEnabled(1));
    EXPECT_EQ(form.comboBox("cmbAxes").Items().size(), 16u);
    EXPECT_EQ(form.comboBox("cmbAxes").Text(), "A");
    form.grid("vsPorts").GoTo(6, 0);
    form.Select("cmbAxes", "3");
    form.Press("cmdCancel");
  });
  EXPECT_EQ(Form().COM(), 2);
  EXPECT_EQ(Form().Axis(), "A");
}

TEST_F(Online, TheScanFindsHexadecimalAxes) {
  AmplifierSettings settings;
  settings.axis = 'A';
  line.AddAmplifier(settings);
  // The search asks on the port as it stands, and a closed one is silent.
  Main().Choose("mnuToolsOnline");
  OpenCommunications([](headless::HeadlessForm& form) {
    form.Press("cmdGetAxes");
    EXPECT_EQ(form.comboBox("cmbAxes").Items(), (Texts{"0", "A"}));
    EXPECT_EQ(form.comboBox("cmbAxes").Text(), "0");
    EXPECT_EQ(form.label("lblQuery").Text(), "Query Finished");
    form.Press("cmdCancel");
  });
}

TEST_F(Online, AScanWithoutAnswerKeepsTheListAndTakesHalfASecondAnAxis) {
  Main().Choose("mnuToolsOnline");
  line.faults.Add({.kind = FaultKind::silence, .count = 0});
  OpenCommunications([this](headless::HeadlessForm& form) {
    const auto before = data.clock.Monotonic();
    form.Press("cmdGetAxes");
    EXPECT_LT(data.clock.Monotonic() - before, std::chrono::seconds(9));
    EXPECT_EQ(form.comboBox("cmbAxes").Items().size(), 16u);
    form.Press("cmdCancel");
  });
  EXPECT_EQ(Boxes(), Texts{"No axes found in system!  Please manually choose a default axis."});
}

TEST_F(Online, ConnectTakesTheChoicesAndCloses) {
  AmplifierSettings settings;
  settings.axis = 'A';
  line.AddAmplifier(settings);
  OpenCommunications([](headless::HeadlessForm& form) {
    form.grid("vsPorts").GoTo(4, 0);
    form.Select("cmbAxes", "A");
    form.Press("cmdConnect");
  });
  EXPECT_EQ(Boxes(), Texts{"Settings changed and communications established successfully!"});
  EXPECT_TRUE(Form().IsOnline());
  EXPECT_EQ(Form().Axis(), "A");
  EXPECT_EQ(Form().COM(), 3);
  EXPECT_EQ(port.PortName(), "COM4");
  EXPECT_EQ(port.ReadTimeOut(), 5000);
}

TEST_F(Online, APortThatCannotBeUsedIsToldWithItsReason) {
  port.Unplug();
  OpenCommunications([](headless::HeadlessForm& form) {
    form.Press("cmdConnect");
    form.Press("cmdCancel");
  });
  EXPECT_EQ(Boxes(), Texts{"Error establishing communications with hardware!\r"
                           "Please recheck connections and settings before retrying!\r\r"
                           "COM1 does not exist."});
}

TEST_F(Online, AWrongCardIsToldAndTheWindowStays) {
  struct Case {
    const char* command;
    const char* answer;
    const char* words;
    const char* cause;
  };
  const Case cases[] = {{"TYPE", "0TYPE=00000500", "Option type error: Not RX900!", ""},
                        {"SVTYPE", "0SVTYPE=00000003", "Servo type error: Not VKLM!", ""},
                        {"TYPE", "0E210 ERR", "Error communicating to indexer!",
                         "\r\rReading the type of the option card (0TYPE): refused with E210 "
                         "\"Command, row or value refused\"."}};
  for (const Case& test : cases) {
    SCOPED_TRACE(test.words);
    line.faults.Clear();
    line.faults.Add(
        {.kind = FaultKind::wrongAnswer, .match = test.command, .count = 0, .text = test.answer});
    OpenCommunications([](headless::HeadlessForm& form) {
      form.Press("cmdConnect");
      EXPECT_TRUE(form.IsShown());
      form.Press("cmdCancel");
    });
    EXPECT_EQ(Boxes(),
              Texts{std::string(test.words) +
                    "\rPlease recheck connections and settings before retrying!" + test.cause});
    EXPECT_FALSE(Form().IsOnline());
  }
}

TEST_F(Online, KeepingTheConnectionChangesNothing) {
  Main().Choose("mnuToolsOnline");
  data.boxes.Expect("Velmoor is currently online!\rDo you wish to disconnect before change?",
                    BoxAnswer::cancel);
  OpenCommunications([](headless::HeadlessForm& form) {
    form.Choose("optBaudRate", 2);
    form.Press("cmdConnect");
    form.Press("cmdCancel");
  });
  EXPECT_EQ(data.boxes.shown.size(), 1u);
  EXPECT_TRUE(Form().IsOnline());
  EXPECT_TRUE(port.IsOpen());
  EXPECT_EQ(Form().BaudRate(), 9600);
}

}  // namespace
}  // namespace velmoor
