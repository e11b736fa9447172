#include "operations/FailureText.h"

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "session/Session.h"

namespace velmoor {

void ForgetFailures() {
  gMainForm->Helix7()->SerialComm().TellFailure({});
}

std::string FailureText(const std::string& given, const std::string& now) {
  std::string text = given;
  const LinkFailure& failure = gMainForm->Helix7()->LatestFailure();
  if (failure.code != kSuccess && gMainForm->Alarm() != nullptr) {
    const std::string cause = CauseOf(failure, *gMainForm->Alarm());
    if (!cause.empty()) text += "\r\r" + cause;
  }
  if (!now.empty()) text += "\r\r" + now;
  return text;
}

std::string OfferText(clsHX7Project& project) {
  const int items = project.GetNumberOfNewDownloads();
  if (items == 0) return {};
  const std::string count = items == 1 ? "1 item stays" : NumberText(items) + " items stay";
  return count + " on offer (" + project.WhatIsDirty() + "): Download New completes it.";
}

}  // namespace velmoor
