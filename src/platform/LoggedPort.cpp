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
  PassingPort::SetSettings(settings);
}

void LoggedPort::SetPortName(const std::string& name) {
  name_ = name;
  PassingPort::SetPortName(name);
}

bool LoggedPort::Open() {
  const bool open = PassingPort::Open();
  if (open) {
    LogInformation(kSubject, name_ + " opened at " + Settings());
  } else {
    LogWarning(kSubject, name_ + " not opened: " + LastError());
  }
  return open;
}

void LoggedPort::Close() {
  if (IsOpen()) LogInformation(kSubject, name_ + " closed");
  PassingPort::Close();
}

int LoggedPort::WaitingBytes() {
  return Watched([this] { return PassingPort::WaitingBytes(); });
}

void LoggedPort::WriteLine(std::string_view line) {
  Traffic("> ", line);
  Watched([&] { PassingPort::WriteLine(line); });
}

std::string LoggedPort::ReadLine() {
  std::string line = Watched([this] { return PassingPort::ReadLine(); });
  if (line.empty()) {
    Traffic("< nothing within ", NumberText(ReadTimeOut()) + " ms");
  } else {
    Traffic("< ", line);
  }
  return line;
}

}  // namespace velmoor
