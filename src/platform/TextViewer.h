// Port: the desktop's own program for text files.
#pragma once

#include <string>

namespace velmoor {

class TextViewer {
 public:
  virtual ~TextViewer() = default;
  // The desktop can be asked to show a file.
  [[nodiscard]] virtual bool IsAvailable() const = 0;
  // Starts the viewer on the file and returns at once. False: it could not be started.
  virtual bool Open(const std::string& path) = 0;
};

}  // namespace velmoor
