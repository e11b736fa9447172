// How a file is sealed: the password, the written form, and files of the engine's version 4.
#include <sys/resource.h>
#include <sys/stat.h>

#include "DatabaseFile.h"

namespace velmoor::sqlcipher {
namespace {

using SealedFile = DatabaseFile;

// In the written form, whatever the engine's defaults are.
TEST_F(SealedFile, PassphraseOpensWhatWeMade) {
  MakeFile();
  const Connection plain(path_, OpenMode::existing, "nurvex");
  const auto rows = plain.Prepare("SELECT value FROM tblParameters WHERE pn='Pn802'");
  ASSERT_TRUE(rows->Step());
  EXPECT_EQ(rows->Text(0), "0002");
  const Connection tool(path_, OpenMode::create, "nurvex");
  const auto size = tool.Prepare("PRAGMA page_size");
  ASSERT_TRUE(size->Step());
  EXPECT_EQ(size->Number(0), 1024);
  EXPECT_EQ(fs::file_size(path_) % 1024, 0U);
}

TEST_F(SealedFile, WeOpenWhatThePassphraseMade) {
  {
    Connection plain(path_, OpenMode::create, "nurvex");
    plain.Execute("CREATE TABLE tblParameters (pn TEXT, value TEXT)");
    plain.Execute("INSERT INTO tblParameters VALUES ('Pn408', '0001')");
  }
  EXPECT_EQ(ValueOf("Pn408"), "0001");
}

TEST_F(SealedFile, RefusesAFileWithItsReason) {
  MakeFile(400);
  EXPECT_EQ(OpenFailure("other"), Kind::password);

  const auto whole = fs::file_size(path_);
  Overwrite(static_cast<std::streamoff>(whole / 2), "rubbish");
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  MakeFile(400);
  for (const auto size : {whole - 40, whole / 2, whole / 2 + 100, std::uintmax_t{10}}) {
    fs::resize_file(path_, size);
    EXPECT_EQ(OpenFailure(), Kind::damaged) << size;
  }
  fs::resize_file(path_, 0);
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  EXPECT_EQ(fs::file_size(path_), 0U) << "an empty file must not become a database";

  fs::remove(path_);
  EXPECT_EQ(OpenFailure(), Kind::missing);
  EXPECT_FALSE(fs::exists(path_));
  std::ofstream(path_) << "SQLite format 3" << std::string(4000, '\0');
  EXPECT_EQ(OpenFailure(), Kind::password);
  std::ofstream(path_) << std::string(5000, 'x');
  EXPECT_EQ(OpenFailure(), Kind::password);
}

TEST_F(SealedFile, AProcessThatHoldsKeysLeavesNoCoreFile) {
  rlimit core{};
  ASSERT_EQ(getrlimit(RLIMIT_CORE, &core), 0);
  EXPECT_EQ(core.rlim_cur, 0U);
  EXPECT_EQ(core.rlim_max, 0U);
}

TEST_F(SealedFile, TheEngineNeverWritesToTheTerminal) {
  MakeFile();
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  EXPECT_EQ(OpenFailure("other"), Kind::password);
  Overwrite(1500, "rubbish");
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(SealedFile, AnotherPasswordIsRefusedThoughTheFileIsOpen) {
  MakeFile();
  ValueOf("Pn800");
  EXPECT_EQ(FailureOf([&] { databases_.Open(path_, "other", DatabaseAccess::readOnly); }),
            Kind::password);
}

// ---- files of the engine's version 4 defaults

class Version4File : public SealedFile {
 protected:
  // A copy of a kept project under the name of a working file, or of a project.
  std::string Take(const std::string& name) {
    const std::string path = folder_.At(name);
    fs::copy_file(fs::path(VELMOOR_KEPT_FILES) / "project-0.1.0-passphrase4.spj", path,
                  fs::copy_options::overwrite_existing);
    return path;
  }
  std::string Value(const std::string& path, DatabaseAccess access) {
    const auto rows = databases_.Open(path, kPassword, access)->OpenTable("tblParameters");
    return rows->FindFirst("pn", "Pn81B") ? rows->Text("value") : "(no row)";
  }
};

TEST_F(Version4File, IsReadWithoutBeingTouched) {
  for (const char* const name : {"line1.spj", "line1.tmp"}) {
    const std::string path = Take(name);
    EXPECT_EQ(Value(path, DatabaseAccess::readOnly), "1250.500");
    EXPECT_EQ(fs::file_size(path) % 4096, 0U);
    EXPECT_EQ(folder_.Count(), 1);
    fs::remove(path);
  }
}

TEST_F(Version4File, AWorkingCopyTakesTheWrittenFormBeforeItIsWritten) {
  const std::string path = Take("line1.tmp");
  const auto inode = [&path] {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
  };
  const auto before = inode();
  EXPECT_EQ(Value(path, DatabaseAccess::readOnly), "1250.500");
  {
    const auto database = databases_.Open(path, kPassword, DatabaseAccess::readWrite);
    Write(*database->OpenTable("tblParameters"), "Pn81B", "7.000");
  }
  databases_.Release(path);
  EXPECT_EQ(inode(), before) << "whoever locked it holds it still";
  const Connection plain(path, OpenMode::existing, "nurvex");
  const auto rows = plain.Prepare("SELECT value FROM tblParameters WHERE pn='Pn81B'");
  ASSERT_TRUE(rows->Step());
  EXPECT_EQ(rows->Text(0), "7.000");
  const auto zeros = plain.Prepare("SELECT value FROM tblParameters WHERE pn='Pn000'");
  ASSERT_TRUE(zeros->Step());
  EXPECT_EQ(zeros->Text(0), "0000") << "text stays text";
}

TEST_F(Version4File, HarmAndAnotherPasswordAreToldApart) {
  fs::copy_file(fs::path(VELMOOR_KEPT_FILES) / "project-0.1.0-passphrase4.spj", path_);
  EXPECT_EQ(OpenFailure("other"), Kind::password);
  const auto whole = fs::file_size(path_);
  Overwrite(static_cast<std::streamoff>(whole / 2), "rubbish");
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  fs::copy_file(fs::path(VELMOOR_KEPT_FILES) / "project-0.1.0-passphrase4.spj", path_,
                fs::copy_options::overwrite_existing);
  fs::resize_file(path_, whole - 100);
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  fs::resize_file(path_, whole - 4096);
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  EXPECT_EQ(FailureOf([&] { databases_.Open(path_, kPassword, DatabaseAccess::readWrite); }),
            Kind::damaged);
}

}  // namespace
}  // namespace velmoor::sqlcipher
