#include "app/frmCommunications.h"

#include <algorithm>
#include <array>
#include <vector>

#include "app/frmMain.h"
#include "link/BaudRates.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr int kAxes = 16;
constexpr int kProtocols = 8;
constexpr int kImplementedProtocol = 1;
constexpr std::array<int, 5> kEchoProtocols{1, 3, 4, 6, 7};
constexpr std::int32_t kSearchTimeOut = 500;  // milliseconds
constexpr std::int32_t kTimeOut = 5000;
constexpr int kAttempts = 2;

std::vector<std::string> AllAxes() {
  std::vector<std::string> axes;
  for (std::uint32_t i = 0; i < kAxes; ++i) axes.push_back(HexText(i));
  return axes;
}

}  // namespace

void frmCommunications::Show() {
  form_ = world().forms->Load("frmCommunications");
  Form_Load();
  Connect();
  form_->Show(FormMode::modal);
  connections_.Clear();
  form_.reset();
}

void frmCommunications::Form_Load() {
  form_->button("cmdHelp").SetEnabled(false);
  DisableUnimplementedOptions();
  iIndexProtocol = kImplementedProtocol;
  iIndexCOM = main_.COM();
  iIndexBaudRate = static_cast<std::int16_t>(GetBaudRateIndex(main_.BaudRate()));
  form_->optionGroup("optProtocol").SetValue(iIndexProtocol);
  form_->optionGroup("optComPort").SetValue(iIndexCOM);
  form_->optionGroup("optBaudRate").SetValue(iIndexBaudRate);
  ComboBox& cmbAxes = form_->comboBox("cmbAxes");
  cmbAxes.SetItems(AllAxes());
  cmbAxes.SetListIndex(static_cast<int>(ParseHex(main_.Axis()).value_or(0)));
  sAxis = cmbAxes.Text();
  form_->label("lblQuery").SetText("");
}

void frmCommunications::Connect() {
  connections_ += form_->optionGroup("optComPort").Click.Connect([this](int index) {
    iIndexCOM = static_cast<std::int16_t>(index);
  });
  connections_ += form_->optionGroup("optBaudRate").Click.Connect([this](int index) {
    iIndexBaudRate = static_cast<std::int16_t>(index);
  });
  connections_ += form_->optionGroup("optProtocol").Click.Connect([this](int index) {
    iIndexProtocol = static_cast<std::int16_t>(index);
  });
  connections_ += form_->comboBox("cmbAxes").Click.Connect(
      [this] { sAxis = form_->comboBox("cmbAxes").Text(); });
  connections_ += form_->button("cmdGetAxes").Click.Connect([this] { cmdGetAxes_Click(); });
  connections_ += form_->button("cmdConnect").Click.Connect([this] { cmdConnect_Click(); });
  connections_ += form_->button("cmdCancel").Click.Connect([this] { cmdCancel_Click(); });
}

void frmCommunications::DisableUnimplementedOptions() {
  for (int index = 0; index < kProtocols; ++index) {
    form_->optionGroup("optProtocol").SetChoiceEnabled(index, index == kImplementedProtocol);
  }
}

// ---- the search for axes

void frmCommunications::cmdGetAxes_Click() {
  std::vector<std::string> strAxes;
  {
    const BusyPointer busy;
    for (int i = 0; i < kAxes; ++i) {
      const std::string axis = HexText(static_cast<std::uint32_t>(i));
      main_.Helix7()->SetTimeOut(kSearchTimeOut);
      if (main_.Helix7()->GetAxis(axis)) strAxes.push_back(axis);
      form_->progressBar("pgbAxes").SetProgress(i + 1, kAxes);
      form_->label("lblQuery")
          .SetText(i + 1 == kAxes ? "Query Finished"
                                  : std::to_string(i + 1) + " of 16 Axes Queried");
      YieldEvents();
    }
    main_.Helix7()->SetTimeOut(kTimeOut);
  }
  if (strAxes.empty()) {
    ShowExclamation("No axes found in system!  Please manually choose a default axis.");
    return;
  }
  RemoveAllAxes();
  ComboBox& cmbAxes = form_->comboBox("cmbAxes");
  cmbAxes.SetItems(strAxes);
  cmbAxes.SetListIndex(0);
  sAxis = cmbAxes.Text();
  form_->progressBar("pgbAxes").SetProgress(0, kAxes);
}

