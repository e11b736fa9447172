// Serial ports that the test plugs in and out.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/SerialPorts.h"

namespace velmoor {

class FakeSerialPorts final : public SerialPorts {
 public:
  [[nodiscard]] PortLook Look(std::int16_t com) const override {
    const auto known = looks.find(com);
    if (known != looks.end()) return known->second;
    return {"/dev/ttyS" + std::to_string(com), "ttyS" + std::to_string(com), PortState::missing,
            "nothing there"};
  }
  [[nodiscard]] std::vector<SerialAdapter> Adapters() const override { return adapters; }
  void Bind(std::int16_t com, const std::string& device) override {
    looks[com] = {device, "ttyUSB0", PortState::free, device + " can be used."};
    if (bindFails) throw std::runtime_error("The settings cannot be written.");
  }
  [[nodiscard]] std::int16_t Lend(const std::string& device) override {
    lent.push_back(device);
    return kLinePort;
  }
  [[nodiscard]] std::string StartSimulator(std::int32_t baudRate) override {
    simulatorRates.push_back(baudRate);
    return simulatorFailure;
  }

  std::map<std::int16_t, PortLook> looks;
  std::vector<SerialAdapter> adapters;
  bool bindFails = false;
  std::vector<std::string> lent;
  std::vector<std::int32_t> simulatorRates;
  std::string simulatorFailure;
};

}  // namespace velmoor
