// What the database adapter asks of the system itself; each system has its own implementation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace velmoor::sqlcipher {

// From here on the process holds keys and what they seal: it leaves no image of its memory behind
// when it falls, as far as the system can be told so.
void LeaveNoMemoryImage();

// What the engine may open for writing: files of this user that have one name, and nothing that a
// link leads to. A name beside a project can be taken by somebody else between two of our calls.
// From here on, for every database and journal of the process. A file that is refused is opened for
// reading alone, as the engine does with any that cannot be written.
void WriteOwnFilesAlone();

// What an error of the system means that the engine met, by its number.
[[nodiscard]] bool MeansFull(int error);
[[nodiscard]] std::string SystemReason(int error);

// A file's identity, size and first bytes, of one moment.
struct FileHead {
  std::string identity;  // differs between two files, whatever their names
  std::uintmax_t size = 0;
  std::string bytes;
};
// `most` bytes at most. A pipe is not waited for. Throws std::system_error.
[[nodiscard]] FileHead ReadHead(const std::string& path, std::size_t most);

// Takes all bytes out of a file, which no link leads to. Throws std::system_error.
void EmptyFile(const std::string& path);

// A file of this process alone for what is unsealed, in memory where the system has a place for
// that. The file goes with the object; whoever has it open by then keeps its contents.
class FileImage {
 public:
  FileImage();  // empty; throws DatabaseError
  FileImage(FileImage&& other) noexcept;
  FileImage(const FileImage&) = delete;
  FileImage& operator=(const FileImage&) = delete;
  ~FileImage();

  [[nodiscard]] const std::string& Path() const { return path_; }
  // False: there is no room for it.
  [[nodiscard]] bool Append(std::span<const unsigned char> bytes);

 private:
  std::string path_;
  std::intptr_t file_ = -1;
};

}  // namespace velmoor::sqlcipher