void frmCommunications::RemoveAllAxes() {
  form_->comboBox("cmbAxes").SetItems({});
}

// ---- connecting

void frmCommunications::cmdConnect_Click() {
  std::string strError;
  switch (ChangeSettingsAndConnect(strError)) {
    case Outcome::connected:
      main_.PostOnline();
      ShowInformation("Settings changed and communications established successfully!");
      form_->Unload();
      break;
    case Outcome::failed:
      main_.PostOffline();
      ShowExclamation(strError + "\rPlease recheck connections and settings before retrying!");
      break;
    case Outcome::cancelled:
      break;
  }
}

void frmCommunications::cmdCancel_Click() {
  form_->Unload();
}

frmCommunications::Outcome frmCommunications::ChangeSettingsAndConnect(std::string& strError) {
  if (main_.IsOnline() && !LeaveOnline()) return Outcome::cancelled;
  main_.Helix7()->SetTimeOut(kSearchTimeOut);
  bool connected = false;
  for (int attempt = 0; attempt < kAttempts && !connected; ++attempt) {
    connected = TryToConnect(strError);
  }
  main_.Helix7()->SetTimeOut(kTimeOut);
  return connected ? Outcome::connected : Outcome::failed;
}

// False: the user keeps the connection.
bool frmCommunications::LeaveOnline() {
  if (!AskOkCancel("Velmoor is currently online!\rDo you wish to disconnect before change?")) {
    return false;
  }
  if (main_.Helix7()->GoOffline()) {
    main_.PostOffline();
  } else {
    ShowExclamation(
        "Error terminating communications with hardware!  Check connections and setup!");
  }
  return true;
}

bool frmCommunications::TryToConnect(std::string& strError) {
  if (!ChangeSettings()) {
    strError = "Error changing communications settings!";
    return false;
  }
  const BusyPointer busy;
  if (!main_.Helix7()->GoOnlineManually()) {
    strError = "Error establishing communications with hardware!";
    return false;
  }
  const ResultCode code = main_.Helix7()->IsRX900AndVKLM();
  if (code == kSuccess) {
    strError.clear();
    return true;
  }
  strError = code == kNotRX900  ? "Option type error: Not RX900!"
             : code == kNotVKLM ? "Servo type error: Not VKLM!"
                                : "Error communicating to indexer!";
  main_.Helix7()->GoOffline();
  return false;
}

bool frmCommunications::ChangeSettings() {
  return ChangeEcho() && ChangeCOMPort() && ChangeBaudRate() && ChangeAxis();
}

std::int16_t frmCommunications::GetEcho(int eIndex) {
  const bool echoes =
      std::find(kEchoProtocols.begin(), kEchoProtocols.end(), eIndex) != kEchoProtocols.end();
  return echoes ? 1 : 0;
}

bool frmCommunications::ChangeEcho() {
  const std::int16_t echo = GetEcho(iIndexProtocol);
  main_.Helix7()->SetEcho(echo != 0);
  main_.SetEcho(echo);
  return true;
}

bool frmCommunications::ChangeCOMPort() {
  main_.Helix7()->SetCOMPort(static_cast<std::int16_t>(iIndexCOM + 1));
  main_.SetCOM(iIndexCOM);
  return true;
}

bool frmCommunications::ChangeBaudRate() {
  const std::int32_t rate = GetBaudRate(iIndexBaudRate);
  main_.Helix7()->SetBaudRate(rate);
  main_.SetBaudRate(rate);
  return true;
}

bool frmCommunications::ChangeAxis() {
  const auto axis = ParseHex(sAxis);
  if (!axis) return false;
  main_.Helix7()->SetAxisNumber(static_cast<std::int16_t>(*axis));
  main_.SetAxis(sAxis);
  return true;
}

}  // namespace velmoor
