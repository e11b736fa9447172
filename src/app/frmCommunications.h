// The window in which the user sets port, speed, protocol and axis, and connects by hand.
//
// Blocks while it is open. Changes nothing of the session until Connect; the device behind a port
// is kept at once. Where the world has no SerialPorts, the window shows bare port names.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "link/ResultCode.h"
#include "platform/Form.h"
#include "platform/SerialPorts.h"

namespace velmoor {

class frmMain;

class frmCommunications {
 public:
  // `main` must outlive the window.
  explicit frmCommunications(frmMain& main) : main_(main) {}
  // Returns when the window has closed.
  void Show();

 private:
  // How a request to connect ended.
  enum class Outcome { connected, failed, cancelled };

  void Form_Load();
  void Connect();
  void cmdGetAxes_Click();
  // Puts the chosen port, speed and echo on the line for a search. False after an exclamation.
  bool OpenForSearch();
  // Asks for every axis; meanwhile nothing of the window disturbs it.
  std::vector<std::string> Search();
  // False after an exclamation.
  bool StartSimulatorIfChosen();
  void ShowPorts();
  void ShowChosenPort();
  void cmdBind_Click();
  void cmdConnect_Click();
  void cmdCancel_Click();

  Outcome ChangeSettingsAndConnect(std::string& strError);
  bool LeaveOnline();
  bool TryToConnect(std::string& strError);
  bool ChangeSettings();
  bool ChangeEcho();
  bool ChangeCOMPort();
  bool ChangeBaudRate();
  bool ChangeAxis();
  void DisableUnimplementedOptions();
  [[nodiscard]] static std::int16_t GetEcho(int eIndex);
  void RemoveAllAxes();

  frmMain& main_;
  std::unique_ptr<Form> form_;
  std::int16_t iIndexCOM = 0;
  std::int16_t iIndexBaudRate = 0;
  std::int16_t iIndexProtocol = 1;
  std::string sAxis;
  std::vector<SerialAdapter> adapters_;
  bool searching_ = false;
  bool stopSearch_ = false;
  Connections connections_;
};

}  // namespace velmoor
