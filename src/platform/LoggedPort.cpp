#include "platform/LoggedPort.h"

#include "platform/Log.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::string_view kSubject = "line";

void Traffic(std::string_view direction, std::string_view line) {
  Log* const log = CurrentLog();
  if (log != nullptr && log->KeepsTraffic()) {
    log->Write(LogLevel::traffic, kSubject, std::string(direction) + std::string(line));
  }
}

// The result of `work`; that the port is gone is told to the log on the way.
template <typename Work>
auto Watched(const Work& work) {
  try {
    return work();
  } catch (const SerialPortError& error) {
    LogWarning(kSubject, error.what());
    throw;
  }
}

}  // namespace

void LoggedPort::SetSettings(const std::string& settings) {
  Traffic("settings ", settings);
  port_.SetSettings(settings);
}

void LoggedPort::SetPortName(const std::string& name) {
  name_ = name;
  port_.SetPortName(name);
}

bool LoggedPort::Open() {
  const bool open = port_.Open();
  if (open) {
    LogInformation(kSubject, name_ + " opened at " + port_.Settings());
  } else {
    LogWarning(kSubject, name_ + " not opened: " + port_.LastError());
  }
  return open;
}

void LoggedPort::Close() {
  if (port_.IsOpen()) LogInformation(kSubject, name_ + " closed");
  port_.Close();
}

int LoggedPort::WaitingBytes() {
  return Watched([this] { return port_.WaitingBytes(); });
}

void LoggedPort::WriteLine(std::string_view line) {
  Traffic("> ", line);
  Watched([&] { port_.WriteLine(line); });
}

std::string LoggedPort::ReadLine() {
  std::string line = Watched([this] { return port_.ReadLine(); });
  if (line.empty()) {
    Traffic("< nothing within ", NumberText(port_.ReadTimeOut()) + " ms");
  } else {
    Traffic("< ", line);
  }
  return line;
}

}  // namespace velmoor
