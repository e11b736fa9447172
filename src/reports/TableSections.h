// The sections that print the index, jog and zone tables.
#pragma once

#include <string>
#include <vector>

#include "reports/SectionReport.h"
#include "tables/MotionTable.h"

namespace velmoor {

// Every row of a table behind its "Row ID", which counts from 0 on paper as on the wire.
class TableSection : public SectionReport {
 protected:
  TableSection(clsHX7Project& project, const MotionTable& table)
      : SectionReport(project), table_(table) {}
  void ActiveReport_ReportStart() override;
  [[nodiscard]] virtual bool IsNumber(std::size_t column) const;
  [[nodiscard]] std::vector<PrintCell> Fields() const override;

  MotionTable::Rows arTemp;

 private:
  const MotionTable& table_;
};

class rptHX7Index final : public TableSection {
 public:
  explicit rptHX7Index(clsHX7Project& project);

 protected:
  void ActiveReport_ReportStart() override;
  [[nodiscard]] bool IsNumber(std::size_t column) const override;
};

class rptHX7Jog final : public TableSection {
 public:
  explicit rptHX7Jog(clsHX7Project& project);
};

class rptHX7Zone final : public TableSection {
 public:
  explicit rptHX7Zone(clsHX7Project& project);
};

}  // namespace velmoor
