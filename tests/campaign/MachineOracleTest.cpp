// The oracle of the random machines, against figures worked out by hand.

#include "random_walk/MachineOracle.h"

#include <gtest/gtest.h>

#include "random_walk/Literal.h"

namespace velmoor::walk {
namespace {

TEST(MachineOracle, KnowsTheGearTermsTheRangeAndTheRecords) {
  const Judgement lead = Judge({});
  ASSERT_TRUE(lead.valid);
  EXPECT_EQ(lead.a, 5000);
  EXPECT_EQ(lead.b, 8192);
  EXPECT_EQ(lead.low, 2);
  EXPECT_EQ(lead.high, 5);
  EXPECT_EQ(lead.records.at("Pn829") + lead.records.at("Pn82A"), "6746684963329797");
  const Judgement table = Judge({3, "360", "3", "2", "2", "deg", "minutes", "2048"});
  ASSERT_TRUE(table.valid);
  // 108000 does not fit: 16384 / 108000 in lowest terms.
  EXPECT_EQ(table.a, 3375);
  EXPECT_EQ(table.b, 512);
  EXPECT_EQ(table.records.at("Pn82F") + table.records.at("Pn830"), "0000001135869952");
  EXPECT_EQ(table.records.at("Pn82E"), "0314");
}

TEST(MachineOracle, TellsWhyAMachineIsRefused) {
  const struct {
    TypedMachine machine;
    const char* words;
  } cases[] = {
      {{3, "360", "1", "1", "2", "mm"}, "Selected system cannot have linear units!"},
      {{0, "5", "1", "1", "3", "rad"}, "Selected system cannot have rotary units!"},
      {{0, "0.0001", "1", "1", "0"},
       "A is less than 1.  A must be within the range from 1 to 65535."},
      {{0, "5", "1", "1", "6"},
       "Selected resolution is out of range for described system. Resolution for described system "
       "must be within the range from 2 to 5."},
      {{0, "5", "0"},
       "The value 0 is out of the allowable range! Value must range from 1 to 32767."},
      {{0, "five"}, "Please enter a positive float value."}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.words);
    const Judgement judgement = Judge(each.machine);
    ASSERT_FALSE(judgement.valid) << each.words;
    EXPECT_EQ(judgement.words, std::vector<std::string>{each.words});
  }
}

TEST(MachineOracle, CarriesRowsAlongWithTheMachine) {
  const TypedMachine lead;
  TypedMachine coarse = lead;
  coarse.resolution = "2";
  const ExpectedRow speed = AfterChange("Pn825", {"70.125", "4208"}, lead, coarse, 1, 99999999);
  EXPECT_EQ(speed.texts.front(), "70.13");
  EXPECT_EQ(speed.count, "421");
  coarse.time = "minutes";
  const ExpectedRow least = AfterChange("Pn827", {"2.000", "120"}, lead, coarse, 1, 99999999);
  EXPECT_EQ(least.texts.front(), "10.00");
  EXPECT_EQ(least.count, "1");
  const TypedMachine table{3, "360", "1", "1", "2", "deg"};
  EXPECT_EQ(AfterChange("Pn81B", {"99999.999", "99999999"}, lead, table, -9, 9).count, "35999");
  EXPECT_EQ(AfterChange("Pn81C", {"-99999.999", "-99999999"}, lead, table, -9, 9).count, "0");
}

TEST(MachineOracle, RoundsTextsDigitByDigit) {
  EXPECT_EQ(Rounded("1.005", 2), "1.01");
  EXPECT_EQ(Rounded("-99.995", 2), "-100.00");
  EXPECT_EQ(Rounded("-0.004", 2), "0.00");
  EXPECT_EQ(Rounded("0017", 0), "17");
  EXPECT_TRUE(Means("16.67", 0.06L, "1"));
  EXPECT_FALSE(Means("5", 0.06L, "1"));
}

}  // namespace
}  // namespace velmoor::walk
