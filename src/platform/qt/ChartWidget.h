// Draws a line over its axes, with round scale values, marks and a shaded stretch.
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "platform/Chart.h"

namespace velmoor::qt {

// Round values that divide a range: multiples of 1, 2 or 5 times a power of ten, `most` at most.
// A range without extent is widened first.
struct ChartScale {
  double low = 0;
  double high = 1;
  double step = 1;

  [[nodiscard]] static ChartScale Over(double low, double high, int most);
  [[nodiscard]] std::vector<double> Values() const;
  // Decimals that tell the values apart.
  [[nodiscard]] int Decimals() const;
};

class ChartWidget final : public QWidget {
  Q_OBJECT

 public:
  explicit ChartWidget(QWidget* parent = nullptr);
  void SetData(const ChartData& chart, const QString& emptyText);
  [[nodiscard]] QSize sizeHint() const override { return {360, 200}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {200, 120}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Frame;
  [[nodiscard]] Frame MakeFrame() const;
  void DrawScales(QPainter& painter, const Frame& frame) const;
  void DrawMarks(QPainter& painter, const Frame& frame) const;
  void DrawLine(QPainter& painter, const Frame& frame) const;

  ChartData data_;
  QString emptyText_;
};

}  // namespace velmoor::qt
