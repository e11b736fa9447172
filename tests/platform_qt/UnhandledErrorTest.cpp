// Errors that leave an event handler reach the last resort.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <stdexcept>

#include "platform/World.h"

namespace velmoor::qt {
namespace {

class Thrower final : public QObject {
 public:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::User) return QObject::event(event);
    if (++calls > failures) return true;
    if (wordless) throw 7;
    throw std::out_of_range("no such row");
  }
  bool wordless = false;
  int calls = 0;
  int failures = 1;
};

TEST(UnhandledError, IsHandedOnAndTheEventGoesAsTheUserChooses) {
  std::vector<UnhandledError> errors;
  ErrorChoice choice = ErrorChoice::goOn;
  world().onUnhandledError = [&](const UnhandledError& error) {
    errors.push_back(error);
    return choice;
  };
  world().lastThrowTrace = [] { return std::vector<std::string>{"here"}; };
  Thrower thrower;
  QEvent event(QEvent::User);
  QCoreApplication::sendEvent(&thrower, &event);
  EXPECT_EQ(thrower.calls, 1);
  ASSERT_EQ(errors.size(), 1U);
  EXPECT_EQ(errors[0].description, "no such row");
  EXPECT_EQ(errors[0].trace, std::vector<std::string>{"here"});
  choice = ErrorChoice::retry;
  thrower.calls = 0;
  thrower.failures = 2;
  QCoreApplication::sendEvent(&thrower, &event);
  EXPECT_EQ(thrower.calls, 3);
  EXPECT_EQ(errors.size(), 3U);
  choice = ErrorChoice::goOn;
  thrower.calls = 0;
  thrower.wordless = true;
  QCoreApplication::sendEvent(&thrower, &event);
  ASSERT_EQ(errors.size(), 4U);
  EXPECT_EQ(errors[3].type, typeid(int).name());
  EXPECT_EQ(errors[3].description, "none");
  world().onUnhandledError = nullptr;
  world().lastThrowTrace = nullptr;
}

}  // namespace
}  // namespace velmoor::qt
