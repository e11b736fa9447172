// The simulated amplifier, line by line.
#include "simulator/SimulatedAmplifier.h"

#include <gtest/gtest.h>

#include <utility>

namespace velmoor {
namespace {

using namespace std::chrono_literals;

class Amplifier : public testing::Test {
 protected:
  std::string Ask(std::string_view command) { return amplifier.Execute(command, 0us).text; }
  SimulatedAmplifier amplifier;
};

TEST_F(Amplifier, TellsWhatItIs) {
  const std::pair<const char*, const char*> cases[] = {{"TYPE", "0TYPE=00000600"},
                                                       {"SVTYPE", "0SVTYPE=00000002"},
                                                       {"MTTYPE", "0MTTYPE=00000100"},
                                                       {"MTSIZE", "0MTSIZE=00000040"},
                                                       {"PGTYPE", "0PGTYPE=0000000D"},
                                                       {"VER", "0VER=00000003"},
                                                       {"SVVER", "0SVVER=00000012"},
                                                       {"PGVER", "0PGVER=00000001"},
                                                       {"YSPEC", "0YSPEC=00000000"},
                                                       {"SVYSPEC", "0SVYSPEC=00000000"},
                                                       {"ERR", "0ERR 0000"},
                                                       {"ALM", "0ALM BB"},
                                                       {"ALM0", "0ALM0="},
                                                       {"ALM9", "0ALM9="},
                                                       {"PUN", "0PUN=00000000"},
                                                       {"STS", "0STS=1000000"},
                                                       {"STIFF", "0STIFF=00000004"},
                                                       {"INERTIA", "0INERTIA=00000300"}};
  for (const auto& [command, answer] : cases) EXPECT_EQ(Ask(command), answer);
}

TEST_F(Amplifier, RefusesWhatItDoesNotKnow) {
  for (const char* const command : {"",          "XYZ",
                                    "prm800",    "TYPE1",
                                    "ALM10",     "POST",
                                    "POST128",   "POST-1",
                                    "POST1x",    "POST0001",
                                    "ZONENT32",  "JSPDT16",
                                    "PRM",       "PRM7FF",
                                    "PRM1800",   "PRM800=",
                                    "PRM800=8",  "PRM800=x",
                                    "PRM800=+",  "PRM000=1FFFF",
                                    "PRM829=-1", "PRM81D=100000000",
                                    "RES1",      "SVON1",
                                    "STIFF11",   "STIFF0",
                                    "JOGP",      "ZSET",
                                    "ZSET=5",    "POS5"}) {
    EXPECT_EQ(Ask(command), "0E210 ERR") << command;
  }
}

TEST_F(Amplifier, KeepsParametersAtOnce) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"PRM81D=-1200", "PRM81D", "0Pn81D=-00001200"},
      {"PRM81D=+5", "PRM81D", "0Pn81D=00000005"},
      {"PRM0=0010", "PRM000", "0Pn000=00000010"},
      {"PRM000=00000a10", "PRM0", "0Pn000=00000A10"},
      {"PRM82F=01084227", "PRM82F", "0Pn82F=01084227"},
      {"ZSET-77", "PRM81D", "0Pn81D=-00000077"}};
  for (const auto& [write, read, answer] : cases) {
    SCOPED_TRACE(write);
    EXPECT_EQ(Ask(write), "0OK") << write;
    amplifier.Restart(0us);
    EXPECT_EQ(Ask(read), answer);
  }
  EXPECT_EQ(Ask("PRMINIT"), "0OK");
  EXPECT_EQ(Ask("PRM81D"), "0Pn81D=00000000");
}

TEST_F(Amplifier, KeepsTableFieldsInItsOwnForm) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"POST5", "I+12345", "I+00012345"},
      {"POST5", "A-0", "A-00000000"},
      {"POST5", "+INFINITE", "+INFINITE"},
      {"POST5", "-", "-"},
      {"POST127", "STOP", "STOP"},
      {"POST127", "", ""},
      {"SPDT5", "1000", "00001000"},
      {"RDSTT5", "-", "-"},
      {"RDSTT5", "-20", "-00000020"},
      {"RSPDT5", "1", "00000001"},
      {"POUTT5", "NNAZ:", "NNAZ:"},
      {"EVENTT5", "SEL0T100", "SEL0T00100"},
      {"EVENTT5", "T0", "T00000"},
      {"EVENTT5", ":T5", ":T00005"},
      {"LOOPT5", "1", "00001"},
      {"NEXTT5", "6", "006"},
      {"NEXTT5", "END", "END"},
      {"ZONENT3", "-100", "-00000100"},
      {"ZONEPT31", "100", "00000100"},
      {"JSPDT15", "1000", "00001000"},
      {"JSPDT0", "", ""}};
  for (const auto& [field, text, kept] : cases) {
    EXPECT_EQ(Ask(std::string(field) + "=" + text), "0OK") << field << text;
    EXPECT_EQ(Ask(field), "0" + std::string(field) + "=" + kept);
  }
}

