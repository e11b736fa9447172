#include "app/ConnectionMenu.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

using enum MainCommand;

constexpr std::array<MainCommand, kSerialPorts> kPorts{
    mnuConnectionPort_0, mnuConnectionPort_1, mnuConnectionPort_2, mnuConnectionPort_3,
    mnuConnectionPort_4, mnuConnectionPort_5, mnuConnectionPort_6, mnuConnectionPort_7};
constexpr std::array<MainCommand, kBaudRates.size()> kRates{
    mnuConnectionRate_0, mnuConnectionRate_1, mnuConnectionRate_2};
constexpr std::size_t kLongestName = 24;

template <typename Commands>
std::optional<std::size_t> PlaceIn(const Commands& commands, MainCommand command) {
  const auto at = std::ranges::find(commands, command);
  if (at == commands.end()) return std::nullopt;
  return static_cast<std::size_t>(at - commands.begin());
}

}  // namespace

std::optional<std::int16_t> PortOfCommand(MainCommand command) {
  const auto place = PlaceIn(kPorts, command);
  return place ? std::optional(static_cast<std::int16_t>(*place)) : std::nullopt;
}

std::optional<std::int32_t> RateOfCommand(MainCommand command) {
  const auto place = PlaceIn(kRates, command);
  return place ? std::optional(kBaudRates.at(*place)) : std::nullopt;
}

std::string DeviceName(const PortLook& look) {
  if (look.name.empty()) return "none";
  if (look.name.size() <= kLongestName) return look.name;
  return look.name.substr(0, kLongestName - 3) + "...";
}

const char* PortWord(const PortLook& look, std::int16_t com, const Session& session) {
  if (session.IsOnline() && session.COM() == com) return "connected";
  switch (look.state) {
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

void ShowConnectionMenu(const layouts::frmMain& window, const Session& session) {
  const SerialPorts* const ports = world().serialPorts;
  for (std::int16_t port = 0; port < kSerialPorts; ++port) {
    Command& entry = window.commands[kPorts.at(static_cast<std::size_t>(port))];
    entry.SetChecked(port == session.COM());
    if (ports == nullptr) continue;
    const PortLook look = ports->Look(port);
    entry.SetText("COM&" + NumberText(port + 1) + ": " + DeviceName(look) + ", " +
                  PortWord(look, port, session));
  }
  for (std::size_t place = 0; place < kRates.size(); ++place) {
    window.commands[kRates.at(place)].SetChecked(kBaudRates.at(place) == session.BaudRate());
  }
}

void EnableConnectionMenu(const layouts::frmMain& window, bool ready, bool searching) {
  for (const MainCommand port : kPorts) window.commands[port].SetEnabled(ready && !searching);
  for (const MainCommand rate : kRates) window.commands[rate].SetEnabled(ready && !searching);
  window.commands[mnuConnectionAxes].SetEnabled(ready && !searching);
  window.commands[mnuConnectionCancel].SetEnabled(searching);
}

}  // namespace velmoor
