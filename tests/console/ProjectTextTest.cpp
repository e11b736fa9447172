// A project as text: what is written, what is read back, and what is refused with its line.

#include "Velmoorctl.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

constexpr const char* kHead =
    "# A Velmoor project as text. What is not named here is as in a new project.\n"
    "format = 1\nothers = \"default\"\n";

class ProjectText : public Velmoorctl {
 protected:
  ProjectText() { EXPECT_EQ(Run({"new", project}), 0) << err.str(); }

  void Import(const std::string& table, const std::string& csv) {
    ASSERT_EQ(Run({"import", project, table, WriteFile("a.csv", csv)}), 0) << err.str();
  }
  std::string Exported(const std::string& path) {
    EXPECT_EQ(Run({"export", path}), 0) << err.str();
    return out.str();
  }
  int Take(const std::string& path, const std::string& text) {
    return Run({"import-text", path, WriteFile("a.toml", text)});
  }
  // A line of the parameters as `show` prints it.
  std::string Shown(const std::string& strPn) {
    (void)Run({"show", project, "parameters"});
    const std::string csv = out.str();
    const std::size_t at = csv.find("\n" + strPn + ",") + 1;
    return csv.substr(at, csv.find('\n', at) - at);
  }
};

TEST_F(ProjectText, TellsWhatDiffersFromANewProjectWithNamesAndUnits) {
  EXPECT_EQ(Exported(project), kHead);
  ASSERT_EQ(Run({"set", project, "measure=10", "n2=2", "resolution=2", "motor=400"}), 0);
  ASSERT_EQ(Run({"set", project, "Pn81B=12.5", "Pn803=Normally closed", "Pn100=55"}), 0);
  Import("index", std::string(kIndexHead) +
                      "\"a \"\"b\"\", ü\",A+1,5,-,1,:::::,IT0,3,go\ngo,-,1,2.5,1,:::::,T5,1,END\n");
  Import("zone", "zone,lower,upper\n7,-1,2.25\n");
  Import("jog", "jog,speed\n0,7\n");
  EXPECT_EQ(Exported(project),
            std::string(kHead) +
                "\n[machine]\nmeasure = 10  # Lead (mm)\nn2 = 2\n"
                "resolution = 2  # decimal places\nmotor = 400  # W\n"
                "\n[parameters]\nPn100 = 55  # Speed loop gain (Hz)\n"
                "Pn803 = \"Normally closed\"  # /MODE0/1 Input\n"
                "Pn81B = 12.50  # Positive limit (mm)\n"
                "\n[index]\n# Label, Position (mm), Speed (mm/sec), RDST (mm), RSPD (mm/sec), "
                "POUT, Event, Loop, Next\n"
                "1 = { label = \"a \\\"b\\\", ü\", position = \"A+1.00\", speed = 5.00, "
                "rdst = \"-\", rspd = 1.00, pout = \":::::\", event = \"IT0\", loop = 3, "
                "next = \"go\" }\n"
                "2 = { label = \"go\", position = \"-\", speed = 1.00, rdst = 2.50, rspd = 1.00, "
                "pout = \":::::\", event = \"T5\", loop = 1, next = \"END\" }\n"
                "\n[zone]\n# Lower (mm), Upper (mm)\n7 = { lower = -1.00, upper = 2.25 }\n"
                "\n[jog]\n# Speed (mm/sec)\n0 = { speed = 7.00 }\n");
  const std::string text = out.str();
  const std::string other = world.folder.At("b.spj");
  ASSERT_EQ(Run({"new", other}), 0);
  EXPECT_EQ(Take(other, text), 0) << err.str();
  EXPECT_EQ(Run({"diff", project, other}), 0) << out.str();
  EXPECT_EQ(Exported(other), text);
}

TEST_F(ProjectText, IsWrittenWhileTheProjectIsInUseAndNotOverWhatIsThere) {
  const auto held = world.files.LockPresent(project);
  const std::string text = world.folder.At("t.toml");
  EXPECT_EQ(Run({"export", project, text}), 0) << err.str();
  EXPECT_EQ(world.files.ReadAll(text), kHead);
  EXPECT_EQ(Run({"export", project, text}), 0);
  WriteFile("t.toml", "mine");
  EXPECT_EQ(Run({"export", project, text}), 2);
  EXPECT_EQ(world.files.ReadAll(text), "mine");
  EXPECT_EQ(Run({"export", project, text, "--yes"}), 0);
  EXPECT_EQ(Run({"export", project, project, "--yes"}), 2);
  EXPECT_EQ(Run({"show", project, "system"}), 1);
}

