#include "platform/qt/TimeChartWidget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

constexpr int kGap = 6;
constexpr double kWheelFactor = 1.25;  // for a notch
constexpr double kArrowPart = 0.1;     // of the shown stretch

QColor Faded(const QColor& color, int alpha) {
  QColor faded(color);
  faded.setAlpha(alpha);
  return faded;
}

// Apart from each other for colour-blind eyes too, and readable on light and dark.
QColor LaneColor(std::size_t lane) {
  static const std::array<QColor, 5> kLight{QColor(0x1f, 0x6f, 0xb5), QColor(0xc2, 0x5a, 0x00),
                                            QColor(0x1d, 0x85, 0x5b), QColor(0xa0, 0x3a, 0x8c),
                                            QColor(0x7a, 0x62, 0x00)};
  static const std::array<QColor, 5> kDark{QColor(0x6c, 0xb4, 0xf0), QColor(0xf2, 0x9a, 0x4a),
                                           QColor(0x5c, 0xd0, 0xa0), QColor(0xe0, 0x8a, 0xcf),
                                           QColor(0xd8, 0xc0, 0x50)};
  return (IsDark() ? kDark : kLight)[lane % kLight.size()];
}

// The last value at or before `time`; nothing before the first.
const ChartPoint* ValueAt(const std::vector<ChartPoint>& points, double time) {
  const auto after = std::ranges::upper_bound(points, time, {}, &ChartPoint::x);
  return after == points.begin() ? nullptr : &*std::prev(after);
}

// What a lane without a scale is at `time`; empty: nothing.
QString WordAt(const TimeLane& lane, double time) {
  if (lane.shape == LaneShape::states) {
    const ChartPoint* const point = ValueAt(lane.points, time);
    if (point == nullptr) return {};
    return point->y != 0 ? QStringLiteral("on") : QStringLiteral("off");
  }
  const auto bar = std::ranges::find_if(
      lane.bars, [time](const TimeBar& each) { return each.from <= time && time < each.to; });
  return bar == lane.bars.end() ? QString() : ToQt(bar->text);
}

}  // namespace

TimeChartWidget::TimeChartWidget(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(QStringLiteral("Values over time"));
}

void TimeChartWidget::SetData(const TimeChartData& shown, const QString& emptyText) {
  data_ = shown;
  emptyText_ = emptyText;
  update();
}

// ---- places

QRectF TimeChartWidget::Area() const {
  const QFontMetrics metrics = fontMetrics();
  const int scale = metrics.horizontalAdvance(QStringLiteral("-00000000")) + 2 * kGap;
  return QRectF(rect()).adjusted(scale, kGap, -2 * kGap, -metrics.height() - 2 * kGap);
}

double TimeChartWidget::TimeAt(double x) const {
  const QRectF area = Area();
  return data_.from + (x - area.left()) / area.width() * (data_.to - data_.from);
}

double TimeChartWidget::PlaceOf(double time) const {
  const QRectF area = Area();
  return area.left() + (time - data_.from) / (data_.to - data_.from) * area.width();
}

double TimeChartWidget::SecondsFor(double pixels) const {
  return pixels / Area().width() * (data_.to - data_.from);
}

// ---- drawing

void TimeChartWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  const QRectF area = Area();
  if (data_.lanes.empty() || area.width() < 1 || area.height() < 1) {
    painter.setPen(TextColor(Tone::faint, palette()));
    painter.drawText(rect().adjusted(kGap, kGap, -kGap, -kGap), Qt::AlignCenter | Qt::TextWordWrap,
                     emptyText_);
    return;
  }
  DrawShade(painter);
  DrawTimes(painter);
  DrawLanes(painter);
  DrawMarks(painter);
  if (cursor_ && area.contains(QPointF(*cursor_, area.center().y()))) {
    painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
    painter.drawLine(QPointF(*cursor_, area.top()), QPointF(*cursor_, area.bottom()));
  }
  if (hasFocus()) {
    painter.setPen(palette().color(QPalette::Highlight));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
}

