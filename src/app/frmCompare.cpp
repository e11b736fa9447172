#include "app/frmCompare.h"

#include <array>
#include <utility>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

struct CompareColumn {
  const char* heading;
  int characters;
  std::string ProjectDifference::*text;
};

constexpr int kFirst = 3;  // of the two columns of values
constexpr std::array<CompareColumn, 5> kColumns{{
    {"Tool", 24, &ProjectDifference::part},
    {"Row", 8, &ProjectDifference::row},
    {"Item", 32, &ProjectDifference::field},
    {"", 20, &ProjectDifference::first},
    {"", 20, &ProjectDifference::second},
}};

}  // namespace

frmCompare::frmCompare(const std::vector<PartComparison>& parts, CompareHeads heads)
    : heads_(std::move(heads)) {
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
  if (row == 0 && column == kFirst) return heads_.first;
  if (row == 0 && column == kFirst + 1) return heads_.second;
  if (row == 0) return shown.heading;
  return rows_.at(static_cast<std::size_t>(row) - 1).*shown.text;
}

void frmCompare::FormLoad() {
  form().SetCaption(heads_.caption);
  ui().lblSummary.SetText("Values that differ.  " + strSummary_);
  ui().vsFG.Bind(this);
  for (std::size_t i = 0; i < kColumns.size(); ++i) {
    ui().vsFG.SetColumnWidth(static_cast<int>(i), kColumns[i].characters);
  }
  connections_ += ui().cmdCancel.Click.Connect([this] { Unload(); });
}

}  // namespace velmoor
