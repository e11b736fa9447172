// The monitoring window in a user's hands.
#pragma once

#include <QCheckBox>
#include <QPushButton>
#include <algorithm>
#include <vector>

#include "WindowUser.h"
#include "Workbench.h"
#include "instruments/Instruments.h"

namespace velmoor::bench {

inline const std::vector<const char*> kOneItem{"chkOption_0"};
inline const std::vector<const char*> kFiveItems{"chkOption_0", "chkOption_1", "chkOption_7",
                                                 "chkOption_9", "chkOption_10"};

// Opens the window, ticks the items and no others, whatever it has kept of the last time, and gives
// the button that begins and ends the passes.
inline QPushButton& ShowMonitoring(clsHX7Project& project, const std::vector<const char*>& ticks) {
  Require(project.Monitoring().Show_Monitoring(), "the monitoring window");
  QPushButton& begin = InWindow<QPushButton>("cmdMonitoring");
  for (QCheckBox* const tick : begin.window()->findChildren<QCheckBox*>()) {
    if (!tick->objectName().startsWith(QLatin1String("chkOption_"))) continue;
    const bool wanted = std::ranges::any_of(
        ticks, [tick](const char* name) { return tick->objectName() == QLatin1String(name); });
    if (tick->isChecked() != wanted) tick->click();
  }
  return begin;
}

// Records what is read for the life of the object.
class Recorded {
 public:
  Recorded() : instruments_(dynamic_cast<SessionState&>(*gMainForm), [] { return true; }) {
    instruments_.Listen();
    instruments_.Begin({}, "by hand");
  }
  ~Recorded() { instruments_.Record().Stop(); }
  Recorded(const Recorded&) = delete;
  Recorded& operator=(const Recorded&) = delete;

 private:
  Instruments instruments_;
};

}  // namespace velmoor::bench
