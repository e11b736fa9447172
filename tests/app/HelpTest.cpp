// The user guide: every window has its place in it, and every place and picture exists.

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "AppSession.h"
#include "app/HelpTopics.h"
#include "app/frmAbout.h"
#include "platform/HelpViewer.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;

const fs::path kGuide = fs::path(VELMOOR_SOURCES) / "docs/guide";

std::string ReadText(const fs::path& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Of a page, as links name them; "" is its top.
std::set<std::string> AnchorsOf(const std::string& page) {
  std::set<std::string> anchors{""};
  std::istringstream lines(ReadText(kGuide / page));
  for (std::string line; std::getline(lines, line);) {
    const std::size_t blank = line.find(' ');
    const bool heading =
        blank != std::string::npos && blank > 0 && line.find_first_not_of('#') == blank;
    if (heading) anchors.insert(HelpAnchor(line.substr(blank + 1)));
  }
  return anchors;
}

std::string FaultOfPlace(const std::string& page, const std::string& anchor) {
  if (!fs::is_regular_file(kGuide / page)) return "no page " + page;
  return AnchorsOf(page).contains(anchor) ? "" : page + " has no heading " + anchor;
}

TEST(HelpAnchorTest, KeepsLettersAndDigitsInLowerCase) {
  EXPECT_EQ(HelpAnchor("Serial ports on Linux"), "serial-ports-on-linux");
  EXPECT_EQ(HelpAnchor("Flexible I/O"), "flexible-io");
  EXPECT_EQ(HelpAnchor("\"in use\": another program"), "in-use-another-program");
}

TEST(GuideTest, EveryWindowHasAPlaceThatExists) {
  for (const auto& layout : fs::directory_iterator(fs::path(VELMOOR_SOURCES) / "src/layouts")) {
    if (layout.path().extension() != ".ui") continue;
    const std::string name = layout.path().stem();
    const auto topics = HelpTopics();
    EXPECT_TRUE(std::ranges::any_of(topics, [&](const auto& t) { return t.window == name; }))
        << name;
  }
  for (const HelpTopic& topic : HelpTopics()) {
    EXPECT_EQ(FaultOfPlace(std::string(topic.page), std::string(topic.anchor)), "") << topic.window;
  }
}

TEST(GuideTest, EveryLinkAndPictureOfAPageExistsAndEveryPageIsLinked) {
  static const std::regex link(R"((!?)\[[^\]]*\]\(([^)#]*)#?([^)]*)\))");
  std::set<std::string> linked{"index.md"}, pages;
  for (const auto& file : fs::directory_iterator(kGuide)) {
    if (file.path().extension() != ".md") continue;
    const std::string page = file.path().filename();
    pages.insert(page);
    const std::string text = ReadText(file.path());
    for (std::sregex_iterator at(text.begin(), text.end(), link), end; at != end; ++at) {
      const std::string target = (*at)[2];
      if ((*at)[1].length() > 0) {
        EXPECT_TRUE(fs::is_regular_file(kGuide / target)) << page << ": " << target;
        continue;
      }
      EXPECT_EQ(FaultOfPlace(target.empty() ? page : target, (*at)[3]), "") << "in " << page;
      if (page == "index.md") linked.insert(target);
    }
  }
  EXPECT_EQ(linked, pages);
}

class Help : public AppSession {
 protected:
  Texts Shown() { return std::exchange(data.helpViewer.shown, {}); }
};

TEST_F(Help, TheMenuTheKeyAndTheButtonOpenThePlaceOfTheirWindow) {
  ASSERT_TRUE(Start(data.MakeProject("line1.spj")));
  data.forms.PressHelpKey();
  Main().Choose("mnuHelpContents");
  EXPECT_EQ(Shown(), (Texts{"start.md#the-road-of-a-project", "index.md#"}));
  Main().Choose("mnuToolsIndexerZone");
  data.forms.Get("frmZone").Press("cmdHelp");
  Main().Choose("mnuToolsIndexerJog");
  data.forms.PressHelpKey();
  EXPECT_EQ(Shown(), (Texts{"tables.md#zone-table", "tables.md#jog-table"}));
}

TEST_F(Help, OneFormOfSeveralToolsIsToldApartByItsCaption) {
  struct Case {
    const char* command;
    const char* place;
  };
  constexpr Case kCases[] = {
      {"mnuToolsIndexerInterface", "parameters.md#interface"},
      {"mnuToolsIndexerFlexibleIO", "parameters.md#flexible-io"},
      {"mnuToolsIndexerOverTravel", "parameters.md#over-travel"},
      {"mnuToolsIndexerHoming", "parameters.md#homing"},
  };
  ASSERT_TRUE(Start(data.MakeProject("line1.spj")));
  for (const Case& test : kCases) {
    SCOPED_TRACE(test.command);
    Main().Choose(test.command);
    data.forms.PressHelpKey();
    EXPECT_EQ(Shown(), Texts{test.place});
  }
}

TEST_F(Help, IsThereWhileAModalWindowIsUp) {
  ASSERT_TRUE(Start(data.MakeProject("line1.spj")));
  data.forms.OnShow("frmMechanicalSystem", [this](headless::HeadlessForm& form) {
    form.Press("cmdHelp");
    EXPECT_EQ(Shown(), Texts{"machine.md#the-window"});
    form.Press("cmdCancel");
  });
  Main().Choose("mnuToolsMechanicalSystem");
}

TEST_F(Help, TheAboutBoxTellsAndCopiesTheVersions) {
  ASSERT_TRUE(Start(data.MakeProject("line1.spj")));
  data.world.foundations = [] { return std::vector<std::string>{"Qt 6.9.1", "Linux 7"}; };
  data.forms.OnShow("frmAbout", [this](headless::HeadlessForm& form) {
    EXPECT_EQ(form.label("lblVersions").Text(), "Velmoor " VELMOOR_VERSION "\rQt 6.9.1\rLinux 7");
    const std::string notices = form.label("lblNotices").Text();
    for (const char* const name : {"Qt 6", "SQLCipher", "SQLite", "OpenSSL", "GNU C++ library"}) {
      EXPECT_NE(notices.find(name), std::string::npos) << name;
    }
    form.Press("cmdCopy");
    EXPECT_EQ(data.clipboard.Text(), "Velmoor " VELMOOR_VERSION "\nQt 6.9.1\nLinux 7\n");
    form.Press("cmdCancel");
  });
  Main().Choose("mnuHelpAbout");
}

}  // namespace
}  // namespace velmoor
