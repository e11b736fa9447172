#include "platform/win32/Win32SerialPort.h"

#include <algorithm>
#include <array>

#include "platform/SerialFrame.h"
#include "platform/win32/Text.h"

namespace velmoor::win32 {
namespace {

constexpr DWORD kLook = 10;          // milliseconds of one wait for a byte
constexpr DWORD kWriteLimit = 5000;  // milliseconds

std::string OpenFailure(const std::string& device, DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return device + " does not exist.  Plug the adapter in, or assign another one.";
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
      return device + " is in use.  Close the program that has it.";
    case ERROR_INVALID_FUNCTION:
    case ERROR_INVALID_HANDLE:
      return device + " is not a serial port.  Choose another port.";
    default:
      return device + " cannot be used: " + SystemText(error) + ".";
  }
}

void FillFrame(const SerialFrame& frame, DCB& state) {
  if (frame.speed != 0) state.BaudRate = static_cast<DWORD>(frame.speed);
  state.fBinary = TRUE;
  state.ByteSize = static_cast<BYTE>(frame.dataBits);
  state.StopBits = frame.stopBits == 2 ? TWOSTOPBITS : ONESTOPBIT;
  state.fParity = frame.parity != 'n' ? TRUE : FALSE;
  state.Parity = frame.parity == 'n' ? NOPARITY : EVENPARITY;
  if (frame.parity == 'o') state.Parity = ODDPARITY;
  state.fErrorChar = state.fParity;
  state.ErrorChar = kDamagedCharacter;
  state.fNull = FALSE;
  state.fAbortOnError = FALSE;
  state.fOutxCtsFlow = FALSE;
  state.fOutxDsrFlow = FALSE;
  state.fDsrSensitivity = FALSE;
  state.fOutX = FALSE;
  state.fInX = FALSE;
  state.fDtrControl = DTR_CONTROL_ENABLE;
  state.fRtsControl = RTS_CONTROL_ENABLE;
}

}  // namespace

std::string Win32SerialPort::DeviceOf(const std::string& name) const {
  const auto entry = deviceMap_.find(name);
  return entry != deviceMap_.end() ? entry->second : name;
}

DWORD Win32SerialPort::ApplySettings(const Handle& device) const {
  DCB state{};
  state.DCBlength = sizeof(state);
  if (GetCommState(device.Get(), &state) == 0) return GetLastError();
  FillFrame(ParseSerialFrame(settings_), state);
  if (SetCommState(device.Get(), &state) != 0) return 0;
  // A simulated line has no parity; it refuses a frame of which it can change nothing, and one that
  // changes the stop bits it takes.
  DCB other = state;
  other.ByteSize = 8;
  other.Parity = NOPARITY;
  other.fParity = FALSE;
  other.StopBits = state.StopBits == ONESTOPBIT ? TWOSTOPBITS : ONESTOPBIT;
  if (SetCommState(device.Get(), &other) == 0 || SetCommState(device.Get(), &state) == 0) {
    return GetLastError();
  }
  return 0;
}

void Win32SerialPort::SetSettings(const std::string& settings) {
  settings_ = settings;
  if (!IsOpen()) return;
  received_.Clear();
  // A line that takes no settings has lost its device; the next exchange finds the port closed.
  if (const DWORD error = ApplySettings(device_); error != 0) {
    lastError_ = OpenFailure(DeviceOf(name_), error);
    Close();
    return;
  }
  DiscardInput();
}

bool Win32SerialPort::Open() {
  Close();
  lastError_.clear();
  const std::string name = DeviceOf(name_);
  if (name.empty() || name.find('\0') != std::string::npos) {
    lastError_ = "The port " + name_ + " is not assigned to a device.";
    return false;
  }
  // Ports beyond the ninth are found by this form alone.
  const std::wstring path = name.starts_with('\\') ? Wide(name) : LR"(\\.\)" + Wide(name);
  Handle device(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD error = device.IsValid() ? ApplySettings(device) : GetLastError();
  COMMTIMEOUTS limits{};
  limits.ReadTotalTimeoutConstant = kLook;
  limits.WriteTotalTimeoutConstant = kWriteLimit;
  if (error == 0 && SetCommTimeouts(device.Get(), &limits) == 0) error = GetLastError();
  if (error != 0) {
    lastError_ = OpenFailure(name, error);
    return false;
  }
  device_ = std::move(device);
  DiscardInput();
  return true;
}

void Win32SerialPort::Lose(DWORD error) {
  Close();
  throw SerialPortError(DeviceOf(name_) + " is gone: " + SystemText(error) +
                        ".  Plug the adapter in again.");
}

DWORD Win32SerialPort::Waiting() {
  COMSTAT state{};
  DWORD errors = 0;
  if (ClearCommError(device_.Get(), &errors, &state) == 0) Lose(GetLastError());
  return state.cbInQue;
}

int Win32SerialPort::WaitingBytes() {
  if (!IsOpen()) return 0;
  return static_cast<int>(Waiting() + received_.Size());
}

void Win32SerialPort::DiscardInput() {
  received_.Clear();
  if (IsOpen()) PurgeComm(device_.Get(), PURGE_RXCLEAR);
}

void Win32SerialPort::WriteLine(std::string_view line) {
  if (!IsOpen()) return;
  std::string bytes(line);
  bytes += '\r';
  DWORD written = 0;
  const auto size = static_cast<DWORD>(bytes.size());
  if (WriteFile(device_.Get(), bytes.data(), size, &written, nullptr) == 0) Lose(GetLastError());
  if (written != size) Lose(ERROR_TIMEOUT);
}

void Win32SerialPort::Receive() {
  std::array<char, 256> chunk{};
  const DWORD most = std::clamp<DWORD>(Waiting(), 1, chunk.size());
  DWORD got = 0;
  if (ReadFile(device_.Get(), chunk.data(), most, &got, nullptr) == 0) Lose(GetLastError());
  received_.Add({chunk.data(), got});
}

std::string Win32SerialPort::ReadLine() {
  if (!IsOpen()) return {};
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeOut_);
  for (;;) {
    std::string line = received_.Take();
    if (!line.empty()) return line;
    if (std::chrono::steady_clock::now() >= deadline) return {};
    Receive();
  }
}

}  // namespace velmoor::win32
