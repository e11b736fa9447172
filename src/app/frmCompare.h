// The window that shows two sides, value by value: changed ones only, tool by tool, unless the
// others are asked for. It blocks while it is open. It changes nothing by itself: what is to be
// taken from the second side its caller puts into the first.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "layouts/frmCompare.h"
#include "project/ProjectCompare.h"
#include "project/TakeValues.h"
#include "windows/Window.h"

namespace velmoor {

// Whose values stand in the two columns.
struct CompareHeads {
  std::string caption = "Project and Hardware";
  std::string first = "Project";
  std::string second = "Hardware";
};

// What the user may do beside looking; each empty one takes its controls away.
struct CompareActions {
  // Compares anew, equal values too.
  std::function<std::vector<PartComparison>()> look{};
  // Gives those values to the first side, `back` where it had them when the window opened; the
  // result tells what was refused.
  std::function<std::vector<std::string>(const std::vector<WantedValue>& values, bool back)> take{};
  std::string agree{};  // the caption of a button by which the user agrees to the second side
};

class frmCompare final : public WindowOf<layouts::frmCompare>, private ReadOnlyGridSource {
 public:
  explicit frmCompare(const std::vector<PartComparison>& parts, CompareHeads heads = {},
                      CompareActions actions = {});
  // Shows it until it is closed. True: the user has agreed.
  [[nodiscard]] bool Ask();

 protected:
  void FormLoad() override;

 private:
  enum class RowState { different, taken, equal };
  struct ShownRow {
    ProjectDifference value;
    RowState state = RowState::different;
    bool counts = true;
  };
  [[nodiscard]] int Rows() const override { return static_cast<int>(rows_.size()) + 1; }
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;
  [[nodiscard]] const ShownRow& At(int row) const {
    return rows_.at(static_cast<std::size_t>(row) - 1);
  }

  void TakeParts(const std::vector<PartComparison>& parts);
  void TakeRows();
  void ShowRows();
  [[nodiscard]] std::vector<ShownRow> Chosen() const;
  void OfferTaking() const;
  void TakeChosen(const std::vector<ShownRow>& chosen);
  bool Give(const std::vector<WantedValue>& values, bool back);
  void Connect();

  std::vector<PartComparison> parts_;
  std::vector<ShownRow> rows_;
  std::map<std::string, std::string> before_;  // of what was taken, by its place
  std::string strSummary_;
  CompareHeads heads_;
  CompareActions actions_;
  bool showsEqual_ = false;
  bool agreed_ = false;
};

}  // namespace velmoor
