// The communications window with ports to choose from: what stands behind each, adapters, the
// simulated amplifier, and a search while offline.

#include <algorithm>

#include "AppSession.h"
#include "FakeSerialPorts.h"
#include "platform/Events.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

class Communications : public AppSession {
 protected:
  void SetUp() override {
    data.world.serialPorts = &ports;
    ports.looks[0] = {"/dev/ttyUSB3", "ttyUSB3", PortState::free, "/dev/ttyUSB3 can be used."};
    path = data.MakeProject("line1.spj");
    ASSERT_TRUE(Start(path));
  }
  ~Communications() override { data.world.serialPorts = nullptr; }
  // The user is done with `user` and cancels, where the window did not close before.
  void Open(const std::function<void(headless::HeadlessForm&)>& user) {
    data.forms.OnShow("frmCommunications", [this, user](headless::HeadlessForm& form) {
      user(form);
      if (std::ranges::count(data.forms.Shown(), &form) > 0) form.Press("cmdCancel");
    });
    Main().Choose("mnuToolsCommunicationsSettings");
  }

  // From 0.
  static void ChoosePort(headless::HeadlessForm& form, int com) {
    EXPECT_TRUE(form.grid("vsPorts").GoTo(com + 1, 0));
  }
  static std::string PortRow(headless::HeadlessForm& form, int row) {
    const GridSource& list = *form.grid("vsPorts").Source();
    return list.Text(row, 0) + "|" + list.Text(row, 1) + "|" + list.Text(row, 2);
  }

  FakeSerialPorts ports;
};

TEST_F(Communications, EachPortTellsWhatStandsBehindIt) {
  ports.looks[1] = {"/dev/ttyUSB4", "ttyUSB4", PortState::busy, "Close that program."};
  ports.looks[2] = {"/dev/ttyS2", "ttyS2", PortState::forbidden, "Join the group."};
  ports.looks[3] = {"/x", "a-name-of-28-letters--------", PortState::missing,
                    "Plug the adapter in."};
  Open([](headless::HeadlessForm& form) {
    const char* const rows[] = {"COM1|ttyUSB3|free", "COM2|ttyUSB4|in use", "COM3|ttyS2|no access",
                                "COM4|a-name-of-28-letters-...|absent"};
    for (int row = 1; row <= 4; ++row) EXPECT_EQ(PortRow(form, row), rows[row - 1]);
    EXPECT_EQ(PortRow(form, 9), "Simulated amplifier|of this program|free");
    EXPECT_EQ(form.label("lblPort").Text(), "/dev/ttyUSB3 can be used.");
    const std::pair<int, const char*> words[] = {
        {1, "Close that program."}, {2, "Join the group."}, {3, "Plug the adapter in."}};
    for (const auto& [com, text] : words) {
      ChoosePort(form, com);
      EXPECT_EQ(form.label("lblPort").Text(), text);
    }
  });
}

TEST_F(Communications, AnAdapterThatWasPluggedInIsFoundAndAssigned) {
  Open([this](headless::HeadlessForm& form) {
    EXPECT_EQ(form.comboBox("cmbAdapters").Text(), "No adapter found");
    EXPECT_FALSE(form.button("cmdBind").Enabled());
    ports.adapters = {{"/dev/ttyUSB0", "USB Serial Converter"}};
    form.Press("cmdRefresh");
    EXPECT_EQ(form.comboBox("cmbAdapters").Items(), Texts{"/dev/ttyUSB0  USB Serial Converter"});
    ChoosePort(form, 4);
    EXPECT_EQ(form.button("cmdBind").Caption(), "&Assign to COM5");
    form.Press("cmdBind");
    EXPECT_EQ(PortRow(form, 5), "COM5|ttyUSB0|free");
    EXPECT_EQ(form.label("lblPort").Text(), "/dev/ttyUSB0 can be used.");
    ports.bindFails = true;
    form.Press("cmdBind");
  });
  EXPECT_EQ(Boxes(), Texts{"frmCommunications.cmdBind_Click: The settings cannot be written."});
}

