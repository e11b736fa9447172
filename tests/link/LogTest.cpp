// What the log tells of the line.

#include <gtest/gtest.h>

#include "ScriptedPort.h"
#include "link/ClassSerialComm.h"
#include "platform/LoggedPort.h"
#include "support/TestWorld.h"

namespace velmoor {
namespace {

using Texts = std::vector<std::string>;

class LogTest : public testing::Test {
 protected:
  LogTest() : logged(port) {
    comm.setupClass(logged);
    world.log.entries.clear();
  }
  TestWorld world;
  ScriptedPort port;
  LoggedPort logged;
  ClassSerialComm comm;
};

TEST_F(LogTest, TellsEveryFailedExchangeWithItsReason) {
  port.Echoed("0PRM800", "0PRM800=1");
  port.Echoed("0PRM900", "0E004 ERR");
  std::string value;
  EXPECT_EQ(comm.readParameter("800", value), kSuccess);
  EXPECT_EQ(comm.readParameter("801", value), kNoResponse);
  EXPECT_NE(comm.readParameter("900", value), kSuccess);
  port.vanishesOn = "0PRM810=5";
  EXPECT_EQ(comm.writeParameter("810", "5"), kPortNotOpen);
  EXPECT_EQ(world.log.entries,
            (Texts{"link: 0PRM801: No response error.", "link: 0PRM900: device error 57348",
                   "line: gone", "link: 0PRM810=5: Communications port not opened."}));
}

TEST_F(LogTest, TellsTheLinesOnDemand) {
  port.Echoed("0PRM800", "0PRM800=1");
  std::string value;
  world.log.keepsTraffic = true;
  (void)comm.readParameter("800", value);
  (void)comm.readParameter("801", value);
  EXPECT_EQ(world.log.entries,
            (Texts{"line: > 0PRM800", "line: < 0PRM800", "line: < 0PRM800=1", "line: > 0PRM801",
                   "line: < nothing within 5000 ms", "link: 0PRM801: No response error."}));
}

TEST_F(LogTest, TellsWhetherThePortOpened) {
  comm.setComPort(3);
  EXPECT_TRUE(comm.manualConnect());
  comm.disconnect();
  port.opens = false;
  EXPECT_FALSE(comm.manualConnect());
  EXPECT_EQ(world.log.entries, (Texts{"line: COM3 opened at 19200,e,7,2", "line: COM3 closed",
                                      "line: COM3 not opened: "}));
}

}  // namespace
}  // namespace velmoor
