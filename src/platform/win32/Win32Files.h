// Files of the system, such that neither a crash nor a power cut loses one. Paths are UTF-8, of any
// length, with "/" or "\".
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Files.h"

namespace velmoor::win32 {

class Win32Files final : public Files {
 public:
  [[nodiscard]] bool Exists(const std::string& path) const override;
  [[nodiscard]] bool IsSameFile(const std::string& a, const std::string& b) const override;
  [[nodiscard]] std::string Identity(const std::string& path) const override;
  [[nodiscard]] std::optional<WallTime> ChangedAt(const std::string& path) const override;
  [[nodiscard]] bool IsWritableDirectory(const std::string& directory) const override;
  [[nodiscard]] std::string Absolute(const std::string& path) const override;

  [[nodiscard]] bool HasOtherNames(const std::string& path) const override;
  // Owners are not told apart: here the folders keep users from each other.
  [[nodiscard]] NameState StateOf(const std::string& path) const override;
  [[nodiscard]] std::string NetworkOf(const std::string& path) const override;

  // What may be done with a file is the folder's to say here: the new one takes that over, and
  // `like` changes nothing.
  void ReplaceDurably(const std::string& source, const std::string& target) override;
  void SaveDurably(const std::string& working, const std::string& target,
                   const std::string& like) override;
  // Keeps the file under `target`, so that a lock on it holds.
  void LayWorkingCopy(const std::string& source, const std::string& target) override;
  void WriteDurably(const std::string& target, const std::string& bytes) override;
  [[nodiscard]] std::string ReadAll(const std::string& path) const override;
  void Rename(const std::string& from, const std::string& to) override;
  void Remove(const std::string& path) override;
  void MakeDirectories(const std::string& directory) override;
  void MakeOwnFolder(const std::string& folder, const std::string& like) override;
  [[nodiscard]] std::vector<std::string> NamesIn(const std::string& folder) const override;
  [[nodiscard]] std::unique_ptr<GrowingFile> Begin(const std::string& path,
                                                   const std::string& like) override;
  [[nodiscard]] std::unique_ptr<GrowingFile> Continue(const std::string& path,
                                                      const std::string& like) override;
  [[nodiscard]] std::size_t SizeOf(const std::string& path) const override;
  void WriteWhole(const std::string& path, const std::string& bytes) override;
  // Refused: who may read a file cannot be told by this adapter.
  [[nodiscard]] std::string ReadSecret(const std::string& path) const override;
  void ReadLines(const std::string& path,
                 const std::function<bool(std::string_view)>& take) const override;
  void ChangeDirectory(const std::string& directory) override;

  [[nodiscard]] std::unique_ptr<FileLock> Lock(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<FileLock> LockPresent(const std::string& path) override;
};

}  // namespace velmoor::win32
