// A port that one program holds for long: who asks gets it, and it comes back.

#include "platform/posix/PortLoan.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

#include "FarEnd.h"
#include "platform/posix/PosixSerialPort.h"

namespace velmoor::posix {
namespace {

using namespace std::chrono_literals;

// A watch of the line, as far as the port goes, in a thread of its own.
class Holder {
 public:
  explicit Holder(const std::string& path, bool lends = true) : lender_(path) {
    port_.SetDeviceMap({{"COM1", path}});
    port_.SetBorrows(false);
    // Who asks at once finds somebody to ask.
    EXPECT_FALSE(lends && lender_.IsWanted());
    EXPECT_TRUE(port_.Open()) << port_.LastError();
    thread_ = std::thread([this, lends] {
      for (; !ends_; std::this_thread::sleep_for(5ms)) {
        if (lends && lender_.IsWanted()) {
          port_.Close();
          lender_.TellFree();
        } else if (!port_.IsOpen()) {
          (void)port_.Open();
        }
        isOpen = port_.IsOpen();
      }
    });
  }
  ~Holder() {
    ends_ = true;
    thread_.join();
  }
  [[nodiscard]] bool Becomes(bool open) const {
    for (int i = 0; i < 400 && isOpen != open; ++i) std::this_thread::sleep_for(5ms);
    return isOpen == open;
  }

  std::atomic<bool> isOpen{true};

 private:
  PortLender lender_;
  PosixSerialPort port_;
  std::atomic<bool> ends_{false};
  std::thread thread_;
};

PosixSerialPort PortAt(const std::string& path) {
  PosixSerialPort port;
  port.SetDeviceMap({{"COM1", path}});
  return port;
}

TEST(PortLoan, WhoOpensThePortHasItUntilItIsClosed) {
  const FarEnd far;
  const Holder holder(far.path);
  for (int times = 0; times < 2; ++times) {
    PosixSerialPort port = PortAt(far.path);
    EXPECT_TRUE(port.Open()) << port.LastError();
    EXPECT_TRUE(holder.Becomes(false));
    port.Close();
    EXPECT_TRUE(holder.Becomes(true));
  }
  // Also where it ends without closing anything.
  {
    PosixSerialPort port = PortAt(far.path);
    EXPECT_TRUE(port.Open());
  }
  EXPECT_TRUE(holder.Becomes(true));
}

TEST(PortLoan, OneThatLendsNothingIsNamed) {
  const FarEnd far;
  const Holder holder(far.path, false);
  PosixSerialPort port = PortAt(far.path);
  EXPECT_FALSE(port.Open());
  EXPECT_NE(port.LastError().find(" is in use by test_platform_p (process "), std::string::npos)
      << port.LastError();
}

// A watch takes it from nobody.
TEST(PortLoan, WhoDoesNotBorrowLeavesTheHolderAlone) {
  const FarEnd far;
  const Holder holder(far.path);
  PosixSerialPort port = PortAt(far.path);
  port.SetBorrows(false);
  EXPECT_FALSE(port.Open());
  std::this_thread::sleep_for(30ms);
  EXPECT_TRUE(holder.isOpen);
}

}  // namespace
}  // namespace velmoor::posix
