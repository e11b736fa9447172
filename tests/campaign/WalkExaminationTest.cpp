// A short walk that has to hold, and the same walk with something broken behind the program's back,
// which the examination has to notice.

#include <gtest/gtest.h>

#include "platform/Database.h"
#include "project/data/Schema.h"
#include "random_walk/Shrink.h"
#include "random_walk/Walk.h"
#include "support/TemporaryFolder.h"

namespace velmoor::walk {
namespace {

constexpr const char* kWalk =
    "download All none 0\n"
    "open jog\n"
    "edit jog 3 1 12.5\n"
    "undo jog\n"
    "edit jog 4 1 20\n"
    "ok jog\n"
    "open homing\n"
    "edit homing Pn81D 3 7\n"
    "apply homing\n"
    "download New none 0\n"
    "save\n"
    "power\n"
    "compare\n";

class WalkExamination : public testing::Test {
 protected:
  // The kinds of what does not hold when `sabotage` runs behind the first step with that verb.
  std::set<std::string> Kinds(const std::string& verb,
                              const std::function<void(Access& access)>& sabotage) {
    Walk walk(folder.Path().string(), {});
    bool done = false;
    walk.sabotage = [&](Access& access, const Step& step) {
      if (done || step.Verb() != verb) return;
      done = true;
      sabotage(access);
    };
    const std::vector<Step> steps = ParseSteps(kWalk);
    std::size_t at = 0;
    walk.Run([&](Walk&) -> std::optional<Step> {
      return at < steps.size() ? std::optional(steps[at++]) : std::nullopt;
    });
    EXPECT_TRUE(done) << verb;
    std::set<std::string> kinds;
    for (const Violation& each : walk.Found()) kinds.insert(each.kind);
    return kinds;
  }
  static void SetCount(const std::string& file, const std::string& pn, const std::string& count) {
    using schema::Parameters;
    const auto database = OpenForWriting(file);
    const auto records = database->OpenTable(Parameters::kTable);
    ASSERT_TRUE(records->FindFirst(Parameters::kPn, pn));
    records->Edit();
    records->Set(Parameters::kControllerValue, count);
    records->Update();
    database->Commit();
  }

  TemporaryFolder folder;
};

TEST_F(WalkExamination, FindsNothingWhereNothingIsWrong) {
  for (const Violation& each : Replay(folder.At("walk"), ParseSteps(kWalk), {})) {
    ADD_FAILURE() << each.kind << ": " << each.text;
  }
}

TEST_F(WalkExamination, FindsACountThatDoesNotMeanItsText) {
  const auto kinds =
      Kinds("apply", [](Access& access) { SetCount(access.WorkingFile(), "Pn826", "1201"); });
  EXPECT_TRUE(kinds.contains("forms"));
  EXPECT_TRUE(kinds.contains("typed"));
  EXPECT_TRUE(kinds.contains("amplifier"));
}

TEST_F(WalkExamination, FindsAValueBeyondItsLimits) {
  EXPECT_TRUE(Kinds("apply", [](Access& access) {
                SetCount(access.WorkingFile(), "Pn826", "0");
              }).contains("limits"));
}

TEST_F(WalkExamination, FindsAnAmplifierThatHoldsSomethingElse) {
  EXPECT_TRUE(Kinds("download", [](Access& access) {
                access.Line().Type("send ZONEPT31=77777777");
              }).contains("amplifier"));
}

TEST_F(WalkExamination, FindsAProjectFileThatIsNotWhatWasSaved) {
  EXPECT_TRUE(Kinds("save", [](Access& access) {
                SetCount(access.ProjectFile(), "Pn826", "1201");
              }).contains("saved"));
}

TEST_F(WalkExamination, FindsAWindowThatShowsAnOldValue) {
  const auto kinds = Kinds("apply", [](Access& access) {
    HeadlessForm& form = *access.Find(KindNamed("homing"));
    auto& source = const_cast<GridSource&>(*form.grid("vsFG").Source());
    source.SetText(Access::RowOf(KindNamed("homing"), form, "Pn826"), 3, "21.000");
  });
  EXPECT_TRUE(kinds.contains("window"));
}

TEST(WalkSteps, ReadBackAsTheyWerePrinted) {
  const std::string text =
      "edit index 3 2 \"A -5\"\nedit zone 1 1 \"\"\nsystem \"Rotary Table\"\nok zone !no\n";
  EXPECT_EQ(TextOf(ParseSteps("# seed 7\n\n" + text)), text);
  EXPECT_TRUE(ParseSteps(text).back().Refuses());
}

}  // namespace
}  // namespace velmoor::walk
