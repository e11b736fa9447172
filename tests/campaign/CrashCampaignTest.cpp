#include "crash_campaign/CrashCampaign.h"

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace velmoor::campaign {
namespace {

TEST(CrashCampaign, AProgramThatIsKilledLosesAndTearsNothing) {
  const TemporaryFolder folder;
  const CrashReport report = RunCrashes(folder.Path().string(), 3, 24);
  for (const std::string& text : report.violations) ADD_FAILURE() << text;
  EXPECT_EQ(report.operations.size(), 4U);
  EXPECT_GT(report.operations.at("Save").fresh, 0);
}

}  // namespace
}  // namespace velmoor::campaign
