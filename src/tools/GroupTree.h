// The groups of the parameters as a tree in a grid: all of them, the groups, and within the chosen
// one its own, each with the number of rows that are to be seen.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Grid.h"

namespace velmoor {

class GroupTree final : public ReadOnlyGridSource {
 public:
  // From the groups of the rows, "Gains > First set", in the order in which they first come.
  explicit GroupTree(const std::vector<std::string>& groups);
  // Until the grid's form unloads. `chosen` runs when the user has chosen another branch.
  void Bind(Grid& grid, Connections& connections, std::function<void()> chosen);

  // The group of the chosen branch; empty: all.
  [[nodiscard]] const std::string& Chosen() const { return branches_.at(chosen_).group; }
  // Whether a row of that group belongs to the chosen branch.
  [[nodiscard]] bool Holds(const std::string& group) const { return Holds(chosen_, group); }
  // The groups of the rows that are to be seen, one a row.
  void Count(const std::vector<std::string>& groups);

  [[nodiscard]] int Rows() const override { return static_cast<int>(branches_.size()) + 1; }
  [[nodiscard]] int Columns() const override { return 2; }
  [[nodiscard]] std::string Text(int row, int column) const override;

 private:
  struct Branch {
    std::string group;
    int rows = 0;
  };
  [[nodiscard]] bool Holds(std::size_t branch, const std::string& group) const;
  [[nodiscard]] bool IsWithin(std::size_t branch) const;
  [[nodiscard]] bool HasOwn(std::size_t branch) const;
  [[nodiscard]] bool IsOpen(std::size_t branch) const;
  void ShowOpen();

  std::vector<Branch> branches_;  // the first holds all
  std::size_t chosen_ = 0;
  Grid* grid_ = nullptr;  // of the open form
};

}  // namespace velmoor
