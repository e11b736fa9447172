// Message boxes as lines on a stream, and questions answered by what the command line agreed to.
#pragma once

#include <iosfwd>
#include <string>

#include "operations/AgreedBoxes.h"

namespace velmoor {

class ConsoleBoxes final : public AgreedBoxes {
 public:
  explicit ConsoleBoxes(std::ostream& out) : out_(out) {}

 protected:
  void Told(const std::string& text, bool failure) override;

 private:
  std::ostream& out_;
};

}  // namespace velmoor
