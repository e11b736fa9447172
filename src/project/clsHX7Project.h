// The root object of a project: one file, the working copy beside it on which all tools work, and
// the tools themselves.
//
// While a project is open nothing touches its file until Save copies the working file over it. The
// object owns its tools and lives until the next project replaces it; with it goes the working
// file.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "mechanics/clsHX7MechanicalSystem.h"
#include "online/clsHX7InertiaRatio.h"
#include "online/clsHX7Monitoring.h"
#include "online/clsHX7ServoJog.h"
#include "online/clsHX7Terminal.h"
#include "platform/Event.h"
#include "platform/Files.h"
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

// The tools that tell of transfers, by the project's events.
enum class Tool {
  editor,
  tuning,
  flexibleIO,
  homing,
  interface,
  mechanicalSystem,
  overTravel,
  position,
  jog,
  zone
};

struct PartComparison;

// The units as the windows show them.
struct ShownUnits {
  std::string distance, speed, acceleration;
};

class clsHX7Project final : public Project {
 public:
  // Takes the catalogue's path and table names from the session.
  clsHX7Project();
  // Releases the tools and deletes the working file.
  ~clsHX7Project() override;

  // ---- the file

  // Opens
  // `strFileName`, whose title is `strFileTitle`, on a fresh working copy in WorkingDirectory,
  // which must be set. False puts the reason into `strError`; the project then holds no data.
  bool OpenProject(const std::string& strFileName, const std::string& strFileTitle,
                   std::string& strError);
  // Deletes the working file and lets go of its lock; nothing but the destructor may follow. A
  // folder that became read-only keeps the file.
  void RemoveWorkingFile();
  // Copies the working file over the project file, durably, and clears the need of saving. Throws
  // FileError; nothing is changed then.
  void Save();
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

  // ---- flags
  [[nodiscard]] bool IsDirty() const { return blnIsDirty_; }
  void SetIsDirty(bool dirty) { blnIsDirty_ = dirty; }
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  void SetNeedsSaving(bool needed) { blnNeedsSaving_ = needed; }
  // One of the tools needs saving.
  [[nodiscard]] bool ProjectNeedsSaving() const;
  // The tools with changes that the hardware does not have, "All parameters, Jog table"; empty:
  // none.
  [[nodiscard]] std::string WhatIsDirty() const;
  void ResetAllIsDirty();
  void SetAllIsDirty();  // editor and the three tables
  void ResetNeedsSaving();

  // ---- transfers

  // Sends what
  // is dirty, in a fixed order, and stores it; restarts the hardware when a parameter went out.
  // False at the first failure: what ran is clean, the rest stays dirty.
  bool Download();
  // Sends the tables, every parameter and the machine, and restarts the hardware.
  bool DownloadAll();
  // The whole of the tools named, tables before parameters, whatever their marks; restarts the
  // hardware when a parameter went out.
  bool DownloadParts(const std::vector<Tool>& parts);
  // Marks everything where a write since the last look may have reached another row or parameter
  // than it named: the amplifier may hold other values than the project then, anywhere.
  void MarkAfterStrayWrite();
  // Reads one tool's rows into memory. False: stopped or failed.
  [[nodiscard]] bool UploadPart(Tool part);
  // Takes a snapshot and reads the tools named. False: stopped or failed; the snapshot is back
  // then.
  [[nodiscard]] bool UploadParts(const std::vector<Tool>& parts);
  void CommitUploadedParts(const std::vector<Tool>& parts);
  // Where the rows of now, as they are shown, differ from those of the snapshot: the project as it
  // was is first, what was uploaded second. Empty without a snapshot.
  [[nodiscard]] std::vector<PartComparison> CompareWithSnapshot() const;
  // How many rows a transfer of the tool announces.
  [[nodiscard]] int RowsOf(Tool part);
  // One stage each, with the store of a table behind it.
  bool DownloadTable(Tool table, bool blnOverRide);
  // Sum of the marked records that Download New would send.
  [[nodiscard]] std::int16_t GetNumberOfNewDownloads() const;
  // Accepts or refuses what was uploaded into all tools; refused data is replaced by the snapshot.
  void CommitUploadedData();
  // The same for one tool; a sister that holds the same parameters keeps them as stored.
  void CommitUploadedTool(Tool tool);
  void TakeSnapshot();
  void RestoreSnapshot();

  // ---- units
  [[nodiscard]] std::int16_t Resolution() const override { return intResolution_; }
  [[nodiscard]] std::string DistanceUnits() const override { return strDistanceUnits_; }
  [[nodiscard]] std::string SpeedUnits() const override { return strSpeedUnits_; }
  [[nodiscard]] std::string AccelerationUnits() const override { return strAccelerationUnits_; }
  [[nodiscard]] std::string TimeUnits() const override { return strTimeUnits_; }
  [[nodiscard]] double ConversionForDistance() const override { return dblCFactor_[0]; }
  [[nodiscard]] double ConversionForSpeed() const override { return dblCFactor_[1]; }
  [[nodiscard]] double ConversionForAcceleration() const override { return dblCFactor_[2]; }
  [[nodiscard]] double ConversionForTime() const override { return dblCFactor_[3]; }
  void GetConversionFactors();
  // Copies units and resolution from the machine; the factors stay when only its unit words
  // changed.
  void UpdateMechanicalSystemValues(bool blnIsMachineUnits);
  // Shows the present words of the units in the open windows.
  void UpdateUnitsInToolWindows();
  [[nodiscard]] std::vector<RescaledValue> PreviewRescale(
      std::int16_t digits, const std::array<double, 4>& factors) const override;
  // Counts of the speed command for one turn of the motor, read from the hardware; -1 when it
  // cannot be read or makes no sense.
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
  // Null for a tool that holds no parameters of this kind.
  [[nodiscard]] ParameterToolBase* ParameterToolOf(Tool tool);

