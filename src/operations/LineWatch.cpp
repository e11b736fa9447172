#include "operations/LineWatch.h"

#include "link/LineQuestion.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

std::int16_t NumberOf(const std::string& axis) {
  return Narrow<std::int16_t>(ParseHex(axis).value_or(0));
}

}  // namespace

bool LineWatch::Open(const LineFile& line, std::int16_t com) {
  if (open_ && session_.Comm().IsOpen()) return true;
  clsHX7Helix7& helix = *session_.Helix7();
  helix.SetCOMPort(static_cast<std::int16_t>(com + 1));
  helix.SetBaudRate(line.bitsPerSecond);
  open_ = helix.SerialComm().manualConnect();
  failure_ = open_ ? std::string() : session_.Comm().LastError();
  return open_;
}

std::optional<LineWatch::Look> LineWatch::Ask(const LineFile& line, std::int16_t com,
                                              const std::string& axis) {
  if (!Open(line, com)) return std::nullopt;
  const auto answer = AskOnLine(session_.Helix7()->SerialComm(), axis, "ALM", ' ', {});
  if (answer) {
    Look look{.answered = answer->answered};
    if (answer->value) look.state = DescribeAlarm(*answer->value);
    return look;
  }
  failure_ = "The serial port was closed.";
  Rest();
  return std::nullopt;
}

void LineWatch::Rest() {
  if (!open_) return;
  open_ = false;
  session_.Helix7()->GoOffline();
  session_.Helix7()->SetAxisNumber(NumberOf(session_.Axis()));
}

}  // namespace velmoor
