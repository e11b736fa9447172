// Draws values over time in lanes, with a cursor that tells the values under the pointer. The wheel
// looks closer or farther, dragging and the arrow keys move in time.
#pragma once

#include <QString>
#include <QWidget>
#include <optional>

#include "platform/TimeChart.h"
#include "platform/qt/ChartWidget.h"

namespace velmoor::qt {

class TimeChartWidget final : public QWidget {
  Q_OBJECT

 public:
  explicit TimeChartWidget(QWidget* parent = nullptr);
  void SetData(const TimeChartData& shown, const QString& emptyText);
  [[nodiscard]] QSize sizeHint() const override { return {520, 360}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {240, 140}; }

  Event<double, double> ZoomAsked;  // s, factor
  Event<double> PanAsked;           // s
  Event<double> PointAsked;         // s

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] QRectF Area() const;
  [[nodiscard]] double TimeAt(double x) const;
  [[nodiscard]] double PlaceOf(double time) const;
  [[nodiscard]] double SecondsFor(double pixels) const;
  void DrawTimes(QPainter& painter) const;
  void DrawShade(QPainter& painter) const;
  void DrawMarks(QPainter& painter) const;
  void DrawLanes(QPainter& painter) const;
  void DrawCurves(QPainter& painter, std::size_t number, const QRectF& area) const;
  void DrawStates(QPainter& painter, const TimeLane& lane, const QRectF& area,
                  const QColor& color) const;
  void DrawBars(QPainter& painter, const TimeLane& lane, const QRectF& area,
                const QColor& color) const;
  // In the margin: the name, and what it is under the pointer.
  void DrawName(QPainter& painter, const TimeLane& lane, const QRectF& area,
                const QColor& color) const;
  // The color of a curve of that lane; the first one is the lane's own.
  [[nodiscard]] QColor CurveColor(std::size_t lane, std::size_t curve) const;
  void DrawHead(QPainter& painter, std::size_t number, const QRectF& head) const;
  // What a curve is worth under the pointer, or else at its end; gives the place to its left.
  double DrawValue(QPainter& painter, const TimeLane& lane, const TimeCurve& curve,
                   const QRectF& head, const QColor& color) const;

  TimeChartData data_;
  QString emptyText_;
  std::optional<double> cursor_;    // x of the pointer
  std::optional<double> dragFrom_;  // x where the drag was last
  bool dragged_ = false;            // since the button went down
};

}  // namespace velmoor::qt
