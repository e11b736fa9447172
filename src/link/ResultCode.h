// The result of every operation on the amplifier.
#pragma once

#include <cstdint>

namespace velmoor {

// 0 is success, below 0 a failure of the link, above 0 an error number of the amplifier (its four
// hexadecimal digits read as a number: "E210" is 57872).
using ResultCode = std::int32_t;

inline constexpr ResultCode kSuccess = 0;
inline constexpr ResultCode kPortNotOpen = -1;      // closed, vanished, or could not be opened
inline constexpr ResultCode kNoResponse = -2;       // the time-out passed
inline constexpr ResultCode kEchoMismatch = -3;     // the echo does not hold the command
inline constexpr ResultCode kBadSelector = -4;      // selector outside its table; nothing was sent
inline constexpr ResultCode kValueNotFound = -5;    // an answer without a usable value
inline constexpr ResultCode kNotAcknowledged = -6;  // an answer that is no acknowledge
inline constexpr ResultCode kNotEstablished = -7;   // no speed was answered
inline constexpr ResultCode kBusy = -8;             // an exchange is under way

// A write that came to an end without "OK": no code of the exchange, which takes whatever holds no
// error for a success; clsHX7Helix7 returns them and has their words.
inline constexpr ResultCode kNoAcknowledge = -9;  // "NG", or a value: it was not done
inline constexpr ResultCode kNoAnswerForm = -10;  // noise: whether it was done is not known

// The amplifier has said that it did not do it.
[[nodiscard]] constexpr bool IsRefusal(ResultCode result) {
  return result > kSuccess || result == kNoAcknowledge;
}

// Identity failures; clsHX7Helix7::IsRX900AndVKLM alone returns them, and they have no message.
inline constexpr ResultCode kNotRX900 = -900;
inline constexpr ResultCode kNotVKLM = -999;

}  // namespace velmoor
