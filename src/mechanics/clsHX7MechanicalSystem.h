// The description of the machine: its rows, their way to the file and the amplifier, and what a
// change of the machine sets off in the rest of the project.
//
// Owned by the project. Rows are of two groups: the seven that the direct parameter editor holds
// too, and the eight of the card's own memory, some of which are shown digit by digit or half by
// half in view rows ("Pn82E.0", "Pn82F.0") that exist in memory only.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "mechanics/GearRatio.h"
#include "platform/Database.h"
#include "platform/Event.h"
#include "session/Project.h"
#include "tools/BlockMatrix.h"

namespace velmoor {

// What the machine's window hands over when the user accepts its changes.
struct MechanicalSystemEdit {
  BlockMatrix rows;
  bool isDirty = false;          // something changed since the last commit
  bool resolutionDirty = false;  // Pn82D changed
  bool systemDirty = false;      // the data of other tools is no longer meaningful
  bool needUpdateOverTravel = false;
};

class frmMechanicalSystem;

class clsHX7MechanicalSystem final : public MechanicalSystemTool {
 public:
  clsHX7MechanicalSystem();
  ~clsHX7MechanicalSystem() override;
  struct Snapshot {
    BlockMatrix rows;
    bool isDirty = false, needsSaving = false;
  };

  // ---- properties
  void SetDatabasePath(const std::string& path) { strDatabasePath_ = path; }
  void SetParametersTable(const std::string& table) { strTable_ = table; }
  void SetSaveDBPath(const std::string& path) { strSaveDBPath_ = path; }
  [[nodiscard]] bool IsDirty() const { return blnIsDirty_; }
  void SetIsDirty(bool dirty) { blnIsDirty_ = dirty; }
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  void SetNeedsSaving(bool needed) { blnNeedsSaving_ = needed; }
  [[nodiscard]] std::int16_t NumPns() const { return 15; }           // real parameters
  [[nodiscard]] std::int16_t NumMechSystemPns() const { return 8; }  // Pn829 to Pn830
  [[nodiscard]] std::int16_t RowsInArray() const;
  [[nodiscard]] const BlockMatrix& Rows() const { return arBlockMatrix_; }
  void GetBlockMatrix(BlockMatrix& copy) const { copy = arBlockMatrix_; }

  [[nodiscard]] std::int16_t Resolution() const override { return machine_.resolution; }
  [[nodiscard]] std::int32_t SelectedSystem() const override { return machine_.system; }
  [[nodiscard]] std::string SelectedSystemName() const;
  [[nodiscard]] const Machine& Description() const { return machine_; }
  [[nodiscard]] std::int32_t EncoderCount() const { return machine_.encoderCount; }
  [[nodiscard]] double FeedConstant() const override { return FeedConstantOf(machine_); }
  [[nodiscard]] std::int32_t A_Value() const { return ratio_.a; }
  [[nodiscard]] std::int32_t B_Value() const { return ratio_.b; }
  [[nodiscard]] const std::string& DistanceUnits() const { return sDistanceUnits_; }
  [[nodiscard]] const std::string& TimeUnits() const { return sTimeUnits_; }
  [[nodiscard]] const std::string& SpeedUnits() const { return sSpeedUnits_; }
  [[nodiscard]] const std::string& AccelerationUnits() const { return sAccelerationUnits_; }

  // ---- the file
  bool ReadFromDB();
  // All of it or nothing.
  bool SaveToDB();
  // Of the eight rows of the card's memory, those whose record is marked dirty.
  [[nodiscard]] std::int16_t GetNumberOfNewRows() const;
  // Takes the digested fields from the rows.
  void UpdateProjectMechanicalSystemValues();

  // ---- the amplifier
  bool Download(bool blnOverRide);
  // Ends with the test of the checksum. False also when the amplifier holds no usable machine: then
  // the rows are what they were.
  bool Upload();
  void CommitUploadedData(bool bState);
  [[nodiscard]] Snapshot TakeSnapshot() const;
  // Digests the rows and raises MechanicalSystemUnitsChanged(false).
  void RestoreSnapshot(const Snapshot& snapshot);

  // ---- the window
  // Opens the window and returns when it has closed. False when it cannot be had.
  bool Show_MechanicalSystem();
  void Unload_MechanicalSystem();

  // ---- commits and cross-updates

  // The window accepted its
  // changes, or dropped them.
  void ChangeAccepted(const MechanicalSystemEdit& edit);
  void ChangeCanceled();
  void UpdateFromEditorBlockMatrix() override;
  // Stores the shared rows once more and gives them to the editor, after a reset of the editor's
  // own copies.
  void HandRowsToEditor();

  // ---- events, in this order
  Event<> MechanicalSystemClosed;
  Event<const std::string&> MechanicalSystemStatus;
  Event<std::int16_t, std::int16_t> MechanicalSystemDownloading;
  Event<std::int16_t, std::int16_t> MechanicalSystemUploading;
  Event<> MechanicalSystemOKed;
  Event<bool> MechanicalSystemUnitsChanged;  // true: only the word of the machine unit changed
  Event<> MechanicalSystemCheckSumFailed;
  Event<> MechanicalSystemNoCheckSum;
  Event<> MechanicalSystemZeroSystem;
  Event<> ResolutionChanged;
  Event<float> SystemAndResolutionChanged;  // the travel of one turn, in distance units

 private:
  struct UploadedTexts {
    std::string bits, measure, checksum;
  };
  void ReadEditorPnsFromDB();
  void ReadOtherPnsFromDB();
  void AddOtherRow(const RowSet& record);
  void AddViewRows(const std::string& bits, const std::string& measure);
  int AddRow(const std::string& name, const std::string& description, const std::string& value);
  void SetUnits();
  void UpdateUnitsColumn();
  void SortBlockMatrix();
  void DigestRows();
  void DigestBits(const std::string& bits);
  void UpdateDerivedUnits();
  [[nodiscard]] std::string ValueOf(const char* name) const;

  bool SaveEditorPnsToDB(Database& database);
  bool SaveOtherPnsToDB(Database& database);
  void UpdateEditorBlockMatrix(bool withMarks) const;
  [[nodiscard]] std::string ControllerValueOf(int row) const;

  bool DownloadRecord(Database& database, RowSet& records, const std::string& strPn);
  bool ReadParameters();
  UploadedTexts TakeUploadedDescription();
  void TakeUploadedValues(UploadedTexts& texts);
  bool DecideUpload(const UploadedTexts& texts, const BlockMatrix& before);
  bool RefuseUpload(const BlockMatrix& before, const Event<>& reason);
  void UpdateUploadedParameter(int row, const std::string& strValue);

  BlockMatrix arBlockMatrix_;
  std::string strTable_, strDatabasePath_, strSaveDBPath_;
  bool blnIsDirty_ = false;
  bool blnNeedsSaving_ = false;
  Machine machine_;
  GearRatio ratio_;
  std::string sDistanceUnits_, sTimeUnits_, sSpeedUnits_, sAccelerationUnits_;
  std::unique_ptr<frmMechanicalSystem> frm_;
  Connections connections_;  // to the window
};

// The digit of Pn82E at `digit` (0 right-most) as a number; -1 where the text has no such digit.
[[nodiscard]] std::int32_t SelectionDigit(const std::string& bits, int digit);
// The eight names of the card's own memory, and the seven that the editor holds too.
[[nodiscard]] bool IsMechSystemPn(std::string_view strPn);
[[nodiscard]] bool IsSharedPn(std::string_view strPn);

}  // namespace velmoor
