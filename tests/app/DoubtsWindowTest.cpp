// The window with the values in doubt: at opening, before a download, behind an upload.
#include <algorithm>

#include "AppSession.h"
#include "support/DoubtfulProject.h"

namespace velmoor {
namespace {

using headless::HeadlessForm;
using schema::Parameters;

constexpr const char* kRefused = "Nothing is downloaded while values of the project are in doubt!";

class DoubtsWindow : public AppSession {
 protected:
  void SetUp() override {
    path = data.MakeProject("line1.spj");
    {
      const auto database = OpenForWriting(path);
      PutDoubtfulJogSpeed(*database);
      const auto parameters = database->OpenTable(Parameters::kTable);
      parameters->FindFirst(Parameters::kPn, "Pn100");
      parameters->Edit();
      parameters->Set(Parameters::kValue, "65000");
      parameters->Set(Parameters::kControllerValue, "65000");
      parameters->Update();
      database->Commit();
    }
    data.databases.Release(path);
  }
  void Close() {
    data.forms.OnShow("frmDoubts", [](HeadlessForm& form) { form.Press("cmdCancel"); });
  }
  std::vector<std::string> Writes() {
    std::vector<std::string> writes;
    for (const JournalEntry& entry : Amplifier().Journal()) {
      const bool counts = entry.line.find('=') != std::string::npos && entry.line != "0PRM802=1";
      if (counts) writes.push_back(entry.line);
    }
    return writes;
  }
};

TEST_F(DoubtsWindow, TellsBothValuesAndOffersWhatCanStay) {
  data.forms.OnShow("frmDoubts", [](HeadlessForm& form) {
    EXPECT_EQ(form.label("lblSummary").Text().substr(0, 23), "2 values are in doubt. ");
    headless::HeadlessGrid& grid = form.grid("vsFG");
    const auto row = [&grid](int number) {
      Texts texts;
      for (int column = 0; column < 6; ++column)
        texts.push_back(grid.Source()->Text(number, column));
      return texts;
    };
    EXPECT_EQ(row(1), (Texts{"Jog Table row 2, Speed", "10.000", "300000", "5000.000",
                             "0.000 to 1666666.650 mm/sec", "Shows another value than it sends"}));
    EXPECT_EQ(row(2), (Texts{"Pn100, Speed loop gain", "", "65000", "65000", "1 to 2000 Hz",
                             "Outside of the limits"}));
    EXPECT_TRUE(form.button("cmdShown").Enabled());
    grid.GoTo(2, 0);
    EXPECT_FALSE(form.button("cmdShown").Enabled()) << "there is one value alone";
    EXPECT_TRUE(form.button("cmdSent").Enabled());
    grid.GoTo(1, 0);
    form.Press("cmdShown");
    EXPECT_EQ(grid.Source()->Rows(), 2) << "one is left";
    form.Press("cmdCancel");
  });
  ASSERT_TRUE(Start(path));
  EXPECT_EQ(Project().Jog().Text(3, clsHX7Jog::speed), "10.000");
  EXPECT_EQ(Project().Jog().DirtyCell(3), "1");
  EXPECT_TRUE(Project().NeedsSaving());
}

TEST_F(DoubtsWindow, NothingGoesOutBeforeEachIsSettled) {
  Close();
  ASSERT_TRUE(Start(path));
  data.boxes.Expect("Do you wish to take the motor's rated power into the project?", BoxAnswer::no);
  Main().Choose("mnuToolsOnline");
  data.boxes.shown.clear();
  Amplifier().ForgetWhatWasAsked();
  for (const char* const command :
       {"mnuToolsDownloadAll", "mnuToolsDownloadNew", "mnuToolsDownloadTableJog"}) {
    Close();
    Main().Choose(command);
    EXPECT_EQ(Boxes(), Texts{kRefused}) << command;
  }
  EXPECT_EQ(Writes(), Texts{});
  data.forms.OnShow("frmDoubts", [this](HeadlessForm& form) {
    form.Press("cmdAll");
    form.Press("cmdSent");
    EXPECT_EQ(std::ranges::count(data.forms.Shown(), &form), 0) << "nothing is left to settle";
  });
  data.boxes.Expect("Jog Table of the project will be downloaded", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadTableJog");
  const Texts writes = Writes();
  EXPECT_NE(std::find(writes.begin(), writes.end(), "0JSPDT2=300000"), writes.end());
}

TEST_F(DoubtsWindow, ListsWhatAnUploadBroughtThatNobodyCouldHaveTyped) {
  path = data.MakeProject("line2.spj");
  ASSERT_TRUE(Start(path));
  Main().Choose("mnuToolsOnline");
  Amplifier().State().memory.jog.working[4] = "-0000060";
  data.boxes.Expect("Existing Jog Table will be overwritten", BoxAnswer::yes);
  data.boxes.Expect("Commit uploaded data to project?", BoxAnswer::yes);
  data.forms.OnShow("frmCompare", [](HeadlessForm& form) { form.Press("cmdCancel"); });
  data.forms.OnShow("frmDoubts", [](HeadlessForm& form) {
    EXPECT_EQ(form.grid("vsFG").Source()->Text(1, 0), "Jog Table row 4, Speed");
    EXPECT_EQ(form.grid("vsFG").Source()->Text(1, 2), "-60");
    form.Press("cmdCancel");
  });
  Main().Choose("mnuToolsUploadTableJog");
  EXPECT_EQ(Project().Jog().Text(5, clsHX7Jog::speed), "-1.000");
}

}  // namespace
}  // namespace velmoor
