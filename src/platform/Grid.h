// Port: the grid of a tool window.
//
// The grid holds no data: it shows a GridSource and tells what the user does. Row 0 is the heading;
// rows and columns count from 0, hidden ones included.
#pragma once

#include <string>
#include <vector>

#include "platform/Controls.h"

namespace velmoor {

// A lamp in the place of a cell's text.
enum class CellLamp { none, off, on };

// What a cell stands out by: a stripe, which its row may share; or a corner, for itself alone.
enum class CellMark { none, stripe, corner };

// What a cell is, beside its text. The adapter chooses how that looks.
struct CellTraits {
  bool editable = false;
  bool locked = false;  // not the user's to change now, and shown so
  bool bold = false;
  CellMark mark = CellMark::none;
  int decimals = -1;    // of a number: how many the column has room for behind the point
  bool button = false;  // bears "..." in the current row, which raises CellButton
  bool action = false;  // its text is the caption of a button, which raises CellButton
  Tone tone = Tone::normal;
  // Choices of a drop-down; empty: a plain text. `comboOpen` lets the user type other texts too.
  std::vector<std::string> comboItems;
  bool comboOpen = false;
  CellLamp lamp = CellLamp::none;
};

// A rectangle of cells, ends included.
struct GridBlock {
  int top = -1;
  int left = -1;
  int bottom = -1;
  int right = -1;
  [[nodiscard]] bool IsEmpty() const { return top < 1 || left < 0; }
  [[nodiscard]] bool IsOneCell() const { return top == bottom && left == right; }
  bool operator==(const GridBlock&) const = default;
};

// The items of a list text joined by "|". A list that begins with "|" lets the user type other
// texts too: its items are those behind that mark and `comboOpen` is set.
void SetComboList(CellTraits& traits, const std::string& list);

class GridSource {
 public:
  virtual ~GridSource() = default;
  [[nodiscard]] virtual int Rows() const = 0;  // with the heading
  [[nodiscard]] virtual int Columns() const = 0;
  [[nodiscard]] virtual std::string Text(int row, int column) const = 0;
  // Takes the text of an edit that ValidateEdit let pass.
  virtual void SetText(int row, int column, const std::string& text) = 0;
  [[nodiscard]] virtual CellTraits Traits(int row, int column) const = 0;
};

// A source whose cells nobody edits.
class ReadOnlyGridSource : public GridSource {
 public:
  void SetText(int /*row*/, int /*column*/, const std::string& /*text*/) final {}
  [[nodiscard]] CellTraits Traits(int /*row*/, int /*column*/) const override { return {}; }
};

// One edit of a cell on its way into the source.
struct GridEdit {
  int row = 0;
  int column = 0;
  std::string text;     // as edited; a handler may replace it
  int comboIndex = -1;  // place of `text` in the cell's drop-down, from 0; -1 where it has none
  bool cancel = false;  // set by a handler: the old text stays, nothing is written
  // Set by a handler beside it: the text stays under edit with this at the cell, until it is taken
  // or given up.
  std::string hint{};
};

class Grid : public Control {
 public:
  // Shows `source`, which must outlive the binding; null shows nothing.
  virtual void Bind(GridSource* source) = 0;
  // Reads texts, traits and the number of rows again. An open edit is given up.
  virtual void Refresh() = 0;
  virtual void RefreshRow(int row) = 0;

  virtual void SetColumnHidden(int column, bool hidden) = 0;
  [[nodiscard]] virtual bool ColumnHidden(int column) const = 0;
  virtual void SetRowHidden(int row, bool hidden) = 0;
  [[nodiscard]] virtual bool RowHidden(int row) const = 0;
  // In characters of average width, and never less than the heading; 0: as wide as the contents.
  // The last visible column takes the room that is left.
  virtual void SetColumnWidth(int column, int characters) = 0;
  // From now on that column takes a share of the room that is left, and the last one none.
  virtual void SetColumnShare(int column) = 0;
  // Keeps room for so many rows, so that the window opens no smaller and no larger than it must.
  virtual void SetRowsInSight(int rows) = 0;
  // Shows in the heading that the rows lie sorted by that column; -1: by none. The sorting itself
  // is the source's affair.
  virtual void SetSortMark(int column, bool descending) = 0;

  [[nodiscard]] virtual int Row() const = 0;  // -1: none
  [[nodiscard]] virtual int Column() const = 0;
  virtual void SetCurrent(int row, int column) = 0;
  // The selected cells; the current cell alone where nothing else is selected.
  [[nodiscard]] virtual GridBlock Selection() const = 0;
  // Selects the block and makes its first cell current.
  virtual void Select(const GridBlock& block) = 0;
  [[nodiscard]] virtual bool IsEditing() const = 0;
  // Opens the current cell for editing where its traits allow it; a locked one raises EditDenied.
  virtual void BeginEdit() = 0;
  // Ends an open edit as leaving the cell does. False: ValidateEdit refused it.
  virtual bool FinishEdit() = 0;

  // An edit is about to be written. Raised for unchanged texts too.
  Event<GridEdit&> ValidateEdit;
  Event<int, int> AfterEdit;          // row, column: the edit was written
  Event<const GridEdit&> ChangeEdit;  // the text under edit changed; nothing is written yet
  Event<> RowColChange;               // the current cell moved
  Event<KeyEvent&> KeyDown;           // in the grid and in an open edit
  Event<int, int> CellButton;         // row, column
  Event<int> HeadingClick;            // column
  Event<int> RowChosen;               // by Enter or a double click, in a cell that nobody edits
  Event<int> EditDenied;              // row: the user has tried to edit a locked cell
  // Row and column under the pointer, 0 being the row of headings; the tip to fill.
  Event<int, int, std::string&> Tip;
};

}  // namespace velmoor
