// What the index, zone and jog tables share: rows of text cells, dirty marks, the way to the
// project file and the amplifier. A table is its columns and its conversions.
//
// Owned by the project. A table holds its rows as the working file has them, in the user's form and
// in the controller's; beside them stand the rows as its window edits them, which are the same but
// for edits that were not applied yet. Rows count from 1 here and from 0 on the amplifier.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "link/ResultCode.h"
#include "platform/Database.h"
#include "platform/Event.h"
#include "project/data/Doubt.h"
#include "project/data/Units.h"
#include "session/Project.h"
#include "tables/TableColumns.h"

namespace velmoor {

class TableWindow;

class MotionTable {
 public:
  using Rows = std::vector<std::vector<std::string>>;
  // The rows of the window, for an operation that puts them back where it fails.
  struct Edits {
    Rows cells;
    std::vector<bool> marks;
  };
  // One row as the working file has it.
  struct StoredRow {
    std::vector<std::string> cells;       // shown; in the order of the columns
    std::vector<std::string> controller;  // as they go to the amplifier; empty where nothing does
    bool marked = false;
  };
  // A row from 1 and a column from 0.
  using CellPlace = std::pair<int, std::size_t>;
  // What a change of the machine, or an upload, makes of the stored rows.
  struct Step {
    std::vector<StoredRow> rows;
    std::vector<RescaledValue> values;  // what is shown of it
    bool limited = false;               // a limit replaced a value
    bool emptied = false;               // rows that held something hold nothing
    bool changed = false;               // anything at all
  };

  virtual ~MotionTable();
  MotionTable(const MotionTable&) = delete;
  MotionTable& operator=(const MotionTable&) = delete;

  // ---- properties
  void SetDatabasePath(const std::string& path) { strDatabasePath_ = path; }
  // A stored row is marked to be sent.
  [[nodiscard]] bool IsDirty() const { return GetNumberOfNewRows() > 0; }

  // ---- cells; `row` from 1, `column` in the order of the layout, from 0
  [[nodiscard]] int RowsInArray() const { return layout_.rows; }
  [[nodiscard]] const TableLayout& Layout() const { return layout_; }
  [[nodiscard]] const std::string& Text(int row, int column) const;
  // Puts a text into the cell and leaves the row's mark alone.
  void SetText(int row, int column, std::string_view text);
  // "1": the amplifier's copy is out of date.
  [[nodiscard]] std::string DirtyCell(int row) const;
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
  [[nodiscard]] TableWindow& Window() { return *frm_; }
  // The project's units changed their words.
  void UpdateUnitsDisplayed();

  // ---- the file
  [[nodiscard]] const StoredRow& Stored(int row) const { return stored_.at(Index(row)); }
  // The text that a cell of that column, from 0, would show for a value of the amplifier.
  [[nodiscard]] std::string TextFor(std::size_t column, const std::string& controller,
                                    const Units& units) const {
    return ShownCell(layout_.columns[column].kind, controller, StoredCells(), units);
  }
  // Throws DatabaseError.
  void ReadFromDB();
  // Stored rows that are marked.
  [[nodiscard]] std::int16_t GetNumberOfNewRows() const;
  // Accepts the edited rows: saves them, all or none, and raises Applied. False: nothing was
  // stored, of which the user was told.
  bool ChangeAccepted();
  // Gives up what was edited and not applied.
  void DropEdits();
  [[nodiscard]] bool HoldsEdits() const;
  [[nodiscard]] Edits TakeEdits() const { return {cells_, marks_}; }
  void PutBackEdits(const Edits& edits);

  // ---- a change of the machine: the user's numbers stay and their counts change, or all is
  // emptied What that would make of the stored rows, named after `name` and numbered from
  // `firstNumber`.
  [[nodiscard]] Step Rescaled(const Units& from, const Units& to, const std::string& name,
                              int firstNumber) const;
  [[nodiscard]] Step Emptied() const;
  // What the edited rows make of the stored ones behind `base`, a change of the machine in whose
  // units they were typed. The cells in `found`, but for labels, are in the controller's form.
  // Throws NumberError for a text that is no number where one is sent.
  [[nodiscard]] Step Typed(const Step& base, const Units& units,
                           const std::set<CellPlace>& found) const;
  // The two halves of a commit that is part of a greater transaction: Take follows its Commit.
  void Write(Database& database, const Step& step) const;
  // Edits that were not applied take the new places, and are given up where the rows were emptied.
  // True: a limit has replaced one of them.
  bool Take(const Step& step, const Units& to);
  // The same for a step that somebody has typed, and has answered for; edits are dropped.
  void TakeTyped(const Step& step);

  // ---- the amplifier

  // Reads every row into what is held apart until a commit.
  bool Upload();
  [[nodiscard]] bool HoldsUpload() const { return !uploaded_.empty(); }
  void DropUpload() { uploaded_.clear(); }
  // What was uploaded, in the controller's form; empty where nothing was.
  [[nodiscard]] const Rows& Uploaded() const { return uploaded_; }
  // What a commit of it makes of the stored rows, shown in those units. `marked`: the amplifier
  // holds them in volatile memory alone, and they are still to be stored.
  [[nodiscard]] Step UploadStep(const Units& units, bool marked) const;
  // In the place of Take, for such a step.
  void TakeUpload(const Step& step, const Units& units);

