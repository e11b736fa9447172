#include "platform/posix/PosixSerialPorts.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "platform/posix/PortHolder.h"
#include "platform/posix/SerialSettings.h"

namespace velmoor::posix {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDevices = "/dev/";

std::string NameOf(std::int16_t com) {
  return "COM" + std::to_string(com + 1);
}

// The system lists more built-in ports than a machine has; one without hardware has the type 0.
bool HasHardware(const std::string& device) {
  std::ifstream file("/sys/class/tty/" + fs::path(device).filename().string() + "/type");
  std::string type;
  return !std::getline(file, type) || type != "0";
}

// The name that follows the adapter; the device itself where it has none.
std::string LastingName(const std::string& device) {
  std::error_code error;
  for (fs::directory_iterator it("/dev/serial/by-id", error), end; !error && it != end;
       it.increment(error)) {
    std::error_code unreadable;
    if (fs::equivalent(it->path(), device, unreadable)) return it->path().string();
  }
  return device;
}

// "ttyUSB0", whatever link the path is; the last part of a path that leads nowhere.
std::string SystemNameOf(const std::string& device) {
  std::error_code error;
  const fs::path real = fs::canonical(device, error);
  if (error) return fs::path(device).filename().string();
  return real.string().starts_with(kDevices) ? real.string().substr(kDevices.size())
                                             : real.filename().string();
}

// The far end of a simulated line is open in the program behind it: there the lock alone counts.
std::string HolderOf(const std::string& device) {
  const FileDescriptor file(open(device.c_str(), O_PATH | O_CLOEXEC));
  if (!file.IsValid()) return {};
  return DescribeHolder(file.Get(), IsPseudoTerminal(file.Get()) ? std::string() : device);
}

}  // namespace

PosixSerialPorts::PosixSerialPorts(PosixSerialPort& port, Settings& settings, std::string simulator,
                                   std::function<std::vector<SerialAdapter>()> adapters)
    : port_(port),
      settings_(settings),
      program_(std::move(simulator)),
      adapters_(std::move(adapters)) {
  for (std::int16_t com = 0; com < kSerialPorts; ++com) {
    const std::string device = settings.ReadText(NameOf(com), "");
    if (!device.empty()) map_[NameOf(com)] = device;
  }
  port_.SetDeviceMap(map_);
}

PortLook PosixSerialPorts::Look(std::int16_t com) const {
  const std::string device = port_.DeviceOf(NameOf(com));
  const auto look = [&device](PortState state, const std::string& words) {
    return PortLook{device, SystemNameOf(device), state, words};
  };
  struct stat file {};
  if (stat(device.c_str(), &file) != 0 || !S_ISCHR(file.st_mode)) {
    return look(PortState::missing,
                device + " does not exist.  Plug the adapter in, or assign another one.");
  }
  if (port_.IsOpen() && port_.DevicePath() == device) {
    return look(PortState::free, "Velmoor is connected by " + device + ".");
  }
  if (!HasHardware(device)) {
    return look(PortState::missing, device + " has no hardware behind it.");
  }
  if (access(device.c_str(), R_OK | W_OK) != 0) {
    return look(PortState::forbidden,
                "Access to " + device + " is not allowed." + DescribeAccess(device));
  }
  const std::string holder = HolderOf(device);
  if (!holder.empty()) {
    return look(PortState::busy, device + " is in use" + holder + ".  Close that program.");
  }
  return look(PortState::free, device + " can be used.");
}

void PosixSerialPorts::Bind(std::int16_t com, const std::string& device) {
  const std::string name = LastingName(device);
  map_[NameOf(com)] = name;
  port_.SetDeviceMap(map_);
  settings_.Write(NameOf(com), name);
}

std::int16_t PosixSerialPorts::Lend(const std::string& device) {
  map_[NameOf(kLinePort)] = device;
  port_.SetDeviceMap(map_);
  return kLinePort;
}

std::string PosixSerialPorts::StartSimulator(std::int32_t baudRate) {
  if (simulator_ && simulator_->IsRunning()) return {};
  try {
    simulator_ = std::make_unique<SimulatorProcess>(program_, baudRate);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  map_[NameOf(kSimulatedPort)] = simulator_->Link();
  port_.SetDeviceMap(map_);
  return {};
}

}  // namespace velmoor::posix
