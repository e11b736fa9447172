#include "platform/sqlcipher/SystemFiles.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/Database.h"
#include "platform/win32/FileIdentity.h"
#include "platform/win32/Handle.h"
#include "platform/win32/Text.h"

namespace velmoor::sqlcipher {
namespace {

constexpr int kQuotaExceeded = 1295;  // ERROR_DISK_QUOTA_EXCEEDED, which not every header names

[[noreturn]] void Fail(const std::string& path, int error) {
  throw std::system_error(error, std::generic_category(), path);
}

}  // namespace

void LeaveNoMemoryImage() {
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
}

// A link needs a right here that users have not, and a folder of another user cannot be written to:
// there is nothing to keep off.
void WriteOwnFilesAlone() {}

bool MeansFull(int error) {
  return error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL || error == kQuotaExceeded ||
         error == ERROR_FILE_TOO_LARGE;
}

std::string SystemReason(int error) {
  return win32::SystemText(static_cast<unsigned long>(error));
}

FileHead ReadHead(const std::string& path, std::size_t most) {
  if (path.find('\0') != std::string::npos) Fail(path, ENOENT);
  // Whoever has the file may replace or remove it meanwhile.
  const win32::Handle file(CreateFileW(win32::Wide(path).c_str(), GENERIC_READ,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                       nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsValid()) {
    const std::error_code error(static_cast<int>(GetLastError()), std::system_category());
    Fail(path, error.default_error_condition().value());
  }
  FileHead head;
  head.bytes.resize(most);
  DWORD got = 0;
  BY_HANDLE_FILE_INFORMATION about{};
  const bool known =
      ReadFile(file.Get(), head.bytes.data(), static_cast<DWORD>(most), &got, nullptr) != 0 &&
      GetFileInformationByHandle(file.Get(), &about) != 0;
  if (!known) Fail(path, EIO);
  head.bytes.resize(got);
  head.size = std::uintmax_t{about.nFileSizeHigh} << 32U | about.nFileSizeLow;
  head.identity = win32::IdentityOf(about);
  return head;
}

void EmptyFile(const std::string& path) {
  const int file = _wopen(win32::Wide(path).c_str(), _O_WRONLY | _O_BINARY | _O_TRUNC);
  if (file < 0) Fail(path, errno);
  _close(file);
}

FileImage::FileImage() {
  static std::atomic<unsigned> number{0};
  std::error_code failed;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(failed);
  if (!failed) {
    const std::filesystem::path place =
        folder /
        ("velmoor-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++number));
    // One that a killed process left is used up.
    file_ = _wopen(place.c_str(), _O_RDWR | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
    path_ = win32::Narrow(place.wstring());
  }
  if (file_ < 0) {
    throw DatabaseError(DatabaseError::Kind::other, "There is no place for the unsealed database");
  }
}
FileImage::FileImage(FileImage&& other) noexcept
    : path_(std::exchange(other.path_, {})), file_(std::exchange(other.file_, -1)) {}
FileImage::~FileImage() {
  if (file_ >= 0) _close(static_cast<int>(file_));
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove(win32::Wide(path_), ignored);
}

bool FileImage::Append(std::span<const unsigned char> bytes) {
  const auto size = static_cast<unsigned>(bytes.size());
  return _write(static_cast<int>(file_), bytes.data(), size) == static_cast<int>(size);
}

}  // namespace velmoor::sqlcipher
