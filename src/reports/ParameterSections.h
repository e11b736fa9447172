// The sections that list parameters: what the six parameter tools hold, and the machine.
#pragma once

#include <string>
#include <vector>

#include "project/clsHX7Project.h"
#include "reports/SectionReport.h"
#include "tools/ParameterRules.h"

namespace velmoor {

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

template <auto tool, ParameterColumns columns>
class SectionOfTool : public ToolSection {
 public:
  explicit SectionOfTool(clsHX7Project& project)
      : ToolSection(project, (project.*tool)(), columns) {}
};

using rptHX7Params = SectionOfTool<&clsHX7Project::Editor, ParameterColumns::limits>;
using rptHX7Interface = SectionOfTool<&clsHX7Project::Interface, ParameterColumns::values>;
using rptHX7FlexibleIO = SectionOfTool<&clsHX7Project::FlexibleIO, ParameterColumns::values>;
using rptHX7OverTravel = SectionOfTool<&clsHX7Project::OverTravel, ParameterColumns::limits>;
using rptHX7Homing = SectionOfTool<&clsHX7Project::Homing, ParameterColumns::limits>;

// In an order of its own, whatever that of the tool is.
class rptHX7Tuning final : public SectionOfTool<&clsHX7Project::Tuning, ParameterColumns::limits> {
 public:
  using SectionOfTool::SectionOfTool;

 protected:
  [[nodiscard]] std::vector<ParameterRow> TakeRows() const override;
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
