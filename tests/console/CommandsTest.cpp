#include <algorithm>
#include <fstream>
#include <regex>

#include "Velmoorctl.h"
#include "platform/Bounds.h"
#include "platform/Numbers.h"
#include "platform/sqlcipher/Engine.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

TEST_F(Velmoorctl, MakesAProjectOnceAndNeverOverOne) {
  EXPECT_EQ(Run({"new", project}), 0) << err.str();
  const std::string bytes = world.files.ReadAll(project);
  EXPECT_EQ(Run({"new", project}), 1);
  EXPECT_EQ(err.str(), "Project name already exists!  Cannot create new project!\n");
  EXPECT_EQ(world.files.ReadAll(project), bytes);
}

TEST_F(Velmoorctl, ImportsAndShowsATable) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string csv =
      WriteFile("a.csv", std::string(kIndexHead) + "go,I+1,10,-,1,:::::,IT0,1,END\n");
  EXPECT_EQ(Run({"import", project, "index", csv}), 0) << err.str();
  EXPECT_EQ(Run({"show", project, "index"}), 0) << err.str();
  EXPECT_EQ(out.str().substr(0, 118),
            "step,label,position,speed,rdst,rspd,pout,event,loop,next,dirty\n"
            "1,go,I+1.000,10.000,-,1.000,:::::,IT0,1,END,1\n"
            "2,,,,,,,,");
  EXPECT_EQ(err.str(), "");
  EXPECT_EQ(Run({"show", project, "zone"}), 0);
  EXPECT_EQ(out.str().substr(0, 31), "zone,lower,upper,dirty\n0,,,0\n1,");
}

TEST_F(Velmoorctl, PrintsTablesAsJsonWithNumbersMarksAndTexts) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string csv =
      WriteFile("a.csv", std::string(kIndexHead) + "\"a,\"\"ü\",I+1,10.5,-,1,:::::,IT0,7,END\n");
  ASSERT_EQ(Run({"import", project, "index", csv}), 0) << err.str();
  ASSERT_EQ(Run({"show", project, "index", "--json"}), 0) << err.str();
  EXPECT_TRUE(out.str().starts_with(
      "[\n{\"step\":1,\"label\":\"a,\\\"ü\",\"position\":\"I+1.000\",\"speed\":10.5,\"rdst\":\"-\","
      "\"rspd\":1.0,\"pout\":\":::::\",\"event\":\"IT0\",\"loop\":7,\"next\":\"END\",\"dirty\":"
      "true},\n"
      "{\"step\":2,\"label\":\"\",\"position\":\"\",\"speed\":null,"))
      << out.str();
  EXPECT_TRUE(out.str().ends_with("\"dirty\":false}\n]\n"));
  const struct {
    std::vector<std::string> words;
    const char* text;
  } cases[] = {
      {{"show", project, "parameters"},
       "{\"pn\":\"Pn100\",\"description\":\"Speed loop gain\","
       "\"value\":\"40\",\"unit\":\"Hz\",\"minimum\":\"1\","},
      {{"show", project, "system"}, "{\"name\":\"measure\",\"value\":\"5\",\"unit\":\"mm\"}"},
      {{"check", project}, "[]\n"},
      {{"scan", "--port", "COM1"}, "{\"axis\":\"0\",\"baud\":9600}"},
      {{"alarms", "--port", "COM1"}, "{\"entry\":\"now\",\"display\":"},
      {{"info", "--port", "COM1"}, "{\"name\":\"Axis\",\"value\":\"0\"}"},
      {{"monitor", "--port", "COM1", "--count", "1", "--items", "PUN,STS"},
       ",\"PUN\":0,\"STS\":\""},
      {{"diff", project, JoinPath(world.world.appDirectory, "Velmoor.spt")},
       "\"field\":\"ControllerSpeed\",\"first\":\"630\""},
  };
  for (const auto& each : cases) {
    std::vector<std::string> words = each.words;
    words.emplace_back("--json");
    (void)Run(words);
    EXPECT_NE(out.str().find(each.text), std::string::npos) << words[0] << out.str() << err.str();
    EXPECT_TRUE(out.str().starts_with("[") && out.str().ends_with("]\n")) << words[0];
  }
}

