// The dialog of a step's move: its kind and its distance.
#pragma once

#include <string>

#include "layouts/frmDialogPosition.h"
#include "session/Project.h"
#include "windows/Dialog.h"

namespace velmoor {

class frmDialogPosition final : public WindowOf<layouts::frmDialogPosition, Dialog> {
 public:
  explicit frmDialogPosition(const Project& project) : project_(project) {}

  void SetPositionCell(const std::string& cell);
  // "I+12.345", "A-1.000", "+INFINITE", "-INFINITE", "-" or "STOP".
  [[nodiscard]] std::string PositionCell() const;
  [[nodiscard]] const std::string& Distance() const { return strDistance_; }
  // 0 relative, 1 absolute, 2 and 3 without end, 4 none, 5 stop.
  [[nodiscard]] int Position() const { return intPosition_; }

 protected:
  void FormLoad() override;
  bool TakeResult() override;

 private:
  [[nodiscard]] bool TakesDistance() const { return intPosition_ <= 1; }
  void EnableDistanceBox();
  void txtDistance_Validate(bool& cancel);

  const Project& project_;
  int intPosition_ = 0;
  std::string strDistance_;  // with its sign; empty without one
};

}  // namespace velmoor
