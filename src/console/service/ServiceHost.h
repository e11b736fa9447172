// The watch of a line as a service of the system.
#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "plant/WatchHost.h"
#include "platform/posix/MetricsListener.h"
#include "platform/posix/PortLoan.h"
#include "platform/posix/PosixSerialPort.h"

namespace velmoor {

class ServiceHost final : public WatchHost {
 public:
  // Both must outlive the object.
  ServiceHost(std::ostream& out, posix::PosixSerialPort& port) : out_(out), port_(port) {}

  void Begin(const std::string& device, const WatchSettings& settings) override;
  [[nodiscard]] bool Ends() override;
  [[nodiscard]] bool Rereads() override;
  [[nodiscard]] bool IsPortWanted() override;
  void PortIsFree() override;
  void Tell(const std::string& words) override;
  void Alive(const std::string& words) override;
  void ShowMetrics(const std::string& text) override;
  [[nodiscard]] std::unique_ptr<Publisher> Publish(const WatchSettings& settings,
                                                   const Publication& birth,
                                                   const Publication& will) override;

 private:
  std::ostream& out_;
  posix::PosixSerialPort& port_;
  std::string device_, address_;
  std::optional<posix::PortLender> lender_;
  std::unique_ptr<posix::MetricsListener> listener_;
  bool ready_ = false;
  bool ends_ = false;
};

}  // namespace velmoor
