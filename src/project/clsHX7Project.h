// The root object of a project: one file, the working copy beside it on which all tools work, and
// the tools themselves.
//
// While a project is open nothing touches its file until Save copies the working file over it. The
// object owns its tools and lives until the next project replaces it; with it goes the working
// file.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "mechanics/clsHX7MechanicalSystem.h"
#include "online/clsHX7InertiaRatio.h"
#include "online/clsHX7Monitoring.h"
#include "online/clsHX7ServoJog.h"
#include "online/clsHX7Terminal.h"
#include "platform/Event.h"
#include "platform/Files.h"
#include "project/ProjectPlan.h"
#include "project/data/ProjectFormat.h"
#include "session/Project.h"
#include "tables/clsHX7Jog.h"
#include "tables/clsHX7Position.h"
#include "tables/clsHX7Zone.h"
#include "tools/clsHX7Editor.h"
#include "tools/clsHX7FlexibleIO.h"
#include "tools/clsHX7Homing.h"
#include "tools/clsHX7Interface.h"
#include "tools/clsHX7OverTravel.h"
#include "tools/clsHX7Tuning.h"

namespace velmoor {

struct PartComparison;

// When the amplifier and the project were last brought to hold the same of a tool.
struct LastTransfer {
  bool sent = true;    // to the amplifier; else read from it
  std::string moment;  // "2026-03-01 14:05:09"
};

// What became of the restart that ends a download.
enum class RestartOutcome : std::uint8_t { none, sent, refused, unknown };

class clsHX7Project final : public Project {
 public:
  // Takes the catalogue's path and table names from the session.
  clsHX7Project();
  // Releases the tools and deletes the working file.
  ~clsHX7Project() override;

  // ---- the file

  // Opens `strFileName`, whose title is `strFileTitle`, on a fresh working copy in
  // WorkingDirectory, which must be set. False puts the reason into `strError`; the project then
  // holds no data. A file of a newer format than this program's is refused, or opened for reading
  // alone.
  bool OpenProject(const std::string& strFileName, const std::string& strFileTitle,
                   std::string& strError, NewerProject newer = NewerProject::refuse);
  // Before OpenProject: the working copy takes the contents of that file, which is work that was
  // not saved; the project needs saving then.
  void TakeUnsaved(const std::string& kept) { recovered_ = kept; }
  // Before OpenProject: whoever opens settles what becomes of such work, and the user is not told.
  void LeaveUnsavedToCaller() { tellsOfUnsaved_ = false; }
  // Where the opening has kept work that a killed program had not saved; empty: there was none.
  [[nodiscard]] const std::string& KeptWork() const { return keptWork_; }
  // Tells the user of it.
  void TellOfKeptWork() const;
  // Deletes the working file and lets go of its lock; nothing but the destructor may follow. A
  // folder that became read-only keeps the file.
  void RemoveWorkingFile();
  // What a save would replace that this project does not know of, in words for a question: another
  // program has changed the file since, or it has another name. Empty: nothing.
  [[nodiscard]] std::string SaveConcern() const;
  // Copies the working file over the project file, durably, and clears the need of saving. Throws
  // FileError, also where the project is open for reading alone; nothing is changed then.
  void Save();
  // Throws FileError where the project is open for reading alone.
  void RefuseSaving() const;
  // Goes on under another name; the need of saving stays as it was. Throws FileError; the project
  // then goes on under the old name.
  void SaveAs(const std::string& strFile);
  [[nodiscard]] bool BackupExists() const;
  void Revert() {}  // carries no behaviour
  void Trash() {}   // carries no behaviour

  [[nodiscard]] const std::string& FileName() const { return sFileName_; }
  [[nodiscard]] const std::string& FileTitle() const { return sFileTitle_; }
  // The title without its last four characters.
  [[nodiscard]] std::string Title() const { return DropRight(sFileTitle_, 4); }
  [[nodiscard]] const std::string& WorkingDirectory() const { return sWorkingDirectory_; }
  void SetWorkingDirectory(const std::string& directory) { sWorkingDirectory_ = directory; }
  [[nodiscard]] const std::string& ProjectDatabasePath() const { return strProjectDatabasePath_; }
  [[nodiscard]] bool IsOpen() const { return blnOpen_; }
  // The file is of a newer format than this program's: it was refused, or is open for reading
  // alone. Nothing of it is changed, saved or downloaded then; whatever tries tells the user.
  [[nodiscard]] bool IsNewer() const { return isNewer_; }
  [[nodiscard]] bool IsReadOnly() const { return blnOpen_ && isNewer_; }

