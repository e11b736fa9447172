// The report of a full project: its text, and the PDF document of all eleven sections.
#include "Workbench.h"
#include "platform/Printing.h"
#include "reports/rptHX7Main.h"
#include "simulator/InProcessPort.h"

#include <iostream>
namespace velmoor::bench {

void MeasureReport(Workbench& bench) {
  constexpr int kRuns = 21;
  SimulatedLine line;
  InProcessPort port(line);
  ConsoleSession session(port, std::cerr);
  Open(session, bench.fullProject);
  rptHX7Main report;
  PrintItems all{};
  all.fill(true);
  report.SetPrintReportItems(all);
  report.SetProject(session.project());
  bench.Time("All eleven sections as text", kMilliseconds, kRuns, Goal{10},
             [&] { Require(!report.Run().sections.empty(), "the report"); });
  bench.Time("All eleven sections as PDF", kMilliseconds, kRuns, Goal{1000},
             [&] { Require(!world().pdf->Pdf(report.Run(), Paper::a4).empty(), "the PDF"); });
}

}  // namespace velmoor::bench
