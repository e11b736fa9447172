// Tables from comma-separated texts.

#include "platform/Csv.h"
#include "ProgramSession.h"
#include "Target.h"
#include "platform/VisibleText.h"
#include "tables/TableCsv.h"

namespace velmoor::fuzz {
namespace {

// What was imported without a complaint can be stored, and exports to what imports to the same.
template <typename Table>
void Import(Table& table, std::string_view text) {
  const Project& project = OpenedProject();
  const auto before = table.TakeEdits();
  if (ImportCsv(project, table, text).empty()) {
    Require(table.ChangeAccepted(), "an import can be stored");
    const std::string exported = ExportCsv(table);
    Require(ImportCsv(project, table, exported).empty(), "an export can be imported");
    Require(ExportCsv(table) == exported, "an export imports to the same");
  }
  table.PutBackEdits(before);
}

}  // namespace
}  // namespace velmoor::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  using namespace velmoor::fuzz;
  static ProgramSession session("csv");
  std::string_view text = Text(data, size);
  const unsigned table = Choose(text, 4);
  try {
    clsHX7Project& project = campaign::Program::Project();
    if (table == 0) Import(project.Position(), text);
    if (table == 1) Import(project.Zone(), text);
    if (table == 2) Import(project.Jog(), text);
    auto rows = ParseCsv(text);
    std::string again;
    for (const CsvRow& row : rows) again += CsvLine(row);
    for (CsvRow& row : rows) {
      for (std::string& field : row) field = VisibleText(field);
    }
    Require(ParseCsv(again) == rows, "rows that were written read the same");
  } catch (const std::runtime_error&) {
    // A quote that is never closed, with its line's number.
  }
  return 0;
}
