// A download that reads back what it sent.
#include <algorithm>

#include "AppSession.h"

namespace velmoor {
namespace {

class Verify : public AppSession {
 protected:
  // Answers the question of a download, ticked.
  void Agree(const std::string& question) {
    data.boxes.Expect(question, BoxAnswer::ok, [this] {
      ASSERT_NE(data.boxes.tick, nullptr);
      caption = data.boxes.tick->caption;
      EXPECT_FALSE(data.boxes.tick->on) << "off unless it is wanted";
      data.boxes.tick->on = true;
    });
  }
  // Runs `work` before the first row of a tool is sent.
  Connection Before(Tool wanted, std::function<void()> work) {
    return Project().ToolDownloading.Connect(
        [wanted, work = std::move(work)](Tool tool, std::int16_t row, std::int16_t) {
          if (tool == wanted && row == 1) work();
        });
  }
  // The place of a line in what the amplifier was asked, -1 where it was not.
  int Place(const std::string& line_) {
    const auto& journal = Amplifier().Journal();
    const auto at = std::ranges::find(journal, line_, &JournalEntry::line);
    return at == journal.end() ? -1 : static_cast<int>(at - journal.begin());
  }

  std::string caption;
};

TEST_F(Verify, ReadsEverythingBeforeItIsStoredAndASampleBehindTheRestart) {
  StartOnline();
  Amplifier().ForgetWhatWasAsked();
  Agree("All parameter and table data will be downloaded");
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(LastHead(), "Download All complete!");
  EXPECT_EQ(caption, "&Verify: read back what was sent before it is stored (about 47 s more)");
  for (const char* const word : {"POST5", "NEXTT127", "EVENTT64"}) {
    const int read = Place(std::string("0") + word);
    EXPECT_GT(read, 0) << word;
    EXPECT_LT(read, Place("0PGMSTORE")) << word;
  }
  EXPECT_LT(Place("0JSPDT15"), Place("0JSPDSTORE"));
  EXPECT_GT(Place("0JSPDT15"), Place("0PGMSTORE"));
  EXPECT_LT(Place("0PRM100"), Place("0RES"));
  EXPECT_GT(Place("0PRM100"), Place("0ZONESTORE"));
  const auto& journal = Amplifier().Journal();
  const auto behind =
      std::count_if(journal.begin() + Place("0RES"), journal.end(), [](const JournalEntry& entry) {
        return entry.line.starts_with("0PRM") || entry.line.starts_with("0POST") ||
               entry.line.find("T") != std::string::npos;
      });
  EXPECT_GE(behind, 12);
  // Not again unless it is wanted again.
  Amplifier().ForgetWhatWasAsked();
  data.boxes.Expect("All parameter", BoxAnswer::ok, [this] {
    EXPECT_TRUE(data.boxes.tick->on) << "as the user left it";
    data.boxes.tick->on = false;
  });
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(Place("0POST5"), -1);
}

TEST_F(Verify, ARowThatIsHeldOtherwiseIsNamedAndNotStored) {
  StartOnline();
  Agree("Index Table of the project");
  const Connection last =
      Project().ToolDownloading.Connect([this](Tool, std::int16_t row, std::int16_t rows) {
        if (row == rows) (void)Amplifier().Execute("SPDT4=777", Micros(0));
      });
  Main().Choose("mnuToolsDownloadTableIndex");
  const std::string words = Boxes().back();
  EXPECT_TRUE(
      words.starts_with("Error downloading data to controller!\r\r"
                        "Read back, one value is not what was sent:\r"
                        "step 5 of the index table (speed): sent nothing"))
      << words;
  EXPECT_NE(words.find(
                ", holds 00000777\r\r128 items stay on offer (Index Position table): Download New"),
            std::string::npos)
      << words;
  EXPECT_EQ(Place("0PGMSTORE"), -1);
}

TEST_F(Verify, AParameterThatIsHeldOtherwiseStaysOnOffer) {
  StartOnline();
  Agree("All parameter and table data");
  const Connection changes = Before(Tool::mechanicalSystem, [this] {
    Amplifier().State().memory.parameters.Write(0x100, "55");
    Amplifier().State().memory.parameters.Write(0x826, "3");
  });
  Main().Choose("mnuToolsDownloadAll");
  const std::string words = Boxes().back();
  EXPECT_NE(words.find("Read back, 2 values are not what was sent:\rPn100: sent 40, holds "),
            std::string::npos)
      << words;
  EXPECT_NE(words.find("2 items stay on offer (All parameters)"), std::string::npos) << words;
  EXPECT_EQ(Place("0RES"), -1);
  data.boxes.Expect("The following items have been modified:", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadNew");
  EXPECT_EQ(LastHead(), "Download New complete!");
  EXPECT_EQ(Amplifier().State().memory.parameters.Value(0x100), 40);
}

TEST_F(Verify, WhatTheRestartShowsOtherwiseIsNoSuccess) {
  StartOnline();
  Agree("Homing Parameters of the project");
  line.faults.Add({.kind = FaultKind::wrongAnswer,
                   .match = "PRM81D",
                   .skip = 2,  // the writing, and the reading before the restart
                   .text = "0PN81D=00000009"});
  Main().Choose("mnuToolsDownloadParameterHoming");
  const Texts boxes = Boxes();
  EXPECT_TRUE(
      boxes.back().starts_with("Not everything is stored as it was sent!\r\r"
                               "Read back, one value is not what was sent:\rPn81D: sent "))
      << boxes.back();
  EXPECT_EQ(std::ranges::count(boxes, "Download Homing Parameters complete!"), 0);
  EXPECT_EQ(Project().GetNumberOfNewDownloads(), 1);
}

TEST_F(Verify, AStopAndASilenceEndIt) {
  StartOnline();
  Agree("Zone Table of the project");
  line.faults.Add({.kind = FaultKind::silence, .match = "ZONEPT9", .skip = 1, .count = 1});
  Main().Choose("mnuToolsDownloadTableZone");
  const std::string words = Boxes().back();
  EXPECT_TRUE(words.starts_with(
      "Error downloading data to controller!\r\rReading row 9 of the zone table (upper limit)"))
      << words;
  EXPECT_EQ(Place("0ZONESTORE"), -1);
  data.boxes.Expect("Zone Table of the project", BoxAnswer::ok);
  data.forms.OnShow("frmDialogStop", [this](headless::HeadlessForm& form) {
    data.events.AtYield(50, [&form] { form.Press("cmdStop"); });
  });
  Main().Choose("mnuToolsDownloadTableZone");
  EXPECT_TRUE(Boxes().back().starts_with("Download Zone Table terminated!"));
}

}  // namespace
}  // namespace velmoor
