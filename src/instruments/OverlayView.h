// What a window shows of an overlay: its chart, its cursors and the table of its figures.
#pragma once

#include <string>
#include <vector>

#include "instruments/Overlay.h"
#include "platform/Grid.h"
#include "windows/TextGrid.h"

namespace velmoor {

class OverlayView {
 public:
  // Of a window that has opened, which all three belong to. `empty` stands where nothing is shown.
  void Bind(TimeChart& chart, Grid& figures, Label& cursors, std::string empty,
            Connections& connections);
  [[nodiscard]] Overlay& Of() { return overlay_; }
  [[nodiscard]] const std::vector<Overlay::Shown>& All() const { return overlay_.All(); }
  // Shows these; the columns of the figures have so many characters.
  void Take(std::vector<Overlay::Shown> shown, Alignment alignment, int figure, int value);
  // As the overlay is now.
  void Show();
  [[nodiscard]] std::string FiguresCsv() const;
  // The window has closed.
  void Forget() { overlay_ = {}; }

 private:
  Overlay overlay_;
  TextGrid figuresGrid_{{"Figure"}};
  TimeChart* chart_ = nullptr;
  Grid* figures_ = nullptr;
  Label* cursors_ = nullptr;
  std::string empty_;
};

}  // namespace velmoor