  // ---- the motor that the project is for

  // Its rated power in watts, as decimal text; empty: not known.
  [[nodiscard]] const std::string& MotorSize() const { return motorSize_; }
  // Takes it into the project, which needs saving then; its limits hold from now on. Throws
  // DatabaseError.
  void SetMotorSize(const std::string& watts);
  // The project goes to a motor of that size: where none is known it is kept with the marks,
  // whatever else is unsaved. Throws DatabaseError.
  void NoteMotorSize(const std::string& watts);
  // Judges values by the limits of another motor, for as long as the project is open. Throws
  // DatabaseError.
  void UseLimitsOf(const std::string& watts);

  // ---- flags
  // A tool holds changes that the hardware does not have.
  [[nodiscard]] bool IsDirty() { return !WhatIsDirty().empty(); }
  // The working file differs from the project's file in more than marks.
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  void SetNeedsSaving(bool needed) { blnNeedsSaving_ = needed; }
  // The tools with changes that the hardware does not have, "All parameters, Jog table"; empty:
  // none.
  [[nodiscard]] std::string WhatIsDirty();
  // The parameter is one that the tool shows.
  [[nodiscard]] bool Shows(Tool tool, const std::string& strPn);
  // Values and rows of the tool that are marked to be sent.
  [[nodiscard]] int MarkedOf(Tool tool);
  // The tool's values are those of a new project. Throws DatabaseError where the template cannot be
  // read.
  [[nodiscard]] bool IsAsNew(Tool tool);
  // Nothing: not known.
  [[nodiscard]] std::optional<LastTransfer> TransferOf(Tool tool) const;
  // Marks everything that a download of everything sends, in the working file.
  void MarkEverything();
  // What the amplifier does not hold though it said so.
  struct HeldOtherwise {
    std::vector<std::string> parameters;    // "Pn81D"
    std::map<Tool, std::vector<int>> rows;  // of the tables, from 1
  };
  // Marks it, in the project's file too.
  void MarkHeldOtherwise(const HeldOtherwise& what);
  // The amplifier has lost those parts: marks them, in the project's file too.
  void MarkLost(std::span<const Tool> parts);

  // ---- doubts: text against what would go out, values outside of their limits

  // The tables', then those of the parameters.
  [[nodiscard]] std::vector<Doubt> Doubts() const;
  // Settles each so, in the working file too; those that are gone are passed over. Throws
  // DatabaseError.
  void Settle(const std::vector<Doubt>& doubts, Keep keep);

  // ---- transfers; a download is refused, and the user told, while a value is in doubt

  // Sends what is marked, in a fixed order, and stores it; restarts the hardware when a parameter
  // went out. False at the first failure: what ran is clean, the rest stays marked.
  bool Download();
  // Sends the tables, every parameter and the machine, and restarts the hardware.
  bool DownloadAll();
  // The whole of the tools named, tables before parameters, whatever their marks; restarts the
  // hardware when a parameter went out.
  bool DownloadParts(const std::vector<Tool>& parts);
  // Of the latest of those three. Sent: acknowledged, and the amplifier is deaf for a while.
  // Asked in a download between the writing of something and what makes it last: a table's store,
  // the restart, a change of the rigidity. False ends the download as a failed one. None: no check.
  void SetWrittenCheck(std::function<bool()> check) { writtenCheck_ = std::move(check); }
  [[nodiscard]] RestartOutcome LatestRestart() const { return latestRestart_; }
  // Marks everything where a write since the last look may have reached another row or parameter
  // than it named: the amplifier may hold other values than the project then, anywhere.
  void MarkAfterStrayWrite();
  // Brings the marks in the project's file to what is known of the amplifier, whatever else is
  // unsaved: a mark there says that the amplifier may hold another value than that file. Throws
  // FileError and DatabaseError; the file is the old one then.
  void SaveMarks();
  // How many rows a transfer of the tool announces.
  [[nodiscard]] int RowsOf(Tool part);
  // The values that a download of the part sends: a row of a table has several.
  [[nodiscard]] int ValuesOf(Tool part, bool all);
  // One stage, with the store of the table behind it.
  bool DownloadTable(Tool table, bool blnOverRide);
  // Sum of the marked records that Download New would send.
  [[nodiscard]] std::int16_t GetNumberOfNewDownloads() const;

