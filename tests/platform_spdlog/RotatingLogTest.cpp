#include "platform/spdlog/RotatingLog.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "support/TemporaryFolder.h"

namespace velmoor::rotating {
namespace {

std::string FileText(const std::filesystem::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

TEST(RotatingLog, KeepsOneLineAnEntryWhateverTheTextHolds) {
  const TemporaryFolder folder;
  RotatingLog log(folder.At("state"));
  log.Write(LogLevel::information, "session", "Online");
  log.Write(LogLevel::warning, "box", "two\rlines {} \x1b[2J");
  const std::string text = FileText(folder.At("state/velmoor.log"));
  EXPECT_NE(text.find("  I  session   Online\n"), std::string::npos) << text;
  EXPECT_NE(text.find("  W  box       two lines {} \\x1b[2J\n"), std::string::npos) << text;
  const auto recent = log.Recent();
  ASSERT_EQ(recent.size(), 2u);
  EXPECT_TRUE(recent[1].ends_with("\\x1b[2J"));
}

TEST(RotatingLog, IsReadByItsOwnerAlone) {
  namespace fs = std::filesystem;
  const TemporaryFolder folder;
  std::ofstream(folder.At("velmoor.log")) << "of a session before\n";
  fs::permissions(folder.At("velmoor.log"), fs::perms(0644));
  RotatingLog log(folder.At(""), 500);
  for (int i = 0; i < 20; ++i) log.Write(LogLevel::information, "line", std::string(60, 'x'));
  for (const fs::directory_entry& file : fs::directory_iterator(folder.Path())) {
    EXPECT_EQ(file.status().permissions(), fs::perms(0600)) << file.path();
  }
}

TEST(RotatingLog, WritesTrafficOnDemandOnly) {
  const TemporaryFolder folder;
  RotatingLog log(folder.At(""));
  log.Write(LogLevel::traffic, "line", "> 0PRM800");
  EXPECT_TRUE(log.Recent().empty());
  log.SetKeepsTraffic(true);
  log.Write(LogLevel::traffic, "line", "> 0PRM801");
  log.SetKeepsTraffic(false);
  log.Write(LogLevel::traffic, "line", "> 0PRM802");
  ASSERT_EQ(log.Recent().size(), 1u);
  EXPECT_TRUE(log.Recent()[0].ends_with("> 0PRM801"));
}

TEST(RotatingLog, StaysWithinItsFilesAndKeepsTheNewest) {
  constexpr std::size_t kLargest = 2000;
  const TemporaryFolder folder;
  {
    RotatingLog log(folder.At(""), kLargest);
    for (int i = 0; i < 1000; ++i) {
      log.Write(LogLevel::information, "session", "entry " + std::to_string(i));
    }
    EXPECT_EQ(log.Recent().size(), RotatingLog::kRecent);
  }
  std::size_t files = 0;
  for (const auto& file : std::filesystem::directory_iterator(folder.At(""))) {
    ++files;
    EXPECT_LE(file.file_size(), kLargest);
  }
  EXPECT_EQ(files, 1 + RotatingLog::kOlderFiles);
  EXPECT_NE(FileText(folder.At("velmoor.log")).find("entry 999\n"), std::string::npos);
}

TEST(RotatingLog, AppendsToTheLogOfTheSessionBefore) {
  const TemporaryFolder folder;
  for (const char* const entry : {"first", "second"}) {
    RotatingLog(folder.At("")).Write(LogLevel::information, "session", entry);
  }
  const std::string text = FileText(folder.At("velmoor.log"));
  EXPECT_LT(text.find("first\n"), text.find("second\n"));
}

TEST(RotatingLog, FollowsNoLinkAndWritesToNoSecondName) {
  namespace fs = std::filesystem;
  const TemporaryFolder folder;
  const std::string outside = folder.At("outside");
  std::ofstream(outside) << "mine";
  fs::create_directory(folder.At("log"));
  const std::string path = folder.At("log/velmoor.log");
  const std::function<void()> plants[] = {
      [&] { fs::create_symlink(outside, path); },
      [&] { fs::create_symlink(folder.At("none"), path); },
      [&] { fs::create_hard_link(outside, path); },
      [&] { fs::create_directory(path); },
  };
  for (const auto& plant : plants) {
    plant();
    RotatingLog log(folder.At("log"));
    log.Write(LogLevel::information, "session", "entry");
    EXPECT_EQ(log.Path(), "");
    EXPECT_EQ(log.Recent().size(), 1U);
    EXPECT_EQ(FileText(outside), "mine");
    EXPECT_FALSE(fs::exists(folder.At("none")));
    fs::remove(path);
  }
}

TEST(RotatingLog, KeepsTheRecentEntriesWhereNoFileCanBeWritten) {
  RotatingLog log("/proc/nowhere");
  log.Write(LogLevel::warning, "link", "0PRM800: No response error.");
  EXPECT_EQ(log.Path(), "");
  EXPECT_EQ(log.Recent().size(), 1u);
}

}  // namespace
}  // namespace velmoor::rotating
