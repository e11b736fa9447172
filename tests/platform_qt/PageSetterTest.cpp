// Where the texts of a document stand on its pages, and the file that becomes of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "platform/qt/PageSetter.h"
#include "platform/qt/QtPdfMaker.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

PrintSection Table(int rows) {
  PrintSection section;
  section.title = "Index Table";
  section.headings = {"Row ID", "Label", "Position(mm)"};
  for (int row = 0; row < rows; ++row) {
    section.rows.push_back({{std::to_string(row), true},
                            {"step" + std::to_string(row)},
                            {row % 2 == 0 ? "A+" + std::to_string(row) + ".25" : "I-7", true}});
  }
  return section;
}

PrintDocument DocumentOf(std::vector<PrintSection> sections) {
  PrintDocument document;
  document.title = "line1";
  document.header = "/home/user/line1.spj";
  document.date = "November 24, 2026";
  document.time = "10:05 PM";
  document.page = "Page #";
  document.pages = "of #";
  document.font = "Arial";
  document.moment = {.year = 2026, .month = 11, .day = 24, .hour = 22, .minute = 5, .second = 0};
  document.sections = std::move(sections);
  return document;
}

PrintDocument WithFacts(PrintDocument document) {
  document.facts = {
      {"Machine", "Ball Screw"},
      {"What stands beside it for very long, so that it needs a second line of the half of "
       "a page, and then another one",
       "1.25 mm"}};
  document.signatures = {"Set up by", "Date"};
  return document;
}

// The texts of a page in one font, as they were set.
std::vector<PageText> TextsOf(const SetPage& page, PageFont font) {
  std::vector<PageText> texts;
  std::ranges::copy_if(page.texts, std::back_inserter(texts),
                       [font](const PageText& text) { return text.font == font; });
  return texts;
}
std::string Joined(const SetPage& page, PageFont font) {
  std::string joined;
  for (const PageText& text : TextsOf(page, font)) {
    joined += (joined.empty() ? "" : "|") + FromQt(text.text);
  }
  return joined;
}
bool Holds(const SetPage& page, const QString& text) {
  return std::ranges::any_of(page.texts, [&](const PageText& each) { return each.text == text; });
}

TEST(PageSetterTest, HeadingsAndFrameStandOnEachPage) {
  const PageSetter set(DocumentOf({Table(128)}), Paper::a4);
  ASSERT_EQ(set.Pages().size(), 3U);
  for (const SetPage& page : set.Pages()) {
    EXPECT_EQ(Joined(page, PageFont::heading), "Row ID|Label|Position(mm)");
  }
  EXPECT_EQ(Joined(set.Pages()[0], PageFont::title), "line1");
  EXPECT_EQ(Joined(set.Pages()[1], PageFont::title), "");
  EXPECT_EQ(Joined(set.Pages()[1], PageFont::note), "Index Table, continued");
  EXPECT_EQ(Joined(set.Pages()[2], PageFont::frame),
            "/home/user/line1.spj|November 24, 2026   10:05 PM|Page 3 of 3");
}

TEST(PageSetterTest, FactsAndLinesToBeSignedStandOnTheFirstPageAlone) {
  const PageSetter set(WithFacts(DocumentOf({Table(128)})), Paper::a4);
  const auto find = [&](const QString& text) {
    const auto& texts = set.Pages()[0].texts;
    return *std::ranges::find(texts, text, &PageText::text);
  };
  EXPECT_EQ(find("Machine").baseline.x(), find("Set up by").baseline.x());
  EXPECT_GT(find("Ball Screw").baseline.x(), find("Machine").baseline.x());
  EXPECT_GT(find("Set up by").baseline.y(), find("1.25 mm").baseline.y());
  EXPECT_GT(find("Index Table").baseline.y(), find("Date").baseline.y());
  EXPECT_FALSE(Holds(set.Pages()[1], "Machine") || Holds(set.Pages()[1], "Date"));
}

