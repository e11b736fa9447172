#include "link/DisplayError.h"

#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "session/Session.h"

namespace velmoor {

std::string ResultText(ResultCode lngResult) {
  if (lngResult < 1) return gMainForm->Helix7()->ErrorMessages(lngResult);
  const std::string number = HexText(static_cast<std::uint32_t>(lngResult));
  const std::string name = gMainForm->Alarm()->GetErrorName(number);
  return name.empty() ? "Error " + number + ", which has no definition." : name;
}

void DisplayError(ResultCode lngResult, const std::string& strMsg) {
  const LinkFailure& latest = gMainForm->Helix7()->LatestFailure();
  if (latest.code == lngResult) return DisplayError(latest, strMsg);
  DisplayError(LinkFailure{.code = lngResult}, strMsg);
}

void DisplayError(const LinkFailure& failure, const std::string& strMsg,
                  const std::string& strAfter) {
  Trapped("MainModule.DisplayError: ", [&] {
    std::string text = strMsg + "\r" + ResultText(failure.code);
    const std::string cause = CauseOf(failure, *gMainForm->Alarm());
    if (!cause.empty()) text += "\r\r" + cause;
    if (!strAfter.empty()) text += "\r\r" + strAfter;
    ShowExclamation(text);
    return true;
  });
}

}  // namespace velmoor
