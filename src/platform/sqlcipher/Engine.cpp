#include "platform/sqlcipher/Engine.h"

#include <sqlcipher/sqlite3.h>

#include <cstring>

#include "platform/sqlcipher/PlainTable.h"
#include "platform/sqlcipher/WrittenForm.h"

namespace velmoor::sqlcipher {
namespace {

using Kind = DatabaseError::Kind;

// How long a file that another process writes is waited for.
constexpr int kBusyMilliseconds = 500;
// The steps of the engine's machine between two looks at it, and the looks that a statement has.
// The largest statement of this program takes a hundredth of them.
constexpr int kStepsBetweenLooks = 10000;
constexpr int kMostLooks = 1000;

Kind KindOf(int code, int systemError, std::string_view message) {
  switch (code) {
    case SQLITE_NOTADB:
      return Kind::password;
    case SQLITE_CORRUPT:
      return Kind::damaged;
    case SQLITE_AUTH:
    case SQLITE_INTERRUPT:
    case SQLITE_TOOBIG:
      return Kind::foreign;
    case SQLITE_FULL:
      return Kind::full;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Kind::busy;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:  // the journal, since a missing file does not come this far
      return Kind::forbidden;
    case SQLITE_IOERR:
      return MeansFull(systemError) ? Kind::full : Kind::other;
    default:
      if (message.starts_with("not authorized")) return Kind::foreign;
      return message.starts_with("no such table") || message.starts_with("no such column")
                 ? Kind::schema
                 : Kind::other;
  }
}

std::string Reason(Kind kind, int systemError, std::string_view message) {
  switch (kind) {
    case Kind::missing:
      return "the file does not exist";
    case Kind::forbidden:
      return "the file or its folder cannot be written";
    case Kind::password:
      return "the file has another password or is no database of this program";
    case Kind::damaged:
      return "the file is damaged or incomplete";
    case Kind::full:
      return "the disk is full";
    case Kind::busy:
      return "another program uses the file";
    case Kind::foreign:
      return "the file holds what no file of this program does (" + std::string(message) + ")";
    case Kind::schema:
    case Kind::other:
      break;
  }
  std::string text(message);
  if (kind == Kind::other && systemError != 0) {
    text += std::string(" (") + SystemReason(systemError) + ")";
  }
  return text;
}

DatabaseError Failure(sqlite3* db, const std::string& path, int code) {
  const std::string message = db == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(db);
  const int systemError = db == nullptr ? 0 : sqlite3_system_errno(db);
  const Kind kind = KindOf(code & 0xFF, systemError, message);
  return {kind, path + ": " + Reason(kind, systemError, message)};
}

[[noreturn]] void Fail(sqlite3* db, const std::string& path, int code) {
  throw Failure(db, path, code);
}

// What this program's own statements do, to the file's own tables. Functions, views, triggers,
// indexes, virtual tables, other files and recursion are none of it.
int Authorize(void* /*unused*/, int action, const char* first, const char* /*second*/,
              const char* database, const char* within) {
  const bool ours =
      within == nullptr && (database == nullptr || std::strcmp(database, "main") == 0);
  if (!ours) return SQLITE_DENY;
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
    case SQLITE_CREATE_TABLE:
    case SQLITE_DROP_TABLE:
    case SQLITE_TRANSACTION:
    case SQLITE_SAVEPOINT:
      return SQLITE_OK;
    case SQLITE_PRAGMA:
      return std::strcmp(first, "quick_check") == 0 ? SQLITE_OK : SQLITE_DENY;
    default:
      return SQLITE_DENY;
  }
}

// Not 0: the statement is to end.
int Look(void* effort) {
  return --static_cast<Effort*>(effort)->left < 0 ? 1 : 0;
}

// A name out of a foreign file, fit for a message.
std::string Shown(std::string name) {
  constexpr std::size_t kMost = 64;
  if (name.size() > kMost) name = name.substr(0, kMost) + "...";
  for (char& c : name) {
    if (c < ' ' || c > '~') c = '?';
  }
  return '"' + name + '"';
}

}  // namespace

bool IsDisposable(const std::string& path) {
  return path.ends_with("tmp") || path.ends_with("tempIdeInfo.mdb");
}

Statement::Statement(sqlite3* db, const std::string& path, Effort& effort, const std::string& sql)
    : db_(db), path_(path), effort_(effort) {
  effort_.left = kMostLooks;
  const int code =
      sqlite3_prepare_v2(db, sql.data(), static_cast<int>(sql.size()), &statement_, nullptr);
  if (code != SQLITE_OK) Fail(db, path, code);
}

Statement::~Statement() {
  sqlite3_finalize(statement_);
}

void Statement::Bind(int parameter, std::string_view text) {
  const char* const data = text.data() == nullptr ? "" : text.data();
  const int code = sqlite3_bind_text(statement_, parameter + 1, data, static_cast<int>(text.size()),
                                     SQLITE_TRANSIENT);
  if (code != SQLITE_OK) Fail(db_, path_, code);
}

void Statement::Bind(int parameter, std::int64_t number) {
  const int code = sqlite3_bind_int64(statement_, parameter + 1, number);
  if (code != SQLITE_OK) Fail(db_, path_, code);
}

bool Statement::Step() {
  if (sqlite3_stmt_busy(statement_) == 0) effort_.left = kMostLooks;
  const int code = sqlite3_step(statement_);
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) {
    Reset();
    return false;
  }
  // The reset loses the words of the failure, so they are taken first.
  const DatabaseError failure = Failure(db_, path_, code);
  Reset();
  throw failure;
}

