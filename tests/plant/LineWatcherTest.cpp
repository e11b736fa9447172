// The watch of a line: what it asks, how fast, what it tells, and what stays when it is killed.

#include "plant/LineWatcher.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "PlantWorld.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

std::size_t CountOf(const std::vector<std::string>& texts, const std::string& part) {
  return static_cast<std::size_t>(std::ranges::count_if(
      texts, [&part](const std::string& text) { return text.find(part) != std::string::npos; }));
}

TEST_F(PlantTest, TellsStateAlarmAndValuesOfEachAxis) {
  AddAxis('0', "feed");
  AddAxis('A', "gripper");
  file.watch.items = {2};
  Watch(3.5, {{1.2, [this] { line.Amplifier('A')->RaiseAlarm("A.40"); }}});
  EXPECT_THAT(Told("watch"), ElementsAre(HasSubstr(R"("state":"on")"), HasSubstr(R"("ended")")));
  EXPECT_THAT(Told("line"), ElementsAre(HasSubstr(R"("state":"watched")")));
  EXPECT_THAT(Told("0/state"),
              ElementsAre(AllOf(HasSubstr(R"("seq":1,)"),
                                HasSubstr(R"("name":"feed","state":"servo off","display":"BB")"))));
  EXPECT_THAT(Told("A/state"),
              ElementsAre(HasSubstr("servo off"), HasSubstr(R"("state":"alarm")")));
  EXPECT_THAT(Told("A/alarm"),
              ElementsAre(HasSubstr(R"("present":false)"),
                          AllOf(HasSubstr(R"("present":true,"warning":false,"display":"A.40")"),
                                HasSubstr("\"cause\":\"The"))));
  const auto values = Told("0/values");
  EXPECT_THAT(values, SizeIs(4)) << "one a second";
  EXPECT_THAT(values.front(),
              AllOf(HasSubstr(R"("seq":1,"time":"2024-03-01T09:00:)"),
                    HasSubstr(R"("status_flags":)"), HasSubstr(R"("status":")"),
                    HasSubstr(R"("motor_speed":0)"), HasSubstr(R"("target_position":0)")));
  for (const Publication& message : broker.arrived) {
    EXPECT_EQ(message.retained, !message.topic.ends_with("/values")) << message.topic;
  }
  EXPECT_EQ(line.Amplifier('0')->Asked("PRM"), 0) << "it only reads";
}

// The pace is the wire's: what its bytes take, and 5 % at most.
TEST_F(PlantTest, AsksAtThePaceOfTheWire) {
  for (const char axis : {'0', '1', '2', '3'}) AddAxis(axis);
  Watch(4);
  EXPECT_THAT(host.status, HasSubstr("4 of 4 axes answer, round "));
  const auto number = [this](const std::string& name) {
    const std::size_t at = host.metrics.find("\n" + name + "{") + 1;
    const std::size_t value = host.metrics.find("} ", at) + 2;
    return ParseFloat(host.metrics.substr(value, host.metrics.find('\n', value) - value)).value();
  };
  file.watch.listen = "9464";
  Watch(4);
  EXPECT_GT(number("velmoor_line_wire_seconds"), 0.1F);
  EXPECT_LT(number("velmoor_line_round_seconds"), 1.05F * number("velmoor_line_wire_seconds"));
}

// Its two time-outs, then a tenth of the line's time; it comes back by itself.
TEST_F(PlantTest, AnAxisThatFallsSilentHoldsTheOthersUpOnceAndComesBack) {
  AddAxis('0');
  AddAxis('3');
  SimulatedAmplifier& axis = *line.Amplifier('3');
  Watch(12, {{2, [&] { axis.State().settings.axis = '9'; }},
             {8, [&] { axis.State().settings.axis = '3'; }}});
  EXPECT_THAT(Told("3/state"), ElementsAre(HasSubstr("servo off"), HasSubstr(R"("state":"silent")"),
                                           HasSubstr("servo off")));
  EXPECT_THAT(Told("3/alarm"), SizeIs(1)) << "nothing is known of one that is silent";
  EXPECT_GE(Told("0/values").size(), 11U) << "12 s, one a second, one of them held up";
  EXPECT_THAT(Told("0/state"), SizeIs(1));
}

TEST_F(PlantTest, OneAnswerThatIsLostNowAndThenIsNoSilence) {
  AddAxis('0');
  for (int i = 0; i < 6; ++i) {
    line.faults.Add(
        {.kind = FaultKind::silence, .match = i % 2 == 0 ? "NFB" : "ALM", .skip = 10 * i});
  }
  Watch(12);
  EXPECT_TRUE(line.faults.Planned().empty()) << "all of them were met";
  EXPECT_THAT(Told("0/state"), SizeIs(1));
}