TEST_F(ProjectText, BringsEverythingBackToNewOrKeepsWhatItDoesNotName) {
  ASSERT_EQ(Run({"set", project, "Pn100=55", "Pn102=66"}), 0);
  Import("jog", "jog,speed\n0,7\n3,8\n");
  EXPECT_EQ(Take(project, "[parameters]\nPn100 = 70\n[jog]\n3 = { speed = 9 }\n"), 0) << err.str();
  EXPECT_EQ(Shown("Pn100"), "Pn100,Speed loop gain,70,Hz,1,2000,70,1");
  EXPECT_EQ(Shown("Pn102"), "Pn102,Position loop gain,66,1/s,1,2000,66,1");
  EXPECT_EQ(Exported(project), std::string(kHead) +
                                   "\n[parameters]\nPn100 = 70  # Speed loop gain (Hz)\n"
                                   "Pn102 = 66  # Position loop gain (1/s)\n"
                                   "\n[jog]\n# Speed (mm/sec)\n0 = { speed = 7.000 }\n"
                                   "3 = { speed = 9.000 }\n");
  EXPECT_EQ(Take(project, "others = \"default\"\n"), 0) << err.str();
  EXPECT_EQ(Exported(project), kHead);
}

// What changes is marked to download; what stays as it was is not.
TEST_F(ProjectText, MarksWhatItChanges) {
  EXPECT_EQ(Take(project, "[parameters]\nPn100 = 70\nPn102 = 40\n"), 0) << err.str();
  EXPECT_EQ(Shown("Pn100"), "Pn100,Speed loop gain,70,Hz,1,2000,70,1");
  EXPECT_EQ(Shown("Pn102"), "Pn102,Position loop gain,40,1/s,1,2000,40,0");
  const std::string bytes = world.files.ReadAll(project);
  EXPECT_EQ(Take(project, Exported(project)), 0);
  EXPECT_EQ(world.files.ReadAll(project), bytes);
}

TEST_F(ProjectText, RefusesEachBadValueWithItsLineAndChangesNothing) {
  const std::string bytes = world.files.ReadAll(project);
  const struct {
    const char* text;
    const char* faults;  // of "a.toml:"
  } cases[] = {
      {"[parameters]\nPn100 = 1\nPn100 = 2\n",
       "3: Error while parsing key-value pair: cannot redefine existing integer 'Pn100'"},
      {"[parameters]\nPn100 = \"40\"\nPn81B = \"far\"\nPn803 = 1\nPn000 = 10\n",
       "2: Pn100 takes a whole number\n3: Pn81B takes a number\n"
       "4: Pn803 takes one of its items, in quotes\n5: Pn000 takes four digits, in quotes"},
      {"[parameters]\nPn100 = 2001\nPn999 = 1\nPn803 = \"shut\"\nPn001 = \"000G\"\n",
       "2: Pn100: The value 2001 is out of the allowable range! Value must range from 1 to 2000.\n"
       "3: 'Pn999' is no parameter of the direct parameter editor\n"
       "4: Pn803: The value shut is none of the items of Pn803!\n"
       "5: Pn001: The value 000G contains non-hexadecimal characters!  Please modify!"},
      {"[parameters]\nPn202 = 2\nPn50A = \"2101\"\n",
       "2: Parameter Pn202 can only be modified by changing values within the 'Mechanical System' "
       "window!\n3: Parameter Pn50A cannot be modified by Velmoor!"},
      {"[machine]\nsystem = \"Sledge\"\nn1 = 0.5\nmeasure = -1\nencoder = 9\nwidth = 2\nmotor = "
       "0\n",
       "2: system: 'Sledge' is no mechanical system!\n3: n1 takes a whole number\n"
       "4: measure: Please enter a positive float value.\n5: encoder: '9' is no encoder!\n"
       "6: 'width' is none of system, encoder, units, time, measure, n1, n2, resolution and motor\n"
       "7: motor takes a whole number of watts from 1 to 65535"},
      {"[machine]\nn1 = 30000\n", "1: Selected resolution is out of range for described system."},
      {"[index]\n1 = { label = \"a\", position = \"A+1\", speed = \"quick\", next = \"b\" }\n"
       "129 = {}\n01 = {}\n2 = 5\n3 = { colour = 1 }\n",
       "2: step 1: speed takes a number\n"
       "2: step 1: Definition in step 1 is incomplete! Please edit definition.\n"
       "2: step 1, next: Next block 'b' for definition 'Step 1' is undefined! Please edit "
       "definition.\n3: '129' is no row of the index table\n4: '01' is no row of the index table\n"
       "5: step 2 takes its cells in braces: { ... }\n6: step 3 has no cell 'colour'"},
      {"[zone]\n1 = { lower = 1 }\n[jog]\n15 = { speed = -1 }\n",
       "2: zone 1, upper: a zone needs both limits, or none\n"
       "4: jog 15, speed: -1 is out of range! Value must be within the range from 0.000 and "
       "1666666.650!"},
      {"others = \"gone\"\ncolour = 1\nformat = 2\nparameters = 3\n",
       "1: 'others' is \"default\" or \"kept\"\n"
       "2: 'colour' is none of format, others, machine, parameters, index, zone, jog and as-found\n"
       "3: The text is of format 2, and this version of Velmoor reads format 1\n"
       "4: 'parameters' is a section: [parameters] and its lines"},
      {"[as-found.parameters]\nPn50A = 2101\nPn100 = \"x\"\n",
       "2: Pn50A takes a text in quotes here\n3: Pn100: "},
  };
  const std::string name = world.folder.At("a.toml");
  for (const auto& each : cases) {
    std::string expected;
    std::istringstream lines(each.faults);
    for (std::string fault; std::getline(lines, fault);) {
      expected += (expected.empty() ? "" : "\n") + name + ":" + fault;
    }
    EXPECT_EQ(Take(project, each.text), 1) << each.text;
    EXPECT_EQ(err.str().substr(0, expected.size()), expected);
    EXPECT_EQ(world.files.ReadAll(project), bytes) << each.text;
  }
}

