// What stands in the main window while no tool window is open: the start page and the project's
// road.

#include <algorithm>

#include "AppSession.h"
#include "FakeSerialPorts.h"
#include "project/data/Schema.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

class Pages : public AppSession {
 protected:
  // Starts without a project.
  void StartEmpty() {
    data.dialogs.answers.push_back(std::nullopt);
    ASSERT_TRUE(Start(""));
  }
  void StartOnProject() {
    path = data.MakeProject("line1.spj");
    ASSERT_TRUE(Start(path));
  }
  headless::HeadlessGrid& GridOf(const char* form, const char* grid) {
    return data.forms.Get(form).grid(grid);
  }
  // The texts of the row that begins with that step, without its number and its purpose.
  Texts Step(const std::string& title) {
    const GridSource& rows = *GridOf("frmProject", "vsRoad").Source();
    for (int row = 1; row < rows.Rows(); ++row) {
      if (rows.Text(row, 1) == title) return {rows.Text(row, 3), rows.Text(row, 4)};
    }
    return {};
  }
  void Choose(const std::string& title) {
    headless::HeadlessGrid& grid = GridOf("frmProject", "vsRoad");
    for (int row = 1; row < grid.Source()->Rows(); ++row) {
      if (grid.Source()->Text(row, 1) == title) return grid.RowChosen.Raise(row);
    }
    ADD_FAILURE() << "The road has no step " << title;
  }
  void Edit(int row, const std::string& speed) {
    Project().Jog().SetText(row, 0, speed);
    Project().Jog().SetDirtyCell(row, true);
    ASSERT_TRUE(Project().Jog().ChangeAccepted());
    PauseInSec(1);
  }
  void Download() {
    data.boxes.Expect("Do you wish to proceed?", BoxAnswer::ok);
    Choose("Download");
    EXPECT_EQ(LastHead(), "Download New complete!");
  }
};

// ---- without a project

TEST_F(Pages, RecentProjectsAreToldWithWhatTheirFilesHold) {
  const std::string fresh = data.MakeProject("line1.spj");
  const std::string marked = data.MakeProject("line2.spj");
  {
    const auto database = OpenForWriting(marked);
    const auto jog = database->OpenTable(schema::Jog::kTable, schema::Jog::kJog);
    jog->MoveFirst();
    jog->Edit();
    jog->Set(schema::Jog::kDirty, "1");
    jog->Update();
    database->Commit();
  }
  data.databases.Release(marked);
  data.files.WriteDurably(data.folder.At("foreign.spj"), "not a database");
  data.settings.values = {{"RecentFile1", fresh},
                          {"RecentFile2", marked},
                          {"RecentFile4", data.folder.At("gone.spj")},
                          {"RecentFile5", data.folder.At("foreign.spj")}};
  StartEmpty();
  PauseInSec(1);
  const GridSource& rows = *GridOf("frmStart", "vsRecent").Source();
  Texts told;
  for (int row = 1; row < rows.Rows(); ++row) {
    told.push_back(rows.Text(row, 0) + ": " + rows.Text(row, 3));
    EXPECT_EQ(rows.Text(row, 1), data.folder.Path().string());
    EXPECT_EQ(rows.Text(row, 2).size(), rows.Text(row, 0) == "gone" ? 0U : 16U);
  }
  EXPECT_EQ(told, (Texts{"line1: Not delivered yet", "line2: To download: 1", "gone: Not found",
                         "foreign: Cannot be read"}));
  // The place in the list, not the row.
  GridOf("frmStart", "vsRecent").RowChosen.Raise(3);
  ASSERT_EQ(data.boxes.shown.size(), 1U);
  EXPECT_NE(data.boxes.shown[0].text.find("gone.spj cannot be found"), std::string::npos);
  data.boxes.shown.clear();
  EXPECT_EQ(rows.Rows(), 4);
  GridOf("frmStart", "vsRecent").RowChosen.Raise(2);
  EXPECT_EQ(Main().Caption(), "Velmoor - line2");
  EXPECT_FALSE(data.forms.IsOpen("frmStart"));
  EXPECT_EQ(Step("Jog table"), (Texts{"To download: 1", "Open"}));
}