TEST_F(PlantTest, WorksWithAndWithoutEchoAndNeedsNoAxisToBeThere) {
  AddAxis('0');
  line.Amplifier('0')->SetEcho(false);
  file.axes.push_back({.address = "7", .name = "not there"});
  Watch(2);
  EXPECT_THAT(Told("0/values"), Not(IsEmpty()));
  EXPECT_THAT(Told("7/state"), ElementsAre(HasSubstr("silent")));
}

// A kill leaves what was told; what came meanwhile is told once by the next one.
TEST_F(PlantTest, BehindAKillOnlyWhatChangedIsTold) {
  AddAxis('0');
  const auto kill = [] { throw Killed(); };
  EXPECT_THROW(Watch(9, {{1, [this] { line.Amplifier('0')->RaiseAlarm("A.21"); }},
                         {2, [this] { broker.acknowledges = false; }},
                         {3.2, kill}}),
               Killed);
  broker.acknowledges = true;
  EXPECT_THROW(Watch(9, {{2, kill}}), Killed);
  Reset('0');
  Watch(2);
  std::map<std::string, std::set<std::string>> byTopic;
  for (const Publication& message : broker.arrived) byTopic[message.topic].insert(message.text);
  EXPECT_THAT(byTopic["velmoor/line1/0/alarm"], SizeIs(3)) << "none, A.21, none";
  EXPECT_THAT(byTopic["velmoor/line1/0/state"], SizeIs(3));
  const auto& values = byTopic["velmoor/line1/0/values"];
  for (std::size_t i = 1; i <= values.size(); ++i) {
    EXPECT_THAT(values, Contains(HasSubstr("{\"seq\":" + NumberText(i) + ",")));
  }
}

// One that was started anew has lost what it kept: it gets the present state under its number.
TEST_F(PlantTest, ABrokerThatComesBackGetsThePresentStateAgain) {
  AddAxis('0');
  Watch(9, {{3, [this] { broker.isThere = false; }}, {5, [this] { broker.isThere = true; }}});
  const auto states = Told("0/state");
  ASSERT_THAT(states, SizeIs(2));
  EXPECT_EQ(states[0], states[1]);
}

TEST_F(PlantTest, WhileTheBrokerIsAwayNothingIsLost) {
  AddAxis('0');
  broker.isThere = false;
  Watch(100, {{10, [this] { line.Amplifier('0')->RaiseAlarm("A.21"); }},
              {50, [this] { broker.isThere = true; }}});
  const auto values = Told("0/values");
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_THAT(values[i], HasSubstr("\"seq\":" + NumberText(i + 1) + ","));
  }
  EXPECT_GE(values.size(), 98U);
  EXPECT_THAT(Told("0/alarm"), SizeIs(2)) << "none, A.21";
  EXPECT_EQ(CountOf(host.told, "The broker is away."), 1U);
  EXPECT_EQ(CountOf(host.told, "The broker takes messages."), 1U);
}

// One that takes a message and hangs up, over and over: no news each time.
TEST_F(PlantTest, ABrokerThatComesAndGoesIsToldOnce) {
  AddAxis('0');
  std::vector<Event> events;
  for (int second = 3; second < 100; ++second) {
    events.push_back(
        {static_cast<double>(second), [this, second] { broker.isThere = second % 4 == 0; }});
  }
  Watch(100, events);
  EXPECT_EQ(CountOf(host.told, "The broker"), 1U);
  std::set<std::string> values;
  for (const std::string& text : Told("0/values")) values.insert(text);
  EXPECT_GE(values.size(), 95U);
}

// A person wants the port: the watch steps aside, and comes back.
TEST_F(PlantTest, LendsThePortAndReturns) {
  AddAxis('0');
  bool wasOpen = true;
  Watch(8, {{2, [this] { host.wanted = true; }},
            {4, [&] { wasOpen = port.IsOpen(); }},
            {5, [this] { host.wanted = false; }}});
  EXPECT_FALSE(wasOpen);
  EXPECT_GT(host.freed, 0);
  EXPECT_THAT(Told("line"), ElementsAre(HasSubstr("watched"), HasSubstr(R"("state":"lent")"),
                                        HasSubstr("watched")));
  EXPECT_THAT(Told("0/state"),
              ElementsAre(HasSubstr("servo off"), HasSubstr("unseen"), HasSubstr("servo off")));
}

TEST_F(PlantTest, APortThatGoesIsToldOnceAndTriedAgain) {
  AddAxis('0');
  Watch(20, {{2, [this] { port.Unplug(); }}, {15, [this] { port.Plug(); }}});
  EXPECT_THAT(Told("line"), SizeIs(3));
  EXPECT_THAT(Told("line").at(1), HasSubstr(R"("state":"no port")"));
  EXPECT_EQ(CountOf(host.told, "The line is watched."), 1U);
  EXPECT_THAT(Told("0/state").back(), HasSubstr("servo off"));
}

