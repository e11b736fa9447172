// What a parameter's value may be, with the words for what it may not; and the conversions between
// units and counts.

#include "tools/ParameterRules.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/Numbers.h"
#include "project/data/UnitConversion.h"
#include "support/FakeProject.h"

namespace velmoor {
namespace {

using testing::FakeProject;
using Window = ParameterWindow;

constexpr const char* kRestored = "\rPrevious value has been restored!";

ParameterRow UnitRow() {
  ParameterRow row;
  row.name = "Pn81B";
  row.description = "Positive limit";
  row.value = "1.000";
  row.minimum = "-5000";
  row.maximum = "12500";
  row.unit = "distance";
  return row;
}

ParameterRow WholeRow() {
  ParameterRow row;
  row.name = "Pn100";
  row.description = "Speed loop gain";
  row.value = "40";
  row.minimum = "1";
  row.maximum = "2000";
  return row;
}

struct Refused {
  const char* text;
  std::string words;
};

TEST(ParameterRules, AUnitRowTakesNumbersInUnitsAndRoundsThem) {
  const FakeProject project(3);
  const struct {
    const char* typed;
    const char* taken;
  } kAccepted[] = {
      {"-5", "-5.000"},  {"12.5", "12.500"},   {" 1.2345 ", "1.235"}, {"+.5", "0.500"},
      {"1e1", "10.000"}, {"-0.0001", "0.000"}, {"7.", "7.000"},
  };
  for (const auto& entry : kAccepted) {
    const CellCheck check = CheckParameter(project, Window::properties, UnitRow(), entry.typed);
    EXPECT_TRUE(check.accepted) << entry.typed << ": " << check.words;
    EXPECT_EQ(check.text, entry.taken);
  }
}

TEST(ParameterRules, AUnitRowRefusesWithLimitsInTheUnitsOnShow) {
  const std::string format =
      std::string("Value must be a float number in the range from -5.000 and 12.500.") + kRestored;
  const auto range = [](const char* text) {
    return "The value " + std::string(text) +
           " is out of the allowable range!\rValue must range from -5 to 12.5.";
  };
  const std::string fortyDigits(40, '9');
  const Refused kRefused[] = {
      {"", ""},
      {" ", format},
      {"1,5", format},
      {"0x10", format},
      {"inf", format},
      {"nan", format},
      {"1 2", format},
      {"1\n2", format},
      {"--1", format},
      {"\xef\xbc\x95", format},
      {"12.501", range("12.501")},
      {"-5.0001", range("-5.0001")},
      {fortyDigits.c_str(), range(fortyDigits.c_str())},
  };
  const FakeProject project(3);
  for (const Refused& entry : kRefused) {
    for (const Window window : {Window::properties, Window::editor}) {
      const CellCheck check = CheckParameter(project, window, UnitRow(), entry.text);
      EXPECT_FALSE(check.accepted) << entry.text;
      EXPECT_EQ(check.words, entry.words) << entry.text;
    }
  }
  EXPECT_EQ(
      CheckParameter(FakeProject(1), Window::editor, UnitRow(), "x").words,
      "Value must be a float number in the range from -500.0 and 1250.0." + std::string(kRestored));
}

TEST(ParameterRules, APlainRowTakesWholeNumbersWithinItsLimits) {
  const FakeProject project;
  const std::string format =
      std::string("Value must be an integer in the range from 1 and 2000.") + kRestored;
  const auto range = [](const char* text) {
    return "The value " + std::string(text) +
           " is out of the allowable range!\rValue must range from 1 to 2000.";
  };
  for (const Window window : {Window::editor, Window::tuning}) {
    EXPECT_EQ(CheckParameter(project, window, WholeRow(), "1").text, "1");
    EXPECT_EQ(CheckParameter(project, window, WholeRow(), "2000").text, "2000");
    const Refused kRefused[] = {
        {"", ""},          {"1.5", format}, {"1e2", format},        {"4294967297", format},
        {"0", range("0")}, {"ten", format}, {"2001", range("2001")}};
    for (const Refused& entry : kRefused) {
      const CellCheck check = CheckParameter(project, window, WholeRow(), entry.text);
      EXPECT_FALSE(check.accepted) << entry.text;
      EXPECT_EQ(check.words, entry.words) << entry.text;
    }
  }
}

TEST(ParameterRules, ANumericRowWithoutAUnitIsNoRowOfThePropertiesWindow) {
  // Its limits cannot be told in units: an error, and no value is taken.
  EXPECT_THROW((void)CheckParameter(FakeProject(), Window::properties, WholeRow(), "40"),
               NumberError);
}

TEST(ParameterRules, TheTwoSerialRowsTakeOneItemAndTheWindowsSayItInTheirOwnWords) {
  const FakeProject project;
  ParameterRow row;
  row.list = "a|b|c";
  const struct {
    const char* name;
    Window window;
    const char* words;
  } kRows[] = {
      {"Pn800", Window::properties,
       "Existing version functions only with RS422 + Echoback (RS232 + Echoback)!"},
      {"Pn800", Window::editor, "Existing version functions only with RS422+Echo Back!"},
      {"Pn802", Window::properties, "Existing version functions only with OK=Answer is back!"},
      {"Pn802", Window::editor, "Existing version functions only with OK=Answer is back!"},
  };
  for (const auto& entry : kRows) {
    SCOPED_TRACE(&entry - kRows);
    row.name = entry.name;
    EXPECT_TRUE(CheckParameter(project, entry.window, row, "b").accepted);
    for (const char* const other : {"a", "c"}) {
      const CellCheck check = CheckParameter(project, entry.window, row, other);
      EXPECT_FALSE(check.accepted);
      EXPECT_EQ(check.words, std::string(entry.words) + "\rValue has been restored!");
    }
  }
  row.name = "Pn803";
  EXPECT_TRUE(CheckParameter(project, Window::editor, row, "a").accepted);
  EXPECT_FALSE(CheckParameter(project, Window::editor, row, "d").accepted);
}

class Digits : public ::testing::Test {
 protected:
  Digits() {
    definition.digits[0].use_bit = 2;
    definition.digits[1].use_bit = 12;
    definition.digits[3].use_bit = 5;
    row.name = "Pn002";
    row.value = "0100";
    row.nibble = &definition;
    row.fixedDigits = "0100";
  }
  std::string Words(const char* text) {
    return CheckParameter(project, Window::editor, row, text).words;
  }
  std::string Taken(const char* text) {
    return CheckParameter(project, Window::editor, row, text).text;
  }
  FakeProject project;
  NibbleDefinition definition;
  ParameterRow row;
};

TEST_F(Digits, AShortTextIsCompletedAndLettersBecomeLarge) {
  row.fixedDigits = "0000";
  row.value = "0000";
  EXPECT_EQ(Taken("1"), "0001");
  EXPECT_EQ(Taken("b1"), "00B1");
  EXPECT_EQ(Taken("40b0"), "40B0");
}

TEST_F(Digits, EachDigitKeepsToItsValues) {
  const std::string range =
      "Value has digit out of range!\rMinimum allowable value is 0000.\r"
      "Maximum allowable value is 40B1.";
  row.fixedDigits = "0000";
  EXPECT_EQ(Words("0002"), range) << "digit 0 takes two values";
  EXPECT_EQ(Words("00C0"), range);
  EXPECT_EQ(Words("0100"), range) << "digit 2 is not used";
  EXPECT_EQ(Words("5000"), range);
  EXPECT_EQ(Words("12345"), "The value 12345 is greater than 4 hexadecimals!  Please modify!");
  EXPECT_EQ(Words("00G0"), "The value 00G0 contains non-hexadecimal characters!  Please modify!");
  EXPECT_EQ(Words(""), "");
}

TEST_F(Digits, AFixedDigitMayBeTypedButNotChanged) {
  definition.digits[2].use_bit = 3;
  EXPECT_EQ(Taken("0101"), "0101");
  EXPECT_EQ(Words("0201"),
            "Value has uneditable digits!\rHexadecimal digit 2 is not modifiable!\r"
            "(Digit 0 is right most digit.)");
}

TEST(ParameterRules, TipsTellTheLimitsInUnits) {
  const FakeProject project(3);
  EXPECT_EQ(ParameterTip(project, UnitRow()),
            "Positive limit: Minimum value is -5.000; Maximum value is 12.500");
  ParameterRow list = UnitRow();
  list.list = "a|b";
  EXPECT_EQ(ParameterTip(project, list), "Positive limit");
  // The grid tells the machine's units behind the description, and others nowhere.
  EXPECT_EQ(LimitsWithUnit(project, UnitRow()), "Minimum value is -5.000; Maximum value is 12.500");
  ParameterRow whole = WholeRow();
  whole.unit = "0.01 ms";
  EXPECT_EQ(LimitsWithUnit(project, whole), "Unit: 0.01 ms.  " + LimitsInWords(project, whole));
}

TEST(ParameterRules, TheUnitsFollowTheDescription) {
  EXPECT_EQ(DescriptionInUnits(FakeProject(), "Travel (old)", "Distance"), "Travel (mm)");
  EXPECT_EQ(DescriptionInUnits(FakeProject(), "Frequency (low)", "Hz"), "Frequency (low)");
}

// ---- conversions

// The counts of a parameter's whole range, both ends first.
std::int32_t SomeCount(std::mt19937& random, int place) {
  if (place < 2) return place == 0 ? kMostCounts : -kMostCounts;
  const std::int32_t most = place % 2 == 0 ? kMostCounts : 200000;
  return std::uniform_int_distribution<std::int32_t>(-most, most)(random);
}

TEST(UnitConversion, WhatIsShownForACountComesBackAsTheSameText) {
  std::mt19937 random(4711);
  for (const char* const strPn : {"Pn81B", "Pn81C", "Pn81D", "Pn81E", "Pn81F", "Pn820", "Pn821",
                                  "Pn822", "Pn825", "Pn826", "Pn827", "Pn828"}) {
    ParameterRow row = UnitRow();
    row.name = strPn;
    row.minimum = "-99999999";
    row.maximum = "99999999";
    for (const char* const time : {"seconds", "minutes"}) {
      for (std::int16_t digits = 0; digits <= 6; ++digits) {
        const FakeProject project(digits, time);
        const double factor = FactorOf(project, UnitKindOf(strPn).value());
        for (int i = 0; i < 300; ++i) {
          const std::int32_t count = SomeCount(random, i);
          const std::string shown = CountsToUnits(count, factor, digits);
          const CellCheck check = CheckParameter(project, Window::editor, row, shown);
          ASSERT_EQ(check.text, shown) << check.words;
          const LimitedCounts back = UnitsToLimitedCounts(check.text, factor, digits);
          ASSERT_TRUE(back.valid);
          ASSERT_EQ(CountsToUnits(back.counts, factor, digits), shown)
              << strPn << ": " << count << " counts at " << digits << " digits, " << time;
        }
      }
    }
  }
}

TEST(UnitConversion, AValueBeyondTheCountsBecomesTheLimitAndIsShownAsSuch) {
  const struct {
    const char* text;
    std::int32_t counts;
    const char* shown;
  } kRows[] = {
      {"99999.999", 99999999, "99999.999"},
      {"100000", 99999999, "99999.999"},
      {"-99999.999", -99999999, "-99999.999"},
      {"-1e30", -99999999, "-99999.999"},
      {"0.0005", 0, "0.0005"},
      {"0.0015", 2, "0.0015"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    const LimitedCounts counts = UnitsToLimitedCounts(row.text, 1000, 3);
    EXPECT_TRUE(counts.valid);
    EXPECT_EQ(counts.counts, row.counts) << row.text;
    EXPECT_EQ(counts.text, row.shown) << row.text;
  }
  EXPECT_FALSE(UnitsToLimitedCounts("1,5", 1000, 3).valid);
  EXPECT_THROW((void)UnitsToLimitedCounts("1", 0, 3), NumberError);
}

}  // namespace
}  // namespace velmoor