TEST_F(Velmoorctl, ABadImportNamesEachCellAndChangesNothing) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string bytes = world.files.ReadAll(project);
  const std::string csv =
      WriteFile("a.csv", std::string(kIndexHead) +
                             "go,I+1,fast,-,1,:::::,IT0,1,END\nx,-,1,-,1,:::::,IT0,0,END\n");
  EXPECT_EQ(Run({"import", project, "index", csv}), 1);
  EXPECT_EQ(err.str(),
            "Row 1, column speed: Speed value must be numeric!\n"
            "Row 2, column loop: Loop value must be a positive integer!\n");
  EXPECT_EQ(world.files.ReadAll(project), bytes);
  EXPECT_EQ(Run({"import", project, "index", world.folder.At("none.csv")}), 1);
  EXPECT_NE(err.str().find("none.csv"), std::string::npos);
}

TEST_F(Velmoorctl, ASettingThatCannotBeReadIsARemarkAndNoFailure) {
  ASSERT_EQ(Run({"new", project}), 0);
  {
    const auto database = OpenForWriting(project);
    const auto misc = database->OpenTable(schema::Misc::kTable);
    misc->FindFirst(schema::Misc::kPropertyName, schema::Misc::kTestRunSpeed);
    misc->Edit();
    misc->Set(schema::Misc::kValue, "quick");
    misc->Update();
    database->Commit();
  }
  world.databases.Release(project);
  EXPECT_EQ(Run({"set", project, "Pn100=55"}), 0);
  EXPECT_EQ(err.str(), "clsServoJog.ReadToDB: Type mismatch: 'quick' is not a number\n");
  EXPECT_EQ(Run({"set", project, "Pn100=65000"}), 1);
}

TEST_F(Velmoorctl, TellsWhyAProjectCannotBeOpened) {
  EXPECT_EQ(Run({"show", project, "index"}), 1);
  EXPECT_EQ(err.str(), "Project file a.spj cannot be found at " + project +
                           "!\nProject 'a.spj' cannot be opened.\n");
  WriteFile("a.spj", "no database");
  EXPECT_EQ(Run({"show", project, "index"}), 1);
  EXPECT_EQ(err.str(),
            "Error reading databases!\nthe file is damaged or incomplete\nProject 'a.spj' cannot "
            "be opened.\n");
}

// A project from before there was such a parameter.
TEST_F(Velmoorctl, AParameterThatIsNewComesWithItsLimitsAndIsNoFailure) {
  ASSERT_EQ(Run({"new", project}), 0);
  sqlcipher::Connection(project, sqlcipher::OpenMode::create, "nurvex")
      .Execute("DELETE FROM tblParameters WHERE pn='Pn100'");
  EXPECT_EQ(Run({"show", project, "parameters"}), 0);
  EXPECT_NE(out.str().find("\nPn100,Speed loop gain,40,Hz,1,2000,40,1\n"), std::string::npos);
  EXPECT_TRUE(err.str().ends_with("marked to download:\nParameters: Pn100\n")) << err.str();
  EXPECT_EQ(Run({"set", project, "Pn100=2001"}), 1);
  EXPECT_EQ(Run({"set", project, "Pn100=2000"}), 0) << err.str();
}

