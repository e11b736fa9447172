// velmoorctl recordings.

#include <gmock/gmock.h>

#include "Velmoorctl.h"
#include "recordings/RecordingFolder.h"

namespace velmoor {
namespace {

using testing::HasSubstr;

TEST_F(Velmoorctl, ListsTheRecordingsOfAProjectAndTheirFigures) {
  ASSERT_EQ(Run({"new", project}), 0);
  EXPECT_EQ(Run({"recordings", project}), 0);
  EXPECT_EQ(out.str(), "recording,moment,axis,began,rate,note\n");
  const RecordingFolder folder(project);
  Recording recording;
  recording.heading = {.begun = "2026-03-01 14:05:09",
                       .project = "a.spj",
                       .axis = "3",
                       .cause = "by hand",
                       .gains = {},
                       .window = {},
                       .rate = "100.0 (all items together)",
                       .note = "belt, tightened",
                       .remarks = {},
                       .items = {{"Torque", "% of rated torque", 0}}};
  recording.curves = {{{0, 10}, {1, -30}}};
  const std::string name = folder.NewName(recording.heading.begun);
  WriteRecording(folder.PathOf(name), project, recording);
  EXPECT_EQ(Run({"recordings", project}), 0);
  EXPECT_EQ(out.str(),
            "recording,moment,axis,began,rate,note\n"
            "2026-03-01 14-05-09,2026-03-01 14:05:09,3,by hand,100.0 (all items together),"
            "\"belt, tightened\"\n");
  EXPECT_EQ(Run({"recordings", project, name}), 0);
  EXPECT_THAT(out.str(), HasSubstr("\nPeak torque,% of rated torque,30\n"));
  EXPECT_THAT(out.str(), HasSubstr("\nMean torque,% of rated torque,20.0\n"));
  EXPECT_THAT(out.str(), HasSubstr("\nCycle time,s,\n"));
  EXPECT_EQ(Run({"recordings", project, "other"}), 2);
  EXPECT_THAT(err.str(), HasSubstr("There is no recording 'other'"));
  // One that cannot be read is named, and the others are listed.
  world.files.WriteDurably(folder.PathOf("broken"), "no recording");
  EXPECT_EQ(Run({"recordings", project, "--json"}), 1);
  EXPECT_THAT(out.str(), HasSubstr("\"recording\":\"2026-03-01 14-05-09\""));
  EXPECT_THAT(err.str(), HasSubstr("broken.csv:1: it is no recording"));
  EXPECT_EQ(Run({"recordings", world.folder.At("none.spj")}), 1);
}

}  // namespace
}  // namespace velmoor
