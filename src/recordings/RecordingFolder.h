// Recordings as the files of a folder: that of a project lies beside it, "line1.recordings".
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "recordings/RecordingFile.h"

namespace velmoor {

class RecordingFolder {
 public:
  // Of that project file.
  explicit RecordingFolder(const std::string& project);
  // Any folder, whose recordings have the permissions of the file `like` at most.
  RecordingFolder(std::string folder, std::string like)
      : project_(std::move(like)), folder_(std::move(folder)) {}

  [[nodiscard]] const std::string& Project() const { return project_; }
  // "line1.recordings".
  [[nodiscard]] std::string Title() const { return GetFileTitle(folder_); }
  // By their names, the latest in the alphabet first, as new ones bear their moment.
  [[nodiscard]] std::vector<std::string> Names() const;
  [[nodiscard]] std::string PathOf(const std::string& name) const;
  // A name that is free, of that moment: "2026-03-01 14-05-09", with a word behind it, "alarm
  // A.72", where there is one. Makes the folder. Throws FileError.
  [[nodiscard]] std::string NewName(const std::string& moment, const std::string& word = {}) const;

  // Empty: that name may be given. Else why not.
  [[nodiscard]] std::string WhyNot(const std::string& name) const;
  // Throw FileError; the recording is then as it was.
  void Rename(const std::string& name, const std::string& to) const;
  void Annotate(const std::string& name, const std::string& note) const;
  void Remove(const std::string& name) const;

 private:
  std::string project_;
  std::string folder_;
};

}  // namespace velmoor
