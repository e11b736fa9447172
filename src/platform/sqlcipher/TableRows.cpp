#include "platform/sqlcipher/TableRows.h"

#include <algorithm>

#include "platform/sqlcipher/WrittenForm.h"

namespace velmoor::sqlcipher {

TableRows::TableRows(Connection& engine, std::string_view table, std::string_view orderBy,
                     DatabaseAccess access)
    : engine_(engine), table_(table), access_(access) {
  Load(orderBy);
}

void TableRows::Load(std::string_view orderBy) {
  std::string sql = "SELECT rowid, * FROM " + Quoted(table_) + " ORDER BY ";
  if (!orderBy.empty()) sql += "CAST(" + Quoted(table_) + "." + Quoted(orderBy) + " AS NUMERIC), ";
  const auto statement = engine_.Prepare(sql + "rowid");
  columns_ = statement->ColumnNames();
  columns_.erase(columns_.begin());
  const int count = static_cast<int>(columns_.size());
  while (statement->Step()) {
    if (rows_.size() == kMostRows) {
      throw DatabaseError(
          DatabaseError::Kind::foreign,
          engine_.Path() + ": " + table_ + " has more records than any file of this program");
    }
    Row& row = rows_.emplace_back();
    row.id = statement->Number(0);
    row.fields.reserve(columns_.size());
    for (int i = 0; i < count; ++i) row.fields.push_back(statement->Text(i + 1));
  }
}

void TableRows::MoveFirst() {
  current_ = 0;
  Begin(Pending::nothing);
}

void TableRows::MoveNext() {
  if (!AtEnd()) ++current_;
  Begin(Pending::nothing);
}

bool TableRows::FindFirst(std::string_view column, std::string_view value) {
  const FirstRows& first = IndexOf(ColumnIndex(column));
  const auto found = first.find(std::string(value));
  current_ = found == first.end() ? rows_.size() : found->second;
  Begin(Pending::nothing);
  return !AtEnd();
}

std::string TableRows::Text(std::string_view column) const {
  const std::size_t index = ColumnIndex(column);
  if (AtEnd()) Misuse("no current row");
  return rows_[current_].fields[index];
}

void TableRows::Edit() {
  if (AtEnd()) Misuse("no current row");
  Begin(Pending::edit);
}

void TableRows::AddNew() {
  Begin(Pending::add);
}

void TableRows::Set(std::string_view column, std::string_view value) {
  if (pending_ == Pending::nothing) Misuse("a field was set outside an edit");
  changes_[ColumnIndex(column)] = value;
}

void TableRows::Update() {
  if (pending_ == Pending::nothing) Misuse("an update without an edit");
  if (access_ == DatabaseAccess::readOnly || !engine_.Writable()) {
    throw DatabaseError(DatabaseError::Kind::forbidden,
                        engine_.Path() + ": the file is open for reading only");
  }
  if (pending_ == Pending::edit) {
    WriteEdit();
  } else {
    WriteNew();
  }
  for (const auto& [column, text] : changes_) indexes_.erase(column);
  Begin(Pending::nothing);
}

void TableRows::WriteEdit() {
  if (changes_.empty()) return;
  std::string assignments;
  for (const auto& [column, text] : changes_) {
    assignments += (assignments.empty() ? "" : ", ") + Quoted(columns_[column]) + "=?";
  }
  Row& row = rows_[current_];
  Statement& statement =
      Prepared("UPDATE " + Quoted(table_) + " SET " + assignments + " WHERE rowid=?");
  int parameter = 0;
  for (const auto& [column, text] : changes_) statement.Bind(parameter++, text);
  statement.Bind(parameter, row.id);
  ChangeOne(statement);
  for (const auto& [column, text] : changes_) row.fields[column] = text;
}

void TableRows::WriteNew() {
  std::string names;
  std::string places;
  for (const std::string& column : columns_) {
    names += (names.empty() ? "" : ", ") + Quoted(column);
    places += places.empty() ? "?" : ", ?";
  }
  Row row{0, std::vector<std::string>(columns_.size())};
  for (const auto& [column, text] : changes_) row.fields[column] = text;
  Statement& statement =
      Prepared("INSERT INTO " + Quoted(table_) + " (" + names + ") VALUES (" + places + ")");
  int parameter = 0;
  for (const std::string& field : row.fields) statement.Bind(parameter++, field);
  ChangeOne(statement);
  row.id = engine_.LastRowId();
  // A set that stands at its end stays there.
  if (AtEnd()) ++current_;
  rows_.push_back(std::move(row));
  indexes_.clear();
}

void TableRows::Begin(Pending pending) {
  pending_ = pending;
  changes_.clear();
}

std::size_t TableRows::ColumnIndex(std::string_view column) const {
  const auto found = std::find(columns_.begin(), columns_.end(), column);
  if (found == columns_.end()) {
    throw DatabaseError(
        DatabaseError::Kind::schema,
        engine_.Path() + ": " + table_ + " has no column \"" + std::string(column) + "\"");
  }
  return static_cast<std::size_t>(found - columns_.begin());
}

const TableRows::FirstRows& TableRows::IndexOf(std::size_t column) {
  const auto [entry, fresh] = indexes_.try_emplace(column);
  if (fresh) {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      entry->second.try_emplace(rows_[i].fields[column], i);
    }
  }
  return entry->second;
}

void TableRows::ChangeOne(Statement& statement) {
  statement.Step();
  if (engine_.Changes() == 1) return;
  throw DatabaseError(DatabaseError::Kind::other,
                      engine_.Path() + ": a record of " + table_ + " was not stored");
}

Statement& TableRows::Prepared(const std::string& sql) {
  std::unique_ptr<Statement>& statement = statements_[sql];
  if (!statement) statement = engine_.Prepare(sql);
  return *statement;
}

void TableRows::Misuse(const std::string& what) const {
  throw DatabaseError(DatabaseError::Kind::other, engine_.Path() + ": " + table_ + ": " + what);
}

}  // namespace velmoor::sqlcipher