void TimeChartWidget::DrawLanes(QPainter& painter) const {
  const QRectF area = Area();
  const double line = fontMetrics().height();
  const double compact = line + kGap;
  // The words of the marks stand above all lanes.
  double top = area.top() + (data_.marks.empty() ? 0 : line);
  const auto curves = std::ranges::count(data_.lanes, LaneShape::curve, &TimeLane::shape);
  const auto others = static_cast<double>(data_.lanes.size()) - static_cast<double>(curves);
  const double height = (area.bottom() - top - others * compact) / static_cast<double>(curves);
  // The uppermost value stands half above its line.
  const double head = 1.5 * line + kGap / 2.0;
  for (std::size_t i = 0; i < data_.lanes.size(); ++i) {
    const TimeLane& lane = data_.lanes[i];
    const QColor color = LaneColor(i);
    const bool curve = lane.shape == LaneShape::curve;
    const QRectF whole(area.left(), top, area.width(), curve ? height : compact);
    top = whole.bottom();
    if (curve) {
      DrawHead(painter, i, QRectF(whole.topLeft(), QSizeF(whole.width(), line)));
      DrawCurves(painter, i, whole.adjusted(0, head, 0, -kGap));
      continue;
    }
    const QRectF inner = whole.adjusted(0, kGap / 2.0, 0, -kGap / 2.0);
    DrawName(painter, lane, inner, color);
    painter.save();
    painter.setClipRect(inner.adjusted(0, -1, 0, 1));
    if (lane.shape == LaneShape::states) {
      DrawStates(painter, lane, inner, color);
    } else {
      DrawBars(painter, lane, inner, color);
    }
    painter.restore();
  }
}

void TimeChartWidget::DrawShade(QPainter& painter) const {
  if (data_.shadeFrom >= data_.shadeTo) return;
  const QRectF area = Area();
  const QRectF stretch(PlaceOf(data_.shadeFrom), area.top(),
                       PlaceOf(data_.shadeTo) - PlaceOf(data_.shadeFrom), area.height());
  painter.fillRect(stretch & area, Faded(palette().color(QPalette::Highlight), 50));
}

void TimeChartWidget::DrawMarks(QPainter& painter) const {
  const QRectF area = Area();
  for (const ChartMark& mark : data_.marks) {
    if (mark.x < data_.from || mark.x > data_.to) continue;
    const double x = PlaceOf(mark.x);
    const QString text = ToQt(mark.text);
    const double width = fontMetrics().horizontalAdvance(text) + kGap;
    painter.setPen(QPen(TextColor(Tone::alarm, palette()), 1, Qt::DotLine));
    painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    const double left = std::clamp(x - width / 2, area.left(), area.right() - width);
    painter.drawText(QRectF(left, area.top(), width, fontMetrics().height()), Qt::AlignCenter,
                     text);
  }
}

void TimeChartWidget::DrawTimes(QPainter& painter) const {
  const QRectF area = Area();
  const int line = fontMetrics().height();
  const QColor text = TextColor(Tone::faint, palette());
  const ChartScale scale = ChartScale::Over(
      data_.from, data_.to, std::max(2, width() / (10 * fontMetrics().averageCharWidth())));
  const QString unit = QStringLiteral("Time (s)");
  const double unitLeft = area.right() - fontMetrics().horizontalAdvance(unit);
  for (const double time : scale.Values()) {
    if (time < data_.from || time > data_.to) continue;
    const double x = PlaceOf(time);
    painter.setPen(Faded(text, 60));
    painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    const QString value = QString::number(time, 'f', scale.Decimals());
    const double half = fontMetrics().horizontalAdvance(value) / 2.0;
    if (x + half > unitLeft - kGap) continue;
    painter.setPen(text);
    painter.drawText(QRectF(x - 60, area.bottom() + kGap, 120, line), Qt::AlignHCenter, value);
  }
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(QRectF(area.left(), area.bottom() + kGap, area.width(), line), Qt::AlignRight,
                   unit);
}

// Curves that are laid over each other have their colors in every lane.
QColor TimeChartWidget::CurveColor(std::size_t lane, std::size_t curve) const {
  return LaneColor(data_.lanes[lane].others.empty() ? lane : curve);
}

