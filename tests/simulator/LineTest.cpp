// The simulated line seen through its port: echo, speeds, time, faults.
#include <gtest/gtest.h>

#include "platform/Numbers.h"
#include "simulator/InProcessPort.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

class Line : public testing::Test {
 protected:
  Line() {
    line.AddAmplifier();
    port.Open();
  }
  // What comes back for a command, up to the time-out.
  Lines Ask(std::string_view command) {
    port.WriteLine(command);
    Lines lines;
    for (std::string text = port.ReadLine(); !text.empty(); text = port.ReadLine()) {
      lines.push_back(text);
    }
    return lines;
  }
  Lines AskWith(Fault fault, std::string_view command) {
    line.faults.Add(std::move(fault));
    return Ask(command);
  }

  SimulatedLine line;
  InProcessPort port{line};
};

TEST_F(Line, EchoesAndAnswers) {
  EXPECT_EQ(Ask("0PRM800"), (Lines{"0PRM800", "0Pn800=00000001"}));
  line.Amplifier('0')->SetEcho(false);
  EXPECT_EQ(Ask("0PRM800"), Lines{"0Pn800=00000001"});
}

TEST_F(Line, SilentForForeignAxesAndSpeeds) {
  line.AddAmplifier({.axis = 'B', .baud = 38400});
  EXPECT_EQ(Ask("1TYPE"), Lines{});
  EXPECT_EQ(Ask("BTYPE"), Lines{}) << "another speed";
  EXPECT_EQ(Ask("TYPE"), Lines{});
  EXPECT_EQ(Ask(""), Lines{});
  port.SetSettings("38400,e,7,2");
  EXPECT_EQ(Ask("BTYPE"), (Lines{"BTYPE", "BTYPE=00000600"}));
  EXPECT_EQ(Ask("bTYPE"), Lines{});
  EXPECT_EQ(Ask("0TYPE"), Lines{});
  EXPECT_THROW(line.AddAmplifier({.axis = 'B'}), std::invalid_argument);
}

TEST_F(Line, LineEndsAtCarriageReturnOnly) {
  const auto sent = line.Receive("0T\nYPE\r\n0VER\r0PU", 0us, 9600);
  std::string all;
  for (const Transmission& transmission : sent) all += transmission.bytes;
  EXPECT_EQ(all, "0TYPE\r\n0TYPE=00000600\r\n0VER\r\n0VER=00000003\r\n");
  EXPECT_EQ(line.Receive("N\r", 0us, 9600).size(), 2u);
}

TEST_F(Line, TimeOutsTakeNoRealTime) {
  port.SetReadTimeOut(15000);
  const Micros before = port.Now();
  port.WriteLine("5TYPE");
  EXPECT_EQ(port.ReadLine(), "");
  EXPECT_EQ(port.Now() - before, 15s);
}

TEST_F(Line, CharactersTakeElevenBits) {
  EXPECT_EQ(WireTime(1, 9600), 1146us);
  EXPECT_EQ(WireTime(1000, 38400), 286458us);
  port.SetPaced(true);
  port.SetReadTimeOut(1000);
  port.WriteLine("0PRM800");
  EXPECT_EQ(port.ReadLine(), "0PRM800");
  EXPECT_EQ(port.ReadLine(), "0Pn800=00000001");
  // 8 characters out; 9 of the echo and the answer without its LF back.
  EXPECT_EQ(port.Now(), WireTime(8, 9600) + WireTime(9, 9600) + WireTime(16, 9600));
  // A read that would last beyond its time-out fails at the time-out.
  port.SetReadTimeOut(20);
  port.WriteLine("0PRM800");
  EXPECT_EQ(port.ReadLine(), "0PRM800");
  const Micros before = port.Now();
  port.SetReadTimeOut(10);
  EXPECT_EQ(port.ReadLine(), "");
  EXPECT_EQ(port.Now() - before, 10ms);
}

