// The exchange against literal lines.
#include <gtest/gtest.h>

#include <stdexcept>

#include "link/ClassSerialComm.h"
#include "link/ScriptedPort.h"
#include "platform/Numbers.h"
#include "platform/headless/HeadlessWorld.h"

namespace velmoor {
namespace {

class Exchange : public testing::Test {
 protected:
  Exchange() { comm.setupClass(port); }
  ScriptedPort port;
  ClassSerialComm comm;
};

TEST_F(Exchange, JudgesAnswersToWrites) {
  const std::pair<const char*, ResultCode> cases[] = {
      {"0OK", 0},         {"0 OK ", 0},      {"0NG", 0},          {"0xxx", 0},
      {"0~~~", 0},        {"0A.9F", -6},     {"0A.E1", -6},       {"0E210 ERR", 57872},
      {"00210 ERR", 528}, {"00000 ERR", -6}, {"0ZZZZ ERR", -6},   {" ERR", -6},
      {"0E5A1", 58785},   {"0E1", -6},       {"0E1x2", -6},       {"0ERROR", -6},
      {"0OKE", -6},       {"0YES", -6},      {"0OK E5A1", 58785}, {"0PREE5A1", -6},
      {"0E210 A.9F", -6}};
  for (const auto& [answer, expected] : cases) {
    port.Echoed("0SVON", answer);
    EXPECT_EQ(comm.helixSimpleCommand(1), expected) << answer;
  }
}

TEST_F(Exchange, JudgesAnswersToReads) {
  const std::tuple<const char*, ResultCode, const char*> cases[] = {
      {"0Pn800=00000001", 0, "00000001"}, {"0Pn81D=-00001200", -5, "before"},
      {"0Pn800==1=", 0, "=1="},           {"0Pn800=", 0, ""},
      {"0Pn800 00000001", -5, "before"},  {"0OK", -5, "before"},
      {"0Pn800=000000E5", -5, "before"},  {"0Pn800=0000E5A1", 58785, "before"},
      {"0Pn800=0000EE5A", 0, "0000EE5A"}, {"0Pn800=A.E1", 0, "A.E1"},
      {"0E210 ERR", 57872, "before"},     {"0ZZZZ ERR", -5, "before"},
      {"00000 ERR", -5, "before"},        {"0E5A1", 58785, "before"}};
  for (const auto& [answer, expected, value] : cases) {
    port.Echoed("0PRM800", answer);
    std::string read = "before";
    EXPECT_EQ(comm.readParameter("800", read), expected) << answer;
    EXPECT_EQ(read, value) << answer;
  }
}

TEST_F(Exchange, AnAnswerThatBearsAnothersNameIsNone) {
  const std::tuple<const char*, const char*, ResultCode> cases[] = {
      {"0PRM100", "0Pn100=00000500", 0},
      {"0PRM0", "0Pn000=00000010", 0},
      {"0PRM100", "0pn100=00000500", 0},
      {"0PRM100", "0Pn0100=00000500", 0},
      {"0PRM100", "0Pn101=00000500", -5},
      {"0PRM100", "0Pn10=00000500", -5},
      {"0PRM100", "0POST5=00000500", -5},
      {"0PRM100", "0PUN=00000500", -5},
      {"0POST5", "0POST5=I+00000001", 0},
      {"0POST5", "0POST005=I+00000001", 0},
      {"0POST5", "0POST6=I+00000001", -5},
      {"0POST5", "0SPDT5=00000001", -5},
      {"0RDST", "0RDST=00000001", 0},
      {"0RDST", "0DST=00000001", -5},
      {"0IN1", "0IN2=00000001", -5},
      {"0ALM3", "0ALM4=A.9F", -5},
      // Not a name of the vocabulary, so no other's.
      {"0PRM100", "0VALUE=00000500", 0},
      {"0PRM100", "=00000500", 0}};
  for (const auto& [command, answer, expected] : cases) {
    port.Echoed(command, answer);
    std::string read = "before";
    EXPECT_EQ(comm.executeReadCommand(command, read), expected) << command << " " << answer;
    EXPECT_EQ(read == "before", expected != kSuccess) << command << " " << answer;
  }
}

TEST_F(Exchange, LetterOfTheAxisShieldsDeviceErrors) {
  comm.setAxisNo(14);
  port.Echoed("ESVON", "EE5A1");
  EXPECT_EQ(comm.helixSimpleCommand(1), kNotAcknowledged);
  port.Echoed("ESVON", "EOK");
  EXPECT_EQ(comm.helixSimpleCommand(1), kSuccess);
  port.Echoed("ESVON", "EE210 ERR");
  EXPECT_EQ(comm.helixSimpleCommand(1), 57872);
  port.Echoed("EPRM800", "EPn800=0000E5A1");
  std::string value;
  EXPECT_EQ(comm.readParameter("800", value), kSuccess);
  EXPECT_EQ(value, "0000E5A1");
}

TEST_F(Exchange, EchoMustContainTheCommand) {
  port.Answer("0SVON", {"xx0SVONyy", "0OK"});
  EXPECT_EQ(comm.helixSimpleCommand(1), kSuccess);
  port.Answer("0SVON", {"0svon", "0OK"});
  EXPECT_EQ(comm.helixSimpleCommand(1), kEchoMismatch);
  port.Answer("0SVON", {"0SVON"});
  EXPECT_EQ(comm.helixSimpleCommand(1), kNoResponse);
  port.Answer("0SVON", {});
  EXPECT_EQ(comm.helixSimpleCommand(1), kNoResponse);
}

// The amplifier takes what its echo shows.
TEST_F(Exchange, AnEchoOfAnotherNumberIsNoSuccess) {
  const auto writes = [this](const std::string& echo) {
    port.Answer("0PRM81D=1200", {echo, "0OK"});
    return comm.writeParameter("81D", "1200");
  };
  for (const char* const echo : {"0PRM81D=1200", "xx0PRM81D=1200", "0PRM81D=1200 "}) {
    EXPECT_EQ(writes(echo), kSuccess) << echo;
    EXPECT_FALSE(comm.TakeStrayWrite()) << echo;
  }
  for (const char* const echo : {"0PRM81D=12000", "0PRM81D=120", "0PRM81D=1300"}) {
    EXPECT_EQ(writes(echo), kEchoMismatch) << echo;
    EXPECT_FALSE(comm.TakeStrayWrite()) << echo << " names the same parameter";
  }
  for (const char* const echo : {"0PRM81=1200", "0PRM881D=1200", "0OK"}) {
    EXPECT_EQ(writes(echo), kEchoMismatch) << echo;
    EXPECT_TRUE(comm.TakeStrayWrite()) << echo;
    EXPECT_FALSE(comm.TakeStrayWrite()) << echo;
  }
  port.Answer("0JOGP500", {"0JOGP5000", "0OK"});
  EXPECT_EQ(comm.helixJog(500, 0), kEchoMismatch);
}

TEST_F(Exchange, WhatArrivedDamagedIsNoAnswer) {
  port.Answer("0PRM000", {"0PRM000",
                          "0Pn000=0000\x7F"
                          "010"});
  std::string value = "before";
  EXPECT_EQ(comm.readParameter("000", value), kValueNotFound);
  EXPECT_EQ(value, "before");
  port.Answer("0PRM000=0010", {"0PRM000=0010",
                               "0\x7F"
                               "5A1"});
  EXPECT_EQ(comm.writeParameter("000", "0010"), kNotAcknowledged);
  port.Answer("0PRM000=0010", {"\x7F"
                               "0PRM000=0010",
                               "0OK"});
  EXPECT_EQ(comm.writeParameter("000", "0010"), kSuccess) << "noise before the echo";
}

TEST_F(Exchange, WithoutEchoOneLineIsRead) {
  comm.setEchoBack(false);
  port.Answer("0SVON", {"0OK", "leftover"});
  EXPECT_EQ(comm.helixSimpleCommand(1), kSuccess);
  EXPECT_EQ(port.timeOutsInExchange.size(), 1u);
}

TEST_F(Exchange, WritesDiscardWaitingBytesReadsDoNot) {
  port.LeaveStale("late");
  port.Echoed("0SVON", "0OK");
  EXPECT_EQ(comm.helixSimpleCommand(1), kSuccess);
  port.LeaveStale("late");
  port.Echoed("0PRM800", "0Pn800=1");
  std::string value;
  EXPECT_EQ(comm.readParameter("800", value), kEchoMismatch);
}

TEST_F(Exchange, LongCommandsWaitLonger) {
  const std::tuple<std::int32_t, const char*, int> cases[] = {
      {11, "0ABSPGRES", 15000}, {8, "0PGMSTORE", 10000}, {5, "0PGMINIT", 10000},
      {3, "0PRMINIT", 15000},   {14, "0RES", 10000},     {7, "0JSPDSTORE", 500},
      {9, "0ZONESTORE", 500},   {4, "0JSPDINIT", 500},   {6, "0ZONEINIT", 500},
      {0, "0ARES", 500}};
  for (const auto& [cmd, line, expected] : cases) {
    comm.setTimeOut(500);
    port.Echoed(line, "0OK");
    port.timeOutsInExchange.clear();
    EXPECT_EQ(comm.helixSimpleCommand(cmd), kSuccess) << line;
    EXPECT_EQ(port.timeOutsInExchange, (std::vector<int>{expected, expected})) << line;
    EXPECT_EQ(port.timeOut, 5000) << line;
  }
  // Only the bare word counts.
  RawResponse response;
  comm.setTimeOut(500);
  port.timeOutsInExchange.clear();
  EXPECT_EQ(comm.writeToSerial("0RES1", response), kNoResponse);
  EXPECT_EQ(port.timeOutsInExchange, (std::vector<int>{500}));
}

TEST_F(Exchange, ReadsKeepAShortTimeOut) {
  comm.setTimeOut(500);
  std::string value;
  EXPECT_EQ(comm.readParameter("800", value), kNoResponse);
  EXPECT_EQ(port.timeOut, 500);
}

TEST_F(Exchange, IsRefusedWhileAnotherIsUnderWay) {
  std::vector<ResultCode> results;
  RawResponse raw;
  std::string value;
  port.onRead = [&] {
    results = {comm.executeWriteCommand("0PGMSTORE"), comm.executeReadCommand("0PUN", value),
               comm.writeToSerial("0ERR", raw)};
    EXPECT_EQ(port.timeOut, 10000);
    EXPECT_EQ(comm.timeOut(), 5000);
  };
  port.Echoed("0SVON", "0OK");
  EXPECT_EQ(comm.helixSimpleCommand(1), kSuccess);
  EXPECT_EQ(results, (std::vector<ResultCode>{kBusy, kBusy, kBusy}));
  EXPECT_EQ(port.sent, (std::vector<std::string>{"0SVON"}));
}

TEST_F(Exchange, ClosedPortIsTestedBeforeAnythingElse) {
  port.Close();
  std::string value;
  EXPECT_EQ(comm.executeWriteCommand("0PGMSTORE"), kPortNotOpen);
  EXPECT_EQ(comm.executeReadCommand("0PUN", value), kPortNotOpen);
  EXPECT_EQ(port.timeOut, 5000);
  // The raw exchange does not look: nothing comes back.
  RawResponse response;
  EXPECT_EQ(comm.writeToSerial("0TYPE", response), kNoResponse);
  EXPECT_TRUE(port.sent.empty());
}

TEST_F(Exchange, VanishingPortEndsTheExchangeOnly) {
  port.vanishesOn = "0PGMSTORE";
  EXPECT_EQ(comm.helixSimpleCommand(8), kPortNotOpen);
  EXPECT_EQ(port.timeOut, 5000);
  ASSERT_TRUE(comm.manualConnect());
  port.Echoed("0SVON", "0OK");
  EXPECT_EQ(comm.helixSimpleCommand(1), kSuccess) << "the guard is free again";
}

TEST_F(Exchange, RawExchangeParsesNothing) {
  RawResponse response;
  port.Answer("0ERR", {"garbled", "0E210 ERR"});
  EXPECT_EQ(comm.writeToSerial("0ERR", response), kSuccess);
  EXPECT_EQ(response, (RawResponse{"garbled", "0E210 ERR"}));
  comm.setEchoBack(false);
  response = {"", "untouched"};
  port.Answer("0ERR", {"0ERR 0000"});
  EXPECT_EQ(comm.writeToSerial("0ERR", response), kSuccess);
  EXPECT_EQ(response, (RawResponse{"0ERR 0000", "untouched"}));
}

TEST_F(Exchange, MessagesOfResults) {
  EXPECT_EQ(comm.ErrorMessages(0), "Success.");
  EXPECT_EQ(comm.ErrorMessages(-3), "Response does not match command error.");
  EXPECT_EQ(comm.ErrorMessages(3), "Response does not match command error.");
  EXPECT_EQ(comm.ErrorMessages(-8), "Busy!  Not ready for serial command.");
  EXPECT_THROW((void)comm.ErrorMessages(9), std::out_of_range);
  EXPECT_THROW((void)comm.ErrorMessages(std::numeric_limits<ResultCode>::min()), std::out_of_range);
}

TEST_F(Exchange, SettingsTextFollowsTheSpeed) {
  EXPECT_EQ(port.Settings(), "19200,e,7,2");
  comm.setBaudRate(38400);
  EXPECT_EQ(port.Settings(), "38400,e,7,2");
  comm.setupClass(port, 3, 9600, false, 4, 700);
  EXPECT_EQ(port.Settings(), "9600,e,7,2");
  EXPECT_EQ(port.timeOut, 700);
  ASSERT_TRUE(comm.manualConnect());
  EXPECT_EQ(port.portName, "COM4");
}

TEST(BinaryText, CountsBitsAndSkipsTheRest) {
  const std::pair<const char*, int> cases[] = {{"10 1", 5},
                                               {"00000101", 5},
                                               {"", 0},
                                               {"x", 0},
                                               {"1111111111111111111111111111111", 2147483647}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(ClassSerialComm::convertBinaryString(text), expected) << text;
  }
  EXPECT_THROW((void)ClassSerialComm::convertBinaryString("10000000000000000000000000000000"),
               NumberError);
}

TEST(EchoDiagnostic, NamesTheFirstDifference) {
  headless::HeadlessWorld world;
  ClassSerialComm::checkEchoChars("0PUN", "0PUN");
  EXPECT_TRUE(world.boxes.shown.empty());
  ClassSerialComm::checkEchoChars("0PAN", "0PUN");
  EXPECT_EQ(
      world.boxes.TakeTexts(),
      (std::vector<std::string>{"ascii check: [3]\recho char: [A] [65]\rcmd char: [U] [85]"}));
}

}  // namespace
}  // namespace velmoor
