// A bounded random walk. The long form is bench/random_walk; a walk that fails is told at its
// shortest and can be replayed there.

#include <gtest/gtest.h>

#include "random_walk/Generator.h"
#include "random_walk/Shrink.h"
#include "support/TemporaryFolder.h"

namespace velmoor::walk {
namespace {

TEST(RandomWalk, LosesNothingThatTheUserTyped) {
  const TemporaryFolder folder;
  const std::string place = folder.At("walk");
  for (std::uint64_t seed = 1; seed <= 24; ++seed) {
    const Walked walked = WalkAtRandom(place, seed, 60, {});
    if (walked.found.empty()) continue;
    const Violation& first = walked.found.front();
    // The shortest form of the first failure tells more than all of them at length.
    ADD_FAILURE() << "seed " << seed << ", " << first.kind << ": " << first.text << "\n"
                  << TextOf(Shrink(place, walked.steps, first.kind, {}));
    break;
  }
}

}  // namespace
}  // namespace velmoor::walk
