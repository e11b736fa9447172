// The typed commands and the command line of the simulator.
#include <gtest/gtest.h>

#include <stdexcept>

#include "simulator/SimulatorConsole.h"
#include "simulator/program/ProgramOptions.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

class Console : public testing::Test {
 protected:
  Console() {
    line.AddAmplifier();
    line.AddAmplifier({.axis = 'C'});
    console.emplace(line);
  }
  SimulatorConsole::Outcome Type(std::string_view text) { return console->Execute(text, 1s); }
  std::string Ask(char axis, std::string_view command) {
    return line.Amplifier(axis)->Execute(command, 2s).text;
  }
  SimulatedLine line;
  std::optional<SimulatorConsole> console;
};

TEST_F(Console, ChangesWhatTheAmplifierTells) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"set PUN -5", "PUN", "0PUN=-00000005"},
      {"input IN1 0 on", "IN1", "0IN1=00001101"},
      {"alarm A.9F", "ALM", "0ALM A.9F"},
      {"error E5A1", "ERR", "0ERR E5A1"},
      {"power", "ALM", "0ALM BB"},
      {"ends -5 0", "ALM", "0ALM P-OT"},
      {"ends none", "ALM", "0ALM BB"},
      {"set PUN live", "PUN", "0PUN=00000000"}};
  for (const auto& [typed, command, answer] : cases) {
    EXPECT_FALSE(Type(typed).failed) << typed;
    EXPECT_EQ(Ask('0', command), answer) << typed;
  }
  EXPECT_FALSE(Type("axis C").failed);
  EXPECT_FALSE(Type("set PUN 7").failed);
  EXPECT_EQ(Ask('C', "PUN"), "CPUN=00000007");
  EXPECT_EQ(Ask('0', "PUN"), "0PUN=00000000");
}

TEST_F(Console, ShowsWhatHappened) {
  EXPECT_EQ(Type("send PRM81D=5").text, "0OK\n");
  EXPECT_EQ(Ask('0', "PUN"), "0PUN=00000000");
  EXPECT_EQ(Type("counts").text, "PRM= 1\nPUN 1\ntotal 2\n");
  EXPECT_EQ(Type("journal 1").text, "0PUN -> 0PUN=00000000\n");
  EXPECT_EQ(Type("state").text.substr(0, 32), "axis 0, 9600 bits/s, echo on\nser");
  EXPECT_FALSE(Type("forget").failed);
  EXPECT_EQ(Type("counts").text, "total 0\n");
  for (const char* const name : {"help", "fault", "unplug"}) {
    EXPECT_NE(Type("help").text.find(std::string(name)), std::string::npos);
  }
}

TEST_F(Console, PlansFaults) {
  EXPECT_FALSE(Type("fault late PGM skip=1 count=2 delay=700").failed);
  EXPECT_FALSE(Type("fault wrong-answer text=?").failed);
  ASSERT_EQ(line.faults.Planned().size(), 2u);
  const Fault& late = line.faults.Planned()[0];
  EXPECT_EQ(late.kind, FaultKind::lateAnswer);
  EXPECT_EQ(late.match, "PGM");
  EXPECT_EQ(late.skip, 1);
  EXPECT_EQ(late.count, 2);
  EXPECT_EQ(late.delay, 700ms);
  EXPECT_EQ(line.faults.Planned()[1].text, "?");
  EXPECT_FALSE(Type("clear").failed);
  EXPECT_TRUE(line.faults.Planned().empty());
  EXPECT_FALSE(Type("time store 6000").failed);
  EXPECT_EQ(line.Amplifier('0')->State().settings.storeTime, 6s);
}

TEST_F(Console, RefusesWhatItDoesNotUnderstand) {
  for (const char* const typed :
       {"bogus", "axis 5", "axis", "set SVON 1", "set PUN x", "input IN1 8 on", "input PUN 0 on",
        "input IN1 0 maybe", "error E5", "echo loud", "time restart -1", "time lunch 5",
        "fault nonsense", "fault late skip=x", "fault late PRM VER", "fault late colour=red"}) {
    EXPECT_TRUE(Type(typed).failed) << typed;
  }
  EXPECT_TRUE(line.faults.Planned().empty());
  EXPECT_FALSE(Type("").failed);
  EXPECT_FALSE(Type("# bogus").failed);
}

TEST_F(Console, AsksTheProgram) {
  using Request = SimulatorConsole::Request;
  EXPECT_EQ(Type("quit").request, Request::quit);
  EXPECT_EQ(Type("unplug").request, Request::unplug);
  EXPECT_EQ(Type("plug").request, Request::plug);
  EXPECT_EQ(Type("state").request, Request::nothing);
}

TEST(SimulatorOptions, DescribeTheAmplifiers) {
  const std::vector<std::string> words = {
      "--paced", "--link",       "line", "--baud", "19200", "--axis",        "b",  "--firmware",
      "2",       "--motor-size", "750",  "--axis", "3",     "--option-type", "500"};
  const ProgramOptions options = OptionsOf(ReadLine(SimulatorTable(), words));
  EXPECT_TRUE(options.paced);
  EXPECT_EQ(options.link, "line");
  ASSERT_EQ(options.amplifiers.size(), 2u);
  EXPECT_EQ(options.amplifiers[0].axis, 'B');
  EXPECT_EQ(options.amplifiers[0].baud, 19200);
  EXPECT_EQ(options.amplifiers[0].watts, 750);
  EXPECT_EQ(options.amplifiers[0].optionType, "00000600");
  EXPECT_EQ(options.amplifiers[1].axis, '3');
  EXPECT_EQ(options.amplifiers[1].firmware, 2) << "taken over";
  EXPECT_EQ(options.amplifiers[1].optionType, "00000500");
}

TEST(SimulatorOptions, RefuseBadOnes) {
  const std::vector<std::string> cases[] = {
      {"--axis", "G"},    {"--axis", "10"},        {"--baud", "57600"},
      {"--baud"},         {"--firmware", "three"}, {"--motor-size", "-5"},
      {"--encoder", "x"}, {"--speed", "1"},        {"--axis", "1", "--axis", "1"}};
  for (const auto& words : cases) {
    EXPECT_THROW((void)OptionsOf(ReadLine(SimulatorTable(), words)), UsageError) << words[0];
  }
}

}  // namespace
}  // namespace velmoor
