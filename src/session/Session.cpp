#include "session/Session.h"

namespace velmoor {

Session* gMainForm = nullptr;

}  // namespace velmoor
