// Which line each operation sends, and the search for the amplifier.
#include <gtest/gtest.h>

#include "link/BaudRates.h"
#include "link/ClassSerialComm.h"
#include "link/ScriptedPort.h"

namespace velmoor {
namespace {

using Lines = std::vector<std::string>;

class Operations : public testing::Test {
 protected:
  Operations() {
    comm.setupClass(port);
    comm.setEchoBack(false);
  }
  ScriptedPort port;
  ClassSerialComm comm;
};

TEST_F(Operations, WordsOfTheSimpleCommands) {
  const char* const words[] = {"0ARES",      "0SVON",     "0SVOFF",     "0PRMINIT",  "0JSPDINIT",
                               "0PGMINIT",   "0ZONEINIT", "0JSPDSTORE", "0PGMSTORE", "0ZONESTORE",
                               "0ALMTRCCLR", "0ABSPGRES", "0SKIP",      "0ZRN",      "0RES"};
  for (std::int32_t cmd = 0; cmd < 15; ++cmd) (void)comm.helixSimpleCommand(cmd);
  EXPECT_EQ(port.sent, Lines(std::begin(words), std::end(words)));
  port.sent.clear();
  EXPECT_EQ(comm.helixSimpleCommand(15), kBadSelector);
  EXPECT_EQ(comm.helixSimpleCommand(-1), kBadSelector);
  EXPECT_TRUE(port.sent.empty());
}

TEST_F(Operations, WordsOfTheValues) {
  const char* const words[] = {"0NFB",  "0PFB",  "0TREF", "0NREF",  "0PER",    "0IN1",
                               "0IN2",  "0OUT1", "0OUT2", "0POS",   "0DST",    "0RPOS",
                               "0RDST", "0STS",  "0PUN",  "0STIFF", "0INERTIA"};
  for (std::int32_t cmd = 0; cmd < 17; ++cmd) {
    std::int32_t value = 7;
    EXPECT_EQ(comm.helixGetValue(cmd, value), kNoResponse);
    EXPECT_EQ(value, 0) << "a failed read gives 0";
  }
  EXPECT_EQ(port.sent, Lines(std::begin(words), std::end(words)));
  std::int32_t value = 7;
  EXPECT_EQ(comm.helixGetValue(17, value), kBadSelector);
  EXPECT_EQ(value, 7);
}

TEST_F(Operations, FormsOfTheValues) {
  const std::tuple<std::int32_t, const char*, ResultCode, std::int32_t> cases[] = {
      {0, "0NFB=-12", 0, -12},
      {14, "0PUN=-00001234", 0, -1234},
      {14, "0PUN=2147483647", 0, 2147483647},
      {14, "0PUN=2147483648", -5, 0},
      {14, "0PUN=12x", -5, 0},
      {14, "0PUN=", 0, 0},
      {5, "0IN1=00000101", 0, 5},
      {13, "0STS=0000011", 0, 3},
      {13, "0STS=", 0, 0},
      {0, "0E210 ERR", 57872, 0}};
  const char* const words[] = {"0NFB", "0IN1", "0STS", "0PUN"};
  for (const auto& [cmd, answer, result, expected] : cases) {
    for (const char* const word : words) port.Answer(word, {answer});
    std::int32_t value = 7;
    EXPECT_EQ(comm.helixGetValue(cmd, value), result) << answer;
    EXPECT_EQ(value, expected) << answer;
  }
}

TEST_F(Operations, InformationBehindItsDelimiter) {
  port.Answer("0ALM", {"0ALM A=B C"});
  port.Answer("0ERR", {"0ERR E210"});
  port.Answer("0ALM3", {"0ALM3=A.9F"});
  port.Answer("0PGTYPE", {"0PGTYPE=00000011"});
  std::string text;
  EXPECT_EQ(comm.helixReadInfo(1, text), kSuccess);
  EXPECT_EQ(text, "A=B C");
  EXPECT_EQ(comm.readAlarmHistory(3, text), kSuccess);
  EXPECT_EQ(text, "A.9F");
  EXPECT_EQ(comm.helixReadInfo(12, text), kSuccess);
  EXPECT_EQ(text, "00000011");
  EXPECT_EQ(comm.helixReadInfo(0, text), kSuccess);
  EXPECT_EQ(text, "E210");
  port.Answer("0VER", {"0E5A1"});
  EXPECT_EQ(comm.helixReadInfo(8, text), 58785);
  EXPECT_EQ(text, "") << "a failed read empties the text";
  text = "before";
  EXPECT_EQ(comm.helixReadInfo(13, text), kBadSelector);
  EXPECT_EQ(text, "before");
}

TEST_F(Operations, LinesWithArguments) {
  comm.setAxisNo(11);
  std::string text;
  (void)comm.writeHomeOffset(-1200);
  (void)comm.SetInertiaRatio();
  (void)comm.SetRigidity(4);
  (void)comm.helixJog(500, 0);
  (void)comm.helixJog(500, 1);
  (void)comm.readParameter("0", text);
  (void)comm.writeParameter(" 81D", " -5 ");
  (void)comm.readJogTable(15, text);
  (void)comm.writeJogTable(0, " 100 ");
  EXPECT_EQ(port.sent, (Lines{"BZSET-1200", "BTUNESTORE", "BSTIFF4", "BJOGP500", "BJOGN500",
                              "BPRM0", "BPRM81D=-5", "BJSPDT15", "BJSPDT0=100"}));
  port.sent.clear();
  EXPECT_EQ(comm.helixJog(100, 2), kBadSelector);
  EXPECT_TRUE(port.sent.empty());
}

TEST_F(Operations, RowsTravelFieldByField) {
  const IndexRow row{" I+100 ", "1", "-", "2", "NNAZ:", "SEL0T0", "1", "END"};
  for (const char* const word : {"POST", "SPDT", "RDSTT", "RSPDT", "POUTT", "EVENTT"}) {
    for (int i = 0; i < 8; ++i) {
      port.Answer("0" + std::string(word) +
                      "5=" + std::string(i == 0 ? "I+100" : row[static_cast<std::size_t>(i)]),
                  {"0OK"});
    }
  }
  port.Answer("0LOOPT5=1", {"0E210 ERR"});
  EXPECT_EQ(comm.writeIndexTable(5, row), 57872);
  EXPECT_EQ(port.sent, (Lines{"0POST5=I+100", "0SPDT5=1", "0RDSTT5=-", "0RSPDT5=2",
                              "0POUTT5=NNAZ:", "0EVENTT5=SEL0T0", "0LOOPT5=1"}))
      << "nothing behind the failing field";

  port.Answer("0POST7", {"0POST7=+INFINITE"});
  IndexRow read;
  read.fill("before");
  EXPECT_EQ(comm.readIndexTable(7, read), kNoResponse);
  EXPECT_EQ(read, (IndexRow{"+INFINITE", "before", "before", "before", "before", "before", "before",
                            "before"}));

  port.Answer("0ZONENT31", {"0ZONENT31=-00000100"});
  port.Answer("0ZONEPT31", {"0ZONEPT31=00000100"});
  ZoneRow zone;
  EXPECT_EQ(comm.readZoneTable(31, zone), kSuccess);
  EXPECT_EQ(zone, (ZoneRow{"-00000100", "00000100"}));
}

class Search : public testing::Test {
 protected:
  Search() { comm.setupClass(port); }
  ResultCode Run() { return comm.autoConnect(echo, baud, 0, 2); }
  ScriptedPort port;
  ClassSerialComm comm;
  bool echo = true;
  std::int32_t baud = -1;
};

TEST_F(Search, TriesEachSpeedTwiceAndKeepsThePortOpen) {
  port.open = false;
  EXPECT_EQ(Run(), kNotEstablished);
  EXPECT_EQ(port.portName, "COM2");
  EXPECT_EQ(port.settingsSeen, (Lines{"19200,e,7,2", "9600,e,7,2", "19200,e,7,2", "38400,e,7,2"}));
  EXPECT_EQ(port.sent, Lines(6, "0PRM800"));
  EXPECT_TRUE(port.open);
  EXPECT_EQ(baud, -1);
}

TEST_F(Search, FindsAnEchoingAmplifier) {
  port.Echoed("0PRM800", "0Pn800=00000001");
  port.Echoed("0PRM802=1", "0OK");
  EXPECT_EQ(Run(), kSuccess);
  EXPECT_EQ(port.sent, (Lines{"0PRM800", "0PRM800", "0PRM802=1"}));
  EXPECT_TRUE(echo);
  EXPECT_EQ(baud, 9600);
}

TEST_F(Search, FindsAnAmplifierWithoutEcho) {
  port.Answer("0PRM800", {"0Pn800=00000000"});
  port.Answer("0PRM802=1", {"0OK"});
  EXPECT_EQ(Run(), kSuccess);
  EXPECT_FALSE(echo);
}

TEST_F(Search, RefusedAcknowledgeSettingClosesThePort) {
  port.Echoed("0PRM800", "0Pn800=00000001");
  port.Echoed("0PRM802=1", "0E210 ERR");
  EXPECT_EQ(Run(), 57872);
  EXPECT_FALSE(port.open);
}

TEST_F(Search, EndsAtOnceWithoutAPort) {
  port.opens = false;
  EXPECT_EQ(Run(), kPortNotOpen);
  EXPECT_TRUE(port.sent.empty());
}

TEST(BaudRates, GoBothWays) {
  EXPECT_EQ(GetBaudRate(0), 9600);
  EXPECT_EQ(GetBaudRate(2), 38400);
  EXPECT_EQ(GetBaudRate(3), 0);
  EXPECT_EQ(GetBaudRate(-1), 0);
  EXPECT_EQ(GetBaudRateIndex(19200), 1);
  EXPECT_EQ(GetBaudRateIndex(57600), 0);
}

}  // namespace
}  // namespace velmoor
