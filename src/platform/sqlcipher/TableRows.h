// The rows of one table, loaded at once and written back one at a time.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/Database.h"
#include "platform/sqlcipher/Engine.h"

namespace velmoor::sqlcipher {

// Dies before the database that opened it.
class TableRows final : public RowSet {
 public:
  TableRows(Connection& engine, std::string_view table, std::string_view orderBy,
            DatabaseAccess access);

  [[nodiscard]] bool AtEnd() const override { return current_ >= rows_.size(); }
  void MoveFirst() override;
  void MoveNext() override;
  bool FindFirst(std::string_view column, std::string_view value) override;
  [[nodiscard]] std::string Text(std::string_view column) const override;
  void Edit() override;
  void AddNew() override;
  void Set(std::string_view column, std::string_view value) override;
  // A new row comes last; the set stays where it stands.
  void Update() override;

 private:
  enum class Pending { nothing, edit, add };
  struct Row {
    std::int64_t id = 0;
    std::vector<std::string> fields;
  };
  using FirstRows = std::unordered_map<std::string, std::size_t>;

  void Load(std::string_view orderBy);
  [[nodiscard]] std::size_t ColumnIndex(std::string_view column) const;
  const FirstRows& IndexOf(std::size_t column);
  void Begin(Pending pending);
  void WriteEdit();
  void WriteNew();
  Statement& Prepared(const std::string& sql);
  // Runs a statement that is to change one record, and no other.
  void ChangeOne(Statement& statement);
  [[noreturn]] void Misuse(const std::string& what) const;

  Connection& engine_;
  std::string table_;
  DatabaseAccess access_;
  std::vector<std::string> columns_;
  std::vector<Row> rows_;
  std::size_t current_ = 0;
  Pending pending_ = Pending::nothing;
  std::map<std::size_t, std::string> changes_;  // by column
  std::map<std::size_t, FirstRows> indexes_;    // by column, made at the first search
  std::map<std::string, std::unique_ptr<Statement>> statements_;
};

}  // namespace velmoor::sqlcipher
