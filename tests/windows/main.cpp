// Runs the tests on a screen in memory of the size that VELMOOR_SCREEN tells, "1366x768", enlarged
// by QT_SCALE_FACTOR.
#include <gtest/gtest.h>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/World.h"
#include "platform/headless/HeadlessSettings.h"
#include "platform/qt/QtProgram.h"

namespace {

void PrepareScreen(const QString& folder) {
  const QString size = qEnvironmentVariable("VELMOOR_SCREEN", QStringLiteral("1920x1080"));
  QFile file(QDir(folder).filePath(QStringLiteral("screen.json")));
  if (!file.open(QIODevice::WriteOnly)) return;
  file.write(QStringLiteral(R"({"screens": [{"name": "screen", "x": 0, "y": 0, "width": %1, )"
                            R"("height": %2, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})")
                 .arg(size.section(QLatin1Char('x'), 0, 0), size.section(QLatin1Char('x'), 1))
                 .toUtf8());
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  const QTemporaryDir folder;
  PrepareScreen(folder.path());
  velmoor::headless::HeadlessSettings settings;
  velmoor::qt::QtProgram program(argc, argv, &settings);
  velmoor::World world;
  program.FillWorld(world);
  world.settings = &settings;
  world.foundations = velmoor::qt::QtProgram::Versions;
  velmoor::SetWorld(&world);
  return RUN_ALL_TESTS();
}
