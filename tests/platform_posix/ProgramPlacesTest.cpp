// The folders of the catalogue's working copies in the user's runtime directory.
#include "platform/posix/ProgramPlaces.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/posix/PosixSingleInstance.h"
#include "support/TemporaryFolder.h"

namespace velmoor::posix {
namespace {

namespace fs = std::filesystem;

class CatalogueCopyPlaceTest : public testing::Test {
 protected:
  CatalogueCopyPlaceTest() { setenv("XDG_RUNTIME_DIR", folder_.Path().c_str(), 1); }
  ~CatalogueCopyPlaceTest() override { unsetenv("XDG_RUNTIME_DIR"); }

  std::string Lay(const std::string& name) {
    fs::create_directory(folder_.At(name));
    std::ofstream(folder_.At(name) + "/tempIdeInfo.mdb") << "left";
    return folder_.At(name);
  }

  TemporaryFolder folder_;
};

TEST_F(CatalogueCopyPlaceTest, GoesWithTheObject) {
  {
    const CatalogueCopyPlace place;
    EXPECT_EQ(place.Directory(), folder_.At("velmoor-" + std::to_string(getpid())));
    EXPECT_TRUE(fs::is_directory(place.Directory()));
  }
  EXPECT_EQ(folder_.Count(), 0);
}

TEST_F(CatalogueCopyPlaceTest, WhatAKilledProcessLeftIsClearedAndALivingOnesStays) {
  const std::string dead = Lay("velmoor-999999998");
  const std::string living = Lay("velmoor-999999999");
  const std::string foreign = Lay("velmoor-notes");
  // A lock of another open file description is what another process has.
  const int held = open(living.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_EQ(flock(held, LOCK_EX), 0);
  {
    const CatalogueCopyPlace place;
    EXPECT_FALSE(fs::exists(dead));
    EXPECT_TRUE(fs::exists(living + "/tempIdeInfo.mdb"));
    EXPECT_TRUE(fs::exists(foreign));
  }
  close(held);
  const CatalogueCopyPlace place;
  EXPECT_FALSE(fs::exists(living));
}

// A container that shares the folder numbers its processes anew.
TEST_F(CatalogueCopyPlaceTest, IsNeverThatOfAnotherProcessOfTheSameNumber) {
  const std::string others = Lay("velmoor-" + std::to_string(getpid()));
  const int held = open(others.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_EQ(flock(held, LOCK_EX), 0);
  {
    const CatalogueCopyPlace place;
    EXPECT_NE(place.Directory(), others);
    EXPECT_TRUE(fs::is_empty(place.Directory()));
  }
  EXPECT_TRUE(fs::exists(others + "/tempIdeInfo.mdb"));
  EXPECT_EQ(folder_.Count(), 1);
  close(held);
}

// Without a runtime directory, somebody else may have laid the name in the common place first.
TEST(RuntimeDirectoryTest, PassesOverWhatIsPlantedInTheCommonPlace) {
  const TemporaryFolder common;
  const TemporaryFolder state;
  const TemporaryFolder outside;
  unsetenv("XDG_RUNTIME_DIR");
  setenv("TMPDIR", common.Path().c_str(), 1);
  setenv("XDG_STATE_HOME", state.Path().c_str(), 1);
  const std::string usual = common.At("velmoor-" + std::to_string(getuid()));
  EXPECT_EQ(RuntimeDirectory(), usual);
  fs::remove(usual);
  const std::string own = state.At("velmoor/run");
  std::ofstream(usual) << "planted";
  EXPECT_EQ(RuntimeDirectory(), own);
  fs::remove(usual);
  fs::permissions(outside.Path(), fs::perms(0755));
  fs::create_symlink(outside.Path(), usual);
  EXPECT_EQ(RuntimeDirectory(), own);
  EXPECT_EQ(fs::status(outside.Path()).permissions(), fs::perms(0755));
  if (getuid() == 0) {
    fs::remove(usual);
    fs::create_directory(usual);
    ASSERT_EQ(chown(usual.c_str(), 65534, 65534), 0);
    EXPECT_EQ(RuntimeDirectory(), own);
  }
  EXPECT_EQ(fs::status(own).permissions(), fs::perms(0700));
  unsetenv("TMPDIR");
  unsetenv("XDG_STATE_HOME");
}

}  // namespace
}  // namespace velmoor::posix
