// Texts that somebody else has written, on their way to a terminal, a window, a log, a spreadsheet.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Bounds.h"
#include "platform/Csv.h"
#include "platform/VisibleText.h"

namespace velmoor {
namespace {

using namespace std::string_literals;

TEST(VisibleText, NothingThatSteersPasses) {
  const std::pair<std::string, std::string> cases[] = {
      {"plain, µm and 漢", "plain, µm and 漢"},
      {"\x1b[2J", "\\x1b[2J"},
      {"a\r\nb\tc\x7f", "a  b\\x09c\\x7f"},
      {"zero\0end"s, "zero\\x00end"},
      {"\xc2\x9b"
       "31m",
       "\\x9b31m"},  // the introducer of 8-bit terminals, as UTF-8
      {"\x9b"
       "31m",
       "\\x9b31m"},  // and bare
      {"\xe2\x80\xae"
       "cod.exe",
       "\\u202e"
       "cod.exe"},  // what follows is written backwards
      {"\xe2\x80\xa8", "\\u2028"},
      {"\xc0\x9b\xed\xa0\x80", "\\xc0\\x9b\\xed\\xa0\\x80"},  // longer than needed, half a pair
      {"cut \xe2\x82", "cut \\xe2\\x82"},
  };
  for (const auto& [text, shown] : cases) {
    EXPECT_EQ(VisibleText(text), shown);
    EXPECT_EQ(VisibleText(VisibleText(text)), shown) << "and no more the second time";
  }
  EXPECT_EQ(VisibleLines("a\rb\r\nc\n\td\x1b"), "a\nb\nc\n\td\\x1b");
}

TEST(VisibleText, IsCutBetweenCharacters) {
  EXPECT_EQ(Shortened("abc", 3), "abc");
  EXPECT_EQ(Shortened("abcd", 3), "abc...");
  EXPECT_EQ(Shortened("ab\xc2\xb5m", 3), "ab...");
}

TEST(Csv, WhatLooksLikeAFormulaIsATextThere) {
  const std::pair<std::string, std::string> cases[] = {
      {"=1+1", "'=1+1"},
      {"+INFINITE", "'+INFINITE"},
      {"-INFINITE", "'-INFINITE"},
      {"@SUM(A1)", "'@SUM(A1)"},
      {"=HYPERLINK(\"x\",1)", "\"'=HYPERLINK(\"\"x\"\",1)\""},
      {"a;=1", "\"a;=1\""},
      {"'=1", "''=1"},
      {"'s", "'s"},
      {"-5", "-5"},
      {"+12.500", "+12.500"},
      {"-1e3", "-1e3"},
      {"-", "-"},
      {"A+40.000", "A+40.000"},
      {"\t=1", "\\x09=1"},
  };
  for (const auto& [field, written] : cases) {
    const std::string line = CsvLine({field, "end"});
    EXPECT_EQ(line, written + ",end\n");
    EXPECT_EQ(ParseCsv(line), std::vector<CsvRow>({{VisibleText(field), "end"}}));
  }
}

// What reading `text` is refused with.
std::string RefusalOf(const std::string& text) {
  try {
    return "read: " + std::to_string(ParseCsv(text).size()) + " rows";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

TEST(Csv, HasBounds) {
  const std::string fields(bounds::kCsvFields - 1, ',');
  std::string rows;
  for (std::size_t i = 0; i < bounds::kCsvRows; ++i) rows += "1\n";
  const std::pair<std::string, std::string> cases[] = {
      {fields, "read: 1 rows"},
      {"1\n" + fields + ",", "Line 2: a row has too many fields"},
      {std::string(5'000'000, ','), "Line 1: a row has too many fields"},
      {std::string(bounds::kCsvLine, 'x'), "read: 1 rows"},
      {std::string(bounds::kCsvLine + 1, 'x'), "Line 1: a row is too long"},
      {"1\n\"" + std::string(5'000'000, '\n'), "Line 2: a quote is never closed"},
      {rows, "read: 1000 rows"},
      {rows + "1", "The text has more rows than any table: 1000 at most"},
      {std::string(5000, '\n'), "The text has more rows than any table: 1000 at most"},
  };
  for (const auto& [text, result] : cases) EXPECT_EQ(RefusalOf(text), result);
}

}  // namespace
}  // namespace velmoor
