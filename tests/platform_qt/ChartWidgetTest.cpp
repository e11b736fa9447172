#include "platform/qt/ChartWidget.h"

#include <gtest/gtest.h>

#include "QtTestUser.h"

namespace velmoor::qt {
namespace {

TEST(ChartScale, ValuesAreRoundAndHoldTheRange) {
  struct Case {
    double low, high;
    int most;
    std::vector<double> values;
    int decimals;
  };
  for (const Case& row :
       {Case{0, 6.3, 5, {0, 2, 4, 6, 8}, 0}, Case{-12, 180, 4, {-50, 0, 50, 100, 150, 200}, 0},
        Case{0, 1, 4, {0, 0.5, 1}, 1}, Case{7, 7, 2, {6.5, 7, 7.5}, 1}}) {
    const ChartScale scale = ChartScale::Over(row.low, row.high, row.most);
    const std::vector<double> values = scale.Values();
    ASSERT_EQ(values.size(), row.values.size()) << row.high;
    for (std::size_t i = 0; i < values.size(); ++i) EXPECT_DOUBLE_EQ(values[i], row.values[i]);
    EXPECT_EQ(scale.Decimals(), row.decimals) << row.high;
  }
}

// Counts the pixels of about that colour.
int Count(const QImage& image, const QColor& color) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == color ? 1 : 0;
  }
  return count;
}

TEST(ChartWidget, DrawsItsLineInsideItsFrameAndTheShadedStretch) {
  ChartWidget chart;
  chart.resize(400, 200);
  const QColor line = chart.palette().color(QPalette::Link);
  chart.SetData({}, QStringLiteral("Nothing"));
  EXPECT_EQ(Count(chart.grab().toImage(), line), 0);
  ChartData data{"Time (s)", "Position (mm)", {{0, 0}, {1, 100}, {2, 100}}, {{1, "a"}}, 0, 0};
  chart.SetData(data, {});
  const QImage plain = chart.grab().toImage();
  EXPECT_GT(Count(plain, line), 100);
  data.shadeTo = 1;
  chart.SetData(data, {});
  EXPECT_NE(chart.grab().toImage(), plain);
}

}  // namespace
}  // namespace velmoor::qt
