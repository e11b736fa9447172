#include "platform/posix/ThrowTrace.h"

#include <gtest/gtest.h>

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
  EXPECT_NE(trace.front().find("libstdc++"), std::string::npos);
#endif
}

}  // namespace
}  // namespace velmoor::posix