TEST_F(Line, RestartIsDeafAndChangesTheSpeed) {
  ASSERT_EQ(Ask("0PRM801=1").back(), "0OK");
  port.WriteLine("0RES");
  EXPECT_EQ(port.ReadLine(), "0RES");
  EXPECT_EQ(port.ReadLine(), "0OK") << "at the old speed";
  port.SetSettings("19200,e,7,2");
  port.SetReadTimeOut(100);
  EXPECT_EQ(Ask("0TYPE"), Lines{});
  port.Advance(200ms);
  EXPECT_EQ(Ask("0TYPE").back(), "0TYPE=00000600");
}

TEST_F(Line, StoringTakesItsTime) {
  line.Amplifier('0')->State().settings.storeTime = 6s;
  port.WriteLine("0PGMSTORE");
  EXPECT_EQ(port.ReadLine(), "0PGMSTORE");
  EXPECT_EQ(port.ReadLine(), "") << "5 s are not enough";
  EXPECT_EQ(port.ReadLine(), "0OK");
  EXPECT_EQ(port.Now(), 6s);
}

TEST_F(Line, FaultsShowOnTheWire) {
  const std::tuple<FaultKind, const char*, Lines> cases[] = {
      {FaultKind::silence, "0VER", {}},
      {FaultKind::noAnswer, "0VER", {"0VER"}},
      {FaultKind::alteredEcho, "0VER", {"0VE#", "0VER=00000003"}},
      {FaultKind::noDelimiter, "0VER", {"0VER", "0VER00000003"}},
      {FaultKind::notGood, "0SVON", {"0SVON", "0NG"}},
      {FaultKind::alarmAnswer, "0SVON", {"0SVON", "0A.9F"}},
      {FaultKind::junkError, "0SVON", {"0SVON", "0ZZZZ ERR"}},
      {FaultKind::zeroError, "0SVON", {"0SVON", "00000 ERR"}},
      {FaultKind::deviceError, "0SVON", {"0SVON", "0E5A1"}},
      {FaultKind::noLineEnd, "0VER", {"0VER"}},
      {FaultKind::halfLine, "0VER", {"0VER"}},
      {FaultKind::valueAnswer, "0SVON", {"0SVON", "0PUN=00000012"}},
      {FaultKind::garbage, "0VER", {"0VER", "\x7F\x15\x7F#E@\x01"}}};
  for (const auto& [kind, command, expected] : cases) {
    EXPECT_EQ(AskWith({.kind = kind}, command), expected) << NameOf(kind);
    port.DiscardInput();
    EXPECT_EQ(Ask("0TYPE"), (Lines{"0TYPE", "0TYPE=00000600"})) << NameOf(kind);
  }
  EXPECT_EQ(AskWith({.kind = FaultKind::wrongAnswer, .text = "?"}, "0VER"), (Lines{"0VER", "?"}));
}

TEST_F(Line, LateAnswerComesAfterTheTimeOut) {
  line.faults.Add({.kind = FaultKind::lateAnswer, .delay = 6s});
  port.WriteLine("0VER");
  EXPECT_EQ(port.ReadLine(), "0VER");
  EXPECT_EQ(port.ReadLine(), "");
  EXPECT_EQ(port.WaitingBytes(), 0);
  port.Advance(2s);
  EXPECT_EQ(port.WaitingBytes(), 15);
  EXPECT_EQ(port.ReadLine(), "0VER=00000003");
}

TEST_F(Line, SilencedCommandsAreNotDone) {
  AskWith({.kind = FaultKind::silence}, "0PRM81D=5");
  EXPECT_EQ(Ask("0PRM81D").back(), "0Pn81D=00000000");
  AskWith({.kind = FaultKind::noAnswer}, "0PRM81D=5");
  EXPECT_EQ(Ask("0PRM81D").back(), "0Pn81D=00000005");
}

