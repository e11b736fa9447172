#include "app/Version.h"

namespace velmoor {

const char* const kProgramVersion = VELMOOR_VERSION;

}  // namespace velmoor
