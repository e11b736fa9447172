// Each case changes one line of a catalogue that is right and expects the refusal with its place.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "compiler/Checks.h"
#include "compiler/Outputs.h"
#include "compiler/Reader.h"

namespace velmoor::catalogue {
namespace {

std::vector<SourceFile> RealFiles() {
  std::vector<SourceFile> files;
  for (const auto& entry : std::filesystem::directory_iterator(VELMOOR_CATALOGUE_SOURCES)) {
    std::ifstream stream(entry.path(), std::ios::binary);
    files.push_back(
        {entry.path().filename().string(), {std::istreambuf_iterator<char>(stream), {}}});
  }
  std::ranges::sort(files, {}, &SourceFile::name);
  return files;
}

struct Compiled {
  Catalogue catalogue;
  std::vector<TableImage> tables;
  std::vector<std::string> problems;
};

Compiled Compile(const std::vector<SourceFile>& files) {
  Compiled result;
  Problems problems;
  result.catalogue = ReadCatalogue(files, problems);
  CheckCatalogue(result.catalogue, problems);
  if (problems.Lines().empty()) result.tables = CatalogueTables(result.catalogue, problems);
  result.problems = problems.Lines();
  return result;
}

// The real catalogue with `before` replaced by `after`, once.
std::vector<SourceFile> Changed(const std::string& name, const std::string& before,
                                const std::string& after) {
  std::vector<SourceFile> files = RealFiles();
  const auto file = std::ranges::find(files, name, &SourceFile::name);
  const std::size_t place = file == files.end() ? std::string::npos : file->text.find(before);
  if (place == std::string::npos) {
    ADD_FAILURE() << name << " does not hold: " << before;
  } else {
    file->text.replace(place, before.size(), after);
  }
  return files;
}

// The paragraphs of the data: "Pn100 Name" begins one.
std::size_t Paragraphs() {
  std::size_t count = 0;
  for (const SourceFile& file : RealFiles()) {
    if (!file.name.starts_with("parameters-")) continue;
    std::istringstream lines(file.text);
    for (std::string line; std::getline(lines, line);) count += line.starts_with("Pn") ? 1 : 0;
  }
  return count;
}

TEST(CatalogueCompiler, TheCatalogueIsAccepted) {
  const Compiled result = Compile(RealFiles());
  EXPECT_EQ(result.problems, std::vector<std::string>{});
  EXPECT_GE(Paragraphs(), 170U);
  EXPECT_EQ(result.catalogue.parameters.size(), Paragraphs());
}

struct Case {
  const char* file;
  const char* before;
  const char* after;
  const char* refusal;  // behind "file:line: "
};

constexpr Case kCases[] = {
    // form
    {"lists.txt", "  item 19200", "  thing 19200", "unknown field \"thing\""},
    {"lists.txt", "list baud_rate", "lost baud_rate", "unknown record \"lost\""},
    {"parameters-vklm.txt", "decimal 1 2000 40", "decimal 1 2000", "least, greatest and initial"},
    {"parameters-vklm.txt", "decimal 1 2000 40", "decimal 1 2x 40", "\"2x\" is no whole number"},
    {"parameters-vklm.txt", "Pn100 Speed", "Pn1G0 Speed", "\"Pn1G0\" is no name of a parameter"},
    {"digits.txt", "digit 3 3 Encoder", "digit 4 3 Encoder", "\"4\" is no digit from 0 to 3"},
    {"template.txt", "factors 1000 60 0.06", "factors 1000 60 0", "\"0\" is no number above 0"},
    {"alarms.txt", "error E5A1", "error 5A1", "no code of four hexadecimal digits"},
    // values
    {"parameters-vklm.txt", "decimal 1 2000 40", "decimal 1 2000 0", "outside the limits"},
    {"parameters-vklm.txt", "decimal 1 2000 40", "decimal 1 2147483648 40", "exceeds 32 bits"},
    {"parameters-vklm.txt", "motor   100 1 2000 50", "motor   100 60 50 55", "above the greatest"},
    {"parameters-vklm.txt", "motor   1500 1 1500 35", "motor   100 1 1500 35", "size comes twice"},
    {"parameters-vklm.txt", "Pn101 Speed loop integral time", "Pn100 Other",
     "\"Pn100\" comes twice"},
    {"parameters-vklm.txt", "Pn101 Speed loop integral time", "Pn101 Speed loop gain",
     "name \"Speed loop gain\" comes twice"},
    {"parameters-vklm.txt", "before tuning.", "before tuning", "the help is no sentence"},
    {"parameters-vklm.txt", "digits  basic_switches 0000", "digits  basic_switches 00E1",
     "would be read as a device error"},
    {"parameters-vklm.txt", "digits  tuning_switches 0010", "digits  tuning_switches 0013",
     "digit 0 may not be 3"},
    {"parameters-rx900.txt", "list    serial_protocol 1", "list    serial_protocol 8",
     "the initial item is not in the list"},
    {"parameters-rx900.txt", "list    baud_rate 0", "list    baud 0", "unknown list \"baud\""},
    {"parameters-rx900.txt", "  factory 0\n", "  factory x\n", "\"x\" is no whole number"},
    // lists and digits
    {"lists.txt", "  item Forward\n  item Reverse\n", "", "a list without items"},
    {"lists.txt", "  item Reverse", "  item For|ward", "empty or holds \"|\""},
    {"lists.txt", "  item Reverse", "  item Forward", "item \"Forward\" comes twice"},
    {"digits.txt", "digit 1 12 Control", "digit 1 15 Control", "digit 1 has 0 to 14 values"},
    {"digits.txt", "  choices 0 released | held\n", "  choices 0 released\n",
     "digit 0 needs 2 choices"},
    {"digits.txt", "  choices 0 released | held\n", "  choices 0 released |\n",
     "a value has no meaning"},
    {"parameters-vklm.txt", "group Basic", "group", "no group"},
    {"language-german.txt", "choices 1 Sekunden | Minuten", "choices 1 Sekunden",
     "another number of choices"},
    {"digits.txt", "digits panel_switches", "digits panel", "\"panel\" is used by no parameter"},
    // what the program relies on
    {"parameters-rx900.txt", "  unit    acceleration", "  unit    speed", "another kind or unit"},
    {"parameters-rx900.txt", "  list    switch_input 0\n  help    Fifth",
     "  decimal 0 2 0\n  help    Fifth", "another kind or unit"},
    {"parameters-rx900.txt", "Pn834 /SEL6", "Pn835 /SEL6", "Pn834 is missing"},
    {"parameters-rx900.txt", "category RX900", "category Card", "category RX900 belongs to"},
    {"parameters-rx900.txt", "99999999 0\n  hidden\n", "99999999 0\n",
     "exactly Pn829 to Pn830 are hidden"},
    {"parameters-vklm.txt", "decimal 50 2000 2000", "decimal 50 40000 2000",
     "must fit into 16 bits"},
    {"digits.txt", "digits torque_switches\n  digit 0 2", "digits torque_switches\n  digit 0 3",
     "Pn408 is a switch"},
    {"lists.txt", "  item dec only", "  item only dec", "needs the item \"dec only\" at place 2"},
    {"lists.txt", "  item Always Servo On\n", "", "needs the item \"Always Servo On\" at place 2"},
    {"lists.txt", "  item RS485 + Echoback + Checksum\n", "", "Pn800 needs 8 items"},
    {"lists.txt", "list axis_type\n  literal", "list axis_type", "the texts must be literal"},
    {"lists.txt", "  item Rotary(Signed Path)", "  item Signed", "begin with \"Rotary\""},
    // alarms
    {"alarms.txt", "alarm A.02", "alarm A.01", "display \"A.01\" comes twice"},
    {"alarms.txt", "alarm A.02", "alarm A.0x", "A. and two hexadecimal digits"},
    {"alarms.txt", "alarm A.02", "alarm A.02 E102", "belongs to A.9F, A.E0, A.E2 and A.EF"},
    {"alarms.txt", "alarm A.EF E1EF", "alarm A.EF", "belongs to A.9F, A.E0, A.E2 and A.EF"},
    {"alarms.txt", "error E012", "error EA12", "EA12 is no code of a device error"},
    {"alarms.txt", "alarm A.EF E1EF", "alarm A.EF E210", "the code comes twice"},
    // languages
    {"language-german.txt", "language 3", "language 2", "a number of its own, not 2"},
    {"language-german.txt", "parameter Pn101", "parameter Pn1FF", "there is no parameter Pn1FF"},
    {"language-german.txt", "list homing_direction", "list homing_method", "literal and has no"},
    {"language-german.txt", "parameter Pn81B Positive Grenze", "parameter Pn81B Grenze\n  unit Weg",
     "literal and has no"},
    // template
    {"template.txt", "gear 8192 5000", "gear 8192 5001", "gear terms do not follow"},
    {"template.txt", "factors 1000 60 0.06", "factors 1000 60 0.6", "factors do not follow"},
    {"template.txt", "selections 0001", "selections 0301", "no leadscrew's"},
    {"template.txt", "value Pn81E\n  set 3000", "value Pn81E\n  set 0", "outside its limits"},
    {"template.txt", "value Pn81F", "value Pn800", "only a decimal parameter"},
    {"template.txt", "misc testrunspeed\n  set 10", "misc testrunspeed\n  set 0", "testrunspeed"},
    {"template.txt", "misc homing offset", "misc offset", "needs a homing offset"},
};

TEST(CatalogueCompiler, RefusesInconsistentDataWithItsPlace) {
  for (const Case& expected : kCases) {
    const Compiled result = Compile(Changed(expected.file, expected.before, expected.after));
    const bool told = std::ranges::any_of(result.problems, [&](const std::string& problem) {
      return problem.find(expected.refusal) != std::string::npos &&
             problem.find(".txt:") + 5 < problem.size();
    });
    EXPECT_TRUE(told) << expected.after << "\nexpected: " << expected.refusal << "\ngot: "
                      << (result.problems.empty() ? "nothing" : result.problems.front());
  }
}

TEST(CatalogueCompiler, TellsFileAndLine) {
  const std::vector<SourceFile> files = {
      {"lists.txt", "# lists\n\nlist a\n  item x\n\n  wrong y\n"}};
  Problems problems;
  (void)ReadCatalogue(files, problems);
  ASSERT_EQ(problems.Lines().size(), 1U);
  EXPECT_EQ(problems.Lines().front(), "lists.txt:6: unknown field \"wrong\"");
}

TEST(CatalogueCompiler, FactoryValuesHaveOneFormAKind) {
  const std::string text = FactoryValues(Compile(RealFiles()).catalogue);
  for (const char* line : {
           "{\"000\", \"0000\", \"0000\", \"0FB1\", FactoryKind::nibble},\n",
           "{\"100\", \"40\", \"1\", \"2000\", FactoryKind::decimal},\n",
           "{\"800\", \"1\", \"0\", \"7\", FactoryKind::decimal},\n",
           "{\"81C\", \"-99999999\", \"-99999999\", \"99999999\", FactoryKind::decimal},\n",
           "{\"829\", \"00000000\", \"00000000\", \"99999999\", FactoryKind::text8},\n",
           "{\"82B\", \"0\", \"0\", \"32767\", FactoryKind::decimal},\n",
       }) {
    EXPECT_NE(text.find(line), std::string::npos) << line;
  }
  EXPECT_EQ(std::ranges::count(text, '\n'), std::ssize(Compile(RealFiles()).catalogue.parameters));
}

}  // namespace
}  // namespace velmoor::catalogue
