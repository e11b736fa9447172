// Port: password-protected single-file databases.
//
// A Database is lent for one operation and closed at its end; everything written through it is one
// transaction, committed when the lease ends, so rows written before a failure stay written unless
// Rollback was called. The end itself cannot report a failure such as a full disk: a writer calls
// Commit when it is done. All values are text; a null reads as empty.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

class DatabaseError : public std::runtime_error {
 public:
  enum class Kind {
    missing,    // no such file
    forbidden,  // the system refuses access
    password,   // another password, or not a database of this kind
    damaged,    // the file's structure is broken or cut short
    schema,     // no such table or column
    foreign,    // it holds what no file of this program does
    full,       // the disk is full
    busy,       // another process holds the file
    other
  };
  DatabaseError(Kind kind, const std::string& text) : std::runtime_error(text), kind_(kind) {}
  [[nodiscard]] Kind kind() const { return kind_; }

 private:
  Kind kind_;
};

// The rows of one table, in a fixed order, walked forward and edited one at a time.
class RowSet {
 public:
  virtual ~RowSet() = default;

  [[nodiscard]] virtual bool AtEnd() const = 0;
  virtual void MoveFirst() = 0;
  virtual void MoveNext() = 0;
  // Goes to the first row, from the top, whose `column` equals `value` exactly. False: no such row,
  // and the set stands at its end.
  virtual bool FindFirst(std::string_view column, std::string_view value) = 0;

  // The current row's field. Throws DatabaseError(schema) for an unknown column.
  [[nodiscard]] virtual std::string Text(std::string_view column) const = 0;

  // Edit or AddNew, any number of Set, then Update; a move without Update drops the edit.
  virtual void Edit() = 0;
  virtual void AddNew() = 0;
  virtual void Set(std::string_view column, std::string_view value) = 0;
  virtual void Update() = 0;
};

struct ColumnDefinition {
  std::string name;
  bool integerKey = false;  // a numeric key column; every other column is text

  bool operator==(const ColumnDefinition&) const = default;
};

struct TableDefinition {
  std::string name;
  std::vector<ColumnDefinition> columns;

  bool operator==(const TableDefinition&) const = default;
};

class Database {
 public:
  // Commits and closes.
  virtual ~Database() = default;
  // `orderBy` names a column; rows come in its order, numbers as numbers. Empty: the order in which
  // the rows were made.
  virtual std::unique_ptr<RowSet> OpenTable(std::string_view table,
                                            std::string_view orderBy = {}) = 0;
  // Everything that the file holds, in the order in which it was made.
  [[nodiscard]] virtual std::vector<TableDefinition> Tables() = 0;
  // Makes everything so far permanent and begins a new transaction.
  virtual void Commit() = 0;
  // Undoes everything since the opening or the last Commit.
  virtual void Rollback() = 0;
};

// A database under construction: the catalogue compiler and the working copy of the catalogue.
class DatabaseBuilder {
 public:
  virtual ~DatabaseBuilder() = default;
  virtual void CreateTable(std::string_view table,
                           const std::vector<ColumnDefinition>& columns) = 0;
  virtual void DropTable(std::string_view table) = 0;
  // One row; values in the order of the columns. Empty text is stored as empty text, not null.
  virtual void Insert(std::string_view table, const std::vector<std::string>& values) = 0;
  // Commits and closes. Without it the destructor undoes everything.
  virtual void Finish() = 0;
};

enum class DatabaseAccess { readOnly, readWrite };

class Databases {
 public:
  virtual ~Databases() = default;
  // Opens an existing file. Throws DatabaseError, also for a file that holds anything but plain
  // tables or is larger than any file of this program; nothing of it was executed then.
  virtual std::unique_ptr<Database> Open(const std::string& path, std::string_view password,
                                         DatabaseAccess access) = 0;
  // Makes a new file (an existing one is replaced), or extends an existing one.
  virtual std::unique_ptr<DatabaseBuilder> Create(const std::string& path,
                                                  std::string_view password) = 0;
  virtual std::unique_ptr<DatabaseBuilder> Extend(const std::string& path,
                                                  std::string_view password) = 0;
  // Lets go of anything kept open for `path`, so that the file can be copied or moved.
  virtual void Release(const std::string& path) = 0;
};

}  // namespace velmoor