  // ---- uploads, held apart from the project until a commit

  // Forgets what an earlier upload has left.
  void BeginUpload();
  // Reads one tool's rows. False: stopped or failed.
  [[nodiscard]] bool UploadPart(Tool part);
  // Begins, and reads the tools named. False: stopped or failed; nothing is held apart then.
  [[nodiscard]] bool UploadParts(const std::vector<Tool>& parts);
  [[nodiscard]] bool HoldsUpload() const;
  void DropUpload();
  // Takes all that was read into the project, the whole or nothing: shown in the units of the
  // machine that was read, and clean. What was not read keeps its numbers. False: nothing was
  // stored, of which the user was told.
  bool CommitUpload();
  // Where what was read differs from the project, in what the amplifier takes.
  [[nodiscard]] std::vector<PartComparison> CompareWithUpload() const;

  // ---- units
  [[nodiscard]] const Units& PresentUnits() const { return parameters_.PresentUnits(); }
  [[nodiscard]] std::int16_t Resolution() const override { return PresentUnits().resolution; }
  [[nodiscard]] std::string DistanceUnits() const override { return PresentUnits().distance; }
  [[nodiscard]] std::string SpeedUnits() const override {
    return PresentUnits().Word(UnitKind::speed);
  }
  [[nodiscard]] std::string AccelerationUnits() const override {
    return PresentUnits().Word(UnitKind::acceleration);
  }
  [[nodiscard]] std::string TimeUnits() const override { return PresentUnits().time; }
  [[nodiscard]] double ConversionForDistance() const override { return PresentUnits().factors[0]; }
  [[nodiscard]] double ConversionForSpeed() const override { return PresentUnits().factors[1]; }
  [[nodiscard]] double ConversionForAcceleration() const override {
    return PresentUnits().factors[2];
  }
  [[nodiscard]] double ConversionForTime() const override { return PresentUnits().factors[3]; }
  [[nodiscard]] MachineConsequences Consequences(const MachineChange& change) const override;
  void CommitMachine(const MachineChange& change) override;
  // What that change makes of everything; nothing is changed.
  [[nodiscard]] ProjectPlan PlanMachine(const MachineChange& change) const;
  // Takes what somebody has typed and answered for, the whole or nothing; edits that windows hold
  // of the tables are dropped. Throws DatabaseError; nothing is changed then.
  void CommitTyped(const ProjectPlan& plan);
  // Counts of the speed command for one turn of the motor, read from the hardware; -1 when it
  // cannot be read or makes no sense.
  [[nodiscard]] std::optional<Travel> ProgrammeTravel() const override;
  [[nodiscard]] float GetReferenceSpeedFactor() const override;

  // ---- tools
  clsHX7MechanicalSystem& MechanicalSystem() { return clsMechanicalSystem_; }
  clsHX7FlexibleIO& FlexibleIO() { return clsFlexibleIO_; }
  clsHX7Homing& Homing() { return clsHoming_; }
  clsHX7Interface& Interface() { return clsInterface_; }
  clsHX7OverTravel& OverTravel() { return clsOverTravel_; }
  clsHX7Jog& Jog() { return clsJog_; }
  clsHX7Position& Position() { return clsPosition_; }
  clsHX7Zone& Zone() { return clsZone_; }
  clsHX7Tuning& Tuning() { return clsTuning_; }
  clsHX7Editor& Editor() { return clsEditor_; }
  clsHX7ServoJog& ServoJog() { return clsServoJog_; }
  clsHX7InertiaRatio& InertiaRatio() { return clsInertiaRatio_; }
  clsHX7Monitoring& Monitoring() { return clsMonitoring_; }
  clsHX7Terminal& Terminal() { return clsTerminal_; }
  [[nodiscard]] std::vector<ParameterToolBase*> ParameterTools();
  // Null for a tool that is no table.
  [[nodiscard]] MotionTable* TableOf(Tool tool);
  // Null for a tool that holds no parameters of this kind.
  [[nodiscard]] ParameterToolBase* ParameterToolOf(Tool tool);

