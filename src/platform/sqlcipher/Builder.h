// A database under construction, new or extended.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Database.h"
#include "platform/sqlcipher/Lease.h"

namespace velmoor::sqlcipher {

class Builder final : public DatabaseBuilder {
 public:
  // Works in one transaction on `file`. `settle` runs with true after the transaction was kept and
  // with false after it was undone.
  Builder(std::shared_ptr<OpenFile> file, std::function<void(bool)> settle);
  Builder(const Builder&) = delete;
  Builder& operator=(const Builder&) = delete;
  ~Builder() override;

  void CreateTable(std::string_view table, const std::vector<ColumnDefinition>& columns) override;
  void DropTable(std::string_view table) override;
  void Insert(std::string_view table, const std::vector<std::string>& values) override;
  void Finish() override;

 private:
  Connection& Engine() const;

  std::unique_ptr<Transaction> transaction_;
  std::function<void(bool)> settle_;
  std::map<std::string, std::unique_ptr<Statement>, std::less<>> inserts_;
};

}  // namespace velmoor::sqlcipher
