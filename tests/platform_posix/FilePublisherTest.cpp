// Messages as lines of a file.

#include "platform/FilePublisher.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "platform/World.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixFiles.h"
#include "support/TemporaryFolder.h"

namespace velmoor::posix {
namespace {

class FilePublisherTest : public testing::Test {
 protected:
  FilePublisherTest() {
    world_.files = &files_;
    world_.clock = &clock_;
    before_ = SetWorld(&world_);
  }
  ~FilePublisherTest() override { SetWorld(before_); }

  TemporaryFolder folder_;
  PosixFiles files_;
  PosixClock clock_;
  World world_;
  World* before_ = nullptr;
};

TEST_F(FilePublisherTest, EndsWithTheLastMessageAndBeginsANewFileInTime) {
  const std::string path = folder_.At("out");
  FilePublisher publisher(path, {"t", "on", true}, 40);
  EXPECT_TRUE(publisher.Take().connected);
  EXPECT_TRUE(publisher.Hand({"a", "1", false}));
  EXPECT_EQ(publisher.Take().delivered, 1U);
  EXPECT_EQ(files_.ReadAll(path), "t on\na 1\n");
  EXPECT_TRUE(publisher.Hand({"a", std::string(40, 'x'), false}));
  EXPECT_EQ(files_.ReadAll(path), "t on\n") << "the full one lies beside it";
  EXPECT_TRUE(files_.Exists(path + ".1"));
  publisher.End({"t", "ended", true}, {});
  (void)publisher.Take();
  EXPECT_FALSE(publisher.Hand({"a", "2", false}));
  EXPECT_EQ(files_.ReadAll(path), "t on\nt ended\n");
}

TEST_F(FilePublisherTest, AFileThatCannotBeWrittenIsToldAndNothingIsTaken) {
  FilePublisher publisher(folder_.At("none/out"), {"t", "on", true}, 1000);
  EXPECT_NE(publisher.Trouble(), "");
  EXPECT_FALSE(publisher.Hand({"a", "1", false}));
  std::filesystem::create_directory(folder_.At("none"));
  for (int i = 0; i < 300 && !publisher.Take().connected; ++i) ::usleep(10000);
  EXPECT_EQ(publisher.Trouble(), "");
  EXPECT_TRUE(publisher.Hand({"a", "1", false}));
}

}  // namespace
}  // namespace velmoor::posix
