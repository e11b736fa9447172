#include "platform/qt/QtGrid.h"

#include <gtest/gtest.h>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QTableView>

#include "QtTestUser.h"
#include "SampleGrid.h"

namespace velmoor::qt {
namespace {

class QtGridTest : public testing::Test {
 protected:
  QtGridTest() : grid_(view_) {
    view_.resize(400, 300);
    grid_.Bind(&rows_);
    view_.show();
    held_ += grid_.ValidateEdit.Connect([this](GridEdit& edit) {
      seen_.push_back(edit.text);
      if (edit.text == "bad") edit.cancel = true;
    });
    held_ += grid_.AfterEdit.Connect([this](int, int) { ++written_; });
  }
  QWidget* Editor() const {
    QWidget* const line = view_.findChild<QLineEdit*>();
    return line != nullptr ? line : view_.findChild<QComboBox*>();
  }
  bool Edit(const QString& text) {
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the editor before
    grid_.SetCurrent(1, 1);
    grid_.BeginEdit();
    auto* const line = view_.findChild<QLineEdit*>();
    if (line == nullptr) return false;
    line->selectAll();
    TypeText(*line, text);
    return grid_.FinishEdit();
  }

  SampleGrid rows_;
  QTableView view_;
  QtGrid grid_;
  std::vector<std::string> seen_;
  int written_ = 0;
  Connections held_;
};

TEST_F(QtGridTest, ShowsTheSourceWithItsFirstRowAsHeading) {
  EXPECT_EQ(view_.model()->rowCount(), 3);
  EXPECT_EQ(view_.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Value"));
  EXPECT_EQ(view_.model()->index(0, 1).data().toString(), QStringLiteral("100"));
  rows_.texts.pop_back();
  grid_.Refresh();
  EXPECT_EQ(view_.model()->rowCount(), 2);
}

TEST_F(QtGridTest, TypingIsAnnouncedBeforeItIsWritten) {
  std::vector<std::string> typed;
  held_ += grid_.ChangeEdit.Connect([&](const GridEdit& edit) { typed.push_back(edit.text); });
  Edit("42");
  EXPECT_EQ(typed, (std::vector<std::string>{"4", "42"}));
}

TEST_F(QtGridTest, AListOffersItsItemsAndTellsThePlaceOfTheChoice) {
  int place = -1;
  held_ += grid_.ValidateEdit.Connect([&](GridEdit& edit) { place = edit.comboIndex; });
  grid_.SetCurrent(2, 1);
  grid_.BeginEdit();
  auto* const combo = view_.findChild<QComboBox*>();
  ASSERT_NE(combo, nullptr);
  EXPECT_EQ(combo->count(), 2);
  EXPECT_EQ(combo->currentIndex(), 0);
  combo->setCurrentIndex(1);
  Q_EMIT combo->activated(1);
  EXPECT_EQ(rows_.texts[2][1], "rotary");
  EXPECT_EQ(place, 1);
}

TEST_F(QtGridTest, ABoxWithinTheCheckCommitsNothingTwice) {
  // A box takes the focus away from the editor, and a lost focus commits.
  held_ += grid_.ValidateEdit.Connect([&](GridEdit&) { grid_.FinishEdit(); });
  Edit("6");
  EXPECT_EQ(seen_, std::vector<std::string>{"6"});
  EXPECT_EQ(written_, 1);
}

TEST_F(QtGridTest, KeysReachTheGridAfterABoxAboutABadValue) {
  QMdiArea area;
  area.addSubWindow(new QLineEdit)->show();
  QMdiSubWindow* const child = area.addSubWindow(&view_);
  const auto takeBack = qScopeGuard([this] { view_.setParent(nullptr); });
  child->show();
  area.show();
  area.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
  view_.setFocus();
  held_ += grid_.ValidateEdit.Connect([&](GridEdit& edit) {
    if (!edit.cancel) return;
    WhenModal([](QWidget& box) { PressKey(box, Qt::Key_Return); });
    QMessageBox(QMessageBox::Warning, {}, QStringLiteral("Bad"), QMessageBox::Ok, &area).exec();
  });
  grid_.SetCurrent(1, 1);
  TypeText(view_, QStringLiteral("b"));
  ASSERT_NE(Editor(), nullptr);
  TypeText(*Editor(), QStringLiteral("ad"));
  PressKey(*Editor(), Qt::Key_Return);
  ServeEvents();
  area.activateWindow();  // as a desktop does when the box is gone
  ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  ServeEvents();
  EXPECT_EQ(area.activeSubWindow(), child);
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  EXPECT_EQ(QApplication::focusWidget(), &view_);
  TypeText(*QApplication::focusWidget(), QStringLiteral("6"));
  ASSERT_NE(Editor(), nullptr);
  PressKey(*Editor(), Qt::Key_Return);
  ServeEvents();
  EXPECT_EQ(seen_, (std::vector<std::string>{"bad", "6"}));
}

TEST_F(QtGridTest, AHandledKeyIsKeptFromTheGridInAnEditToo) {
  std::vector<int> codes;
  held_ += grid_.KeyDown.Connect([&](KeyEvent& key) {
    codes.push_back(key.code);
    key.handled = key.code == keys::kF9 || key.code == keys::kDown;
  });
  grid_.SetCurrent(1, 1);
  PressKey(view_, Qt::Key_Down);
  EXPECT_EQ(grid_.Row(), 1);
  grid_.BeginEdit();
  PressKey(*view_.findChild<QLineEdit*>(), Qt::Key_F9);
  EXPECT_EQ(codes, (std::vector<int>{keys::kDown, keys::kF9}));
}

TEST_F(QtGridTest, TheButtonOfACellIsHitAtItsRightEnd) {
  std::vector<int> hits;
  held_ += grid_.CellButton.Connect([&](int row, int) { hits.push_back(row); });
  const auto click = [&](int row, bool right) {
    const QRect cell = view_.visualRect(view_.model()->index(row - 1, 1));
    const QPoint at(right ? cell.right() - 5 : cell.left() + 5, cell.center().y());
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, at, view_.viewport()->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                        Qt::NoModifier);
      QApplication::sendEvent(view_.viewport(), &event);
    }
  };
  grid_.SetCurrent(3, 1);
  click(3, true);
  click(1, true);
  EXPECT_EQ(hits, std::vector<int>{}) << "the button comes with the cursor";
  click(1, false);
  click(1, true);
  EXPECT_EQ(hits, std::vector<int>{1});
}

TEST_F(QtGridTest, ABlockIsSelectedByKeys) {
  grid_.SetCurrent(1, 0);
  EXPECT_EQ(grid_.Selection(), (GridBlock{1, 0, 1, 0}));
  QTest::keyClick(&view_, Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(&view_, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(grid_.Selection(), (GridBlock{1, 0, 2, 1}));
}

}  // namespace
}  // namespace velmoor::qt
