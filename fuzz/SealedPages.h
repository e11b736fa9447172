// The pages of a sealed file, opened and sealed again with its key: what is changed between is
// proved as if this program had written it.
#pragma once

#include <array>
#include <string>

#include "platform/sqlcipher/KeyRing.h"
#include "platform/sqlcipher/WrittenForm.h"

namespace velmoor::fuzz {

class SealedPages {
 public:
  SealedPages(std::string bytes, const sqlcipher::Key& key);

  [[nodiscard]] std::size_t Count() const { return bytes_.size() / sqlcipher::kPageBytes; }
  // The contents of a page, counted from 0; of the first one those behind the salt.
  [[nodiscard]] std::string Plain(std::size_t page) const;
  // The same, changed in place.
  void Seal(std::size_t page, const std::string& plain);
  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

 private:
  [[nodiscard]] static std::size_t Lead(std::size_t page);

  std::string bytes_;
  sqlcipher::Key key_;
  sqlcipher::Key codeKey_{};
};

}  // namespace velmoor::fuzz