TEST_F(Amplifier, RefusesBadTableFieldsAndKeepsTheOld) {
  ASSERT_EQ(Ask("POST1=I+5"), "0OK");
  for (const char* const write :
       {"POST1=5",          "POST1=I5",       "POST1=I+",  "POST1=I+123456789",
        "POST1=I+1.5",      "POST1=INFINITE", "SPDT1=-1",  "SPDT1=1 ",
        "POUTT1=NNAZ",      "POUTT1=NNAZX",   "EVENTT1=X", "EVENTT1=SEL7T0",
        "EVENTT1=IT100000", "EVENTT1=IT",     "LOOPT1=0",  "LOOPT1=100000",
        "NEXTT1=128",       "NEXTT1=end",     "ZONENT1=x", "JSPDT1=1e5"}) {
    EXPECT_EQ(Ask(write), "0E210 ERR") << write;
  }
  EXPECT_EQ(Ask("POST1"), "0POST1=I+00000005");
}

TEST(AmplifierFirmware, OldCardsKnowFiveSelections) {
  SimulatedAmplifier old({.firmware = 2});
  EXPECT_EQ(old.Execute("VER", 0us).text, "0VER=00000002");
  EXPECT_EQ(old.Execute("EVENTT0=SEL4T0", 0us).text, "0OK");
  EXPECT_EQ(old.Execute("EVENTT0=SEL5T0", 0us).text, "0E210 ERR");
}

TEST_F(Amplifier, TablesAreVolatileUntilStored) {
  const std::tuple<const char*, const char*, const char*> tables[] = {
      {"POST5", "PGMSTORE", "PGMINIT"},
      {"ZONENT5", "ZONESTORE", "ZONEINIT"},
      {"JSPDT5", "JSPDSTORE", "JSPDINIT"}};
  for (const auto& [field, store, init] : tables) {
    const std::string write = std::string(field) + (field[0] == 'P' ? "=A+7" : "=7");
    const std::string read = "0" + std::string(field) + "=";
    EXPECT_EQ(Ask(write), "0OK");
    amplifier.Restart(0us);
    EXPECT_EQ(Ask(field), read) << "not stored";
    EXPECT_EQ(Ask(write), "0OK");
    EXPECT_EQ(Ask(store), "0OK");
    amplifier.Restart(0us);
    EXPECT_NE(Ask(field), read) << store;
    EXPECT_EQ(Ask(init), "0OK");
    amplifier.Restart(0us);
    EXPECT_EQ(Ask(field), read) << init;
  }
}

TEST_F(Amplifier, LineSettingsActWhenTheyShould) {
  EXPECT_EQ(Ask("PRM801=2"), "0OK");
  EXPECT_EQ(Ask("PRM800=0"), "0OK");
  EXPECT_EQ(amplifier.BaudRate(), 9600);
  EXPECT_TRUE(amplifier.Echo());
  EXPECT_EQ(Ask("RES"), "0OK");
  EXPECT_EQ(amplifier.BaudRate(), 38400);
  EXPECT_FALSE(amplifier.Echo());
  EXPECT_FALSE(amplifier.Listens(299ms));
  EXPECT_TRUE(amplifier.Listens(300ms));
  // The write that turns the acknowledge off is the last one acknowledged.
  EXPECT_EQ(Ask("PRM802=0"), "0OK");
  EXPECT_EQ(Ask("PRM802=0"), "");
  EXPECT_EQ(Ask("SVON"), "");
  EXPECT_EQ(Ask("XYZ"), "0E210 ERR");
  EXPECT_EQ(Ask("PRM802"), "0Pn802=00000000");
}

TEST_F(Amplifier, MovesWithItsServoOnly) {
  for (const char* const word : {"JOGP500", "START", "ZRN"}) EXPECT_EQ(Ask(word), "0E214 ERR");
  EXPECT_EQ(Ask("SVON"), "0OK");
  EXPECT_EQ(Ask("JOGN500"), "0OK");
  EXPECT_EQ(Ask("START"), "0E215 ERR");
  EXPECT_EQ(Ask("SKIP"), "0OK");
  EXPECT_TRUE(amplifier.State().axis.IsServoOn());
  EXPECT_EQ(Ask("RES"), "0OK");
  EXPECT_FALSE(amplifier.State().axis.IsServoOn());
}