double TimeChartWidget::DrawValue(QPainter& painter, const TimeLane& lane, const TimeCurve& curve,
                                  const QRectF& head, const QColor& color) const {
  const ChartPoint* const point = ValueAt(curve.points, cursor_ ? TimeAt(*cursor_) : data_.to);
  if (point == nullptr && curve.name.empty()) return head.right();
  QString text = ToQt(curve.name);
  if (!text.isEmpty()) text += QStringLiteral(": ");
  // Over several curves the time is told once, by none of them.
  if (point != nullptr && cursor_ && curve.name.empty()) {
    text += QString::number(point->x, 'f', 3) + QStringLiteral(" s:  ");
  }
  if (point != nullptr) text += QString::number(point->y, 'f', lane.decimals);
  painter.setPen(color);
  painter.drawText(head, Qt::AlignRight | Qt::AlignVCenter, text);
  return head.right() - fontMetrics().horizontalAdvance(text);
}

// The name with its unit, and the value under the pointer, or else the last one, of each curve. The
// values are seen whole.
void TimeChartWidget::DrawHead(QPainter& painter, std::size_t number, const QRectF& head) const {
  const TimeLane& lane = data_.lanes[number];
  QString text = ToQt(lane.name);
  if (!lane.unit.empty()) text += QStringLiteral(" (") + ToQt(lane.unit) + QStringLiteral(")");
  QRectF room = head;
  if (lane.others.empty()) {
    room.setRight(
        DrawValue(painter, lane, {{}, lane.points}, room, palette().color(QPalette::Text)) - kGap);
  } else {
    for (std::size_t i = lane.others.size(); i > 0; --i) {
      room.setRight(DrawValue(painter, lane, lane.others[i - 1], room, CurveColor(number, i)) -
                    2 * kGap);
    }
    room.setRight(
        DrawValue(painter, lane, {lane.firstName, lane.points}, room, CurveColor(number, 0)) -
        2 * kGap);
  }
  painter.setPen(lane.others.empty() ? CurveColor(number, 0) : palette().color(QPalette::Text));
  painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(room.width())));
}

void TimeChartWidget::DrawCurves(QPainter& painter, std::size_t number, const QRectF& area) const {
  const TimeLane& lane = data_.lanes[number];
  std::vector<const std::vector<ChartPoint>*> curves{&lane.points};
  for (const TimeCurve& other : lane.others) curves.push_back(&other.points);
  double lowest = std::numeric_limits<double>::max(),
         highest = std::numeric_limits<double>::lowest();
  for (const auto* const points : curves) {
    for (const ChartPoint& point : *points) {
      lowest = std::min(lowest, point.y);
      highest = std::max(highest, point.y);
    }
  }
  if (lowest > highest || area.height() < 4) return;
  const int line = fontMetrics().height();
  const ChartScale scale =
      ChartScale::Over(lowest, highest, std::max(1, static_cast<int>(area.height()) / (2 * line)));
  const auto place = [&](double value) {
    return area.bottom() - (value - scale.low) / (scale.high - scale.low) * area.height();
  };
  const QColor faint = TextColor(Tone::faint, palette());
  for (const double value : scale.Values()) {
    const double y = place(value);
    painter.setPen(Faded(faint, 50));
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    painter.setPen(faint);
    painter.drawText(QRectF(0, y - line, area.left() - kGap, 2 * line),
                     Qt::AlignRight | Qt::AlignVCenter,
                     QString::number(value, 'f', scale.Decimals()));
  }
  painter.save();
  painter.setClipRect(area.adjusted(0, -1, 0, 1));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  for (std::size_t i = 0; i < curves.size(); ++i) {
    if (curves[i]->empty()) continue;
    const ChartPoint& first = curves[i]->front();
    QPainterPath path(QPointF(PlaceOf(first.x), place(first.y)));
    for (const ChartPoint& point : *curves[i]) path.lineTo(PlaceOf(point.x), place(point.y));
    painter.setPen(QPen(CurveColor(number, i), 1.5));
    painter.drawPath(path);
    // Where samples lie apart they are seen, so that nobody takes the line between them for known.
    constexpr double kApart = 8;
    if (static_cast<double>(curves[i]->size()) * kApart > area.width()) continue;
    painter.setBrush(CurveColor(number, i));
    for (const ChartPoint& point : *curves[i]) {
      painter.drawEllipse(QPointF(PlaceOf(point.x), place(point.y)), 1.5, 1.5);
    }
    painter.setBrush(Qt::NoBrush);
  }
  painter.restore();
}