TEST_F(Velmoorctl, ReadsAProjectOfALaterVersionByAnOptionAlone) {
  const std::string other = world.folder.At("b.spj");
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"new", other}), 0);
  {
    sqlcipher::Connection tool(project, sqlcipher::OpenMode::create, "nurvex");
    tool.Execute("UPDATE tblMisc SET value='3' WHERE PropertyName='format'");
    tool.Execute("ALTER TABLE tblZone ADD COLUMN Hysteresis TEXT");
  }
  const std::string bytes = world.files.ReadAll(project);
  const std::string pdf = world.folder.At("a.pdf");
  const std::string hint = "show, export, report, compare and diff read it with --read-only.\n";
  const std::vector<std::vector<std::string>> reading = {{"show", project, "zone"},
                                                         {"export", project},
                                                         {"diff", other, project},
                                                         {"report", project, "--out", pdf},
                                                         {"compare", project, "--port", "x"}};
  for (std::vector<std::string> words : reading) {
    SCOPED_TRACE(words.front());
    EXPECT_EQ(Run(words), 1);
    EXPECT_TRUE(err.str().starts_with("Project a.spj was made by a newer version of Velmoor!\n"));
    EXPECT_TRUE(err.str().ends_with(hint)) << err.str();
    EXPECT_EQ(out.str(), "");
    words.emplace_back("--read-only");
    const bool differs = words.front() == "compare";
    EXPECT_EQ(Run(words), differs ? 1 : 0) << err.str();
    EXPECT_EQ(out.str().empty(), words.front() == "report");
  }
  EXPECT_TRUE(world.files.Exists(pdf));
  EXPECT_EQ(Run({"set", project, "Pn81B=1"}), 1);
  EXPECT_TRUE(err.str().ends_with(hint)) << err.str();
  EXPECT_EQ(Run({"set", project, "Pn81B=1", "--read-only"}), 2);
  EXPECT_EQ(world.files.ReadAll(project), bytes);
}

// What would crash the engine, change a second parameter, or swallow the first, is not even read.
TEST_F(Velmoorctl, RefusesAProjectThatHoldsMoreThanAProject) {
  const struct {
    std::vector<std::string> planted;
    const char* name;
  } cases[] = {
      {{"DROP TABLE tblMisc",
        "CREATE VIEW tblMisc AS SELECT rtreenode(1, x'0000ffff') AS value, 'x' AS PropertyName"},
       "tblMisc"},
      {{"CREATE TRIGGER also AFTER UPDATE ON tblParameters WHEN new.pn='Pn100' BEGIN UPDATE "
        "tblParameters SET value='777', ControllerValue='777' WHERE pn='Pn101'; END"},
       "also"},
      {{"CREATE TRIGGER never BEFORE UPDATE ON tblParameters BEGIN SELECT RAISE(IGNORE); END"},
       "never"}};
  for (const auto& [planted, name] : cases) {
    SCOPED_TRACE(name);
    world.databases.Release(project);
    world.files.Remove(project);
    ASSERT_EQ(Run({"new", project}), 0);
    {
      sqlcipher::Connection tool(project, sqlcipher::OpenMode::create, "nurvex");
      for (const std::string& statement : planted) tool.Execute(statement);
    }
    const std::string bytes = world.files.ReadAll(project);
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"show", project, "index"}, {"set", project, "Pn100=50"}}) {
      EXPECT_EQ(Run(words), 1);
      EXPECT_EQ(err.str(), std::string("Error reading databases!\nthe file holds \"") + name +
                               "\", which is no plain table\nProject 'a.spj' cannot be opened.\n");
      EXPECT_EQ(out.str(), "");
    }
    EXPECT_EQ(world.files.ReadAll(project), bytes);
  }
}

