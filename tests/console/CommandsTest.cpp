#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <fstream>
#include <random>
#include <regex>

#include "Velmoorctl.h"

namespace velmoor {
namespace {

const char* const kHead = "label,position,speed,rdst,rspd,pout,event,loop,next\n";

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
      WriteFile("a.csv", std::string(kHead) + "go,I+1,10,-,1,:::::,IT0,1,END\n");
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

TEST_F(Velmoorctl, ABadImportNamesEachCellAndChangesNothing) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string bytes = world.files.ReadAll(project);
  const std::string csv = WriteFile(
      "a.csv", std::string(kHead) + "go,I+1,fast,-,1,:::::,IT0,1,END\nx,-,1,-,1,:::::,IT0,0,END\n");
  EXPECT_EQ(Run({"import", project, "index", csv}), 1);
  EXPECT_EQ(err.str(),
            "Row 1, column speed: Speed value must be numeric!\n"
            "Row 2, column loop: Loop value must be a positive integer!\n");
  EXPECT_EQ(world.files.ReadAll(project), bytes);
  EXPECT_EQ(Run({"import", project, "index", world.folder.At("none.csv")}), 1);
  EXPECT_NE(err.str().find("none.csv"), std::string::npos);
}

TEST_F(Velmoorctl, TellsWhyAProjectCannotBeOpened) {
  EXPECT_EQ(Run({"show", project, "index"}), 1);
  EXPECT_EQ(err.str(), "Project file a.spj cannot be found at " + project +
                           "!\nProject 'a.spj' cannot be opened.\n");
  WriteFile("a.spj", "no database");
  EXPECT_EQ(Run({"show", project, "index"}), 1);
  EXPECT_EQ(err.str(), "Error reading databases!\nProject 'a.spj' cannot be opened.\n");
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

// What nobody remembers to write down a second time.
TEST_F(Velmoorctl, ManualAndCompletionKnowWhatTheHelpTells) {
  ASSERT_EQ(Run({"--help"}), 0);
  std::string help = out.str();
  const auto read = [this](const std::string& name) {
    return std::regex_replace(world.files.ReadAll(std::string(VELMOOR_SOURCE) + "/" + name),
                              std::regex(R"(\\-)"), "-");
  };
  const std::string manual = read("packaging/man/velmoorctl.1");
  const std::string completion = read("packaging/velmoorctl.bash");
  const std::string guide = read("docs/guide/command-line.md");
  const std::regex words("velmoorctl ([a-z]+)|(--[a-z-]+)|\\b([A-Z]{3,4}[12]?)\\b");
  int told = 0;
  for (std::sregex_iterator at(help.begin(), help.end(), words), end; at != end; ++at) {
    const std::string word = (*at)[1].matched ? (*at)[1] : (*at)[0];
    const bool placeholder = word == "FILE" || word == "NAME" || word == "VALUE" || word == "DEV" ||
                             word == "WHAT" || word == "LIST" || word == "SIZE" || word == "CSV" ||
                             word == "PDF";
    if (placeholder) continue;
    ++told;
    EXPECT_NE(manual.find(word), std::string::npos) << word;
    EXPECT_NE(completion.find(word), std::string::npos) << word;
    if ((*at)[1].matched) {
      EXPECT_NE(guide.find("velmoorctl " + word), std::string::npos) << word;
    }
  }
  EXPECT_GT(told, 40);
}

TEST_F(Velmoorctl, InfoTellsWhatAnswers) {
  EXPECT_EQ(Run({"info", "--port", "x"}), 0) << err.str();
  EXPECT_NE(out.str().find("Servo model: VKLM-04AE\n"), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("Motor model: VMMAH-04AC\n"), std::string::npos) << out.str();
  port.Unplug();
  EXPECT_EQ(Run({"info", "--port", "x"}), 1);
  EXPECT_EQ(err.str().substr(0, 18), "Cannot go online!\n") << err.str();
}

TEST_F(Velmoorctl, AWrongAmplifierIsNamed) {
  line.Amplifier('0')->State().settings.optionType = "00000500";
  EXPECT_EQ(Run({"info", "--port", "x"}), 1);
  EXPECT_EQ(err.str().substr(0, 31), "Option type error: Not RX900!\nC") << err.str();
}

// ---- live hardware

TEST_F(Velmoorctl, SendsALineInCapitalsAndPrintsTheAnswer) {
  EXPECT_EQ(Run({"send", "0prm800", "--port", "x"}), 0) << err.str();
  EXPECT_EQ(out.str(), "0PN800=00000001\n");
  // The answer of a refused line is printed all the same.
  EXPECT_EQ(Run({"send", "0PRM800=99", "--port", "x"}), 1);
  EXPECT_NE(out.str(), "");
  EXPECT_EQ(Run({"send", "0ERR", "--port", "x"}), 0) << out.str();
  port.Unplug();
  EXPECT_EQ(Run({"send", "0PRM800", "--port", "x"}), 1);
}

TEST_F(Velmoorctl, RunsAScriptToItsEndPastAFailedLine) {
  const std::string script = WriteFile("a.tsc", " 0PRM800\r\n\r\n1PRM800\n0TYPE\n");
  EXPECT_EQ(Run({"run", script, "--port", "x"}), 1);
  EXPECT_EQ(out.str(), "0PRM800\n> 0PN800=00000001\n1PRM800\n> 0TYPE\n> 0TYPE=00000600\n");
  EXPECT_EQ(err.str().substr(0, 38), "*** ERROR SENDING SERIAL RESPONSE! ***");
  EXPECT_EQ(Run({"run", WriteFile("b.tsc", "0PRM800\n"), "--port", "x"}), 0) << err.str();
  EXPECT_EQ(Run({"run", WriteFile("c.tsc", " \n"), "--port", "x"}), 1);
  // A file of another kind does not reach the line.
  line.Amplifier('0')->ForgetWhatWasAsked();
  EXPECT_EQ(Run({"run", WriteFile("d.tsc", "0PRM800\n\x01\xff\n"), "--port", "x"}), 1);
  EXPECT_EQ(err.str(), "The file is no script: it holds more than plain characters!\n");
  EXPECT_TRUE(line.Amplifier('0')->Journal().empty());
}

TEST_F(Velmoorctl, PrintsTheAlarmAndItsHistory) {
  EXPECT_EQ(Run({"alarms", "--port", "x"}), 0) << err.str();
  EXPECT_EQ(out.str(), "entry,display,code,name\nnow,BB,BB,Servo off\n");
  line.Amplifier('0')->RaiseAlarm("A.40");
  line.Amplifier('0')->RaiseAlarm("A.9F");
  EXPECT_EQ(Run({"alarms", "--port", "x"}), 0) << err.str();
  EXPECT_EQ(out.str(),
            "entry,display,code,name\n"
            "now,A.9F,E19F,Warning: indexer card\n"
            "1,A.9F,E19F,Warning: indexer card\n"
            "2,A.40,A.40,Overspeed\n");
}

TEST_F(Velmoorctl, MonitorsTheItemsThatAreNamed) {
  EXPECT_EQ(Run({"monitor", "--port", "x", "--items", "pun,STS", "--count", "2"}), 0) << err.str();
  EXPECT_EQ(out.str(),
            "time,seconds,PUN,STS\n"
            "2024-03-01 09:00:00,0.000,0,1000000\n"
            "2024-03-01 09:00:00,0.000,0,1000000\n");
  port.Unplug();
  EXPECT_EQ(Run({"monitor", "--port", "x", "--count", "1"}), 1);
}

TEST_F(Velmoorctl, DownloadAndUploadCarryAProjectThroughTheAmplifier) {
  ASSERT_EQ(Run({"new", project}), 0);
  std::string text = kHead;
  for (int step = 1; step <= 128; ++step) {
    const std::string number = std::to_string(step);
    const std::string next = step < 128 ? "q" + std::to_string(step + 1) : "END";
    const std::string_view parts[] = {
        "q", number, ",I+", number, ".5,", number, ",-,1,NNAZ:,SEL0T", number, ",1,", next, "\n"};
    for (const std::string_view part : parts) text += part;
  }
  ASSERT_EQ(Run({"import", project, "index", WriteFile("a.csv", text)}), 0) << err.str();
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes"}), 0) << err.str();
  EXPECT_EQ(Run({"show", project, "index"}), 0);
  const std::string sent = out.str();
  EXPECT_EQ(sent.find(",1\n"), std::string::npos) << "no row is dirty after the download";

  const std::string fresh = world.folder.At("fresh.spj");
  ASSERT_EQ(Run({"new", fresh}), 0);
  EXPECT_EQ(Run({"upload", fresh, "--port", "x", "--yes"}), 0) << err.str();
  EXPECT_EQ(Run({"show", fresh, "index"}), 0);
  std::string expected = sent;
  for (std::size_t at = 0; (at = expected.find(",q", at)) != std::string::npos; ++at) {
    expected.replace(at + 1, 1, "label");
  }
  EXPECT_EQ(out.str(), expected);
}

TEST_F(Velmoorctl, ADownloadWritesTheProjectOnlyForItsMarks) {
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"set", project, "Pn100=55"}), 0) << err.str();
  const std::string marked = world.files.Identity(project);
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes"}), 0) << err.str();
  const std::string sent = world.files.Identity(project);
  EXPECT_NE(sent, marked);
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes"}), 0) << err.str();
  EXPECT_EQ(world.files.Identity(project), sent);
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--new"}), 0) << err.str();
  EXPECT_NE(err.str().find("No new changes"), std::string::npos) << err.str();
}

