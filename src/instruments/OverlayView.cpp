#include "instruments/OverlayView.h"

#include <utility>

#include "platform/Csv.h"

namespace velmoor {

void OverlayView::Bind(TimeChart& chart, Grid& figures, Label& cursors, std::string empty,
                       Connections& connections) {
  chart_ = &chart;
  figures_ = &figures;
  cursors_ = &cursors;
  empty_ = std::move(empty);
  connections += chart.Zoom.Connect([this](double time, double factor) {
    overlay_.Zoom(time, factor);
    Show();
  });
  connections += chart.Pan.Connect([this](double seconds) {
    overlay_.Pan(seconds);
    Show();
  });
  connections += chart.Point.Connect([this](double time) {
    overlay_.PointAt(time);
    Show();
  });
}

void OverlayView::Take(std::vector<Overlay::Shown> shown, Alignment alignment, int figure,
                       int value) {
  overlay_.Take(std::move(shown), alignment);
  figuresGrid_.SetTable(overlay_.FigureTable());
  // The number of columns is another one.
  figures_->Bind(&figuresGrid_);
  for (int i = 0; i < figuresGrid_.Columns(); ++i) {
    figures_->SetColumnWidth(i, i == 0 ? figure : value);
  }
  Show();
}

void OverlayView::Show() {
  chart_->Show(overlay_.Visible(chart_->WidthInPoints()), empty_);
  cursors_->SetText(overlay_.CursorWords());
}

std::string OverlayView::FiguresCsv() const {
  std::string text;
  for (const CsvRow& row : figuresGrid_.Table()) text += CsvLine(row);
  return text;
}

}  // namespace velmoor
