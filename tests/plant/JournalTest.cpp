// What is kept until it is delivered: behind kills, beyond bounds, on a disk that is full.

#include "plant/Journal.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "platform/Numbers.h"
#include "platform/World.h"
#include "platform/posix/PosixFiles.h"
#include "support/TemporaryFolder.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class JournalTest : public testing::Test {
 protected:
  JournalTest() {
    world_.files = &files_;
    before_ = SetWorld(&world_);
  }
  ~JournalTest() override { SetWorld(before_); }
  [[nodiscard]] Journal Open(std::size_t mostBytes = 0) {
    Journal journal(folder_.Path().string(), "changes", mostBytes);
    journal.Load();
    return journal;
  }
  static void Add(Journal& journal, const std::string& axis, const std::string& text) {
    const std::uint64_t sequence = journal.NextSequence(axis);
    journal.Add(axis, "state",
                {sequence, text, {"plant/" + axis, text + "#" + NumberText(sequence), true}});
  }
  // Hands over up to `most`.
  static std::vector<std::string> Hand(Journal& journal, std::size_t most = 100000) {
    std::vector<std::string> texts;
    while (texts.size() < most && journal.Next() != nullptr) {
      texts.push_back(journal.Next()->text);
      journal.Handed();
    }
    return texts;
  }
  [[nodiscard]] std::vector<fs::path> FilesThere() const {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder_.Path())) files.push_back(entry.path());
    return files;
  }

  TemporaryFolder folder_;
  posix::PosixFiles files_;
  World world_;
  World* before_ = nullptr;
};

// A kill at any moment: the object goes without a word.
TEST_F(JournalTest, AKilledProgramFindsWhatWasToldAndWhatIsToBeDelivered) {
  {
    Journal journal = Open();
    for (const char* const text : {"a", "b", "c"}) Add(journal, "0", text);
    Add(journal, "A", "x");
    EXPECT_THAT(Hand(journal, 2), ElementsAre("a#1", "b#2"));
    journal.Delivered(1);
  }
  Journal journal = Open();
  EXPECT_EQ(journal.Waiting(), 3U);
  EXPECT_EQ(journal.AllLatest().at("0 state").key, "c");
  EXPECT_EQ(journal.NextSequence("0"), 4U);
  EXPECT_EQ(journal.NextSequence("A"), 2U);
  EXPECT_EQ(journal.NextSequence("7"), 1U);
  Add(journal, "0", "d");
  EXPECT_THAT(Hand(journal), ElementsAre("b#2", "c#3", "x#1", "d#4"));
  journal.Delivered(4);
  EXPECT_EQ(journal.Waiting(), 0U);
  // What is delivered needs no room, and what was told is still known.
  Journal third = Open();
  EXPECT_EQ(third.Waiting(), 0U);
  EXPECT_EQ(third.AllLatest().at("0 state").key, "d");
  EXPECT_EQ(third.NextSequence("0"), 5U);
}

TEST_F(JournalTest, ManyKillsKeepTheOrder) {
  for (int i = 1; i <= 12; ++i) {
    Journal journal = Open();
    Add(journal, "0", NumberText(i));
  }
  Journal journal = Open();
  EXPECT_EQ(journal.AllLatest().at("0 state").key, "12");
  const std::vector<std::string> texts = Hand(journal);
  ASSERT_EQ(texts.size(), 12U);
  EXPECT_EQ(texts.front(), "1#1");
  EXPECT_EQ(texts.back(), "12#12");
}

TEST_F(JournalTest, ALostConnectionGetsWhatWasUnderWayAgainInItsOrder) {
  Journal journal = Open();
  for (const char* const text : {"a", "b", "c"}) Add(journal, "0", text);
  EXPECT_THAT(Hand(journal), ElementsAre("a#1", "b#2", "c#3"));
  journal.Delivered(1);
  Add(journal, "0", "d");
  journal.StartOver();
  EXPECT_THAT(Hand(journal), ElementsAre("b#2", "c#3", "d#4"));
}