TEST_F(PlantTest, KeepsTheMinuteBeforeAnAlarmWithinItsBound) {
  AddAxis('0');
  SimulatedAmplifier& axis = *line.Amplifier('0');
  axis.RaiseAlarm("A.10");  // of another time
  const auto reset = [this] { Reset('0'); };
  Watch(14, {{2, reset},
             {4, [&] { axis.RaiseAlarm("A.40"); }},
             {6, reset},
             {8, [&] { axis.RaiseAlarm("A.91"); }},  // a warning leaves the servo on
             {10, reset},
             {11, [&] { axis.RaiseAlarm("A.51"); }}});
  const auto told = Told("0/recording");
  ASSERT_THAT(told, SizeIs(2));
  EXPECT_THAT(told.front(), HasSubstr("axis 0 alarm A.40\",\"bytes\":"));
  const RecordingFolder kept(WatchRecordings(WatchFolder(path, file.watch)), path);
  ASSERT_THAT(kept.Names(), SizeIs(2));
  const Recording recording = ReadRecording(kept.PathOf(kept.Names().back()));
  EXPECT_THAT(recording.heading.cause, HasSubstr("alarm A.40: "));
  EXPECT_THAT(recording.heading.remarks, Contains(HasSubstr("VKLM Inputs: ")));
  EXPECT_GT(recording.CurveOf(recorded::kSpeed).size(), 50U);
  EXPECT_NEAR(recording.End(), 0, 0.1);
}

TEST_F(PlantTest, WritesFilesOfADayAndFigures) {
  AddAxis('0', "=1+1");
  file.watch.broker.clear();
  file.watch.csv = world.folder.At("csv");
  file.watch.metrics = world.folder.At("figures.prom");
  world.clock.SetTimeOfDay(23, 59, 58);
  Watch(5);
  const auto written = world.files.NamesIn(file.watch.csv);
  ASSERT_THAT(written, ElementsAre("line1-2024-03-01.csv", "line1-2024-03-02.csv"));
  const std::string text = world.files.ReadAll(JoinPath(file.watch.csv, written[0]));
  EXPECT_TRUE(
      text.starts_with("time,axis,name,state,display,status_flags,current_position,motor_speed,"
                       "torque\n2024-03-01T23:59:58."))
      << text;
  EXPECT_THAT(text, HasSubstr(",0,'=1+1,servo off,BB,"));
  EXPECT_THAT(world.files.ReadAll(file.watch.metrics), EndsWith("# EOF\n"));
  EXPECT_THAT(broker.arrived, IsEmpty());
  EXPECT_THAT(host.told, Contains("Axis 0 =1+1: servo off"));
}

// Nothing that a name or the wire brings breaks a topic, a JSON text or a metric.
TEST_F(PlantTest, HostileNamesBreakNothing) {
  AddAxis('0', "a\"b\\c\n# TYPE x gauge\n\xff+/#");
  path = world.folder.At("$+li/ne#1.toml");
  fs::create_directories(GetFileDirectory(path));
  world.files.WriteDurably(path, "");
  file.watch.listen = "9464";
  file.watch.topic = "pla+nt//x";
  line.faults.Add(
      {.kind = FaultKind::wrongAnswer, .match = "ALM", .count = 0, .text = "0ALM \x1b]\"x\\"});
  Watch(3);
  for (const Publication& message : broker.arrived) {
    EXPECT_TRUE(message.topic.starts_with("pla_nt/_/x/ne_1/")) << message.topic;
    EXPECT_EQ(message.topic.find_first_of("+#\n\x1b"), std::string::npos) << message.topic;
    EXPECT_TRUE(message.text.starts_with("{") && message.text.ends_with("}")) << message.text;
    EXPECT_TRUE(std::ranges::all_of(message.text, [](char c) { return c >= 0x20; }));
  }
  EXPECT_EQ(CountOf({host.metrics}, "\n# TYPE x gauge"), 0U);
  EXPECT_THAT(host.metrics, HasSubstr(R"(name="a\"b\\c # TYPE x gauge \\xff+/#"})"));
}

TEST_F(PlantTest, AClockThatIsSetBackIsToldOnce) {
  AddAxis('0');
  Watch(20, {{6, [this] { world.clock.SetTimeOfDay(3, 0, 0); }}});
  EXPECT_EQ(CountOf(host.told, "The clock was set back by 21606 s."), 1U) << host.told.back();
  EXPECT_EQ(CountOf(host.told, "clock"), 1U);
  EXPECT_GE(Told("0/values").size(), 19U);
}

TEST_F(PlantTest, ASecondWatchOfTheFolderIsRefused) {
  AddAxis('0');
  const std::string folder = WatchFolder(path, file.watch);
  fs::create_directories(folder);
  const auto held = world.files.Lock(JoinPath(folder, "lock"));
  EXPECT_THROW(Watch(1), std::runtime_error);
}

}  // namespace
}  // namespace velmoor
