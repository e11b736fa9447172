// The chart over time: what the user's wheel, keys and dragging ask for, and its picture.
#include "platform/qt/TimeChartWidget.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QWheelEvent>

#include "platform/qt/QtTimeChart.h"

namespace velmoor::qt {
namespace {

class TimeChartWidgetTest : public testing::Test {
 protected:
  TimeChartWidgetTest() {
    widget.resize(600, 300);
    widget.SetData(
        {.lanes = {{"Motor Speed", "rpm", 0, {{0, 0}, {1, 500}, {2, -500}}}}, .from = 0, .to = 10},
        "nothing");
    widget.show();
    connections += widget.ZoomAsked.Connect([this](double time, double factor) {
      zoomTime = time;
      zoomFactor = factor;
    });
    connections += widget.PanAsked.Connect([this](double seconds) { panned += seconds; });
  }
  TimeChartWidget widget;
  Connections connections;
  double zoomTime = -1, zoomFactor = 0, panned = 0;
};

TEST_F(TimeChartWidgetTest, WheelAndKeysAskForAnotherStretch) {
  const QPointF place(400, 100);
  QWheelEvent wheel(place, widget.mapToGlobal(place), {}, QPoint(0, 120), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&widget, &wheel);
  EXPECT_LT(zoomFactor, 1);
  EXPECT_GT(zoomTime, 4);
  EXPECT_LT(zoomTime, 8);
  QTest::keyClick(&widget, Qt::Key_Minus);
  EXPECT_GT(zoomFactor, 1);
  EXPECT_DOUBLE_EQ(zoomTime, 5);
  QTest::keyClick(&widget, Qt::Key_Left);
  EXPECT_DOUBLE_EQ(panned, -1);
}

TEST_F(TimeChartWidgetTest, DraggingToTheRightGoesBackInTime) {
  QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(300, 100));
  QTest::mouseMove(&widget, QPoint(350, 100));
  QTest::mouseMove(&widget, QPoint(400, 100));
  QTest::mouseRelease(&widget, Qt::LeftButton, {}, QPoint(400, 100));
  EXPECT_LT(panned, -1);
  const double before = panned;
  QTest::mouseMove(&widget, QPoint(200, 100));
  EXPECT_EQ(panned, before);
}

TEST_F(TimeChartWidgetTest, ThePictureShowsTheLane) {
  QtTimeChart chart(widget);
  const QImage with = QImage::fromData(QByteArray::fromStdString(chart.Picture()), "PNG");
  ASSERT_EQ(with.size(), widget.size());
  chart.Show({}, "nothing");
  const QImage without = QImage::fromData(QByteArray::fromStdString(chart.Picture()), "PNG");
  EXPECT_NE(with, without);
}

// Each against a picture that lacks the one thing.
TEST_F(TimeChartWidgetTest, StatesBarsMarksAndAShadeAreSeen) {
  QtTimeChart chart(widget);
  const auto picture = [&chart](const TimeChartData& data) {
    chart.Show(data, "");
    return chart.Picture();
  };
  TimeChartData data{.lanes = {{.name = "POUT0", .points = {{0, 0}}, .shape = LaneShape::states},
                               {.name = "Zone", .points = {}, .shape = LaneShape::bars}},
                     .from = 0,
                     .to = 10};
  std::string before = picture(data);
  const auto differs = [&](const char* what) {
    const std::string now = picture(data);
    EXPECT_NE(now, before) << what;
    before = now;
  };
  data.lanes[0].points = {{0, 0}, {4, 1}};
  differs("a state that is high from then on");
  data.lanes[1].bars = {{2, 5, "1"}};
  differs("a bar");
  data.lanes[1].bars = {{2, 5, "2"}};
  differs("its word");
  data.marks = {{6, "1"}};
  differs("a mark");
  data.shadeFrom = 1;
  data.shadeTo = 3;
  differs("a shade");
  QTest::mouseMove(&widget, QPoint(400, 20));
  differs("the state under the pointer, in words");
}

}  // namespace
}  // namespace velmoor::qt
