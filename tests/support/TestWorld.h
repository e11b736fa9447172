// The headless world of a test: what no script foresaw fails the test, and so does a scripted
// question, dialog or form that never came.
#pragma once

#include <gtest/gtest.h>

#include <utility>

#include "platform/headless/HeadlessFailure.h"
#include "platform/headless/HeadlessWorld.h"

namespace velmoor {

class TestWorld : public headless::HeadlessWorld {
 public:
  TestWorld()
      : before_(
            headless::SetFailureHandler([](const std::string& text) { ADD_FAILURE() << text; })) {}
  ~TestWorld() {
    boxes.Verify();
    forms.Verify();
    EXPECT_TRUE(dialogs.answers.empty()) << "A file dialog was not shown";
    headless::SetFailureHandler(std::move(before_));
  }
  TestWorld(const TestWorld&) = delete;
  TestWorld& operator=(const TestWorld&) = delete;

 private:
  headless::FailureHandler before_;
};

}  // namespace velmoor
