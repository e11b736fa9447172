// Databases over the SQLCipher engine.
//
// Opening and closing is what the callers do for each operation; inside, a file's connection stays
// open between operations and is used again as long as the very same file lies under the name.
// Nested openings of one file share its connection; the inner one's changes become permanent with
// the outer's. Single thread.
#pragma once

#include <list>
#include <memory>
#include <string>

#include "platform/Database.h"
#include "platform/sqlcipher/KeyRing.h"

namespace velmoor::sqlcipher {

class Connection;

// A connection that is kept, and what its file looked like when it was last used.
struct OpenFile {
  std::string path;
  std::string password;
  std::unique_ptr<Connection> connection;
  std::string fingerprint;
  int leases = 0;
};

class SqlcipherDatabases final : public Databases {
 public:
  SqlcipherDatabases();
  ~SqlcipherDatabases() override;

  std::unique_ptr<Database> Open(const std::string& path, std::string_view password,
                                 DatabaseAccess access) override;
  // The new file takes its name when it is finished; until then an old one stays.
  std::unique_ptr<DatabaseBuilder> Create(const std::string& path,
                                          std::string_view password) override;
  std::unique_ptr<DatabaseBuilder> Extend(const std::string& path,
                                          std::string_view password) override;
  void Release(const std::string& path) override;

 private:
  std::shared_ptr<OpenFile> Obtain(const std::string& path, std::string_view password,
                                   DatabaseAccess access);
  // Opens a file of the written form, or of the engine's version 4 defaults: that one is read from
  // memory, and brought into the written form before anything is written, where it is a working
  // copy. Throws DatabaseError.
  std::unique_ptr<Connection> Connect(const std::string& path, std::string_view password,
                                      DatabaseAccess access);
  std::unique_ptr<Connection> Rewrite(Connection& source, const std::string& path,
                                      std::string_view password);
  void DropSpareFiles();

  KeyRing keys_;
  Salt newFileSalt_;                            // of every file made here: one key opens them all
  std::list<std::shared_ptr<OpenFile>> files_;  // the latest first
};

}  // namespace velmoor::sqlcipher
