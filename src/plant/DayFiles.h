// What is read, as comma-separated text: a file a day, by the date of UTC, all of them within a
// bound.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "plant/AxisState.h"
#include "platform/Files.h"

namespace velmoor {

class DayFiles {
 public:
  // In `folder`, which is made, with names that begin with `line`. A row has `items`.
  // Their permissions are those of the file `like` at most.
  DayFiles(std::string folder, std::string line, std::string like, std::vector<int> items,
           std::size_t mostBytes);

  // A row of what is known of the axis; it is in the file behind the next Flush.
  void Take(const AxisState& axis);
  void Flush();
  // Why nothing can be written; empty: all is well.
  [[nodiscard]] const std::string& Trouble() const { return trouble_; }

 private:
  [[nodiscard]] std::string Heading() const;
  void Open(const std::string& day);
  void KeepBound() const;
  [[nodiscard]] std::string Today(const std::string& stem) const;

  std::string folder_, line_, like_;
  std::vector<int> items_;
  std::size_t mostBytes_;
  std::string day_;
  std::unique_ptr<GrowingFile> file_;
  std::string rows_;
  std::size_t sinceLook_ = 0;  // bytes written since the bound was looked at
  std::string trouble_;
};

}  // namespace velmoor
