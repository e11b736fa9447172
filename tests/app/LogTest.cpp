// What the log tells of a session, and how the Help menu offers it.

#include "AppSession.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"

namespace velmoor {
namespace {

class SessionLog : public AppSession {
 protected:
  void SetUp() override {
    StartOnline();
    entries().clear();
  }
  std::vector<std::string>& entries() { return data.log.entries; }
  void ChooseTraffic(bool checked) {
    Main().command("mnuHelpLogTraffic").SetChecked(checked);
    Main().Choose("mnuHelpLogTraffic");
  }
};

TEST_F(SessionLog, TellsBoxesAnswersAndTransfersInTheirOrder) {
  const std::string question =
      "All parameter and table data will be downloaded to the controller.\rDo you wish to proceed?";
  data.boxes.Expect(question, BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(
      entries(),
      (Texts{"box: " + OneLine(question) +
                 "  1281 exchanges, about 42 s at 9600 bit/s (11 s at 38400).",
             "box: answer: OK", "session: Index Table Download Complete",
             "session: Jog Table Download Complete", "session: Zone Table Download Complete",
             "session: Hardware Parameters Download Complete",
             "session: Mechanical System Parameters Download Complete",
             "session: Download Complete",
             "operation: Download All: complete, 346 of 346 items in 0 ms",
             "session: Waiting for the restart...", "link: 0PRM800: No response error.",
             "session: Online",
             "box: Download All complete! 346 items sent in 0.0 s and stored.  The amplifier has "
             "restarted."}));
}

TEST_F(SessionLog, IsShownInAWindowThatFollowsAndFilters) {
  const std::string lead = "2026-03-01 14:05:09.123  ";
  data.log.entries = {lead + "I  session   Online",
                      lead + "W  link      0PRM800: No response error."};
  Main().Choose("mnuHelpLog");
  headless::HeadlessForm& window = data.forms.Get("frmLog");
  const GridSource& list = *window.grid("vsEntries").Source();
  ASSERT_EQ(list.Rows(), 3);
  EXPECT_EQ(list.Text(1, 0) + "|" + list.Text(1, 1), "2026-03-01 14:05:09.123|session   Online");
  EXPECT_EQ(list.Text(2, 1), "Warning: link      0PRM800: No response error.");
  EXPECT_EQ(window.grid("vsEntries").Row(), 2) << "the newest";
  data.log.entries.push_back(lead + "I  session   Offline");
  PauseInSec(1);
  EXPECT_EQ(list.Rows(), 4);
  EXPECT_EQ(window.grid("vsEntries").Row(), 3);
  window.Type("txtFilter", "LINE");
  EXPECT_EQ(list.Rows(), 3) << "Online and Offline";
  window.Type("txtFilter", "");
  window.Check("chkWarnings", true);
  EXPECT_EQ(list.Rows(), 2);
  window.Press("cmdFile");
  EXPECT_EQ(data.textViewer.opened, Texts{"/var/log/velmoor.log"});
  data.textViewer.available = false;
  window.Press("cmdFile");
  EXPECT_EQ(Boxes(), Texts{"The log could not be shown!\rIt lies in\r/var/log/velmoor.log"});
}

TEST_F(SessionLog, TakesTheTrafficOnDemandAndRemembersThat) {
  ChooseTraffic(true);
  EXPECT_TRUE(data.log.keepsTraffic);
  EXPECT_EQ(data.settings.Read("LogTraffic"), "1");
  data.log.keepsTraffic = false;
  module.reset();
  ASSERT_TRUE(Start(path));
  EXPECT_TRUE(data.log.keepsTraffic);
  EXPECT_TRUE(Main().command("mnuHelpLogTraffic").Checked());
  ChooseTraffic(false);
  EXPECT_FALSE(data.log.keepsTraffic);
}

TEST_F(SessionLog, IsNotOfferedWhereThereIsNoFile) {
  module.reset();
  data.log.path.clear();
  ASSERT_TRUE(Start(path));
  EXPECT_FALSE(Main().command("mnuHelpLog").Enabled());
  EXPECT_TRUE(Main().command("mnuHelpLogTraffic").Enabled());
}

}  // namespace
}  // namespace velmoor
