// The view of pages on a PageViewWidget.
#pragma once

#include <cmath>

#include "platform/PageView.h"
#include "platform/qt/PageViewWidget.h"
#include "platform/qt/QtControls.h"

namespace velmoor::qt {

class QtPageView final : public QtControl<PageView> {
 public:
  explicit QtPageView(PageViewWidget& widget)
      : QtControl(widget), widget_(widget), preview_(widget.Preview()) {
    moved_ = widget.Moved.Connect([this] { Moved.Raise(); });
  }
  void Show(const PrintDocument& document, Paper paper) override {
    widget_.SetDocument(document, paper);
  }
  [[nodiscard]] int Pages() const override { return preview_.pageCount(); }
  [[nodiscard]] int Page() const override { return preview_.currentPage(); }
  void GoTo(int page) override { preview_.setCurrentPage(page); }
  void FitPage() override { preview_.fitInView(); }
  void FitWidth() override { preview_.fitToWidth(); }
  void SetZoom(int percent) override { preview_.setZoomFactor(percent / 100.0); }
  [[nodiscard]] int Zoom() const override {
    return static_cast<int>(std::lround(preview_.zoomFactor() * 100));
  }

 private:
  PageViewWidget& widget_;
  QPrintPreviewWidget& preview_;
  Connection moved_;
};

}  // namespace velmoor::qt
