#include "rehearsal/Rehearsal.h"

#include <algorithm>
#include <cmath>

#include "platform/Numbers.h"
#include "support/ProjectWorld.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

class Rehearsing : public ProjectWorld {
 protected:
  void SetUp() override { OpenNew("a.spj"); }
  void PutIndex(const std::string& rows) {
    const std::string head = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
    ASSERT_EQ(ImportCsv(project(), project().Position(), head + rows), std::vector<std::string>());
    ASSERT_TRUE(project().Position().ChangeAccepted());
  }
  void Edit(const std::string& strPn, const std::string& value) {
    clsHX7Editor& editor = project().Editor();
    editor.EditValue(editor.FindRow(strPn), value);
    ASSERT_TRUE(editor.AcceptEdits());
  }
  RehearsalResult Go(const std::string& inputs = "at,input,state\n") {
    RehearsalOrder order;
    order.inputs = ReadInputScript(inputs);
    samples.clear();
    return Rehearse(project(), order,
                    [this](const RehearsalSample& sample) { samples.push_back(sample); });
  }
  static std::vector<std::string> Told(const RehearsalResult& result) {
    std::vector<std::string> told;
    for (const RehearsalFinding& finding : result.findings) {
      told.push_back(std::string(WordOf(finding.kind)) + " " + NumberText(finding.step) + ": " +
                     finding.words);
    }
    return told;
  }

  std::vector<RehearsalSample> samples;
};

TEST_F(Rehearsing, TellsWhatGoesWrong) {
  struct Case {
    const char* what;
    const char* rows;
    const char* inputs;
    std::vector<std::string> told;
  };
  const Case cases[] = {
      {"nothing", "a,A+40,120,-,1,:::::,IT0,1,END\n", "", {}},
      {"an event that nobody gives",
       "a,-,1,-,1,:::::,SEL0T0,1,END\n",
       "",
       {"event 1: the event SEL0T0 never comes"}},
      {"the same, given in time", "a,-,1,-,1,:::::,SEL0T0,1,END\n", "0.5,sel0,on\n", {}},
      {"given when the step begins",
       "a,A+9,50,-,1,:::::,IT0,1,b\nb,-,1,-,1,:::::,SEL0T0,1,END\n",
       "step 2,SEL0,on\n",
       {}},
      {"a step that nothing leads to",
       "a,A+9,50,-,1,:::::,IT0,1,END\nb,A+2,100,-,1,:::::,IT0,1,END\n",
       "",
       {"unreached 0: Never run: 2"}},
      {"a dwell that does not wait for its move",
       "a,A+400,100,-,1,:::::,T100,1,b\nb,A+0,100,-,1,:::::,IT0,1,END\n",
       "",
       {"cut 1: the next step begins 0.101 s after this one, before its move is over"}},
      {"a dwell longer than its move",
       "a,A+10,100,-,1,:::::,IT900,1,END\n",
       "",
       {"dwell 1: its dwell of 0.900 s is longer than its move of 0.199 s"}},
      {"the end switch in the way",
       "a,A+400,100,-,1,:::::,IT0,1,END\n",
       "0.5,P-OT,on\n",
       {"alarm 1: E100, Forward over travel"}}};
  for (const Case& each : cases) {
    SCOPED_TRACE(each.what);
    PutIndex(each.rows);
    EXPECT_EQ(Told(Go(std::string("at,input,state\n") + each.inputs)), each.told);
  }
}

