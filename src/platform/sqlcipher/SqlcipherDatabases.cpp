#include "platform/sqlcipher/SqlcipherDatabases.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/sqlcipher/Builder.h"
#include "platform/sqlcipher/Engine.h"
#include "platform/sqlcipher/Lease.h"
#include "platform/sqlcipher/SystemFiles.h"

namespace velmoor::sqlcipher {
namespace {

using Kind = DatabaseError::Kind;

// Connections kept beside those in use.
constexpr std::size_t kSpareFiles = 4;
constexpr std::string_view kPlainHeader{"SQLite format 3\0", kSaltBytes};

[[noreturn]] void Fail(Kind kind, const std::string& path, const std::string& reason) {
  throw DatabaseError(kind, path + ": " + reason);
}

[[noreturn]] void FailSystem(const std::string& path, int error) {
  if (error == ENOENT || error == ENOTDIR) Fail(Kind::missing, path, "the file does not exist");
  const bool forbidden = error == EACCES || error == EPERM || error == EROFS;
  Fail(forbidden ? Kind::forbidden : Kind::other, path, std::strerror(error));
}

// The first bytes of the file, which are its salt. Refuses what is no database at all, or too large
// to be one of this program, before a key is derived for it. A pipe is not waited for.
Salt ReadSalt(const std::string& path) {
  FileHead head;
  try {
    head = ReadHead(path, kSaltBytes);
  } catch (const std::system_error& error) {
    FailSystem(path, error.code().value());
  }
  if (head.size > static_cast<std::uintmax_t>(kMostBytes)) {
    Fail(Kind::foreign, path, "the file is larger than any file of this program");
  }
  // The engine would take an empty file for a new database.
  if (head.bytes.empty()) Fail(Kind::damaged, path, "the file is empty");
  if (head.bytes.size() < kSaltBytes) {
    Fail(Kind::damaged, path, "the file is damaged or incomplete");
  }
  if (head.bytes == kPlainHeader) {
    Fail(Kind::password, path, "the file is not protected with this program's password");
  }
  Salt salt{};
  std::ranges::copy(head.bytes, salt.begin());
  return salt;
}

void CopyTables(Connection& source, Builder& target) {
  for (const TableDefinition& table : source.Tables()) {
    target.CreateTable(table.name, table.columns);
    const auto rows = source.Prepare("SELECT * FROM " + Quoted(table.name) + " ORDER BY rowid");
    while (rows->Step()) {
      std::vector<std::string> values;
      for (std::size_t i = 0; i < table.columns.size(); ++i)
        values.push_back(rows->Text(static_cast<int>(i)));
      target.Insert(table.name, values);
    }
  }
}

void RemoveWithJournal(const std::string& path) {
  std::error_code ignored;
  std::filesystem::remove(path, ignored);
  std::filesystem::remove(path + "-journal", ignored);
}

}  // namespace

SqlcipherDatabases::SqlcipherDatabases() : newFileSalt_(KeyRing::RandomSalt()) {
  LeaveNoMemoryImage();
  WriteOwnFilesAlone();
}
SqlcipherDatabases::~SqlcipherDatabases() = default;

std::shared_ptr<OpenFile> SqlcipherDatabases::Obtain(const std::string& path,
                                                     std::string_view password,
                                                     DatabaseAccess access) {
  const auto kept = std::find_if(files_.begin(), files_.end(),
                                 [&](const auto& file) { return file->path == path; });
  if (kept != files_.end()) {
    std::shared_ptr<OpenFile> file = *kept;
    const bool same =
        file->leases > 0 || (!file->fingerprint.empty() && file->fingerprint == Fingerprint(path));
    const bool enough = access == DatabaseAccess::readOnly || file->connection->Writable();
    files_.erase(kept);
    if (same && enough && file->password == password) {
      files_.push_front(file);
      return file;
    }
  }
  auto file = std::make_shared<OpenFile>();
  file->path = path;
  file->password = password;
  file->connection = Connect(path, password, access);
  if (access == DatabaseAccess::readWrite && !file->connection->Writable()) {
    Fail(Kind::forbidden, path, "the file cannot be written");
  }
  files_.push_front(file);
  DropSpareFiles();
  return file;
}

std::unique_ptr<Connection> SqlcipherDatabases::Connect(const std::string& path,
                                                        std::string_view password,
                                                        DatabaseAccess access) {
  const Salt salt = ReadSalt(path);
  const auto connect = [&] {
    return std::make_unique<Connection>(path, OpenMode::existing, keys_.KeyForFile(password, salt));
  };
  try {
    return connect();
  } catch (const DatabaseError& error) {
    if (error.kind() != Kind::password) throw;
    const std::optional<FileImage> image = UnsealVersion4(path, password, keys_);
    if (!image) throw;
    auto source = std::make_unique<Connection>(path, *image);
    if (access == DatabaseAccess::readOnly) return source;
    return Rewrite(*source, path, password);
  }
}

std::unique_ptr<Connection> SqlcipherDatabases::Rewrite(Connection& source, const std::string& path,
                                                        std::string_view password) {
  if (!IsDisposable(path)) {
    Fail(Kind::forbidden, path, "the file has another form; only a copy of it is rewritten");
  }
  // In place, since whoever holds the working copy holds this very file.
  try {
    EmptyFile(path);
  } catch (const std::system_error& error) {
    FailSystem(path, error.code().value());
  }
  auto file = std::make_shared<OpenFile>();
  file->path = path;
  file->connection = std::make_unique<Connection>(path, OpenMode::create,
                                                  keys_.KeyForNewFile(password, newFileSalt_));
  Builder builder(file, [](bool) {});
  CopyTables(source, builder);
  builder.Finish();
  // Opened like any other file, for what is in it is not ours.
  file->connection.reset();
  return std::make_unique<Connection>(path, OpenMode::existing,
                                      keys_.KeyForFile(password, newFileSalt_));
}

void SqlcipherDatabases::DropSpareFiles() {
  std::size_t spare = 0;
  std::erase_if(files_,
                [&](const auto& file) { return file->leases == 0 && ++spare > kSpareFiles; });
}

std::unique_ptr<Database> SqlcipherDatabases::Open(const std::string& path,
                                                   std::string_view password,
                                                   DatabaseAccess access) {
  return std::make_unique<Lease>(Obtain(path, password, access), access);
}

std::unique_ptr<DatabaseBuilder> SqlcipherDatabases::Create(const std::string& path,
                                                            std::string_view password) {
  const std::string unfinished = path + ".unfinished";
  RemoveWithJournal(unfinished);
  auto file = std::make_shared<OpenFile>();
  file->path = unfinished;
  file->connection = std::make_unique<Connection>(unfinished, OpenMode::create,
                                                  keys_.KeyForNewFile(password, newFileSalt_));
  const auto settle = [this, unfinished, path](bool kept) {
    Release(path);
    std::error_code error;
    if (kept) std::filesystem::rename(unfinished, path, error);
    RemoveWithJournal(unfinished);
    if (error) FailSystem(path, error.default_error_condition().value());
  };
  return std::make_unique<Builder>(std::move(file), settle);
}

std::unique_ptr<DatabaseBuilder> SqlcipherDatabases::Extend(const std::string& path,
                                                            std::string_view password) {
  return std::make_unique<Builder>(Obtain(path, password, DatabaseAccess::readWrite), [](bool) {});
}

void SqlcipherDatabases::Release(const std::string& path) {
  std::erase_if(files_, [&](const auto& file) { return file->path == path; });
}

}  // namespace velmoor::sqlcipher
