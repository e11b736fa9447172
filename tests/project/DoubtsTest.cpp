// Values that say one thing and would send another, or that nobody could have typed: in files that
// another program has written, and in amplifiers.
#include <algorithm>
#include <functional>

#include "project/Doubts.h"
#include "project/data/Schema.h"
#include "support/ProjectWorld.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

using schema::Jog;
using schema::Parameters;
using schema::Position;
using schema::Zone;
using Change = std::function<void(RowSet&)>;

class Doubts : public ProjectWorld {
 protected:
  Doubts() {
    path = OpenNew("a.spj");
    const std::string head = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
    EXPECT_TRUE(ImportCsv(project(), project().Position(),
                          head + "start,A+0,50,-,1,:::::,IT0,1,drill\n"
                                 "drill,A+40,120,5,2.5,A::::,NT100,3,start\n")
                    .empty());
    EXPECT_TRUE(ImportCsv(project(), project().Zone(), "zone,lower,upper\n3,-5,10\n").empty());
    EXPECT_TRUE(ImportCsv(project(), project().Jog(), "jog,speed\n2,10\n").empty());
    for (MotionTable* const table : Tables()) EXPECT_TRUE(table->ChangeAccepted());
    project().Save();
    session.Close();
  }

  std::vector<MotionTable*> Tables() {
    return {&project().Position(), &project().Zone(), &project().Jog()};
  }
  // As another program would, and opens the project.
  void Tamper(std::string_view table, std::string_view key, const std::string& value,
              const std::vector<std::pair<std::string_view, std::string>>& fields) {
    session.Close();
    {
      const auto database = OpenForWriting(path);
      const auto records = database->OpenTable(table);
      ASSERT_TRUE(records->FindFirst(key, value));
      records->Edit();
      for (const auto& [field, text] : fields) records->Set(field, text);
      records->Update();
      database->Commit();
    }
    world.databases.Release(path);
    ASSERT_EQ(session.Open(path), "");
  }
  std::string Stored(std::string_view table, std::string_view key, const std::string& value,
                     std::string_view field) {
    const auto database = OpenForReading(path);
    const auto records = database->OpenTable(table);
    return records->FindFirst(key, value) ? records->Text(field) : "none";
  }
  std::vector<std::string> Told() {
    std::vector<std::string> words;
    for (const Doubt& doubt : project().Doubts()) words.push_back(InWords(doubt));
    return words;
  }
  std::vector<std::string> Writes() {
    std::vector<std::string> writes;
    for (const JournalEntry& entry : amplifier().Journal()) {
      if (entry.line.find('=') != std::string::npos) writes.push_back(entry.line);
    }
    return writes;
  }

  std::string path;
};

TEST_F(Doubts, WhatThisProgramMakesIsInNone) {
  ASSERT_EQ(session.Open(path), "");
  EXPECT_EQ(Told(), std::vector<std::string>());
  // Rounded to the digits that are shown, and in the words of another language.
  Tamper(Position::kTable, Position::kId, "2",
         {{Position::kPosition, "A+40.000"}, {Position::kControllerPosition, "A+40000"}});
  EXPECT_EQ(Told(), std::vector<std::string>());
  Tamper(Parameters::kTable, Parameters::kPn, "Pn81A", {{Parameters::kValue, "Linear-Achse"}});
  EXPECT_EQ(Told(), std::vector<std::string>());
  for (const char* const kept :
       {"project-0.1.0.spj", "project-0.1.0-engine4.spj", "project-0.1.0-passphrase4.spj"}) {
    const std::string old = world.folder.At("old.spj");
    world.files.WriteDurably(old,
                             world.files.ReadAll(std::string(VELMOOR_KEPT_FILES) + "/" + kept));
    world.boxes.shown.clear();
    session.Close();
    ASSERT_EQ(session.Open(old), "") << kept;
    EXPECT_EQ(Told(), std::vector<std::string>()) << kept;
  }
  world.boxes.shown.clear();
}