// One bad value among good ones: none of them is taken.
TEST_F(ProjectText, IsTakenWholeOrNotAtAll) {
  EXPECT_EQ(Take(project,
                 "[machine]\nmeasure = 7\nmotor = 400\n[parameters]\nPn100 = 60\n"
                 "[jog]\n0 = { speed = 1 }\n99 = { speed = 1 }\n"),
            1);
  EXPECT_EQ(Exported(project), kHead);
}

TEST_F(ProjectText, AsksBeforeAMachineEmptiesTablesThatItDoesNotTell) {
  Import("zone", "zone,lower,upper\n7,-1,2.25\n");
  const std::string text = "[machine]\nsystem = \"Other\"\nresolution = 2\n";
  EXPECT_EQ(Take(project, text), 1);
  EXPECT_NE(Exported(project).find("[zone]"), std::string::npos);
  EXPECT_EQ(Run({"import-text", project, world.folder.At("a.toml"), "--yes"}), 0) << err.str();
  EXPECT_EQ(Exported(project).find("[zone]"), std::string::npos);
}

// A label with a line end, an unknown event, an input that Velmoor does not set, a gain beyond its
// limits: as another program or an amplifier leaves them. They come through, and stay in doubt.
TEST_F(ProjectText, CarriesWhatNobodyCouldHaveTyped) {
  Import("index",
         std::string(kIndexHead) + "a,A+1,5,-,1,:::::,IT0,3,b\nb,-,1,-,1,:::::,T5,1,END\n");
  {
    const auto file = OpenForWriting(project);
    const auto put = [](RowSet& row,
                        std::initializer_list<std::pair<std::string_view, const char*>> cells) {
      row.Edit();
      for (const auto& [field, text] : cells) row.Set(field, text);
      row.Update();
    };
    using schema::Position, schema::Parameters;
    const auto steps = file->OpenTable(Position::kTable, Position::kId);
    steps->MoveFirst();
    put(*steps, {{Position::kLabel, "two\nlines, \"so\""}, {Position::kEvent, "SEL9T1"}});
    const auto rows = file->OpenTable(Parameters::kTable);
    ASSERT_TRUE(rows->FindFirst(Parameters::kPn, "Pn50A"));
    put(*rows, {{Parameters::kValue, "2101"}, {Parameters::kControllerValue, "2101"}});
    ASSERT_TRUE(rows->FindFirst(Parameters::kPn, "Pn100"));
    put(*rows, {{Parameters::kValue, "5000"}, {Parameters::kControllerValue, "5000"}});
    file->Commit();
  }
  const std::string text = Exported(project);
  EXPECT_NE(text.find("\n[as-found.parameters]\n"
                      "# in the form of the amplifier: nothing of it can be typed\n"
                      "Pn100 = \"5000\"  # Speed loop gain (Hz)\n"
                      "Pn50A = \"2101\"  # Input assignment 1\n"
                      "\n[as-found.index]\n"
                      "1 = { label = \"two\\nlines, \\\"so\\\"\", event = \"SEL9T1\" }\n"),
            std::string::npos)
      << text;
  const std::string other = world.folder.At("b.spj");
  ASSERT_EQ(Run({"new", other}), 0);
  EXPECT_EQ(Take(other, text), 0) << err.str();
  EXPECT_EQ(Run({"diff", project, other}), 0) << out.str();
  EXPECT_EQ(Exported(other), text);
  EXPECT_EQ(Run({"check", other}), 1);
  EXPECT_EQ(out.str(),
            "row,field,doubt,shown,sent,meaning,limits\n"
            "Index Table step 1,Event,unknown,,SEL9T1,SEL9T1,\n"
            "Pn100,Speed loop gain,outside,,5000,5000,1 to 2000 Hz\n");
}

}  // namespace
}  // namespace velmoor
