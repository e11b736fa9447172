#include "platform/posix/PosixSingleInstance.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <future>
#include <vector>

namespace velmoor::posix {
namespace {

using std::chrono::milliseconds;

class PosixSingleInstanceTest : public testing::Test {
 protected:
  PosixSingleInstanceTest()
      : directory_(MakeDirectory()), owner_(Watcher(), directory_), second_({}, directory_) {}
  ~PosixSingleInstanceTest() override {
    owner_.StopListening();
    std::filesystem::remove_all(directory_);
  }

  static std::string MakeDirectory() {
    std::string name = testing::TempDir() + "instanceXXXXXX";
    return ::mkdtemp(name.data());
  }
  DescriptorWatcher Watcher() {
    return [this](int descriptor, std::function<void()> onReadable) {
      descriptor_ = descriptor;
      serve_ = std::move(onReadable);
      return std::make_shared<int>(0);
    };
  }
  void Listen() {
    ASSERT_TRUE(owner_.Claim("bench"));
    ASSERT_FALSE(second_.Claim("bench"));
    owner_.Listen([this](const std::string& bytes) { messages_.push_back(bytes); },
                  [this] { return visible_; }, [this] { ++activations_; });
  }
  // Runs the other side in a thread of its own and serves it.
  template <typename Work>
  auto FromSecond(Work work) {
    auto result = std::async(std::launch::async, work);
    while (result.wait_for(milliseconds(0)) != std::future_status::ready) {
      pollfd entry{descriptor_, POLLIN, 0};
      if (::poll(&entry, 1, 5) > 0) serve_();
    }
    return result.get();
  }
  // Sends raw bytes as an ill-behaved program might, and hangs up.
  void SendRaw(const std::string& bytes) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    (directory_ + "/bench.socket").copy(address.sun_path, sizeof(address.sun_path) - 1);
    FileDescriptor raw(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::connect(raw.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    ASSERT_EQ(::send(raw.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL),
              static_cast<ssize_t>(bytes.size()));
    raw.Reset();
    serve_();
  }

  std::string directory_;
  int descriptor_ = -1;
  std::function<void()> serve_;
  PosixSingleInstance owner_;
  PosixSingleInstance second_;
  std::vector<std::string> messages_;
  bool visible_ = true;
  int activations_ = 0;
};

TEST_F(PosixSingleInstanceTest, TheNameIsFreeAgainAfterRelease) {
  ASSERT_TRUE(owner_.Claim("bench"));
  EXPECT_FALSE(second_.Claim("bench"));
  EXPECT_TRUE(second_.Claim("other"));
  owner_.Release();
  EXPECT_TRUE(second_.Claim("bench"));
}

TEST_F(PosixSingleInstanceTest, AMessageArrivesWholeWithZeroBytesToo) {
  Listen();
  const std::string name = "/home/é/line 1.spj";
  FromSecond([&] {
    second_.SendMessage(name, milliseconds(5000));
    second_.SendMessage(std::string(1, '\0'), milliseconds(5000));
    return true;
  });
  EXPECT_EQ(messages_, (std::vector<std::string>{name, std::string(1, '\0')}));
}

TEST_F(PosixSingleInstanceTest, TheQuestionsOfASecondStartAreAnswered) {
  Listen();
  EXPECT_TRUE(FromSecond([&] { return second_.FindRunning() == Running::answers; }));
  EXPECT_TRUE(FromSecond([&] { return second_.IsRunningVisible(); }));
  visible_ = false;
  EXPECT_FALSE(FromSecond([&] { return second_.IsRunningVisible(); }));
  FromSecond([&] {
    second_.ActivateRunning();
    return true;
  });
  EXPECT_EQ(activations_, 1);
}

TEST_F(PosixSingleInstanceTest, NobodyListensMeansNobodyRuns) {
  ASSERT_TRUE(owner_.Claim("bench"));
  ASSERT_FALSE(second_.Claim("bench"));
  EXPECT_EQ(second_.FindRunning(), Running::nobody);
}

// Nobody serves the events of the first one here.
TEST_F(PosixSingleInstanceTest, OneThatListensAndDoesNotAnswerIsSilent) {
  Listen();
  EXPECT_EQ(second_.FindRunning(), Running::silent);
}

TEST_F(PosixSingleInstanceTest, ASocketLeftByACrashIsNoObstacle) {
  Listen();
  const FileDescriptor stale(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  owner_.StopListening();
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  (directory_ + "/bench.socket").copy(address.sun_path, sizeof(address.sun_path) - 1);
  ASSERT_EQ(::bind(stale.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  owner_.Listen([](const std::string&) {}, [] { return true; }, [] {});
  EXPECT_TRUE(FromSecond([&] { return second_.FindRunning() == Running::answers; }));
}

TEST_F(PosixSingleInstanceTest, TheChannelIsTheUsersOwn) {
  Listen();
  struct stat state {};
  ASSERT_EQ(::stat((directory_ + "/bench.socket").c_str(), &state), 0);
  EXPECT_EQ(state.st_mode & 0777u, 0600u);
}

TEST_F(PosixSingleInstanceTest, BrokenRequestsAreDropped) {
  Listen();
  SendRaw("");
  SendRaw("M");
  SendRaw(std::string("M\x05\0\0\0abc", 8));
  SendRaw(std::string("M\xff\xff\xff\x7f", 5));
  SendRaw("?");
  EXPECT_TRUE(messages_.empty());
  EXPECT_EQ(activations_, 0);
}

}  // namespace
}  // namespace velmoor::posix