TEST_F(Doubts, TextAgainstWhatWouldGoOutIsToldWithBothAndNothingIsSent) {
  Tamper(Position::kTable, Position::kId, "2",
         {{Position::kControllerPosition, "A+99999999"},
          {Position::kControllerSpeed, "300000"},
          {Position::kControllerNext, "1"}});
  Tamper(Zone::kTable, Zone::kZone, "3", {{Zone::kLowerLimit, "-6.000"}});
  Tamper(Jog::kTable, Jog::kJog, "2", {{Jog::kControllerValue, "777"}});
  Tamper(Parameters::kTable, Parameters::kPn, "Pn100", {{Parameters::kControllerValue, "777"}});
  Tamper(Parameters::kTable, Parameters::kPn, "Pn81B", {{Parameters::kValue, "twelve"}});
  Tamper(Parameters::kTable, Parameters::kPn, "Pn000", {{Parameters::kControllerValue, "0011"}});
  const std::vector<std::string> told = Told();
  ASSERT_EQ(told.size(), 8U) << InWords(project().Doubts());
  EXPECT_EQ(told[0],
            "Index Table step 2, Position: shows A+40.000, and A+99999999 would go out "
            "(A+99999.999)");
  EXPECT_EQ(told[1],
            "Index Table step 2, Speed: shows 120.000, and 300000 would go out (5000.000)");
  EXPECT_EQ(told[2], "Index Table step 2, Next: shows start, and 1 would go out (drill)");
  EXPECT_EQ(told[7], "Pn81B, Positive limit: shows twelve, and 99999999 would go out (99999.999)");
  // What is shown meanwhile is what would go out.
  EXPECT_EQ(project().Position().Text(2, clsHX7Position::position), "A+99999.999");
  session.GoOnline();
  amplifier().ForgetWhatWasAsked();
  const std::string refusal = "Nothing is downloaded while values of the project are in doubt:\r" +
                              InWords(project().Doubts());
  EXPECT_FALSE(project().DownloadAll());
  EXPECT_FALSE(project().Download());
  EXPECT_FALSE(project().DownloadParts({Tool::jog}));
  EXPECT_EQ(Writes(), std::vector<std::string>());
  EXPECT_EQ(world.boxes.Count(refusal), 3);
  world.boxes.shown.clear();
}

TEST_F(Doubts, AreSettledByWhatIsShownOrByWhatWouldGoOut) {
  for (const Keep keep : {Keep::shown, Keep::sent}) {
    const bool shown = keep == Keep::shown;
    SCOPED_TRACE(shown);
    const auto tamper = [&] {
      Tamper(Position::kTable, Position::kId, "2",
             {{Position::kSpeed, "120.000"},
              {Position::kControllerSpeed, "300000"},
              {Position::kDirty, "0"}});
      Tamper(Parameters::kTable, Parameters::kPn, "Pn100",
             {{Parameters::kValue, "40"},
              {Parameters::kControllerValue, "777"},
              {Parameters::kDirty, "0"}});
    };
    tamper();
    ASSERT_EQ(project().Doubts().size(), 2U);
    project().Settle(project().Doubts(), keep);
    EXPECT_TRUE(project().Doubts().empty());
    EXPECT_TRUE(project().NeedsSaving());
    EXPECT_EQ(project().Position().Text(2, clsHX7Position::speed), shown ? "120.000" : "5000.000");
    EXPECT_EQ(project().Position().DirtyCell(2), shown ? "1" : "0");
    project().Save();
    session.Close();
    ASSERT_EQ(session.Open(path), "");
    EXPECT_TRUE(project().Doubts().empty()) << InWords(project().Doubts());
    EXPECT_EQ(Stored(Position::kTable, Position::kId, "2", Position::kControllerSpeed),
              shown ? "7200" : "300000");
    EXPECT_EQ(Stored(Parameters::kTable, Parameters::kPn, "Pn100", Parameters::kValue),
              shown ? "40" : "777");
    EXPECT_EQ(Stored(Parameters::kTable, Parameters::kPn, "Pn100", Parameters::kDirty),
              shown ? "1" : "0");
    session.GoOnline();
    amplifier().ForgetWhatWasAsked();
    EXPECT_TRUE(project().DownloadParts({Tool::position}));
    const auto writes = Writes();
    EXPECT_NE(std::ranges::find(writes, shown ? "0SPDT1=7200" : "0SPDT1=300000"), writes.end());
  }
}

struct Case {
  std::string_view table, key;
  std::string record;
  std::string_view field, controllerField;
  std::string text, controller;
  std::string told;
};

