#include "platform/sqlcipher/KeyRing.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <span>

#include "platform/Database.h"
#include "platform/Numbers.h"

namespace velmoor::sqlcipher {
namespace {

constexpr int kRounds = 64000;
constexpr std::size_t kKeyBytes = 32;

std::string Hex(std::span<const unsigned char> bytes) {
  std::string text;
  for (const unsigned char byte : bytes) text += HexText(byte, 2);
  return text;
}

[[noreturn]] void FailCrypto() {
  throw DatabaseError(DatabaseError::Kind::other, "The cryptographic library failed");
}

}  // namespace

std::string KeyRing::KeyForFile(std::string_view password, const Salt& salt) {
  return "x'" + HexKey(password, salt) + "'";
}

std::string KeyRing::KeyForNewFile(std::string_view password, const Salt& salt) {
  return "x'" + HexKey(password, salt) + Hex(salt) + "'";
}

Salt KeyRing::RandomSalt() {
  Salt salt{};
  if (RAND_bytes(salt.data(), static_cast<int>(salt.size())) != 1) FailCrypto();
  return salt;
}

const std::string& KeyRing::HexKey(std::string_view password, const Salt& salt) {
  const auto [entry, fresh] = keys_.try_emplace({std::string(password), salt});
  if (fresh) {
    std::array<unsigned char, kKeyBytes> key{};
    if (PKCS5_PBKDF2_HMAC(password.data(), static_cast<int>(password.size()), salt.data(),
                          static_cast<int>(salt.size()), kRounds, EVP_sha1(),
                          static_cast<int>(key.size()), key.data()) != 1) {
      keys_.erase(entry);
      FailCrypto();
    }
    entry->second = Hex(key);
  }
  return entry->second;
}

}  // namespace velmoor::sqlcipher
