#include "platform/Numbers.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

#include "platform/Rx900Utils.h"
#include "platform/Utility.h"

namespace velmoor {
namespace {

TEST(Rounding, CountsGoHalfToEven) {
  const std::pair<double, int> cases[] = {{0.5, 0},   {1.5, 2},   {2.5, 2},  {-0.5, 0},
                                          {-1.5, -2}, {-2.5, -2}, {2.51, 3}, {-2.49, -2}};
  for (const auto& [value, expected] : cases) EXPECT_EQ(ToInt32(value), expected) << value;
  EXPECT_DOUBLE_EQ(RoundToPlaces(157079.6326794897, 3), 157079.633);
  EXPECT_DOUBLE_EQ(RoundToPlaces(1e20, 22), 1e20);
}

TEST(Rounding, OverflowIsAnError) {
  EXPECT_EQ(ToInt32(2147483647.4), 2147483647);
  EXPECT_THROW((void)ToInt32(2147483647.5), NumberError);
  EXPECT_THROW((void)ToInt16(32768), NumberError);
  EXPECT_THROW((void)ToInt32(std::numeric_limits<double>::quiet_NaN()), NumberError);
  EXPECT_THROW((void)ToInt32(std::numeric_limits<double>::infinity()), NumberError);
  EXPECT_THROW((void)Narrow<std::int16_t>(40000), NumberError);
  EXPECT_THROW((void)RoundToPlaces(1, -1), NumberError);
}

TEST(FloatText, AcceptsDecimalFormsOnly) {
  for (const char* text : {"1", "-1.5", "+.5", "2.", " 7 ", "1E+16", "1e-3", "000.10"}) {
    EXPECT_TRUE(IsFloatText(text)) << text;
  }
  for (const char* text : {"", " ", ".", "-", "1,5", "1 2", "0x10", "&H1", "inf", "nan", "1e",
                           "1e+", "1e999", "--1", "1.2.3", "\xc3\xa9", "1'000"}) {
    EXPECT_FALSE(IsFloatText(text)) << text;
  }
}

// Too small a number is 0; too large a one is none, and must never become a command for 0.
TEST(FloatText, WhatNoDoubleHoldsIsToldByItsSize) {
  const std::string zeros(400, '0');
  for (const std::string& text : {std::string("1e-999"), "0." + zeros + "1", "-0." + zeros + "1e+5",
                                  "1" + zeros + "e-900", std::string("1e-99999999999999999999")}) {
    EXPECT_EQ(ParseFloat(text), 0.0) << text;
  }
  for (const std::string& text :
       {"1" + zeros, "-1" + zeros, "0." + zeros + "1e900", std::string("1e99999999999999999999")}) {
    EXPECT_FALSE(ParseFloat(text)) << text;
  }
}

TEST(WholeText, KnowsItsWidth) {
  std::string error;
  EXPECT_TRUE(IsLongText("2147483647", error));
  EXPECT_FALSE(IsLongText("2147483648", error));
  EXPECT_EQ(error, "Value must be an integer!");
  EXPECT_TRUE(IsIntegerText("-32768", error));
  EXPECT_EQ(error, "");
  EXPECT_FALSE(IsIntegerText("32768", error));
  EXPECT_TRUE(IsWholeNumberText("99999999999999999999999"));
  EXPECT_FALSE(IsWholeNumberText("1.0"));
  EXPECT_FALSE(ParseWhole("+-1"));
  EXPECT_FALSE(
      ParseWhole("1 "
                 "2"));
}

TEST(FixedDecimals, RoundInDecimalAwayFromZero) {
  const std::tuple<const char*, int, const char*> cases[] = {{"1.005", 2, "1.01"},
                                                             {"-1.005", 2, "-1.01"},
                                                             {"0.004", 2, "0.00"},
                                                             {"-0.004", 2, "0.00"},
                                                             {"9.995", 2, "10.00"},
                                                             {"12", 3, "12.000"},
                                                             {"1E+16", 0, "10000000000000000"},
                                                             {"0.0005", 3, "0.001"},
                                                             {"0.05", 0, "0"},
                                                             {"0.5", 0, "1"},
                                                             {"-12.3456", 3, "-12.346"},
                                                             {"1e-3", 4, "0.0010"},
                                                             {"99999999", 0, "99999999"}};
  for (const auto& [text, places, expected] : cases) {
    EXPECT_EQ(FixedText(std::string_view(text), places), expected) << text << " to " << places;
  }
  EXPECT_THROW((void)FixedText(std::string_view("abc"), 2), NumberError);
  EXPECT_EQ(FixedText(2.675, 2), "2.68");
}

TEST(NumberTexts, NeverUseAnExponent) {
  EXPECT_EQ(NumberText(0.1f), "0.1");
  EXPECT_EQ(NumberText(1e16), "10000000000000000");
  EXPECT_EQ(NumberText(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(NumberText(-0.0), "0");
  EXPECT_EQ(NumberText(1e-7), "0.0000001");
  EXPECT_EQ(NumberText(157079.633), "157079.633");
  EXPECT_EQ(NumberText(7.5), "7.5");
}

TEST(NumberTexts, IgnoreACommaLocale) {
  const char* const before = std::setlocale(LC_ALL, nullptr);
  const std::string saved = before != nullptr ? before : "C";
  // Without such a locale installed the test still runs, in the locale that is there.
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  EXPECT_EQ(NumberText(1.5), "1.5");
  EXPECT_EQ(FixedText(1.5, 2), "1.50");
  EXPECT_EQ(ParseFloat("1.5"), 1.5);
  EXPECT_FALSE(ParseFloat("1,5"));
  std::setlocale(LC_ALL, saved.c_str());
}

TEST(CardFormats, FloatsAreSixteenDecimalDigits) {
  const StandardRx900Utils utils;
  EXPECT_EQ(utils.FloatToDec(5.0f), "0000001084227584");
  for (const float value : {5.0f, 0.1f, 28.0f, 1e16f, 50.0f, 3.4028235e38f, 0.0f}) {
    EXPECT_EQ(utils.DecToFloat(utils.FloatToDec(value)), value);
  }
  for (const char* text : {"", "123", "00000010842275x4", "9999999999999999", "0000002139095040"}) {
    EXPECT_EQ(utils.DecToFloat(text), 0.0f) << text;
  }
}

TEST(CardFormats, ChecksumDependsOnEveryPart) {
  const StandardRx900Utils utils;
  const std::string base = utils.MechSystemChecksum(1, 1, 3, 5.0f, "0001");
  EXPECT_EQ(base.size(), 16u);
  EXPECT_EQ(base.find_first_not_of("0123456789"), std::string::npos);
  EXPECT_EQ(utils.MechSystemChecksum(0, 0, 0, 0.0f, "0000"), "0000000000000000");
  EXPECT_NE(utils.MechSystemChecksum(0, 0, 0, 0.0f, "0001"), "0000000000000000");
  EXPECT_NE(base, utils.MechSystemChecksum(2, 1, 3, 5.0f, "0001"));
  EXPECT_NE(base, utils.MechSystemChecksum(1, 2, 3, 5.0f, "0001"));
  EXPECT_NE(base, utils.MechSystemChecksum(1, 1, 2, 5.0f, "0001"));
  EXPECT_NE(base, utils.MechSystemChecksum(1, 1, 3, 5.5f, "0001"));
  EXPECT_NE(base, utils.MechSystemChecksum(1, 1, 3, 5.0f, "0011"));
}

}  // namespace
}  // namespace velmoor
