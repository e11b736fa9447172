#include "app/frmCommunications.h"

#include <algorithm>
#include <array>
#include <vector>

#include "app/ConnectionMenu.h"
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

constexpr int kImplementedProtocol = 1;
constexpr std::array<int, 5> kEchoProtocols{1, 3, 4, 6, 7};
constexpr const char* kNoAdapter = "No adapter found";

std::size_t Place(int row) {
  return static_cast<std::size_t>(row) - 1;
}

std::vector<std::string> AllAxes() {
  std::vector<std::string> axes;
  for (std::uint32_t i = 0; i < kAxisCount; ++i) axes.push_back(HexText(i));
  return axes;
}

enum Column { kPort, kDevice, kState, kColumns };
constexpr std::array<const char*, kColumns> kHeadings{"Port", "Device", "State"};
constexpr std::array<int, kColumns> kWidths{20, 26, 10};

}  // namespace

void frmCommunications::FormLoad() {
  DisableUnimplementedOptions();
  iIndexProtocol = kImplementedProtocol;
  // The port of a line has no choice here.
  iIndexCOM = main_.COM() <= kSimulatedPort ? main_.COM() : std::int16_t{0};
  iIndexBaudRate = static_cast<std::int16_t>(GetBaudRateIndex(main_.BaudRate()));
  ui().optProtocol.SetValue(iIndexProtocol);
  Grid& ports = ui().vsPorts;
  ports.Bind(this);
  for (int column = 0; column < kColumns; ++column) {
    ports.SetColumnWidth(column, kWidths.at(static_cast<std::size_t>(column)));
  }
  ports.SetColumnShare(kDevice);
  ports.SetRowsInSight(Rows() - 1);
  ports.SetCurrent(iIndexCOM + 1, kPort);
  ui().optBaudRate.SetValue(iIndexBaudRate);
  ComboBox& cmbAxes = ui().cmbAxes;
  cmbAxes.SetItems(AllAxes());
  cmbAxes.SetListIndex(static_cast<int>(ParseHex(main_.Axis()).value_or(0)));
  sAxis = cmbAxes.Text();
  ui().lblQuery.SetText("");
  ShowPorts();
  Connect();
  if (searchAtOnce_) tmrSearch_->SetEnabled(true);
}

void frmCommunications::Connect() {
  connections_ += ui().vsPorts.RowColChange.Connect([this] {
    if (ui().vsPorts.Row() < 1) return;
    iIndexCOM = static_cast<std::int16_t>(ui().vsPorts.Row() - 1);
    ShowChosenPort();
  });
  connections_ += ui().vsPorts.RowChosen.Connect([this](int) { cmdConnect_Click(); });
  connections_ += ui().vsPorts.Tip.Connect([this](int row, int, std::string& tip) {
    if (row >= 1 && row <= static_cast<int>(looks_.size())) tip = looks_[Place(row)].device;
  });
  tmrSearch_ = world().forms->NewTimer();
  tmrSearch_->SetInterval(std::chrono::milliseconds(1));
  connections_ += tmrSearch_->Tick.Connect([this] {
    tmrSearch_->SetEnabled(false);
    cmdGetAxes_Click();
  });
  connections_ += ui().optBaudRate.Click.Connect(
      [this](int index) { iIndexBaudRate = static_cast<std::int16_t>(index); });
  connections_ += ui().optProtocol.Click.Connect(
      [this](int index) { iIndexProtocol = static_cast<std::int16_t>(index); });
  connections_ += ui().cmbAxes.Click.Connect([this] { sAxis = ui().cmbAxes.Text(); });
  connections_ += ui().cmdGetAxes.Click.Connect([this] { cmdGetAxes_Click(); });
  connections_ += ui().cmdConnect.Click.Connect([this] { cmdConnect_Click(); });
  connections_ += ui().cmdRefresh.Click.Connect([this] { ShowPorts(); });
  connections_ += ui().cmdBind.Click.Connect([this] { cmdBind_Click(); });
  connections_ += ui().cmdCancel.Click.Connect([this] { cmdCancel_Click(); });
}

void frmCommunications::DisableUnimplementedOptions() {
  for (int index = 0; index < ui().optProtocol.Count(); ++index) {
    ui().optProtocol.SetChoiceEnabled(index, index == kImplementedProtocol);
  }
}

// ---- the ports and what stands behind them

