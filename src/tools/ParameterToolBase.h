// The parameter tool pattern: what the six parameter tools share.
//
// A tool owns its rows, joins them with the catalogue and the project's working file, and moves
// them to and from the amplifier. A concrete tool is its list of rows and its few overrides.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "link/ResultCode.h"
#include "platform/Database.h"
#include "platform/Event.h"
#include "platform/Form.h"
#include "project/data/ParameterCatalogue.h"
#include "session/Project.h"
#include "session/Session.h"
#include "tools/BlockMatrix.h"

namespace velmoor {

class ParameterGridWindow;
struct ParameterRow;

class ParameterToolBase : public SharedParameterTool {
 public:
  // Everything that an upload overwrites, for a commit that the user refuses.
  struct Snapshot {
    BlockMatrix rows;
    bool isDirty = false;
    bool needsSaving = false;
    bool windowIsDirty = false;
    bool notCommitted = false;
  };

  // ---- properties
  void SetDatabasePath(const std::string& path) { strDatabasePath_ = path; }
  void SetParametersTable(const std::string& table) { strTable_ = table; }
  void SetSaveDBPath(const std::string& path) { strSaveDBPath_ = path; }
  [[nodiscard]] bool IsDirty() const { return blnIsDirty_; }
  // Clearing it reaches the window too, unless that holds edits which were not accepted.
  void SetIsDirty(bool dirty);
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  void SetNeedsSaving(bool needed) { blnNeedsSaving_ = needed; }
  [[nodiscard]] std::int16_t RowsInArray() const;
  // A conversion in ChangeResolution replaced a value by a limit.
  [[nodiscard]] bool DataInvalidated() const { return blnDataInvalidated_; }
  void ClearDataInvalidated() { blnDataInvalidated_ = false; }

  // ---- rows
  void GetBlockMatrix(BlockMatrix& copy) const override { copy = arBlockMatrix_; }
  void LetBlockMatrix(const BlockMatrix& copy) override { arBlockMatrix_ = copy; }
  [[nodiscard]] const BlockMatrix& Rows() const { return arBlockMatrix_; }
  void UpdateBlockMatrix() override;
  void PostUpload() override;
  // Everything that checks, tips and reports need to know of a row.
  [[nodiscard]] virtual ParameterRow Describe(int row) const;
  // The catalogue's sentence or two about the row's parameter.
  [[nodiscard]] const std::string& Help(int row) const;
  // Takes a checked text as the row's value and marks the row, unless it is the value already.
  void EditValue(int row, const std::string& text);
  // A row was edited and not accepted yet.
  [[nodiscard]] bool HoldsEdits() const;
  // Puts back an earlier state of a row, of before an edit.
  void PutBackRow(int row, const std::string& value, const std::string& mark, bool touched) {
    arBlockMatrix_.PutBack(row, value, mark, touched);
  }
  // Stores what was edited and hands it to the editor, as Apply does. False: the working file could
  // not be written, of which the user was told.
  bool AcceptEdits();

  // ---- the tool's window
  [[nodiscard]] ParameterGridWindow& Window() { return *frm_; }
  void BringToFront();
  // Closes the window without a question.
  void UnloadWindow();
  // Shows the units' present words.
  void UpdateUnitsDisplayed();

  // ---- the two databases

  // Rebuilds the rows in
  // place: marks, lists and the values of rows without a record stay.
  bool ReadFromDB();
  // Takes the stored values of the rows that were not touched since they were read: a sister tool
  // may have stored newer ones. True when a value changed.
  bool ReadUntouchedRows();
  // Gives list rows their items, and a row without a record its initial item.
  void SetComboLists(const ComboLists& lists);
  // Writes touched rows, and adds a record for a row that has none.
  bool SaveToDB();
  // Records of the tool's rows that are marked dirty; not the marks in memory.
  [[nodiscard]] std::int16_t GetNumberOfNewRows() const;

  // ---- the amplifier

  // Reads every row
  // into memory; the working file changes at the commit only.
  bool Upload();
  // Ends an upload that the user has accepted or refused.
  void CommitUploadedData(bool bState);
  // Sends every row that the tool sends at all.
  virtual bool DownloadWhole() { return DownloadRows(true); }
  // Something is marked to be sent.
  [[nodiscard]] virtual bool HasMoreToSend() const { return GetNumberOfNewRows() > 0; }
  // A sister's commit has stored what was copied here: such rows are no longer changes of this
  // tool.
  void SettleStoredRows();
  // A sister has sent what was marked here: such rows, and a tool without others, are clean.
  void SettleSentRows();
  [[nodiscard]] Snapshot TakeSnapshot() const;
  void RestoreSnapshot(const Snapshot& snapshot);

  // ---- events
  Event<> Applied;                                // accepted changes were saved
  Event<> Closed;                                 // the window closed
  Event<const std::string&> Status;               // "Download Complete" and the like
  Event<std::int16_t, std::int16_t> Downloading;  // count, total; before each parameter sent
  Event<std::int16_t, std::int16_t> Uploading;    // row, total; before each parameter read
  Event<> EditStateChanged;                       // what the Edit menu may offer has changed
  Event<> UploadRequested;                        // by the window's buttons
  Event<> DownloadRequested;

