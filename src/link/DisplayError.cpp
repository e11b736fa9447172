#include "link/DisplayError.h"

#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "session/Session.h"

namespace velmoor {

std::string ResultText(ResultCode lngResult) {
  if (lngResult < 1) return gMainForm->Helix7()->ErrorMessages(lngResult);
  return gMainForm->Alarm()->GetErrorName(HexText(static_cast<std::uint32_t>(lngResult)));
}

void DisplayError(ResultCode lngResult, const std::string& strMsg) {
  Trapped("MainModule.DisplayError: ", [&] {
    ShowExclamation(strMsg + "\r" + ResultText(lngResult));
    return true;
  });
}

}  // namespace velmoor
