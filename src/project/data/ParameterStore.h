// The project's parameters: every value once.
//
// Owned by the project, lent to its tools and windows, which are views of it and keep no value of
// their own but edits that were not applied yet. It is read once, when the project opens, and
// written through to the working file: a commit is one transaction, and becomes the store's truth
// only when the file has taken it. Units of the machine are derived from the store.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Database.h"
#include "platform/Event.h"
#include "project/data/Doubt.h"
#include "project/data/MotorLimits.h"
#include "project/data/Parameter.h"
#include "session/Session.h"

namespace velmoor {

// A project's file that no window may show: the reason in words.
class ProjectDataError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What a commit makes of a parameter's mark.
enum class MarkChange { keep, set, clear };

struct ParameterChange {
  std::string controller;
  std::string text;  // empty: as the store shows the value
  MarkChange mark = MarkChange::keep;
  Tool by = Tool::editor;  // of a mark that is set
};
// By name.
using ParameterChanges = std::map<std::string, ParameterChange, std::less<>>;

class ParameterStore {
 public:
  struct Source {
    std::string catalogue;  // path of the catalogue's working copy
    std::string parametersTable;
    std::string nibbleTable;
    std::string workingFile;
    MotorLimits limits{};  // of the project's motor; empty: those of the working copy
  };

  // Reads definitions and values. Throws DatabaseError, or ProjectDataError where the machine's
  // units or a value cannot be read.
  void Open(const Source& source, const ComboLists& lists);
  // The project is for another motor: its limits hold from now on, and values are judged anew.
  void TakeLimits(const MotorLimits& limits);
  // The project goes on in another working file of the same content.
  void SetWorkingFile(const std::string& path) { source_.workingFile = path; }
  [[nodiscard]] const std::string& WorkingFile() const { return source_.workingFile; }

  // ---- reading; in the catalogue's order, which is ascending by name
  [[nodiscard]] int Count() const { return static_cast<int>(parameters_.size()); }
  [[nodiscard]] const Parameter& At(int index) const;
  // Null where the catalogue has no such parameter.
  [[nodiscard]] const Parameter* Find(std::string_view strPn) const;
  // The same for a parameter that must be there. Throws ProjectDataError.
  [[nodiscard]] const Parameter& Get(std::string_view strPn) const;
  [[nodiscard]] const Units& PresentUnits() const { return units_; }
  // Parameters that are marked by the tool and can be sent.
  [[nodiscard]] bool IsMarkedBy(Tool tool) const;

  // ---- committing

  // Takes the changes: the file first, then the store. A change of units carries the shown texts of
  // all values along. Throws DatabaseError; nothing is changed then.
  void Commit(const ParameterChanges& changes);
  // The two halves of a commit that is part of a greater transaction: `database` is the working
  // file, and Take follows its Commit.
  void Write(Database& database, const ParameterChanges& completed) const;
  void Take(const ParameterChanges& completed);
  // The same, and whoever has typed those has answered for them.
  void TakeTyped(const ParameterChanges& completed, const ParameterChanges& typed);
  // With the texts of all values whose text changes, by themselves or by a change of units.
  [[nodiscard]] ParameterChanges Completed(ParameterChanges changes) const;
  // The units after these changes. Throws ProjectDataError where they cannot be read.
  [[nodiscard]] Units UnitsAfter(const ParameterChanges& changes) const;

  // ---- marks
  // Marks the parameters for `by`, those alone that are sent at all and have a value; in the file
  // too. Throws DatabaseError.
  void Mark(const std::vector<std::string>& names, Tool by);
  // The amplifier has acknowledged `sent`: clears the mark, unless the value is another by now.
  // `records` is the parameters' table of `database`; the clearing is committed at once.
  void Acknowledge(Database& database, RowSet& records, const std::string& strPn,
                   const std::string& sent);
  // A line with a value for it is about to go out: what the amplifier holds is not known until it
  // is acknowledged.
  void AboutToSend(const std::string& strPn);
  // The connected card does not have it: it keeps its mark and waits for another card.
  void PassOver(const std::string& strPn);

  // ---- doubts; by name
  [[nodiscard]] const std::map<std::string, Doubt, std::less<>>& Doubts() const { return doubts_; }
  // Settles the parameter's doubt, in the file too. A shown text that means no value cannot be
  // kept. Throws DatabaseError.
  void Settle(const std::string& strPn, Keep keep);

  // ---- an upload, held apart until the user commits or refuses it

  // A value as the amplifier gave it, which is noted as seen there. Throws NumberError for what is
  // no value of that form.
  void Stage(const std::string& strPn, const std::string& answer);
  void DropStaged(std::string_view strPn) { staged_.erase(std::string(strPn)); }
  void DropAllStaged() { staged_.clear(); }
  // By name, in the controller's form.
  [[nodiscard]] const std::map<std::string, std::string, std::less<>>& Staged() const {
    return staged_;
  }
  [[nodiscard]] ParameterChanges StagedChanges() const;

  // Rises with every change of a value or a unit.
  [[nodiscard]] int Revision() const { return revision_; }
  Event<> Changed;  // values, marks or units

 private:
  void ReadDefinitions(const ComboLists& lists);
  void SetLimits(const MotorLimits& limits);
  void ReadRecords();
  void ReadRecord(Parameter& parameter, RowSet& records) const;
  void ShowValues();
  void JudgeText(const Parameter& parameter);
  void JudgeValue(const Parameter& parameter);
  [[nodiscard]] Parameter* FindOwn(std::string_view strPn);

  Source source_;
  std::vector<NibbleDefinition> nibbles_;
  std::vector<Parameter> parameters_;
  std::map<std::string, std::size_t, std::less<>> places_;
  std::map<std::string, std::string, std::less<>> staged_;
  std::map<std::string, Doubt, std::less<>> doubts_;
  Units units_;
  int revision_ = 0;
};

}  // namespace velmoor
