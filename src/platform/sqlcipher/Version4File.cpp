#include "platform/sqlcipher/Version4File.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>

#include "platform/Database.h"

namespace velmoor::sqlcipher {
namespace {

// A page: sealed data, the start vector of its cipher, the code that proves both and its number.
constexpr std::size_t kPage = 4096;
constexpr std::size_t kVector = 16;
constexpr std::size_t kCode = 64;
constexpr std::size_t kSealed = kPage - kVector - kCode;
using Page = std::array<unsigned char, kPage>;

// A password as it stands, and the key that programs built over the newer engine took.
constexpr KeyDerivation kDerivations[] = {{KeyDerivation::Digest::sha1, 64000},
                                          {KeyDerivation::Digest::sha512, 256000}};
constexpr KeyDerivation kCodeDerivation{KeyDerivation::Digest::sha512, 2};
constexpr unsigned char kCodeSaltMask = 0x3a;
constexpr std::array<unsigned char, kSaltBytes> kPlainHeader = {
    'S', 'Q', 'L', 'i', 't', 'e', ' ', 'f', 'o', 'r', 'm', 'a', 't', ' ', '3', '\0'};

// Opens the pages of one file by one key.
class Unsealer {
 public:
  Unsealer(const Key& key, Salt salt) : key_(key) {
    for (unsigned char& byte : salt) byte ^= kCodeSaltMask;
    codeKey_ = DeriveKey(key, salt, kCodeDerivation);
  }

  // Whether the page was written with the key, and as page `number` from 1.
  [[nodiscard]] bool Proves(const Page& page, std::uint32_t number) const {
    const std::size_t begin = Begin(number);
    std::array<unsigned char, kPage + 4> text{};
    const auto* const end =
        std::copy(page.begin() + begin, page.begin() + kSealed + kVector, text.begin());
    const std::size_t size = static_cast<std::size_t>(end - text.begin());
    for (std::size_t i = 0; i < 4; ++i) {
      text[size + i] = static_cast<unsigned char>(number >> (8 * i));
    }
    std::array<unsigned char, kCode> code{};
    unsigned int length = 0;
    HMAC(EVP_sha512(), codeKey_.data(), static_cast<int>(codeKey_.size()), text.data(), size + 4,
         code.data(), &length);
    return length == kCode &&
           CRYPTO_memcmp(code.data(), page.data() + kSealed + kVector, kCode) == 0;
  }

  // False: the cryptographic library failed.
  [[nodiscard]] bool Open(Page& page, std::uint32_t number) const {
    const std::unique_ptr<EVP_CIPHER_CTX, void (*)(EVP_CIPHER_CTX*)> cipher(EVP_CIPHER_CTX_new(),
                                                                            EVP_CIPHER_CTX_free);
    const std::size_t begin = Begin(number);
    const int size = static_cast<int>(kSealed - begin);
    Page plain{};
    int got = 0;
    if (!cipher ||
        EVP_DecryptInit_ex(cipher.get(), EVP_aes_256_cbc(), nullptr, key_.data(),
                           page.data() + kSealed) != 1 ||
        EVP_CIPHER_CTX_set_padding(cipher.get(), 0) != 1 ||
        EVP_DecryptUpdate(cipher.get(), plain.data() + begin, &got, page.data() + begin, size) !=
            1 ||
        got != size) {
      return false;
    }
    if (number == 1) std::ranges::copy(kPlainHeader, plain.begin());
    page = plain;
    return true;
  }

 private:
  // The salt stands before the first page's data.
  static std::size_t Begin(std::uint32_t number) { return number == 1 ? kSaltBytes : 0; }

  Key key_;
  Key codeKey_;
};

bool ReadPage(std::istream& file, Page& page) {
  file.read(reinterpret_cast<char*>(page.data()), kPage);
  return file.gcount() == static_cast<std::streamsize>(kPage);
}

std::optional<Unsealer> UnsealerOf(const Page& first, std::string_view password, KeyRing& keys) {
  Salt salt{};
  std::copy_n(first.begin(), salt.size(), salt.begin());
  for (const KeyDerivation& derivation : kDerivations) {
    Unsealer unsealer(keys.KeyOf(password, salt, derivation), salt);
    if (unsealer.Proves(first, 1)) return unsealer;
  }
  return std::nullopt;
}

[[noreturn]] void Fail(DatabaseError::Kind kind, const std::string& text) {
  throw DatabaseError(kind, text);
}

}  // namespace

std::optional<FileImage> UnsealVersion4(const std::string& path, std::string_view password,
                                        KeyRing& keys) {
  // UTF-8 on every system.
  std::ifstream file(std::filesystem::path(std::u8string(path.begin(), path.end())),
                     std::ios::binary);
  Page page{};
  if (!ReadPage(file, page)) return std::nullopt;
  const auto unsealer = UnsealerOf(page, password, keys);
  if (!unsealer) return std::nullopt;
  FileImage image;
  std::uint32_t number = 1;
  do {
    if (!unsealer->Proves(page, number)) {
      Fail(DatabaseError::Kind::damaged, path + ": the file is damaged or incomplete");
    }
    if (!unsealer->Open(page, number) || !image.Append(page)) {
      Fail(DatabaseError::Kind::other, path + ": the database cannot be unsealed");
    }
    ++number;
  } while (ReadPage(file, page));
  if (file.gcount() != 0) {
    Fail(DatabaseError::Kind::damaged, path + ": the file is damaged or incomplete");
  }
  return image;
}

}  // namespace velmoor::sqlcipher
