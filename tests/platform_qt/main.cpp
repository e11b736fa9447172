// Runs the tests on a screen that exists in memory only, unless another platform is asked for.
#include <gtest/gtest.h>
#include <QApplication>

#include "platform/World.h"
#include "platform/headless/HeadlessSettings.h"
#include "platform/qt/QtProgram.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  velmoor::headless::HeadlessSettings settings;
  velmoor::qt::QtProgram program(argc, argv, &settings);
  velmoor::World world;
  program.FillWorld(world);
  world.settings = &settings;
  velmoor::SetWorld(&world);
  return RUN_ALL_TESTS();
}