TEST_F(Pages, AnAmplifierIsReadIntoANewProject) {
  StartEmpty();
  EXPECT_TRUE(Amplifier().State().memory.parameters.Write(0x100, "55"));
  data.dialogs.answers.push_back(data.folder.At("read.spj"));
  data.boxes.Expect("Do you wish to continue?", BoxAnswer::yes);
  data.boxes.Expect("Do you wish to continue with upload?", BoxAnswer::yes);
  data.forms.OnShow("frmCompare", [](headless::HeadlessForm& form) { form.Press("cmdCancel"); });
  data.boxes.Expect("Commit uploaded data to project?", BoxAnswer::yes);
  data.forms.Get("frmStart").Press("cmdRead");
  EXPECT_EQ(Main().Caption(), "Velmoor - read");
  EXPECT_EQ(Project().Parameters().Get("Pn100").controller, "55");
  Main().Choose("mnuModuleEditor");
  EXPECT_TRUE(Step("Parameters").at(0).starts_with("Read from the amplifier 20"));
}

TEST_F(Pages, TheSimulatedAmplifierIsOneChoiceAway) {
  FakeSerialPorts ports;
  data.world.serialPorts = &ports;
  StartEmpty();
  data.dialogs.answers.push_back(data.folder.At("try.spj"));
  data.forms.Get("frmStart").Press("cmdTry");
  EXPECT_EQ(Boxes(), Texts{"Settings changed and communications established successfully!"});
  EXPECT_EQ(ports.simulatorRates, std::vector<std::int32_t>{9600});
  EXPECT_EQ(Main().Panel(StatusPanel::port), "Simulated amplifier");
  EXPECT_EQ(Step("Connect").at(1), "Disconnect");
  data.world.serialPorts = nullptr;
}

TEST_F(Pages, TheLineIsUsedWithoutAProject) {
  StartEmpty();
  Main().Choose("mnuToolsOnline");
  EXPECT_EQ(Status(), "System Status: Online");
  EXPECT_TRUE(data.forms.IsOpen("frmStart"));
  EXPECT_TRUE(Main().Close());
  EXPECT_FALSE(port.IsOpen());
}

// ---- the road of a project

TEST_F(Pages, AStepTellsHowFarItsToolIs) {
  StartOnProject();
  for (const char* const step : {"Machine", "Limits", "Homing", "Index table", "Jog table"}) {
    EXPECT_EQ(Step(step), (Texts{"Untouched", "Set Up"})) << step;
  }
  EXPECT_EQ(Step("Test run"), (Texts{"Needs the amplifier", "Connect"}));
  Edit(1, "12.0");
  EXPECT_EQ(Step("Jog table"), (Texts{"To download: 1", "Open"}));
  Choose("Connect");
  EXPECT_EQ(Step("Connect"), (Texts{"Online", "Disconnect"}));
  EXPECT_EQ(Step("Test run"), (Texts{"Ready", "Open"}));
  Download();
  const std::string delivered = Step("Jog table").at(0);
  EXPECT_TRUE(delivered.starts_with("Delivered 20")) << delivered;
  EXPECT_EQ(Step("Zone table").at(0), "Untouched");
  // The file knows it, though the edit itself was not saved.
  ASSERT_TRUE(Project().NeedsSaving());
  data.boxes.Expect("Reopening active project", BoxAnswer::ok);
  data.boxes.Expect("has not been saved yet.", BoxAnswer::yes);
  instance.deliver(path);
  EXPECT_EQ(Step("Jog table").at(0), delivered);
}

