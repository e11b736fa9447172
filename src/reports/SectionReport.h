// The base of the reports of a project's sections: rows are taken from a tool once, and then put
// into the document one after the other.
//
// A report reads what the project holds in memory and changes nothing. It lives for one run.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/PrintDocument.h"

namespace velmoor {

class clsHX7Project;

// The family for a catalogue language: "Symbol" for 1, "Arial" for 2, and no choice for others.
[[nodiscard]] std::string ReportFont(std::int32_t eLanguage);

class SectionReport {
 public:
  explicit SectionReport(clsHX7Project& project) : project_(project) {}
  virtual ~SectionReport() = default;
  SectionReport(const SectionReport&) = delete;
  SectionReport& operator=(const SectionReport&) = delete;

  // The section's headings and rows. Name, title and page are the affair of whoever strings
  // sections together.
  [[nodiscard]] PrintSection Run();

 protected:
  // Takes the rows and sets the headings.
  virtual void ActiveReport_ReportStart() = 0;
  // The fields of the current row; none behind the last one.
  [[nodiscard]] virtual std::vector<PrintCell> Fields() const = 0;
  void GroupHeader1_Format() {}  // carries no behaviour
  void SetHeadings(std::vector<std::string> headings) { section_.headings = std::move(headings); }
  void SetNote(std::string note) { section_.note = std::move(note); }
  [[nodiscard]] clsHX7Project& Proj() const { return project_; }

  int i = 1;  // the current row

 private:
  // Puts the current row into the section; false behind the last one.
  bool Detail_Format();

  clsHX7Project& project_;
  PrintSection section_;
};

}  // namespace velmoor
