// The device object against literal lines.
#include "link/clsHX7Helix7.h"

#include <gtest/gtest.h>

#include "link/DisplayError.h"
#include "link/LinkSession.h"
#include "link/ModelStrings.h"
#include "link/ScriptedPort.h"
#include "support/TestWorld.h"

namespace velmoor {
namespace {

using Lines = std::vector<std::string>;

class Helix7 : public testing::Test {
 protected:
  Helix7() {
    session.helix7 = &helix7;
    port.Echoed("0PRM800", "0Pn800=00000001");
    port.Echoed("0PRM802=1", "0OK");
    port.Echoed("0TYPE", "0TYPE=00000600");
    port.Echoed("0SVTYPE", "0SVTYPE=00000002");
    port.Echoed("0MTTYPE", "0MTTYPE=00000100");
    port.Echoed("0MTSIZE", "0MTSIZE=00000040");
    port.Echoed("0PGTYPE", "0PGTYPE=00000011");
    listener =
        helix7.ResetStatus.Connect([this](const std::string& type, const std::string& status) {
          events.push_back(type + ": " + status);
        });
  }

  TestWorld world;
  ScriptedPort port;
  LinkSession session{port};
  clsHX7Helix7 helix7;
  Lines events;
  Connection listener;
};

TEST_F(Helix7, GoesOnline) {
  session.baudRate = 38400;
  EXPECT_EQ(helix7.GoOnline(false), kSuccess);
  EXPECT_EQ(session.baudRate, 9600) << "the speed that was found";
  EXPECT_TRUE(session.commExists);
  EXPECT_EQ(helix7.ServoModel(), "VKLM-04AE");
  EXPECT_EQ(helix7.ServoType(), "VKLM-ccvE");
  EXPECT_EQ(helix7.OptionType(), "00000600");
  EXPECT_EQ(helix7.MotorSize(), "400");
  EXPECT_EQ(port.timeOut, 5000);
  EXPECT_EQ(port.timeOutsInExchange.front(), 500);
}

TEST_F(Helix7, GoesOnlineWithoutEcho) {
  for (const char* const word : {"PRM800=0Pn800=0", "TYPE=0TYPE=00000600", "SVTYPE=0SVTYPE=02",
                                 "MTTYPE=0MTTYPE=00000100", "MTSIZE=0MTSIZE=40"}) {
    const std::string text = word;
    const std::size_t at = text.find('=');
    port.Answer("0" + text.substr(0, at), {text.substr(at + 1)});
  }
  port.Answer("0PRM802=1", {"0OK"});
  EXPECT_EQ(helix7.GoOnline(false), kSuccess);
  EXPECT_EQ(session.echo, 0);
  // Nothing behind the echo: a success with an empty text.
  port.Answer("0ERR", {"0ERR E210"});
  std::string text = "before";
  EXPECT_EQ(helix7.SendToSerial("0ERR", text), kSuccess);
  EXPECT_EQ(text, "");
  EXPECT_EQ(helix7.GetError(text), kSuccess);
  EXPECT_EQ(text, "");
  EXPECT_FALSE(helix7.GetAxis("0"));
}

TEST_F(Helix7, WrongIdentityStaysOutside) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"0TYPE", "0TYPE=00000500", "Option type error: Not RX900!"},
      {"0SVTYPE", "0SVTYPE=00000003", "Servo type error: Not VKLM!"},
      {"0SVTYPE", "0E210 ERR",
       "Unable to determine if hardware is a RX900+VKLM set!\rCheck hardware and communications "
       "before proceeding.\r\rReading the type of the amplifier (0SVTYPE): refused with E210, "
       "which "
       "has no definition."},
      {"0TYPE", "0E210 ERR",
       "Unable to determine if hardware is a RX900+VKLM set!\rCheck hardware and communications "
       "before proceeding.\r\rReading the type of the option card (0TYPE): refused with E210, "
       "which "
       "has no definition."}};
  for (const auto& [line, answer, text] : cases) {
    SCOPED_TRACE(answer);
    port.Echoed("0TYPE", "0TYPE=00000600");
    port.Echoed("0SVTYPE", "0SVTYPE=00000002");
    port.Echoed(line, answer);
    EXPECT_EQ(helix7.GoOnline(true), -1) << answer;
    EXPECT_TRUE(world.boxes.TakeTexts().empty()) << answer;
    EXPECT_EQ(helix7.GoOnline(false), -1) << answer;
    EXPECT_EQ(world.boxes.TakeTexts(), Lines{text});
    EXPECT_TRUE(port.open);
    EXPECT_FALSE(session.commExists);
  }
}

TEST_F(Helix7, FailedSearchShowsNothing) {
  port.Answer("0PRM800", {});
  EXPECT_EQ(helix7.GoOnline(false), kNotEstablished);
  EXPECT_TRUE(world.boxes.shown.empty());
  EXPECT_EQ(port.timeOut, 5000);
}

