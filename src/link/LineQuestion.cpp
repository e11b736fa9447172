#include "link/LineQuestion.h"

#include "platform/SerialPort.h"

namespace velmoor {
namespace {

constexpr std::size_t kLineEnd = 2;  // bytes behind what the amplifier says

}  // namespace

std::optional<LineAnswer> AskOnLine(ClassSerialComm& comm, const std::string& axis,
                                    std::string_view word, char delimiter, const LineWait& wait) {
  const std::string command = axis + std::string(word);
  LineAnswer answer;
  answer.bytes = command.size() + 1;
  const ResultCode result = comm.sendAndListen(command, wait.first, [&](const std::string& heard) {
    answer.bytes += heard.size() + kLineEnd;
    // What another axis has said late is no answer of this one.
    if (!heard.starts_with(axis)) return true;
    answer.answered = true;
    // Behind an echo the answer has the time that every answer has.
    comm.setTimeOut(wait.behindEcho);
    if (heard == command) return true;
    if (heard.size() > command.size() && heard.starts_with(command) &&
        heard[command.size()] == delimiter && heard.find(kDamagedCharacter) == std::string::npos) {
      answer.value = heard.substr(command.size() + 1);
    }
    return false;
  });
  if (result != kSuccess) return std::nullopt;
  return answer;
}

}  // namespace velmoor
