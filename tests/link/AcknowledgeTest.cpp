// What counts as done, what ends a motion for certain, and how a failure tells its cause.
#include <gtest/gtest.h>

#include "link/DisplayError.h"
#include "link/LinkSession.h"
#include "link/ScriptedPort.h"
#include "link/clsHX7Helix7.h"
#include "support/TestWorld.h"

namespace velmoor {
namespace {

using Lines = std::vector<std::string>;

class Acknowledge : public testing::Test {
 protected:
  Acknowledge() { session.helix7 = &helix7; }
  Lines Boxes() { return world.boxes.TakeTexts(); }
  // To all that a connection asks.
  void AnswerAsAnAmplifier() {
    for (const auto& [line, answer] : {std::pair{"0PRM800", "0Pn800=00000001"},
                                       {"0PRM802=1", "0OK"},
                                       {"0TYPE", "0TYPE=00000600"},
                                       {"0SVTYPE", "0SVTYPE=00000002"},
                                       {"0MTTYPE", "0MTTYPE=00000100"},
                                       {"0MTSIZE", "0MTSIZE=00000040"}}) {
      port.Echoed(line, answer);
    }
  }

  TestWorld world;
  ScriptedPort port;
  LinkSession session{port};
  clsHX7Helix7 helix7;
};

// One of each kind of operation that changes something.
TEST_F(Acknowledge, EveryWriteAsksForIt) {
  const IndexRow step{"A+1", "2", "-", "3", "NNNNN", "T100", "1", "END"};
  const std::pair<const char*, std::function<ResultCode()>> writes[] = {
      {"0SVOFF", [&] { return helix7.DisableServo(); }},
      {"0SVON", [&] { return helix7.EnableServo(); }},
      {"0RES", [&] { return helix7.ResetHardware(); }},
      {"0PGMSTORE", [&] { return helix7.SaveTablesToMemory(8); }},
      {"0PGMINIT", [&] { return helix7.ResetDefaults(5); }},
      {"0ALMTRCCLR", [&] { return helix7.ClearAlarmHistory(); }},
      {"0ABSPGRES", [&] { return helix7.ResetAbsoluteEncoder(); }},
      {"0TUNESTORE", [&] { return helix7.SetInertiaRatio(); }},
      {"0STIFF4", [&] { return helix7.SetRigidity(4); }},
      {"0ZSET-12", [&] { return helix7.SetHomeOffset(-12); }},
      {"0SKIP", [&] { return helix7.StopJog(); }},
      {"0JOGP500", [&] { return helix7.StartJog(0, 500); }},
      {"0PRM81D=5", [&] { return helix7.SetParameter("81D", "5"); }},
      {"0POST7=A+1", [&] { return helix7.writeIndexTable(7, step); }},
      {"0ZONENT3=1",
       [&] {
         return helix7.writeZoneTable(3, {"1", "2"});
       }},
      {"0JSPDT3=9", [&] { return helix7.writeJogTable(3, "9"); }}};
  for (const auto& [line, write] : writes) {
    for (const char* const answer : {"0NG", "0PUN=00000012", "0ALM BB"}) {
      port.Echoed(line, answer);
      port.sent.clear();
      EXPECT_EQ(write(), kNoAcknowledge) << line << " " << answer;
      EXPECT_EQ(port.sent, Lines{line}) << "nothing follows a line that was not taken";
      EXPECT_EQ(helix7.LatestFailure().exchange.answer, answer);
    }
    port.Echoed(line, "0E210 ERR");
    EXPECT_EQ(write(), 57872) << line;
  }
}

TEST_F(Acknowledge, WhatWasNotStoredStaysUnstored) {
  port.Echoed("0JSPDT3=9", "0OK");
  ASSERT_EQ(helix7.writeJogTable(3, "9"), kSuccess);
  port.Echoed("0JSPDSTORE", "0NG");
  EXPECT_EQ(helix7.SaveTablesToMemory(7), kNoAcknowledge);
  port.Echoed("0RES", "0NG");
  EXPECT_EQ(helix7.ResetHardware(), kNoAcknowledge);
  EXPECT_TRUE(helix7.IsUnstored(SimpleCommand::jogStore));
}

TEST_F(Acknowledge, AfterNoiseTheValueIsReadBackOnce) {
  struct Case {
    const char* line;
    std::function<ResultCode()> write;
    const char* question;
    const char* held;
    ResultCode expected;
  };
  const auto parameter = [this](const char* value) {
    return [this, value] { return helix7.SetParameter("81D", value); };
  };
  const Case cases[] = {
      {"0PRM81D=-1200", parameter("-1200"), "0PRM81D", "0Pn81D=-00001200", kSuccess},
      {"0PRM81D=0", parameter("0"), "0PRM81D", "0Pn81D=00000000", kSuccess},
      {"0PRM81D=0A10", parameter("0A10"), "0PRM81D", "0Pn81D=00000A10", kSuccess},
      {"0PRM81D=1200", parameter("1200"), "0PRM81D", "0Pn81D=-00001200", kNoAnswerForm},
      {"0PRM81D=1200", parameter("1200"), "0PRM81D", "0Pn81D=00012000", kNoAnswerForm},
      {"0PRM81D=1200", parameter("1200"), "0PRM81D", "0E210 ERR", kNoAnswerForm},
      {"0JSPDT3=9", [this] { return helix7.writeJogTable(3, "9"); }, "0JSPDT3", "0JSPDT3=00000009",
       kSuccess}};
  for (const Case& row : cases) {
    for (const char* const noise : {"0#@", "XOK", "0\x7FOK", "0O"}) {
      port.Echoed(row.line, noise);
      port.Echoed(row.question, row.held);
      port.sent.clear();
      EXPECT_EQ(row.write(), row.expected) << row.line << " " << row.held << " " << noise;
      EXPECT_EQ(port.sent, (Lines{row.line, row.question}));
    }
  }
  // A command has nothing that could be read back.
  port.Echoed("0PGMSTORE", "0#@");
  EXPECT_EQ(helix7.SaveTablesToMemory(8), kNoAnswerForm);
}

TEST_F(Acknowledge, ItsFailuresHaveWords) {
  EXPECT_EQ(helix7.ErrorMessages(kNoAcknowledge), "Not acknowledged by the amplifier.");
  EXPECT_EQ(helix7.ErrorMessages(kNoAnswerForm),
            "The answer is no acknowledge and cannot be read.");
  EXPECT_EQ(helix7.ErrorMessages(kBusy), "Busy!  Not ready for serial command.");
  EXPECT_THROW((void)helix7.ErrorMessages(-11), std::out_of_range);
}

// ---- the motor

TEST_F(Acknowledge, WhatEndsAMotionIsTriedThreeTimes) {
  EXPECT_FALSE(helix7.MotorMayBeOn());
  (void)helix7.EnableServoForRun();
  EXPECT_TRUE(helix7.MotorMayBeOn()) << "its answer did not come";
  port.sent.clear();
  port.timeOutsInExchange.clear();
  port.Echoed("0SVOFF", "0NG");
  EXPECT_EQ(helix7.StopForCertain(), kNoResponse);
  EXPECT_EQ(port.sent, (Lines{"0SKIP", "0SKIP", "0SKIP", "0SVOFF", "0SVOFF", "0SVOFF"}));
  EXPECT_EQ(port.timeOutsInExchange, std::vector<int>(9, 500));
  EXPECT_EQ(port.timeOut, 5000);
  EXPECT_EQ(helix7.LatestFailure().exchange.line, "0SKIP");
  EXPECT_TRUE(helix7.MotorMayBeOn());
  EXPECT_FALSE(helix7.MakeMotorSafe());
  port.Echoed("0SVOFF", "0OK");
  port.sent.clear();
  EXPECT_TRUE(helix7.MakeMotorSafe());
  EXPECT_EQ(port.sent, (Lines{"0SKIP", "0SKIP", "0SKIP", "0SVOFF"}));
  port.sent.clear();
  EXPECT_TRUE(helix7.MakeMotorSafe());
  EXPECT_EQ(port.sent, Lines{}) << "known to be off";
}

TEST_F(Acknowledge, LeavingTheLineSwitchesTheMotorOffFirst) {
  port.Echoed("0SVON", "0OK");
  port.Echoed("0SKIP", "0OK");
  port.Echoed("0SVOFF", "0OK");
  // A servo that was switched on to stay is not Velmoor's to switch off.
  ASSERT_EQ(helix7.EnableServo(), kSuccess);
  helix7.GoOffline();
  EXPECT_EQ(port.sent, Lines{"0SVON"});
  port.open = true;
  port.sent.clear();
  ASSERT_EQ(helix7.EnableServoForRun(), kSuccess);
  helix7.GoOffline();
  EXPECT_EQ(port.sent, (Lines{"0SVON", "0SKIP", "0SVOFF"}));
  EXPECT_FALSE(port.open);
  port.open = true;
  ASSERT_EQ(helix7.EnableServoForRun(), kSuccess);
  port.Echoed("0RES", "0OK");
  ASSERT_EQ(helix7.ResetHardware(), kSuccess);
  EXPECT_FALSE(helix7.MotorMayBeOn()) << "a restart leaves the servo off";
}

// ---- the cause

TEST_F(Acknowledge, AFailureTellsWhatWasAskedAndWhy) {
  session.names = {{"E210", "Command error"}};
  std::string text;
  std::int32_t number = 0;
  struct Case {
    std::function<ResultCode()> fail;
    const char* told;
  };
  const Case cases[] = {
      {[&] { return helix7.DisableServo(); },
       "No response error.\r\rServo off (0SVOFF): no answer within 5 s."},
      {[&] {
         port.Echoed("0POST5=I+1", "0E210 ERR");
         return helix7.writeIndexTable(5, {"I+1", "", "", "", "", "", "", ""});
       },
       "Command error\r\rWriting step 6 of the index table (position) (0POST5=I+1): refused with "
       "E210 \"Command error\"."},
      {[&] {
         port.Echoed("0PRM81D", "0E999 ERR");
         return helix7.GetParameter("81D", text);
       },
       "Error E999, which has no definition.\r\rReading Pn81D (0PRM81D): refused with E999, which "
       "has no definition."},
      {[&] {
         port.Echoed("0PGMSTORE", "0NG");
         return helix7.SaveTablesToMemory(8);
       },
       "Not acknowledged by the amplifier.\r\rStoring the index table (0PGMSTORE): not "
       "acknowledged, but answered \"0NG\"."},
      {[&] {
         port.Answer("0JSPDT3=9", {"0JSPDT3=99", "0OK"});
         return helix7.writeJogTable(3, "9");
       },
       "Response does not match command error.\r\rWriting row 3 of the jog table (speed) "
       "(0JSPDT3=9): the echo was disturbed: \"0JSPDT3=99\"."},
      {[&] {
         port.Echoed("0PUN", "0PUN=12x");
         return helix7.GetHelixValue(14, number);
       },
       "Read value not found error.\r\rAsking PUN (0PUN): no usable value in the answer "
       "\"0PUN=12x\"."},
      {[&] {
         port.vanishesOn = "0SKIP";
         return helix7.StopJog();
       },
       "Communications port not opened.\r\rEnding the motion (0SKIP): the line is gone: gone."},
      {[&] { return helix7.StopJog(); },
       "Communications port not opened.\r\rEnding the motion (0SKIP): the port is not open."}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.told);
    const ResultCode result = row.fail();
    // What works afterwards does not take its place.
    DisplayError(result, "It failed!");
    EXPECT_EQ(Boxes(), Lines{std::string("It failed!\r") + row.told});
  }
}

TEST_F(Acknowledge, AKeptFailureIsToldThoughOthersCameBehindIt) {
  (void)helix7.EnableServo();
  const LinkFailure failure = helix7.LatestFailure();
  (void)helix7.DisableServo();
  DisplayError(failure, "It failed!", "Look there.");
  EXPECT_EQ(Boxes(), Lines{"It failed!\rNo response error.\r\rServo on (0SVON): no answer within "
                           "5 s.\r\rLook there."});
}

// ---- asking again, and the search

TEST_F(Acknowledge, ASessionThatIsOnlineAsksOnceBeforeItSearches) {
  AnswerAsAnAmplifier();
  session.baudRate = 38400;
  session.online = true;
  EXPECT_EQ(helix7.GoOnline(false), kSuccess);
  EXPECT_EQ(session.baudRate, 38400);
  EXPECT_EQ(port.sent, (Lines{"0PRM800", "0PRM802=1", "0TYPE", "0SVTYPE", "0MTTYPE", "0MTSIZE"}));
  // Nobody there at that speed: the search goes from the first on.
  port.Answer("0PRM800", {});
  port.sent.clear();
  EXPECT_EQ(helix7.GoOnline(false), kNotEstablished);
  EXPECT_EQ(port.sent, Lines(7, "0PRM800"));
  EXPECT_EQ(CauseOf(helix7.LatestFailure(), session),
            "No amplifier answered on axis 0 of COM1 at 9600, 19200 or 38400 bit/s.");
}

// What comes behind its time-out stands for no other answer, nor for an amplifier without echo.
TEST_F(Acknowledge, ALateAnswerDoesNotPutTheSearchOutOfStep) {
  AnswerAsAnAmplifier();
  const Lines late[] = {
      {"0PRM800", "0Pn800=00000001"}, {"0Pn800=00000001"}, {"0PRM81A", "0Pn81A=00000005"}, {"0OK"}};
  for (const bool online : {true, false}) {
    for (const Lines& lines : late) {
      SCOPED_TRACE(lines.front() + (online ? " online" : " offline"));
      session.online = online;
      port.ComeLate(lines);
      EXPECT_EQ(helix7.GoOnline(false), kSuccess);
      EXPECT_EQ(session.echo, 1);
      EXPECT_EQ(port.WaitingBytes(), 0);
    }
  }
}

TEST_F(Acknowledge, ASearchTellsWhatItTriesAndCanBeStopped) {
  Lines tried;
  helix7.SetSearchWatch([&](std::int32_t rate, const std::string& axis) {
    tried.push_back(std::to_string(rate) + " " + axis);
    return tried.size() < 2;
  });
  EXPECT_EQ(helix7.GoOnlineAfterRestart(), kNotEstablished);
  EXPECT_EQ(tried, (Lines{"9600 0", "19200 0"})) << "nor is it repeated";
  EXPECT_EQ(port.sent, Lines(2, "0PRM800"));
  EXPECT_EQ(CauseOf(helix7.LatestFailure(), session), "The search was stopped.");
}

TEST_F(Acknowledge, AnAmplifierThatLeavesItsFirstAcknowledgeOutIsConnected) {
  port.Answer("0PRM802=1", {"0PRM802=1"});
  port.Echoed("0PRM802", "0Pn802=00000000");
  EXPECT_EQ(helix7.MakeItAcknowledge(), kNoResponse);
  bool acknowledges = true;
  EXPECT_EQ(helix7.AskAcknowledges(acknowledges), kSuccess);
  EXPECT_FALSE(acknowledges);
  port.Echoed("0PRM802", "0Pn802=00000001");
  EXPECT_EQ(helix7.MakeItAcknowledge(), kSuccess);
}

TEST_F(Acknowledge, AFailedReadOfTheTypeIsNoWrongAmplifier) {
  port.Echoed("0TYPE", "0TYPE=00000600");
  EXPECT_EQ(helix7.IdentityText(helix7.IsRX900AndVKLM()),
            "Unable to determine if hardware is a RX900+VKLM set!\rCheck hardware and "
            "communications before proceeding.\r\rReading the type of the amplifier (0SVTYPE): no "
            "answer within 5 s.");
  port.Echoed("0SVTYPE", "0SVTYPE=00000003");
  EXPECT_EQ(helix7.IdentityText(helix7.IsRX900AndVKLM()), "Servo type error: Not VKLM!");
}

}  // namespace
}  // namespace velmoor