TEST_F(Velmoorctl, ADownloadThatFailsKeepsTheMarksOfWhatIsNotStored) {
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"import", project, "jog", WriteFile("j.csv", "jog,speed\n0,1\n1,2\n2,3\n")}), 0);
  line.faults.Add({.kind = FaultKind::deviceError, .match = "JSPDT1="});
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--new"}), 1);
  EXPECT_NE(err.str().find("Error downloading data to controller!\n"), std::string::npos);
  EXPECT_EQ(Run({"show", project, "jog"}), 0);
  EXPECT_EQ(out.str().substr(0, 52), "jog,speed,dirty\n0,1.000,1\n1,2.000,1\n2,3.000,1\n3,,0\n4");
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--new"}), 0) << err.str();
  EXPECT_EQ(line.Amplifier('0')->Asked("JSPDT="), 5);
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--new"}), 0);
  EXPECT_EQ(err.str(),
            "No new changes have been committed!\n"
            "New items must be changed and committed before download!\n");
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

TEST_F(Velmoorctl, AChangeThatEmptiesTheTablesTakesAnAgreement) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string csv =
      WriteFile("a.csv", std::string(kHead) + "go,I+1,10,-,1,:::::,IT0,1,END\n");
  ASSERT_EQ(Run({"import", project, "index", csv}), 0);
  EXPECT_EQ(Run({"set", project, "system=Other", "resolution=2"}), 1);
  EXPECT_NE(err.str().find("would invalidate existing Index Table"), std::string::npos);
  EXPECT_EQ(Run({"show", project, "index"}), 0);
  EXPECT_NE(out.str().find("1,go,I+1.000"), std::string::npos);
  EXPECT_EQ(Run({"set", project, "system=Other", "resolution=2", "--yes"}), 0) << err.str();
  EXPECT_EQ(Run({"show", project, "index"}), 0);
  EXPECT_NE(out.str().find("\n1,,,,,,,,,,1\n"), std::string::npos);
}

