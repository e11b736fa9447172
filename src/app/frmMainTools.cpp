// Opening the tools' windows.

#include <algorithm>

#include "app/frmMain.h"
#include "platform/ScopedFlag.h"
#include "platform/Trapped.h"

namespace velmoor {

// A tool whose window stays beside the main window.
struct frmMain::ToolOpener {
  const char* command;
  ToolWindow window;
  const char* prefix;  // of a trapped error
  bool (*show)(clsHX7Project& project);
  void (*bringToFront)(clsHX7Project& project);
};

namespace {

// The functions that do to a project's tool what the table entry says.
template <auto tool, auto show>
bool ShowTool(clsHX7Project& project) {
  return ((project.*tool)().*show)();
}
template <auto tool>
void BringToolToFront(clsHX7Project& project) {
  (project.*tool)().BringToFront();
}
}  // namespace

bool frmMain::RunToolCommand(const std::string& name) {
  using P = clsHX7Project;
  static constexpr std::array<ToolOpener, 7> kOpeners{{
      {"mnuToolsIndexerInterface", ToolWindow::interface, "Main.InterfaceOpen: ",
       ShowTool<&P::Interface, &clsHX7Interface::Show_Interface>, BringToolToFront<&P::Interface>},
      {"mnuToolsIndexerFlexibleIO", ToolWindow::flexibleIO,
       "Main.FlexibleIOOpen: ", ShowTool<&P::FlexibleIO, &clsHX7FlexibleIO::Show_FlexibleIO>,
       BringToolToFront<&P::FlexibleIO>},
      {"mnuToolsIndexerOverTravel", ToolWindow::overTravel,
       "Main.OverTravelOpen: ", ShowTool<&P::OverTravel, &clsHX7OverTravel::Show_OverTravel>,
       BringToolToFront<&P::OverTravel>},
      {"mnuToolsIndexerHoming", ToolWindow::homing, "Main.HomingOpen: ",
       ShowTool<&P::Homing, &clsHX7Homing::Show_Homing>, BringToolToFront<&P::Homing>},
      {"mnuToolsIndexerPosition", ToolWindow::position, "Main.PositionOpen: ",
       ShowTool<&P::Position, &clsHX7Position::Show_Position>, BringToolToFront<&P::Position>},
      {"mnuToolsIndexerJog", ToolWindow::jog,
       "Main.JogOpen: ", ShowTool<&P::Jog, &clsHX7Jog::Show_Jog>, BringToolToFront<&P::Jog>},
      {"mnuToolsIndexerZone", ToolWindow::zone,
       "Main.ZoneOpen: ", ShowTool<&P::Zone, &clsHX7Zone::Show_Zone>, BringToolToFront<&P::Zone>},
  }};
  if (!clsProject) return false;
  const auto isNamed = [&name](const auto& entry) { return entry.command == name; };
  const auto* const opener = std::find_if(kOpeners.begin(), kOpeners.end(), isNamed);
  if (opener != kOpeners.end()) {
    if (ToolOpened(opener->window)) {
      opener->bringToFront(*clsProject);
    } else {
      OpenTool(opener->window, opener->prefix, [&] { return opener->show(*clsProject); });
    }
    return true;
  }
  return RunItemCommand(name);
}

// ---- windows

void frmMain::SetToolOpened(ToolWindow tool, bool opened) {
  toolOpened_[static_cast<std::size_t>(tool)] = opened;
}

void frmMain::OpenTool(ToolWindow window, const std::string& prefix,
                       const std::function<bool()>& show) {
  SetToolOpened(window, Trapped(prefix, show));
}

void frmMain::clsProject_ToolClosed(Tool tool) {
  switch (tool) {
    case Tool::interface:
      return SetToolOpened(ToolWindow::interface, false);
    case Tool::flexibleIO:
      return SetToolOpened(ToolWindow::flexibleIO, false);
    case Tool::overTravel:
      return SetToolOpened(ToolWindow::overTravel, false);
    case Tool::homing:
      return SetToolOpened(ToolWindow::homing, false);
    case Tool::position:
      return SetToolOpened(ToolWindow::position, false);
    case Tool::jog:
      return SetToolOpened(ToolWindow::jog, false);
    case Tool::zone:
      return SetToolOpened(ToolWindow::zone, false);
    default:
      return;
  }
}

void frmMain::OpenModalTool(ToolWindow tool, const std::string& prefix,
                            const std::function<void()>& show) {
  if (ToolOpened(tool)) return;
  const ScopedFlag opened(toolOpened_[static_cast<std::size_t>(tool)]);
  Trapped(prefix, [&show] {
    show();
    return true;
  });
}

void frmMain::mnuToolsTuning_Click() {
  if (!clsProject) return;
  OpenModalTool(ToolWindow::tuning,
                "Main.TuningOpenModal: ", [this] { clsProject->Tuning().Show_Tuning(); });
}

void frmMain::mnuToolsMechanicalSystem_Click() {
  if (!clsProject) return;
  OpenModalTool(ToolWindow::mechanicalSystem, "Main.MechanicalSystemOpenModal: ", [this] {
    clsProject->MechanicalSystem().Show_MechanicalSystem();
  });
}

void frmMain::mnuToolsEditor_Click() {
  if (!clsProject) return;
  OpenModalTool(ToolWindow::editor,
                "Main.EditorOpenModal: ", [this] { clsProject->Editor().Show_Editor(); });
}

}  // namespace velmoor
