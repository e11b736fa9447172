// What is examined after each disturbed transfer.

#include <algorithm>
#include <functional>
#include <iomanip>
#include <iostream>

#include "fault_campaign/Campaign.h"
#include "fault_campaign/Kinds.h"
#include "fault_campaign/Program.h"
#include "project/data/Schema.h"

namespace velmoor::campaign {

void Campaign::Blame(const std::vector<std::string>& wrong, const char* when) {
  if (wrong.empty()) return;
  std::string text = doing_ + ", " + when + ": " + wrong.front();
  if (wrong.size() > 1) text += " and " + std::to_string(wrong.size() - 1) + " more";
  report_.violations.push_back(text);
}

void Campaign::Examine(const FaultKindEntry& kind, const Transfer& transfer, bool finished) {
  const std::size_t blamed = report_.violations.size();
  ExamineSession(kind, finished);
  const std::vector<FileRow> rows = File();
  if (transfer.upload) {
    ExamineUpload(kind, transfer, finished, rows);
  } else {
    Blame(Inconsistencies(Program::Project(), rows), "in the project");
    Blame(Untruths(rows, wiring_, exempt_, Rows::unmarked), "in the amplifier's memory");
  }
  Mend(kind);
  // What is in volatile memory may meet the retry, or be gone.
  const bool losesPower = Random(2) == 0;
  if (losesPower) PowerCycle();
  if (!transfer.upload && losesPower) {
    Blame(Untruths(rows, wiring_, exempt_, Rows::unmarked), "after a loss of power");
  }
  Retry(transfer, finished);
  // One fault is told once; the next ones begin on sound ground.
  if (report_.violations.size() > blamed) Recover();
}

void Campaign::ExamineSession(const FaultKindEntry& kind, bool finished) {
  std::vector<std::string> wrong;
  const frmMain& form = Program::Form();
  if (program_->IsDialogOpen() || gMainForm->Procedure() != nullptr)
    wrong.push_back("a dialog stays");
  if (form.StopProcedure()) wrong.push_back("a stop stays asked for");
  if (form.IsOnline() != wiring_.Port().IsOpen()) {
    wrong.push_back(form.IsOnline() ? "online on a closed port" : "offline on an open port");
  }
  if (kind.ends && !finished && HasHappened(kind) && form.IsOnline()) {
    wrong.push_back("online on a dead line");
  }
  // Where the identity cannot be read, one box tells so and one that nothing was transferred.
  const int told = program_->Said("Cannot go online!") ? 2 : 1;
  if (!finished && program_->user.failures > told) {
    wrong.push_back("told of one failure in several boxes");
  }
  if (!finished && program_->user.failures == 0 && !program_->Said("could not be uploaded")) {
    wrong.push_back("told of no failure");
  }
  for (const std::string& text : program_->unforeseen) wrong.push_back(text);
  program_->unforeseen.clear();
  if (!wrong.empty()) {
    wrong.front() += " (boxes:";
    for (const std::string& text : program_->user.texts) wrong.front() += " [" + text + "]";
    wrong.front() += ")";
  }
  Blame(wrong, "in the session");
}

void Campaign::ExamineUpload(const FaultKindEntry& kind, const Transfer& transfer, bool finished,
                             const std::vector<FileRow>& rows) {
  if (!finished) {
    // Marks may have come: the search writes a parameter, and may have met another one.
    const auto differs = [](const FileRow& was, const FileRow& is) {
      return was.values != is.values || was.shown != is.shown || (was.IsMarked() && !is.IsMarked());
    };
    if (!std::ranges::equal(before_, rows, std::not_fn(differs))) {
      Blame({"a failed upload changed the file"}, "in the project");
    }
    // An upload of everything keeps, as it tells, what it has read until then.
    const bool keeps = std::string_view(transfer.command) == "mnuToolsUploadAll";
    if (!keeps) Blame(Inconsistencies(Program::Project(), rows), "in the project");
    return;
  }
  Blame(Inconsistencies(Program::Project(), rows), "in the project");
  const std::vector<std::string> wrong = Untruths(rows, wiring_, exempt_, Rows::unmarked);
  if (!wrong.empty() && kind.deceives) {
    ++report_.kinds[kind.name].unnoticed;
    report_.unnoticed.push_back(doing_ + ": " + wrong.front());
  } else {
    Blame(wrong, "in what was read");
  }
}

void Campaign::Retry(const Transfer& transfer, bool finished) {
  if (transfer.upload) {
    if (!Carry(transfer)) Blame({"a clean upload fails:" + program_->Words()}, "in the retry");
  }
  if (!Program::Project().WhatIsDirty().empty() && !Carry(TransferOf("mnuToolsDownloadNew"))) {
    Blame({"a clean download fails" + (finished ? std::string(" after one that did not") : "") +
           program_->Words()},
          "in the retry");
  }
  PowerCycle();
  std::vector<FileRow> rows = File();
  Blame(Untruths(rows, wiring_, exempt_, Rows::all), "after the retry");
  // An upload leaves the marks of parameters in the file: the next session offers them once more.
  for (FileRow& row : rows) {
    if (transfer.upload && row.table == schema::Parameters::kTable) row.mark = "0";
  }
  Blame(Inconsistencies(Program::Project(), rows), "after the retry");
}

void Campaign::Recover() {
  Carry(TransferOf("mnuToolsDownloadAll"));
  PowerCycle();
}

void Print(const Report& report, const std::string& title) {
  std::cout << title << ": " << report.faults << " faults in " << std::fixed << std::setprecision(1)
            << report.seconds << " s; " << report.missed
            << " transfers ended before their fault\n\n"
            << std::left << std::setw(34) << "fault" << std::right << std::setw(7) << "count"
            << std::setw(22) << "downloads done/failed" << std::setw(20) << "uploads done/failed"
            << std::setw(11) << "unnoticed" << std::setw(9) << "ms each"
            << "\n";
  for (const auto& [name, tally] : report.kinds) {
    std::cout << std::left << std::setw(34) << name << std::right << std::setw(7) << tally.faults
              << std::setw(15) << tally.downloadsFinished << " / " << std::setw(4)
              << tally.downloadsFailed << std::setw(13) << tally.uploadsFinished << " / "
              << std::setw(4) << tally.uploadsFailed << std::setw(11) << tally.unnoticed
              << std::setw(9) << tally.seconds * 1000 / std::max(tally.faults, 1) << "\n";
  }
  for (const std::string& text : report.unnoticed) std::cout << "unnoticed: " << text << "\n";
  for (const std::string& text : report.violations) std::cout << "VIOLATION: " << text << "\n";
  std::cout << report.violations.size() << " violations\n";
}

}  // namespace velmoor::campaign
