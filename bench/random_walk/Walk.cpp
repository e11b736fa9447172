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
  if (verb == "reopen") return Reopen(step.Word(1) == "save");
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

// ---- windows

void Walk::Open(const WindowKind& kind) {
  if (access_.Find(kind) != nullptr) {
    (void)access_.Choose(kind.command);
    return;
  }
  if (!kind.modal) {
    (void)access_.Choose(kind.command);
    return;
  }
  access_.Within(kind.form, [this, &kind](HeadlessForm& form) {
    if (kind.look == Look::machine) machineAtRest_ = Access::Cells(kind, form);
    JudgeStep();
    Loop(&kind);
  });
  (void)access_.Choose(kind.command);
  MayChangeNothing("leaving the window");
}

void Walk::Edited(const WindowKind& kind, const std::string& row,
                  const std::map<std::string, std::string>& before) {
  HeadlessForm* const form = access_.Find(kind);
  if (form == nullptr || Access::Cells(kind, *form) == before) return;
  pending_[std::string(kind.word)].insert(row);
  if (row == "Pn80C" || row == "Pn80D") {
    if (kind.word == "flexibleio") pending_["overtravel"].insert(row);
    if (kind.word == "overtravel") pending_["flexibleio"].insert(row);
  }
  if (undoWindow_ != kind.word) undo_.clear();
  undoWindow_ = kind.word;
  undo_.push_back(before);
}

void Walk::Edit(const WindowKind& kind, const std::string& row, int column,
                const std::string& text) {
  HeadlessForm& form = *access_.Find(kind);
  const int at = Access::RowOf(kind, form, row);
  if (at == 0) return;
  const auto before = Access::Cells(kind, form);
  (void)form.EditCell("vsFG", at, column, text);
  Edited(kind, row, before);
  if (kind.look != Look::machine) return;
  std::string corrected;
  for (const std::string& box : access_.Boxes()) {
    if (box.find("have been corrected") != std::string::npos) corrected = box;
  }
  const bool caused = row == "Pn82D" || row == "Pn82E.1" || row == "Pn82E.0";
  if (!corrected.empty() && corrected == corrected_ && !caused) examiner_.Blame("again", corrected);
  corrected_ = corrected;
}

// The limit as the tip tells it has to be taken.
void Walk::TypeLimit(const WindowKind& kind, const std::string& row, bool low) {
  HeadlessForm& form = *access_.Find(kind);
  const int at = Access::RowOf(kind, form, row);
  if (at == 0) return;
  const std::string tip = form.grid("vsFG").TipAt(at, ValueColumn(kind.look));
  const std::string words = low ? "Minimum value is " : "Maximum value is ";
  const std::size_t found = tip.find(words);
  if (found == std::string::npos) return;
  const std::string limit =
      tip.substr(found + words.size(), tip.find_first_of(";\n", found) - found - words.size());
  const auto before = Access::Cells(kind, form);
  (void)form.EditCell("vsFG", at, ValueColumn(kind.look), limit);
  // N1, N2, the resolution and the measure are judged with the rest of the machine too.
  const bool alone = kind.look != Look::machine || KindOf(row) != Kind::plain;
  if (alone && (access_.Said("out of the allowable range") || access_.Said("out of range"))) {
    examiner_.Blame("refused", std::string(kind.word) + " " + row + " shows the limit '" + limit +
                                   "' and refuses it:" + access_.BoxesText());
  }
  Edited(kind, row, before);
}

void Walk::Paste(const WindowKind& kind, const std::string& row, int column,
                 const std::string& text) {
  HeadlessForm& form = *access_.Find(kind);
  const int at = Access::RowOf(kind, form, row);
  if (at == 0 || !form.grid("vsFG").GoTo(at, column)) return;
  const auto before = Access::Cells(kind, form);
  access_.PutOnClipboard(text);
  if (!access_.Choose("mnuEditPaste")) return;
  // A block reaches as far as its lines do.
  const auto after = Access::Cells(kind, form);
  for (const auto& [cell, shown] : after) {
    if (before.at(cell) == shown) continue;
    pending_[std::string(kind.word)].insert(cell.substr(0, cell.find(' ')));
  }
}

void Walk::ChooseInMachine(const std::string& box, const std::string& item) {
  const WindowKind& kind = KindNamed("machine");
  HeadlessForm* const form = access_.Find(kind);
  if (form == nullptr) return;
  const auto before = Access::Cells(kind, *form);
  if (box == "cmbEncoder") form->Press("cmdEncoder");
  form->Select(box, item);
  Edited(kind, box, before);
}

void Walk::Notch(const std::string& state) {
  const WindowKind& kind = KindNamed("tuning");
  HeadlessForm* const form = access_.Find(kind);
  if (form == nullptr) return;
  const auto before = Access::Cells(kind, *form);
  form->Check("chkNotchFilter", state == "on");
  Edited(kind, "Pn408", before);
}

void Walk::Frequency(const std::string& text) {
  const WindowKind& kind = KindNamed("tuning");
  HeadlessForm* const form = access_.Find(kind);
  if (form == nullptr || !form->textBox("txtNotchFilterFrequency").Enabled()) return;
  const auto before = Access::Cells(kind, *form);
  form->Type("txtNotchFilterFrequency", text);
  (void)form->Leave("txtNotchFilterFrequency");
  Edited(kind, "Pn409", before);
}