TEST_F(Helix7, UnreadableModelFailsALiveConnection) {
  port.Echoed("0MTSIZE", "0E210 ERR");
  EXPECT_EQ(helix7.GoOnline(false), 57872);
  EXPECT_TRUE(session.commExists);
}

TEST_F(Helix7, ScansAnAxis) {
  port.Answer("BTYPE", {"BTYPE", "BTYPE=00000600"});
  port.Answer("CTYPE", {"CTYPE", "CTYPE=00000500"});
  EXPECT_TRUE(helix7.GetAxis("B"));
  EXPECT_FALSE(helix7.GetAxis("C"));
  EXPECT_FALSE(helix7.GetAxis("D"));
  EXPECT_EQ(world.events.Yields(), 3);
}

TEST_F(Helix7, ReadsAlarms) {
  std::string text;
  port.Echoed("0ALM", "0ALM INPOS");
  EXPECT_EQ(helix7.GetAlarm(text), kSuccess);
  EXPECT_EQ(text, "RUN");
  port.Echoed("0ALM", "0ALM A.9F");
  EXPECT_EQ(helix7.GetAlarm(text), kSuccess);
  EXPECT_EQ(text, "A.9F");
  port.Echoed("0ERR", "0ERR E210");
  EXPECT_EQ(helix7.GetError(text), kSuccess);
  EXPECT_EQ(text, "0ERR E210");
}

TEST_F(Helix7, ErrorNameReplacesTheAlarmName) {
  session.names = {{"A.9F", "Overload warning"}, {"E210", "Bad command"}};
  port.Echoed("0ALM", "0ALM A.9F");
  EXPECT_EQ(helix7.GetAlarmAndError(), "\rOverload warning") << "no error could be read";
  port.Echoed("0ERR", "0ERR E210");
  EXPECT_EQ(helix7.GetAlarmAndError(), "\rBad command");
  port.Echoed("0ERR", "0ERR 0000");
  EXPECT_EQ(helix7.GetAlarmAndError(), "") << "the alarm's name is lost on purpose";
}

TEST_F(Helix7, DecodesVersionsAndSpecifications) {
  std::string text;
  port.Echoed("0VER", "0VER=00000003");
  EXPECT_EQ(helix7.GetOptionVersion(text), kSuccess);
  EXPECT_EQ(text, "0003");
  EXPECT_FALSE(helix7.IsOptionVersionNew()) << "not online";
  session.online = true;
  EXPECT_TRUE(helix7.IsOptionVersionNew());
  port.Echoed("0VER", "0VER=0000000A");
  EXPECT_TRUE(helix7.IsOptionVersionNew());
  port.Echoed("0VER", "0VER=00000002");
  EXPECT_FALSE(helix7.IsOptionVersionNew());
  const std::pair<const char*, const char*> specs[] = {
      {"0YSPEC=00000000", "Standard"}, {"0YSPEC=00000012", "Y12"}, {"0YSPEC=", "Y12"}};
  for (const auto& [answer, expected] : specs) {
    port.Echoed("0YSPEC", answer);
    EXPECT_EQ(helix7.GetOptionYSpec(text), kSuccess) << answer;
    EXPECT_EQ(text, expected) << answer;
  }
}

TEST_F(Helix7, DecodesTheEncoder) {
  const std::tuple<const char*, std::int32_t, const char*, const char*> cases[] = {
      {"0PGTYPE=00000011", 32768, "17-Bit", "Incremental"},
      {"0PGTYPE=0000000D", 2048, "13-Bit", "Incremental"},
      {"0PGTYPE=00000110", 16384, "16-Bit", "Absolute"},
      {"0PGTYPE=00000111", 32768, "17-Bit", "Absolute"},
      {"0PGTYPE=00000000", 0, "0-Bit", "Incremental"}};
  for (const auto& [answer, count, bits, kind] : cases) {
    SCOPED_TRACE(answer);
    port.Echoed("0PGTYPE", answer);
    std::int32_t lines = -1;
    std::string text;
    EXPECT_EQ(helix7.GetEncoderResolution(lines), kSuccess);
    EXPECT_EQ(lines, count) << answer;
    EXPECT_EQ(helix7.GetEncoderResolutionBits(text), kSuccess);
    EXPECT_EQ(text, bits) << answer;
    EXPECT_EQ(helix7.GetEncoderType(text), kSuccess);
    EXPECT_EQ(text, kind) << answer;
  }
  std::string model;
  port.Echoed("0PGTYPE", "0PGTYPE=00000011");
  EXPECT_EQ(helix7.GetMotorModel(model), kSuccess);
  EXPECT_EQ(model, "VMMAH-04AC");
}

TEST(ModelStrings, SizesAsTheMakerWritesThem) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"30", "A3", "A3"},    {"50", "A5", "A5"},    {"100", "01", "01"},  {"750", "07.5", "07.5"},
      {"800", "08", "08"},   {"850", "08.5", "10"}, {"900", "09", "10"},  {"1000", "10", "10"},
      {"1300", "13", "15"},  {"4400", "44", "50"},  {"5500", "55", "60"}, {"7500", "75", "75"},
      {"11000", "1B", "1B"}, {"15000", "1F", "1F"}, {"600", "", ""},      {"", "", ""}};
  for (const auto& [size, motor, servo] : cases) {
    EXPECT_EQ(GetMotorYY(size), motor) << size;
    EXPECT_EQ(GetServoYY(size), servo) << size;
  }
}