TEST_F(Line, WhatIsDeniedIsNotDone) {
  for (const FaultKind kind : {FaultKind::notGood, FaultKind::valueAnswer, FaultKind::restart}) {
    AskWith({.kind = kind}, "0PRM81D=5");
    port.Advance(1s);
    EXPECT_EQ(Ask("0PRM81D").back(), "0Pn81D=00000000") << NameOf(kind);
  }
}

TEST_F(Line, ARestartInPlaceOfALineLosesTheWorkingTables) {
  ASSERT_EQ(Ask("0JSPDT3=900").back(), "0OK");
  EXPECT_EQ(AskWith({.kind = FaultKind::restart}, "0JSPDSTORE"), Lines{"0JSPDSTORE"});
  EXPECT_EQ(Ask("0JSPDT3").back(), "0JSPDT3=");
}

TEST_F(Line, FaultsMeetTheirTurnOnly) {
  line.faults.Add({.kind = FaultKind::silence, .match = "PRM", .skip = 1, .count = 2});
  const std::pair<const char*, std::size_t> turns[] = {
      {"0PRM800", 2}, {"0VER", 2}, {"0PRM801", 0}, {"0PRM800", 0}, {"0PRM800", 2}};
  for (const auto& [command, count] : turns) EXPECT_EQ(Ask(command).size(), count) << command;
  EXPECT_TRUE(line.faults.Planned().empty());
  line.faults.Add({.kind = FaultKind::silence, .count = 0});
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Ask("0VER"), Lines{});
  line.faults.Clear();
  EXPECT_EQ(Ask("0VER").size(), 2u);
}

TEST_F(Line, HangUpTakesThePortAway) {
  line.faults.Add({.kind = FaultKind::hangUp, .match = "PGMSTORE"});
  port.WriteLine("0PGMSTORE");
  EXPECT_THROW((void)port.ReadLine(), SerialPortError);
  EXPECT_FALSE(port.IsOpen());
  EXPECT_FALSE(port.Open());
  EXPECT_EQ(port.LastError(), "COM1 does not exist.");
  port.Plug();
  EXPECT_TRUE(port.Open());
  EXPECT_EQ(Ask("0VER").size(), 2u);
  port.Unplug();
  EXPECT_THROW(port.WriteLine("0VER"), SerialPortError);
}

// The fifth byte of the command, or of the echo, goes wrong.
TEST_F(Line, NoiseHarmsOneByteOrItsLine) {
  struct Case {
    NoiseKind kind;
    NoiseDirection direction;
    Lines lines;
  };
  const auto in = NoiseDirection::toAmplifier;
  const auto out = NoiseDirection::toHost;
  const std::string answer = "0Pn100=00000040";
  const Case cases[] = {
      {NoiseKind::dropByte, in, {"0PRM00", "0Pn000=00000000"}},
      {NoiseKind::dropByte, out, {"0PRM00", answer}},
      {NoiseKind::damageByte, in, {}},
      {NoiseKind::damageByte,
       out,
       {"0PRM\x7F"
        "00",
        answer}},
      {NoiseKind::turnByte, out, {"0PRM200", answer}},
      {NoiseKind::doubleByte, in, {"0PRM1100", "0E210 ERR"}},
      {NoiseKind::doubleByte, out, {"0PRM1100", answer}},
      {NoiseKind::delayByte, out, {"0PRM100", answer}},
      {NoiseKind::cutLine, in, {}},
      {NoiseKind::cutLine, out, {"0PRM" + answer}},
      {NoiseKind::repeatLine, in, {"0PRM100", answer, "0PRM100", answer}},
      {NoiseKind::repeatLine, out, {"0PRM100", "0PRM100", answer}},
  };
  for (const Case& c : cases) {
    line.DropInput();
    line.noise.Plan({.kind = c.kind, .direction = c.direction, .skip = 4});
    EXPECT_EQ(Ask("0PRM100"), c.lines) << NoiseNames() << ": " << static_cast<int>(c.kind);
    EXPECT_FALSE(line.noise.IsPlanned());
  }
}

}  // namespace
}  // namespace velmoor