void frmCommunications::ShowPorts() {
  SerialPorts* const ports = world().serialPorts;
  ui().vsPorts.SetRowHidden(kSimulatedPort + 1, ports == nullptr);
  if (ports == nullptr) return;
  looks_.clear();
  for (std::int16_t com = 0; com < kSerialPorts; ++com) looks_.push_back(ports->Look(com));
  ui().vsPorts.Refresh();
  adapters_ = ports->Adapters();
  std::vector<std::string> names;
  for (const SerialAdapter& adapter : adapters_) {
    names.push_back(adapter.device + "  " + adapter.name);
  }
  ComboBox& cmbAdapters = ui().cmbAdapters;
  cmbAdapters.SetEnabled(!names.empty());
  if (names.empty()) names.emplace_back(kNoAdapter);
  cmbAdapters.SetItems(names);
  cmbAdapters.SetListIndex(0);
  ShowChosenPort();
}

int frmCommunications::Columns() const {
  return kColumns;
}

std::string frmCommunications::Text(int row, int column) const {
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  const bool simulated = row == kSimulatedPort + 1;
  if (column == kPort) return simulated ? "Simulated amplifier" : "COM" + std::to_string(row);
  if (simulated) {
    return column == kDevice ? "of this program" : PortWord({}, kSimulatedPort, main_);
  }
  if (looks_.empty()) return {};
  const PortLook& look = looks_[Place(row)];
  return column == kDevice ? DeviceName(look)
                           : PortWord(look, static_cast<std::int16_t>(row - 1), main_);
}

CellTraits frmCommunications::Traits(int row, int column) const {
  CellTraits traits;
  if (column != kState || row > static_cast<int>(looks_.size())) return traits;
  const PortState state = looks_[Place(row)].state;
  traits.tone = state == PortState::free      ? Tone::good
                : state == PortState::missing ? Tone::faint
                                              : Tone::alarm;
  return traits;
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
  Label& lblPort = ui().lblPort;
  lblPort.SetText(look.words);
  lblPort.SetTone(look.state == PortState::free ? Tone::normal : Tone::busy);
  Button& cmdBind = ui().cmdBind;
  cmdBind.SetEnabled(!simulated && !adapters_.empty());
  cmdBind.SetCaption(simulated ? "&Assign" : "&Assign to COM" + std::to_string(iIndexCOM + 1));
}

void frmCommunications::cmdBind_Click() {
  const int chosen = ui().cmbAdapters.ListIndex();
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
  return frmMain::StartSimulatorBehind(iIndexCOM, GetBaudRate(iIndexBaudRate));
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
  ComboBox& cmbAxes = ui().cmbAxes;
  cmbAxes.SetItems(*strAxes);
  cmbAxes.SetListIndex(0);
  sAxis = cmbAxes.Text();
  ui().pgbAxes.SetProgress(0, kAxisCount);
}

std::optional<std::vector<std::string>> frmCommunications::Search() {
  searching_ = true;
  stopSearch_ = false;
  EnableBesideSearch(false);
  std::optional<std::vector<std::string>> found;
  Trapped("frmCommunications.cmdGetAxes_Click: ", [this, &found] {
    found = main_.Hardware().connection.FindAxes(Chosen(), [this](int queried) {
      ui().pgbAxes.SetProgress(queried, kAxisCount);
      ui().lblQuery.SetText(queried == kAxisCount
                                ? "Query Finished"
                                : std::to_string(queried) + " of 16 Axes Queried");
      return !stopSearch_;
    });
    return true;
  });
  EnableBesideSearch(true);
  searching_ = false;
  ShowChosenPort();
  return found;
}

void frmCommunications::EnableBesideSearch(bool bState) {
  ui().vsPorts.SetEnabled(bState);
  for (Button* const button :
       {&ui().cmdGetAxes, &ui().cmdConnect, &ui().cmdRefresh, &ui().cmdBind}) {
    button->SetEnabled(bState);
  }
}

void frmCommunications::RemoveAllAxes() {
  ui().cmbAxes.SetItems({});
}

// ---- connecting

void frmCommunications::cmdConnect_Click() {
  const auto prepare = [this] { return StartSimulatorIfChosen(); };
  if (main_.Hardware().connection.ConnectBy(Chosen(), prepare)) Unload();
}

// While axes are searched it ends the search, and the window stays.
void frmCommunications::cmdCancel_Click() {
  stopSearch_ = true;
  if (!searching_) Unload();
}

std::int16_t frmCommunications::GetEcho(int eIndex) {
  const bool echoes =
      std::find(kEchoProtocols.begin(), kEchoProtocols.end(), eIndex) != kEchoProtocols.end();
  return echoes ? 1 : 0;
}

}  // namespace velmoor
