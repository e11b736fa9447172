// The chart on a ChartWidget.
#pragma once

#include "platform/Chart.h"
#include "platform/qt/ChartWidget.h"
#include "platform/qt/QtControls.h"

namespace velmoor::qt {

class QtChart final : public QtControl<Chart> {
 public:
  explicit QtChart(ChartWidget& widget) : QtControl(widget), widget_(widget) {}
  void Show(const ChartData& data, const std::string& emptyText) override {
    widget_.SetData(data, ToQt(emptyText));
  }

 private:
  ChartWidget& widget_;
};

}  // namespace velmoor::qt
