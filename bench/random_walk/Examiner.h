// What has to hold after every step, looked at where a user sees it: the records of the files, the
// open windows, the amplifier's memory.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "random_walk/Access.h"
#include "random_walk/Literal.h"

namespace velmoor::walk {

// Something that does not hold. `kind` is one word, the same for the same rule:
//   forms      the text and the controller's form of a record disagree
//   places     a text in units that is new has not the resolution's places
//   limits     a value outside its limits
//   window     an open window shows something else than the working file, where nothing is edited
//   saved      the project file is not what was saved
//   marks      a download's marks are not in the project file, though nothing else was unsaved
//   stored     what was accepted is not what the window showed
//   typed      a value differs that nobody named
//   preview    a value differs from what the preview of the change told
//   travel     the travel limits or the kind of axis do not fit a new system
//   whole      a commit that could not be stored changed something, or closed its window
//   asked      a commit that changes nothing asks for an agreement
//   refused    a limit that the window shows is refused
//   again      the same correction is told for an edit that did not cause it
//   undo       undo does not lead back
//   transfer   an undisturbed transfer fails, or a comparison behind a download finds something
//   amplifier  an unmarked row is not what the amplifier holds
//   told       an error of the program's own is told
struct Violation {
  std::string kind;
  std::string text;
};

// The records of a project's file by their name on the wire, such as "PRM81B" or "POST5".
using Records = std::map<std::string, FileRow>;

[[nodiscard]] Records ReadRecords(const std::string& path);
[[nodiscard]] std::string RecordName(const std::string& pn);

// The machine that the records describe.
struct HeldMachine {
  int resolution = 0;
  int system = 0;
  std::string time, units, encoder;
  float measure = 0;

  [[nodiscard]] long double Factor(Kind kind) const { return FactorFor(kind, resolution, time); }
};
[[nodiscard]] HeldMachine MachineIn(const Records& records);

// Rows under edit in each window: parameters' names, or numbers of a table's rows.
using Pending = std::map<std::string, std::set<std::string>, std::less<>>;

class Examiner {
 public:
  // `exempt` are records that the program never sends as the file has them.
  Examiner(Access& access, const campaign::Exempt& exempt) : access_(access), exempt_(exempt) {}

  void Blame(const std::string& kind, const std::string& text) { found.push_back({kind, text}); }

  // ---- what holds always
  // `before` are the records that were looked at last.
  void Forms(const Records& before, const Records& records);
  void Windows(const Records& records, const Pending& pending);
  void Amplifier(const Records& records, campaign::Rows which, const char* when);
  void Saved();
  // Whether the project file holds all that the records hold, marks included.
  [[nodiscard]] bool IsAllSaved(const Records& records) const;
  void TakeAsSaved();
  [[nodiscard]] const Records& SavedRecords() const { return saved_; }

  // ---- what a step may change
  using MayChange = std::function<bool(const std::string& name)>;
  void Unchanged(const Records& before, const Records& after, const MayChange& may,
                 const char* when);
  // The commit of a machine, with the boxes and the preview that the user saw. `shown` is what the
  // machine's window showed for its parameters when the user agreed.
  void MachineChange(const Records& before, const Records& after,
                     const std::map<std::string, std::string>& shown);

  std::vector<Violation> found;

 private:
  void CheckUnits(const FileRow& row, std::size_t field, Kind kind, const HeldMachine& machine);
  void CheckLimits(const FileRow& row, std::size_t field, long low, long high);
  void CheckParameter(const FileRow& row, const HeldMachine& machine);
  void CheckStep(const FileRow& row, const HeldMachine& machine);
  void CheckWindow(const WindowKind& kind, HeadlessForm& form, const Records& records,
                   const std::set<std::string>& pending);
  void CheckMachineWindow(HeadlessForm& form, const Records& records);
  void CheckTravel(const Records& before, const Records& after);
  void CheckPreview(const Records& before, const Records& after);
  [[nodiscard]] bool IsNamed(const std::string& name, std::size_t field,
                             const FileRow& after) const;

  Access& access_;
  const campaign::Exempt& exempt_;
  const Records* before_ = nullptr;  // of Forms, while it runs
  Records saved_;
  std::filesystem::file_time_type savedAt_;
};

}  // namespace velmoor::walk
