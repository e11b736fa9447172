#include "platform/qt/ChartWidget.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

constexpr int kGap = 6;  // between a scale and its values

QColor Faded(const QColor& color, int alpha) {
  QColor faded(color);
  faded.setAlpha(alpha);
  return faded;
}

}  // namespace

ChartScale ChartScale::Over(double low, double high, int most) {
  if (high - low <= 0) {
    low -= 0.5;
    high += 0.5;
  }
  const double raw = (high - low) / std::max(1, most);
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  double step = 10 * power;
  for (const double factor : {5.0, 2.0, 1.0}) {
    if (factor * power >= raw) step = factor * power;
  }
  return {std::floor(low / step) * step, std::ceil(high / step) * step, step};
}

std::vector<double> ChartScale::Values() const {
  std::vector<double> values;
  const auto count = static_cast<int>(std::lround((high - low) / step));
  values.reserve(static_cast<std::size_t>(count) + 1);
  for (int i = 0; i <= count; ++i) values.push_back(low + i * step);
  return values;
}

int ChartScale::Decimals() const {
  return std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
}

// Where the axes lie and how values become places.
struct ChartWidget::Frame {
  QRectF area;
  ChartScale x;
  ChartScale y;

  [[nodiscard]] double X(double value) const {
    return area.left() + (value - x.low) / (x.high - x.low) * area.width();
  }
  [[nodiscard]] double Y(double value) const {
    return area.bottom() - (value - y.low) / (y.high - y.low) * area.height();
  }
};

ChartWidget::ChartWidget(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ChartWidget::SetData(const ChartData& chart, const QString& emptyText) {
  data_ = chart;
  emptyText_ = emptyText;
  update();
}

ChartWidget::Frame ChartWidget::MakeFrame() const {
  const QFontMetrics metrics = fontMetrics();
  const auto [lowest, highest] = std::ranges::minmax_element(data_.line, {}, &ChartPoint::y);
  Frame frame;
  frame.y = ChartScale::Over(lowest->y, highest->y, std::max(2, height() / (3 * metrics.height())));
  frame.x = ChartScale::Over(data_.line.front().x, data_.line.back().x,
                             std::max(2, width() / (8 * metrics.averageCharWidth())));
  int widest = 0;
  for (const double value : frame.y.Values()) {
    const QString text = QString::number(value, 'f', frame.y.Decimals());
    widest = std::max(widest, metrics.horizontalAdvance(text));
  }
  const int line = metrics.height();
  frame.area =
      QRectF(rect()).adjusted(widest + 3 * kGap, 2 * line + kGap, -3 * kGap, -2 * line - 2 * kGap);
  return frame;
}

void ChartWidget::DrawScales(QPainter& painter, const Frame& frame) const {
  const int line = fontMetrics().height();
  const QColor text = TextColor(Tone::faint, palette());
  const QColor grid = Faded(text, 60);
  for (const double value : frame.y.Values()) {
    const double y = frame.Y(value);
    painter.setPen(grid);
    painter.drawLine(QPointF(frame.area.left(), y), QPointF(frame.area.right(), y));
    painter.setPen(text);
    painter.drawText(QRectF(0, y - line, frame.area.left() - kGap, 2 * line),
                     Qt::AlignRight | Qt::AlignVCenter,
                     QString::number(value, 'f', frame.y.Decimals()));
  }
  const double below = frame.area.bottom() + kGap;
  for (const double value : frame.x.Values()) {
    const double x = frame.X(value);
    painter.setPen(grid);
    painter.drawLine(QPointF(x, frame.area.top()), QPointF(x, frame.area.bottom()));
    painter.setPen(text);
    painter.drawText(QRectF(x - 60, below, 120, line), Qt::AlignHCenter | Qt::AlignTop,
                     QString::number(value, 'f', frame.x.Decimals()));
  }
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(QRectF(frame.area.left(), below + line, frame.area.width(), line + kGap),
                   Qt::AlignRight | Qt::AlignVCenter, ToQt(data_.xTitle));
  painter.drawText(QRectF(kGap, 0, width() - kGap, line + kGap), Qt::AlignLeft | Qt::AlignVCenter,
                   ToQt(data_.yTitle));
}

void ChartWidget::DrawMarks(QPainter& painter, const Frame& frame) const {
  const int line = fontMetrics().height();
  const QColor color = TextColor(Tone::busy, palette());
  double taken = -1;  // words that would cover each other are left out
  for (const ChartMark& mark : data_.marks) {
    const double x = frame.X(mark.x);
    painter.setPen(QPen(Faded(color, 150), 1, Qt::DashLine));
    painter.drawLine(QPointF(x, frame.area.top()), QPointF(x, frame.area.bottom()));
    const QString word = ToQt(mark.text);
    const double width = fontMetrics().horizontalAdvance(word);
    const double rightmost = frame.area.right() - width + kGap;
    // The left end keeps clear of the numbers beside the area.
    const double left = std::max(std::min(x - width / 2, rightmost), frame.area.left());
    if (left < taken) continue;
    painter.setPen(color);
    painter.drawText(QPointF(left, frame.area.top() - kGap / 2.0 - line * 0.15), word);
    taken = left + width + kGap;
  }
}

void ChartWidget::DrawLine(QPainter& painter, const Frame& frame) const {
  QPainterPath path(QPointF(frame.X(data_.line.front().x), frame.Y(data_.line.front().y)));
  for (const ChartPoint& point : data_.line) path.lineTo(frame.X(point.x), frame.Y(point.y));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Link), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(path);
}

void ChartWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  if (data_.line.empty()) {
    painter.setPen(TextColor(Tone::faint, palette()));
    painter.drawText(rect().adjusted(kGap, kGap, -kGap, -kGap), Qt::AlignCenter | Qt::TextWordWrap,
                     emptyText_);
    return;
  }
  const Frame frame = MakeFrame();
  if (frame.area.width() < 1 || frame.area.height() < 1) return;
  if (data_.shadeTo > data_.shadeFrom) {
    const double left = frame.X(data_.shadeFrom);
    painter.fillRect(
        QRectF(left, frame.area.top(), frame.X(data_.shadeTo) - left, frame.area.height()),
        Faded(palette().color(QPalette::Highlight), 50));
  }
  DrawScales(painter, frame);
  DrawMarks(painter, frame);
  DrawLine(painter, frame);
}

}  // namespace velmoor::qt
