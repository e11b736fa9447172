#include "reports/ReportFacts.h"

#include "mechanics/MachineResults.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "session/Session.h"

namespace velmoor {
namespace {

// "12 of 128"; a table's window may hold edits, the report has what is stored.
std::string UsedRows(const MotionTable& table) {
  int used = 0;
  for (int row = 1; row <= table.RowsInArray(); ++row) used += table.IsBlank(row) ? 0 : 1;
  return NumberText(used) + " of " + NumberText(table.RowsInArray());
}

int Marked(clsHX7Project& project) {
  int marked = 0;
  for (const ToolInfo& tool : Tools()) marked += project.MarkedOf(tool.tool);
  return marked;
}

}  // namespace

std::vector<PrintFact> FactsOf(clsHX7Project& project) {
  const MachineEdit machine = project.MechanicalSystem().Edit();
  std::vector<PrintFact> facts{
      {"Machine", project.MechanicalSystem().SelectedSystemName()},
      {"Motor", gMainForm->LastMotorSize() + " W"},
  };
  MachineResults results;
  results.Take(machine.Figures(), project.MechanicalSystem().Description());
  for (int row = 1; row < results.Rows(); ++row) {
    const std::string unit = results.Text(row, 2);
    facts.push_back(
        {results.Text(row, 0), results.Text(row, 1) + (unit.empty() ? "" : " ") + unit});
  }
  facts.push_back({"Steps of the index table", UsedRows(project.Position())});
  facts.push_back({"Zones", UsedRows(project.Zone())});
  facts.push_back({"Jog speeds", UsedRows(project.Jog())});
  const int marked = Marked(project);
  facts.push_back({"To be downloaded", marked == 0 ? "nothing" : NumberText(marked)});
  return facts;
}

}  // namespace velmoor
