#include "platform/sqlcipher/Builder.h"

#include <utility>

namespace velmoor::sqlcipher {

Builder::Builder(std::shared_ptr<OpenFile> file, std::function<void(bool)> settle)
    : transaction_(std::make_unique<Transaction>(std::move(file))), settle_(std::move(settle)) {}

Builder::~Builder() {
  if (!transaction_) return;
  inserts_.clear();
  try {
    transaction_->Rollback();
  } catch (const DatabaseError&) {
    // The end of the transaction undoes what can still be undone.
  }
  transaction_.reset();
  settle_(false);
}

Connection& Builder::Engine() const {
  if (!transaction_) {
    throw DatabaseError(DatabaseError::Kind::other, "The database is finished already");
  }
  return transaction_->Engine();
}

void Builder::CreateTable(std::string_view table, const std::vector<ColumnDefinition>& columns) {
  std::string list;
  for (const ColumnDefinition& column : columns) {
    if (!list.empty()) list += ", ";
    list += Quoted(column.name) + (column.integerKey ? " INTEGER" : " TEXT");
  }
  Engine().Execute("CREATE TABLE " + Quoted(table) + " (" + list + ")");
}

void Builder::DropTable(std::string_view table) {
  inserts_.clear();
  Engine().Execute("DROP TABLE IF EXISTS " + Quoted(table));
}

void Builder::Insert(std::string_view table, const std::vector<std::string>& values) {
  Connection& engine = Engine();
  std::unique_ptr<Statement>& statement = inserts_[std::string(table)];
  if (!statement) {
    std::string places;
    for (std::size_t i = 0; i < values.size(); ++i) places += i == 0 ? "?" : ", ?";
    statement = engine.Prepare("INSERT INTO " + Quoted(table) + " VALUES (" + places + ")");
  }
  int parameter = 0;
  for (const std::string& value : values) statement->Bind(parameter++, value);
  statement->Step();
}

void Builder::Finish() {
  inserts_.clear();
  if (!transaction_) return;
  transaction_->Commit();
  transaction_.reset();
  settle_(true);
}

}  // namespace velmoor::sqlcipher
