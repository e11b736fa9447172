// Files of the engine's version 4 as its defaults make them: pages of 4096 bytes, SHA-512.
//
// The engine of the older systems cannot read them at all, so they are unsealed here, whichever
// engine the program is built with. Such files are only read; what is written has the written form.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/sqlcipher/KeyRing.h"

namespace velmoor::sqlcipher {

// An unsealed database in a file of this process's own, in memory where the system has a place for
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
  int descriptor_ = -1;
};

// Nothing, where the file is of another form or has another password. Throws DatabaseError for a
// file that is damaged or cannot be read.
[[nodiscard]] std::optional<FileImage> UnsealVersion4(const std::string& path,
                                                      std::string_view password, KeyRing& keys);

}  // namespace velmoor::sqlcipher
