// Port: the system's clipboard, as text. Rows of a block of cells are lines, its columns lie behind
// tabs, as spreadsheets have it.
#pragma once

#include <string>

namespace velmoor {

class Clipboard {
 public:
  virtual ~Clipboard() = default;
  virtual void SetText(const std::string& text) = 0;
  // Empty when it holds no text. Lines end as the program that copied them ends them.
  [[nodiscard]] virtual std::string Text() const = 0;
};

}  // namespace velmoor