TEST(PageSetterTest, EachCellIsSetOnceWithinTheMarginsAndOverNoOther) {
  for (const Paper paper : {Paper::a4, Paper::letter}) {
    const PageSetter set(WithFacts(DocumentOf({Table(128)})), paper);
    const QSizeF size = PaperInDots(paper);
    std::multiset<QString> labels;
    for (const SetPage& page : set.Pages()) {
      for (const PageText& text : page.texts) {
        EXPECT_GE(text.baseline.x(), 800);
        EXPECT_LE(text.baseline.x() + text.width, size.width() - 800) << FromQt(text.text);
        EXPECT_LE(text.baseline.y(), size.height() - 500);
        if (text.text.startsWith("step")) labels.insert(text.text);
        for (const PageText& other : page.texts) {
          const bool sameLine = &other != &text && other.baseline.y() == text.baseline.y();
          if (!sameLine || other.baseline.x() < text.baseline.x()) continue;
          EXPECT_GT(other.baseline.x(), text.baseline.x() + text.width)
              << FromQt(text.text) << " runs into " << FromQt(other.text);
        }
      }
    }
    EXPECT_EQ(labels.size(), 128U);
    EXPECT_EQ(std::set(labels.begin(), labels.end()).size(), 128U);
  }
}

TEST(PageSetterTest, NumbersHaveTheirDecimalPointsBelowEachOther) {
  PrintSection section;
  section.headings = {"Value", "Units"};
  for (const char* const number : {"-99999.999", "0.5", "2048", "0FB1"}) {
    section.rows.push_back({{number, true}, {"mm"}});
  }
  const PageSetter set(DocumentOf({section}), Paper::a4);
  std::map<std::string, PageText> found;
  for (const PageText& text : TextsOf(set.Pages()[0], PageFont::cell)) {
    found.emplace(FromQt(text.text), text);
  }
  const double whole = found.at("2048").baseline.x() + found.at("2048").width;
  EXPECT_NEAR(found.at("0FB1").baseline.x() + found.at("0FB1").width, whole, 1);
  // ".999" is wider than ".5" by its two digits; both begin at the same place.
  EXPECT_LT(found.at("0.5").baseline.x(), whole);
  EXPECT_GT(found.at("0.5").baseline.x() + found.at("0.5").width, whole);
  EXPECT_LT(found.at("-99999.999").baseline.x(), found.at("2048").baseline.x());
}

TEST(PageSetterTest, ATextThatIsTooWideIsBrokenAndNothingOfItIsCut) {
  PrintSection section;
  section.headings = {"Parameter", "Description"};
  const std::string words = "RS422 + Echoback (RS232 + Echoback) and so on";
  std::string longText;
  for (int i = 0; i < 12; ++i) longText += (i == 0 ? "" : " ") + words;
  const std::string longWord(400, 'W');
  section.rows = {{{"Pn800"}, {longText}}, {{"Pn801"}, {longWord}}};
  PrintDocument document = DocumentOf({section});
  document.header = "/" + std::string(300, 'd') + "/line1.spj";
  const PageSetter set(document, Paper::letter);
  std::string joined, header;
  for (const PageText& text : set.Pages()[0].texts) {
    EXPECT_LE(text.baseline.x() + text.width, PaperInDots(Paper::letter).width() - 800);
    if (text.font == PageFont::frame) header += FromQt(text.text);
    if (text.font == PageFont::cell && !text.text.startsWith("Pn")) {
      joined += (joined.empty() || text.text.startsWith("W") ? "" : " ") + FromQt(text.text);
    }
  }
  EXPECT_EQ(joined, longText + longWord);
  EXPECT_EQ(header.substr(0, document.header.size()), document.header);
}

