// velmoorctl report.

#include <cstdlib>

#include "Velmoorctl.h"

namespace velmoor {
namespace {

class ReportCommand : public Velmoorctl {
 protected:
  ReportCommand() : pdf(world.folder.At("a.pdf")) {
    unsetenv("SOURCE_DATE_EPOCH");
    EXPECT_EQ(Run({"new", project}), 0);
  }
  ~ReportCommand() override { unsetenv("SOURCE_DATE_EPOCH"); }

  int RunReport(std::vector<std::string> more) {
    more.insert(more.begin(), {"report", project, "--out", pdf});
    return Run(more);
  }
  std::string Names() {
    std::string names;
    for (const PrintSection& section : world.pdf.documents.back().sections) {
      names += (names.empty() ? "" : ",") + section.title;
    }
    return names;
  }
  std::string FirstError() { return err.str().substr(0, err.str().find('\n')); }

  std::string pdf;
};

TEST_F(ReportCommand, WritesTheWholeProjectOrTheSectionsNamed) {
  EXPECT_EQ(RunReport({}), 0) << err.str();
  EXPECT_EQ(world.files.ReadAll(pdf), "%PDF of a");
  EXPECT_EQ(world.pdf.documents.back().sections.size(), 11U);
  // Whatever their order here, the document has its own.
  EXPECT_EQ(RunReport({"--sections", "zone, Index,communications", "--yes"}), 0) << err.str();
  EXPECT_EQ(Names(), "Communications Settings,Index Table,Zone Table");
  EXPECT_EQ(world.pdf.papers.back(), Paper::a4);
  EXPECT_EQ(RunReport({"--paper", "letter", "--yes"}), 0);
  EXPECT_EQ(world.pdf.papers.back(), Paper::letter);
}

TEST_F(ReportCommand, OverwritesNothingUnasked) {
  world.files.WriteDurably(pdf, "old");
  EXPECT_EQ(RunReport({}), 2);
  EXPECT_EQ(FirstError(), "This overwrites data: say --yes to agree");
  EXPECT_EQ(world.files.ReadAll(pdf), "old");
  const std::string bytes = world.files.ReadAll(project);
  pdf = project;
  EXPECT_EQ(RunReport({"--yes"}), 1);
  EXPECT_EQ(err.str(), "The report would overwrite the project!\n");
  EXPECT_EQ(world.files.ReadAll(project), bytes);
}

TEST_F(ReportCommand, TellsWhatIsWrongWithItsWords) {
  struct Case {
    std::vector<std::string> words;
    const char* error;
  };
  const Case cases[] = {
      {{"report", project}, "Option --out is missing"},
      {{"report", project, "--out", pdf, "--sections", "index,zones"},
       "'zones' is no section: --sections takes communications, system, parameters, tuning, "
       "interface, flexibleio, overtravel, homing, index, jog, zone, alarm"},
      {{"report", project, "--out", pdf, "--sections", ""},
       "'' is no section: --sections takes communications, system, parameters, tuning, interface, "
       "flexibleio, overtravel, homing, index, jog, zone, alarm"},
      {{"report", project, "--out", pdf, "--paper", "a5"},
       "'a5' is no paper: --paper takes a4 or letter"}};
  for (const Case& wrong : cases) {
    SCOPED_TRACE(wrong.error);
    EXPECT_EQ(Run(wrong.words), 2);
    EXPECT_EQ(FirstError(), wrong.error);
  }
  setenv("SOURCE_DATE_EPOCH", "now", 1);
  EXPECT_EQ(RunReport({}), 2);
  EXPECT_EQ(FirstError(), "SOURCE_DATE_EPOCH is no number of seconds since 1970");
  EXPECT_FALSE(world.files.Exists(pdf));
}

TEST_F(ReportCommand, FailsOnAMissingProjectAndAPlaceThatCannotBeWritten) {
  EXPECT_EQ(Run({"report", world.folder.At("none.spj"), "--out", pdf}), 1);
  EXPECT_FALSE(world.files.Exists(pdf));
  pdf = world.folder.At("nowhere/a.pdf");
  EXPECT_EQ(RunReport({}), 1);
  EXPECT_NE(err.str().find("nowhere"), std::string::npos) << err.str();
}

TEST_F(ReportCommand, TakesItsMomentFromTheEnvironment) {
  setenv("SOURCE_DATE_EPOCH", "1795557900", 1);  // 2026-11-24 22:05:00
  ASSERT_EQ(RunReport({}), 0) << err.str();
  EXPECT_EQ(world.pdf.documents.back().date, "November 24, 2026");
  EXPECT_EQ(world.pdf.documents.back().time, "10:05 PM");
}

// The real program and the module that it loads.
TEST_F(ReportCommand, MakesTheSameBytesInEveryProcess) {
  setenv("SOURCE_DATE_EPOCH", "1795557900", 1);
  const auto make = [this](const std::string& name) {
    const std::string path = world.folder.At(name);
    const std::string command = std::string(VELMOORCTL) + " report " + project + " --out " + path;
    EXPECT_EQ(std::system(command.c_str()), 0);
    return world.files.ReadAll(path);
  };
  const std::string first = make("1.pdf");
  EXPECT_EQ(first.substr(0, 5), "%PDF-");
  EXPECT_NE(first.find("/CreationDate (D:20261124220500)"), std::string::npos);
  EXPECT_EQ(make("2.pdf"), first);
  EXPECT_EQ(make("3.pdf"), first);
}

}  // namespace
}  // namespace velmoor
