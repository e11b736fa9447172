// Opening the tools' windows, and reading a single tool from the amplifier.

#include <algorithm>

#include "app/frmMain.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "project/ToolNames.h"

namespace velmoor {

// A tool whose window stays beside the main window.
struct frmMain::ToolOpener {
  const char* command;
  Tool tool;
  ToolWindow window;
  const char* prefix;  // of a trapped error
  bool (*show)(clsHX7Project& project);
  void (*bringToFront)(clsHX7Project& project);
};

struct frmMain::SingleUpload {
  const char* command;
  Tool tool;
  bool (*upload)(clsHX7Project& project);
  int (*steps)(clsHX7Project& project);
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
template <auto tool>
bool UploadTool(clsHX7Project& project) {
  return (project.*tool)().Upload();
}
template <auto tool>
int StepsOf(clsHX7Project& project) {
  return (project.*tool)().RowsInArray();
}

}  // namespace

bool frmMain::RunToolCommand(const std::string& name) {
  using P = clsHX7Project;
  static constexpr std::array<ToolOpener, 7> kOpeners{{
      {"mnuToolsIndexerInterface", Tool::interface, ToolWindow::interface, "Main.InterfaceOpen: ",
       ShowTool<&P::Interface, &clsHX7Interface::Show_Interface>, BringToolToFront<&P::Interface>},
      {"mnuToolsIndexerFlexibleIO", Tool::flexibleIO, ToolWindow::flexibleIO,
       "Main.FlexibleIOOpen: ", ShowTool<&P::FlexibleIO, &clsHX7FlexibleIO::Show_FlexibleIO>,
       BringToolToFront<&P::FlexibleIO>},
      {"mnuToolsIndexerOverTravel", Tool::overTravel, ToolWindow::overTravel,
       "Main.OverTravelOpen: ", ShowTool<&P::OverTravel, &clsHX7OverTravel::Show_OverTravel>,
       BringToolToFront<&P::OverTravel>},
      {"mnuToolsIndexerHoming", Tool::homing, ToolWindow::homing, "Main.HomingOpen: ",
       ShowTool<&P::Homing, &clsHX7Homing::Show_Homing>, BringToolToFront<&P::Homing>},
      {"mnuToolsIndexerPosition", Tool::position, ToolWindow::position, "Main.PositionOpen: ",
       ShowTool<&P::Position, &clsHX7Position::Show_Position>, BringToolToFront<&P::Position>},
      {"mnuToolsIndexerJog", Tool::jog, ToolWindow::jog,
       "Main.JogOpen: ", ShowTool<&P::Jog, &clsHX7Jog::Show_Jog>, BringToolToFront<&P::Jog>},
      {"mnuToolsIndexerZone", Tool::zone, ToolWindow::zone,
       "Main.ZoneOpen: ", ShowTool<&P::Zone, &clsHX7Zone::Show_Zone>, BringToolToFront<&P::Zone>},
  }};
  static constexpr std::array<SingleUpload, 9> kUploads{{
      {"mnuToolsUploadParameterTuning", Tool::tuning, UploadTool<&P::Tuning>, StepsOf<&P::Tuning>},
      {"mnuToolsUploadParameterMechanicalSystem", Tool::mechanicalSystem,
       UploadTool<&P::MechanicalSystem>,
       [](P& project) { return int{project.MechanicalSystem().NumPns()}; }},
      {"mnuToolsUploadParameterInterface", Tool::interface, UploadTool<&P::Interface>,
       StepsOf<&P::Interface>},
      {"mnuToolsUploadParameterFlexibleIO", Tool::flexibleIO, UploadTool<&P::FlexibleIO>,
       StepsOf<&P::FlexibleIO>},
      {"mnuToolsUploadParameterHoming", Tool::homing, UploadTool<&P::Homing>, StepsOf<&P::Homing>},
      {"mnuToolsUploadParameterOverTravel", Tool::overTravel, UploadTool<&P::OverTravel>,
       StepsOf<&P::OverTravel>},
      {"mnuToolsUploadTableIndex", Tool::position, UploadTool<&P::Position>, StepsOf<&P::Position>},
      {"mnuToolsUploadTableJog", Tool::jog, UploadTool<&P::Jog>, StepsOf<&P::Jog>},
      {"mnuToolsUploadTableZone", Tool::zone, UploadTool<&P::Zone>, StepsOf<&P::Zone>},
  }};
  if (!clsProject) return false;
  const auto isNamed = [&name](const auto& entry) { return entry.command == name; };
  const auto* const opener = std::find_if(kOpeners.begin(), kOpeners.end(), isNamed);
  if (opener != kOpeners.end()) {
    OpenTool(*opener);
    return true;
  }
  const auto* const upload = std::find_if(kUploads.begin(), kUploads.end(), isNamed);
  if (upload == kUploads.end()) return false;
  UploadOne(*upload);
  return true;
}

// ---- windows

void frmMain::SetToolOpened(ToolWindow tool, bool opened) {
  toolOpened_[static_cast<std::size_t>(tool)] = opened;
}

void frmMain::OpenTool(const ToolOpener& opener) {
  if (ToolOpened(opener.window)) {
    opener.bringToFront(*clsProject);
    return;
  }
  const bool shown = Trapped(opener.prefix, [&] { return opener.show(*clsProject); });
  SetToolOpened(opener.window, shown);
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
  SetToolOpened(tool, true);
  Trapped(prefix, [&show] {
    show();
    return true;
  });
  SetToolOpened(tool, false);
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

// ---- single transfers

// What a failed or stopped upload has read leaves no trace: one tool's rows would be half the
// file's and half the amplifier's.
void frmMain::UploadOne(const SingleUpload& item) {
  const std::string name = ToolName(item.tool);
  Trapped("Upload " + name + " failed!\r", [&] {
    if (!GoOnlineForTransfer("Upload failed!")) return false;
    if (!AskYesNo("Existing " + name +
                  " will be overwritten with hardware data!\rDo you wish to continue?")) {
      return false;
    }
    clsProject->TakeSnapshot();
    BeginProcedure("Upload " + name, item.steps(*clsProject));
    const bool ok = item.upload(*clsProject);
    UnloadProcedureDialog();
    if (!ok) {
      ShowExclamation(blnStopProcedure ? "Upload " + name + " terminated!"
                                       : "Could not upload " + name + " from controller!");
      blnStopProcedure = false;
      clsProject->RestoreSnapshot();
      return false;
    }
    if (AskYesNo(name +
                 " successfully uploaded from controller.\rCommit uploaded data to project?")) {
      clsProject->CommitUploadedTool(item.tool);
    } else {
      clsProject->RestoreSnapshot();
    }
    return true;
  });
  UnloadProcedureDialog();
}

}  // namespace velmoor
