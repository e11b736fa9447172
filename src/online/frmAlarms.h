// The alarms of the connected amplifier, without a project: what it shows now, the error of its
// card, and its history. Reads as it opens and when it is asked to.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "layouts/frmAlarms.h"
#include "online/AlarmHistoryGrid.h"
#include "windows/Window.h"

namespace velmoor {

class frmAlarms final : public WindowOf<layouts::frmAlarms> {
 public:
  // The names of the recordings that alarms have made, the latest first.
  explicit frmAlarms(std::vector<std::string> recordings) : recordings_(std::move(recordings)) {}
  // The recording that the user wishes to see, for which the window has closed; empty: none.
  [[nodiscard]] const std::string& Wanted() const { return wanted_; }

 protected:
  void FormLoad() override;

 private:
  // Every part by itself: what cannot be read is told in its place, with the cause.
  void Read();
  void ReadNow();
  void ReadCard();
  void ReadHistory();
  void cmdReset_Click();
  void cmdClear_Click();

  std::vector<std::string> recordings_;
  std::string wanted_;
  std::vector<AlarmReading> history_;
  AlarmHistoryGrid historyGrid_{history_};
};

}  // namespace velmoor
