#include "random_walk/Walk.h"

#include <algorithm>
#include <utility>

#include "BenchMain.h"

namespace velmoor::walk {

Walk::Walk(const std::string& folder, const std::set<std::string>& ignored)
    : exempt_(NeverSent()), access_(folder), examiner_(access_, exempt_), ignored_(ignored) {
  file_ = ReadRecords(access_.WorkingFile());
  examiner_.TakeAsSaved();
}

const campaign::Exempt& Walk::NeverSent() {
  static const campaign::Exempt kExempt = [] {
    const bench::TemporaryFolder folder("", "random-walk-clean");
    Access access(folder.Path());
    access.Begin(false);
    if (!access.Choose("mnuToolsDownloadAll") || !access.Said("Download All complete!")) {
      throw std::runtime_error("a clean download fails:" + access.BoxesText());
    }
    access.End();
    campaign::Exempt exempt;
    for (const auto& [name, row] : ReadRecords(access.WorkingFile())) {
      if (!campaign::Untruths({row}, access.Line(), {}, campaign::Rows::all).empty()) {
        exempt.insert(name);
      }
    }
    return exempt;
  }();
  return kExempt;
}

bool Walk::IsUnderEdit(std::string_view window) const {
  const auto found = pending_.find(window);
  return found != pending_.end() && !found->second.empty();
}

// ---- one step after the other

void Walk::Run(const Next& next) {
  next_ = next;
  JudgeStep();
  Loop(nullptr);
}

// Within a window that blocks the others the walk goes on until that window is closed.
void Walk::Loop(const WindowKind* within) {
  while (found_.empty() && (within == nullptr || access_.Find(*within) != nullptr)) {
    const std::optional<Step> step = next_(*this);
    if (!step) break;
    Perform(*step);
  }
  if (within == nullptr || access_.Find(*within) == nullptr) return;
  access_.Begin(false);
  access_.Find(*within)->Press("cmdCancel");
  pending_.erase(std::string(within->word));
}

void Walk::Perform(const Step& step) {
  access_.Begin(step.Refuses());
  harmed_ = lineUsed_ = false;
  access_.Disk().broke = false;
  MayChangeNothing(TextOf(step).c_str());
  ++steps_;
  Do(step);
  if (sabotage) sabotage(access_, step);
  JudgeStep();
}

void Walk::MayChangeNothing(const char* when) {
  rule_ = [this, text = std::string(when)](const Records& before, const Records& after) {
    examiner_.Unchanged(
        before, after, [](const std::string&) { return false; }, text.c_str());
  };
}

void Walk::Do(const Step& step) {
  const std::string& verb = step.Verb();
  const auto number = [&step](std::size_t at) { return std::atoi(step.Word(at).c_str()); };
  if (verb != "edit" && verb != "undo") undo_.clear();
  if (verb == "break") return access_.Disk().Break(number(1));
  if (verb == "power") {
    access_.Line().Type("power");
    access_.Line().WaitForRestart();
    lineUsed_ = true;
    return;
  }
  if (verb == "save") return Save();
  if (verb == "reopen") return Reopen(step);
  if (verb == "download") return Transfer(step, false);
  if (verb == "upload") return Transfer(step, true);
  if (verb == "compare") return Compare();
  if (verb == "system") return ChooseInMachine("cmbSystem", step.Word(1));
  if (verb == "encoder") return ChooseInMachine("cmbEncoder", step.Word(1));
  if (verb == "notch") return Notch(step.Word(1));
  if (verb == "frequency") return Frequency(step.Word(1));
  const WindowKind& kind = KindNamed(step.Word(1));
  const WindowKind* const blocking = access_.Blocking();
  if (blocking != nullptr && blocking != &kind) return;
  if (verb == "open") return Open(kind);
  HeadlessForm* const form = access_.Find(kind);
  if (form == nullptr) return;
  if (blocking == nullptr) form->Activate();  // by the click that the act begins with
  if (verb == "edit") return Edit(kind, step.Word(2), number(3), step.Word(4));
  if (verb == "limit") return TypeLimit(kind, step.Word(2), step.Word(3) == "low");
  if (verb == "paste") return Paste(kind, step.Word(2), number(3), step.Word(4));
  if (verb == "undo" || verb == "redo") return UndoEdit(kind, verb == "redo");
  if (verb == "apply") return Accept(kind, "cmdApply");
  if (verb == "ok") return Accept(kind, "cmdOK");
  if (verb == "cancel") return Cancel(kind);
  throw std::logic_error("no step is named " + verb);
}

void Walk::TakeFound() {
  for (Violation& violation : std::exchange(examiner_.found, {})) {
    if (!ignored_.contains(violation.kind)) found_.push_back(std::move(violation));
  }
}

void Walk::JudgeStep() {
  const std::string boxes = access_.BoxesText();
  access_.End();
  Records now = ReadRecords(access_.WorkingFile());
  if (rule_) rule_(file_, now);
  rule_ = nullptr;
  const auto differs = [](const auto& a, const auto& b) {
    return a.second.shown == b.second.shown && a.second.values == b.second.values &&
           a.second.mark == b.second.mark;
  };
  const bool changed = steps_ == 0 || !std::ranges::equal(file_, now, differs);
  if (changed) examiner_.Forms(file_, now);
  if (!held_) examiner_.Windows(now, pending_);
  examiner_.Saved();
  if (synchronous_ && (changed || lineUsed_)) {
    examiner_.Amplifier(now, campaign::Rows::unmarked, "in the amplifier's memory");
  }
  for (const std::string& text : access_.TakeUnforeseen()) examiner_.Blame("told", text);
  const bool harmless = !harmed_ && !access_.Disk().broke;
  if (harmless &&
      (boxes.find("[cls") != std::string::npos || boxes.find("[frm") != std::string::npos ||
       boxes.find("Overflow") != std::string::npos)) {
    examiner_.Blame("told", boxes);
  }
  file_ = std::move(now);
  TakeFound();
}

// ---- the project

// As it is, without what is under edit.
void Walk::Save() {
  access_.Refuse("Do you wish to apply and save it?");
  if (!access_.Choose("mnuFileSave")) return;
  examiner_.TakeAsSaved();
  for (const auto& [name, row] : ReadRecords(access_.WorkingFile())) {
    const FileRow& saved = examiner_.SavedRecords().at(name);
    if (saved.shown == row.shown && saved.values == row.values) continue;
    examiner_.Blame("saved",
                    name + " is '" + row.shown[0] + "' and was saved as '" + saved.shown[0] + "'");
  }
}

void Walk::Reopen(const Step& step) {
  const bool save = step.Word(1) == "save";
  if (access_.Blocking() != nullptr) return;
  if (!save) access_.Refuse("Do you wish to save?");
  access_.NextFile(access_.ProjectFile());
  // The first question is whether to reopen at all.
  if (!access_.Choose("mnuFileOpen") || step.Refuses()) return;
  if (access_.Said(" cannot be opened.")) {
    // By the disk that broke; it is whole again.
    access_.NextFile(access_.ProjectFile());
    (void)access_.Choose("mnuFileOpen");
  }
  pending_.clear();
  held_ = false;
  if (save) return examiner_.TakeAsSaved();
  rule_ = [this](const Records&, const Records& after) {
    examiner_.Unchanged(
        examiner_.SavedRecords(), after, [](const std::string&) { return false; },
        "reopening without saving");
  };
}

// ---- the line

void Walk::PlanFault(const std::string& fault, int exchange) {
  harmed_ = !fault.empty() && fault != "none";
  if (!harmed_) return;
  if (fault == "stop") {
    access_.Line().Port().Before(exchange, [this] { access_.PressStop(); });
  } else if (fault == "unplug") {
    access_.Line().Port().Before(exchange, [this] { access_.Line().Type("unplug"); });
  } else {
    access_.Line().Type("fault " + fault + " count=" + (fault == "silence" ? "0" : "1") +
                        " skip=" + std::to_string(exchange));
  }
}

void Walk::MendLine() {
  access_.Line().Port().Before(-1, {});
  access_.Line().Type("clear");
  access_.Line().Type("plug");
}

void Walk::Transfer(const Step& step, bool upload) {
  const std::string item = step.Word(1);
  const std::string fault = step.Word(upload ? 3 : 2);
  const bool commits = upload && step.Word(2) == "commit" && !step.Refuses();
  if (upload && !commits) access_.Refuse("Commit uploaded data");
  if (access_.Blocking() != nullptr) return;
  const bool allSaved = examiner_.IsAllSaved(file_);
  PlanFault(fault, std::atoi(step.Word(upload ? 4 : 3).c_str()));
  const bool chosen =
      access_.Choose(std::string("mnuTools") + (upload ? "Upload" : "Download") + item);
  MendLine();
  if (!chosen) return;
  lineUsed_ = true;
  const bool done = access_.Said(upload ? "Commit uploaded data" : "complete!");
  const bool idle = step.Refuses() || access_.Said("No new changes have been committed!") ||
                    access_.Said("could not be uploaded") || access_.Said("mechanical system");
  harmed_ = harmed_ || access_.Disk().broke;
  if (!harmed_ && !done && !idle) examiner_.Blame("transfer", "failed:" + access_.BoxesText());
  if (upload && item == "All" && !done) held_ = true;
  if (upload && done && commits) {
    held_ = false;
    rule_ = [](const Records&, const Records&) {};
  }
  if (!done) return;
  if (!upload && allSaved && !harmed_) {
    rule_ = [this, rule = rule_](const Records& before, const Records& after) {
      rule(before, after);
      examiner_.Saved();
      if (!examiner_.IsAllSaved(after)) {
        examiner_.Blame("marks", "what the download cleared is not in the project file");
      }
    };
  }
  // An amplifier without a machine leaves the project's own in force.
  const bool machineless =
      upload && (access_.Said("mechanical system data") || access_.Said("Could not upload"));
  const bool whole = item == "All" && (!upload || commits) && !machineless;
  if (whole) synchronous_ = true;
  if (!upload && synchronous_ && (whole || item == "New")) {
    examiner_.Amplifier(ReadRecords(access_.WorkingFile()), campaign::Rows::all,
                        "behind a download");
  }
}

void Walk::Compare() {
  if (!access_.Choose("mnuToolsCompare")) return;
  lineUsed_ = true;
  const bool anyMarked = std::ranges::any_of(file_, [this](const auto& entry) {
    return entry.second.IsMarked() && !exempt_.contains(entry.first);
  });
  if (synchronous_ && !anyMarked && access_.comparisonShown) {
    examiner_.Blame("transfer", "a comparison shows a difference where nothing is marked");
  }
}

}  // namespace velmoor::walk
