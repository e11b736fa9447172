// The works of a line on the axes that are chosen: the question before, and the results behind.

#include "app/LineWorkplace.h"
#include "app/frmCompare.h"
#include "app/frmLineSet.h"
#include "app/frmResults.h"
#include "platform/Events.h"
#include "platform/FileDialogs.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/SetParameters.h"
#include "reports/PdfFile.h"
#include "reports/rptHX7Main.h"

namespace velmoor {
namespace {

std::string Capital(const std::string& word) {
  return word.empty() ? word : UpperCase(word.substr(0, 1)) + word.substr(1);
}

// Everything of the project.
bool WriteWholeReport(clsHX7Project& project, const std::string& path) {
  PrintItems all{};
  all.fill(true);
  rptHX7Main report;
  report.SetProject(project);
  report.SetPrintReportItems(all);
  report.SetPrintCount(static_cast<std::int16_t>(all.size()));
  return WritePdf(project, report.Run(), Paper::a4, path);
}

void TellInBox(const std::vector<std::string>& faults) {
  std::string words;
  for (const std::string& fault : faults) words += (words.empty() ? "" : "\r") + fault;
  if (!words.empty()) ShowExclamation(words);
}

}  // namespace

// ---- the run

void LineWorkplace::Act(LineAction action) {
  hooks_.command("LineWorkplace.Act: ", [this, action] {
    switch (action) {
      case LineAction::info:
        Identify(true);
        break;
      case LineAction::compare:
        Compare();
        break;
      case LineAction::downloadNew:
      case LineAction::downloadAll:
        Download(action == LineAction::downloadNew);
        break;
      case LineAction::upload:
        Upload();
        break;
      case LineAction::resetAlarm:
        ResetAlarms();
        break;
      case LineAction::set:
        SetParameters();
        break;
      case LineAction::copy:
        Copy();
        break;
      case LineAction::report:
        Report();
        break;
    }
    return true;
  });
}

std::string LineWorkplace::ChosenWords() const {
  const std::vector<LineAxis> chosen = states_.Chosen();
  std::string list;
  for (const LineAxis& axis : chosen) list += (list.empty() ? "" : ", ") + axis.address;
  return (chosen.size() == 1 ? "axis " : "axes ") + list;
}

LineTable LineWorkplace::Run(const std::string& caption,
                             const std::function<LineTable(LineRun& run)>& work) {
  return RunOn(caption, states_.Chosen(), work);
}

LineTable LineWorkplace::RunOn(const std::string& caption, const std::vector<LineAxis>& axes,
                               const std::function<LineTable(LineRun& run)>& work) {
  Rest();
  hooks_.leaveLine();
  LineTable table = runner_.Run(caption, *line_, axes, com_, work);
  hooks_.followDevice();
  states_.LookAgain();
  return table;
}

// Each axis with its result, and what was told of a failure.
void LineWorkplace::ShowResults(const std::string& caption, const LineTable& table) {
  page_.Refresh();
  const std::string told = runner_.ToldOf({});
  if (table.rows.empty()) {
    return ShowExclamation(told.empty() ? caption + " was not done." : told);
  }
  std::vector<CsvRow> rows = RowsOf(table);
  for (std::string& heading : rows.front()) heading = Capital(heading);
  rows.front().emplace_back("What Was Told");
  std::vector<Tone> tones;
  std::size_t done = 0;
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    const auto& [axis, result] = table.rows[i];
    rows[i + 1].push_back(runner_.ToldOf(axis.address));
    const bool differs = result.word == "different";
    tones.push_back(!result.done ? Tone::alarm : differs ? Tone::busy : Tone::good);
    if (result.done) ++done;
  }
  std::vector<int> widths{6, 20, 14};
  widths.resize(rows.front().size() - 1, 14);
  widths.push_back(60);
  (void)frmResults({.caption = caption + ": Results",
                    .summary = NumberText(done) + " of " + NumberText(table.rows.size()) +
                               (table.rows.size() == 1 ? " axis was done." : " axes were done.") +
                               (told.empty() ? "" : "  " + told),
                    .rows = std::move(rows),
                    .widths = std::move(widths),
                    .tones = std::move(tones),
                    .tonedColumn = 2})
      .Show(FormMode::modal);
}

// ---- on the line

