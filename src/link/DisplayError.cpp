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

namespace {

std::string TextOf(const LinkFailure& failure, const std::string& words) {
  std::string text = words + "\r" + ResultText(failure.code);
  const std::string cause = CauseOf(failure, *gMainForm->Alarm());
  return cause.empty() ? text : text + "\r\r" + cause;
}

}  // namespace

std::string ErrorText(ResultCode result, const std::string& words) {
  const LinkFailure& latest = gMainForm->Helix7()->LatestFailure();
  return TextOf(latest.code == result ? latest : LinkFailure{.code = result}, words);
}

void DisplayError(ResultCode lngResult, const std::string& strMsg) {
  Trapped("MainModule.DisplayError: ", [&] {
    ShowExclamation(ErrorText(lngResult, strMsg));
    return true;
  });
}

void DisplayError(const LinkFailure& failure, const std::string& strMsg,
                  const std::string& strAfter) {
  Trapped("MainModule.DisplayError: ", [&] {
    std::string text = TextOf(failure, strMsg);
    if (!strAfter.empty()) text += "\r\r" + strAfter;
    ShowExclamation(text);
    return true;
  });
}

}  // namespace velmoor
