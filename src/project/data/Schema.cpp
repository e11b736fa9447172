#include "project/data/Schema.h"

#include "platform/World.h"

namespace velmoor {

std::unique_ptr<Database> OpenForReading(const std::string& path) {
  return world().databases->Open(path, schema::kPassword, DatabaseAccess::readOnly);
}

std::unique_ptr<Database> OpenForWriting(const std::string& path) {
  return world().databases->Open(path, schema::kPassword, DatabaseAccess::readWrite);
}

}  // namespace velmoor
