// Undo and redo of a window's edits since they were last applied.
//
// The window hands over its texts after each edit; what differs from the texts before is one step,
// however many cells it concerns. The history holds no cell of its own beyond that and writes none:
// it tells which texts to put back.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace velmoor {

class EditHistory {
 public:
  using Rows = std::vector<std::vector<std::string>>;
  // Row and column count from 0.
  struct Assignment {
    std::size_t row;
    std::size_t column;
    std::string text;
    bool operator==(const Assignment&) const = default;
  };
  static constexpr std::size_t kMostSteps = 500;  // older ones are forgotten

  // Starts anew from these texts: they were read, applied, or came from elsewhere.
  void Reset(Rows rows);
  // Takes the texts after an edit, in a table of the same shape. False: nothing changed. A step
  // that was undone can no longer be redone.
  bool Record(const Rows& rows);

  // The texts as of the last call here.
  [[nodiscard]] const Rows& Now() const { return rows_; }
  [[nodiscard]] bool CanUndo() const { return done_ > 0; }
  [[nodiscard]] bool CanRedo() const { return done_ < steps_.size(); }
  // The texts that one step back or forward takes; none where there is no step.
  [[nodiscard]] std::vector<Assignment> Undo();
  [[nodiscard]] std::vector<Assignment> Redo();

 private:
  struct Change {
    std::size_t row;
    std::size_t column;
    std::string before;
    std::string after;
  };
  using Step = std::vector<Change>;
  std::vector<Assignment> Apply(const Step& step, std::string Change::*text);

  Rows rows_;
  std::vector<Step> steps_;
  std::size_t done_ = 0;  // steps that are not undone
};

}  // namespace velmoor