TEST_F(Amplifier, AlarmsStopItAndStayInTheHistory) {
  ASSERT_EQ(Ask("SVON"), "0OK");
  amplifier.RaiseAlarm("A.9F");
  amplifier.RaiseAlarm("A.E1");
  amplifier.SetError("E5A1");
  EXPECT_EQ(Ask("ALM"), "0ALM A.E1");
  EXPECT_EQ(Ask("ERR"), "0ERR E5A1");
  EXPECT_EQ(Ask("ALM1"), "0ALM1=A.9F");
  EXPECT_FALSE(amplifier.State().axis.IsServoOn());
  EXPECT_EQ(Ask("SVON"), "0E216 ERR");
  EXPECT_EQ(Ask("ARES"), "0OK");
  EXPECT_EQ(Ask("ALM"), "0ALM BB");
  EXPECT_EQ(Ask("ERR"), "0ERR 0000");
  EXPECT_EQ(Ask("ALM0"), "0ALM0=A.E1");
  EXPECT_EQ(Ask("ALMTRCCLR"), "0OK");
  EXPECT_EQ(Ask("ALM0"), "0ALM0=");
}

TEST_F(Amplifier, TuningReachesParameters) {
  EXPECT_EQ(Ask("STIFF10"), "0OK");
  EXPECT_EQ(Ask("STIFF"), "0STIFF=00000010");
  EXPECT_EQ(Ask("PRM100"), "0Pn100=00000250");
  EXPECT_EQ(Ask("PRM101"), "0Pn101=00000400");
  EXPECT_TRUE(amplifier.SetValue("INERTIA", 150));
  EXPECT_EQ(Ask("TUNESTORE"), "0OK");
  EXPECT_EQ(Ask("PRM103"), "0Pn103=00000150");
}

TEST_F(Amplifier, EveryRigidityLevelIsWithinTheLimits) {
  std::string gains = Ask("PRM100");
  std::string filter = Ask("PRM401");
  for (int level = 1; level <= 10; ++level) {
    ASSERT_EQ(Ask("STIFF" + std::to_string(level)), "0OK");
    EXPECT_NE(Ask("PRM100"), std::exchange(gains, Ask("PRM100"))) << level;
    EXPECT_NE(Ask("PRM401"), std::exchange(filter, Ask("PRM401"))) << level;
    EXPECT_EQ(Ask("PRM102").substr(7), gains.substr(7)) << level;
  }
  EXPECT_EQ(Ask("PRM101"), "0Pn101=00000400");
}

TEST_F(Amplifier, LeavesTheFactoryReadyToTalk) {
  ASSERT_EQ(Ask("PRMINIT"), "0OK");
  const std::pair<const char*, const char*> cases[] = {
      {"PRM800", "0Pn800=00000001"}, {"PRM801", "0Pn801=00000000"}, {"PRM802", "0Pn802=00000001"},
      {"PRM829", "0Pn829=00000000"}, {"PRM82A", "0Pn82A=00000000"}, {"PRM82F", "0Pn82F=00000000"},
      {"PRM830", "0Pn830=00000000"}};
  for (const auto& [command, answer] : cases) EXPECT_EQ(Ask(command), answer);
}

TEST_F(Amplifier, TellsSetValuesAndLines) {
  EXPECT_TRUE(amplifier.SetValue("PUN", -1234));
  EXPECT_TRUE(amplifier.SetBit("IN2", 0, true));
  EXPECT_TRUE(amplifier.SetBit("IN2", 7, true));
  EXPECT_TRUE(amplifier.SetBit("IN2", 7, false));
  EXPECT_TRUE(amplifier.SetBit("IN2", 2, true));
  EXPECT_FALSE(amplifier.SetBit("IN2", 8, true));
  EXPECT_FALSE(amplifier.SetBit("PUN", 0, true));
  EXPECT_FALSE(amplifier.SetValue("SVON", 1));
  EXPECT_EQ(Ask("PUN"), "0PUN=-00001234");
  EXPECT_EQ(Ask("IN2"), "0IN2=00000101");
}

TEST_F(Amplifier, CountsWhatItWasAsked) {
  for (const char* const command : {"PRM81D", "PRM81D=5", "PRM800=99", "SVON", "XYZ"}) Ask(command);
  EXPECT_EQ(amplifier.Asked("PRM"), 1);
  EXPECT_EQ(amplifier.Asked("PRM="), 2);
  EXPECT_EQ(amplifier.Asked("SVON"), 1);
  EXPECT_EQ(amplifier.Asked("?"), 1);
  EXPECT_EQ(amplifier.Asked("SVOFF"), 0);
  EXPECT_EQ(amplifier.Journal().at(1).line, "0PRM81D=5");
  EXPECT_EQ(amplifier.Journal().at(1).answer, "0OK");
}

// A letter E before a digit in an answer would be taken for an error of the device.
TEST_F(Amplifier, FactoryAnswersHoldNoErrorNumber) {
  for (const FactoryValue& factory : FactoryValues()) {
    const std::string answer = Ask("PRM" + std::string(factory.pn));
    ASSERT_EQ(answer.substr(0, 7), "0Pn" + std::string(factory.pn) + "=");
    const std::size_t at = answer.find('E');
    const bool looksLikeError =
        at != std::string::npos && answer.substr(at + 1).find_first_of("0123456789") == 0;
    EXPECT_FALSE(looksLikeError) << answer;
  }
}

}  // namespace
}  // namespace velmoor
