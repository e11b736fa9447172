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

#include "layouts/AllLayouts.h"
#include "platform/World.h"
#include "platform/qt/FormLayouts.h"

namespace velmoor::qt {
namespace {

class LayoutsTest : public testing::TestWithParam<const Layout*> {
 protected:
  LayoutsTest() : root_(MakeLayout(std::string(GetParam()->name))) {}
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

// Of what a key of the window itself reaches, with a key or without.
QStringList TextsWithKeys(const QWidget& window) {
  QStringList texts;
  for (const auto* const button : window.findChildren<QAbstractButton*>()) texts += button->text();
  for (const auto* const box : window.findChildren<QGroupBox*>()) texts += box->title();
  for (const auto* const label : window.findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) texts += label->text();
  }
  for (const auto* const bar : window.findChildren<QMenuBar*>()) {
    for (const QAction* const action : bar->actions()) texts += action->text();
  }
  return texts;
}

void ExpectDifferentKeys(const QStringList& texts) {
  std::map<QString, QString> taken;
  for (const QString& text : texts) {
    const QString key = QKeySequence::mnemonic(text).toString();
    if (key.isEmpty()) continue;
    EXPECT_TRUE(taken.emplace(key, text).second)
        << key.toStdString() << ": " << taken[key].toStdString() << " and " << text.toStdString();
  }
}

void ExpectDifferentKeys(const QMenu& menu) {
  QStringList texts;
  for (const QAction* const action : menu.actions()) {
    texts += action->text();
    if (action->menu() != nullptr) ExpectDifferentKeys(*action->menu());
  }
  ExpectDifferentKeys(texts);
}

TEST_P(LayoutsTest, NoTwoControlsShareAKey) {
  ExpectDifferentKeys(TextsWithKeys(*root_));
  for (const auto* const bar : root_->findChildren<QMenuBar*>()) {
    for (const QAction* const action : bar->actions()) ExpectDifferentKeys(*action->menu());
  }
}

// A child window lies within the main window, and its keys beside those of the menus.
TEST(ChildLayoutsTest, KeysOfTheMenusStayTheMenus) {
  const std::unique_ptr<QWidget> main(MakeLayout("frmMain"));
  std::map<QString, QString> menus;
  for (const QAction* const action : main->findChild<QMenuBar*>()->actions()) {
    menus.emplace(QKeySequence::mnemonic(action->text()).toString(), action->text());
  }
  ASSERT_EQ(menus.size(), 8U);
  QStringList taken;
  for (const char* const name : {"frmPosition", "frmZone", "frmJog", "frmProperties", "frmEditor",
                                 "frmTuning", "frmMonitoring", "frmTerminal"}) {
    const std::unique_ptr<QWidget> child(MakeLayout(name));
    for (const QString& text : TextsWithKeys(*child)) {
      if (menus.contains(QKeySequence::mnemonic(text).toString())) taken.append(text);
    }
  }
  // Its words are given; it is the window's default button.
  EXPECT_EQ(taken, QStringList{QStringLiteral("Begin &Monitor")});
}

// A screen of 1920 x 1080 dots at 150 %, less what the desktop and the frame take.
TEST_P(LayoutsTest, TheWindowFitsAnEnlargedScreen) {
  const QSize least = root_->minimumSizeHint();
  EXPECT_LE(least.width(), 1280);
  EXPECT_LE(least.height(), 660);
}

INSTANTIATE_TEST_SUITE_P(All, LayoutsTest, testing::ValuesIn(layouts::kAll),
                         [](const auto& layout) { return std::string(layout.param->name); });

}  // namespace
}  // namespace velmoor::qt
