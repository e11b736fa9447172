#include "operations/LineWatch.h"

#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::int32_t kWait = 80;  // milliseconds; as a search waits
constexpr std::int32_t kLongWait = 500;
constexpr std::int32_t kTimeOut = 5000;

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

// One that is silent is no failure of an exchange, and nothing for the log.
std::optional<LineWatch::Look> LineWatch::Ask(const LineFile& line, std::int16_t com,
                                              const std::string& axis) {
  if (!Open(line, com)) return std::nullopt;
  clsHX7Helix7& helix = *session_.Helix7();
  const std::string command = axis + "ALM";
  Look look;
  const ResultCode result =
      helix.SerialComm().sendAndListen(command, kWait, [&](const std::string& heard) {
        // What another axis has said late is no answer of this one.
        if (!heard.starts_with(axis)) return true;
        look.answered = true;
        // Behind an echo the answer has the time that every answer has.
        session_.Comm().SetReadTimeOut(kLongWait);
        if (heard == command) return true;
        if (heard.starts_with(command + " ")) {
          look.state = DescribeAlarm(heard.substr(command.size() + 1));
        }
        return false;
      });
  helix.SetTimeOut(kTimeOut);
  if (result == kSuccess) return look;
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
