// The database engine behind two small classes. Engine.cpp alone sees the engine's own header.
//
// Every failure is a DatabaseError whose text names the file and the reason.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Database.h"
#include "platform/sqlcipher/Version4File.h"

struct sqlite3;
struct sqlite3_stmt;

namespace velmoor::sqlcipher {

// A file to be made holds nothing of others, so its connection does whatever it is asked for.
enum class OpenMode { existing, create };

// How much work a statement may still do. A file's contents can make the engine work without an
// end.
struct Effort {
  int left = 0;
};

// A prepared statement. Dies before its connection.
class Statement {
 public:
  Statement(sqlite3* db, const std::string& path, Effort& effort, const std::string& sql);
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  // Parameters and columns are counted from 0.
  void Bind(int parameter, std::string_view text);
  void Bind(int parameter, std::int64_t number);
  // Goes to the next row of the result. False: there is none, and the statement can run again.
  // Throws DatabaseError also where it does more work than any statement of this program.
  bool Step();
  void Reset();
  [[nodiscard]] std::vector<std::string> ColumnNames() const;
  [[nodiscard]] std::string Text(int column) const;  // a null gives an empty text
  [[nodiscard]] std::int64_t Number(int column) const;

 private:
  sqlite3* db_;
  const std::string& path_;
  Effort& effort_;
  sqlite3_stmt* statement_ = nullptr;
};

// One open, keyed file.
class Connection {
 public:
  // `key` is the engine's raw form, "x'...'". An existing file is read through once, which proves
  // the key, that it holds plain tables alone and that no page of it is broken; from then on the
  // engine does what this program's own statements ask for, and refuses the rest.
  Connection(const std::string& path, OpenMode mode, const std::string& key);
  // A plain database for reading only, which needs its file no longer; `path` is what failures
  // name.
  Connection(const std::string& path, const FileImage& image);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] bool Writable() const;
  void Execute(const std::string& sql);
  [[nodiscard]] std::unique_ptr<Statement> Prepare(const std::string& sql) const;
  [[nodiscard]] std::int64_t LastRowId() const;
  // How many records the latest statement that writes has changed.
  [[nodiscard]] int Changes() const;
  // What the file holds. Throws DatabaseError for anything but a plain table.
  [[nodiscard]] std::vector<TableDefinition> Tables() const;
  [[nodiscard]] bool InTransaction() const;

 private:
  void Configure(const std::string& key);
  void Confine();
  void Prove() const;

  std::string path_;
  sqlite3* db_ = nullptr;
  // At a place of its own, which the engine is told.
  std::unique_ptr<Effort> effort_ = std::make_unique<Effort>();
};

// A working copy is laid anew at each opening, so a power cut may take it; nothing waits for the
// disk on its account. Every other file survives.
[[nodiscard]] bool IsDisposable(const std::string& path);

// The engine's versions and its cipher library's, a name and a version each, as linked at run time.
[[nodiscard]] std::vector<std::string> EngineVersions();

// `name` as an identifier of a statement's text.
[[nodiscard]] std::string Quoted(std::string_view name);

}  // namespace velmoor::sqlcipher
