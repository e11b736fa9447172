// What counts as done: the judgement of writes by the form of their answers.
#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

bool IsHexDigit(char character) {
  return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F');
}

// Without the zeros that pad its numbers: "I+00012345" and "I+12345" are the same value.
std::string WithoutPadding(std::string_view value) {
  std::string plain;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool begins = plain.empty() || !IsHexDigit(plain.back());
    const bool pads = value[i] == '0' && begins && i + 1 < value.size() && IsHexDigit(value[i + 1]);
    if (!pads) plain += value[i];
  }
  return plain;
}

}  // namespace

const std::string& clsHX7Helix7::ErrorMessages(ResultCode iNegativeIndex) const {
  static const std::string kDenied = "Not acknowledged by the amplifier.";
  static const std::string kNoise = "The answer is no acknowledge and cannot be read.";
  if (iNegativeIndex == kNoAcknowledge) return kDenied;
  if (iNegativeIndex == kNoAnswerForm) return kNoise;
  return clsSerialComm.ErrorMessages(iNegativeIndex);
}

ResultCode clsHX7Helix7::CheckWrite(const std::string& strLine, ResultCode lngResult) {
  // The exchange succeeds with every answer that holds no error, and calls some noise -6.
  if (lngResult != kSuccess && lngResult != kNotAcknowledged) return lngResult;
  const LinkExchange told = clsSerialComm.LatestExchange();
  switch (told.form) {
    case AnswerForm::acknowledge:
      return lngResult;
    case AnswerForm::denial:
    case AnswerForm::value:
      lngResult = kNoAcknowledge;
      break;
    case AnswerForm::noise:
      lngResult = HoldsWhatWasWritten(strLine) ? kSuccess : kNoAnswerForm;
      break;
    default:
      break;
  }
  if (lngResult != kSuccess) {
    clsSerialComm.TellFailure({.code = lngResult, .exchange = told});
  }
  return lngResult;
}

bool clsHX7Helix7::HoldsWhatWasWritten(const std::string& strLine) {
  const std::size_t equals = strLine.find('=');
  if (equals == std::string::npos) return false;
  std::string strHeld;
  const ResultCode lngResult = clsSerialComm.executeReadCommand(strLine.substr(0, equals), strHeld);
  return lngResult == kSuccess &&
         WithoutPadding(Trim(strHeld)) == WithoutPadding(Trim(strLine).substr(equals + 1));
}

}  // namespace velmoor
