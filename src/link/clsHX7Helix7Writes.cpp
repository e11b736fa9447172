// What counts as done: the judgement of writes by the form of their answers.
#include <algorithm>
#include <string_view>

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

// "PRM81B" of "0PRM81B=12500".
std::string_view NameIn(std::string_view line) {
  const std::string_view behindAxis = line.substr(std::min<std::size_t>(1, line.size()));
  return behindAxis.substr(0, behindAxis.find('='));
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
      if (lngResult == kSuccess) Keep(strLine);
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
  } else {
    Keep(strLine);
  }
  return lngResult;
}

bool clsHX7Helix7::HoldsWhatWasWritten(const std::string& strLine) {
  std::string strHeld;
  bool equal = false;
  return ReadBack(strLine, strHeld, equal) == kSuccess && equal;
}

// ---- reading back

void clsHX7Helix7::KeepWritten(bool keep) {
  keepsWritten = keep;
  written.clear();
}

void clsHX7Helix7::Keep(const std::string& strLine) {
  if (!keepsWritten) return;
  const auto forget = [this](std::string_view name) {
    std::erase_if(written, [name](const std::string& line) { return NameIn(line) == name; });
  };
  // The amplifier takes these from the rigidity.
  if (NameIn(strLine).starts_with(kRigidityCommand)) {
    for (const char* const name : {"PRM100", "PRM101", "PRM102", "PRM401"}) forget(name);
  }
  if (strLine.find('=') == std::string::npos) return;
  forget(NameIn(strLine));
  written.push_back(strLine);
}

ResultCode clsHX7Helix7::ReadBack(const std::string& strLine, std::string& strHeld, bool& equal) {
  const std::size_t equals = strLine.find('=');
  if (equals == std::string::npos) return kBadSelector;
  const ResultCode lngResult = clsSerialComm.executeReadCommand(strLine.substr(0, equals), strHeld);
  equal = lngResult == kSuccess &&
          WithoutPadding(Trim(strHeld)) == WithoutPadding(Trim(strLine).substr(equals + 1));
  return lngResult;
}

}  // namespace velmoor
