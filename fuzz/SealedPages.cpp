#include "SealedPages.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <memory>
#include <stdexcept>
#include <utility>

namespace velmoor::fuzz {
namespace {

constexpr std::size_t kPage = sqlcipher::kPageBytes;
constexpr std::size_t kVector = 16;   // of the cipher, behind the contents
constexpr std::size_t kCode = 20;     // of SHA-1, behind the vector
constexpr std::size_t kReserve = 48;  // both, up to whole blocks
constexpr unsigned char kCodeSaltMask = 0x3a;
constexpr int kCodeRounds = 2;

const unsigned char* Raw(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}
unsigned char* Raw(std::string& text) {
  return reinterpret_cast<unsigned char*>(text.data());
}

std::string Run(bool seal, const sqlcipher::Key& key, const std::string& vector,
                const std::string& text) {
  const std::unique_ptr<EVP_CIPHER_CTX, void (*)(EVP_CIPHER_CTX*)> cipher(EVP_CIPHER_CTX_new(),
                                                                          EVP_CIPHER_CTX_free);
  std::string result(text.size(), '\0');
  int got = 0;
  const bool done = EVP_CipherInit_ex(cipher.get(), EVP_aes_256_cbc(), nullptr, key.data(),
                                      Raw(vector), seal ? 1 : 0) == 1 &&
                    EVP_CIPHER_CTX_set_padding(cipher.get(), 0) == 1 &&
                    EVP_CipherUpdate(cipher.get(), Raw(result), &got, Raw(text),
                                     static_cast<int>(text.size())) == 1;
  if (!done) throw std::runtime_error("a page cannot be sealed");
  return result;
}

}  // namespace

SealedPages::SealedPages(std::string bytes, const sqlcipher::Key& key)
    : bytes_(std::move(bytes)), key_(key) {
  sqlcipher::Salt salt{};
  if (bytes_.size() < salt.size()) return;
  for (std::size_t i = 0; i < salt.size(); ++i) {
    salt[i] = static_cast<unsigned char>(bytes_[i]) ^ kCodeSaltMask;
  }
  codeKey_ =
      sqlcipher::DeriveKey(key_, salt, {sqlcipher::KeyDerivation::Digest::sha1, kCodeRounds});
}

std::size_t SealedPages::Lead(std::size_t page) {
  return page == 0 ? sqlcipher::kSaltBytes : 0;
}

std::string SealedPages::Plain(std::size_t page) const {
  const std::size_t begin = page * kPage;
  const std::size_t lead = Lead(page);
  return Run(false, key_, bytes_.substr(begin + kPage - kReserve, kVector),
             bytes_.substr(begin + lead, kPage - kReserve - lead));
}

void SealedPages::Seal(std::size_t page, const std::string& plain) {
  const std::size_t begin = page * kPage;
  const std::size_t lead = Lead(page);
  const std::string vector = bytes_.substr(begin + kPage - kReserve, kVector);
  bytes_.replace(begin + lead, plain.size(), Run(true, key_, vector, plain));
  std::string proved = bytes_.substr(begin + lead, kPage - kReserve - lead + kVector);
  for (unsigned i = 0; i < 4; ++i) proved += static_cast<char>(((page + 1) >> (8 * i)) & 0xff);
  std::string code(kCode, '\0');
  HMAC(EVP_sha1(), codeKey_.data(), static_cast<int>(codeKey_.size()), Raw(proved), proved.size(),
       Raw(code), nullptr);
  bytes_.replace(begin + kPage - kReserve + kVector, kCode, code);
}

}  // namespace velmoor::fuzz