  // Sends the marked rows, or all. What was acknowledged is in the amplifier's volatile memory
  // alone until ConfirmStored is told that the amplifier has stored the table.
  bool Download(bool blnOverRide);
  void ConfirmStored();
  // Lines for the marked rows are about to go out: what the amplifier holds is not known until it
  // has stored them.
  void AboutToSendMarked();
  // What is known of the amplifier's copy of a row in this session.
  struct AmplifierRow {
    bool told = false;                                   // else: as the project's file says
    std::optional<std::vector<std::string>> controller;  // nothing: not known
  };
  [[nodiscard]] const AmplifierRow& AmplifierCopy(int row) const { return copies_.at(Index(row)); }
  // Marks stored rows, in the file too. Throws DatabaseError.
  void Mark(const std::vector<int>& rows);

  // ---- doubts
  [[nodiscard]] const std::vector<Doubt>& Doubts() const { return doubts_; }
  // Settles one of them, in the file too. A shown text that means no value cannot be kept. Throws
  // DatabaseError.
  void Settle(const Doubt& doubt, Keep keep);

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
  // Reads one row from the amplifier: a text for each column, in the controller's form. Throws
  // NumberError for what is none.
  virtual ResultCode UploadRow(int row, std::vector<std::string>& controller) = 0;
  // Sends a row in the controller's form, a text for each column.
  virtual ResultCode SendRow(int row, const std::vector<std::string>& controller) = 0;
  // A reason not to download at all, already shown. True: go on.
  virtual bool MayDownload() { return true; }

  // The part of a position cell that is a number, behind its prefix; other kinds are numbers whole.
  [[nodiscard]] virtual std::size_t NumberAt(CellKind /*kind*/, const std::string& /*text*/) const {
    return 0;
  }
  // The controller's form of a cell's text in a table of those cells; empty stays empty, "-" stays
  // "-". Throws NumberError for a text that is no number where one is wanted.
  [[nodiscard]] virtual std::string ToController(CellKind kind, const std::string& text,
                                                 const Rows& cells, const Units& units) const;
  // The inverse; kinds without a conversion, and texts of no known form, come back as they are.
  [[nodiscard]] virtual std::string FromController(CellKind kind, const std::string& text,
                                                   const Units& units) const;
  // A cell of a row, not empty in the controller's form, is one that could have been typed.
  [[nodiscard]] virtual bool IsAsTyped(int row, int column, const StoredRow& stored) const;
  // The text that shows what a cell sends, in a table of those cells.
  [[nodiscard]] virtual std::string ShownCell(CellKind kind, const std::string& controller,
                                              const Rows& /*cells*/, const Units& units) const {
    return FromController(kind, controller, units);
  }
  // What a blank row of an upload shows as its label, and what another one does.
  [[nodiscard]] virtual std::string UploadedLabel(int /*row*/) const { return {}; }

  [[nodiscard]] bool IsTouched(int row) const;

 private:
  // A number and its unit within the text of a cell.
  struct NumberPlace {
    UnitKind kind;
    std::size_t at;
  };
  [[nodiscard]] std::size_t Index(int row) const;
  [[nodiscard]] std::string Prefix(std::string_view procedure) const;
  void ForEachRecord(const std::function<void(int row, RowSet& record)>& work, bool writes);
  [[nodiscard]] std::optional<NumberPlace> PlaceOf(CellKind kind, const std::string& text) const;
  [[nodiscard]] std::vector<std::string> ControllerRow(const std::vector<std::string>& cells,
                                                       const Rows& all, const Units& units) const;
  [[nodiscard]] StoredRow ReadRow(const RowSet& record) const;
  [[nodiscard]] bool MayMean(std::size_t column, const std::string& text) const;
  // The least count that may stand there.
  [[nodiscard]] static std::int64_t LeastAt(const NumberPlace& place);
  // "-99999.999 to 99999.999 mm"; empty where the cell holds no number.
  [[nodiscard]] std::string LimitsInWords(int column, const std::string& controller) const;
  void ShowWhatIsSent();
  void JudgeText(int row, int column, const std::string& text, const std::string& meant);
  void JudgeValue(int row, int column);
  [[nodiscard]] Rows StoredCells() const;
  // Where the rows that are taken come from.
  enum class Source : std::uint8_t { file, typed, machine, amplifier };
  void JudgeChanges(const std::vector<StoredRow>& before, Source source);
  [[nodiscard]] std::vector<StoredRow> EditedRows(const Units& units) const;
  void TypeCell(StoredRow& row, std::size_t i, const std::string& text, const Units& units,
                bool found) const;
  void WriteRows(Database& database, const std::vector<StoredRow>& rows) const;
  void WriteRow(RowSet& record, const StoredRow& row) const;
  void RescaleRow(StoredRow& row, const Units& to, const std::string& place, Step& step) const;
  [[nodiscard]] std::string Reformatted(CellKind kind, const std::string& text, const Units& to,
                                        bool& limited) const;
  void TakeStored(std::vector<StoredRow> rows, Source source);
  bool TakeStep(const Step& step, const Units& to, Source source);
  ResultCode UploadRowSafely(int row, std::vector<std::string>& controller);
  void frm_ChangeAccepted();
  void ShowInWindow();
  bool DownloadRecords(Database& database, RowSet& records, std::int16_t total);
  // Sends the marked rows, and tells of each one that was acknowledged as it is stored.
  bool SendRows(std::int16_t total, const std::function<void(int row)>& acknowledged);

  TableLayout layout_;
  std::vector<StoredRow> stored_;
  Rows cells_;               // as the window shows them
  std::vector<bool> marks_;  // the same
  Rows uploaded_;
  std::vector<AmplifierRow> copies_;
  std::map<int, std::vector<std::string>> acknowledged_;  // and not stored yet
  std::vector<Doubt> doubts_;                             // in the order of rows and columns
  std::string strDatabasePath_;
  std::unique_ptr<TableWindow> frm_;
  Connections connections_;
};

}  // namespace velmoor
