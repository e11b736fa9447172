// A bounded fault campaign, and the proof that one finds what it looks for.

#include "fault_campaign/Campaign.h"

#include <gtest/gtest.h>

#include "platform/Database.h"
#include "project/data/Schema.h"
#include "support/TemporaryFolder.h"

namespace velmoor::campaign {
namespace {

class FaultCampaign : public testing::Test {
 protected:
  void Run(Wiring& wiring, std::uint64_t seed, int faults) {
    Campaign campaign(wiring, folder.Path().string(), seed);
    campaign.Run(faults);
    for (const std::string& text : campaign.Result().violations) ADD_FAILURE() << text;
    EXPECT_EQ(campaign.Result().faults, faults);
  }
  // What a campaign says that is sabotaged behind each transfer.
  std::string FirstViolation(
      const std::function<void(Wiring& wiring, const std::string& workingFile)>& sabotage) {
    const auto wiring = WireInProcess();
    Campaign campaign(*wiring, folder.Path().string(), 7);
    campaign.sabotage = sabotage;
    campaign.Run(20, 1);
    return campaign.Result().violations.empty() ? "" : campaign.Result().violations.front();
  }
  static void SetField(const std::string& file, std::string_view table, std::string_view order,
                       std::string_view field, const std::string& text) {
    const auto database = OpenForWriting(file);
    const auto records = database->OpenTable(table, order);
    records->MoveFirst();
    records->Edit();
    records->Set(field, text);
    records->Update();
    database->Commit();
  }

  TemporaryFolder folder;
};

TEST_F(FaultCampaign, NothingIsLostOrMisreportedInProcess) {
  const auto wiring = WireInProcess();
  Run(*wiring, 11, 150);
}

TEST_F(FaultCampaign, NothingIsLostOrMisreportedOnAPseudoTerminal) {
  const auto wiring = WireTerminal(VELMOOR_SIMULATOR, folder.Path().string());
  Run(*wiring, 12, 10);
}

TEST_F(FaultCampaign, NoWriteIsTakenForDoneThatWasNot) {
  const auto wiring = WireInProcess();
  Campaign campaign(*wiring, folder.Path().string(), 13);
  campaign.RunWrites(400);
  for (const std::string& text : campaign.Result().violations) ADD_FAILURE() << text;
  EXPECT_GT(campaign.Result().faults, 100);
}

TEST_F(FaultCampaign, FindsAValueThatTheAmplifierHoldsOtherwise) {
  const std::string told = FirstViolation(
      [](Wiring& wiring, const std::string& /*file*/) { wiring.Type("send ZONEPT31=77777777"); });
  EXPECT_NE(told.find("ZONEPT31"), std::string::npos) << told;
}

TEST_F(FaultCampaign, FindsARowThatIsHalfFilled) {
  using schema::Position;
  const std::string told = FirstViolation([](Wiring& /*wiring*/, const std::string& file) {
    SetField(file, Position::kTable, Position::kId, Position::kEvent, "");
  });
  EXPECT_NE(told.find("POST0"), std::string::npos) << told;
}

TEST_F(FaultCampaign, FindsAMarkThatIsNotOffered) {
  using schema::Jog;
  const std::string told = FirstViolation([](Wiring& /*wiring*/, const std::string& file) {
    SetField(file, Jog::kTable, Jog::kJog, Jog::kDirty, "1");
  });
  EXPECT_NE(told.find("JSPDT0"), std::string::npos) << told;
}

}  // namespace
}  // namespace velmoor::campaign