void LineWorkplace::Identify(bool tells) {
  const LineTable table =
      tells ? Run("Identify", ReadLineInfo) : RunOn("Identify", line_->axes, ReadLineInfo);
  states_.NoteInfo(table);
  if (tells || table.rows.empty()) return ShowResults("Identify", table);
  page_.Refresh();
}

void LineWorkplace::Compare() {
  const LineTable table = Run("Compare the Line", CompareLine);
  states_.NoteCompared(table);
  ShowResults("Compare the Line", table);
}

void LineWorkplace::Download(bool onlyNew) {
  BoxTick verify{"&Read back what is sent"};
  if (!AskOkCancel((onlyNew ? "What is marked in each project" : "All of each project") +
                       std::string(" will be downloaded to its axis: ") + ChosenWords() +
                       ".\rDo you wish to proceed?",
                   verify)) {
    return;
  }
  const LineDownload choice{.onlyNew = onlyNew, .verify = verify.on};
  const std::string caption = onlyNew ? "Download New" : "Download All";
  const LineTable table =
      Run(caption, [&choice](LineRun& run) { return DownloadLine(run, choice); });
  states_.NoteMoved(table, !onlyNew);
  ShowResults(caption, table);
}

void LineWorkplace::Upload() {
  if (!AskExclamationYesNo("All data of each project will be overwritten with that of its axis, "
                           "and saved: " +
                           ChosenWords() + ".\rDo you wish to continue?")) {
    return;
  }
  const LineTable table = Run("Upload", UploadLine);
  states_.NoteMoved(table, true);
  ShowResults("Upload", table);
}

void LineWorkplace::ResetAlarms() {
  const LineTable table = Run("Reset Alarm", ResetLineAlarms);
  ShowResults("Reset Alarm", table);
}

// ---- projects

void LineWorkplace::SetParameters() {
  frmLineSet dialog(ChosenWords());
  if (!dialog.Ask()) return;
  const LineTable table = Run("Set Parameters", [&dialog](LineRun& run) {
    return SetOnLine(run, [&dialog](clsHX7Project& project) {
      const std::vector<std::string> faults = velmoor::SetParameters(project, dialog.Assignments());
      TellInBox(faults);
      return faults.empty();
    });
  });
  states_.NoteChanged(table);
  ShowResults("Set Parameters", table);
}

// From the axis of the current row.
void LineWorkplace::Copy() {
  const LineAxis from = states_.Axes().at(page_.Current()).axis;
  LineCopy copy{from, states_.Chosen()};
  std::erase_if(copy.to, [&from](const LineAxis& axis) { return axis.address == from.address; });
  std::vector<PartComparison> changes;
  {
    const BusyPointer busy;
    for (const LineAxis& axis : copy.to) {
      for (PartComparison& part : CompareProjects(axis.project, from.project)) {
        part.part = "Axis " + axis.address + ": " + part.part;
        for (ProjectDifference& value : part.differences) value.part = part.part;
        if (part.counts) changes.push_back(std::move(part));
      }
    }
  }
  if (!Differs(changes)) {
    return ShowInformation("The chosen axes have the set-up of axis " + from.address + " already.");
  }
  if (!frmCompare(
           changes,
           {"Copy the Set-Up of Axis " + from.address + " " + from.name, "Now", "After the Copy"},
           {.agree = "Co&py"})
           .Ask()) {
    return;
  }
  const LineTable table = RunOn("Copy Set-Up", copy.to,
                                [&copy](LineRun& run) { return CopyOnLine(run, copy, TellInBox); });
  states_.NoteChanged(table);
  ShowResults("Copy Set-Up", table);
}

void LineWorkplace::Report() {
  const auto path = world().dialogs->SaveFile({.title = "Reports: Choose the First One's Place",
                                               .filter = "PDF File (*.pdf)|*.pdf",
                                               .defaultSuffix = "pdf",
                                               .initialDirectory = GetFileDirectory(path_),
                                               .initialName = "axis0.pdf"},
                                              false);
  if (!path) return;
  const std::string folder = GetFileDirectory(*path);
  if (!AskOkCancel("A report of each project is written into\r" + folder +
                   "\ras axis0.pdf and so "
                   "on, over those that are there.\rDo you wish to proceed?")) {
    return;
  }
  const LineTable table =
      Run("Report", [&folder](LineRun& run) { return ReportLine(run, folder, WriteWholeReport); });
  ShowResults("Report", table);
}

}  // namespace velmoor
