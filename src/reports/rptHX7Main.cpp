#include "reports/rptHX7Main.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "instruments/AlarmRecordings.h"
#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "platform/World.h"
#include "project/clsHX7Project.h"
#include "reports/ParameterSections.h"
#include "reports/ReportFacts.h"
#include "reports/TableSections.h"
#include "reports/frmPreview.h"
#include "reports/rptHX7Alarm.h"
#include "reports/rptHX7Communications.h"
#include "session/Session.h"

namespace velmoor {
namespace {

// The session's own section, the tools' in their order, and what was recorded.
std::array<ReportItem, kReportItems> MakeItems() {
  std::array<ReportItem, kReportItems> items{
      {{"Communications Settings", "srptCommunications", "communications"}}};
  for (std::size_t i = 0; i < kTools; ++i) {
    const ToolInfo& info = Tools()[i];
    items[i + 1] = {info.report, info.section, info.word};
  }
  items.back() = {"Latest Alarm", "srptAlarm", "alarm"};
  return items;
}

const std::array<ReportItem, kReportItems> kItems = MakeItems();

template <typename Report>
PrintSection RunReport(clsHX7Project& project) {
  return Report(project).Run();
}

// By position, as the items above.
constexpr std::array<PrintSection (*)(clsHX7Project&), kReportItems> kReports{
    RunReport<rptHX7Communications>, RunReport<rptHX7MechanicalSystem>,
    RunReport<rptHX7Params>,         RunReport<rptHX7Tuning>,
    RunReport<rptHX7Interface>,      RunReport<rptHX7FlexibleIO>,
    RunReport<rptHX7OverTravel>,     RunReport<rptHX7Homing>,
    RunReport<rptHX7Index>,          RunReport<rptHX7Jog>,
    RunReport<rptHX7Zone>,           RunReport<rptHX7Alarm>};

}  // namespace

std::span<const ReportItem, kReportItems> ReportItems() {
  return kItems;
}

std::string LongDate(const WallTime& moment) {
  static constexpr std::array<std::string_view, 12> kMonths{
      "January", "February", "March",     "April",   "May",      "June",
      "July",    "August",   "September", "October", "November", "December"};
  return std::string(kMonths.at(static_cast<std::size_t>(moment.month) - 1)) + " " +
         NumberText(moment.day) + ", " + NumberText(moment.year);
}

std::string ClockTime(const WallTime& moment) {
  const int hour = moment.hour % 12 == 0 ? 12 : moment.hour % 12;
  return NumberText(hour) + ":" + PadToDigits(NumberText(moment.minute), 2) +
         (moment.hour < 12 ? " AM" : " PM");
}

const PrintDocument& rptHX7Main::Run() {
  if (currProj == nullptr) throw std::logic_error("A report needs a project");
  document_ = {};
  document_.moment = moment_.value_or(world().clock->Now());
  document_.font = ReportFont(gMainForm->Language());
  document_.title = currProj->Title();
  document_.subtitle = "Set-up of axis " + gMainForm->Axis() + ", " + LongDate(document_.moment);
  document_.facts = FactsOf(*currProj);
  document_.signatures = {"Set up by", "Checked by", "Date"};
  PageHeader_Format();
  PageFooter_Format();
  ActiveReport_ReportStart();
  ActiveReport_ReportEnd();
  return document_;
}

void rptHX7Main::PageHeader_Format() {
  document_.header = currProj->FileName();
}

void rptHX7Main::PageFooter_Format() {
  document_.date = LongDate(document_.moment);
  document_.time = ClockTime(document_.moment);
  document_.page = "Page #";
  document_.pages = "of #";
}

void rptHX7Main::ActiveReport_ReportStart() {
  for (const ReportItem& item : kItems) {
    document_.sections.emplace_back().name = item.field;
  }
  for (std::size_t item = 0; item < kReportItems; ++item) {
    if (!blnPrint[item] || HasNothingToPrint(item)) {
      DeleteTheControl(kItems[item].field);
      continue;
    }
    PrintSection report = kReports[item](*currProj);
    report.name = kItems[item].field;
    report.title = kItems[item].label;
    bool bNoNewPage = true;
    StartNewPage(item, bNoNewPage);
    report.newPage = !bNoNewPage;
    *std::ranges::find(document_.sections, report.name, &PrintSection::name) = std::move(report);
  }
}

// Most projects have recorded no alarm: the others' sections are the whole report then.
bool rptHX7Main::HasNothingToPrint(std::size_t item) const {
  const bool isAlone = std::ranges::count(blnPrint, true) == 1;
  return item + 1 == kReportItems && !isAlone &&
         AlarmRecordings(RecordingFolder(currProj->FileName())).empty();
}

void rptHX7Main::StartNewPage(std::size_t iPrintItem, bool& bNoNewPage) const {
  const auto ticked = std::count(
      blnPrint.begin(), blnPrint.begin() + static_cast<std::ptrdiff_t>(iPrintItem) + 1, true);
  bNoNewPage = ticked <= 1;
}

void rptHX7Main::ShowInViewer(Paper paper) {
  frmPreview viewer(*currProj, document_, paper);
  Connection loaded;
  if (!blnCanPrint) {
    loaded = viewer.Loaded.Connect([&viewer] { DisablePrintInToolbar(viewer); });
  }
  viewer.Show(FormMode::modal);
}

void rptHX7Main::DisablePrintInToolbar(frmPreview& viewer) {
  for (Button* const tool : viewer.Tools()) {
    if (tool->Caption() == "&Print...") tool->SetEnabled(false);
  }
}

void rptHX7Main::DeleteTheControl(std::string_view str) {
  std::erase_if(document_.sections, [str](const PrintSection& part) { return part.name == str; });
}

}  // namespace velmoor