TEST_F(Communications, TheSimulatedAmplifierIsStartedAtTheChosenSpeed) {
  Open([](headless::HeadlessForm& form) {
    ChoosePort(form, 8);
    EXPECT_FALSE(form.button("cmdBind").Enabled());
    form.Press("cmdConnect");
  });
  EXPECT_EQ(ports.simulatorRates, std::vector<std::int32_t>{9600});
  EXPECT_TRUE(Form().IsOnline());
  EXPECT_EQ(Main().Panel(StatusPanel::port), "Simulated amplifier");
  Boxes();
  // It is for this session alone.
  ASSERT_TRUE(Main().Close());
  EXPECT_EQ(world().settings->Read("Port"), std::nullopt);
}

TEST_F(Communications, ASimulatedAmplifierThatDoesNotStartIsToldAndNothingChanges) {
  ports.simulatorFailure = "The simulated amplifier could not be started.";
  Open([](headless::HeadlessForm& form) {
    ChoosePort(form, 8);
    form.Press("cmdConnect");
    form.Press("cmdGetAxes");
    EXPECT_TRUE(form.IsShown());
  });
  EXPECT_EQ(Boxes(), (Texts{ports.simulatorFailure, ports.simulatorFailure}));
  EXPECT_EQ(Form().COM(), 0);
}

TEST_F(Communications, ASearchWhileOfflineOpensThePortForItselfAlone) {
  Open([this](headless::HeadlessForm& form) {
    int looked = 0;
    data.events.AtYield(1, [&] {
      ++looked;
      for (const char* const name : {"cmdConnect", "cmdRefresh", "cmdGetAxes"}) {
        EXPECT_FALSE(form.button(name).Enabled()) << name;
      }
      EXPECT_FALSE(form.Unload()) << "a search is under way";
    });
    form.Press("cmdGetAxes");
    EXPECT_EQ(looked, 1);
    EXPECT_EQ(form.comboBox("cmbAxes").Items(), Texts{"0"});
    EXPECT_TRUE(form.button("cmdConnect").Enabled());
    EXPECT_FALSE(form.button("cmdBind").Enabled()) << "no adapter is there";
    EXPECT_FALSE(port.IsOpen());
  });
  EXPECT_EQ(Boxes(), Texts{});
  EXPECT_FALSE(Form().IsOnline());
}

TEST_F(Communications, CancelEndsASearchAndLeavesTheWindow) {
  Open([this](headless::HeadlessForm& form) {
    data.events.AtYield(2, [&form] { form.Press("cmdCancel"); });
    form.Press("cmdGetAxes");
    EXPECT_TRUE(form.IsShown());
    EXPECT_EQ(form.label("lblQuery").Text(), "4 of 16 Axes Queried");
    EXPECT_EQ(form.comboBox("cmbAxes").Items(), Texts{"0"});
  });
}

// ---- the menu of the connection