 protected:
  // `className` heads the boxes about trapped errors: "clsFlexibleIO".
  explicit ParameterToolBase(std::string className) : className_(std::move(className)) {}

  // ---- the window
  // Follows the window's events from now on. The window is a member of the tool.
  void AttachWindow(ParameterGridWindow& frm);
  bool ShowWindow(const std::string& caption, FormMode mode);
  void RefreshWindow();
  virtual bool frm_PropertiesChangeAccepted();
  virtual void frm_PropertiesChangeCanceled();
  void frm_PropertiesClosed();
  // Whether the tool's commits reach the rows of the direct parameter editor.
  [[nodiscard]] virtual bool HandsRowsToEditor() const { return true; }

  // Whether the tool has a row for that parameter.
  [[nodiscard]] virtual bool Takes(const ParameterDefinition& definition) const = 0;
  // Fills the row's cells from the catalogue.
  virtual void FillRow(int row, const ParameterDefinition& definition);
  // Runs after the rows were filled and before the values are read.
  virtual void DefinitionsRead() {}

  // Display form to controller form. Nothing when the value cannot be converted: then the record's
  // controller value and mark stay. A value beyond the counts that the amplifier takes is replaced
  // by the limit in the row.
  virtual std::optional<std::string> GetSelectedComboListIndex(int row);
  // Controller form to display form.
  [[nodiscard]] virtual std::string GetSelectedComboListItem(int row, std::int32_t selected) const;
  // The row's value in counts; a box and nothing when it is no number.
  std::optional<std::string> ConvertUnitsToCounts(int row, UnitKind kind);

  // ---- transfer hooks

  // With
  // `blnOverRide`, every row goes that the tool sends at all.
  bool DownloadRows(bool blnOverRide);
  virtual void MarkAllForDownload();
  // Whether the row goes out now; `record` stands at its record.
  [[nodiscard]] virtual bool GoesOut(int row, const RowSet& record, bool blnOverRide) const;
  // A parameter that is never sent.
  [[nodiscard]] virtual bool IsNeverSent(const std::string& /*strPn*/) const { return false; }
  [[nodiscard]] virtual std::string ValueToSend(const std::string& /*strPn*/,
                                                const std::string& controllerValue) const {
    return controllerValue;
  }
  virtual void BeforeSend(const std::string& /*strPn*/, const std::string& /*value*/) {}
  virtual void SendFailed(const std::string& /*strPn*/) {}
  [[nodiscard]] virtual std::string UploadedValue(int row, const std::string& answer) const;
  // Hands new values to the sister tools and the window.
  virtual void AfterUpload() = 0;

  // ---- cross-updates and rewriting
  // Copies column 4 of this tool's touched rows into the sister's rows of the same name. An
  // untouched row may be older than the sister's.
  void CopyValuesInto(SharedParameterTool& sister) const;
  // The same with the marks, for edits that reach the sister before any Apply.
  void CopyEditsInto(SharedParameterTool& sister) const;
  void UpdateEditorBlockMatrix() const;
  // Writes the touched rows, and puts the same values into the editor's rows as read from the file.
  bool SaveAndHandToEditor();

  // Whether a change of resolution reformats the row: unit rows without a list.
  [[nodiscard]] virtual bool ScalesWithResolution(int row) const;
  bool ChangeResolutionOfRows(const std::string& prefix, std::int16_t digits);
  // Gives rows a new value, marks them and rewrites their records. `newValue` returns nothing for a
  // row that stays as it is.
  using NewValue = std::function<std::optional<std::string>(int row)>;
  void RewriteRows(const NewValue& newValue);

  void MarkDirty() { blnIsDirty_ = blnNeedsSaving_ = true; }
  [[nodiscard]] std::string Prefix(std::string_view procedure) const;
  [[nodiscard]] std::unique_ptr<Database> OpenWorkingFile() const;
  [[nodiscard]] const std::string& WorkingFile() const { return strSaveDBPath_; }
  [[nodiscard]] const std::string& CataloguePath() const { return strDatabasePath_; }

  BlockMatrix arBlockMatrix_;

 private:
  struct Transfer;
  void ReadDefinitions();
  void ReadValues();
  [[nodiscard]] std::optional<std::string> StoredValue(RowSet& records, int row) const;
  void WriteRecord(RowSet& records, int row);
  bool UploadRow(int row);
  bool DownloadRow(Transfer& transfer, int row);

  std::string className_;
  std::string strTable_;
  std::string strDatabasePath_;
  std::string strSaveDBPath_;
  bool blnIsDirty_ = false;
  bool blnNeedsSaving_ = false;
  bool blnDataInvalidated_ = false;
  std::vector<std::string> help_;  // per row, from 0
  ParameterGridWindow* frm_ = nullptr;
  Connections connections_;
};

// Pn833 and Pn834 exist with newer option firmware only.
[[nodiscard]] bool NeedsNewOptionVersion(std::string_view strPn);
// The three characters that name the parameter on the wire.
[[nodiscard]] std::string WireNumber(std::string_view strPn);
// Cuts a heading at its units: the text before the first "(", trimmed; without one it stays as it
// is.
void TrimCurrentUnits(std::string& strText);

}  // namespace velmoor
