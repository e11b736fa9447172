// What every window owes its users, whatever it is for: asked of all layouts.
#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "platform/World.h"
#include "platform/qt/FormLayouts.h"

namespace velmoor::qt {
namespace {

class LayoutsTest : public testing::TestWithParam<std::string> {
 protected:
  LayoutsTest() : root_(MakeLayout(GetParam())) {}
  std::unique_ptr<QWidget> root_;
};

// Inside another control, which answers for it: the field of a combo box, the headers of a grid.
bool IsPartOfAControl(const QWidget& widget) {
  return widget.objectName().isEmpty() || widget.objectName().startsWith(QLatin1String("qt_"));
}

TEST_P(LayoutsTest, AScreenReaderHasANameForEachControl) {
  for (QWidget* const widget : root_->findChildren<QWidget*>()) {
    const bool text = qobject_cast<QLabel*>(widget) != nullptr;  // read as it stands
    if (text || widget->focusPolicy() == Qt::NoFocus || IsPartOfAControl(*widget)) continue;
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(spoken, nullptr) << widget->objectName().toStdString();
    EXPECT_FALSE(spoken->text(QAccessible::Name).trimmed().isEmpty())
        << widget->objectName().toStdString();
  }
}

void ExpectDifferentKeys(const QMenu& menu) {
  std::map<QString, QString> taken;
  for (const QAction* const action : menu.actions()) {
    if (action->menu() != nullptr) ExpectDifferentKeys(*action->menu());
    const QString key = QKeySequence::mnemonic(action->text()).toString();
    if (key.isEmpty()) continue;
    EXPECT_TRUE(taken.emplace(key, action->text()).second)
        << key.toStdString() << ": " << taken[key].toStdString() << " and "
        << action->text().toStdString();
  }
}

TEST_P(LayoutsTest, NoTwoControlsShareAKey) {
  std::map<QString, QString> taken;
  const auto take = [&](const QString& text) {
    const QString key = QKeySequence::mnemonic(text).toString();
    if (key.isEmpty()) return;
    EXPECT_TRUE(taken.emplace(key, text).second)
        << key.toStdString() << ": " << taken[key].toStdString() << " and " << text.toStdString();
  };
  for (const auto* const button : root_->findChildren<QAbstractButton*>()) take(button->text());
  for (const auto* const box : root_->findChildren<QGroupBox*>()) take(box->title());
  for (const auto* const label : root_->findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) take(label->text());
  }
  for (const auto* const bar : root_->findChildren<QMenuBar*>()) {
    for (const QAction* const action : bar->actions()) {
      take(action->text());
      ExpectDifferentKeys(*action->menu());
    }
  }
}

// A screen of 1920 x 1080 dots at 150 %, less what the desktop and the frame take.
TEST_P(LayoutsTest, TheWindowFitsAnEnlargedScreen) {
  const QSize least = root_->minimumSizeHint();
  EXPECT_LE(least.width(), 1280);
  EXPECT_LE(least.height(), 660);
}

INSTANTIATE_TEST_SUITE_P(All, LayoutsTest, testing::ValuesIn(LayoutNames()),
                         [](const auto& layout) { return layout.param; });

}  // namespace
}  // namespace velmoor::qt
