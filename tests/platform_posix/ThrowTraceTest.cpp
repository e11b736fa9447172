#include "platform/posix/ThrowTrace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <typeinfo>

namespace velmoor::posix {
namespace {

TEST(ThrowTrace, NamesTypesAndRemembersTheCallsOfTheLastThrow) {
  EXPECT_EQ(ReadableName(typeid(std::out_of_range).name()), "std::out_of_range");
  EXPECT_EQ(ReadableName("no name"), "no name");
  EXPECT_THROW((void)std::string("x").at(5), std::out_of_range);
#if !defined(__SANITIZE_ADDRESS__)
  const auto trace = LastThrowTrace();
  ASSERT_GT(trace.size(), 2U);
  // A sanitizer's own calls may stand in front.
  const bool library = std::ranges::any_of(
      trace, [](const std::string& call) { return call.find("libstdc++") != std::string::npos; });
  EXPECT_TRUE(library) << trace.front();
#endif
}

}  // namespace
}  // namespace velmoor::posix
