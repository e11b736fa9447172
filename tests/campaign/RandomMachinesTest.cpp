// Random machines, of which each valid one can be entered as a whole, and each other one is refused
// with the words that say why.

#include <gtest/gtest.h>

#include "random_walk/MachineTrials.h"
#include "random_walk/TextTrials.h"
#include "support/TemporaryFolder.h"

namespace velmoor::walk {
namespace {

TEST(RandomMachines, AreEnteredByOneCommandOrRefusedInTheRightWords) {
  const TemporaryFolder folder;
  const TrialReport report = RunConsoleTrials(folder.Path().string(), 21, 40);
  for (const std::string& text : report.faults) ADD_FAILURE() << text;
  EXPECT_EQ(report.entered, report.valid);
  EXPECT_GT(report.valid, 20);
  EXPECT_GT(report.machines - report.valid - report.doubtful, 2);
}

TEST(RandomMachines, AreEnteredInTheWindowInAnyOrderOfTheirCells) {
  const TemporaryFolder folder;
  const TrialReport report = RunWindowTrials(folder.Path().string(), 22, 150);
  for (const std::string& text : report.faults) ADD_FAILURE() << text;
  EXPECT_EQ(report.entered, 150);
}

TEST(RandomProjects, ComeBackWholeFromTheirTexts) {
  const TemporaryFolder folder;
  const TrialReport report = RunTextTrials(folder.Path().string(), 23, 12);
  for (const std::string& text : report.faults) ADD_FAILURE() << text;
  EXPECT_EQ(report.entered, 12);
}

}  // namespace
}  // namespace velmoor::walk
