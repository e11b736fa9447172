// The project's handle on the terminal window.
#pragma once

#include "platform/Event.h"

namespace velmoor {

class clsHX7Terminal {
 public:
  Event<> TerminalClosed;
  Event<> CommunicationDown;  // the terminal lost the line
};

}  // namespace velmoor
