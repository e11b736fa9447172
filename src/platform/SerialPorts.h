// Port: the serial devices of the system, and which of them stand behind COM1 to COM8.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmoor {

enum class PortState : std::uint8_t { free, missing, busy, forbidden };

// What is known of a port without opening it.
struct PortLook {
  std::string device;  // "/dev/serial/by-id/usb-0403_6001-if00-port0"
  std::string name;    // what the system calls it, "ttyUSB0"
  PortState state = PortState::free;
  std::string words;  // for the user: what is wrong, and what to do about it
};

// A device that was plugged in.
struct SerialAdapter {
  std::string device;
  std::string name;  // as its maker calls it
};

// Ports count from 0: COM1 is 0.
inline constexpr std::int16_t kSerialPorts = 8;
// The port behind the last one: a simulated amplifier of this program's own.
inline constexpr std::int16_t kSimulatedPort = kSerialPorts;
// Behind that, the port of a line file, for as long as the session has one.
inline constexpr std::int16_t kLinePort = kSimulatedPort + 1;

class SerialPorts {
 public:
  virtual ~SerialPorts() = default;
  [[nodiscard]] virtual PortLook Look(std::int16_t com) const = 0;
  [[nodiscard]] virtual std::vector<SerialAdapter> Adapters() const = 0;
  // Puts the device behind the port, from the next opening on and in later sessions. Throws
  // std::runtime_error when that cannot be kept; it holds for this session all the same.
  virtual void Bind(std::int16_t com, const std::string& device) = 0;
  // Puts the device behind kLinePort for this session, from the next opening on, and gives that
  // port.
  [[nodiscard]] virtual std::int16_t Lend(const std::string& device) = 0;
  // Starts the simulated amplifier behind kSimulatedPort at that speed; one that runs stays as it
  // is. Returns the reason of a failure, for the user; empty after a success. It ends with the
  // program.
  [[nodiscard]] virtual std::string StartSimulator(std::int32_t baudRate) = 0;
};

}  // namespace velmoor
