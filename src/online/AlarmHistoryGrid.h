// Shows the alarms that were read from the amplifier's history, the newest first.
#pragma once

#include <string>
#include <vector>

#include "online/AlarmReadings.h"
#include "platform/Grid.h"

namespace velmoor {

class AlarmHistoryGrid final : public ReadOnlyGridSource {
 public:
  // `rows` must outlive the object.
  explicit AlarmHistoryGrid(const std::vector<AlarmReading>& rows) : rows_(rows) {}
  [[nodiscard]] int Rows() const override { return static_cast<int>(rows_.size()) + 1; }
  [[nodiscard]] int Columns() const override { return 3; }
  [[nodiscard]] std::string Text(int row, int column) const override {
    static constexpr const char* kHeadings[] = {"Alarm", "Status Code", "Panel Display"};
    if (row == 0) return kHeadings[column];
    const AlarmReading& entry = rows_.at(static_cast<std::size_t>(row) - 1);
    return column == 0 ? entry.name : column == 1 ? entry.code : entry.display;
  }

 private:
  const std::vector<AlarmReading>& rows_;
};

}  // namespace velmoor
