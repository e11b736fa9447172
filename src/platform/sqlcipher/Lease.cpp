#include "platform/sqlcipher/Lease.h"

#include <system_error>
#include <utility>

#include "platform/sqlcipher/SystemFiles.h"
#include "platform/sqlcipher/TableRows.h"

namespace velmoor::sqlcipher {

std::string Fingerprint(const std::string& path) {
  try {
    const FileHead head = ReadHead(path, kPageBytes);
    if (head.bytes.empty()) return {};
    return head.identity + "/" + std::to_string(head.size) + "/" + head.bytes;
  } catch (const std::system_error&) {
    return {};
  }
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
