// The report of a full project: its text, and the PDF document of all eleven sections.
#include "Timing.h"
#include "Workbench.h"
#include "platform/Printing.h"
#include "reports/rptHX7Main.h"
#include "simulator/InProcessPort.h"

namespace velmoor::bench {

void MeasureReport(Workbench& bench) {
  constexpr int kRuns = 21;
  SimulatedLine line;
  InProcessPort port(line);
  ConsoleSession session(port, nullptr);
  Open(session, bench.fullProject);
  rptHX7Main report;
  PrintItems all{};
  all.fill(true);
  report.SetPrintReportItems(all);
  report.SetProject(session.project());
  bench.table.Add({"All eleven sections as text",
                   kMilliseconds,
                   Times(kRuns, [&] { Require(!report.Run().sections.empty(), "the report"); }),
                   Goal{10},
                   {}});
  bench.table.Add(
      {"All eleven sections as PDF",
       kMilliseconds,
       Times(kRuns,
             [&] { Require(!world().pdf->Pdf(report.Run(), Paper::a4).empty(), "the PDF"); }),
       Goal{1000},
       {}});
}

}  // namespace velmoor::bench