TEST_F(Doubts, WhatNobodyCouldHaveTypedIsTold) {
  const auto parameter = [](const char* pn, const char* text, const char* controller,
                            const char* told) {
    return Case{Parameters::kTable,
                Parameters::kPn,
                pn,
                Parameters::kValue,
                Parameters::kControllerValue,
                text,
                controller,
                told};
  };
  const auto step = [](std::string_view field, std::string_view controllerField, const char* text,
                       const char* controller, const char* told) {
    return Case{
        Position::kTable, Position::kId, "2",        field,
        controllerField,  text,          controller, std::string("Index Table step 2, ") + told};
  };
  const Case cases[] = {
      parameter("Pn100", "65000", "65000",
                "Pn100, Speed loop gain: 65000 lies outside of the limits, 1 to 2000 Hz"),
      parameter("Pn000", "FFFF", "FFFF", "Pn000, Direction and axis: FFFF has no known form"),
      step(Position::kSpeed, Position::kControllerSpeed, "-1.000", "-60",
           "Speed: -60 (-1.000) lies outside of the limits, 0.000 to 1666666.650 mm/sec"),
      step(
          Position::kPosition, Position::kControllerPosition, "A+100000.000", "A+100000000",
          "Position: A+100000000 (A+100000.000) lies outside of the limits, 0.000 to 99999.999 mm"),
      step(Position::kPosition, Position::kControllerPosition, "JUMP", "JUMP",
           "Position: JUMP has no known form"),
      step(Position::kPOut, Position::kPOut, "QQQQQ", "QQQQQ", "POut: QQQQQ has no known form"),
      step(Position::kEvent, Position::kEvent, "SEL9T0", "SEL9T0",
           "Event: SEL9T0 has no known form"),
      step(Position::kLoop, Position::kLoop, "0", "0", "Loop: 0 has no known form"),
      step(Position::kNext, Position::kControllerNext, "-77", "-77", "Next: -77 has no known form"),
      {Zone::kTable, Zone::kZone, "3", Zone::kUpperLimit, Zone::kControllerUpperLimit, "100000.000",
       "100000000",
       "Zone Table row 3, UpperLimit: 100000000 (100000.000) lies outside of the limits, "
       "-99999.999 to 99999.999 mm"},
      {Jog::kTable, Jog::kJog, "2", Jog::kSpeed, Jog::kControllerValue, "-1.000", "-60",
       "Jog Table row 2, Speed: -60 (-1.000) lies outside of the limits, 0.000 to 1666666.650 "
       "mm/sec"}};
  for (const Case& each : cases) {
    const std::string text = Stored(each.table, each.key, each.record, each.field);
    const std::string controller = Stored(each.table, each.key, each.record, each.controllerField);
    Tamper(each.table, each.key, each.record,
           {{each.field, each.text}, {each.controllerField, each.controller}});
    EXPECT_EQ(Told(), std::vector<std::string>{each.told});
    Tamper(each.table, each.key, each.record,
           {{each.field, text}, {each.controllerField, controller}});
    EXPECT_EQ(Told(), std::vector<std::string>());
  }
}

TEST_F(Doubts, AValueThatIsTypedEndsTheDoubt) {
  Tamper(Parameters::kTable, Parameters::kPn, "Pn100",
         {{Parameters::kValue, "65000"}, {Parameters::kControllerValue, "65000"}});
  ASSERT_EQ(project().Doubts().size(), 1U);
  project().Editor().EditValue(project().Editor().FindRow("Pn100"), "400");
  ASSERT_TRUE(project().Editor().AcceptEdits());
  EXPECT_TRUE(project().Doubts().empty());
  Tamper(Jog::kTable, Jog::kJog, "2", {{Jog::kSpeed, "-1.000"}, {Jog::kControllerValue, "-60"}});
  ASSERT_FALSE(project().Doubts().empty());
  project().Jog().SetText(3, clsHX7Jog::speed, "10.000");
  project().Jog().SetDirtyCell(3, true);
  ASSERT_TRUE(project().Jog().ChangeAccepted());
  EXPECT_EQ(Told(), std::vector<std::string>{
                        "Pn100, Speed loop gain: 65000 lies outside of the limits, 1 to 2000 Hz"});
}

TEST_F(Doubts, AChangeOfAnotherValueSettlesNone) {
  Tamper(Parameters::kTable, Parameters::kPn, "Pn81D",
         {{Parameters::kValue, "0.000"}, {Parameters::kControllerValue, "-2147483648"}});
  const std::vector<std::string> told = Told();
  ASSERT_EQ(told.size(), 1U);
  project().Editor().EditValue(project().Editor().FindRow("Pn100"), "400");
  ASSERT_TRUE(project().Editor().AcceptEdits());
  project().Save();
  session.Close();
  ASSERT_EQ(session.Open(path), "");
  EXPECT_EQ(Told(), told);
}

// ---- from the amplifier

TEST_F(Doubts, AnUploadKeepsWhatItFindsTellsItAndSendsItNotBackUnasked) {
  ASSERT_EQ(session.Open(path), "");
  session.GoOnline();
  ASSERT_TRUE(project().DownloadAll());
  line.faults.Add({.kind = FaultKind::wrongAnswer, .match = "PRM100", .text = "0Pn100=00065000"});
  amplifier().State().memory.jog.working[2] = "-0000060";
  world.boxes.shown.clear();
  ASSERT_TRUE(project().UploadParts({Tool::editor, Tool::jog}));
  ASSERT_TRUE(project().CommitUpload());
  EXPECT_EQ(Told(), (std::vector<std::string>{
                        "Jog Table row 2, Speed: -60 (-1.000) lies outside of the limits, 0.000 to "
                        "1666666.650 mm/sec",
                        "Pn100, Speed loop gain: 65000 lies outside of the limits, 1 to 2000 Hz"}));
  EXPECT_EQ(project().Parameters().Get("Pn100").text, "65000");
  EXPECT_EQ(project().Jog().Text(3, clsHX7Jog::speed), "-1.000");
  amplifier().ForgetWhatWasAsked();
  EXPECT_FALSE(project().DownloadAll());
  EXPECT_EQ(Writes(), std::vector<std::string>());
  // Asked: what was found may go out.
  project().Settle(project().Doubts(), Keep::sent);
  EXPECT_TRUE(project().Doubts().empty());
  world.boxes.shown.clear();
}

}  // namespace
}  // namespace velmoor
