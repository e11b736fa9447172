// The window in which the user sets port, speed, protocol and axis, and connects by hand.
//
// Blocks while it is open. Changes nothing of the session until Connect; the device behind a port
// is kept at once. Where the world has no SerialPorts, the window shows bare port names.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "layouts/frmCommunications.h"
#include "operations/HardwareConnection.h"
#include "platform/SerialPorts.h"
#include "windows/Window.h"

namespace velmoor {

class frmMain;

class frmCommunications final : public WindowOf<layouts::frmCommunications> {
 public:
  // `main` must outlive the window.
  explicit frmCommunications(frmMain& main) : main_(main) {}

 protected:
  void FormLoad() override;
  void FormQueryUnload(bool& cancel) override { cancel = searching_; }

 private:
  void Connect();
  void cmdGetAxes_Click();
  // What is chosen in the window.
  [[nodiscard]] LineSettings Chosen() const;
  // Asks for every axis; meanwhile nothing of the window disturbs it. Nothing after an exclamation.
  std::optional<std::vector<std::string>> Search();
  // False after an exclamation.
  bool StartSimulatorIfChosen();
  void ShowPorts();
  void ShowChosenPort();
  void cmdBind_Click();
  void cmdConnect_Click();
  void cmdCancel_Click();

  void DisableUnimplementedOptions();
  [[nodiscard]] static std::int16_t GetEcho(int eIndex);
  void RemoveAllAxes();
  // Of what would disturb a search that is under way.
  void EnableBesideSearch(bool bState);

  frmMain& main_;
  std::int16_t iIndexCOM = 0;
  std::int16_t iIndexBaudRate = 0;
  std::int16_t iIndexProtocol = 1;
  std::string sAxis;
  std::vector<SerialAdapter> adapters_;
  bool searching_ = false;
  bool stopSearch_ = false;
};

}  // namespace velmoor
