// The one form in which this program writes its protected files, told in docs/file-format.md.
//
// The engine's own defaults change from version to version, and a file of one does not open with
// the other. So nothing is left to them: these figures are what every version of the engine can do.
#pragma once

#include <cstddef>
#include <cstdint>

namespace velmoor::sqlcipher {

// How a password and the salt of a file become its key: PBKDF2.
struct KeyDerivation {
  enum class Digest { sha1, sha512 };
  Digest digest;
  int rounds;
};

inline constexpr int kPageBytes = 1024;
// No file of this program comes near these: a project has 20 kB and the catalogue 70 kB.
inline constexpr std::int64_t kMostBytes = 4 * 1024 * 1024;
inline constexpr int kMostCellBytes = 256 * 1024;
inline constexpr std::size_t kMostRows = 16384;  // of one table
inline constexpr KeyDerivation kWrittenDerivation{KeyDerivation::Digest::sha1, 64000};

// To be executed after the key was given and before the first read. An engine that knows one form
// alone does not know the names of the algorithms, and takes no notice of them.
inline constexpr const char* kWrittenForm[] = {
    "PRAGMA cipher_page_size=1024",
    "PRAGMA kdf_iter=64000",
    "PRAGMA cipher_use_hmac=ON",
    "PRAGMA cipher_hmac_algorithm=HMAC_SHA1",
    "PRAGMA cipher_kdf_algorithm=PBKDF2_HMAC_SHA1",
};

}  // namespace velmoor::sqlcipher
