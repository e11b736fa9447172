#include "platform/headless/HeadlessFailure.h"

#include <cstdlib>
#include <iostream>
#include <utility>

namespace velmoor::headless {
namespace {

FailureHandler& Handler() {
  static FailureHandler handler = [](const std::string& text) {
    std::cerr << text << std::endl;
    std::abort();
  };
  return handler;
}

}  // namespace

FailureHandler SetFailureHandler(FailureHandler handler) {
  return std::exchange(Handler(), std::move(handler));
}

void Fail(const std::string& text) {
  Handler()(text);
}

}  // namespace velmoor::headless