  [[nodiscard]] const ParameterStore& Parameters() const { return parameters_; }
  // The tool's window. False when it cannot be had, of which the user was told; one that blocks has
  // closed when the call returns.
  bool Show(Tool tool);
  [[nodiscard]] GridWindow& WindowOf(Tool tool);
  void BringToFront(Tool tool) { WindowOf(tool).BringToFront(); }
  [[nodiscard]] bool IsShown(Tool tool) { return WindowOf(tool).IsOpen(); }

  EditorTool& EditorService() override { return clsEditor_; }
  SisterTool& FlexibleIOSister() override { return clsFlexibleIO_; }
  SisterTool& OverTravelSister() override { return clsOverTravel_; }
  HomingTool& HomingService() override { return clsHoming_; }
  MechanicalSystemTool& MechanicalSystemSister() override { return clsMechanicalSystem_; }

  // ---- events
  Event<> ProjectOpened;
  Event<> ProjectClosed;  // never raised: whoever closes a project runs the handler itself
  Event<> ProjectSavedAs;
  // A new value of Pn801 is about to go out; then, that very send failed.
  Event<const std::string&> BaudRateChanged;
  Event<> BaudRateChangeFailed;
  Event<> CommunicationDown;
  Event<> DownloadComplete;
  Event<> RigidityChanged;
  Event<const std::string&> ResolutionDataInvalidated;  // the tables and tools concerned
  Event<> MechanicalSystemCheckSumFailed;
  Event<> MechanicalSystemNoCheckSum;
  Event<> MechanicalSystemZeroSystem;
  // The tools' own, passed on: one event for each kind, with the tool in front.
  Event<Tool> ToolClosed;
  Event<Tool> EditStateChanged;              // of its window: what the Edit menu may offer
  Event<Tool, WindowRequest> ToolRequested;  // by the buttons of the tool's window
  Event<> ServoJogClosed;
  Event<> MonitoringClosed;
  Event<const std::string&> OnlineStatus;  // "Monitoring Stand By" and the like
  Event<> LineLost;                        // the amplifier stopped to answer a live tool
  Event<> TerminalClosed;
  Event<Tool, const std::string&> ToolStatus;
  Event<Tool, std::int16_t, std::int16_t> ToolDownloading;  // row, total
  Event<Tool, std::int16_t, std::int16_t> ToolUploading;    // row, total

 private:
  struct DirtyTool;

  void SetDatabasePaths();
  [[nodiscard]] std::string ReadFile(NewerProject newer);
  void FitFormat(NewerProject newer);
  [[nodiscard]] std::string ReadOnlyWords(const std::string& consequence) const;
  void ReadMotorSize();
  // Takes the project's file against other programs that have it open by whatever name. False: one
  // of them has.
  [[nodiscard]] bool TakeProjectFile();
  // The project's file holds what `copy` holds, as this project has read or written it.
  void KnowProjectFile(const std::string& copy);
  [[nodiscard]] bool HoldsWhatIsKnown(const std::string& copy) const;
  [[nodiscard]] bool KnowsProjectFile() const;
  // Empty for a size that is not known.
  [[nodiscard]] static MotorLimits LimitsOfMotor(const std::string& watts);
  void ConnectTools();
  template <typename ToolObject>
  void ConnectTool(Tool id, ToolObject& tool);
  void ConnectMechanicalSystem();
  void ConnectBaudRate();
  void RemoveMarksFile();
  void TellOfPlace(const std::string& remark) const;
  [[nodiscard]] std::vector<MotionTable*> Tables();
  [[nodiscard]] std::vector<const MotionTable*> Tables() const;
  [[nodiscard]] bool IsDirty(Tool tool);

