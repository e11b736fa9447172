// A session with the properties that the device object uses, and nothing behind the others.
#pragma once

#include <map>
#include <stdexcept>
#include <string>

#include "session/Session.h"

namespace velmoor {

class LinkSession final : public Session, public AlarmNames {
 public:
  explicit LinkSession(SerialPort& port) : port_(port), before_(gMainForm) { gMainForm = this; }
  ~LinkSession() override { gMainForm = before_; }
  LinkSession(const LinkSession&) = delete;
  LinkSession& operator=(const LinkSession&) = delete;

  Project* CurrentProject() override { return nullptr; }
  clsHX7Helix7* Helix7() override { return helix7; }
  const AlarmNames* Alarm() const override { return this; }
  const ComboLists& ComboList() const override { throw std::logic_error("no lists here"); }
  clsHX7Procedure* Procedure() override { return nullptr; }
  SerialPort& Comm() override { return port_; }
  [[nodiscard]] bool IsOnline() const override { return online; }
  [[nodiscard]] bool StopProcedure() const override { return false; }
  void SetStopProcedure(bool /*stop*/) override {}
  [[nodiscard]] std::string THDatabasePath() const override { return {}; }
  [[nodiscard]] std::string ParametersTable() const override { return {}; }
  [[nodiscard]] std::string NibbleTable() const override { return {}; }
  [[nodiscard]] std::string DecDataTable() const override { return {}; }
  [[nodiscard]] std::string Axis() const override { return axis; }
  void SetAxis(const std::string& next) override { axis = next; }
  [[nodiscard]] std::int32_t BaudRate() const override { return baudRate; }
  void SetBaudRate(std::int32_t rate) override { baudRate = rate; }
  [[nodiscard]] std::int16_t COM() const override { return 0; }
  void SetCOM(std::int16_t /*index*/) override {}
  [[nodiscard]] std::int16_t Echo() const override { return echo; }
  void SetEcho(std::int16_t next) override { echo = next; }
  void SetHelix7CommExists(bool exists) override { commExists = exists; }
  [[nodiscard]] std::int32_t Language() const override { return 2; }
  [[nodiscard]] std::string LastMotorSize() const override { return lastMotorSize; }
  void SetLastMotorSize(const std::string& watts) override { lastMotorSize = watts; }

  [[nodiscard]] std::string GetAlarmName(const std::string& display) const override {
    return NameOf(display);
  }
  [[nodiscard]] std::string GetErrorPanelDisplay(const std::string& /*code*/) const override {
    return {};
  }
  [[nodiscard]] std::string GetAlarmCode(const std::string& display) const override {
    return display;
  }
  [[nodiscard]] std::string GetErrorName(const std::string& display) const override {
    return NameOf(display);
  }

  clsHX7Helix7* helix7 = nullptr;
  bool online = false;
  bool commExists = false;
  std::string axis = "0";
  std::int32_t baudRate = 9600;
  std::int16_t echo = 1;
  std::string lastMotorSize = "30";
  std::map<std::string, std::string> names;

 private:
  [[nodiscard]] std::string NameOf(const std::string& display) const {
    const auto entry = names.find(display);
    return entry != names.end() ? entry->second : std::string();
  }

  SerialPort& port_;
  Session* before_;
};

}  // namespace velmoor
