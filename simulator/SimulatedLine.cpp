#include "simulator/SimulatedLine.h"

#include <stdexcept>
#include <utility>

namespace velmoor {
namespace {

constexpr std::size_t kLongestLine = 128;
constexpr std::int64_t kBitsPerCharacter = 11;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kNoise = "\xFF\x15\x7F#E@\x01";

// What a fault leaves of an answer. The line end is the caller's.
std::string Distort(const Fault& fault, char axis, const std::string& answer) {
  const std::string front(1, axis);
  switch (fault.kind) {
    case FaultKind::noAnswer:
      return {};
    case FaultKind::noDelimiter: {
      std::string text = answer;
      std::erase(text, '=');
      return text;
    }
    case FaultKind::notGood:
      return front + "NG";
    case FaultKind::alarmAnswer:
      return front + "A.9F";
    case FaultKind::junkError:
      return front + "ZZZZ ERR";
    case FaultKind::zeroError:
      return front + "0000 ERR";
    case FaultKind::deviceError:
      return front + (fault.text.empty() ? "E5A1" : fault.text);
    case FaultKind::wrongAnswer:
      return fault.text;
    case FaultKind::halfLine:
      return answer.substr(0, answer.size() / 2);
    case FaultKind::garbage:
      return std::string(kNoise);
    case FaultKind::valueAnswer:
      return front + "PUN=00000012";
    case FaultKind::unkept:
      return front + "OK";
    default:
      return answer;
  }
}

// Whether the line comes to nothing, whatever is answered.
bool IsLeftUndone(const std::optional<Fault>& fault) {
  return fault && (fault->kind == FaultKind::notGood || fault->kind == FaultKind::valueAnswer ||
                   fault->kind == FaultKind::unkept || fault->kind == FaultKind::restart);
}

bool EndsLine(const std::optional<Fault>& fault) {
  return !fault || (fault->kind != FaultKind::noLineEnd && fault->kind != FaultKind::halfLine);
}

std::string EchoOf(std::string_view line, const std::optional<Fault>& fault) {
  std::string echo(line);
  if (fault && fault->kind == FaultKind::alteredEcho) echo.back() = '#';
  return echo.append(kLineEnd);
}

}  // namespace

Micros WireTime(std::size_t count, std::int32_t baudRate) {
  if (baudRate <= 0) return Micros(0);
  const auto bits = static_cast<std::int64_t>(count) * kBitsPerCharacter;
  return Micros((bits * 1'000'000 + baudRate / 2) / baudRate);
}

SimulatedAmplifier& SimulatedLine::AddAmplifier(AmplifierSettings settings) {
  if (Amplifier(settings.axis) != nullptr) throw std::invalid_argument("The axis is taken");
  return amplifiers_.emplace_back(std::move(settings));
}

SimulatedAmplifier* SimulatedLine::Amplifier(char axis) {
  for (SimulatedAmplifier& amplifier : amplifiers_) {
    if (amplifier.Axis() == axis) return &amplifier;
  }
  return nullptr;
}

std::vector<Transmission> SimulatedLine::Receive(std::string_view bytes, Micros now,
                                                 std::int32_t hostBaudRate) {
  std::vector<Transmission> answers;
  for (const NoisyPiece& piece : noise.Pass(bytes, NoiseDirection::toAmplifier)) {
    Take(piece.bytes, now + piece.late, hostBaudRate, answers);
  }
  std::vector<Transmission> sent;
  for (Transmission& answer : answers) {
    for (NoisyPiece& piece : noise.Pass(answer.bytes, NoiseDirection::toHost)) {
      answer.bytes = std::move(piece.bytes);
      answer.start += piece.late;
      sent.push_back(answer);
    }
  }
  return sent;
}

void SimulatedLine::Take(std::string_view bytes, Micros now, std::int32_t hostBaudRate,
                         std::vector<Transmission>& sent) {
  for (const char byte : bytes) {
    if (byte == '\r') {
      const std::string line = std::exchange(input_, {});
      Serve(line, now, hostBaudRate, sent);
    } else if (byte != '\n' && input_.size() < kLongestLine) {
      input_ += byte;
    }
  }
}

void SimulatedLine::Serve(std::string_view line, Micros now, std::int32_t hostBaudRate,
                          std::vector<Transmission>& sent) {
  if (line.empty() || line.find(kDamagedOnWire) != std::string_view::npos) return;
  SimulatedAmplifier* const amplifier = Amplifier(line.front());
  if (amplifier == nullptr || !amplifier->Listens(now) || amplifier->BaudRate() != hostBaudRate) {
    return;
  }
  const std::optional<Fault> fault = faults.Take(line.substr(1));
  if (fault && fault->kind == FaultKind::silence) return;
  if (fault && fault->kind == FaultKind::hangUp) {
    sent.push_back({.start = now, .baudRate = hostBaudRate, .bytes = {}, .hangsUp = true});
    return;
  }
  // The answer to a restart still goes out as before it.
  const bool echo = amplifier->Echo();
  Reply reply;
  if (IsLeftUndone(fault)) {
    amplifier->Pass(line.substr(1), now);
  } else {
    reply = amplifier->Execute(line.substr(1), now);
  }
  if (fault && fault->kind == FaultKind::restart) amplifier->Restart(now);
  if (echo) sent.push_back({.start = now, .baudRate = hostBaudRate, .bytes = EchoOf(line, fault)});
  std::string answer = fault ? Distort(*fault, line.front(), reply.text) : reply.text;
  if (answer.empty()) return;
  if (EndsLine(fault)) answer += kLineEnd;
  Micros start = now + reply.takes;
  if (fault && fault->kind == FaultKind::lateAnswer) start += fault->delay;
  sent.push_back({.start = start, .baudRate = hostBaudRate, .bytes = std::move(answer)});
}

}  // namespace velmoor
