#include "app/frmCompare.h"

#include <array>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

struct CompareColumn {
  const char* heading;
  int characters;
  std::string ProjectDifference::*text;
};

constexpr std::array<CompareColumn, 5> kColumns{{
    {"Tool", 24, &ProjectDifference::part},
    {"Row", 8, &ProjectDifference::row},
    {"Item", 32, &ProjectDifference::field},
    {"Project", 20, &ProjectDifference::first},
    {"Hardware", 20, &ProjectDifference::second},
}};

}  // namespace

frmCompare::frmCompare(const std::vector<PartComparison>& parts) {
  for (const PartComparison& part : parts) {
    rows_.insert(rows_.end(), part.differences.begin(), part.differences.end());
    if (part.differences.empty()) continue;
    if (!strSummary_.empty()) strSummary_ += ", ";
    strSummary_ += part.part + ": " + NumberText(static_cast<int>(part.differences.size()));
  }
}

int frmCompare::Columns() const {
  return static_cast<int>(kColumns.size());
}

std::string frmCompare::Text(int row, int column) const {
  const CompareColumn& shown = kColumns.at(static_cast<std::size_t>(column));
  if (row == 0) return shown.heading;
  return rows_.at(static_cast<std::size_t>(row) - 1).*shown.text;
}

void frmCompare::FormLoad() {
  ui().lblSummary.SetText("Values that differ.  " + strSummary_);
  ui().vsFG.Bind(this);
  for (std::size_t i = 0; i < kColumns.size(); ++i) {
    ui().vsFG.SetColumnWidth(static_cast<int>(i), kColumns[i].characters);
  }
  connections_ += ui().cmdCancel.Click.Connect([this] { Unload(); });
}

}  // namespace velmoor
