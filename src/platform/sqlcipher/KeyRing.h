// The keys of the files that this process opened.
//
// A key is derived from the password and the file's salt at a price of tens of milliseconds, once;
// copies of a file share its salt and so its key.
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace velmoor::sqlcipher {

inline constexpr std::size_t kSaltBytes = 16;
using Salt = std::array<unsigned char, kSaltBytes>;

class KeyRing {
 public:
  // The engine's raw form for an existing file, whose first bytes are `salt`.
  [[nodiscard]] std::string KeyForFile(std::string_view password, const Salt& salt);
  // The same for a file to be made: the engine writes `salt` into it, so that the password opens
  // the file with any tool of the engine.
  [[nodiscard]] std::string KeyForNewFile(std::string_view password, const Salt& salt);
  [[nodiscard]] static Salt RandomSalt();

 private:
  const std::string& HexKey(std::string_view password, const Salt& salt);

  std::map<std::pair<std::string, Salt>, std::string> keys_;
};

}  // namespace velmoor::sqlcipher
