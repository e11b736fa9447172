// The about box: the version, what the program stands on, and under which licences.
#pragma once

#include <string>

namespace velmoor {

class frmAbout {
 public:
  // Returns when the window has closed.
  void Show() const;

  // The version, the libraries and the system, a line each: what a report of a fault begins with.
  [[nodiscard]] static std::string Versions();
};

}  // namespace velmoor
