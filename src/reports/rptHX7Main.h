// The main report: strings the chosen sections of a project together under one page frame.
//
// Reads what the project holds in memory; nothing is asked of the hardware and nothing is changed.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/PrintDocument.h"
#include "session/Tools.h"

namespace velmoor {

class clsHX7Project;
class frmPreview;

inline constexpr std::size_t kReportItems = kTools + 2;
using PrintItems = std::array<bool, kReportItems>;

// One section as the user chooses it.
struct ReportItem {
  std::string_view label;  // "Index Table": of its tick box, and the title of its pages
  std::string_view field;  // "srptIndex": its place in the main report
  std::string_view word;   // "index": its name on a command line
};

// By position in PrintItems, which is the order in the document.
[[nodiscard]] std::span<const ReportItem, kReportItems> ReportItems();

class rptHX7Main {
 public:
  // Without a printer the viewer offers no printing.
  void SetCanPrint(bool canPrint) { blnCanPrint = canPrint; }
  void SetPrintCount(std::int16_t count) { iPrintCount = count; }
  [[nodiscard]] std::int16_t PrintCount() const { return iPrintCount; }
  void SetPrintReportItems(const PrintItems& items) { blnPrint = items; }
  // Must outlive Run.
  void SetProject(clsHX7Project& project) { currProj = &project; }

  // Instead of the clock's.
  void SetMoment(const WallTime& moment) { moment_ = moment; }

  // Makes the document of this moment. An error leaves it unfinished and is thrown on.
  const PrintDocument& Run();
  [[nodiscard]] const PrintDocument& Document() const { return document_; }
  // Shows the document in its viewer; returns when that has closed.
  void ShowInViewer(Paper paper);
  // A count of ticked positions up to `iPrintItem` above 1 opens a new page: the first section
  // shares its page with the head of the document.
  void StartNewPage(std::size_t iPrintItem, bool& bNoNewPage) const;
  // Disables the tool "&Print..." of the viewer.
  static void DisablePrintInToolbar(frmPreview& viewer);

 private:
  void ActiveReport_ReportStart();
  void ActiveReport_ReportEnd() {}  // carries no behaviour
  void PageHeader_Format();
  void PageFooter_Format();
  [[nodiscard]] bool HasNothingToPrint(std::size_t item) const;
  // Takes the sub-report of that field out of the document.
  void DeleteTheControl(std::string_view str);

  bool blnCanPrint = false;
  PrintItems blnPrint{};
  std::int16_t iPrintCount = 0;
  clsHX7Project* currProj = nullptr;
  std::optional<WallTime> moment_;
  PrintDocument document_;
};

// "November 24, 2026" and "10:05 PM".
[[nodiscard]] std::string LongDate(const WallTime& moment);
[[nodiscard]] std::string ClockTime(const WallTime& moment);

}  // namespace velmoor