// ---- comparing, single items, resets

TEST_F(Velmoorctl, ComparesWithTheHardwareAndChangesNeither) {
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"import", project, "jog", WriteFile("j.csv", "jog,speed\n0,1\n1,2\n")}), 0);
  ASSERT_EQ(Run({"download", project, "--port", "x", "--yes", "--all"}), 0) << err.str();
  EXPECT_EQ(Run({"compare", project, "--port", "x"}), 0) << out.str();
  EXPECT_EQ(out.str(), "part,row,field,project,hardware\n");
  const std::string bytes = world.files.ReadAll(project);
  SimulatedAmplifier& amplifier = *line.Amplifier('0');
  amplifier.State().memory.jog.working[1] = "00000180";
  ASSERT_TRUE(amplifier.State().memory.parameters.Write(0x100, "77"));
  amplifier.ForgetWhatWasAsked();
  EXPECT_EQ(Run({"compare", project, "--port", "x"}), 1);
  EXPECT_EQ(out.str(),
            "part,row,field,project,hardware\n"
            "Parameters,Pn100,Speed loop gain,40,77\n"
            "Jog Table,1,Speed,2.000 mm/sec,3.000 mm/sec\n");
  EXPECT_EQ(world.files.ReadAll(project), bytes);
  EXPECT_EQ(amplifier.Asked("PRM="), 1) << "the echo of a search, and nothing else";
}

