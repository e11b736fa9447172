// Counts the rows that a project tells of into the operation that is under way.
#pragma once

#include "operations/Operation.h"

namespace velmoor {

class RowCount {
 public:
  // As the listener of the project's rows, in that direction.
  [[nodiscard]] auto Listener(bool downloading) {
    return [this, downloading](Tool tool, std::int16_t row, std::int16_t rows) {
      if (run_ != nullptr) run_->CountRow(tool, downloading, row, rows);
    };
  }
  // Null: none is under way.
  [[nodiscard]] Operation* Run() const { return run_; }

  // The rows are those of this run for as long as it lives.
  class UnderWay {
   public:
    UnderWay(RowCount& count, Operation& run) : count_(count) { count.run_ = &run; }
    ~UnderWay() { count_.run_ = nullptr; }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

   private:
    RowCount& count_;
  };
  void Forget() { run_ = nullptr; }

 private:
  Operation* run_ = nullptr;
};

}  // namespace velmoor
