// velmoorctl line: several amplifiers on one line, each through the operations of a single one.

#include <algorithm>
#include <filesystem>

#include "Velmoorctl.h"
#include "recordings/RecordingFile.h"

namespace velmoor {
namespace {

class Line : public Velmoorctl {
 protected:
  Line() {
    line.AddAmplifier({.axis = '3'});
    line.AddAmplifier({.axis = 'A'});
    for (const char* const name : {"x.spj", "y.spj", "z.spj"}) {
      EXPECT_EQ(Run({"new", world.folder.At(name)}), 0);
    }
    file = WriteFile("line.toml",
                     "port = \"COM1\"\nbaud = 9600\n"
                     "[axis.A]\nname = \"gripper\"\nproject = \"z.spj\"\n"
                     "[axis.0]\nname = \"feed\"\nproject = \"x.spj\"\n"
                     "[axis.3]\nname = \"lift\"\nproject = \"y.spj\"\n");
  }
  int Of(const std::vector<std::string>& words) {
    std::vector<std::string> all{"line", file};
    all.insert(all.end(), words.begin(), words.end());
    return Run(all);
  }

  std::string file;
};

TEST_F(Line, IsFoundAndWrittenAsAFile) {
  const std::string path = world.folder.At("new.toml");
  ASSERT_EQ(Run({"line", "new", path, "--port", "COM1"}), 0) << err.str();
  EXPECT_EQ(world.files.ReadAll(path),
            "# The axes on one serial line.\nport = \"COM1\"\nbaud = 9600\n"
            "\n[axis.0]\nname = \"axis 0\"\nproject = \"axis0.spj\"\n"
            "\n[axis.3]\nname = \"axis 3\"\nproject = \"axis3.spj\"\n"
            "\n[axis.A]\nname = \"axis A\"\nproject = \"axisA.spj\"\n");
  EXPECT_EQ(Run({"line", "new", path, "--port", "COM1"}), 2);
  EXPECT_EQ(Run({"line", path, "scan"}), 0) << err.str();
}

TEST_F(Line, TellsWhoIsThere) {
  EXPECT_EQ(Of({"scan"}), 0) << err.str();
  EXPECT_EQ(out.str(), "axis,name,result\n0,feed,present\n3,lift,present\nA,gripper,present\n");
  EXPECT_EQ(Of({"info", "--axes", "3", "--json"}), 0) << err.str();
  EXPECT_TRUE(out.str().starts_with(
      "[\n{\"axis\":\"3\",\"name\":\"lift\",\"result\":\"present\",\"amplifier\":"))
      << out.str();
}

// Each project goes to its own axis, and is found there.
TEST_F(Line, MovesEachProjectToItsAxisAndBack) {
  EXPECT_EQ(Of({"download"}), 2);
  EXPECT_EQ(Of({"download", "--yes"}), 0) << err.str();
  ASSERT_EQ(Run({"set", world.folder.At("y.spj"), "Pn100=77"}), 0);
  EXPECT_EQ(Of({"compare"}), 1);
  EXPECT_EQ(out.str(),
            "axis,name,result,differences\n0,feed,equal,0\n3,lift,different,1\n"
            "A,gripper,equal,0\n");
  EXPECT_EQ(Of({"download", "--new", "--yes"}), 0) << err.str();
  EXPECT_EQ(out.str(),
            "axis,name,result\n0,feed,downloaded\n3,lift,downloaded\n"
            "A,gripper,downloaded\n");
  EXPECT_EQ(Of({"compare"}), 0) << out.str();
  EXPECT_EQ(Run({"send", "3PRM100", "--axis", "3", "--port", "COM1"}), 0) << err.str();
  EXPECT_NE(out.str().find("77\n"), std::string::npos) << out.str();
  ASSERT_EQ(Run({"set", world.folder.At("y.spj"), "Pn100=40"}), 0);
  EXPECT_EQ(Of({"upload", "--axes", "3", "--yes"}), 0) << err.str();
  EXPECT_EQ(Of({"compare"}), 0) << out.str();
}

// An axis that is missing, and a project that is: the others are done all the same.
TEST_F(Line, GoesOnBehindAnAxisThatFails) {
  file = WriteFile("line.toml",
                   "port = \"COM1\"\n[axis.0]\nproject = \"none.spj\"\n"
                   "[axis.5]\nproject = \"y.spj\"\n[axis.A]\nproject = \"z.spj\"\n");
  EXPECT_EQ(Of({"compare"}), 1);
  EXPECT_EQ(out.str(), "axis,name,result,differences\n0,,failed,\n5,,absent,\nA,,different,9\n");
  EXPECT_NE(err.str().find("Project file none.spj cannot be found"), std::string::npos);
}

// What it has not answered costs its time-outs; the others are asked and answered as ever.
TEST_F(Line, AnAxisThatFallsSilentCostsItsTimeOutsAlone) {
  port.SetPaced(true);
  const auto compared = [this](const std::string& axes) {
    const Micros begin = port.Now();
    (void)Of({"compare", "--axes", axes});
    return port.Now() - begin;
  };
  const Micros others = compared("0,A");
  const Micros whole = compared("0,3,A");
  line.Amplifier('3')->ForgetWhatWasAsked();
  port.OnTimePassing([this](Micros) {
    // From then on nobody listens there.
    SimulatedAmplifier* const axis = line.Amplifier('3');
    if (axis != nullptr && axis->Asked("PRM") == 50) axis->State().settings.axis = '9';
  });
  const Micros silent = compared("0,3,A");
  EXPECT_EQ(out.str().substr(out.str().find("3,lift")), "3,lift,failed,\nA,gripper,different,9\n");
  const Micros timeOuts = silent - others;
  EXPECT_LT(timeOuts, std::chrono::seconds(12)) << "two time-outs of 5 s, and 50 answers";
  EXPECT_GT(whole, others);
}

TEST_F(Line, ResetsAlarmsAndWritesReports) {
  line.Amplifier('3')->RaiseAlarm("A.40");
  EXPECT_EQ(Of({"reset-alarm", "--axes", "0,3"}), 0) << err.str();
  EXPECT_EQ(out.str(), "axis,name,result,alarm\n0,feed,reset,BB\n3,lift,reset,BB\n");
  const std::string folder = world.folder.At("reports");
  EXPECT_EQ(Of({"report", "--out", folder, "--axes", "0,A"}), 0) << err.str();
  EXPECT_EQ(out.str(), "axis,name,result,file\n0,feed,written," + folder +
                           "/axis0.pdf\nA,gripper,written," + folder + "/axisA.pdf\n");
  EXPECT_EQ(world.files.ReadAll(folder + "/axisA.pdf"), "%PDF of z");
  EXPECT_EQ(Of({"report", "--out", folder, "--axes", "0"}), 2) << "over a file without --yes";
}

TEST_F(Line, SetsAndCopiesProjectsBehindALook) {
  EXPECT_EQ(Of({"set", "Pn100=60", "--axes", "0,3"}), 0) << err.str();
  EXPECT_EQ(Of({"set", "Pn102=99999"}), 1);
  EXPECT_EQ(out.str(), "axis,name,result\n0,feed,failed\n3,lift,failed\nA,gripper,failed\n");
  EXPECT_EQ(Of({"copy", "--from", "0", "--to", "3,A"}), 0) << err.str();
  EXPECT_EQ(out.str(),
            "axis,name,result,differences\n0,feed,-,\n3,lift,equal,0\n"
            "A,gripper,would change,1\n");
  EXPECT_EQ(Run({"diff", world.folder.At("x.spj"), world.folder.At("z.spj")}), 1);
  EXPECT_EQ(Of({"copy", "--from", "0", "--to", "3,A", "--yes"}), 0) << err.str();
  EXPECT_EQ(Run({"diff", world.folder.At("x.spj"), world.folder.At("z.spj")}), 0);
}

TEST_F(Line, IsMonitoredInTurn) {
  EXPECT_EQ(Of({"monitor", "--count", "2", "--items", "PUN", "--axes", "0,A"}), 0) << err.str();
  const std::string text = out.str();
  EXPECT_EQ(std::ranges::count(text, '\n'), 5) << text;
  EXPECT_NE(text.find(",A,0\n"), std::string::npos) << text;
}

TEST_F(Line, RefusesAFileWithItsLines) {
  file =
      WriteFile("line.toml", "baud = 300\ncolour = 1\n[axis.Q]\n[axis.3]\nname = 5\nlength = 1\n");
  EXPECT_EQ(Of({"scan"}), 1);
  EXPECT_EQ(err.str(), file + ":1: The line has no port\n" + file +
                           ":1: baud takes a speed of the amplifier, 9600 to 38400\n" + file +
                           ":2: 'colour' is none of port, baud, axis and watch\n" + file +
                           ":3: 'Q' is no axis: [axis.0] to [axis.F]\n" + file +
                           ":5: name takes a text in quotes\n" + file +
                           ":6: 'length' is none of name and project\n");
  EXPECT_EQ(Of({"sing"}), 2);
  file = WriteFile("line.toml",
                   "port = \"COM1\"\n[axis.3]\n[watch]\nbroker = 1\nspool = 7\nevery = \"x\"\n"
                   "items = [\"PUN\", \"WARM\"]\npassword = \"secret\"\n");
  EXPECT_EQ(Of({"scan"}), 1);
  EXPECT_EQ(err.str(),
            file + ":4: broker takes a text in quotes\n" + file +
                ":5: spool takes a whole number from 8 to 1000000\n" + file +
                ":6: every takes a whole number from 0 to 3600\n" + file +
                ":7: 'WARM' is none of PUN PER POS DST RPOS RDST PFB NFB NREF TREF STS IN1 IN2 "
                "OUT1 OUT2\n" +
                file +
                ":8: 'password' is none of broker, topic, user, password_file, authority, "
                "certificate, key, folder, csv, metrics, listen, spool, recordings, csv_limit, "
                "every and items\n");
}

// A line file's watch keeps its recordings apart; both names of the place list them.
TEST_F(Line, ListsTheRecordingsOfItsWatch) {
  const std::string kept = world.folder.At("line.watch/recordings");
  std::filesystem::create_directories(kept);
  Recording recording;
  recording.heading.begun = "2026-03-01 14:05:09";
  recording.heading.axis = "3";
  recording.heading.cause = "alarm A.40";
  recording.heading.items = {{"Torque", "%", 0}};
  recording.curves = {{{-1, 5}, {0, 7}}};
  WriteRecording(kept + "/2026-03-01 14-05-09 axis 3 alarm A.40.csv", file, recording);
  for (const std::string& place : {file, world.folder.At("line.watch")}) {
    EXPECT_EQ(Run({"recordings", place}), 0) << err.str();
    EXPECT_EQ(out.str(),
              "recording,moment,axis,began,rate,note\n2026-03-01 14-05-09 axis 3 alarm "
              "A.40,2026-03-01 14:05:09,3,alarm A.40,,\n");
  }
  EXPECT_EQ(Run({"recordings", world.folder.At("nothing")}), 1);
}

}  // namespace
}  // namespace velmoor