TEST(PageSetterTest, AHeadingNeverStandsAlone) {
  // Whatever the first table leaves of the page, the second begins with two rows or on the next.
  for (int rows = 30; rows < 60; ++rows) {
    PrintSection second = Table(9);
    second.title = "Jog Table";
    const PageSetter set(DocumentOf({Table(rows), second}), Paper::a4);
    const auto page = std::ranges::find_if(
        set.Pages(), [](const SetPage& each) { return Holds(each, "Jog Table"); });
    ASSERT_NE(page, set.Pages().end());
    const auto title = std::ranges::find(page->texts, QString("Jog Table"), &PageText::text);
    const auto below = std::ranges::count_if(page->texts, [&title](const PageText& text) {
      return text.text.startsWith("step") && text.baseline.y() > title->baseline.y();
    });
    EXPECT_GE(below, 2) << rows;
  }
}

TEST(PageSetterTest, EachSectionOpensItsPageAndOneWithoutRowsHasItsHeadings) {
  PrintSection empty = Table(0);
  empty.newPage = true;
  const PageSetter set(DocumentOf({Table(3), empty}), Paper::a4);
  ASSERT_EQ(set.Pages().size(), 2U);
  EXPECT_EQ(Joined(set.Pages()[1], PageFont::heading), "Row ID|Label|Position(mm)");
  EXPECT_EQ(Joined(set.Pages()[1], PageFont::cell), "");
}

TEST(PageSetterTest, NoTextIsSetInAFontOfPictures) {
  EXPECT_EQ(FamilyFor("Symbol"), "sans-serif");
  EXPECT_EQ(FamilyFor("Arial"), "Arial");
}

// The objects that the table at the end of the file leads to, in the order of their numbers.
std::vector<std::string> ObjectsOf(const std::string& pdf) {
  const std::size_t word = pdf.rfind("startxref\n");
  const auto table = static_cast<std::size_t>(std::stol(pdf.substr(word + 10)));
  EXPECT_EQ(pdf.substr(table, 5), "xref\n");
  std::vector<std::string> objects;
  for (std::size_t entry = pdf.find("65535 f", table) + 9; pdf[entry + 17] == 'n'; entry += 20) {
    const auto place = static_cast<std::size_t>(std::stol(pdf.substr(entry, 10)));
    objects.push_back(pdf.substr(place, pdf.find("obj", place) - place));
  }
  return objects;
}

class TimeZone {
 public:
  explicit TimeZone(const char* zone) : before_(qgetenv("TZ")) { Set(zone); }
  ~TimeZone() { Set(before_.isEmpty() ? nullptr : before_.constData()); }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;

 private:
  static void Set(const char* zone) {
    zone != nullptr ? qputenv("TZ", zone) : qunsetenv("TZ");
    tzset();
  }
  QByteArray before_;
};

TEST(QtPdfMakerTest, TheFileFollowsTheDocumentAndNothingElse) {
  QtPdfMaker maker;
  PrintDocument document = DocumentOf({Table(40)});
  const std::string first = maker.Pdf(document, Paper::a4);
  {
    const TimeZone elsewhere("Asia/Tokyo");
    EXPECT_EQ(maker.Pdf(document, Paper::a4), first);
  }
  {
    const TimeZone here("UTC");
    EXPECT_EQ(maker.Pdf(document, Paper::a4), first);
  }
  const std::vector<std::string> objects = ObjectsOf(first);
  EXPECT_GT(objects.size(), 10U);
  for (std::size_t i = 0; i < objects.size(); ++i) {
    EXPECT_EQ(objects[i], std::to_string(i + 1) + " 0 ");
  }
  EXPECT_EQ(maker.Pdf(document, Paper::a4), first);
  // Nothing of the clock is left; later engines date the change of the file too.
  EXPECT_NE(first.find("/CreationDate (D:20261124220500)\n"), std::string::npos);
  for (std::size_t at = first.find("(D:"); at != std::string::npos;
       at = first.find("(D:", at + 1)) {
    EXPECT_EQ(first.substr(at, 18), "(D:20261124220500)");
  }
  EXPECT_EQ(first.substr(first.size() - 6), "%%EOF\n");
  EXPECT_NE(maker.Pdf(document, Paper::letter), first);
  document.moment.minute = 6;
  EXPECT_NE(maker.Pdf(document, Paper::a4), first);
}

}  // namespace
}  // namespace velmoor::qt