void Walk::UndoEdit(const WindowKind& kind, bool redo) {
  if (kind.look == Look::machine) return;
  const bool expected = !redo && undoWindow_ == kind.word && !undo_.empty();
  const bool offered = access_.Undo(kind, redo);
  if (!expected) return undo_.clear();
  HeadlessForm* const form = access_.Find(kind);
  const auto now = Access::Cells(kind, *form);
  const auto& then = undo_.back();
  for (const auto& [cell, text] : now) {
    if (then.at(cell) == text) continue;
    examiner_.Blame("undo", std::string(kind.word) + ", cell " + cell + " is '" + text +
                                "' instead of '" + then.at(cell) + "'" +
                                (offered ? "" : ": undo is not offered"));
    break;
  }
  undo_.pop_back();
}

// ---- leaving a window

void Walk::Accept(const WindowKind& kind, const std::string& button) {
  HeadlessForm& form = *access_.Find(kind);
  if (button == "cmdApply" && !Access::CanApply(form)) return;
  const auto cells = Access::Cells(kind, form);
  std::map<std::string, std::string> shown;
  const GridSource& source = *form.grid("vsFG").Source();
  for (int row = 1; row < source.Rows() && kind.look != Look::table; ++row) {
    shown[source.Text(row, NameColumn(kind.look))] = source.Text(row, ValueColumn(kind.look));
  }
  form.Press(button);
  HeadlessForm* const open = access_.Find(kind);
  const bool accepted = button == "cmdOK" ? open == nullptr : !Access::CanApply(*open);
  const bool told = access_.Said("has been changed!") || access_.Said("have been changed!");
  if (kind.look == Look::machine && told && cells == machineAtRest_) {
    examiner_.Blame("asked", "nothing differs:" + access_.BoxesText());
  }
  if (access_.Disk().broke) {
    rule_ = [this](const Records& before, const Records& after) {
      const std::size_t blamed = examiner_.found.size();
      examiner_.Unchanged(
          before, after, [](const std::string&) { return false; }, "a failed commit");
      for (std::size_t i = blamed; i < examiner_.found.size(); ++i)
        examiner_.found[i].kind = "whole";
    };
    if (accepted) {
      examiner_.Blame("whole",
                      std::string(kind.word) +
                          ": what could not be stored counts as done:" + access_.BoxesText());
    }
  }
  if (!accepted) return;
  if (held_) rule_ = nullptr;
  if (!access_.Disk().broke && !held_) Accepted(kind, shown);
  if (kind.look == Look::machine && open != nullptr) machineAtRest_ = Access::Cells(kind, *open);
}

void Walk::Accepted(const WindowKind& kind, const std::map<std::string, std::string>& shown) {
  const std::string word(kind.word);
  const std::set<std::string> rows = std::exchange(pending_[word], {});
  if (kind.word == "flexibleio" || kind.word == "overtravel") {
    for (const char* const sister : {"flexibleio", "overtravel"}) {
      pending_[sister].erase("Pn80C");
      pending_[sister].erase("Pn80D");
    }
  }
  if (kind.look == Look::machine) {
    const bool reset = access_.Said("would invalidate existing");
    rule_ = [this, shown, reset](const Records& before, const Records& after) {
      examiner_.MachineChange(before, after, shown);
      for (const auto& [pn, text] : shown) {
        const auto record = after.find(RecordName(pn));
        if (record == after.end() || record->second.shown[0] == text) continue;
        if (reset && KindOf(pn) != Kind::plain) continue;
        examiner_.Blame("stored", "machine " + pn + " was '" + text + "' in the window and is '" +
                                      record->second.shown[0] + "' in the file");
      }
    };
    return;
  }
  rule_ = [this, shown, rows, word](const Records& before, const Records& after) {
    const char* const table = word == "index"  ? "POST"
                              : word == "zone" ? "ZONENT"
                              : word == "jog"  ? "JSPDT"
                                               : nullptr;
    const auto may = [&rows, table](const std::string& name) {
      return table != nullptr ? name.starts_with(table) : rows.contains("Pn" + name.substr(3));
    };
    examiner_.Unchanged(before, after, may, (word + "'s acceptance").c_str());
    for (const std::string& pn : rows) {
      const auto record = after.find(RecordName(table != nullptr ? "Pn" : pn));
      const auto text = shown.find(pn);
      if (record == after.end() || text == shown.end()) continue;
      if (record->second.shown[0] == text->second) continue;
      examiner_.Blame("stored", word + " " + pn + " was '" + text->second +
                                    "' in the window and is '" + record->second.shown[0] +
                                    "' in the file");
    }
  };
}

void Walk::Cancel(const WindowKind& kind) {
  access_.Find(kind)->Press("cmdCancel");
  if (access_.Find(kind) == nullptr) pending_.erase(std::string(kind.word));
}

// ---- the project

void Walk::Save() {
  if (!access_.Choose("mnuFileSave")) return;
  examiner_.TakeAsSaved();
  for (const auto& [name, row] : ReadRecords(access_.WorkingFile())) {
    const FileRow& saved = examiner_.SavedRecords().at(name);
    if (saved.shown == row.shown && saved.values == row.values) continue;
    examiner_.Blame("saved",
                    name + " is '" + row.shown[0] + "' and was saved as '" + saved.shown[0] + "'");
  }
}

void Walk::Reopen(bool save) {
  if (access_.Blocking() != nullptr) return;
  if (!save) access_.Refuse("Do you wish to save?");
  access_.NextFile(access_.ProjectFile());
  if (!access_.Choose("mnuFileOpen")) return;
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
  if (!upload && allSaved) {
    rule_ = [this, rule = rule_](const Records& before, const Records& after) {
      rule(before, after);
      examiner_.Saved();
      if (!examiner_.IsAllSaved(after)) {
        examiner_.Blame("marks", "what the download cleared is not in the project file");
      }
    };
  }
  // An amplifier without a machine leaves the project's own in force.
  const bool machineless = upload && access_.Said("mechanical system data");
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
