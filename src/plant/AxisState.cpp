#include "plant/AxisState.h"

namespace velmoor {

std::string StateWord(const AxisState& axis) {
  if (axis.standing == Standing::unseen) return "unseen";
  if (axis.standing == Standing::silent) return "silent";
  const std::string& display = axis.reading.display;
  if (IsWarning(axis.reading)) return "warning";
  if (IsAlarm(axis.reading)) return "alarm";
  // In position or on its way there: a matter of the status flags.
  if (display == "RUN" || display == "INPOS") return "servo on";
  if (display == "BB") return "servo off";
  if (display == "P-OT" || display == "N-OT") return "end switch";
  return display;
}

}  // namespace velmoor
