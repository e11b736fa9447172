// A recording as a file: comma-separated text behind a short heading of lines that begin with "#".
//
//   # Velmoor recording 1
//   # Begun: 2026-03-01 14:05:09
//   # Project: line1.spj
//   time (s),Motor Speed (rpm),Torque (% of rated torque)
//   -0.125,100,
//   -0.118,,35
//
// A line for each sample, whose other cells are empty: nothing is made up between two samples.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Files.h"
#include "recordings/Recording.h"

namespace velmoor {

// What cannot be read as a recording; what() names file and line.
class RecordingError : public FileError {
 public:
  using FileError::FileError;
};

// Writes a new file, sample by sample.
class RecordingWriter {
 public:
  // The permissions are those of `like` at most. Throws FileError.
  RecordingWriter(const std::string& path, const std::string& like, RecordingHeading heading);
  // Samples are in the file behind the next Flush, or earlier. Both throw FileError.
  void Add(const RecordedSample& sample);
  void Flush();

 private:
  RecordingHeading heading_;
  std::string pending_;
  std::unique_ptr<GrowingFile> file_;
};

// All of it; items without a sample are left out. Throws FileError.
[[nodiscard]] Recording ReadRecording(const std::string& path);
// Its heading alone.
[[nodiscard]] RecordingHeading ReadRecordingHeading(const std::string& path);
// Writes it as a new file. Throws FileError.
void WriteRecording(const std::string& path, const std::string& like, Recording recording);
// Puts another heading before the samples of a file; items without a sample are left out. The file
// may be of any length. Throws FileError; the file is then the old one.
void RewriteHeading(const std::string& path, const std::string& like,
                    const std::function<void(RecordingHeading&)>& change);

}  // namespace velmoor