TEST_F(Velmoorctl, RefusesWhatItDoesNotUnderstand) {
  const std::vector<std::vector<std::string>> lines = {
      {},
      {"dance"},
      {"show", project},
      {"show", project, "song"},
      {"download", project, "--port", "x"},
      {"download", project, "--yes"},
      {"info", "--port"},
      {"info", "--port", "x", "--axis", "G"},
      {"new", project, "--speed", "9"},
      {"send", "0PRM800"},
      {"send", "", "--port", "x"},
      {"send", "1PRM800", "--port", "x"},
      {"send", "0PUN\r1PRM800=2", "--port", "x"},
      {"new", ""},
      {"show", project, "system", "--motor-size", "99999999999"},
      {"show", project, "system", "--motor-size", "-400"},
      {"set", project, "n1=1", "n1=2"},
      {"set", project, "n1=1", "Pn100=50"},
      {"set", project, "Pn100=50", "n1=1"},
      {"monitor", "--port", "x"},
      {"monitor", "--port", "x", "--count", "0"},
      {"monitor", "--port", "x", "--count", "1", "--items", "PUN,FOO"}};
  for (const auto& words : lines) {
    SCOPED_TRACE(testing::PrintToString(words));
    EXPECT_EQ(Run(words), 2) << err.str();
    // The words are still on the screen.
    EXPECT_EQ(std::ranges::count(err.str(), '\n'), 2) << err.str();
  }
  EXPECT_TRUE(line.Amplifier('0')->Journal().empty());
  EXPECT_EQ(Run({"--version"}), 0);
  EXPECT_TRUE(out.str().starts_with("velmoorctl ")) << out.str();
  EXPECT_EQ(Run({"--help"}), 0);
  EXPECT_NE(out.str().find("velmoorctl download FILE"), std::string::npos);
}

// Stands for a value in the help.
bool IsPlaceholder(const std::string& word) {
  std::string names;
  for (const OptionEntry& option : ConsoleTable().options) names += option.value.name + ' ';
  for (const CommandEntry& command : ConsoleTable().commands) {
    for (const ArgumentEntry& argument : command.arguments) names += argument.value.name + ' ';
  }
  return std::regex_search(names, std::regex("\\b" + word + "\\b"));
}

// What nobody remembers to write down a second time.
TEST_F(Velmoorctl, ManualAndCompletionKnowWhatTheHelpTells) {
  ASSERT_EQ(Run({"--help"}), 0);
  std::string help = out.str();
  const auto read = [this](const std::string& name) {
    return std::regex_replace(world.files.ReadAll(std::string(VELMOOR_SOURCE) + "/" + name),
                              std::regex(R"(\\-)"), "-");
  };
  const std::string manual = read("packaging/man/velmoorctl.1");
  const std::string completion = CompletionScript(ConsoleTable(), "bash");
  const std::string guide = read("docs/guide/command-line.md");
  // Each command stands at the beginning of a line, behind the program's name.
  const std::regex words("velmoorctl ([a-z]+)|(--[a-z-]+)|\\b([A-Z]{3,4}[12]?)\\b");
  int told = 0;
  for (std::sregex_iterator at(help.begin(), help.end(), words), end; at != end; ++at) {
    const std::string word = (*at)[1].matched ? (*at)[1] : (*at)[0];
    if (IsPlaceholder(word) || word == "PDF" || word == "CSV" || word == "JSON") continue;
    ++told;
    EXPECT_NE(manual.find(word), std::string::npos) << word;
    EXPECT_NE(completion.find(word), std::string::npos) << word;
    if ((*at)[1].matched) {
      EXPECT_NE(guide.find("velmoorctl " + word), std::string::npos) << word;
    }
  }
  EXPECT_GT(told, 40);
}

