#include "platform/sqlcipher/KeyRing.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <span>

#include "platform/Database.h"
#include "platform/Numbers.h"

namespace velmoor::sqlcipher {
namespace {

std::string Hex(std::span<const unsigned char> bytes) {
  std::string text;
  for (const unsigned char byte : bytes) text += HexText(byte, 2);
  return text;
}

[[noreturn]] void FailCrypto() {
  throw DatabaseError(DatabaseError::Kind::other, "The cryptographic library failed");
}

}  // namespace

Key DeriveKey(std::span<const unsigned char> secret, const Salt& salt,
              const KeyDerivation& derivation) {
  const EVP_MD* const digest =
      derivation.digest == KeyDerivation::Digest::sha1 ? EVP_sha1() : EVP_sha512();
  Key key{};
  if (PKCS5_PBKDF2_HMAC(reinterpret_cast<const char*>(secret.data()),
                        static_cast<int>(secret.size()), salt.data(), static_cast<int>(salt.size()),
                        derivation.rounds, digest, static_cast<int>(key.size()), key.data()) != 1) {
    FailCrypto();
  }
  return key;
}

std::string KeyRing::KeyForFile(std::string_view password, const Salt& salt) {
  return "x'" + Hex(KeyOf(password, salt, kWrittenDerivation)) + "'";
}

std::string KeyRing::KeyForNewFile(std::string_view password, const Salt& salt) {
  return "x'" + Hex(KeyOf(password, salt, kWrittenDerivation)) + Hex(salt) + "'";
}

Salt KeyRing::RandomSalt() {
  Salt salt{};
  if (RAND_bytes(salt.data(), static_cast<int>(salt.size())) != 1) FailCrypto();
  return salt;
}

const Key& KeyRing::KeyOf(std::string_view password, const Salt& salt,
                          const KeyDerivation& derivation) {
  const Origin origin{std::string(password), salt, derivation.digest, derivation.rounds};
  const auto known = keys_.find(origin);
  if (known != keys_.end()) return known->second;
  const std::span secret(reinterpret_cast<const unsigned char*>(password.data()), password.size());
  return keys_.emplace(origin, DeriveKey(secret, salt, derivation)).first->second;
}

}  // namespace velmoor::sqlcipher
