#include "platform/sqlcipher/Lease.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <utility>

#include "platform/sqlcipher/TableRows.h"

namespace velmoor::sqlcipher {

std::string Fingerprint(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return {};
  struct stat status {};
  std::array<char, kPageBytes> page{};
  const bool known = ::fstat(file, &status) == 0;
  const ssize_t got = ::pread(file, page.data(), page.size(), 0);
  ::close(file);
  if (!known || got <= 0) return {};
  return std::to_string(status.st_dev) + "/" + std::to_string(status.st_ino) + "/" +
         std::to_string(status.st_size) + "/" +
         std::string(page.data(), static_cast<std::size_t>(got));
}

Transaction::Transaction(std::shared_ptr<OpenFile> file)
    : file_(std::move(file)), name_("lease" + std::to_string(file_->leases)) {
  Begin();
  ++file_->leases;
}

Transaction::~Transaction() {
  if (!Try("RELEASE " + name_)) Abandon();
  if (--file_->leases == 0) file_->fingerprint = Fingerprint(file_->path);
}

void Transaction::Begin() {
  Engine().Execute("SAVEPOINT " + name_);
}

void Transaction::Commit() {
  Engine().Execute("RELEASE " + name_);
  Begin();
}

void Transaction::Rollback() {
  // A failure such as a full disk may have ended the transaction already.
  if (Engine().InTransaction()) {
    Engine().Execute("ROLLBACK TO " + name_);
  } else {
    Begin();
  }
}

bool Transaction::Try(const std::string& sql) {
  try {
    Engine().Execute(sql);
    return true;
  } catch (const DatabaseError&) {
    return false;
  }
}

void Transaction::Abandon() {
  if (!Engine().InTransaction()) return;
  if (Try("ROLLBACK TO " + name_) && Try("RELEASE " + name_)) return;
  Try("ROLLBACK");
}

Lease::Lease(std::shared_ptr<OpenFile> file, DatabaseAccess access)
    : transaction_(std::move(file)), access_(access) {}

std::unique_ptr<RowSet> Lease::OpenTable(std::string_view table, std::string_view orderBy) {
  return std::make_unique<TableRows>(transaction_.Engine(), table, orderBy, access_);
}

std::vector<TableDefinition> Lease::Tables() {
  return transaction_.Engine().Tables();
}

void Lease::Commit() {
  transaction_.Commit();
}

void Lease::Rollback() {
  transaction_.Rollback();
}

}  // namespace velmoor::sqlcipher
