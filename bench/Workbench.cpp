#include "Workbench.h"

#include <iostream>
#include <stdexcept>
#include <utility>

#include "Timing.h"
#include "platform/Files.h"
#include "simulator/InProcessPort.h"
#include "tables/TableCsv.h"

namespace velmoor::bench {
namespace {

// Qt reads this when the program is made.
int& OnScreenOrInMemory(int& argc) {
  if (qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
  return argc;
}

void FillTables(clsHX7Project& project) {
  std::string index = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
  std::string zone = "lower,upper\n";
  std::string jog = "speed\n";
  for (int step = 1; step <= 128; ++step) {
    const std::string next = step < 128 ? "clamp-part-" + std::to_string(step + 1) : "END";
    index += "clamp-part-" + std::to_string(step) + ",A-" + std::to_string(90000 + step) +
             ".125,1234.5,12.5,20,ANZ:A,SEL5T65535,65535," + next + "\n";
  }
  for (int row = 1; row <= 32; ++row) {
    zone += std::to_string(-row) + "," + std::to_string(row) + "\n";
  }
  for (int row = 1; row <= 16; ++row) jog += std::to_string(row) + "\n";
  Require(ImportCsv(project, project.Position(), index).empty() &&
              ImportCsv(project, project.Zone(), zone).empty() &&
              ImportCsv(project, project.Jog(), jog).empty(),
          "the import of the tables");
  Require(project.Position().ChangeAccepted() && project.Zone().ChangeAccepted() &&
              project.Jog().ChangeAccepted(),
          "the commit of the tables");
}

}  // namespace

Workbench::Workbench(int& argc, char** argv, std::filesystem::path workFolder, Table& figures)
    : table(figures),
      folder(std::move(workFolder)),
      fullProject(folder / "full.spj"),
      program_(OnScreenOrInMemory(argc), argv, nullptr) {
  program_.FillWorld(world_);
  adapters.Fill(world_, folder.string());
  world_.boxes = &user_;
  world_.settings = &settings_;
  SetWorld(&world_);
  MakeFullProject();
}

Workbench::~Workbench() {
  SetWorld(nullptr);
}

void Workbench::Time(std::string what, Unit unit, int runs, Goal goal,
                     const std::function<void()>& work, std::optional<Limit> limit) {
  table.Add({std::move(what), unit, Times(runs, work), goal, limit});
}

void Workbench::MakeFullProject() {
  adapters.files.ReplaceDurably(JoinPath(world_.appDirectory, "Velmoor.spt"), fullProject);
  SimulatedLine line;
  InProcessPort port(line);
  ConsoleSession session(port, std::cerr);
  Open(session, fullProject);
  FillTables(session.project());
  session.project().Save();
}

void Require(bool done, const std::string& step) {
  if (!done) throw std::runtime_error(step + " failed");
}

void Open(ConsoleSession& session, const std::string& project) {
  Require(session.Start("400") && session.Open(project), "the opening of " + project);
}

void GoOnline(ConsoleSession& session) {
  Require(session.Hardware().connection.GoOnlineFor(""), "going online");
}

}  // namespace velmoor::bench
