#include "app/frmCommunications.h"

#include <algorithm>
#include <array>
#include <vector>

#include "app/frmMain.h"
#include "link/AxisScan.h"
#include "link/BaudRates.h"
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

LineSettings frmCommunications::Chosen() const {
  return {.com = iIndexCOM,
          .bitsPerSecond = GetBaudRate(iIndexBaudRate),
          .axis = sAxis,
          .echo = GetEcho(iIndexProtocol) != 0};
}

bool frmCommunications::StartSimulatorIfChosen() {
  if (iIndexCOM != kSimulatedPort || world().serialPorts == nullptr) return true;
  const BusyPointer busy;
  const std::string reason = world().serialPorts->StartSimulator(GetBaudRate(iIndexBaudRate));
  if (!reason.empty()) ShowExclamation(reason);
  return reason.empty();
}

void frmCommunications::cmdGetAxes_Click() {
  if (!main_.IsOnline() && !StartSimulatorIfChosen()) return;
  const auto strAxes = Search();
  if (!strAxes) return;
  if (strAxes->empty()) {
    ShowExclamation("No axes found in system!  Please manually choose a default axis.");
    return;
  }
  RemoveAllAxes();
  ComboBox& cmbAxes = form_->comboBox("cmbAxes");
  cmbAxes.SetItems(*strAxes);
  cmbAxes.SetListIndex(0);
  sAxis = cmbAxes.Text();
  form_->progressBar("pgbAxes").SetProgress(0, kAxisCount);
}

std::optional<std::vector<std::string>> frmCommunications::Search() {
  searching_ = true;
  stopSearch_ = false;
  for (const char* const name : kBusyWhileSearching) form_->button(name).SetEnabled(false);
  std::optional<std::vector<std::string>> found;
  Trapped("frmCommunications.cmdGetAxes_Click: ", [this, &found] {
    found = main_.Hardware().connection.FindAxes(Chosen(), [this](int queried) {
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
  const auto prepare = [this] { return StartSimulatorIfChosen(); };
  if (main_.Hardware().connection.ConnectBy(Chosen(), prepare)) form_->Unload();
}

// While axes are searched it ends the search, and the window stays.
void frmCommunications::cmdCancel_Click() {
  stopSearch_ = true;
  if (!searching_) form_->Unload();
}

std::int16_t frmCommunications::GetEcho(int eIndex) {
  const bool echoes =
      std::find(kEchoProtocols.begin(), kEchoProtocols.end(), eIndex) != kEchoProtocols.end();
  return echoes ? 1 : 0;
}

}  // namespace velmoor
