// The serial devices of the system, looked at without opening them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/SerialPorts.h"
#include "platform/Settings.h"
#include "platform/posix/PosixSerialPort.h"
#include "platform/posix/SimulatorProcess.h"

namespace velmoor::posix {

class PosixSerialPorts final : public SerialPorts {
 public:
  // Gives `port` the devices that the settings name. Both must outlive the object. `simulator` is
  // the path of that program.
  PosixSerialPorts(PosixSerialPort& port, Settings& settings, std::string simulator,
                   std::function<std::vector<SerialAdapter>()> adapters);

  [[nodiscard]] PortLook Look(std::int16_t com) const override;
  [[nodiscard]] std::vector<SerialAdapter> Adapters() const override { return adapters_(); }
  // Keeps the name that follows the adapter from socket to socket, where it has one.
  void Bind(std::int16_t com, const std::string& device) override;
  [[nodiscard]] std::int16_t Lend(const std::string& device) override;
  [[nodiscard]] std::string StartSimulator(std::int32_t baudRate) override;

 private:
  PosixSerialPort& port_;
  Settings& settings_;
  std::string program_;
  std::function<std::vector<SerialAdapter>()> adapters_;
  DeviceMap map_;
  std::unique_ptr<SimulatorProcess> simulator_;
};

}  // namespace velmoor::posix