TEST_F(Velmoorctl, GuideTellsTheBoundsThatHold) {
  const std::string guide =
      world.files.ReadAll(std::string(VELMOOR_SOURCE) + "/docs/guide/limits.md");
  const auto kibibytes = [](std::size_t bytes) { return NumberText(bytes / 1024) + " KiB"; };
  for (const std::string& row :
       {"| A file that is read whole: a project, a text, a CSV file, a script | " +
            NumberText(bounds::kFile / 1024 / 1024) + " MiB |",
        "| Rows of a CSV file | " + NumberText(bounds::kCsvRows) + " |",
        "| A row of a CSV file | " + NumberText(bounds::kCsvFields) + " fields, " +
            NumberText(bounds::kCsvLine) + " bytes |",
        "| Faults of an import that are told | " + NumberText(bounds::kFaultsTold) + ", each " +
            NumberText(bounds::kFaultText) + " bytes;",
        "| Lines of a terminal script | " + NumberText(bounds::kScriptLines) + ", each " +
            NumberText(bounds::kScriptLine) + " bytes |",
        "| The settings file | " + kibibytes(bounds::kSettings) + ";",
        "| A text of the catalogue | " + NumberText(bounds::kCatalogueText) + " bytes |",
        "| A line of the amplifier's answer | " + NumberText(bounds::kAnswer) + " bytes;",
        "| A message of another start of Velmoor | " + NumberText(bounds::kInstanceMessage) +
            " bytes |",
        "| Records and settings of a project's parameters | " + NumberText(schema::kMostRecords) +
            ", each field " + NumberText(schema::kMostText) + " bytes |"}) {
    EXPECT_NE(guide.find(row), std::string::npos) << row;
  }
}

// A label and an answer that would clear the screen.
TEST_F(Velmoorctl, NothingFromAFileOrTheLineSteersTheTerminal) {
  ASSERT_EQ(Run({"new", project}), 0);
  {
    const auto database = OpenForWriting(project);
    const auto rows = database->OpenTable(schema::Position::kTable);
    rows->Edit();
    rows->Set(schema::Position::kLabel,
              "\x1b[2J\x9b"
              "0m");
    rows->Update();
    database->Commit();
  }
  world.databases.Release(project);
  ASSERT_EQ(Run({"show", project, "index"}), 0) << err.str();
  EXPECT_NE(out.str().find("1,\\x1b[2J\\x9b0m,"), std::string::npos) << out.str();
  EXPECT_EQ(out.str().find('\x1b'), std::string::npos);
  EXPECT_EQ(Run({"show", "\x1b[2J.spj", "index"}), 1);
  EXPECT_EQ(err.str().find('\x1b'), std::string::npos) << err.str();
  EXPECT_EQ(Run({"show", project, "\x1b[2J"}), 2);
  EXPECT_EQ(err.str().find('\x1b'), std::string::npos) << err.str();
  EXPECT_EQ(Run({"import", project, "jog", WriteFile("big.csv", std::string(5'000'000, ','))}), 1);
  EXPECT_NE(err.str().find("the file is larger than any file of this program"), std::string::npos)
      << err.str();
  EXPECT_EQ(Run({"run", WriteFile("long.tsc", "0PRM800\n" + std::string(300, 'A')), "--port", "x"}),
            1);
  EXPECT_EQ(err.str(), "Line 2 of the script is longer than any command.\n");
}

TEST_F(Velmoorctl, SetsTheMachineInAnyOrderOrNotAtAll) {
  ASSERT_EQ(Run({"new", project}), 0);
  EXPECT_EQ(Run({"set", project, "resolution=2", "measure=360", "units=deg", "n2=10",
                 "system=Rotary Table", "encoder=16384"}),
            0)
      << err.str();
  EXPECT_EQ(Run({"show", project, "system"}), 0);
  EXPECT_NE(out.str().find("\nA,225,\nB,4096,\n"), std::string::npos) << out.str();
  const std::string bytes = world.files.ReadAll(project);
  const std::pair<const char*, const char*> refused[] = {
      {"measure=-1", "Please enter a positive float value.\n"},
      {"n1=1.5", "Value must be an integer!\n"},
      {"units=mm", "Selected system cannot have linear units!\n"},
      {"encoder=9", "'9' is no encoder!\n"},
      {"resolution=9",
       "Selected resolution is out of range for described system.\nResolution for described system "
       "must be within the range from 2 to 5.\n"}};
  for (const auto& [assignment, words] : refused) {
    EXPECT_EQ(Run({"set", project, "time=minutes", assignment}), 1) << assignment;
    EXPECT_EQ(err.str(), words);
    EXPECT_EQ(world.files.ReadAll(project), bytes) << assignment;
  }
  EXPECT_EQ(Run({"set", project, "colour=red"}), 2);
}

