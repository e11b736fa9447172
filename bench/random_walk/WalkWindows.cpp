// What a user does within the windows, and what may come of it.

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "random_walk/Walk.h"

namespace velmoor::walk {

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
    std::string told(kind.word);
    told.append(", cell ").append(cell).append(" is '").append(text).append("' instead of '");
    told.append(then.at(cell)).append(offered ? "'" : "': undo is not offered");
    examiner_.Blame("undo", told);
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
        std::string told = "machine " + pn;
        told.append(" was '").append(text).append("' in the window and is '");
        told.append(record->second.shown[0]).append("' in the file");
        examiner_.Blame("stored", told);
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
      std::string told = word;
      told.append(" ").append(pn).append(" was '").append(text->second);
      told.append("' in the window and is '").append(record->second.shown[0]);
      examiner_.Blame("stored", told.append("' in the file"));
    }
  };
}

void Walk::Cancel(const WindowKind& kind) {
  access_.Find(kind)->Press("cmdCancel");
  if (access_.Find(kind) == nullptr) pending_.erase(std::string(kind.word));
}

}  // namespace velmoor::walk
