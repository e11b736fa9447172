// The history of transfers: what is kept of them, and sent back.
#include <algorithm>
#include <map>

#include "AppSession.h"
#include "operations/TransferHistory.h"
#include "project/ProjectCompare.h"

namespace velmoor {
namespace {

using headless::HeadlessForm;

class History : public AppSession {
 protected:
  // All that stays in the amplifier when it is switched off.
  struct Held {
    std::map<std::uint32_t, std::string> parameters;
    IndexTable index;
    ZoneTable zones;
    JogTable jog;
    bool operator==(const Held&) const = default;
  };
  friend void PrintTo(const Held& held, std::ostream* out) {
    for (const auto& [pn, value] : held.parameters) *out << pn << "=" << value << " ";
    for (const auto& row : held.index)
      for (const auto& cell : row) *out << cell << " ";
    for (const auto& row : held.zones)
      for (const auto& cell : row) *out << cell << " ";
    for (const auto& cell : held.jog) *out << cell << " ";
  }
  Held HeldNow() {
    const AmplifierMemory& memory = Amplifier().State().memory;
    Held held{{}, memory.index.stored, memory.zones.stored, memory.jog.stored};
    for (std::uint32_t pn = 0; pn < 0x1000; ++pn) {
      if (const auto value = memory.parameters.Read(pn)) held.parameters[pn] = *value;
    }
    return held;
  }
  // Nothing was ever sent from the project.
  void StartOnUnknownAxis() {
    StartOnline();
    std::filesystem::remove_all(data.folder.At("line1.history"));
  }
  // A set-up of somebody else: positions and speeds of a hundred steps, and gains.
  void SetUpAmplifier() {
    for (int step = 0; step < 100; ++step) {
      const std::string number = std::to_string(step);
      (void)Amplifier().Execute("POST" + number + "=A+" + std::to_string(1000 + step), Micros(0));
      (void)Amplifier().Execute("SPDT" + number + "=" + std::to_string(100 + step), Micros(0));
    }
    (void)Amplifier().Execute("PGMSTORE", Micros(0));
    Amplifier().State().memory.parameters.Write(0x100, "55");
    Amplifier().State().memory.parameters.Write(0x102, "33");
  }
  // Answers a question of a download, with those ticks.
  void Agree(const std::string& question, bool keep) {
    data.boxes.Expect(question, BoxAnswer::ok, [this, keep] {
      BoxTick* const keeping = data.boxes.tick->next;
      if (keeping == nullptr) return;
      offered = keeping->on;
      caption = keeping->caption;
      keeping->on = keep;
    });
  }
  void DownloadAll(bool keep) {
    Agree("All parameter and table data will be downloaded", keep);
    Main().Choose("mnuToolsDownloadAll");
  }
  // The history's window, with `work` in it.
  void Look(const std::function<void(HeadlessForm& form)>& work) {
    data.forms.OnShow("frmHistory", [&work](HeadlessForm& form) {
      work(form);
      form.Press("cmdCancel");
    });
    Main().Choose("mnuViewHistory");
  }
  static Texts RowOf(HeadlessForm& form, const std::string& grid, int row) {
    const GridSource& source = *form.grid(grid).Source();
    Texts cells;
    for (int column = 0; column < source.Columns(); ++column) {
      cells.push_back(source.Text(row, column));
    }
    return cells;
  }
  std::vector<HistoryEntry> Entries() { return TransferHistory(path).Entries(); }

