// What the files of every system promise.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/native/Native.h"

namespace velmoor {
namespace {

class FilesOfTheSystem : public testing::Test {
 protected:
  FilesOfTheSystem() {
    // Letters that no one code page has.
    const auto moment = std::to_string(native::Clock().SinceEpoch().count());
    folder_ = JoinPath(files_.Absolute(testing::TempDir()), "velmoor пресс ä " + moment);
    files_.MakeDirectories(folder_);
  }
  ~FilesOfTheSystem() override {
    std::error_code ignored;
    std::filesystem::remove_all(Native(folder_), ignored);
  }

  static std::filesystem::path Native(const std::string& path) {
    return std::u8string(path.begin(), path.end());
  }
  std::string At(const std::string& name) const { return JoinPath(folder_, name); }
  void Make(const std::string& name, const std::string& bytes) {
    files_.WriteDurably(At(name), bytes);
  }
  std::string Text(const std::string& name) const { return files_.ReadAll(At(name)); }
  std::vector<std::string> Names() const { return files_.NamesIn(folder_); }

  native::Files files_;
  std::string folder_;
};

using Texts = std::vector<std::string>;

TEST_F(FilesOfTheSystem, AReplacementIsWholeAndLeavesNothingBeside) {
  Make("line.spj", "old\r\n");
  Make("work", "new\r\n\n");
  Make("line.spj-journal", "of another");
  files_.ReplaceDurably(At("work"), At("line.spj"));
  EXPECT_EQ(Text("line.spj"), "new\r\n\n");
  EXPECT_EQ(Names(), (Texts{"line.spj", "work"}));
  files_.SaveDurably(At("work"), At("copy.spj"), At("line.spj"));
  EXPECT_EQ(Text("copy.spj"), "new\r\n\n");
  EXPECT_THROW(files_.ReplaceDurably(At("nothing"), At("line.spj")), FileError);
  EXPECT_THROW(files_.WriteDurably(folder_, "a folder"), FileError);
  EXPECT_EQ(Text("line.spj"), "new\r\n\n");
}

TEST_F(FilesOfTheSystem, AFileThatOthersHaveOpenIsReplacedAllTheSame) {
  Make("line.spj", "old");
  const auto present = files_.LockPresent(At("line.spj"));
  ASSERT_TRUE(present && present->IsKept());
  const std::string before = files_.Identity(At("line.spj"));
  files_.WriteDurably(At("line.spj"), "new");
  EXPECT_EQ(Text("line.spj"), "new");
  EXPECT_NE(files_.Identity(At("line.spj")), before);
}

TEST_F(FilesOfTheSystem, ALockKeepsAnotherOffAndNoReader) {
  std::unique_ptr<FileLock> lock = files_.Lock(At("work"));
  ASSERT_TRUE(lock && lock->IsKept());
  EXPECT_FALSE(files_.Lock(At("work")));
  EXPECT_EQ(Text("work"), "");
  Make("project", "contents");
  files_.LayWorkingCopy(At("project"), At("work"));
  EXPECT_EQ(Text("work"), "contents");
  EXPECT_FALSE(files_.Lock(At("work")));
  files_.Remove(At("work"));
  // Some systems keep the name for as long as somebody has the file.
  lock.reset();
  EXPECT_FALSE(files_.Exists(At("work")));
  EXPECT_TRUE(files_.Lock(At("work")));
}

TEST_F(FilesOfTheSystem, NamesAreToldApart) {
  Make("a", "1");
  Make("b", "1");
  EXPECT_TRUE(files_.IsSameFile(At("a"), At("x/../a")) || !files_.Exists(At("x/../a")));
  EXPECT_TRUE(files_.IsSameFile(At("new"), At("new")));
  EXPECT_FALSE(files_.IsSameFile(At("a"), At("b")));
  EXPECT_FALSE(files_.HasOtherNames(At("a")));
  EXPECT_EQ(files_.StateOf(At("a")), NameState::own);
  EXPECT_EQ(files_.StateOf(At("c")), NameState::free);
  EXPECT_EQ(files_.StateOf(folder_), NameState::foreign);
  std::filesystem::create_hard_link(Native(At("a")), Native(At("second")));
  EXPECT_TRUE(files_.HasOtherNames(At("a")));
  EXPECT_TRUE(files_.IsSameFile(At("a"), At("second")));
  EXPECT_EQ(files_.StateOf(At("a")), NameState::foreign);
  EXPECT_FALSE(files_.Exists(folder_));
  EXPECT_FALSE(files_.Exists(At(std::string("a\0b", 3))));
}

TEST_F(FilesOfTheSystem, ARenameTakesTheIdentityAlong) {
  Make("from", "kept");
  Make("to", "gone");
  const std::string identity = files_.Identity(At("from"));
  files_.Rename(At("from"), At("to"));
  EXPECT_EQ(Names(), Texts{"to"});
  EXPECT_EQ(Text("to"), "kept");
  EXPECT_EQ(files_.Identity(At("to")), identity);
  EXPECT_THROW(files_.Rename(At("from"), At("to")), FileError);
}

TEST_F(FilesOfTheSystem, AGrowingFileGoesOnBehindAWholeLine) {
  files_.Begin(At("grown"), {})->Add("one\nhal");
  EXPECT_THROW((void)files_.Begin(At("grown"), {}), FileError);
  const auto file = files_.Continue(At("grown"), {});
  file->Add("two\r\nthree");
  EXPECT_EQ(Text("grown"), "one\nhal\ntwo\r\nthree");
  EXPECT_EQ(files_.SizeOf(At("grown")), 18U);
  Texts lines;
  files_.ReadLines(At("grown"), [&](std::string_view line) {
    lines.emplace_back(line);
    return lines.size() < 4;
  });
  EXPECT_EQ(lines, (Texts{"one", "hal", "two"}));
}

TEST_F(FilesOfTheSystem, APathMayBeLong) {
  std::string deep = folder_;
  for (int i = 0; i < 12; ++i) deep = JoinPath(deep, std::string(30, static_cast<char>('a' + i)));
  files_.MakeDirectories(deep);
  const std::string file = JoinPath(deep, "line.spj");
  files_.WriteDurably(file, "far");
  EXPECT_EQ(files_.ReadAll(file), "far");
  EXPECT_TRUE(files_.IsWritableDirectory(deep));
}

}  // namespace
}  // namespace velmoor
