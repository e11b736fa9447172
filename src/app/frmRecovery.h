// The question what becomes of the work that a program which was killed had not saved.
//
// Blocks while it is open. It changes nothing: the main window does what was chosen.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "layouts/frmRecovery.h"
#include "project/ProjectCompare.h"
#include "windows/Window.h"

namespace velmoor {

class frmRecovery final : public WindowOf<layouts::frmRecovery> {
 public:
  enum class Choice : std::uint8_t { recover, discard, later };

  // `differences`: between the saved project and what was not saved.
  frmRecovery(std::string project, std::vector<PartComparison> differences)
      : project_(std::move(project)), differences_(std::move(differences)) {}
  // Returns when the window has closed; by its frame or Escape: later.
  [[nodiscard]] Choice Ask();

 protected:
  void FormLoad() override;

 private:
  [[nodiscard]] std::string Words() const;
  void End(Choice choice);

  Choice choice_ = Choice::later;

  std::string project_;
  std::vector<PartComparison> differences_;
};

}  // namespace velmoor
