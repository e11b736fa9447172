#include "app/frmResults.h"

namespace velmoor {

void frmResults::FormLoad() {
  form().SetCaption(contents_.caption);
  ui().lblSummary.SetText(contents_.summary);
  Grid& grid = ui().vsFG;
  grid.Bind(this);
  for (std::size_t i = 0; i < contents_.widths.size(); ++i) {
    grid.SetColumnWidth(static_cast<int>(i), contents_.widths[i]);
  }
  if (Rows() > 1) grid.SetCurrent(1, 0);
  connections_ +=
      grid.Tip.Connect([this](int row, int column, std::string& tip) { tip = Text(row, column); });
  connections_ += ui().cmdCancel.Click.Connect([this] { Unload(); });
}

CellTraits frmResults::Traits(int row, int column) const {
  CellTraits traits;
  const auto at = static_cast<std::size_t>(row) - 1;
  if (row > 0 && column == contents_.tonedColumn && at < contents_.tones.size()) {
    traits.tone = contents_.tones[at];
  }
  return traits;
}

}  // namespace velmoor
