#include "session/Session.h"

#include <stdexcept>

namespace velmoor {

Session* gMainForm = nullptr;

Project& OpenedProject() {
  Project* const project = gMainForm != nullptr ? gMainForm->CurrentProject() : nullptr;
  if (project == nullptr) throw std::logic_error("No project is open");
  return *project;
}

}  // namespace velmoor
