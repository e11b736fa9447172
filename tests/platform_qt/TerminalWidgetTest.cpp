// The terminal's screen with real keys, wheel and mouse: scrolling back, selecting, copying.
#include "platform/qt/TerminalWidget.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include "QtTestUser.h"
#include "platform/qt/QtTerminalScreen.h"

namespace velmoor::qt {
namespace {

class TerminalWidgetTest : public testing::Test {
 protected:
  TerminalWidgetTest() : screen(widget) {
    screen.SetFont("no such font", 10);
    widget.resize(widget.sizeHint());
    widget.show();
    ServeEvents();
    connections += screen.KeyDown.Connect([this](KeyEvent& key) { codes.push_back(key.code); });
    connections += screen.KeyPress.Connect([this](char c) { typed += c; });
  }
  // "line 1" to "line count", the last one in the last row.
  void Fill(int count) {
    for (int i = 1; i <= count; ++i) {
      if (i > 1) Advance();
      screen.Write("line " + std::to_string(i));
    }
  }
  void Advance() {
    if (screen.CursorRow() == screen.Rows()) screen.ScrollUp();
    screen.MoveCursor(screen.CursorRow() + 1, 1);
  }
  // The middle of a cell that is in sight, counted from 0.
  QPoint Cell(int row, int column) {
    const QFontMetrics metrics(widget.viewport()->font());
    return {4 + column * metrics.horizontalAdvance(QLatin1Char('M')),
            4 + row * metrics.height() + metrics.height() / 2};
  }
  std::string Drag(const QPoint& from, const QPoint& to) {
    QTest::mousePress(widget.viewport(), Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, QPointF(to), widget.viewport()->mapToGlobal(QPointF(to)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget.viewport(), &move);
    QTest::mouseRelease(widget.viewport(), Qt::LeftButton, {}, to);
    return screen.SelectedText();
  }
  QScrollBar& Bar() { return *widget.verticalScrollBar(); }

  TerminalWidget widget;
  QtTerminalScreen screen;
  Connections connections;
  std::vector<int> codes;
  std::string typed;
};

TEST_F(TerminalWidgetTest, AllRowsFitAndAWiderScreenThanTheWindowScrollsSideways) {
  Fill(24);
  EXPECT_EQ(Bar().maximum(), 0);
  EXPECT_EQ(widget.horizontalScrollBar()->maximum(), 0);
  widget.resize(200, 100);
  ServeEvents();
  EXPECT_GT(Bar().maximum(), 0);
  EXPECT_EQ(Bar().value(), Bar().maximum());
  EXPECT_GT(widget.horizontalScrollBar()->maximum(), 0);
}

TEST_F(TerminalWidgetTest, WhatHasScrolledAwayIsReachedByKeysAndWheelAndKeptInSight) {
  Fill(100);
  EXPECT_EQ(Bar().maximum(), 76);
  EXPECT_EQ(Bar().value(), 76);
  QTest::keyClick(&widget, Qt::Key_PageUp);
  EXPECT_EQ(Bar().value(), 52);
  EXPECT_TRUE(codes.empty());
  const QPointF place(50, 50);
  QWheelEvent wheel(place, widget.mapToGlobal(place), {}, QPoint(0, 120), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(widget.viewport(), &wheel);
  const int looked = Bar().value();
  EXPECT_LT(looked, 52);
  // New lines leave the view where the user looks; typing returns to the end.
  Advance();
  screen.Write("line 101");
  EXPECT_EQ(Bar().value(), looked);
  QTest::keyClick(&widget, Qt::Key_A);
  EXPECT_EQ(Bar().value(), 77);
  EXPECT_EQ(typed, "a");
}

TEST_F(TerminalWidgetTest, SelectionSpansScrolledRowsAndDropsTrailingBlanks) {
  Fill(100);
  Bar().setValue(10);
  EXPECT_EQ(Drag(Cell(0, 0), Cell(0, 6)), "line 1");
  EXPECT_EQ(Drag(Cell(0, 5), Cell(2, 4)), "11\nline 12\nline");
  // Backwards it is the same text.
  EXPECT_EQ(Drag(Cell(2, 4), Cell(0, 5)), "11\nline 12\nline");
  Advance();
  EXPECT_EQ(screen.SelectedText(), "11\nline 12\nline");
  QTest::mouseDClick(widget.viewport(), Qt::LeftButton, {}, Cell(1, 5) + QPoint(2, 0));
  EXPECT_EQ(screen.SelectedText(), "12");
  QTest::mouseClick(widget.viewport(), Qt::LeftButton, {}, Cell(3, 3));
  EXPECT_EQ(screen.SelectedText(), "");
}

TEST_F(TerminalWidgetTest, TheOldestRowsAreForgottenAndASelectionStaysOnItsText) {
  Fill(TerminalWidget::kKeptRows + TerminalWidget::kRows);
  EXPECT_EQ(Bar().maximum(), TerminalWidget::kKeptRows);
  Bar().setValue(100);
  ASSERT_EQ(Drag(Cell(0, 0), Cell(0, 8)), "line 101");
  Advance();
  EXPECT_EQ(Bar().maximum(), TerminalWidget::kKeptRows);
  EXPECT_EQ(Bar().value(), 99);
  EXPECT_EQ(screen.SelectedText(), "line 101");
  screen.Clear();
  EXPECT_EQ(Bar().maximum(), 0);
  EXPECT_EQ(screen.SelectedText(), "");
}

TEST_F(TerminalWidgetTest, KeysComeWithTheirCharactersAndCopyKeepsTheView) {
  Fill(100);
  Bar().setValue(10);
  QTest::keyClick(&widget, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Bar().value(), 10);
  QTest::keyClick(&widget, Qt::Key_Tab);
  QTest::keyClick(&widget, Qt::Key_Return);
  QTest::keyClick(&widget, Qt::Key_Backspace);
  EXPECT_EQ(codes, (std::vector<int>{0, 'C', keys::kTab, keys::kEnter, keys::kBackspace}));
}

TEST_F(TerminalWidgetTest, CopyAndPasteAreTheTerminalsOwnKeys) {
  const auto taken = [this](Qt::Key key) {
    QKeyEvent event(QEvent::ShortcutOverride, key, Qt::ControlModifier);
    event.ignore();
    QApplication::sendEvent(&widget, &event);
    return event.isAccepted();
  };
  EXPECT_TRUE(taken(Qt::Key_C));
  EXPECT_TRUE(taken(Qt::Key_V));
  EXPECT_FALSE(taken(Qt::Key_S));
}

TEST_F(TerminalWidgetTest, TextBoldTextAndBackgroundHaveTheirColours) {
  screen.SetColors(0x00ff00, 0xff0000, 0x0000ff);
  screen.Write("MMMM");
  screen.MoveCursor(2, 1);
  screen.SetBold(true);
  screen.Write("MMMM");
  const QImage image = widget.viewport()->grab().toImage();
  const auto strongest = [&image, this](int row) {
    QColor most(0, 0, 255);
    const int top = Cell(row, 0).y() - Cell(0, 0).y() + 4;
    for (int y = top; y < Cell(row, 0).y(); ++y) {
      for (int x = 4; x < Cell(row, 4).x(); ++x) {
        const QColor here = image.pixelColor(x, y);
        if (here.red() + here.green() > most.red() + most.green()) most = here;
      }
    }
    return most;
  };
  EXPECT_GT(strongest(0).green(), 150);
  EXPECT_EQ(strongest(0).red(), 0);
  EXPECT_GT(strongest(1).red(), 150);
  EXPECT_EQ(strongest(1).green(), 0);
  EXPECT_EQ(image.pixelColor(image.width() - 2, image.height() - 2), QColor(0, 0, 255));
}

}  // namespace
}  // namespace velmoor::qt
