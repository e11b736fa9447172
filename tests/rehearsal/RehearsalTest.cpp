#include "rehearsal/Rehearsal.h"

#include <algorithm>
#include <cmath>

#include "RehearsalProgrammes.h"
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
class Agreeing : public Rehearsing, public testing::WithParamInterface<bench::RehearsedCase> {
 protected:
  struct Live {
    double seconds = 0;
    std::int64_t error = 0;
    std::int64_t position = 0;
    std::vector<double> begins;          // of the steps
    std::vector<std::uint32_t> outputs;  // each state that is another one
  };
  std::int64_t Ask(const std::string& word) {
    port.WriteLine("0" + word);
    (void)port.ReadLine();
    return *ParseWhole(port.ReadLine().substr(word.size() + 2));
  }
  void Send(const std::string& word) {
    port.WriteLine("0" + word);
    (void)port.ReadLine();
    ASSERT_EQ(port.ReadLine(), "0OK") << word;
  }
  Live RunLive(double inertiaRatio) {
    session.GoOnline();
    EXPECT_TRUE(project().DownloadAll());
    port.Advance(std::chrono::seconds(1));
    port.SetPaced(true);
    const SimulatedAxis& axis = amplifier().State().axis;
    amplifier().State().axis.SetLoad({.inertiaRatio = inertiaRatio});
    Send("SVON");
    Send("START");
    const auto seconds = [this, begin = port.Now()] {
      return std::chrono::duration<double>(port.Now() - begin).count();
    };
    Live live;
    while (axis.IsProgrammeRunning()) {
      live.error = std::max(live.error, std::abs(Ask("PER")));
      const auto outputs = static_cast<std::uint32_t>(*axis.Value("OUT2")) >> 1U;
      if (live.outputs.empty() || live.outputs.back() != outputs) live.outputs.push_back(outputs);
      const auto begun = static_cast<std::size_t>(axis.Programme().StepsBegun());
      if (live.begins.size() < begun) live.begins.resize(begun, seconds());
    }
    live.seconds = seconds();
    port.Advance(std::chrono::seconds(5));
    live.position = Ask("PUN");
    return live;
  }
};

TEST_P(Agreeing, WithTheAmplifierThatRunsTheSame) {
  PutIndex(GetParam().rows);
  Edit("Pn103", GetParam().inertiaRatio);
  const RehearsalResult rehearsed = Go();
  const Live live = RunLive(*ParseFloat(GetParam().inertiaRatio) / 100);
  EXPECT_EQ(live.position, rehearsed.steps.back().endPosition);
  EXPECT_NEAR(live.seconds, rehearsed.seconds, 0.02 * rehearsed.seconds);
  const auto error = std::ranges::max(rehearsed.steps, {}, &RehearsedStep::largestError);
  EXPECT_NEAR(static_cast<double>(live.error), error.largestError, 0.05 * error.largestError);
  ASSERT_EQ(live.begins.size(), rehearsed.steps.size());
  constexpr double kExchange = 0.04;  // s, of which a moment on the line is known
  for (std::size_t i = 0; i < live.begins.size(); ++i) {
    EXPECT_NEAR(live.begins[i], rehearsed.steps[i].begin, kExchange + 0.02 * live.begins[i]) << i;
  }
  std::vector<std::uint32_t> outputs;
  for (const RehearsalSample& sample : samples) {
    if (outputs.empty() || outputs.back() != sample.outputs) outputs.push_back(sample.outputs);
  }
  EXPECT_EQ(live.outputs, outputs);
}

INSTANTIATE_TEST_SUITE_P(Programmes, Agreeing, testing::ValuesIn(bench::kRehearsedCases),
                         [](const auto& each) { return NumberText(each.index + 1); });

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