void TimeChartWidget::DrawName(QPainter& painter, const TimeLane& lane, const QRectF& area,
                               const QColor& color) const {
  QString text = ToQt(lane.name);
  const QString word = cursor_ ? WordAt(lane, TimeAt(*cursor_)) : QString();
  if (!word.isEmpty()) text += QStringLiteral(": ") + word;
  const double room = area.left() - 2 * kGap;
  painter.setPen(color);
  painter.drawText(QRectF(kGap, area.top(), room, area.height()), Qt::AlignRight | Qt::AlignVCenter,
                   fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(room)));
}

// High is filled, so that it is told from low where the line is not seen to rise.
void TimeChartWidget::DrawStates(QPainter& painter, const TimeLane& lane, const QRectF& area,
                                 const QColor& color) const {
  for (std::size_t i = 0; i < lane.points.size(); ++i) {
    const bool last = i + 1 == lane.points.size();
    const double left = std::max(PlaceOf(lane.points[i].x), area.left());
    const double right =
        std::min(last ? area.right() : PlaceOf(lane.points[i + 1].x), area.right());
    if (right < left) continue;
    const bool high = lane.points[i].y != 0;
    const double y = high ? area.top() : area.bottom();
    if (high) {
      painter.fillRect(QRectF(left, y, right - left, area.height()), Faded(color, 70));
    }
    painter.setPen(QPen(color, 1.5));
    painter.drawLine(QPointF(left, y), QPointF(right, y));
    const bool changes = !last && high != (lane.points[i + 1].y != 0);
    if (changes) painter.drawLine(QPointF(right, area.top()), QPointF(right, area.bottom()));
  }
}

void TimeChartWidget::DrawBars(QPainter& painter, const TimeLane& lane, const QRectF& area,
                               const QColor& color) const {
  for (const TimeBar& bar : lane.bars) {
    const double left = std::max(PlaceOf(bar.from), area.left());
    const double right = std::min(PlaceOf(bar.to), area.right());
    if (right < left) continue;
    const QRectF box(left, area.top(), right - left, area.height());
    painter.setPen(QPen(color, 1));
    painter.setBrush(Faded(color, 50));
    painter.drawRect(box);
    const QString text = ToQt(bar.text);
    const double room = box.width() - kGap;
    // A bar that is too narrow for its first sign is told by the pointer alone.
    if (room < fontMetrics().averageCharWidth()) continue;
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(box, Qt::AlignCenter,
                     fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(room)));
  }
  painter.setBrush(Qt::NoBrush);
}

// ---- the user

void TimeChartWidget::wheelEvent(QWheelEvent* event) {
  constexpr double kNotch = 120;
  const double notches = event->angleDelta().y() / kNotch;
  if (notches != 0 && !data_.lanes.empty()) {
    ZoomAsked.Raise(TimeAt(event->position().x()), std::pow(kWheelFactor, -notches));
  }
  event->accept();
}

void TimeChartWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  dragFrom_ = event->position().x();
  dragged_ = false;
}

void TimeChartWidget::mouseMoveEvent(QMouseEvent* event) {
  const double x = event->position().x();
  cursor_ = x;
  if (dragFrom_ && x != *dragFrom_) {
    const double seconds = SecondsFor(*dragFrom_ - x);
    dragFrom_ = x;
    dragged_ = true;
    PanAsked.Raise(seconds);
  }
  update();
}

void TimeChartWidget::mouseReleaseEvent(QMouseEvent* event) {
  const bool clicked = dragFrom_ && !dragged_ && !data_.lanes.empty();
  dragFrom_.reset();
  if (clicked) PointAsked.Raise(TimeAt(event->position().x()));
}

void TimeChartWidget::leaveEvent(QEvent*) {
  cursor_.reset();
  update();
}

void TimeChartWidget::keyPressEvent(QKeyEvent* event) {
  const double middle = (data_.from + data_.to) / 2;
  const double length = data_.to - data_.from;
  switch (event->key()) {
    case Qt::Key_Plus:
      return ZoomAsked.Raise(middle, 1 / kWheelFactor);
    case Qt::Key_Minus:
      return ZoomAsked.Raise(middle, kWheelFactor);
    case Qt::Key_Left:
      return PanAsked.Raise(-length * kArrowPart);
    case Qt::Key_Right:
      return PanAsked.Raise(length * kArrowPart);
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace velmoor::qt