  [[nodiscard]] ProjectPlan PlanUpload() const;
  [[nodiscard]] ParameterChanges Write(const ProjectPlan& plan);
  void Commit(const ProjectPlan& plan, bool uploaded);
  [[nodiscard]] static std::vector<std::string> LimitedSets(const ProjectPlan& plan);
  [[nodiscard]] MotionTable::Step UploadStepOf(const MotionTable& table, Tool tool,
                                               const Units& after) const;

  [[nodiscard]] std::vector<DirtyTool> DownloadOrder();
  bool SendEverything();
  bool SendNew();
  bool SendParts(const std::vector<Tool>& parts);
  bool DownloadPart(Tool part);
  [[nodiscard]] bool IsAsWritten() const { return !writtenCheck_ || writtenCheck_(); }
  [[nodiscard]] bool MayDownload() const;
  // Marks by `mark`, then sends by `send`, with what precedes and follows each download.
  bool RunDownload(const std::function<void()>& mark, const std::function<bool()>& send);
  // Before the first line of a download, and behind its last.
  bool BeginDownload();
  void EndDownload();
  void MarkPart(Tool part);
  [[nodiscard]] std::vector<Tool> MarkedTools();
  // Those of `marked` of which nothing is marked any more were sent.
  void NoteSent(const std::vector<Tool>& marked);
  [[nodiscard]] bool ReadPart(Tool part);
  void NoteRead();
  void ReadTransfers();
  // Whatever is marked counts as not held by the amplifier.
  void DoubtMarked();
  // Restarts the hardware; true when it acknowledged that.
  bool Restart();
  // The copy of the project's file in which its marks are brought up to date.
  [[nodiscard]] std::string MarksFile() const { return strProjectDatabasePath_ + "-marks"; }

  ParameterStore parameters_;
  std::string strProjectDatabasePath_;
  std::string strTHDatabasePath_;
  bool blnOpen_ = false;
  bool isNewer_ = false;
  bool tellsOfUnsaved_ = true;
  std::string keptWork_;
  std::string recovered_;
  std::string laidAnew_;  // what the opened file lacked, in words
  bool blnNeedsSaving_ = false;
  std::string motorSize_;
  bool motorNoted_ = false;  // the project's own file is to learn it with the marks
  // The amplifier holds no machine that can be used; that of the project has stayed.
  bool machineUnread_ = false;
  std::vector<Tool> readParts_;  // whole, into what is held apart
  RestartOutcome latestRestart_ = RestartOutcome::none;
  std::map<Tool, LastTransfer> transfers_;
  std::vector<Tool> sent_;  // in this session, to be kept in the project's own file
  std::map<std::string, std::string> newValues_;  // of the template's parameters; empty: not read
  std::function<bool()> writtenCheck_;
  std::string sWorkingDirectory_;
  std::string sFileName_;
  std::string sFileTitle_;
  std::unique_ptr<FileLock> workingFileLock_;
  std::unique_ptr<FileLock> projectFileLock_;
  std::size_t projectFileState_ = 0;  // of the project's file as it was read or written last
  bool savedElsewhere_ = false;       // its folder cannot be written

  clsHX7MechanicalSystem clsMechanicalSystem_{parameters_};
  clsHX7FlexibleIO clsFlexibleIO_{parameters_};
  clsHX7Homing clsHoming_{parameters_};
  clsHX7Interface clsInterface_{parameters_};
  clsHX7OverTravel clsOverTravel_{parameters_};
  clsHX7Jog clsJog_;
  clsHX7Position clsPosition_;
  clsHX7Zone clsZone_;
  clsHX7Tuning clsTuning_{parameters_};
  clsHX7Editor clsEditor_{parameters_};
  clsHX7ServoJog clsServoJog_;
  clsHX7InertiaRatio clsInertiaRatio_;
  clsHX7Monitoring clsMonitoring_;
  clsHX7Terminal clsTerminal_;
  Connections connections_;
};

}  // namespace velmoor
