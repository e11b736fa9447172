#include "link/DisplayError.h"

#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "session/Session.h"

namespace velmoor {

void DisplayError(ResultCode lngResult, const std::string& strMsg) {
  Trapped("MainModule.DisplayError: ", [&] {
    const std::string text =
        lngResult < 1
            ? gMainForm->Helix7()->ErrorMessages(lngResult)
            : gMainForm->Alarm()->GetErrorName(HexText(static_cast<std::uint32_t>(lngResult)));
    ShowExclamation(strMsg + "\r" + text);
    return true;
  });
}

}  // namespace velmoor
