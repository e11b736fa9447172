// What the index, zone and jog tables share: rows of text cells, dirty marks, the way to the
// project file and the amplifier. A table is its columns and its conversions.
//
// Owned by the project. Cells hold the user's form; the controller's form is made when a row is
// stored. Rows count from 1 here and from 0 on the amplifier.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "link/ResultCode.h"
#include "platform/Database.h"
#include "platform/Event.h"
#include "session/Project.h"

namespace velmoor {

class TableWindow;

// How the text of a cell becomes what goes on the wire.
enum class CellKind {
  fixed,     // display only, never written
  text,      // goes as it stands
  label,     // known to the project only
  position,  // a move in distance units behind its prefix
  distance,
  speed,
  next,  // a label, or "END"
};

struct TableColumn {
  std::string_view field;            // of the shown form
  std::string_view controllerField;  // of the controller's form; empty: there is none
  CellKind kind;
};

struct TableLayout {
  std::string_view className;  // heads the boxes about trapped errors: "clsZone"
  std::string_view table;
  std::string_view order;  // the key column by whose number the rows are walked
  int rows;
  std::span<const TableColumn> columns;
};

class MotionTable {
 public:
  using Rows = std::vector<std::vector<std::string>>;
  struct Snapshot {
    Rows cells;
    std::vector<std::string> dirty;
    bool isDirty = false, needsSaving = false, notCommitted = false;
  };

  virtual ~MotionTable();
  MotionTable(const MotionTable&) = delete;
  MotionTable& operator=(const MotionTable&) = delete;

  // ---- properties
  void SetDatabasePath(const std::string& path) { strDatabasePath_ = path; }
  [[nodiscard]] bool IsDirty() const { return blnIsDirty_; }
  void SetIsDirty(bool dirty) { blnIsDirty_ = dirty; }
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  void SetNeedsSaving(bool needed) { blnNeedsSaving_ = needed; }
  [[nodiscard]] bool DataInvalidated() const { return blnDataInvalidated_; }
  void ClearDataInvalidated() { blnDataInvalidated_ = false; }

  // ---- cells; `row` from 1, `column` in the order of the layout, from 0
  [[nodiscard]] int RowsInArray() const { return layout_.rows; }
  [[nodiscard]] const TableLayout& Layout() const { return layout_; }
  [[nodiscard]] const std::string& Text(int row, int column) const;
  // Puts a text into the cell and leaves the row's mark alone.
  void SetText(int row, int column, std::string_view text);
  // "1": the amplifier's copy is out of date.
  [[nodiscard]] const std::string& DirtyCell(int row) const;
  void SetDirtyCell(int row, bool dirty);
  // Marks the rows whose cells differ from `cells`.
  void MarkChangesSince(const Rows& cells);
  // A copy of all cells.
  [[nodiscard]] const Rows& Cells() const { return cells_; }
  // Every cell that the user can fill is empty.
  [[nodiscard]] bool IsBlank(int row) const;
  [[nodiscard]] virtual bool IsDataSetComplete(int row) const = 0;

  // ---- the window, which the table owns
  // False when the window cannot be had, of which the user was told.
  bool Show();
  void Unload();
  void BringToFront();
  [[nodiscard]] TableWindow& Window() { return *frm_; }
  // The project's units changed their words.
  void UpdateUnitsDisplayed();

  // ---- the file
  // Reads the rows and shows them in an open window.
  bool LoadFromProject();
  bool ReadFromDB();
  // All rows or none.
  bool SaveToDB();
  bool ClearData();
  [[nodiscard]] std::int16_t GetNumberOfNewRows() const;
  // Keeps the user's numbers and changes their counts.
  bool ChangeResolution(std::int16_t digits);
  // Accepts the edited rows: saves them and raises Applied. False: nothing was stored, of which the
  // user was told.
  bool ChangeAccepted();

  // ---- the amplifier
  bool Upload();
  bool Download(bool blnOverRide);
  void CommitUploadedData(bool bState);
  [[nodiscard]] Snapshot TakeSnapshot() const;
  void RestoreSnapshot(const Snapshot& snapshot);

  // ---- events
  Event<> Applied;
  Event<> Closed;            // the window closed
  Event<> EditStateChanged;  // what the Edit menu may do with the window has changed
  Event<const std::string&> Status;
  Event<std::int16_t, std::int16_t> Downloading;  // count, total
  Event<std::int16_t, std::int16_t> Uploading;    // row, total

 protected:
  explicit MotionTable(const TableLayout& layout);
  // Once, in the constructor of each table.
  void TakeWindow(std::unique_ptr<TableWindow> window);

  // Whether SaveToDB writes the row; a row that is not complete is written empty.
  [[nodiscard]] virtual bool IsStored(int row) const = 0;
  // The mark that a stored row gets.
  [[nodiscard]] virtual bool StoredMark(int row, bool complete) const = 0;
  // Rows that a change of resolution rewrites.
  [[nodiscard]] virtual bool ScalesWithResolution(int row) const = 0;

  // Reads one row from the amplifier into the cells.
  virtual ResultCode UploadRow(int row) = 0;
  // Sends the record that the set stands at.
  virtual ResultCode SendRecord(const RowSet& record) = 0;
  // A reason not to download at all, already shown. True: go on.
  virtual bool MayDownload() { return true; }

  // The controller's form of a cell's text; empty stays empty, "-" stays "-".
  [[nodiscard]] virtual std::string ToController(CellKind kind, const std::string& text) const;
  // The inverse; kinds without a conversion come back as they are.
  [[nodiscard]] virtual std::string FromController(CellKind kind, const std::string& text) const;
  // The text of a number cell with `digits` decimals, clamped to the counts that the amplifier
  // takes.
  [[nodiscard]] virtual std::string Reformatted(CellKind kind, const std::string& text,
                                                std::int16_t digits);
  [[nodiscard]] std::string ReformattedNumber(UnitKind kind, const std::string& text,
                                              std::int16_t digits);
  [[nodiscard]] std::string ConvertCountsToUnits(const std::string& counts, UnitKind kind) const;
  [[nodiscard]] std::string ConvertUnitsToCounts(const std::string& text, UnitKind kind) const;

  [[nodiscard]] bool IsTouched(int row) const { return touched_.at(Index(row)); }

 private:
  [[nodiscard]] std::size_t Index(int row) const;
  [[nodiscard]] std::string Prefix(std::string_view procedure) const;
  void ForEachRecord(const std::function<void(int row, RowSet& record)>& work, bool writes);
  ResultCode UploadRowSafely(int row);
  bool StoreRows(bool markMovedCounts);
  void frm_ChangeAccepted();
  void frm_ChangeCanceled();
  void ShowInWindow();
  void AllOrNothing(const std::function<void()>& work);
  [[nodiscard]] bool WireFormMoved(int row, const RowSet& record) const;
  void StoreRow(int row, RowSet& record, bool complete);
  bool DownloadRecords(Database& database, RowSet& records, std::int16_t total);

  TableLayout layout_;
  Rows cells_;
  std::vector<std::string> dirty_;
  std::vector<bool> touched_;
  std::string strDatabasePath_;
  bool blnIsDirty_ = false;
  bool blnNeedsSaving_ = false;
  bool blnDataInvalidated_ = false;
  std::unique_ptr<TableWindow> frm_;
  Connections connections_;
};

}  // namespace velmoor
