// What the index window shows beside its grid: the path of the programme from a chosen start step,
// and the position over time. Derived from the cells as they stand; it changes nothing.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "layouts/frmPosition.h"
#include "platform/Form.h"
#include "session/Project.h"
#include "tables/MotionPlot.h"
#include "tables/ProgrammePath.h"

namespace velmoor {

class clsHX7Position;

class ProgrammeView {
 public:
  explicit ProgrammeView(const clsHX7Position& table);
  ~ProgrammeView();
  ProgrammeView(const ProgrammeView&) = delete;
  ProgrammeView& operator=(const ProgrammeView&) = delete;

  // Until the form unloads. `goTo` runs when the user chooses a step of the path.
  void Bind(Form& form, const layouts::frmPosition& ui, std::function<void(int step)> goTo);
  // The cells or the units have changed.
  void Refresh(const Project& project);
  // The step under the cursor, set off in the chart; 0: none.
  void Select(int step);

 private:
  class PathGrid;

  void ShowStartChoices();
  void ShowPath();
  void ShowChart();
  void FillMotionParameters(const Project& project);
  [[nodiscard]] std::string MarkOf(int step) const;

  const clsHX7Position& table_;
  std::unique_ptr<PathGrid> rows_;
  const layouts::frmPosition* ui_ = nullptr;  // of the open form
  Connections connections_;
  int start_ = 1;
  int selected_ = 0;
  ProgrammePath path_;
  MotionPlot plot_;
  MotionParameters parameters_;
  std::string distanceUnits_;
};

}  // namespace velmoor