TEST_F(Rehearsing, TheMachinesLimitsEndTheProgramme) {
  Edit("Pn81B", "30");
  PutIndex("a,A+40,120,-,1,:::::,IT0,1,END\n");
  const RehearsalResult result = Go();
  EXPECT_EQ(Told(result), std::vector<std::string>{"alarm 1: E102, Positive limit passed"});
  EXPECT_NEAR(samples.back().position, 30'000, 20);
}

TEST_F(Rehearsing, EndsWhereAProgrammeBeginsAgainAndTellsTheCycle) {
  PutIndex(
      "home,A+0,50,-,1,NNNNN,IT0,1,go\n"
      "go,I+10,100,-,1,ANNNN,IT50,3,back\n"
      "back,A+0,100,-,1,NANNN,IT50,1,go\n");
  const RehearsalResult result = Go();
  std::vector<int> ran;
  for (const RehearsedStep& step : result.steps) ran.push_back(step.step);
  EXPECT_EQ(ran, (std::vector<int>{1, 2, 2, 2, 3}));
  EXPECT_NEAR(result.steps[3].endPosition, 30'000, 20) << "within the window of the position";
  ASSERT_TRUE(result.cycleSeconds.has_value());
  EXPECT_EQ(result.cycleStep, 2);
  EXPECT_NEAR(*result.cycleSeconds, result.seconds - result.steps[1].begin, 1e-9);
  const auto in = [&](int step) {
    return *std::ranges::find(samples, step, &RehearsalSample::step);
  };
  EXPECT_EQ(in(2).outputs, 1U);
  EXPECT_EQ(in(3).outputs, 2U);
}

// Live: downloaded, run on the amplifier that stands at the end of a paced line, and read from it
// word by word.
TEST_F(Rehearsing, AgreesWithTheAmplifierThatRunsTheSame) {
  PutIndex(
      "a,A+40,120,-,1,:::::,IT100,1,b\n"
      "b,I+12.5,80,-,1,:::::,IT20,20,c\n"
      "c,A+0,200,-,1,:::::,IT0,1,END\n");
  const RehearsalResult rehearsed = Go();
  EXPECT_EQ(Told(rehearsed), std::vector<std::string>());
  const auto largest = std::ranges::max(rehearsed.steps, {}, &RehearsedStep::largestError);

  session.GoOnline();
  ASSERT_TRUE(project().DownloadAll());
  port.Advance(std::chrono::seconds(1));
  port.SetPaced(true);
  SimulatedAxis& axis = amplifier().State().axis;
  axis.SetLoad({.inertiaRatio = 0});  // as Pn103 says
  const auto ask = [this](const std::string& word) {
    port.WriteLine("0" + word);
    (void)port.ReadLine();
    return *ParseWhole(port.ReadLine().substr(word.size() + 2));
  };
  (void)ask("PUN");
  ASSERT_TRUE(axis.SwitchServo(true));
  ASSERT_TRUE(axis.StartProgramme());
  const Micros begin = port.Now();
  std::int64_t error = 0;
  while (axis.IsProgrammeRunning()) error = std::max(error, std::abs(ask("PER")));
  const double seconds = std::chrono::duration<double>(port.Now() - begin).count();
  port.Advance(std::chrono::seconds(5));
  EXPECT_EQ(ask("PUN"), rehearsed.steps.back().endPosition);
  EXPECT_NEAR(seconds, rehearsed.seconds, 0.02 * rehearsed.seconds);
  EXPECT_NEAR(static_cast<double>(error), largest.largestError, 0.05 * largest.largestError);
}

TEST(InputScript, NamesTheRowOfARefusal) {
  struct Case {
    const char* csv;
    const char* words;
  };
  const Case cases[] = {
      {"time,input,state\n", "The first line must be at,input,state"},
      {"at,input,state\n1,SEL0\n", "Row 1: it has not three fields"},
      {"at,input,state\n1,SEL0,on\n-1,SEL0,on\n",
       "Row 2: '-1' is no time in seconds, and no step such as \"step 4\""},
      {"at,input,state\nstep 129,SEL0,on\n", "Row 1: 'step 129' names no step such as \"step 4\""},
      {"at,input,state\n1,SEL9,on\n",
       "Row 1: 'SEL9' is none of SEL0, SEL1, SEL2, SEL3, SEL4, SEL5, SEL6, START-STOP, PGMRES, "
       "RGRT, P-OT, N-OT, DEC, S-ON"},
      {"at,input,state\n1,SEL0,maybe\n", "Row 1: 'maybe' is neither on nor off"}};
  for (const Case& each : cases) {
    try {
      (void)ReadInputScript(each.csv);
      ADD_FAILURE() << each.csv;
    } catch (const InputScriptError& error) {
      EXPECT_STREQ(error.what(), each.words);
    }
  }
}

}  // namespace
}  // namespace velmoor
