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
#include "platform/Grid.h"
#include "platform/SerialPorts.h"
#include "windows/Window.h"

namespace velmoor {

class frmMain;

class frmCommunications final : public WindowOf<layouts::frmCommunications>,
                                private ReadOnlyGridSource {
 public:
  // `main` must outlive the window;
  // `search`: for axes, as soon as the window is there.
  frmCommunications(frmMain& main, bool search) : main_(main), searchAtOnce_(search) {}

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
  // The list of the ports: a row each, the simulated one last.
  [[nodiscard]] int Rows() const override { return kSimulatedPort + 2; }
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;
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
  std::vector<PortLook> looks_;  // of the ports that devices stand behind
  std::unique_ptr<Timer> tmrSearch_;
  bool searchAtOnce_ = false;
  bool searching_ = false;
  bool stopSearch_ = false;
};

}  // namespace velmoor
