#include "app/frmCompare.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"

namespace velmoor {
namespace {

struct CompareColumn {
  const char* heading;
  int characters;
  std::string ProjectDifference::*text;
};

constexpr int kFirst = 3;   // of the two columns of values
constexpr int kAction = 5;  // where something can be taken
constexpr std::array<CompareColumn, 5> kColumns{{
    {"Tool", 24, &ProjectDifference::part},
    {"Row", 8, &ProjectDifference::row},
    {"Item", 32, &ProjectDifference::field},
    {"", 20, &ProjectDifference::first},
    {"", 20, &ProjectDifference::second},
}};

std::string PlaceOf(const ProjectDifference& value) {
  return value.part + "|" + value.row + "|" + value.field;
}

}  // namespace

frmCompare::frmCompare(const std::vector<PartComparison>& parts, CompareHeads heads,
                       CompareActions actions)
    : heads_(std::move(heads)), actions_(std::move(actions)) {
  TakeParts(parts);
}

bool frmCompare::Ask() {
  (void)Show(FormMode::modal);
  return agreed_;
}

// ---- rows

void frmCompare::TakeParts(const std::vector<PartComparison>& parts) {
  parts_ = parts;
  strSummary_.clear();
  for (const PartComparison& part : parts_) {
    if (part.differences.empty()) continue;
    if (!strSummary_.empty()) strSummary_ += ", ";
    strSummary_ += part.part + ": " + NumberText(static_cast<int>(part.differences.size()));
  }
  if (strSummary_.empty()) strSummary_ = "none";
  TakeRows();
}

void frmCompare::TakeRows() {
  rows_.clear();
  for (const PartComparison& part : parts_) {
    const auto begin = static_cast<std::ptrdiff_t>(rows_.size());
    for (const ProjectDifference& value : part.differences) {
      rows_.push_back({value, RowState::different, part.counts});
    }
    for (const ProjectDifference& value : part.equal) {
      const bool taken = before_.contains(PlaceOf(value));
      if (!taken && !showsEqual_) continue;
      rows_.push_back({value, taken ? RowState::taken : RowState::equal, part.counts});
    }
    std::ranges::stable_sort(rows_.begin() + begin, rows_.end(), {},
                             [](const ShownRow& row) { return row.value.place; });
  }
}

int frmCompare::Columns() const {
  return actions_.take ? kAction + 1 : kAction;
}

std::string frmCompare::Text(int row, int column) const {
  if (column == kAction) {
    if (row == 0 || !At(row).counts || At(row).state == RowState::equal) return {};
    return At(row).state == RowState::taken ? "Take Back" : "Take";
  }
  const CompareColumn& shown = kColumns.at(static_cast<std::size_t>(column));
  if (row == 0 && column == kFirst) return heads_.first;
  if (row == 0 && column == kFirst + 1) return heads_.second;
  if (row == 0) return shown.heading;
  return At(row).value.*shown.text;
}

CellTraits frmCompare::Traits(int row, int column) const {
  CellTraits traits;
  if (row == 0) return traits;
  traits.action = column == kAction && !Text(row, column).empty();
  const bool taken = column == kFirst && At(row).state == RowState::taken;
  if (taken) traits.mark = CellMark::corner;
  if (At(row).state == RowState::equal) traits.tone = Tone::faint;
  return traits;
}

// ---- the window

void frmCompare::FormLoad() {
  agreed_ = false;
  form().SetCaption(heads_.caption);
  ui().vsFG.Bind(this);
  for (std::size_t i = 0; i < kColumns.size(); ++i) {
    ui().vsFG.SetColumnWidth(static_cast<int>(i), kColumns[i].characters);
  }
  ui().chkEqual.SetVisible(static_cast<bool>(actions_.look));
  ui().cmdTake.SetVisible(static_cast<bool>(actions_.take));
  ui().cmdAgree.SetVisible(!actions_.agree.empty());
  ui().cmdAgree.SetCaption(actions_.agree);
  Connect();
  ShowRows();
  if (!rows_.empty()) ui().vsFG.SetCurrent(1, 0);
  OfferTaking();
}

void frmCompare::Connect() {
  connections_ += ui().cmdCancel.Click.Connect([this] { Unload(); });
  connections_ += ui().cmdAgree.Click.Connect([this] {
    agreed_ = true;
    Unload();
  });
  connections_ += ui().chkEqual.Click.Connect([this] {
    showsEqual_ = ui().chkEqual.Value();
    TakeRows();
    ShowRows();
  });
  connections_ += ui().cmdTake.Click.Connect([this] { TakeChosen(Chosen()); });
  connections_ += ui().vsFG.RowColChange.Connect([this] { OfferTaking(); });
  connections_ += ui().vsFG.CellButton.Connect([this](int row, int) { TakeChosen({At(row)}); });
}

void frmCompare::ShowRows() {
  ui().lblSummary.SetText("Values that differ.  " + strSummary_);
  ui().vsFG.Refresh();
  OfferTaking();
}

std::vector<frmCompare::ShownRow> frmCompare::Chosen() const {
  const GridBlock block = ui().vsFG.Selection();
  std::vector<ShownRow> chosen;
  for (int row = std::max(block.top, 1); row <= std::min(block.bottom, Rows() - 1); ++row) {
    if (At(row).counts && At(row).state != RowState::equal) chosen.push_back(At(row));
  }
  return chosen;
}

void frmCompare::OfferTaking() const {
  ui().cmdTake.SetEnabled(!Chosen().empty());
}

// ---- taking

// What differs is taken; where nothing of it does, what was taken is given back.
void frmCompare::TakeChosen(const std::vector<ShownRow>& chosen) {
  std::vector<WantedValue> wanted, back;
  for (const ShownRow& row : chosen) {
    if (row.state == RowState::different) {
      wanted.push_back({row.value, row.value.second});
    } else if (row.state == RowState::taken) {
      back.push_back({row.value, before_.at(PlaceOf(row.value))});
    }
  }
  const bool returns = wanted.empty();
  if (!Give(returns ? back : wanted, returns)) return;
  for (const WantedValue& value : returns ? back : wanted) {
    if (returns) {
      before_.erase(PlaceOf(value.place));
    } else {
      before_[PlaceOf(value.place)] = value.place.first;
    }
  }
  const int row = ui().vsFG.Row();
  TakeParts(actions_.look());
  ShowRows();
  if (!rows_.empty()) ui().vsFG.SetCurrent(std::clamp(row, 1, Rows() - 1), 0);
  OfferTaking();
}

bool frmCompare::Give(const std::vector<WantedValue>& values, bool back) {
  if (values.empty() || !actions_.take) return false;
  return Trapped("frmCompare.TakeChosen: ", [&] {
    const std::vector<std::string> faults = actions_.take(values, back);
    if (faults.empty()) return true;
    std::string words = "The value cannot be taken!";
    for (const std::string& fault : faults) words += "\r" + fault;
    ShowExclamation(words);
    return false;
  });
}

}  // namespace velmoor
