#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/IniSettings.h"
#include "platform/posix/PosixFiles.h"

namespace velmoor::posix {
namespace {

class IniSettingsTest : public testing::Test {
 protected:
  IniSettingsTest() : path_(directory_ / "deep" / "velmoor.ini"), settings_(files_, path_) {}
  ~IniSettingsTest() override { std::filesystem::remove_all(directory_); }

  static std::filesystem::path MakeDirectory() {
    std::string name = testing::TempDir() + "settingsXXXXXX";
    return ::mkdtemp(name.data());
  }
  void WriteFile(const std::string& bytes) {
    std::filesystem::create_directories(path_.parent_path());
    std::ofstream(path_, std::ios::binary) << bytes;
  }
  std::string FileText() const {
    std::ostringstream text;
    text << std::ifstream(path_, std::ios::binary).rdbuf();
    return text.str();
  }

  std::filesystem::path directory_ = MakeDirectory();
  std::filesystem::path path_;
  PosixFiles files_;
  IniSettings settings_;
};

TEST_F(IniSettingsTest, AValueIsThereForAnotherReaderAtOnce) {
  settings_.Write("Port", "2");
  settings_.Write("RecentFile1", "/home/a=b/line 1.spj");
  settings_.Write("Port", "3");
  const IniSettings other(files_, path_);
  EXPECT_EQ(other.Read("Port"), "3");
  EXPECT_EQ(other.Read("RecentFile1"), "/home/a=b/line 1.spj");
  EXPECT_EQ(other.Read("Rate"), std::nullopt);
  EXPECT_EQ(FileText(), "[Velmoor]\nPort=3\nRecentFile1=/home/a=b/line 1.spj\n");
}

TEST_F(IniSettingsTest, AFileWithoutAnEndIsNotTaken) {
  WriteFile("Port=2\n" + std::string(300'000, '#') + "\n");
  EXPECT_EQ(settings_.Read("Port"), std::nullopt);
  EXPECT_THROW(settings_.Write("Port", "3"), std::runtime_error);
  EXPECT_EQ(FileText().size(), 300'008U);
  WriteFile("Port=2\n");
  EXPECT_THROW(settings_.Write("Port", std::string(300'000, '3')), std::runtime_error);
  EXPECT_EQ(settings_.Read("Port"), "2");
}

TEST_F(IniSettingsTest, LinesOfTheUserSurvive) {
  WriteFile("# my bench\n[Velmoor]\nCOM1 = /dev/ttyUSB0\n\nRate=9600\n");
  settings_.Write("Rate", "38400");
  EXPECT_EQ(settings_.Read("COM1"), "/dev/ttyUSB0");
  EXPECT_EQ(FileText(), "# my bench\n[Velmoor]\nCOM1 = /dev/ttyUSB0\n\nRate=38400\n");
}

TEST_F(IniSettingsTest, ALineBreakInAValueMakesNoSecondEntry) {
  settings_.Write("TerminalFontName", "fixed\nPort=7\\");
  EXPECT_EQ(settings_.Read("TerminalFontName"), "fixed\nPort=7\\");
  EXPECT_EQ(settings_.Read("Port"), std::nullopt);
}

TEST_F(IniSettingsTest, NumbersThatAreNoneCountAsAbsent) {
  WriteFile("Rate=9600\nPort=two\nAxis=99999999999\n");
  EXPECT_EQ(settings_.ReadNumber("Rate", 1), 9600);
  EXPECT_EQ(settings_.ReadNumber("Port", 1), 1);
  EXPECT_EQ(settings_.ReadNumber("Axis", 1), 1);
}

TEST_F(IniSettingsTest, ARefusedWriteSaysWhyAndKeepsTheFile) {
  WriteFile("Port=1\n");
  const IniSettings below(files_, path_ / "velmoor.ini");  // a file where a directory should be
  EXPECT_THROW(IniSettings(below).Write("Port", "2"), std::runtime_error);
  EXPECT_EQ(FileText(), "Port=1\n");
}

TEST_F(IniSettingsTest, ItIsItsOwnersAloneUnlessHeOpensIt) {
  const auto permissions = [this] { return std::filesystem::status(path_).permissions(); };
  settings_.Write("RecentFile1", "/home/press 3.spj");
  EXPECT_EQ(permissions(), std::filesystem::perms(0600));
  std::filesystem::permissions(path_, std::filesystem::perms(0644));
  settings_.Write("Port", "2");
  EXPECT_EQ(permissions(), std::filesystem::perms(0644));
}

}  // namespace
}  // namespace velmoor::posix
