#include "app/frmDoubts.h"

#include <algorithm>
#include <array>

#include "platform/Numbers.h"
#include "platform/Trapped.h"

namespace velmoor {
namespace {

std::string Reason(const Doubt& doubt) {
  switch (doubt.kind) {
    case Doubt::Kind::differs:
      return "Shows another value than it sends";
    case Doubt::Kind::outside:
      return "Outside of the limits";
    case Doubt::Kind::unknown:
      break;
  }
  return "Of no known form";
}

struct DoubtColumn {
  const char* heading;
  int characters;
  std::string (*text)(const Doubt& doubt);
};

constexpr std::array<DoubtColumn, 6> kColumns{{
    {"Value", 26, [](const Doubt& doubt) { return doubt.place + ", " + doubt.field; }},
    {"Shown", 13, [](const Doubt& doubt) { return doubt.shown; }},
    {"Would Be Sent", 13, [](const Doubt& doubt) { return doubt.sent; }},
    {"Which Means", 13, [](const Doubt& doubt) { return doubt.sentShown; }},
    {"Limits", 24, [](const Doubt& doubt) { return doubt.limits; }},
    {"Why It Is in Doubt", 31, Reason},
}};

}  // namespace

int frmDoubts::Columns() const {
  return static_cast<int>(kColumns.size());
}

std::string frmDoubts::Text(int row, int column) const {
  const DoubtColumn& shown = kColumns.at(static_cast<std::size_t>(column));
  if (row == 0) return shown.heading;
  return shown.text(rows_.at(static_cast<std::size_t>(row) - 1));
}

void frmDoubts::ShowIfAny() {
  if (!rows_.empty()) (void)Show(FormMode::modal);
}

void frmDoubts::FormLoad() {
  Grid& grid = ui().vsFG;
  grid.Bind(this);
  for (std::size_t i = 0; i < kColumns.size(); ++i) {
    grid.SetColumnWidth(static_cast<int>(i), kColumns[i].characters);
  }
  connections_ += ui().cmdShown.Click.Connect([this] { Settle(Keep::shown); });
  connections_ += ui().cmdSent.Click.Connect([this] { Settle(Keep::sent); });
  connections_ += ui().cmdCancel.Click.Connect([this] { Unload(); });
  connections_ += ui().cmdAll.Click.Connect([this] {
    ui().vsFG.Select({1, 0, Rows() - 1, Columns() - 1});
    OfferChoices();
  });
  connections_ += grid.RowColChange.Connect([this] { OfferChoices(); });
  ShowRows();
}

void frmDoubts::ShowRows() {
  ui().lblSummary.SetText(
      NumberText(rows_.size()) + (rows_.size() == 1 ? " value is" : " values are") +
      " in doubt.  Nothing is downloaded before each is settled: keep what is shown, which "
      "is marked to download, or what would be sent.");
  ui().vsFG.Refresh();
  if (!rows_.empty()) ui().vsFG.SetCurrent(1, 0);
  OfferChoices();
}

std::vector<Doubt> frmDoubts::Chosen() const {
  const GridBlock block = ui().vsFG.Selection();
  std::vector<Doubt> chosen;
  for (int row = std::max(block.top, 1); row <= std::min(block.bottom, Rows() - 1); ++row) {
    chosen.push_back(rows_[static_cast<std::size_t>(row) - 1]);
  }
  return chosen;
}

void frmDoubts::OfferChoices() const {
  const std::vector<Doubt> chosen = Chosen();
  ui().cmdShown.SetEnabled(std::ranges::any_of(chosen, &Doubt::shownMeans));
  ui().cmdSent.SetEnabled(!chosen.empty());
}

// A shown text that is no value cannot be kept: its row stays.
void frmDoubts::Settle(Keep keep) {
  std::vector<Doubt> chosen = Chosen();
  if (keep == Keep::shown) {
    std::erase_if(chosen, [](const Doubt& doubt) { return !doubt.shownMeans; });
  }
  Trapped("frmDoubts.Settle: ", [&] {
    project_.Settle(chosen, keep);
    return true;
  });
  rows_ = project_.Doubts();
  if (rows_.empty()) {
    Unload();
  } else {
    ShowRows();
  }
}

}  // namespace velmoor
