// What a caller holds between opening and closing: one transaction on a connection that is kept.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Database.h"
#include "platform/sqlcipher/Engine.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"

namespace velmoor::sqlcipher {

// The file's beginning, its size and its place: changes whenever the file is written or replaced,
// since the engine puts fresh random bytes into the first page with every commit. Empty where the
// file cannot be read. Not to be asked while a transaction runs: closing a second descriptor would
// drop the engine's locks.
[[nodiscard]] std::string Fingerprint(const std::string& path);

// A transaction from its making to its end. Inner ones of the same file nest.
class Transaction {
 public:
  explicit Transaction(std::shared_ptr<OpenFile> file);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  // Keeps what was written; when that fails, undoes it.
  ~Transaction();

  [[nodiscard]] Connection& Engine() const { return *file_->connection; }
  void Commit();
  void Rollback();

 private:
  void Begin();
  void Abandon();
  bool Try(const std::string& sql);

  std::shared_ptr<OpenFile> file_;
  std::string name_;
};

class Lease final : public Database {
 public:
  Lease(std::shared_ptr<OpenFile> file, DatabaseAccess access);

  std::unique_ptr<RowSet> OpenTable(std::string_view table, std::string_view orderBy) override;
  [[nodiscard]] std::vector<TableDefinition> Tables() override;
  void Commit() override;
  void Rollback() override;

 private:
  Transaction transaction_;
  DatabaseAccess access_;
};

}  // namespace velmoor::sqlcipher
