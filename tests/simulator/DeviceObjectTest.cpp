// The device object against the simulated amplifier.
#include <gtest/gtest.h>

#include "link/LinkSession.h"
#include "link/clsHX7Helix7.h"
#include "simulator/InProcessPort.h"
#include "support/TestWorld.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

class DeviceObject : public testing::Test {
 protected:
  TestWorld world;
  SimulatedLine line;
  InProcessPort port{line};
  LinkSession session{port};
  clsHX7Helix7 helix7;
};

TEST_F(DeviceObject, AdoptsSpeedAndEchoOfEveryAmplifier) {
  for (const char* const axis : {"0", "9", "A", "E", "F"}) {
    SimulatedAmplifier& amplifier = line.AddAmplifier({.axis = *axis, .baud = 38400});
    session.SetAxis(axis);
    for (const bool echo : {true, false}) {
      amplifier.SetEcho(echo);
      session.baudRate = 9600;
      EXPECT_EQ(helix7.GoOnline(false), kSuccess) << axis << echo;
      EXPECT_EQ(session.baudRate, 38400);
      EXPECT_EQ(session.echo, echo ? 1 : 0);
      EXPECT_EQ(helix7.ServoModel(), "VKLM-04AE");
      IndexRow row{"I+5", "100", "-", "100", "NNAZ:", "SEL5T7", "1", "3"};
      EXPECT_EQ(helix7.writeIndexTable(7, row), kSuccess);
      EXPECT_EQ(helix7.readIndexTable(7, row), kSuccess);
      EXPECT_EQ(row, (IndexRow{"I+00000005", "00000100", "-", "00000100", "NNAZ:", "SEL5T00007",
                               "00001", "003"}));
      EXPECT_EQ(helix7.SetParameter("82F", "01084227"), kSuccess);
    }
  }
}

TEST_F(DeviceObject, FindsTheAxesOfALine) {
  line.AddAmplifier({.axis = '3'});
  line.AddAmplifier({.axis = 'C'});
  line.AddAmplifier({.axis = 'D', .optionType = "00000500"});
  helix7.SetBaudRate(9600);
  ASSERT_TRUE(helix7.SerialComm().manualConnect());
  std::string found;
  for (const char axis : std::string("0123456789ABCDEF")) {
    helix7.SetTimeOut(500);
    if (helix7.GetAxis(std::string(1, axis))) found += axis;
  }
  EXPECT_EQ(found, "3C");
  EXPECT_EQ(port.Now(), 13 * 500ms) << "a short wait for each absent axis";
}

TEST_F(DeviceObject, FactoryResetComesBackAtTheFactorySpeed) {
  SimulatedAmplifier& amplifier =
      line.AddAmplifier({.baud = 38400, .restartTime = std::chrono::seconds(8)});
  ASSERT_EQ(helix7.GoOnline(false), kSuccess);
  ASSERT_EQ(helix7.SetParameter("81D", "77"), kSuccess);
  EXPECT_EQ(helix7.ResetDefaults(3), kSuccess);
  EXPECT_EQ(session.baudRate, 9600);
  EXPECT_EQ(amplifier.State().memory.parameters.Read(0x81D), "00000000");
  EXPECT_EQ(amplifier.BaudRate(), 9600);
}

TEST_F(DeviceObject, ComesBackAtTheSpeedThatWasWritten) {
  line.AddAmplifier({.restartTime = std::chrono::seconds(5)});
  ASSERT_EQ(helix7.GoOnline(false), kSuccess);
  ASSERT_EQ(helix7.SetParameter("801", "2"), kSuccess);
  ASSERT_EQ(helix7.ResetHardware(), kSuccess);
  EXPECT_EQ(helix7.GoOnlineAfterRestart(), kSuccess);
  EXPECT_EQ(session.baudRate, 38400);
}

TEST_F(DeviceObject, OnlyTheIndexTableMayTakeLong) {
  line.AddAmplifier({.storeTime = std::chrono::seconds(6)});
  ASSERT_EQ(helix7.GoOnline(false), kSuccess);
  EXPECT_EQ(helix7.SaveTablesToMemory(8), kSuccess);
  EXPECT_EQ(helix7.SaveTablesToMemory(7), kNoResponse);
}

TEST_F(DeviceObject, UnpluggedLineFailsWithoutAnException) {
  line.AddAmplifier();
  ASSERT_EQ(helix7.GoOnline(false), kSuccess);
  port.Unplug();
  EXPECT_EQ(helix7.DisableServo(), kPortNotOpen);
  EXPECT_EQ(helix7.GoOnline(false), kPortNotOpen);
  EXPECT_TRUE(world.boxes.shown.empty());
}

}  // namespace
}  // namespace velmoor