TEST_F(Pages, WhatAComparisonHasFoundIsToldUntilSomethingIsSent) {
  StartOnline();
  data.boxes.Expect("Do you wish to proceed?", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_TRUE(Amplifier().State().memory.parameters.Write(0x100, "55"));
  data.forms.OnShow("frmCompare", [](headless::HeadlessForm& form) { form.Press("cmdCancel"); });
  Main().Choose("mnuToolsCompare");
  Main().Choose("mnuModuleEditor");
  EXPECT_EQ(Step("Parameters").at(0), "Differs from the amplifier: 1");
  EXPECT_EQ(Step("Compare").at(0), "Values that differ: 1");
  EXPECT_EQ(Step("Download"), (Texts{"The amplifier holds something else", "Download All"}));
  data.boxes.Expect("Do you wish to proceed?", BoxAnswer::ok);
  Choose("Download");
  EXPECT_TRUE(Step("Parameters").at(0).starts_with("Delivered 20"));
  EXPECT_EQ(Step("Compare").at(0), "Not compared yet");
  data.boxes.shown.clear();
}

TEST_F(Pages, EachModuleShowsItsRoadWhereNoWindowIsOpen) {
  StartOnProject();
  const std::pair<const char*, const char*> roads[] = {{"mnuModuleTestRun", "Home position"},
                                                       {"mnuModuleTuning", "Tune"},
                                                       {"mnuModuleMonitoring", "Terminal"},
                                                       {"mnuModuleEditor", "Parameters"},
                                                       {"mnuModuleIndexer", "Homing"}};
  for (const auto& [command, step] : roads) {
    Main().Choose(command);
    EXPECT_FALSE(Step(step).empty()) << command;
  }
  Choose("Homing");
  EXPECT_TRUE(data.forms.IsOpen("frmProperties"));
  EXPECT_EQ(data.forms.Shown().size(), 1U);
}

// ---- from one project to none

TEST_F(Pages, AProjectIsClosedWithItsQuestionsAndLeavesTheStartPage) {
  StartOnProject();
  Main().Choose("mnuToolsOnline");
  Edit(1, "12.0");
  data.boxes.shown.clear();
  data.boxes.Expect("has not been saved yet.", BoxAnswer::cancel);
  Main().Choose("mnuFileClose");
  EXPECT_TRUE(data.forms.IsOpen("frmProject"));
  data.boxes.Expect("has not been saved yet.", BoxAnswer::no);
  Main().Choose("mnuFileClose");
  EXPECT_EQ(Main().Caption(), "Velmoor");
  EXPECT_EQ(Status(), "System Status: Project 'line1' closed.");
  EXPECT_TRUE(data.forms.IsOpen("frmStart"));
  EXPECT_TRUE(Form().IsOnline());
  EXPECT_EQ(gMainForm->CurrentProject(), nullptr);
  EXPECT_FALSE(std::filesystem::exists(data.folder.At("line1.tmp")));
}

TEST_F(Pages, ARecentProjectStaysWhileAnotherProgramHasIt) {
  const std::string used = data.MakeProject("line2.spj");
  data.settings.values["RecentFile1"] = used;
  StartEmpty();
  {
    const auto lock = data.files.Lock(data.folder.At("line2.tmp"));
    Main().ChooseRecent(0);
    EXPECT_NE(Boxes().at(0).find("is in use by another program!"), std::string::npos);
    EXPECT_EQ(Main().RecentEntries().front(), "&1 " + used);
  }
  std::filesystem::remove(used);
  Main().ChooseRecent(0);
  EXPECT_EQ(Main().RecentEntries().front(), "");
  data.boxes.shown.clear();
}

// ---- work that a killed program had not saved

class UnsavedWork : public Pages {
 protected:
  // Opens line1 behind a program that was killed with a speed in the jog table not saved.
  void OpenBehindAKill(const std::function<void(headless::HeadlessForm&)>& user) {
    StartOnProject();
    Edit(1, "12.0");
    const std::string left = data.files.ReadAll(data.folder.At("line1.tmp"));
    data.boxes.Expect("has not been saved yet.", BoxAnswer::no);
    Main().Choose("mnuFileClose");
    data.boxes.shown.clear();
    data.files.WriteDurably(data.folder.At("line1.tmp"), left);
    data.forms.OnShow("frmRecovery", user);
    Main().ChooseRecent(0);
    EXPECT_EQ(Main().Caption(), "Velmoor - line1");
  }
  bool IsKept() { return std::filesystem::exists(data.folder.At("line1.unsaved.spj")); }
  bool HoldsSpeed() { return Project().MarkedOf(Tool::jog) == 1; }
};

TEST_F(UnsavedWork, IsRecoveredAndCanBeSaved) {
  OpenBehindAKill([this](headless::HeadlessForm& form) {
    EXPECT_EQ(form.label("lblWords").Text(),
              "Velmoor ended last without saving project line1.spj.\r\r"
              "Values that were not saved:\rJog Table: 1");
    EXPECT_TRUE(IsKept()) << "the work is safe while the question waits";
    form.Press("cmdRecover");
  });
  EXPECT_TRUE(HoldsSpeed());
  EXPECT_TRUE(Project().NeedsSaving());
  EXPECT_FALSE(IsKept());
  Main().Choose("mnuFileSave");
  Main().Choose("mnuFileClose");
  Main().ChooseRecent(0);
  EXPECT_TRUE(HoldsSpeed());
  EXPECT_TRUE(data.boxes.shown.empty());
}

TEST_F(UnsavedWork, IsDiscardedForGood) {
  OpenBehindAKill([](headless::HeadlessForm& form) { form.Press("cmdDiscard"); });
  EXPECT_FALSE(HoldsSpeed());
  EXPECT_FALSE(Project().NeedsSaving());
  EXPECT_FALSE(IsKept());
}

TEST_F(UnsavedWork, IsShownAndKeptUntilSomebodyDecides) {
  data.forms.OnShow("frmCompare", [](headless::HeadlessForm& form) {
    EXPECT_EQ(form.grid("vsFG").Source()->Text(0, 4), "Not Saved");
    EXPECT_EQ(form.grid("vsFG").Source()->Text(1, 0), "Jog Table");
    form.Press("cmdCancel");
  });
  OpenBehindAKill([](headless::HeadlessForm& form) {
    form.Press("cmdDifferences");
    form.Press("cmdCancel");
  });
  EXPECT_FALSE(HoldsSpeed());
  EXPECT_TRUE(IsKept());
  EXPECT_NE(Boxes().at(0).find("line1.unsaved.spj"), std::string::npos);
}

// ---- dropped files

TEST_F(Pages, AProjectOrATableCanBeDropped) {
  StartEmpty();
  path = data.MakeProject("line1.spj");
  const auto drop = [this](const std::string& name, const std::string& text) {
    if (!text.empty()) data.files.WriteDurably(data.folder.At(name), text);
    Main().FileDropped.Raise(data.folder.At(name));
  };
  drop("jog.csv", "jog,speed\n2,15\n");
  EXPECT_TRUE(Boxes().at(0).starts_with("A table is read into a project: open or make one first!"));
  drop("line1.spj", "");
  EXPECT_EQ(Main().Caption(), "Velmoor - line1");
  drop("jog.csv", "");
  EXPECT_TRUE(data.forms.IsOpen("frmJog"));
  EXPECT_NE(ExportCsv(Project().Jog()).find("\n2,15"), std::string::npos);
  drop("other.csv", "a,b\n");
  EXPECT_TRUE(Boxes().at(0).starts_with("The file tells none of the columns of a table!"));
  drop("notes.txt", "a");
  EXPECT_TRUE(Boxes().at(0).starts_with("Only projects (.spj), lines (.toml) and tables (.csv)"));
  Project().Jog().DropEdits();
}

}  // namespace
}  // namespace velmoor
