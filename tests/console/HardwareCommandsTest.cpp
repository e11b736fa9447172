// The commands that need an amplifier on the line.
#include "Velmoorctl.h"

namespace velmoor {
namespace {

TEST_F(Velmoorctl, InfoTellsWhatAnswers) {
  EXPECT_EQ(Run({"info", "--port", "x"}), 0) << err.str();
  EXPECT_NE(out.str().find("Servo model: VKLM-04AE\n"), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("Motor model: VMMAH-04AA\n"), std::string::npos) << out.str();
  port.Unplug();
  EXPECT_EQ(Run({"info", "--port", "x"}), 1);
  EXPECT_EQ(err.str(),
            "Cannot go online!\nHardware is not ready, or communication\n"
            "process settings are not set correctly.\n\nCOM1 does not exist.\n");
}

TEST_F(Velmoorctl, InfoTellsWhatItCannotReadAndWhy) {
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PGTYPE", .count = 0});
  EXPECT_EQ(Run({"info", "--port", "x"}), 1);
  EXPECT_NE(err.str().find("Encoder type cannot be read!\n"), std::string::npos) << err.str();
  EXPECT_NE(err.str().find("refused with E5A1"), std::string::npos) << err.str();
}

TEST_F(Velmoorctl, AWrongAmplifierIsNamed) {
  line.Amplifier('0')->State().settings.optionType = "00000500";
  EXPECT_EQ(Run({"info", "--port", "x"}), 1);
  EXPECT_EQ(err.str().substr(0, 31), "Option type error: Not RX900!\nC") << err.str();
}

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
  std::string text = kIndexHead;
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

TEST_F(Velmoorctl, ADownloadLeavesTheProjectWithoutMarks) {
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"set", project, "Pn100=55"}), 0) << err.str();
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes"}), 0) << err.str();
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

TEST_F(Velmoorctl, AStopEndsADownloadWithItsWordsAndMarks) {
  ASSERT_EQ(Run({"new", project}), 0);
  static int looks = 0;
  for (const int stopAt : {2, 60, 170, 300}) {
    SCOPED_TRACE(stopAt);
    looks = stopAt;
    EXPECT_EQ(Run({"download", project, "--port", "x", "--yes"}, [] { return --looks < 0; }), 1);
    EXPECT_NE(err.str().find("Download All terminated!\n\n"), std::string::npos) << err.str();
    EXPECT_NE(err.str().find("Download New completes it."), std::string::npos) << err.str();
    EXPECT_FALSE(world.files.Exists(world.folder.At("a.tmp")));
    EXPECT_FALSE(port.IsOpen());
    EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--new"}), 0) << err.str();
    EXPECT_EQ(err.str().find("No new changes"), std::string::npos);
    EXPECT_EQ(Run({"compare", project, "--port", "x"}), 0) << out.str();
  }
}

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

TEST_F(Velmoorctl, WhatWasDownloadedIsEqualAtEverySpeed) {
  ASSERT_EQ(Run({"new", project}), 0);
  for (const char* const speed : {"38400", "9600", "19200", "38400"}) {
    SCOPED_TRACE(speed);
    ASSERT_EQ(Run({"set", project, std::string("Pn801=") + speed}), 0) << err.str();
    EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--verify"}), 0) << err.str();
    EXPECT_NE(err.str().find("Download All complete!"), std::string::npos);
    EXPECT_EQ(Run({"compare", project, "--port", "x"}), 0) << out.str();
  }
}

// An acknowledge behind which nothing was kept: what is found stays on offer, in the file.
TEST_F(Velmoorctl, WhatVerifyFindsIsWhatDownloadNewSends) {
  struct Case {
    const char* unkept;
    const char* told;
  };
  for (const Case& c : {Case{"PRM100=", "Read back, one value is not what was sent:"},
                        Case{"PGMSTORE", "Not everything is stored as it was sent!"},
                        Case{"JSPDSTORE", "Not everything is stored as it was sent!"}}) {
    SCOPED_TRACE(c.unkept);
    world.files.Remove(project);
    ASSERT_EQ(Run({"new", project}), 0);
    ASSERT_EQ(Run({"download", project, "--port", "x", "--yes"}), 0) << err.str();
    ASSERT_EQ(Run({"set", project, "Pn100=81"}), 0) << err.str();
    const std::string index = WriteFile("i.csv",
                                        "step,label,position,speed,rdst,rspd,pout,event,loop,next\n"
                                        "5,a,I+13,80,-,1,:::::,IT0,1,END\n");
    ASSERT_EQ(Run({"import", project, "index", index}), 0) << err.str();
    ASSERT_EQ(Run({"import", project, "jog", WriteFile("j.csv", "jog,speed\n2,7\n")}), 0);
    line.faults.Add({.kind = FaultKind::unkept, .match = c.unkept});
    EXPECT_EQ(Run({"download", project, "--new", "--port", "x", "--yes", "--verify"}), 1);
    EXPECT_NE(err.str().find(c.told), std::string::npos) << err.str();
    EXPECT_NE(err.str().find("on offer"), std::string::npos) << err.str();
    EXPECT_EQ(Run({"download", project, "--new", "--port", "x", "--yes"}), 0) << err.str();
    EXPECT_NE(err.str().find("Download New complete!"), std::string::npos) << err.str();
    line.Amplifier('0')->Restart(port.Now());
    EXPECT_EQ(Run({"compare", project, "--port", "x"}), 0) << out.str();
  }
}

