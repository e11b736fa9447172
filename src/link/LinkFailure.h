// What is known of an exchange beside its result, and of a failure beside its code: what was asked,
// and why it failed, in words for the user.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/ResultCode.h"

namespace velmoor {

class AlarmNames;

enum class AnswerForm : std::uint8_t {
  none,         // no answer came
  acknowledge,  // the axis, then "OK"
  denial,       // the axis, then "NG"
  refusal,      // " ERR" behind a number, or a device error
  alarm,        // the panel display of an alarm
  value,        // a name, a delimiter and a value
  noise         // nothing of these
};

// `axis` is the character that the command began with; blanks around the parts do not matter.
[[nodiscard]] AnswerForm AnswerFormOf(std::string_view answer, std::string_view axis);

struct LinkExchange {
  std::string line{};  // as it went out, with its axis
  std::string echo{};
  std::string answer{};
  AnswerForm form = AnswerForm::none;
  int timeOut = 0;          // ms, that each of its lines had
  std::string portWords{};  // of a port that failed under it
};

struct LinkFailure {
  ResultCode code = kSuccess;
  LinkExchange exchange{};  // without a line where nothing was to be sent
  std::string reason{};     // in place of what the exchange tells
};

// What a line asks for: "Writing Pn81D", "Writing step 6 of the index table (loop)", "Servo off".
// Lines of no known word are named as they are.
[[nodiscard]] std::string WhatIsAsked(std::string_view line);

// "Servo off (0SVOFF): no answer within 0.5 s.", or the failure's own reason; empty for a failure
// of which nothing is known beyond its code. `names` knows the device errors.
[[nodiscard]] std::string CauseOf(const LinkFailure& failure, const AlarmNames& names);

// "E210 "Command error"", or "E999, which has no definition".
[[nodiscard]] std::string DeviceErrorText(ResultCode code, const AlarmNames& names);

}  // namespace velmoor
