// The keys of the files that this process opened.
//
// A key is derived from the password and the file's salt at a price of tens of milliseconds, once;
// copies of a file share its salt and so its key.
#pragma once

#include <array>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <tuple>

#include "platform/sqlcipher/WrittenForm.h"

namespace velmoor::sqlcipher {

inline constexpr std::size_t kSaltBytes = 16;
using Salt = std::array<unsigned char, kSaltBytes>;

inline constexpr std::size_t kKeyBytes = 32;
using Key = std::array<unsigned char, kKeyBytes>;

// PBKDF2. Throws DatabaseError when the cryptographic library fails.
[[nodiscard]] Key DeriveKey(std::span<const unsigned char> secret, const Salt& salt,
                            const KeyDerivation& derivation);

class KeyRing {
 public:
  // The engine's raw form for an existing file, whose first bytes are `salt`.
  [[nodiscard]] std::string KeyForFile(std::string_view password, const Salt& salt);
  // The same for a file to be made: the engine writes `salt` into it, so that the password opens
  // the file with any tool of the engine.
  [[nodiscard]] std::string KeyForNewFile(std::string_view password, const Salt& salt);
  [[nodiscard]] static Salt RandomSalt();
  // The key itself, for a file of whatever derivation.
  const Key& KeyOf(std::string_view password, const Salt& salt, const KeyDerivation& derivation);

 private:
  using Origin = std::tuple<std::string, Salt, KeyDerivation::Digest, int>;

  std::map<Origin, Key> keys_;
};

}  // namespace velmoor::sqlcipher
