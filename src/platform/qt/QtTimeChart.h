// The chart over time on a TimeChartWidget.
#pragma once

#include <QBuffer>
#include <QPixmap>
#include <stdexcept>

#include "platform/TimeChart.h"
#include "platform/qt/QtControls.h"
#include "platform/qt/TimeChartWidget.h"

namespace velmoor::qt {

class QtTimeChart final : public QtControl<TimeChart> {
 public:
  explicit QtTimeChart(TimeChartWidget& widget) : QtControl(widget), widget_(widget) {
    connections_ +=
        widget.ZoomAsked.Connect([this](double time, double factor) { Zoom.Raise(time, factor); });
    connections_ += widget.PointAsked.Connect([this](double time) { Point.Raise(time); });
    connections_ += widget.PanAsked.Connect([this](double seconds) { Pan.Raise(seconds); });
  }
  void Show(const TimeChartData& data, const std::string& emptyText) override {
    widget_.SetData(data, ToQt(emptyText));
  }
  [[nodiscard]] std::string Picture() const override {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!widget_.grab().save(&buffer, "PNG")) throw std::runtime_error("No picture can be made");
    return bytes.toStdString();
  }
  [[nodiscard]] int WidthInPoints() const override { return widget_.width(); }

 private:
  TimeChartWidget& widget_;
  Connections connections_;
};

}  // namespace velmoor::qt
