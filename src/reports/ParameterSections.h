// The sections that list parameters: what the six parameter tools hold, and the machine.
#pragma once

#include <string>
#include <vector>

#include "reports/SectionReport.h"
#include "tools/ParameterRules.h"

namespace velmoor {

class ParameterToolBase;

// How many of the columns "Parameter", "Description", "Value", "Units", "Minimum" and "Maximum" a
// section has.
enum class ParameterColumns { values = 3, units = 4, limits = 6 };

class ParameterSection : public SectionReport {
 protected:
  ParameterSection(clsHX7Project& project, ParameterColumns columns)
      : SectionReport(project), columns_(columns) {}
  void ActiveReport_ReportStart() override;
  [[nodiscard]] virtual std::vector<ParameterRow> TakeRows() const = 0;
  [[nodiscard]] std::vector<PrintCell> Fields() const override;

  std::vector<ParameterRow> arTemp;

 private:
  ParameterColumns columns_;
};

// Every row of a tool.
class ToolSection : public ParameterSection {
 protected:
  ToolSection(clsHX7Project& project, const ParameterToolBase& tool, ParameterColumns columns)
      : ParameterSection(project, columns), tool_(tool) {}
  [[nodiscard]] std::vector<ParameterRow> TakeRows() const override;

 private:
  const ParameterToolBase& tool_;
};

class rptHX7Params final : public ToolSection {
 public:
  explicit rptHX7Params(clsHX7Project& project);
};

class rptHX7Tuning final : public ToolSection {
 public:
  explicit rptHX7Tuning(clsHX7Project& project);

 protected:
  [[nodiscard]] std::vector<ParameterRow> TakeRows() const override;
};

class rptHX7Interface final : public ToolSection {
 public:
  explicit rptHX7Interface(clsHX7Project& project);
};

class rptHX7FlexibleIO final : public ToolSection {
 public:
  explicit rptHX7FlexibleIO(clsHX7Project& project);
};

class rptHX7OverTravel final : public ToolSection {
 public:
  explicit rptHX7OverTravel(clsHX7Project& project);
};

class rptHX7Homing final : public ToolSection {
 public:
  explicit rptHX7Homing(clsHX7Project& project);
};

// The system's own lines lead, and parameters that hold several things are read digit by digit.
class rptHX7MechanicalSystem final : public ParameterSection {
 public:
  explicit rptHX7MechanicalSystem(clsHX7Project& project)
      : ParameterSection(project, ParameterColumns::units) {}

 protected:
  void ActiveReport_ReportStart() override;
  [[nodiscard]] std::vector<ParameterRow> TakeRows() const override;

 private:
  // Moves the first row of that description to the top; without one nothing moves.
  void MoveToFrontOfBlockMatrixByDescription(const std::string& strDesc);
};

}  // namespace velmoor
