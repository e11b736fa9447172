// What the main window keeps from one start to the next.

#include <utility>

#include "app/frmMain.h"
#include "platform/Numbers.h"
#include "platform/SerialPorts.h"
#include "platform/Settings.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr const char* kWindowSettings[] = {"MainLeft", "MainTop", "MainWidth", "MainHeight"};

std::optional<int> ReadPlace(const char* name) {
  const auto text = world().settings->Read(name);
  const auto number = text ? ParseWhole(*text) : std::nullopt;
  return number && std::in_range<int>(*number) ? std::optional(static_cast<int>(*number))
                                               : std::nullopt;
}

}  // namespace

void frmMain::WriteToRegistry() {
  WriteToRegistryCommunicationsSettings();
  WriteToRegistryMotorSize();
  if (window_->IsMinimised()) return;
  WriteToRegistryWindowSettings();
  WriteToRegistryActiveBarSettings();
}

void frmMain::ReadFromRegistryCommunicationsSettings() {
  constexpr int kLastPort = 7;
  const int port = world().settings->ReadNumber("Port", 0);
  intCOM = static_cast<std::int16_t>(port >= 0 && port <= kLastPort ? port : 0);
  lngBaudRate = world().settings->ReadNumber("Rate", 9600);
  SetAxis(world().settings->ReadText("Axis", "0"));
}

void frmMain::ReadFromRegistryMotorSize() {
  strLastMotorSize = std::to_string(world().settings->ReadNumber("LastMotorSize", 30));
}

void frmMain::ReadFromRegistryWindowSettings() {
  window_->SetGeometry(ReadPlace(kWindowSettings[0]), ReadPlace(kWindowSettings[1]),
                       ReadPlace(kWindowSettings[2]), ReadPlace(kWindowSettings[3]));
}

void frmMain::WriteToRegistryCommunicationsSettings() {
  Trapped("frmMain.WriteToRegistryCommunicationsSettings: ", [this] {
    StoreCommunicationsSettings();
    return true;
  });
}

void frmMain::StoreCommunicationsSettings() {
  // A simulated amplifier, and the port of a line, are for the session: the next one looks for the
  // real one again.
  if (intCOM >= kSerialPorts) return;
  world().settings->Write("Port", std::to_string(intCOM));
  world().settings->Write("Rate", std::to_string(lngBaudRate));
  world().settings->Write("Axis", strAxis);
}

void frmMain::WriteToRegistryMotorSize() {
  Trapped("frmMain.WriteToRegistryMotorSize: ", [this] {
    world().settings->Write("LastMotorSize", strLastMotorSize);
    return true;
  });
}

void frmMain::WriteToRegistryWindowSettings() {
  const WindowGeometry place = window_->Geometry();
  const int values[] = {place.left, place.top, place.width, place.height};
  Trapped("frmMain.WriteToRegistryWindowSettings: ", [&values] {
    for (std::size_t i = 0; i < std::size(values); ++i) {
      world().settings->Write(kWindowSettings[i], std::to_string(values[i]));
    }
    return true;
  });
}

}  // namespace velmoor