void Statement::Reset() {
  sqlite3_reset(statement_);
}

std::vector<std::string> Statement::ColumnNames() const {
  std::vector<std::string> names;
  const int count = sqlite3_column_count(statement_);
  names.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) names.emplace_back(sqlite3_column_name(statement_, i));
  return names;
}

std::string Statement::Text(int column) const {
  const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

std::int64_t Statement::Number(int column) const {
  return sqlite3_column_int64(statement_, column);
}

Connection::Connection(const std::string& path, OpenMode mode, const std::string& key)
    : path_(path) {
  // Without the flag to create the engine never makes a file, so a missing project stays missing.
  // A file that cannot be written is opened for reading by the engine itself.
  const int create = mode == OpenMode::create ? SQLITE_OPEN_CREATE : 0;
  const int code = sqlite3_open_v2(path.c_str(), &db_,
                                   SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_READWRITE | create, nullptr);
  try {
    if (code != SQLITE_OK) Fail(db_, path_, code);
    Configure(key);
    if (mode == OpenMode::existing) {
      Confine();
      Prove();
    }
  } catch (...) {
    sqlite3_close_v2(db_);
    throw;
  }
}

Connection::Connection(const std::string& path, const FileImage& image) : path_(path) {
  // Immutable: the engine then looks for no journal beside it, nor for the file's name again.
  const std::string name = "file:" + image.Path() + "?mode=ro&immutable=1";
  const int code = sqlite3_open_v2(
      name.c_str(), &db_, SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
  try {
    if (code != SQLITE_OK) Fail(db_, path_, code);
    Execute("PRAGMA temp_store=MEMORY");
    Confine();
    Prove();
  } catch (...) {
    sqlite3_close_v2(db_);
    throw;
  }
}

Connection::~Connection() {
  sqlite3_close_v2(db_);
}

bool Connection::Writable() const {
  return sqlite3_db_readonly(db_, "main") == 0;
}

void Connection::Configure(const std::string& key) {
  sqlite3_busy_timeout(db_, kBusyMilliseconds);
  Execute("PRAGMA key=\"" + key + "\"");
  // What goes wrong is told by its code alone, never by the engine on the terminal. The key sets
  // the level anew, so it comes after it.
  Execute("PRAGMA cipher_log_level=NONE");
  for (const char* const setting : kWrittenForm) Execute(setting);
  // A project is one file that is copied as it is: never a write-ahead log beside it.
  if (Writable()) Execute("PRAGMA journal_mode=DELETE");
  Execute(IsDisposable(path_) ? "PRAGMA synchronous=OFF" : "PRAGMA synchronous=FULL");
  Execute("PRAGMA temp_store=MEMORY");
}

void Connection::Confine() {
  Execute("PRAGMA cell_size_check=ON");
  Execute("PRAGMA max_page_count=" + std::to_string(kMostBytes / kPageBytes));
  sqlite3_limit(db_, SQLITE_LIMIT_LENGTH, kMostCellBytes);
  sqlite3_limit(db_, SQLITE_LIMIT_ATTACHED, 0);
  sqlite3_db_config(db_, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_progress_handler(db_, kStepsBetweenLooks, Look, effort_.get());
  sqlite3_set_authorizer(db_, Authorize, nullptr);
}

std::vector<TableDefinition> Connection::Tables() const {
  std::vector<TableDefinition> tables;
  const auto objects = Prepare("SELECT type, name, sql FROM sqlite_master ORDER BY rowid");
  while (objects->Step()) {
    const std::string name = objects->Text(1);
    auto table = ParsePlainTable(objects->Text(2));
    if (objects->Text(0) != "table" || !table || table->name != name) {
      throw DatabaseError(Kind::foreign,
                          path_ + ": the file holds " + Shown(name) + ", which is no plain table");
    }
    tables.push_back(std::move(*table));
  }
  return tables;
}

void Connection::Prove() const {
  // Before anything else is read: the check below would follow what the file tells it to.
  (void)Tables();
  // Opening and keying always succeed; only a read tells a wrong key or a broken file.
  const auto check = Prepare("PRAGMA quick_check(1)");
  if (check->Step() && check->Text(0) != "ok") Fail(nullptr, path_, SQLITE_CORRUPT);
}

void Connection::Execute(const std::string& sql) {
  const auto statement = Prepare(sql);
  while (statement->Step()) {
  }
}

std::unique_ptr<Statement> Connection::Prepare(const std::string& sql) const {
  return std::make_unique<Statement>(db_, path_, *effort_, sql);
}

std::int64_t Connection::LastRowId() const {
  return sqlite3_last_insert_rowid(db_);
}

int Connection::Changes() const {
  return sqlite3_changes(db_);
}

bool Connection::InTransaction() const {
  return sqlite3_get_autocommit(db_) == 0;
}

std::string Quoted(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

std::vector<std::string> EngineVersions() {
  const Connection scratch(":memory:", OpenMode::create, "x'" + std::string(64, '0') + "'");
  const auto ask = [&scratch](const char* question) {
    const std::unique_ptr<Statement> statement = scratch.Prepare(question);
    return statement->Step() ? statement->Text(0) : std::string();
  };
  return {"SQLCipher " + ask("PRAGMA cipher_version"),
          std::string("SQLite ") + sqlite3_libversion(), ask("PRAGMA cipher_provider_version")};
}

}  // namespace velmoor::sqlcipher
