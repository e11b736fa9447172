// The search for axes on a line.
#include "link/AxisScan.h"

#include <gtest/gtest.h>

#include "link/LinkSession.h"
#include "link/ScriptedPort.h"
#include "support/TestWorld.h"

namespace velmoor {
namespace {

using Lines = std::vector<std::string>;

class Scan : public testing::Test {
 protected:
  Scan() { session.helix7 = &helix7; }

  TestWorld world;
  ScriptedPort port;
  LinkSession session{port};
  clsHX7Helix7 helix7;
};

TEST_F(Scan, AScanAsksEachAxisShortlyAndHearsWithoutEchoToo) {
  port.Answer("1TYPE", {"1TYPE", "1TYPE=00000600"});
  port.Answer("BTYPE", {"BTYPE=00000600"});
  port.Answer("CTYPE", {"CTYPE", "CTYPE=00000500"});
  int last = 0;
  EXPECT_EQ(ScanAxes(helix7,
                     [&](int queried) {
                       last = queried;
                       return true;
                     }),
            (Lines{"1", "B"}));
  EXPECT_EQ(last, kAxisCount);
  EXPECT_EQ(port.sent.size(), 16u);
  EXPECT_EQ(port.timeOutsInExchange.front(), 80);
  EXPECT_EQ(port.timeOutsInExchange.back(), 500) << "the last has nobody behind it";
  EXPECT_EQ(port.timeOut, 5000);
}

TEST_F(Scan, AScanCountsWhatComesLateAndLooksOnceMore) {
  // Axis 1 answers when 2 is asked already, and its answer drowns that of 2.
  port.Answer("2TYPE", {"1TYPE", "1TYPE=00000600"});
  port.onRead = [&] { port.Answer("4TYPE", {"4TYPE", "4TYPE=00000600"}); };
  EXPECT_EQ(ScanAxes(helix7, [](int) { return true; }), (Lines{"1", "4"}));
  EXPECT_EQ(port.sent.size(), 16u + 14u);
  EXPECT_EQ(ScanAxes(helix7, [](int queried) { return queried < 3; }), Lines{"1"});
}

}  // namespace
}  // namespace velmoor
