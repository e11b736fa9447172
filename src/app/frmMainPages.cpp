// What fills the window while no tool window is open, and what is dropped on it.

#include "app/frmMain.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/SerialPorts.h"
#include "platform/World.h"
#include "tables/TableCsv.h"
#include "tables/TableWindow.h"

namespace velmoor {

RoadFacts frmMain::FactsOfRoad() const {
  return {.online = blnIsOnline,
          .line = operations_.connection.StateText(),
          .lineTone = window_->StatusTone(),
          .compared = compared_ ? &*compared_ : nullptr};
}

void frmMain::UpdatePages() {
  UpdateLine();
  if (!projectShown_ && workplace_.IsOpen()) {
    projectPage_.Unload();
    startPage_.Unload();
    return workplace_.ShowPage();
  }
  workplace_.HidePage();
  if (!projectShown_) {
    projectPage_.Unload();
    std::vector<std::string> recent;
    for (std::size_t place = 0; place < RecentFiles::kPlaces; ++place) {
      recent.push_back(RecentFile.At(place));
    }
    return startPage_.ShowRecent(recent, ready_);
  }
  startPage_.Unload();
  projectPage_.ShowContents({.title = clsProject->Title(),
                             .place = clsProject->FileName(),
                             .module = kModules[static_cast<std::size_t>(eSelectedModule)].text,
                             .rows = RoadOf(eSelectedModule, *clsProject, FactsOfRoad())});
}

// ---- with an amplifier, before there is a project

void frmMain::mnuFileReadAmplifier_Click() {
  if (!blnIsOnline) mnuToolsOnline_Click();
  if (!blnIsOnline || !MakeNewProject("")) return;
  operations_.uploads.UploadAll();
}

void frmMain::mnuToolsSimulated_Click() {
  const LineSettings settings{.com = kSimulatedPort,
                              .bitsPerSecond = lngBaudRate > 0 ? lngBaudRate : 9600};
  const bool connected = operations_.connection.ConnectBy(
      settings, [&settings] { return StartSimulatorBehind(settings.com, settings.bitsPerSecond); });
  if (connected && !projectShown_) (void)MakeNewProject("simulated");
}

// ---- dropped files

void frmMain::OnFileDropped(const std::string& path) {
  if (!started_ || world().forms->InputBlocked()) return;
  const std::string ending = LowerCase(Right(path, 4));
  if (ending == ".spj") return CommandLineOpenProject(path);
  if (LowerCase(Right(path, 5)) == ".toml") return OpenLine(path);
  RunCommand("frmMain.OnFileDropped: ", [this, &path, &ending] {
    if (ending != ".csv") {
      ShowExclamation(
          "Only projects (.spj), lines (.toml) and tables (.csv) can be dropped here!\r" + path);
      return false;
    }
    ImportDropped(path);
    return true;
  });
}

void frmMain::ImportDropped(const std::string& path) {
  if (!projectShown_) {
    return ShowExclamation("A table is read into a project: open or make one first!\r" + path);
  }
  const std::string text = world().files->ReadAll(path);
  const auto table = TableOfCsv(text);
  if (!table) {
    return ShowExclamation("The file tells none of the columns of a table!\r" + path);
  }
  RunToolCommand(InfoOf(*table).open);
  if (clsProject->IsShown(*table)) clsProject->TableOf(*table)->Window().Import(text);
}

}  // namespace velmoor
