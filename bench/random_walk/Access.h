// All that the walk and its judge reach of the program: the windows' controls, the boxes, the
// records of the files, the amplifier's memory, and faults of line and disk. Whoever moves a
// control or a column mends it here.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fault_campaign/Program.h"
#include "fault_campaign/Truth.h"
#include "fault_campaign/Wiring.h"
#include "platform/Database.h"

namespace velmoor::walk {

using campaign::FileRow;
using headless::HeadlessForm;
using headless::HeadlessGrid;

enum class Look { parameters, machine, table };

struct WindowKind {
  std::string_view word;  // as in a step
  const char* command;    // of the main window
  const char* form;
  const char* caption;  // its beginning, where several windows share a form
  Look look;
  bool modal;
};
inline constexpr std::array<WindowKind, 10> kWindows{{
    {"editor", "mnuToolsEditor", "frmEditor", "", Look::parameters, true},
    {"machine", "mnuToolsMechanicalSystem", "frmMechanicalSystem", "", Look::machine, true},
    {"tuning", "mnuToolsTuning", "frmTuning", "", Look::parameters, true},
    {"flexibleio", "mnuToolsIndexerFlexibleIO", "frmProperties", "Flexible", Look::parameters,
     false},
    {"overtravel", "mnuToolsIndexerOverTravel", "frmProperties", "Over", Look::parameters, false},
    {"homing", "mnuToolsIndexerHoming", "frmProperties", "Homing", Look::parameters, false},
    {"interface", "mnuToolsIndexerInterface", "frmProperties", "Interface", Look::parameters,
     false},
    {"index", "mnuToolsIndexerPosition", "frmPosition", "", Look::table, false},
    {"zone", "mnuToolsIndexerZone", "frmZone", "", Look::table, false},
    {"jog", "mnuToolsIndexerJog", "frmJog", "", Look::table, false},
}};
// Throws std::logic_error for an unknown word.
[[nodiscard]] const WindowKind& KindNamed(std::string_view word);

// The column of a window's grid that holds a row's name, and the one that is edited.
[[nodiscard]] int NameColumn(Look look);
[[nodiscard]] int ValueColumn(Look look);

// A line of the preview of a change of the machine.
struct PreviewLine {
  std::string place, now, text, counts;
};

// Passes on to the real databases; one write to come fails as on a full disk.
class BreakingDatabases final : public Databases {
 public:
  explicit BreakingDatabases(Databases& real) : real_(real) {}
  // The opening number `opening` for writing, from 1, fails; 0: none.
  void Break(int opening) {
    countdown_ = opening;
    broke = false;
  }
  std::unique_ptr<Database> Open(const std::string& path, std::string_view password,
                                 DatabaseAccess access) override;
  std::unique_ptr<DatabaseBuilder> Create(const std::string& path,
                                          std::string_view password) override {
    return real_.Create(path, password);
  }
  std::unique_ptr<DatabaseBuilder> Extend(const std::string& path,
                                          std::string_view password) override {
    return real_.Extend(path, password);
  }
  void Release(const std::string& path) override { real_.Release(path); }

  bool broke = false;

 private:
  Databases& real_;
  int countdown_ = 0;
};

// The limits of a parameter in counts, from the catalogue.
struct CountLimits {
  long low = 0, high = 0;
};

// A program with a new project, and an amplifier as it leaves the factory on its line.
class Access {
 public:
  // `folder` is this object's own. Throws std::runtime_error.
  explicit Access(std::string folder);
  ~Access();
  Access(const Access&) = delete;
  Access& operator=(const Access&) = delete;

  // ---- as the user
  // Null where the window is not open.
  [[nodiscard]] HeadlessForm* Find(const WindowKind& kind) const;
  // The open window that keeps the user from all others; null: none.
  [[nodiscard]] const WindowKind* Blocking() const;
  // A command of the main window. False: it is not offered now.
  bool Choose(const std::string& command);
  // The row of the window's grid that bears the name, or the table's row; 0: none in sight.
  [[nodiscard]] static int RowOf(const WindowKind& kind, HeadlessForm& form,
                                 const std::string& row);
  [[nodiscard]] static std::string TextAt(HeadlessForm& form, int row, int column);
  // All cells that can be edited, as texts by "row column".
  [[nodiscard]] static std::map<std::string, std::string> Cells(const WindowKind& kind,
                                                                HeadlessForm& form);
  [[nodiscard]] static bool CanApply(HeadlessForm& form);
  bool Undo(const WindowKind& kind, bool redo);
  void PutOnClipboard(const std::string& text);
  void NextFile(const std::string& path);

  // ---- what the user is told, since the last Begin
  // Every question is answered by Yes, or by No with `refuses`.
  void Begin(bool refuses);
  // Questions that hold `part` are answered by No in this step.
  void Refuse(const std::string& part);
  // Lets go of windows that were expected and did not come.
  void End();
  [[nodiscard]] const std::vector<std::string>& Boxes() const { return program_->user.texts; }
  [[nodiscard]] bool Said(const std::string& part) const { return program_->Said(part); }
  [[nodiscard]] std::string BoxesText() const;
  std::vector<PreviewLine> preview;
  bool comparisonShown = false;
  // What no user could have met.
  [[nodiscard]] std::vector<std::string> TakeUnforeseen();
  // Runs `script` within the window of that form when it opens.
  void Within(const char* form, headless::HeadlessForms::Script script);

  // ---- files and amplifier
  [[nodiscard]] std::string ProjectFile() const { return folder_ + "/campaign.spj"; }
  [[nodiscard]] std::string WorkingFile() const { return folder_ + "/campaign.tmp"; }
  [[nodiscard]] const std::map<std::string, CountLimits>& Limits() const { return limits_; }
  [[nodiscard]] campaign::Wiring& Line() { return *wiring_; }
  [[nodiscard]] BreakingDatabases& Disk() { return *databases_; }
  void PressStop();

 private:
  void ReadLimits();

  std::string folder_;
  std::unique_ptr<campaign::Wiring> wiring_;
  std::unique_ptr<BreakingDatabases> databases_;
  std::unique_ptr<campaign::Program> program_;
  std::map<std::string, CountLimits> limits_;
};

}  // namespace velmoor::walk
