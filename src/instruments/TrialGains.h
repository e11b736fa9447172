// The gains of the project as a grid shows them, with what is to be sent in their place.
#pragma once

#include <string>
#include <vector>

#include "platform/Grid.h"

namespace velmoor {

class clsHX7Tuning;

class TrialGains final : public GridSource {
 public:
  // Nothing is edited then.
  void Read(const clsHX7Tuning& tuning);
  [[nodiscard]] bool IsEdited() const;
  // In the order of the rows.
  [[nodiscard]] std::vector<std::string> Values() const;
  [[nodiscard]] std::vector<std::string> Edited() const;
  void Edit(const std::vector<std::string>& values);
  // "Pn100=55" for each of `values` that differs from the project's.
  [[nodiscard]] std::vector<std::string> Assignments(const std::vector<std::string>& values) const;

  [[nodiscard]] int Rows() const override { return static_cast<int>(gains_.size()) + 1; }
  [[nodiscard]] int Columns() const override { return 4; }
  [[nodiscard]] std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

 private:
  struct Gain {
    std::string number;  // "Pn100"
    std::string name;
    std::string value;   // of the project and, once it was sent, of the amplifier
    std::string edited;  // what is to be sent
  };
  std::vector<Gain> gains_;
};

}  // namespace velmoor
