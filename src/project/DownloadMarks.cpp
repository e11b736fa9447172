// The marks of what the hardware does not have, where a transfer sets them.

#include <algorithm>

#include "platform/Database.h"
#include "project/clsHX7Project.h"
#include "project/data/Schema.h"

namespace velmoor {

using schema::Parameters;

std::vector<int> clsHX7Project::RowsToSend(const MotionTable& table, bool all) {
  std::vector<int> rows;
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    if (all || table.DirtyCell(row) == "1") rows.push_back(row);
  }
  return rows;
}

void clsHX7Project::MarkRows(MotionTable& table, const std::vector<int>& rows) {
  if (rows.empty()) return;
  const TableLayout& layout = table.Layout();
  const auto database = OpenForWriting(strProjectDatabasePath_);
  const auto records = database->OpenTable(layout.table, layout.order);
  int row = 0;
  for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
    if (!std::ranges::binary_search(rows, ++row)) continue;
    records->Edit();
    records->Set(schema::Position::kDirty, "1");
    records->Update();
    table.SetDirtyCell(row, true);
  }
  database->Commit();
  table.SetIsDirty(true);
}

void clsHX7Project::MarkEverything() {
  for (MotionTable* const table : Tables()) MarkRows(*table, RowsToSend(*table, true));
  MarkParameters([](const std::string& /*strPn*/) { return true; });
  clsEditor_.SetIsDirty(true);
  clsMechanicalSystem_.SetIsDirty(true);
  blnIsDirty_ = true;
}

void clsHX7Project::MarkParameters(const std::function<bool(const std::string& strPn)>& concerned) {
  const auto database = OpenForWriting(strProjectDatabasePath_);
  const auto records = database->OpenTable(Parameters::kTable);
  for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
    const std::string strPn = records->Text(Parameters::kPn);
    // These would keep their mark for ever, or for as long as the option card is an old one.
    if (!NotNonDownloadPns(strPn) || NeedsNewOptionVersion(strPn)) continue;
    if (!concerned(strPn) || records->Text(Parameters::kValue).empty()) continue;
    records->Edit();
    records->Set(Parameters::kDirty, "1");
    records->Update();
  }
  database->Commit();
}

bool clsHX7Project::DownloadWholeTable(Tool table) {
  if (!DownloadTable(table, true)) return false;
  TableOf(table)->SetIsDirty(false);
  return true;
}

}  // namespace velmoor
