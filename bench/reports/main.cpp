// Times a full project's report: its text, and the PDF document of all eleven sections.
// bench_reports [FOLDER] works in FOLDER.
#include <filesystem>
#include <iostream>
#include <string>

#include "Timing.h"
#include "WindowBench.h"
#include "console/ConsoleSession.h"
#include "platform/Printing.h"
#include "reports/rptHX7Main.h"
#include "simulator/InProcessPort.h"
#include "simulator/SimulatedLine.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

// 128 steps, 32 zones and 16 speeds, each with all it can hold.
bool Fill(clsHX7Project& project) {
  std::string index = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
  std::string zone = "lower,upper\n";
  std::string jog = "speed\n";
  for (int step = 1; step <= 128; ++step) {
    const std::string next = step < 128 ? "clamp-part-" + std::to_string(step + 1) : "END";
    index += "clamp-part-" + std::to_string(step) + ",A-" + std::to_string(90000 + step) +
             ".125,1234.5,12.5,20,ANZ:A,SEL5T65535,65535," + next + "\n";
  }
  for (int row = 1; row <= 32; ++row) {
    zone += std::to_string(-row) + "," + std::to_string(row) + "\n";
  }
  for (int row = 1; row <= 16; ++row) jog += std::to_string(row) + "\n";
  return ImportCsv(project, project.Position(), index).empty() &&
         ImportCsv(project, project.Zone(), zone).empty() &&
         ImportCsv(project, project.Jog(), jog).empty();
}

int Run(const std::string& folder) {
  const std::string file = folder + "/report.spj";
  std::filesystem::copy_file(std::string(VELMOOR_CATALOGUE_DIRECTORY) + "/Velmoor.spt", file,
                             std::filesystem::copy_options::overwrite_existing);
  SimulatedLine line;
  InProcessPort port(line);
  ConsoleSession session(port, nullptr);
  if (!session.Start("400") || !session.Open(file) || !Fill(session.project())) return 1;
  rptHX7Main report;
  PrintItems all{};
  all.fill(true);
  report.SetPrintReportItems(all);
  report.SetProject(session.project());
  std::size_t rows = 0;
  std::size_t bytes = 0;
  bench::Heading();
  bench::Time("All eleven sections as text", 50, "", [&] {
    rows = 0;
    for (const PrintSection& section : report.Run().sections) rows += section.rows.size();
  });
  bench::Time("All eleven sections as PDF", 50, "< 1000",
              [&] { bytes = world().pdf->Pdf(report.Run(), Paper::a4).size(); });
  std::cout << rows << " rows, " << bytes << " bytes\n";
  return 0;
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  return velmoor::bench::RunWithWindows("bench-reports", argc, argv, velmoor::Run);
}
