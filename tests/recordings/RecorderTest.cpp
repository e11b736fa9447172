// Recordings as files: what a recorder leaves, what reads it back, what a killed program leaves.

#include "recordings/Recorder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "platform/World.h"
#include "platform/headless/HeadlessWorld.h"
#include "platform/posix/PosixFiles.h"
#include "recordings/BlackBox.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using State = Recorder::State;

class RecorderTest : public testing::Test {
 protected:
  RecorderTest() : folder_((Fresh() / "line1.spj").string()) {
    world_.files = &files_;
    before_ = SetWorld(&world_);
    std::ofstream(place_ / "line1.spj") << "a project";
    heading_.begun = "2026-03-01 14:05:09";
    heading_.project = "line1.spj";
    heading_.axis = "0";
    heading_.gains = "Pn100=40";
    heading_.items = {{"Motor Speed", "rpm", 0}, {"Current Position", "mm", 3}, {"Alarm", "", 0}};
  }
  ~RecorderTest() override {
    SetWorld(before_);
    fs::remove_all(place_);
  }
  fs::path Fresh() {
    std::string pattern = (fs::temp_directory_path() / "velmoor-recorder-XXXXXX").string();
    place_ = mkdtemp(pattern.data());
    return place_;
  }
  [[nodiscard]] std::string FileOf(const std::string& name) const {
    std::ifstream file(folder_.PathOf(name));
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void Take(int item, double now, double value) { recorder_.Take(item, now, value, kMoment); }

  static constexpr const char* kMoment = "2026-03-01 14:06:00";
  fs::path place_;
  RecordingFolder folder_;
  posix::PosixFiles files_;
  World world_;
  World* before_ = nullptr;
  RecordingHeading heading_;
  Recorder recorder_;
};

TEST_F(RecorderTest, LeavesACsvFileWithItsHeadingAndTrueTimes) {
  recorder_.Begin(folder_, heading_, {}, 100);
  EXPECT_EQ(recorder_.Now(), State::running);
  for (int i = 0; i < 5; ++i) {
    Take(0, 100.01 + i * 0.02, 10 * i);
    Take(1, 100.02 + i * 0.02, -0.5 * i);
  }
  recorder_.Stop();
  EXPECT_EQ(recorder_.Name(), "2026-03-01 14-05-09");
  EXPECT_EQ(FileOf(recorder_.Name()),
            "# Velmoor recording 1\n"
            "# Begun: 2026-03-01 14:05:09\n"
            "# Project: line1.spj\n"
            "# Axis: 0\n"
            "# Gains: Pn100=40\n"
            "# Samples a second: 100.0 (all items together)\n"
            "time (s),Motor Speed (rpm),Current Position (mm)\n"
            "0.010,0,\n0.020,,0.000\n0.030,10,\n0.040,,-0.500\n0.050,20,\n0.060,,-1.000\n"
            "0.070,30,\n0.080,,-1.500\n0.090,40,\n0.100,,-2.000\n");
  const Recording read = ReadRecording(folder_.PathOf(recorder_.Name()));
  EXPECT_EQ(read.heading.items,
            (std::vector<RecordedItem>{{"Motor Speed", "rpm", 0}, {"Current Position", "mm", 3}}));
  EXPECT_EQ(read.CurveOf("Motor Speed").size(), 5U);
  EXPECT_EQ(read.CurveOf("Current Position").back(), (ChartPoint{0.1, -2}));
  EXPECT_EQ(RateText(read), "Motor Speed 50.0, Current Position 50.0");
}

TEST_F(RecorderTest, WaitsForItsTriggerAndKeepsWhatWasBefore) {
  const struct {
    Trigger trigger;
    std::vector<double> values;  // 0.1 s apart, of the item that is watched
    std::optional<std::size_t> fires;
  } cases[] = {
      {{"Motor Speed", TriggerKind::rises, 100, ""}, {0, 50, 99, 100, 120}, 3},
      // Beyond already: it has to come from the other side.
      {{"Motor Speed", TriggerKind::rises, 100, ""}, {150, 160, 50, 150}, 3},
      {{"Motor Speed", TriggerKind::falls, -20, ""}, {0, -10, -20}, 2},
      {{"Motor Speed", TriggerKind::reaches, 7, ""}, {6, 8, 7}, 2},
      {{"Motor Speed", TriggerKind::bitOn, 2, ""}, {3, 1, 4, 0}, 2},
      {{"Motor Speed", TriggerKind::bitOff, 0, ""}, {1, 3, 2}, 2},
      {{"Motor Speed", TriggerKind::rises, 100, ""}, {0, 1, 2}, std::nullopt},
      {{"Current Position", TriggerKind::rises, 1, ""}, {0, 100, 0}, std::nullopt},
  };
  for (const auto& each : cases) {
    recorder_.Begin(folder_, heading_, {.length = 0, .before = 0.15, .trigger = each.trigger}, 0);
    EXPECT_EQ(recorder_.Now(), State::waiting);
    std::optional<std::size_t> fired;
    for (std::size_t i = 0; i < each.values.size(); ++i) {
      Take(0, static_cast<double>(i) * 0.1, each.values[i]);
      if (!fired && recorder_.Now() == State::running) fired = i;
    }
    EXPECT_EQ(fired, each.fires);
    recorder_.Stop();
    if (!fired) continue;
    const Recording read = ReadRecording(folder_.PathOf(recorder_.Name()));
    EXPECT_EQ(read.heading.begun, kMoment);
    // One sample lies in the 0.15 s before the moment, which is time 0.
    EXPECT_NEAR(read.Begin(), -0.1, 1e-9);
    EXPECT_EQ(read.CurveOf("Motor Speed").at(1).y, each.values.at(*fired));
  }
  // What only waited has left nothing.
  EXPECT_EQ(folder_.Names().size(), 6U);
}

TEST_F(RecorderTest, EndsByItselfAndTellsWhyNothingIsThere) {
  recorder_.Begin(folder_, heading_, {.length = 1, .before = 0, .trigger = {}}, 0);
  for (int i = 0; i < 30; ++i) Take(0, i * 0.1, i);
  EXPECT_EQ(recorder_.Now(), State::idle);
  EXPECT_EQ(ReadRecording(folder_.PathOf(recorder_.Name())).End(), 1);
  recorder_.Begin(folder_, heading_, {}, 0);
  recorder_.Stop();
  EXPECT_THAT(recorder_.Words(), HasSubstr("Nothing was read of the axis"));
  EXPECT_EQ(folder_.Names().size(), 1U);
}

TEST_F(RecorderTest, AKilledProgramLeavesWhatItHadRecorded) {
  recorder_.Begin(folder_, heading_, {}, 0);
  for (int i = 0; i < 50; ++i) Take(0, i * 0.01, i);
  // As a kill finds it: nothing is ended, and half a line may be there.
  std::ofstream(folder_.PathOf(recorder_.Name()), std::ios::app) << "0.5,4";
  const Recording read = ReadRecording(folder_.PathOf(recorder_.Name()));
  EXPECT_EQ(read.CurveOf("Motor Speed").size(), 50U);
  EXPECT_EQ(read.heading.items.size(), 1U);
  EXPECT_EQ(read.heading.rate, "");
}

TEST_F(RecorderTest, IsNamedAnnotatedAndDeletedWithoutLosingASample) {
  recorder_.Begin(folder_, heading_, {}, 0);
  for (int i = 0; i < 10; ++i) Take(1, i * 0.01, i * 0.125);
  recorder_.Stop();
  const Recording before = ReadRecording(folder_.PathOf(recorder_.Name()));
  folder_.Rename(recorder_.Name(), "stiffer");
  folder_.Annotate("stiffer", "belt tightened,\n\"much\" better");
  EXPECT_THAT(folder_.Names(), ElementsAre("stiffer"));
  const Recording after = ReadRecording(folder_.PathOf("stiffer"));
  EXPECT_EQ(after.heading.note, "belt tightened, \"much\" better");
  EXPECT_EQ(after.curves, before.curves);
  EXPECT_EQ(after.heading.gains, "Pn100=40");
  for (const char* const name : {"", " ", "a/b", "..", ".hidden", "a\nb", "stiffer", "a:b"}) {
    EXPECT_NE(folder_.WhyNot(name), "") << name;
    EXPECT_THROW(folder_.Rename("stiffer", name), FileError) << name;
  }
  folder_.Remove("stiffer");
  EXPECT_THAT(folder_.Names(), ElementsAre());
}

TEST_F(RecorderTest, RefusesWhatIsNoRecording) {
  (void)folder_.NewName("x");
  const std::pair<std::string, std::string> cases[] = {
      {"", "it is no recording"},
      {"time,item\n1,2\n", ":1: it is no recording"},
      {"# Velmoor recording 2\n", "it is of a newer version of Velmoor"},
      {"# Velmoor recording 1\nspeed\n", ":2: it is no recording"},
      {"# Velmoor recording 1\ntime (s),a (b)\n0.1,x\n0.2,1\n0.3,y\n", ":5: it is no line"},
      {"# Velmoor recording 1\n" + std::string(5000, 'x') + "\n", "a line is too long"},
  };
  for (const auto& [text, reason] : cases) {
    std::ofstream(folder_.PathOf("bad")) << text;
    try {
      (void)ReadRecording(folder_.PathOf("bad"));
      ADD_FAILURE() << "taken: " << text.substr(0, 40);
    } catch (const FileError& error) {
      EXPECT_THAT(error.what(), HasSubstr(reason));
    }
  }
}

TEST_F(RecorderTest, APlantedLinkInTheFoldersPlaceIsRefused) {
  fs::create_directory(place_ / "elsewhere");
  fs::create_directory_symlink(place_ / "elsewhere", place_ / "line1.recordings");
  EXPECT_THROW(recorder_.Begin(folder_, heading_, {}, 0), FileError);
  EXPECT_EQ(recorder_.Now(), State::idle);
  EXPECT_TRUE(fs::is_empty(place_ / "elsewhere"));
}

TEST_F(RecorderTest, TheBlackBoxKeepsTheLastMinute) {
  BlackBox box;
  for (int i = 0; i <= 900; ++i) box.Take(0, i * 0.1, i);
  EXPECT_EQ(box.Latest(0), 900);
  EXPECT_EQ(box.Latest(1), std::nullopt);
  heading_.remarks = {"Cause: a belt", "Log: one", "Log: two"};
  const std::string name =
      box.Keep(folder_, heading_, "alarm A.43", 90, [](int, double raw) { return raw * 2; });
  EXPECT_EQ(name, "2026-03-01 14-05-09 alarm A.43");
  const Recording read = ReadRecording(folder_.PathOf(name));
  EXPECT_NEAR(read.Begin(), -60, 1e-6);
  EXPECT_EQ(read.CurveOf("Motor Speed").back(), (ChartPoint{0, 1800}));
  EXPECT_THAT(read.heading.remarks, ElementsAre("Cause: a belt", "Log: one", "Log: two"));
}

}  // namespace
}  // namespace velmoor
