#pragma once

#include <string>
#include <vector>

#include "platform/Grid.h"

namespace velmoor {

// Three rows: a number, a list, a locked cell; column 0 is the name.
class SampleGrid final : public GridSource {
 public:
  [[nodiscard]] int Rows() const override { return static_cast<int>(texts.size()); }
  [[nodiscard]] int Columns() const override { return 2; }
  [[nodiscard]] std::string Text(int row, int column) const override {
    return texts[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
  }
  void SetText(int row, int column, const std::string& text) override {
    texts[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = text;
  }
  [[nodiscard]] CellTraits Traits(int row, int column) const override {
    CellTraits traits;
    traits.editable = column == 1 && row != 3;
    traits.locked = row == 3;
    traits.button = column == 1 && row == 1;
    if (row == 2) SetComboList(traits, "linear|rotary");
    return traits;
  }
  std::vector<std::vector<std::string>> texts{
      {"Name", "Value"}, {"Speed", "100"}, {"Kind", "linear"}, {"Fixed", "7"}};
};

}  // namespace velmoor