  bool offered = false;
  std::string caption;
};

TEST_F(History, WhatWasThereComesBackAlsoBehindACutAndAPowerCycle) {
  StartOnUnknownAxis();
  // Such as has a machine.
  DownloadAll(false);
  std::filesystem::remove_all(data.folder.At("line1.history"));
  SetUpAmplifier();
  const Held before = HeldNow();
  DownloadAll(true);
  EXPECT_TRUE(offered) << "nobody knows what this axis holds";
  EXPECT_EQ(caption, "&Keep what is there first, in the history (about 47 s more)");
  EXPECT_EQ(LastHead(), "Download All complete!");
  EXPECT_NE(HeldNow(), before);
  ASSERT_EQ(Entries().size(), 1u);
  const HistoryEntry entry = Entries().front();
  EXPECT_TRUE(entry.read);
  EXPECT_EQ(entry.result, "complete");

  const auto sendBack = [this] {
    Look([this](HeadlessForm& form) {
      form.grid("vsEntries").GoTo(form.grid("vsEntries").Source()->Rows() - 1, 0);
      EXPECT_EQ(RowOf(form, "vsEntries", form.grid("vsEntries").Row()).back(),
                "read from the amplifier");
      EXPECT_GE(form.grid("vsFG").Source()->Rows(), 203);
      Agree("What axis 0 held before \"Download All\"", false);
      form.Press("cmdSend");
    });
  };
  // The line goes while the index table is sent.
  line.faults.Add({.kind = FaultKind::silence, .match = "POST40=", .count = 0});
  sendBack();
  line.faults.Clear();
  EXPECT_TRUE(Boxes().back().starts_with("Error downloading data to controller!"));
  EXPECT_EQ(Entries().back().result, "failed");
  EXPECT_NE(Entries().back().cause, "");
  EXPECT_GE(Project().GetNumberOfNewDownloads(), 100) << "the project says what may differ";
  Amplifier().Restart(port.Now());
  EXPECT_NE(HeldNow(), before);
  port.Advance(std::chrono::seconds(5));

  sendBack();
  EXPECT_EQ(LastHead(), "Restore complete!");
  EXPECT_EQ(HeldNow(), before);
  Amplifier().Restart(port.Now());
  port.Advance(std::chrono::seconds(5));
  // By reading everything, too: into the project, which holds what the state holds then.
  data.boxes.Expect("All existing table data", BoxAnswer::yes);
  data.boxes.Expect("Commit uploaded data to project?", BoxAnswer::yes);
  data.forms.OnShow("frmCompare", [](HeadlessForm& form) { form.Press("cmdCancel"); });
  Main().Choose("mnuToolsUploadAll");
  EXPECT_FALSE(Differs(CompareProjects(Project().ProjectDatabasePath(),
                                       TransferHistory(path).PathOf(entry.before))));
  EXPECT_EQ(Entries().back().name, "Upload All");
}

TEST_F(History, KnowsWhatItSentLastAndTellsWhatChanged) {
  StartOnUnknownAxis();
  DownloadAll(false);
  Look([](HeadlessForm& form) {
    EXPECT_EQ(RowOf(form, "vsEntries", 1).back(), "not known");
    EXPECT_FALSE(form.button("cmdSend").Enabled());
    EXPECT_FALSE(form.button("cmdCompare").Enabled());
    form.Choose("optState", 1);
    EXPECT_TRUE(form.button("cmdSend").Enabled());
  });
  Main().Choose("mnuToolsIndexerJog");
  data.forms.Get("frmJog").EditCell("vsFG", 3, 1, "12.5");
  data.forms.Get("frmJog").Press("cmdOK");
  Agree("The following items have been modified:", false);
  Main().Choose("mnuToolsDownloadNew");
  EXPECT_FALSE(offered) << "it was sent from here";
  DownloadAll(false);
  EXPECT_FALSE(offered);
  Look([](HeadlessForm& form) {
    EXPECT_EQ(form.grid("vsEntries").Source()->Rows(), 4);
    EXPECT_EQ(form.grid("vsFG").Source()->Rows(), 1) << "the last one changed nothing";
    form.grid("vsEntries").GoTo(2, 0);
    const Texts row = RowOf(form, "vsEntries", 2);
    EXPECT_EQ(Texts(row.begin() + 1, row.end()),
              (Texts{"0", "Download New", "everything", "complete", "as it was sent last"}));
    EXPECT_EQ(form.label("lblChanges").Text(), "Values that it was to change: 1.");
    const Texts change = RowOf(form, "vsFG", 1);
    EXPECT_EQ(change[0], "Jog Table");
    EXPECT_EQ(change[1], "2");
  });
  // Side by side with the project, which takes single values over.
  Look([this](HeadlessForm& form) {
    form.grid("vsEntries").GoTo(2, 0);
    data.forms.OnShow("frmCompare", [](HeadlessForm& compare) {
      EXPECT_EQ(compare.grid("vsFG").Source()->Rows(), 2);
      compare.grid("vsFG").GoTo(1, 0);
      compare.Press("cmdTake");
      compare.Press("cmdCancel");
    });
    form.Press("cmdCompare");
  });
  EXPECT_EQ(Project().Jog().Text(3, clsHX7Jog::speed), "");
  EXPECT_EQ(Project().Jog().DirtyCell(3), "1");
}

// What cannot be kept is not overwritten; what cannot be noted stops nothing.
TEST_F(History, NothingIsSentWhereKeepingFails) {
  StartOnUnknownAxis();
  SetUpAmplifier();
  const Held before = HeldNow();
  line.faults.Add({.kind = FaultKind::silence, .match = "SPDT7", .count = 9});
  DownloadAll(true);
  line.faults.Clear();
  const std::string words = Boxes().back();
  EXPECT_TRUE(words.starts_with("What is there could not be kept!\r\r")) << words;
  EXPECT_TRUE(words.ends_with("\r\rNothing was sent.")) << words;
  EXPECT_EQ(HeldNow(), before);
  EXPECT_EQ(Entries().back().result, "failed");
  EXPECT_EQ(Entries().back().before, "");
  // A file in the place of the folder.
  std::filesystem::remove_all(data.folder.At("line1.history"));
  data.files.WriteDurably(data.folder.At("line1.history"), "");
  DownloadAll(false);
  EXPECT_EQ(LastHead(), "Download All complete!");
  EXPECT_NE(Boxes().back().find("\rThe history could not be written: "), std::string::npos);
  // Nor is a link followed that somebody has put there.
  std::filesystem::remove(data.folder.At("line1.history"));
  std::filesystem::create_directory(data.folder.At("elsewhere"));
  std::filesystem::create_symlink(data.folder.At("elsewhere"), data.folder.At("line1.history"));
  DownloadAll(false);
  EXPECT_NE(Boxes().back().find("line1.history: a link or a file lies in the place of the folder"),
            std::string::npos);
  EXPECT_TRUE(std::filesystem::is_empty(data.folder.At("elsewhere")));
}

TEST_F(History, AKilledProgramLeavesAnEntryAndTheOldestGo) {
  path = data.MakeProject("line1.spj");
  TransferHistory history(path);
  for (int i = 0; i < 103; ++i) {
    HistoryEntry entry{.number = history.NextNumber(),
                       .moment = "2026-03-01 14:05:09",
                       .axis = "0",
                       .name = "Download \"All\"",
                       .parts = {Tool::jog},
                       .result = i == 102 ? kUnderWay : "complete",
                       .cause = {},
                       .before = i > 0 ? std::to_string(i) + "-after.spj" : "",
                       .after = {}};
    entry.after = history.Keep(entry.number, "after", path);
    history.Put(entry);
  }
  const TransferHistory read(path);
  ASSERT_EQ(read.Entries().size(), TransferHistory::kEntries);
  EXPECT_EQ(read.Entries().front().number, 4);
  EXPECT_EQ(ResultOf(read.Entries().back()), "interrupted");
  EXPECT_EQ(read.Entries().back().name, "Download \"All\"");
  EXPECT_EQ(read.Entries().back().parts, std::vector<Tool>{Tool::jog});
  EXPECT_FALSE(data.files.Exists(read.PathOf("2-after.spj")));
  EXPECT_TRUE(data.files.Exists(read.PathOf("3-after.spj"))) << "what entry 4 has overwritten";
  EXPECT_EQ(read.KnownState("0"), "") << "the latest has not ended";
  // Names lead nowhere else.
  data.files.WriteDurably(read.PathOf("history.toml"),
                          "[entry.1]\naxis = \"0\"\nafter = \"../line1.spj\"\n");
  EXPECT_EQ(TransferHistory(path).Entries().front().after, "");
  data.files.WriteDurably(read.PathOf("history.toml"), "entry = [\n");
  EXPECT_THROW(TransferHistory{path}, FileError);
}

}  // namespace
}  // namespace velmoor