TEST_F(Communications, TheMenuOffersPortsSpeedsAndTheSearchForAxes) {
  ports.looks[1] = {"/dev/ttyUSB4", "ttyUSB4", PortState::busy, "Close that program."};
  Main().Choose("mnuToolsConnection");
  EXPECT_EQ(Main().command("mnuConnectionPort_1").Text(), "COM&2: ttyUSB4, in use");
  EXPECT_TRUE(Main().command("mnuConnectionPort_0").Checked());
  EXPECT_TRUE(Main().command("mnuConnectionRate_0").Checked());
  EXPECT_FALSE(Main().command("mnuConnectionCancel").Enabled());
  EXPECT_EQ(Main().Panel(StatusPanel::connection), "Offline");
  Main().Choose("mnuConnectionPort_1");
  EXPECT_EQ(Main().Panel(StatusPanel::connection), "Online, axis 0, 9600, COM2");
  EXPECT_EQ(port.PortName(), "COM2");
  Main().Choose("mnuToolsConnection");
  EXPECT_EQ(Main().command("mnuConnectionPort_1").Text(), "COM&2: ttyUSB4, connected");
  EXPECT_EQ(Boxes(), Texts{});
  // Whatever the status bar tells meanwhile.
  Main().Choose("mnuToolsOffline");
  Form().UpdateStatusText("Index Table Download Complete");
  EXPECT_EQ(Main().Panel(StatusPanel::connection), "Offline");
  Main().Choose("mnuConnectionRate_0");
  EXPECT_EQ(Boxes(), Texts{"Settings changed and communications established successfully!"});
  // An online session is asked about, and a No keeps it.
  data.boxes.Expect("Velmoor is currently online!", BoxAnswer::cancel);
  Main().Choose("mnuConnectionPort_3");
  EXPECT_EQ(Main().Panel(StatusPanel::connection), "Online, axis 0, 9600, COM2");
  Texts found;
  data.forms.OnShow("frmCommunications", [&](headless::HeadlessForm& form) {
    PauseInSec(0.1F);
    found = form.comboBox("cmbAxes").Items();
    form.Press("cmdCancel");
  });
  Main().Choose("mnuConnectionAxes");
  EXPECT_EQ(found, Texts{"0"});
}

TEST_F(Communications, CancelEndsTheSearchThatIsUnderWay) {
  line.faults.Add({.kind = FaultKind::silence, .count = 0});
  data.boxes.Expect("Error autoconnecting with hardware!", BoxAnswer::no);
  std::string trying;
  data.events.AtYield(1, [&] {
    trying = Main().Panel(StatusPanel::connection);
    Main().Choose("mnuConnectionCancel");
  });
  Main().Choose("mnuToolsOnline");
  EXPECT_TRUE(trying.empty() || trying.starts_with("Trying ")) << trying;
  EXPECT_NE(data.boxes.shown.front().text.find("The search was stopped."), std::string::npos)
      << data.boxes.shown.front().text;
  EXPECT_EQ(Main().Panel(StatusPanel::connection), "Offline");
}

// An amplifier that does not talk as Velmoor needs it is told at connect and set right by one
// answer.
TEST_F(Communications, ASilentHabitOfTheAmplifierIsToldAndSetRight) {
  struct Case {
    const char* parameter;
    const char* value;
    const char* question;
  };
  const Case cases[] = {{"802", "0", "does not acknowledge"}, {"800", "0", "without echo"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.parameter);
    const auto number = static_cast<std::uint32_t>(ParseHex(row.parameter).value_or(0));
    AmplifierMemory& memory = Amplifier().State().memory;
    for (const BoxAnswer answer : {BoxAnswer::no, BoxAnswer::yes}) {
      ASSERT_TRUE(memory.parameters.Write(number, row.value));
      Amplifier().Restart(port.Now());
      port.Advance(std::chrono::seconds(1));
      Open([&](headless::HeadlessForm& form) {
        data.boxes.Expect(row.question, answer);
        form.Press("cmdConnect");
      });
      EXPECT_TRUE(Form().IsOnline()) << row.parameter;
      EXPECT_EQ(memory.parameters.Value(number), answer == BoxAnswer::yes ? 1 : 0) << row.parameter;
      EXPECT_EQ(Form().Echo(), Amplifier().Echo() ? 1 : 0);
      Main().Choose("mnuToolsOffline");
      data.boxes.TakeTexts();
    }
  }
}

TEST_F(Communications, APortThatVanishesDuringTheSearchEndsItWithOneMessage) {
  Open([this](headless::HeadlessForm& form) {
    data.events.AtYield(3, [this] { port.Unplug(); });
    form.Press("cmdGetAxes");
    EXPECT_TRUE(form.button("cmdGetAxes").Enabled());
  });
  EXPECT_LE(Boxes().size(), 1u);
  EXPECT_FALSE(Form().IsOnline());
}

}  // namespace
}  // namespace velmoor
