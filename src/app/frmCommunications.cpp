#include "app/frmCommunications.h"

#include <algorithm>
#include <array>
#include <vector>

#include "app/frmMain.h"
#include "link/AxisScan.h"
#include "link/BaudRates.h"
#include "operations/FailureText.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr int kProtocols = 8;
constexpr int kImplementedProtocol = 1;
constexpr std::array<int, 5> kEchoProtocols{1, 3, 4, 6, 7};
constexpr std::int32_t kSearchTimeOut = 500;  // milliseconds
constexpr std::int32_t kTimeOut = 5000;
constexpr int kAttempts = 2;
constexpr std::size_t kLongestName = 16;  // of a device, in the choice of its port
constexpr const char* kNoAdapter = "No adapter found";
// What would disturb a search that is under way.
constexpr const char* kBusyWhileSearching[] = {"cmdGetAxes", "cmdConnect", "cmdRefresh", "cmdBind"};

std::vector<std::string> AllAxes() {
  std::vector<std::string> axes;
  for (std::uint32_t i = 0; i < kAxisCount; ++i) axes.push_back(HexText(i));
  return axes;
}

const char* StateWord(PortState state) {
  switch (state) {
    case PortState::free:
      return "free";
    case PortState::missing:
      return "absent";
    case PortState::busy:
      return "in use";
    default:
      return "no access";
  }
}

// "COM1: ttyUSB0, free"
std::string PortCaption(std::int16_t com, const PortLook& look) {
  std::string name = look.name;
  if (name.size() > kLongestName) name = name.substr(0, kLongestName - 3) + "...";
  return "COM" + std::to_string(com + 1) + ": " + name + ", " + StateWord(look.state);
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
  ShowPorts();
}