TEST_F(Velmoorctl, NamesTheValuesThatDoNotKeepTheirNumbers) {
  ASSERT_EQ(Run({"new", project}), 0);
  EXPECT_EQ(Run({"set", project, "time=minutes", "resolution=2"}), 0);
  const std::string told = err.str();
  EXPECT_NE(told.find("follow the machine:\nPn81F Acceleration: 1000.000, now 600000.00\n"),
            std::string::npos)
      << told;
  EXPECT_NE(told.find("\nPn825 Homing approach speed: 5.000, now 10.00\n"), std::string::npos)
      << told;
  EXPECT_EQ(told.find("Pn826"), std::string::npos) << told;
}

TEST_F(Velmoorctl, AChangeThatEmptiesTheTablesTakesAnAgreement) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string csv =
      WriteFile("a.csv", std::string(kIndexHead) + "go,I+1,10,-,1,:::::,IT0,1,END\n");
  ASSERT_EQ(Run({"import", project, "index", csv}), 0);
  EXPECT_EQ(Run({"set", project, "system=Other", "resolution=2"}), 1);
  EXPECT_NE(err.str().find("would invalidate existing Index Table"), std::string::npos);
  EXPECT_EQ(Run({"show", project, "index"}), 0);
  EXPECT_NE(out.str().find("1,go,I+1.000"), std::string::npos);
  EXPECT_EQ(Run({"set", project, "system=Other", "resolution=2", "--yes"}), 0) << err.str();
  EXPECT_EQ(Run({"show", project, "index"}), 0);
  EXPECT_NE(out.str().find("\n1,,,,,,,,,,1\n"), std::string::npos);
}

TEST_F(Velmoorctl, TellsWhereTwoProjectsDiffer) {
  const std::string other = world.folder.At("b.spj");
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"new", other}), 0);
  EXPECT_EQ(Run({"diff", project, other}), 0);
  ASSERT_EQ(Run({"import", other, "zone", WriteFile("z.csv", "zone,lower,upper\n4,1,2\n")}), 0);
  EXPECT_EQ(Run({"diff", project, other}), 1);
  EXPECT_EQ(out.str(),
            "part,row,field,first,second\nZone Table,4,ControllerLowerLimit,,1000\n"
            "Zone Table,4,ControllerUpperLimit,,2000\n");
}

// ---- parameters

std::string LineOf(const std::string& csv, const std::string& strPn) {
  const std::size_t at = csv.find("\n" + strPn + ",");
  return at == std::string::npos ? std::string()
                                 : csv.substr(at + 1, csv.find('\n', at + 1) - at - 1);
}

TEST_F(Velmoorctl, ShowsEveryParameterInUnits) {
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"show", project, "parameters"}), 0) << err.str();
  const std::string csv = out.str();
  EXPECT_EQ(csv.substr(0, csv.find('\n')),
            "pn,description,value,unit,minimum,maximum,controller,dirty");
  EXPECT_EQ(LineOf(csv, "Pn81B"),
            "Pn81B,Positive limit,99999.999,mm,-99999.999,99999.999,99999999,0");
  EXPECT_EQ(LineOf(csv, "Pn81A"), "Pn81A,Axis type,Linear,,,,0,0");
  EXPECT_EQ(LineOf(csv, "Pn829"), "") << "halves of longer numbers are nobody's to edit";
}