// Far more than is held in memory, over several files.
TEST_F(JournalTest, DeliversThousandsInOrderAndLeavesOneFile) {
  Journal journal = Open(std::size_t{64} << 20U);
  const std::string filling(400, '.');
  constexpr std::size_t kCount = 10000;
  for (std::size_t i = 0; i < kCount; ++i) Add(journal, "0", filling);
  EXPECT_GT(FilesThere().size(), 4U);
  std::size_t number = 0;
  while (journal.Next() != nullptr) {
    ++number;
    ASSERT_TRUE(journal.Next()->text.ends_with("#" + NumberText(number))) << number;
    journal.Handed();
    journal.Delivered(1);
  }
  EXPECT_EQ(number, kCount);
  EXPECT_EQ(journal.Dropped(), 0U);
  EXPECT_LE(FilesThere().size(), 2U);
}

// The oldest goes, whole files of it; what went is counted, also by the next process.
TEST_F(JournalTest, CountsWhatItDropsBeyondItsBound) {
  const std::string filling(400, '.');
  constexpr std::size_t kCount = 12000;
  std::uint64_t dropped = 0;
  {
    Journal journal = Open(std::size_t{2} << 20U);
    for (std::size_t i = 0; i < kCount; ++i) Add(journal, "0", filling);
    dropped = journal.Dropped();
    EXPECT_GT(dropped, 5000U);
  }
  Journal journal = Open(std::size_t{2} << 20U);
  Add(journal, "0", "last");
  const std::vector<std::string> left = Hand(journal);
  EXPECT_EQ(left.size() + dropped, kCount + 1);
  EXPECT_EQ(left.back(), "last#12001");
  std::uintmax_t bytes = 0;
  for (const fs::path& file : FilesThere()) bytes += fs::file_size(file);
  EXPECT_LT(bytes, std::uintmax_t{3} << 20U);
}

TEST_F(JournalTest, HalfALineIsNoMessageAndControlsBreakNone) {
  {
    Journal journal = Open();
    Add(journal, "0", "a\tb\nc");
  }
  const fs::path file = FilesThere().front();
  std::ofstream(file, std::ios::app) << "M\t0 state\t2\thalf";
  Journal journal = Open();
  EXPECT_EQ(journal.NextSequence("0"), 2U);
  EXPECT_THAT(Hand(journal), ElementsAre("abc#1"));
}

// Nothing can be written: some are held in memory, the rest is counted, and it heals by itself.
TEST_F(JournalTest, AFullDiskIsToldAndCounted) {
  Journal journal = Open();
  Add(journal, "0", "a");
  fs::permissions(folder_.Path(), fs::perms::owner_read | fs::perms::owner_exec);
  Journal refused(folder_.At("none/deeper"), "changes", 0);
  for (int i = 0; i < 300; ++i) Add(refused, "0", "b");
  EXPECT_NE(refused.Trouble(), "");
  EXPECT_EQ(refused.Dropped(), 44U);
  EXPECT_EQ(Hand(refused).size(), 256U);
  refused.Delivered(256);
  fs::permissions(folder_.Path(), fs::perms::owner_all);
  fs::create_directories(folder_.At("none/deeper"));
  Add(refused, "0", "c");
  EXPECT_EQ(refused.Trouble(), "");
  EXPECT_THAT(Hand(refused), ElementsAre("c#301"));
}

// Somebody clears up: what is gone is counted, what is there is delivered.
TEST_F(JournalTest, AFileThatSomebodyTookIsCountedAsDropped) {
  {
    Journal journal = Open();
    for (int i = 0; i < 300; ++i) Add(journal, "0", "a");
  }
  Journal journal = Open();
  for (const fs::path& file : FilesThere()) fs::remove(file);
  Add(journal, "0", "b");
  EXPECT_THAT(Hand(journal), ElementsAre("b#301"));
  EXPECT_EQ(journal.Dropped(), 300U);
}

}  // namespace
}  // namespace velmoor