TEST(ModelStrings, LettersAndShortTexts) {
  EXPECT_EQ(GetMotorW("00000106"), "U");
  EXPECT_EQ(GetMotorW("00000105"), "");
  EXPECT_EQ(GetMotorX("00000200"), "D");
  EXPECT_EQ(GetServoX("0000"), "");
  EXPECT_EQ(GetMotorV("00000111"), "2");
  EXPECT_EQ(GetMotorV(""), "");
  EXPECT_EQ(GetServoTypeModelString("02"), "VKLM-ccvE");
  EXPECT_EQ(GetServoTypeModelString("03"), "UNKNOWN");
}

TEST_F(Helix7, ResetsAnnounceThemselves) {
  port.Echoed("0PGMINIT", "0OK");
  EXPECT_EQ(helix7.ResetDefaults(5), kSuccess);
  EXPECT_EQ(helix7.ResetDefaults(0), kNoResponse);
  EXPECT_EQ(events, (Lines{"Index Table: Start", "Index Table: Complete", "Current Alarm: Start",
                           "Current Alarm: Failed"}));
  port.sent.clear();
  EXPECT_EQ(helix7.ResetDefaults(1), kSuccess);
  EXPECT_EQ(helix7.SaveTablesToMemory(6), kSuccess);
  EXPECT_TRUE(port.sent.empty());
  EXPECT_EQ(events.size(), 4u);
}

TEST_F(Helix7, ParameterResetRestartsAtTheFactorySpeed) {
  port.Echoed("0PRMINIT", "0OK");
  port.Echoed("0RES", "0OK");
  session.baudRate = 38400;
  port.sent.clear();
  EXPECT_EQ(helix7.ResetDefaults(3), kSuccess);
  EXPECT_EQ(port.sent, (Lines{"0PRMINIT", "0RES", "0PRM800", "0PRM800", "0PRM802=1"}));
  EXPECT_EQ(session.baudRate, 9600);
  EXPECT_EQ(events.back(), "All Parameters: Complete");
}

TEST_F(Helix7, ParameterResetThatIsNotAnsweredWritesSpeedZero) {
  port.Echoed("0PRMINIT", "0OK");
  port.Echoed("0RES", "0OK");
  port.Answer("0PRM800", {});
  helix7.SetRestartAttempts(2);
  port.sent.clear();
  EXPECT_EQ(helix7.ResetDefaults(3), kNotEstablished);
  EXPECT_EQ(port.sent.size(), 2u + 12u) << "two searches of three speeds";
  EXPECT_EQ(session.baudRate, 0);
  EXPECT_EQ(port.timeOut, 5000);
  EXPECT_EQ(events.back(), "All Parameters: Failed");
}

TEST_F(Helix7, MotionCommandsWaitShortly) {
  port.Echoed("0JOGP500", "0OK");
  port.Echoed("0JOGN500", "0OK");
  port.Echoed("0SKIP", "0OK");
  EXPECT_EQ(helix7.StartJog(0, 500), kSuccess);
  EXPECT_EQ(helix7.StartJog(7, 500), kSuccess);
  EXPECT_EQ(helix7.StopJog(), kSuccess);
  EXPECT_EQ(port.sent, (Lines{"0JOGP500", "0JOGN500", "0SKIP"}));
  EXPECT_EQ(port.timeOutsInExchange, std::vector<int>(6, 500));
  EXPECT_EQ(port.timeOut, 5000);
  EXPECT_EQ(world.events.Yields(), 2) << "events after each start, none in the stop";
}

TEST_F(Helix7, MotorSizeForTheCatalogue) {
  std::string size;
  EXPECT_TRUE(helix7.GetMotorSizeWhileOffline(size));
  EXPECT_EQ(size, "400");
  EXPECT_EQ(session.lastMotorSize, "400");
  EXPECT_FALSE(port.open);
  port.Answer("0PRM800", {});
  EXPECT_TRUE(helix7.GetMotorSizeWhileOffline(size));
  EXPECT_EQ(size, "400");
  EXPECT_TRUE(port.open) << "a failed search leaves the port as it was";
}

TEST_F(Helix7, DisplaysErrors) {
  session.names = {{"E210", "Bad command"}};
  DisplayError(kNoResponse, "Unable to read!");
  DisplayError(57872, "Unable to read!");
  DisplayError(57873, "Unable to read!");
  EXPECT_EQ(world.boxes.TakeTexts(),
            (Lines{"Unable to read!\rNo response error.", "Unable to read!\rBad command",
                   "Unable to read!\rError E211, which has no "
                   "definition."}));
}

}  // namespace
}  // namespace velmoor
