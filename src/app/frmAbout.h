// The about box: the version, what the program stands on, and under which licences.
#pragma once

#include <string>

#include "layouts/frmAbout.h"
#include "windows/Window.h"

namespace velmoor {

class frmAbout final : public WindowOf<layouts::frmAbout> {
 public:
  // The version, the libraries and the system, a line each: what a report of a fault begins with.
  [[nodiscard]] static std::string Versions();

 protected:
  void FormLoad() override;
};

}  // namespace velmoor
