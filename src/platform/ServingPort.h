// A serial port whose waits serve the window's events, as long as that is wanted: while a work goes
// over the axes of a line nothing but its Stop can be pressed, and an axis that does not answer
// must not freeze the window for its time-outs. Otherwise waiting serves no events, as the port
// says.
#pragma once

#include "platform/PassingPort.h"

namespace velmoor {

class ServingPort final : public PassingPort {
 public:
  using PassingPort::PassingPort;

  void SetServes(bool serves) { serves_ = serves; }

  // The time-out is as long as without; events are served every 50 ms of it.
  std::string ReadLine() override;

 private:
  bool serves_ = false;
};

}  // namespace velmoor