void frmCommunications::Connect() {
  connections_ += form_->optionGroup("optComPort").Click.Connect([this](int index) {
    iIndexCOM = static_cast<std::int16_t>(index);
    ShowChosenPort();
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
  connections_ += form_->button("cmdRefresh").Click.Connect([this] { ShowPorts(); });
  connections_ += form_->button("cmdBind").Click.Connect([this] { cmdBind_Click(); });
  connections_ += form_->QueryUnload.Connect([this](bool& cancel) { cancel = searching_; });
  connections_ += form_->button("cmdCancel").Click.Connect([this] { cmdCancel_Click(); });
}

void frmCommunications::DisableUnimplementedOptions() {
  for (int index = 0; index < kProtocols; ++index) {
    form_->optionGroup("optProtocol").SetChoiceEnabled(index, index == kImplementedProtocol);
  }
}

// ---- the ports and what stands behind them

void frmCommunications::ShowPorts() {
  SerialPorts* const ports = world().serialPorts;
  OptionGroup& choices = form_->optionGroup("optComPort");
  choices.SetChoiceEnabled(kSimulatedPort, ports != nullptr);
  if (ports == nullptr) return;
  for (std::int16_t com = 0; com < kSerialPorts; ++com) {
    choices.SetChoiceCaption(com, PortCaption(com, ports->Look(com)));
  }
  adapters_ = ports->Adapters();
  std::vector<std::string> names;
  for (const SerialAdapter& adapter : adapters_) {
    names.push_back(adapter.device + "  " + adapter.name);
  }
  ComboBox& cmbAdapters = form_->comboBox("cmbAdapters");
  cmbAdapters.SetEnabled(!names.empty());
  if (names.empty()) names.emplace_back(kNoAdapter);
  cmbAdapters.SetItems(names);
  cmbAdapters.SetListIndex(0);
  ShowChosenPort();
}

void frmCommunications::ShowChosenPort() {
  SerialPorts* const ports = world().serialPorts;
  if (ports == nullptr) return;
  const bool simulated = iIndexCOM == kSimulatedPort;
  const PortLook look =
      simulated ? PortLook{.device = {},
                           .name = {},
                           .state = PortState::free,
                           .words =
                               "An amplifier without hardware, to learn and to try.  It "
                               "forgets everything when Velmoor ends."}
                : ports->Look(iIndexCOM);
  Label& lblPort = form_->label("lblPort");
  lblPort.SetText(look.words);
  lblPort.SetTone(look.state == PortState::free ? Tone::normal : Tone::busy);
  Button& cmdBind = form_->button("cmdBind");
  cmdBind.SetEnabled(!simulated && !adapters_.empty());
  cmdBind.SetCaption(simulated ? "&Assign" : "&Assign to COM" + std::to_string(iIndexCOM + 1));
}

void frmCommunications::cmdBind_Click() {
  const int chosen = form_->comboBox("cmbAdapters").ListIndex();
  Trapped("frmCommunications.cmdBind_Click: ", [&] {
    world().serialPorts->Bind(iIndexCOM, adapters_.at(static_cast<std::size_t>(chosen)).device);
    return true;
  });
  ShowPorts();
}

// ---- the search for axes

bool frmCommunications::OpenForSearch() {
  if (!StartSimulatorIfChosen()) return false;
  clsHX7Helix7& helix = *main_.Helix7();
  helix.SetEcho(GetEcho(iIndexProtocol) != 0);
  helix.SetCOMPort(static_cast<std::int16_t>(iIndexCOM + 1));
  helix.SetBaudRate(GetBaudRate(iIndexBaudRate));
  helix.SetTimeOut(kSearchTimeOut);
  if (helix.GoOnlineManually()) return true;
  ShowExclamation(main_.Comm().LastError());
  return false;
}

bool frmCommunications::StartSimulatorIfChosen() {
  if (iIndexCOM != kSimulatedPort || world().serialPorts == nullptr) return true;
  const BusyPointer busy;
  const std::string reason = world().serialPorts->StartSimulator(GetBaudRate(iIndexBaudRate));
  if (!reason.empty()) ShowExclamation(reason);
  return reason.empty();
}

void frmCommunications::cmdGetAxes_Click() {
  // Online the line is in use as it is; offline it is opened for the search alone.
  const bool opens = !main_.IsOnline();
  if (opens && !OpenForSearch()) return;
  const std::vector<std::string> strAxes = Search();
  if (opens) main_.Helix7()->GoOffline();
  if (strAxes.empty()) {
    ShowExclamation("No axes found in system!  Please manually choose a default axis.");
    return;
  }
  RemoveAllAxes();
  ComboBox& cmbAxes = form_->comboBox("cmbAxes");
  cmbAxes.SetItems(strAxes);
  cmbAxes.SetListIndex(0);
  sAxis = cmbAxes.Text();
  form_->progressBar("pgbAxes").SetProgress(0, kAxisCount);
}

std::vector<std::string> frmCommunications::Search() {
  const BusyPointer busy;
  searching_ = true;
  stopSearch_ = false;
  for (const char* const name : kBusyWhileSearching) form_->button(name).SetEnabled(false);
  std::vector<std::string> found;
  Trapped("frmCommunications.cmdGetAxes_Click: ", [this, &found] {
    found = ScanAxes(*main_.Helix7(), [this](int queried) {
      form_->progressBar("pgbAxes").SetProgress(queried, kAxisCount);
      form_->label("lblQuery")
          .SetText(queried == kAxisCount ? "Query Finished"
                                         : std::to_string(queried) + " of 16 Axes Queried");
      return !stopSearch_;
    });
    return true;
  });
  for (const char* const name : kBusyWhileSearching) form_->button(name).SetEnabled(true);
  searching_ = false;
  ShowChosenPort();
  return found;
}

void frmCommunications::RemoveAllAxes() {
  form_->comboBox("cmbAxes").SetItems({});
}

// ---- connecting

void frmCommunications::cmdConnect_Click() {
  std::string strError;
  switch (ChangeSettingsAndConnect(strError)) {
    case Outcome::connected:
      main_.Hardware().connection.TellOnline();
      main_.Hardware().connection.OfferToSetLineRight(false);
      ShowInformation("Settings changed and communications established successfully!");
      form_->Unload();
      break;
    case Outcome::failed:
      main_.Hardware().connection.TellOffline();
      ShowExclamation(
          FailureText(strError + "\rPlease recheck connections and settings before retrying!"));
      break;
    case Outcome::cancelled:
      break;
  }
}

// While axes are searched it ends the search, and the window stays.
void frmCommunications::cmdCancel_Click() {
  stopSearch_ = true;
  if (!searching_) form_->Unload();
}

frmCommunications::Outcome frmCommunications::ChangeSettingsAndConnect(std::string& strError) {
  if (main_.IsOnline() && !LeaveOnline()) return Outcome::cancelled;
  if (!StartSimulatorIfChosen()) return Outcome::cancelled;
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
    main_.Hardware().connection.TellOffline();
  } else {
    ShowExclamation(
        "Error terminating communications with hardware!  Check connections and setup!");
  }
  return true;
}

bool frmCommunications::TryToConnect(std::string& strError) {
  ForgetFailures();
  if (!ChangeSettings()) {
    strError = "Error changing communications settings!";
    return false;
  }
  const BusyPointer busy;
  if (!main_.Helix7()->GoOnlineManually()) {
    strError = "Error establishing communications with hardware!";
    return false;
  }
  ResultCode code = main_.Helix7()->IsRX900AndVKLM();
  std::string value;
  // An answer to another question than that of Pn800 may pass for its own echo.
  if (code == kNoResponse && main_.Helix7()->GetParameter("800", value) == kEchoMismatch) {
    main_.Helix7()->SetEcho(false);
    main_.SetEcho(0);
    if (main_.Helix7()->GoOnlineManually()) code = main_.Helix7()->IsRX900AndVKLM();
  }
  if (code == kSuccess) {
    strError.clear();
    return true;
  }
  strError = code == kNotRX900 || code == kNotVKLM ? main_.Helix7()->IdentityText(code)
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