// The upload goes on without the machine and leaves the project's, which differs from nothing.
TEST_F(Velmoorctl, AMachineThatCannotBeUsedIsADifference) {
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"download", project, "--port", "x", "--yes"}), 0) << err.str();
  ASSERT_EQ(Run({"compare", project, "--port", "x"}), 0) << out.str();
  ASSERT_TRUE(line.Amplifier('0')->State().memory.parameters.Write(0x82B, "0"));
  EXPECT_EQ(Run({"compare", project, "--port", "x"}), 1);
  EXPECT_EQ(out.str(),
            "part,row,field,project,hardware\n"
            "Mechanical System Parameters,,Machine,described,no description that can be used\n");
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

TEST_F(Velmoorctl, MovesTheItemsThatAreNamed) {
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"import", project, "jog", WriteFile("j.csv", "jog,speed\n0,1\n1,2\n")}), 0);
  SimulatedAmplifier& amplifier = *line.Amplifier('0');
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--only", "zone,jog"}), 0)
      << err.str();
  EXPECT_EQ(amplifier.Asked("JSPDT="), 16);
  EXPECT_EQ(amplifier.Asked("ZONENT="), 32);
  EXPECT_EQ(amplifier.Asked("POST="), 0);
  EXPECT_EQ(amplifier.Asked("RES"), 0);
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--only", "parameters"}), 0);
  EXPECT_EQ(amplifier.Asked("RES"), 1);
  amplifier.State().memory.jog.working[1] = "00000180";
  ASSERT_TRUE(amplifier.State().memory.parameters.Write(0x100, "77"));
  EXPECT_EQ(Run({"upload", project, "--port", "x", "--yes", "--only", "jog"}), 0) << err.str();
  EXPECT_EQ(Run({"compare", project, "--port", "x"}), 1);
  EXPECT_EQ(out.str().find("Jog Table"), std::string::npos);
  EXPECT_NE(out.str().find("Pn100"), std::string::npos) << "parameters were not uploaded";
  for (const char* const list : {"", "song", "jog,", "jog,,zone"}) {
    EXPECT_EQ(Run({"upload", project, "--port", "x", "--yes", "--only", list}), 2) << list;
  }
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--new", "--all"}), 2);
}

TEST_F(Velmoorctl, AFailedUploadOfAnItemSavesNothing) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string bytes = world.files.ReadAll(project);
  line.faults.Add({.kind = FaultKind::silence, .match = "JSPDT9"});
  EXPECT_EQ(Run({"upload", project, "--port", "x", "--yes", "--only", "zone,jog"}), 1);
  EXPECT_EQ(world.files.ReadAll(project), bytes);
}