// The verdict on an amplifier is that on a project which was uploaded from it.
TEST_F(Velmoorctl, CompareAndDiffAgree) {
  ASSERT_EQ(Run({"new", project}), 0);
  ASSERT_EQ(Run({"download", project, "--port", "x", "--yes"}), 0) << err.str();
  const std::string other = world.folder.At("other.spj");
  struct Case {
    const char* line;
    int verdict;
    const char* part;  // that lists it; empty: nothing does
  };
  for (const Case& c : {Case{"PRM100=77", 1, "Parameters,Pn100,"}, Case{"PRM100=40", 0, ""},
                        Case{"PRM000=0A10", 1, "Parameters,Pn000,"}, Case{"PRM000=0500", 0, ""},
                        Case{"PRM207=0010", 0, "Not sent by Velmoor,Pn207,"},
                        Case{"LOOPT3=5", 1, "Index Table,4,"}}) {
    SCOPED_TRACE(c.line);
    (void)line.Amplifier('0')->Execute(c.line, Micros(0));
    EXPECT_EQ(Run({"compare", project, "--port", "x"}), c.verdict) << out.str();
    EXPECT_NE(out.str().find(c.part), std::string::npos) << out.str();
    world.files.Remove(other);
    ASSERT_EQ(Run({"new", other}), 0);
    ASSERT_EQ(Run({"upload", other, "--port", "x", "--yes"}), 0) << err.str();
    EXPECT_EQ(Run({"diff", project, other}), c.verdict) << out.str();
    EXPECT_NE(out.str().find(c.part), std::string::npos) << out.str();
  }
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

// ---- the motor

TEST_F(Velmoorctl, AnotherMotorIsNotedBeforeTheTransferAndComparedByInfo) {
  ASSERT_EQ(Run({"new", project}), 0);
  EXPECT_EQ(Run({"info", project, "--port", "x"}), 0) << err.str();
  EXPECT_TRUE(out.str().ends_with("\nProject: describes this motor\n")) << out.str();
  line.Amplifier('0')->State().settings.encoder = "00000011";
  const std::string difference =
      "Encoder: every move would be 16 times too short: the project says 2048 lines, the motor has "
      "32768.\n";
  EXPECT_EQ(Run({"info", project, "--port", "x"}), 1);
  EXPECT_TRUE(out.str().ends_with("\n" + difference)) << out.str();
  // --yes agrees to the download, and not to another machine.
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--only", "jog"}), 0) << err.str();
  EXPECT_EQ(err.str(),
            "The connected motor is not what project a describes!\n\n" + difference +
                "\nTo take it over: velmoorctl set " + project +
                " encoder=32768\nJog Table of the project will be downloaded to the "
                "controller.\nDo you wish to proceed?\n\n16 exchanges, about 1 s at 9600 bit/s "
                "(1 s at 38400).\nDownload Jog Table complete!\n"
                "16 items sent in 0.0 s and stored.\n");
  ASSERT_EQ(Run({"set", project, "encoder=32768"}), 0) << err.str();
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes", "--new"}), 0);
  EXPECT_EQ(err.str().find("Encoder:"), std::string::npos) << err.str();
}

TEST_F(Velmoorctl, SetChecksByTheMotorOfTheProject) {
  ASSERT_EQ(Run({"new", project}), 0);
  // Its download tells what motor it is for.
  ASSERT_EQ(Run({"download", project, "--port", "x", "--yes", "--only", "jog"}), 0) << err.str();
  EXPECT_EQ(Run({"show", project, "system"}), 0);
  EXPECT_NE(out.str().find("\nmotor,400,W\n"), std::string::npos) << out.str();
  EXPECT_EQ(Run({"set", project, "motor=9x"}), 1);
  EXPECT_EQ(err.str(), "'9x' is no rated power in watts!\n");
  ASSERT_EQ(Run({"set", project, "motor=100", "n1=2"}), 0) << err.str();
  EXPECT_EQ(Run({"show", project, "system"}), 0);
  EXPECT_NE(out.str().find("\nmotor,100,W\n"), std::string::npos) << out.str();
  // Pn100 goes to 2000 for 100 W, and to 1000 for 3000 W.
  ASSERT_EQ(Run({"set", project, "Pn100=1500"}), 0) << err.str();
  EXPECT_EQ(Run({"set", project, "Pn100=1400", "--motor-size", "3000"}), 1);
  EXPECT_NE(err.str().find("Value must range from 1 to 1000."), std::string::npos) << err.str();
  EXPECT_EQ(Run({"info", project, "--port", "x"}), 1);
  EXPECT_NE(out.str().find("the project is for a motor of 100 W, this one has 400 W."),
            std::string::npos)
      << out.str();
}

}  // namespace
}  // namespace velmoor