TEST_F(Velmoorctl, SetsSeveralParametersAndADownloadSendsExactlyThose) {
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"set", project, "Pn81B=12.5", "Pn81A=Rotary(Forward Only)", "Pn001=20"}), 0)
      << err.str();
  ASSERT_EQ(Run({"show", project, "parameters"}), 0);
  EXPECT_EQ(LineOf(out.str(), "Pn81B"),
            "Pn81B,Positive limit,12.500,mm,-99999.999,99999.999,12500,1");
  EXPECT_EQ(LineOf(out.str(), "Pn81A"), "Pn81A,Axis type,Rotary(Forward Only),,,,2,1");
  line.Amplifier('0')->ForgetWhatWasAsked();
  ASSERT_EQ(Run({"download", project, "--port", "x", "--yes", "--new"}), 0) << err.str();
  std::vector<std::string> writes;
  for (const JournalEntry& entry : line.Amplifier('0')->Journal()) {
    // Every way online sets the form of the acknowledge.
    const bool counts = entry.line.find('=') != std::string::npos && entry.line != "0PRM802=1";
    if (counts) writes.push_back(entry.line);
  }
  EXPECT_EQ(writes, (std::vector<std::string>{"0PRM001=0020", "0PRM81A=2", "0PRM81B=12500"}));
}

TEST_F(Velmoorctl, SetsAllOrNothingAndRefusesInTheEditorsWords) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string before = world.files.ReadAll(project);
  EXPECT_EQ(Run({"set", project, "Pn81B=12.5", "Pn100=x", "Pn203=1", "Pn800=RS485", "Pn999=1",
                 "Pn81C", "Pn81D=", "Pn81B=13"}),
            1);
  EXPECT_EQ(
      err.str(),
      "Pn100: Value must be an integer in the range from 1 and 2000. Previous value has been "
      "restored!\n"
      "Parameter Pn203 can only be modified by changing values within the 'Mechanical System' "
      "window!\n"
      "Pn800: Existing version functions only with RS422+Echo Back! Value has been restored!\n"
      "'Pn999' is no parameter of the direct parameter editor\n"
      "'Pn81C' is no assignment such as Pn81B=12.5\n"
      "Pn81D: A value is missing\n"
      "'Pn81B=13' assigns to its parameter a second time\n");
  EXPECT_EQ(world.files.ReadAll(project), before);
  EXPECT_EQ(Run({"set", project}), 2) << "no assignment";
  // A comma is what many write.
  EXPECT_EQ(Run({"set", project, "Pn81B=12,5"}), 1);
  EXPECT_NE(err.str().find("A point separates the decimals: 12.5\n"), std::string::npos)
      << err.str();
  EXPECT_EQ(Run({"set", project, "measure=12,5"}), 1);
  EXPECT_NE(err.str().find("A point separates the decimals: 12.5\n"), std::string::npos)
      << err.str();
  EXPECT_EQ(Run({"set", project, "Pn81B=1,2,3"}), 1);
  EXPECT_EQ(err.str().find("A point"), std::string::npos);
}

TEST_F(Velmoorctl, AHardLinkIsPartedByAnAgreementAlone) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string other = world.folder.At("other.spj");
  std::filesystem::create_hard_link(project, other);
  const std::string before = world.files.ReadAll(other);
  const std::string csv =
      WriteFile("a.csv", std::string(kIndexHead) + "a,I+1.000,1.000,-,1.000,NNNNN,:,1,END\n");
  const std::vector<std::string> commands[] = {
      {"set", project, "Pn100=55"}, {"set", project, "n1=2"}, {"import", project, "index", csv}};
  for (std::vector<std::string> words : commands) {
    EXPECT_EQ(Run(words), 1) << words.front();
    EXPECT_TRUE(err.str().ends_with("Nothing was saved.  Say --yes to agree.\n")) << err.str();
    EXPECT_EQ(world.files.ReadAll(project), before);
  }
  EXPECT_EQ(Run({"set", project, "Pn100=55", "--yes"}), 0) << err.str();
  EXPECT_NE(world.files.ReadAll(project), before);
  EXPECT_EQ(world.files.ReadAll(other), before);
}

}  // namespace
}  // namespace velmoor