TEST_F(Velmoorctl, ScansEverySpeedAndResetsWhatIsNamed) {
  AmplifierSettings fast;
  fast.axis = 'C';
  fast.baud = 38400;
  line.AddAmplifier(fast);
  EXPECT_EQ(Run({"scan", "--port", "x"}), 0);
  EXPECT_EQ(out.str(), "axis,baud\n0,9600\nC,38400\n");
  SimulatedAmplifier& amplifier = *line.Amplifier('0');
  amplifier.State().memory.jog.working[1] = "00000180";
  amplifier.State().memory.jog.Store();
  EXPECT_EQ(Run({"reset", "jog", "--port", "x"}), 2) << "without --yes";
  EXPECT_EQ(Run({"reset", "everything", "--port", "x", "--yes"}), 2);
  EXPECT_EQ(amplifier.Asked("JSPDINIT"), 0);
  EXPECT_EQ(Run({"reset", "jog", "--port", "x", "--yes"}), 0) << err.str();
  EXPECT_EQ(amplifier.State().memory.jog.stored[1], "");
  EXPECT_EQ(amplifier.Asked("SVOFF"), 0);
  EXPECT_EQ(Run({"reset", "all", "--port", "x", "--yes"}), 0) << err.str();
  EXPECT_EQ(amplifier.Asked("SVOFF"), 1);
  EXPECT_EQ(amplifier.Asked("PRMINIT"), 1);
  line.faults.Add({.kind = FaultKind::deviceError, .match = "SVOFF", .count = 0});
  EXPECT_EQ(Run({"reset", "parameters", "--port", "x", "--yes"}), 1);
  EXPECT_EQ(amplifier.Asked("PRMINIT"), 1);
  port.Unplug();
  EXPECT_EQ(Run({"scan", "--port", "x"}), 1);
}

// ---- the program itself

class KilledProgram : public Velmoorctl {
 protected:
  pid_t Start(std::vector<std::string> words) {
    words.insert(words.begin(), VELMOORCTL);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t child = 0;
    EXPECT_EQ(posix_spawn(&child, VELMOORCTL, nullptr, nullptr, arguments.data(), environ), 0);
    return child;
  }
  static int Wait(pid_t child) {
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status;
  }
};

TEST_F(KilledProgram, ASaveThatIsKilledLeavesTheOldOrTheNewProject) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string texts[] = {"speed\n1\n2\n", "speed\n100\n200\n"};
  const std::string files[] = {WriteFile("0.csv", texts[0]), WriteFile("1.csv", texts[1])};
  ASSERT_EQ(Run({"import", project, "jog", files[0]}), 0);
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_EQ(Wait(Start({"import", project, "jog", files[0]})), 0);
  const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::steady_clock::now() - begin);

  std::mt19937 engine(20261124);
  int killed = 0;
  for (int round = 0; round < 40; ++round) {
    const pid_t child = Start({"import", project, "jog", files[round % 2]});
    const auto moment = std::uniform_int_distribution<std::int64_t>(0, whole.count())(engine);
    const timespec until{moment / 1000000, moment % 1000000 * 1000};
    ppoll(nullptr, 0, &until, nullptr);
    kill(child, SIGKILL);
    if (WIFSIGNALED(Wait(child))) ++killed;
    ASSERT_EQ(Run({"show", project, "jog"}), 0) << "round " << round << ": " << err.str();
    const std::string shown = out.str();
    const bool old = shown.find("\n0,1.000,") != std::string::npos &&
                     shown.find("\n1,2.000,") != std::string::npos;
    const bool fresh = shown.find("\n0,100.000,") != std::string::npos &&
                       shown.find("\n1,200.000,") != std::string::npos;
    ASSERT_TRUE(old || fresh) << "round " << round << ": " << shown;
  }
  EXPECT_GT(killed, 10) << "most rounds must have been cut";
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
}

}  // namespace
}  // namespace velmoor