  SharedParameterTool& EditorSister() override { return clsEditor_; }
  EditorTool& EditorService() override { return clsEditor_; }
  SharedParameterTool& FlexibleIOSister() override { return clsFlexibleIO_; }
  ParameterTool& InterfaceSister() override { return clsInterface_; }
  SharedParameterTool& OverTravelSister() override { return clsOverTravel_; }
  OverTravelTool& OverTravelLimits() override { return clsOverTravel_; }
  ParameterTool& HomingSister() override { return clsHoming_; }
  HomingTool& HomingService() override { return clsHoming_; }
  ParameterTool& TuningSister() override { return clsTuning_; }
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
  Event<> UploadComplete;  // never raised
  Event<> RigidityChanged;
  Event<const std::string&> ResolutionDataInvalidated;  // the tables and tools concerned
  Event<> MechanicalSystemCheckSumFailed;
  Event<> MechanicalSystemNoCheckSum;
  Event<> MechanicalSystemZeroSystem;
  // The tools' own, passed on: one event for each kind, with the tool in front.
  Event<Tool> ToolClosed;
  Event<Tool> EditStateChanged;     // of its window: what the Edit menu may offer
  Event<Tool> ToolUploadRequested;  // by the buttons of a parameter tool's window
  Event<Tool> ToolDownloadRequested;
  Event<> ServoJogClosed;
  Event<> MonitoringClosed;
  Event<const std::string&> OnlineStatus;  // "Monitoring Stand By" and the like
  Event<> LineLost;                        // the amplifier stopped to answer a live tool
  Event<> TerminalClosed;
  Event<Tool, const std::string&> ToolStatus;
  Event<Tool, std::int16_t, std::int16_t> ToolDownloading;  // row, total
  Event<Tool, std::int16_t, std::int16_t> ToolUploading;    // row, total

 private:
  // What an upload overwrites, tool by tool.
  struct Snapshots {
    clsHX7MechanicalSystem::Snapshot machine;
    // The amplifier holds none that can be used; the project's has stayed.
    bool machineUnread = false;
    std::vector<ParameterToolBase::Snapshot> parameterTools;
    std::vector<MotionTable::Snapshot> tables;
    ShownUnits units;
    bool isDirty = false, needsSaving = false;
  };
  struct DirtyTool;

  void SetDatabasePaths();
  void SetDatabaseTables();
  bool ReadFile();
  void ReadTools();
  void MarkPendingDownloads();
  void ConnectTools();
  template <typename ToolObject>
  void ConnectTool(Tool id, ToolObject& tool);
  void ConnectMechanicalSystem();
  void ConnectBaudRate();
  template <typename ToolObject>
  void OrInFlags(const ToolObject& tool);
  [[nodiscard]] std::string WorkingFileOf(const std::string& directory,
                                          const std::string& title) const;
  [[nodiscard]] MotionTable* TableOf(Tool tool);
  [[nodiscard]] std::vector<MotionTable*> Tables();
  [[nodiscard]] std::vector<DirtyTool> DownloadOrder();
  bool SendEverything();
  bool DownloadWholeTable(Tool table);
  // Marks all that a download of everything sends, so that Download New can complete one that is
  // cut.
  void MarkEverything();
  // Marks the records of the parameters that `concerned` names and that are sent at all.
  void MarkParameters(const std::function<bool(const std::string& strPn)>& concerned);
  bool DownloadPart(Tool part);
  void SettleSentRows();
  bool SendNew();
  bool SendParts(const std::vector<Tool>& parts);
  [[nodiscard]] ShownUnits PresentUnits() const;
  [[nodiscard]] static std::vector<int> RowsToSend(const MotionTable& table, bool all);
  // Marks the rows in memory and in the working file.
  void MarkRows(MotionTable& table, const std::vector<int>& rows);
  // Commits an uploaded table. Rows that the amplifier holds in volatile memory alone are marked.
  void CommitUploadedTable(Tool table);
  void OnResolutionChanged();
  void OnSystemAndResolutionChanged(float length);
  [[nodiscard]] std::string CollectInvalidated(bool& any);

  std::string strProjectDatabasePath_;
  std::string strTHDatabasePath_;
  bool blnOpen_ = false;
  bool blnIsDirty_ = false;
  bool blnNeedsSaving_ = false;
  std::string sWorkingDirectory_;
  std::string sFileName_;
  std::string sFileTitle_;
  std::int16_t intResolution_ = 0;
  std::string strDistanceUnits_, strSpeedUnits_, strAccelerationUnits_, strTimeUnits_;
  ConversionFactors dblCFactor_{1, 0.06, 0.00006, 60};
  std::unique_ptr<FileLock> workingFileLock_;

  clsHX7MechanicalSystem clsMechanicalSystem_;
  clsHX7FlexibleIO clsFlexibleIO_;
  clsHX7Homing clsHoming_;
  clsHX7Interface clsInterface_;
  clsHX7OverTravel clsOverTravel_;
  clsHX7Jog clsJog_;
  clsHX7Position clsPosition_;
  clsHX7Zone clsZone_;
  clsHX7Tuning clsTuning_;
  clsHX7Editor clsEditor_;
  clsHX7ServoJog clsServoJog_;
  clsHX7InertiaRatio clsInertiaRatio_;
  clsHX7Monitoring clsMonitoring_;
  clsHX7Terminal clsTerminal_;
  std::optional<Snapshots> snapshots_;
  Connections connections_;
};

}  // namespace velmoor
