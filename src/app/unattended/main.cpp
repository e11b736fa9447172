// velmoor-unattended PROJECT FRESH DEVICE: the desktop program's session without a screen.
//
// Starts as velmoor does, opens PROJECT, goes online on DEVICE, downloads everything, makes the
// project FRESH, uploads into it, goes offline, and compares the two row by row. Tells each step;
// exits with 0 only when all of it worked and every row is equal.

#include <exception>
#include <iostream>

#include "app/MainModule.h"
#include "platform/Rx900Utils.h"
#include "platform/cli/RunProgram.h"
#include "platform/headless/HeadlessFailure.h"
#include "platform/headless/HeadlessWorld.h"
#include "platform/headless/OnlyInstance.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixSerialPort.h"
#include "platform/posix/ProgramPlaces.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "platform/toml/TomlTexts.h"
#include "project/ProjectCompare.h"
#include "project/data/CatalogueLibrary.h"

namespace velmoor {
namespace {

class StepFailed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class UnattendedSession {
 public:
  UnattendedSession(std::string project, std::string fresh, const std::string& device)
      : project_(std::move(project)),
        fresh_(std::move(fresh)),
        module_(port_, instance_, project_) {
    headless_.world.files = &files_;
    headless_.world.databases = &databases_;
    headless_.world.rx900Utils = &rx900Utils_;
    headless_.world.catalogue = &catalogue_;
    headless_.world.keyedTexts = &keyedTexts_;
    headless_.world.appDirectory = posix::ProgramDirectory();
    headless_.world.catalogueCopyDirectory = copyPlace_.Directory();
    headless_.world.workDirectory = JoinPath(posix::StateDirectory(), "work");
    port_.SetDeviceMap({{"COM1", device}});
    headless::SetFailureHandler([](const std::string& text) { throw StepFailed(text); });
  }

  void Run() {
    Step("Start up", [this] { Require(module_.Main(), "the program did not start"); });
    Expect("System Status: Project '", "open the project");
    Step("Go online", [this] { Choose("mnuToolsOnline"); });
    Expect("System Status: Online", "go online");
    Step("Download all", [this] {
      Answer("All parameter and table data will be downloaded", BoxAnswer::ok);
      Choose("mnuToolsDownloadAll");
      RequireBox("Download All complete!");
    });
    Step("Make a fresh project", [this] {
      files_.Remove(fresh_);
      headless_.dialogs.answers.emplace_back(fresh_);
      Choose("mnuFileNew");
    });
    Step("Upload all", [this] {
      Answer("All existing table data and parameter data will be overwritten", BoxAnswer::yes);
      Answer("Commit uploaded data to project?", BoxAnswer::yes);
      headless_.forms.OnShow("frmCompare",
                             [](headless::HeadlessForm& form) { form.Press("cmdCancel"); });
      Choose("mnuToolsUploadAll");
      Choose("mnuFileSave");
    });
    Step("Go offline", [this] { Choose("mnuToolsOffline"); });
    Expect("System Status: Offline", "go offline");
    Step("Close", [this] {
      Require(Window().Close(), "the window did not close");
      module_.Terminate();
    });
    Compare();
  }

 private:
  void Step(const char* name, const std::function<void()>& work) {
    std::cout << name << " ... " << std::flush;
    boxesBefore_ = headless_.boxes.shown.size();
    work();
    for (std::size_t i = boxesBefore_; i < headless_.boxes.shown.size(); ++i) {
      const headless::ShownBox& box = headless_.boxes.shown[i];
      if (TellsOfFailure(box.kind, box.buttons)) throw StepFailed(box.text);
    }
    std::cout << "done\n";
  }

  headless::HeadlessMainWindow& Window() { return headless_.forms.Main(); }
  void Choose(const char* command) { Window().Choose(command); }
  void Answer(const char* textPart, BoxAnswer answer) { headless_.boxes.Expect(textPart, answer); }

  static void Require(bool holds, const std::string& words) {
    if (!holds) throw StepFailed(words);
  }
  // A box of this step begins so; figures stand behind it.
  void RequireBox(const std::string& beginning) {
    const auto& shown = headless_.boxes.shown;
    std::string last;
    for (std::size_t i = boxesBefore_; i < shown.size(); ++i) {
      last = shown[i].text;
      if (last.starts_with(beginning)) return;
    }
    throw StepFailed("no word of \"" + beginning + "\", but: " + last);
  }
  void Expect(const std::string& status, const std::string& what) {
    const std::string shown = Window().Panel(StatusPanel::status);
    std::cout << "  " << shown << '\n';
    Require(shown.substr(0, status.size()) == status, "could not " + what);
  }

  void Compare() {
    bool equal = true;
    for (const PartComparison& part : CompareProjects(project_, fresh_)) {
      std::cout << "Compare " << part.part << ": " << part.rows << " rows, "
                << part.differences.size() << " differences\n";
      for (const ProjectDifference& difference : part.differences) {
        std::cout << "  " << difference.row << " " << difference.field << ": '" << difference.first
                  << "' and '" << difference.second << "'\n";
      }
      equal = equal && part.differences.empty() && part.rows > 0;
    }
    Require(equal, "the two projects differ");
    std::cout << "Everything matched.\n";
  }

  std::string project_, fresh_;
  posix::CatalogueCopyPlace copyPlace_;
  headless::HeadlessWorld headless_;
  posix::PosixFiles files_;
  sqlcipher::SqlcipherDatabases databases_;
  StandardRx900Utils rx900Utils_;
  CatalogueLibrary catalogue_;
  toml_texts::TomlTexts keyedTexts_;
  posix::PosixSerialPort port_;
  headless::OnlyInstance instance_;
  MainModule module_;
  std::size_t boxesBefore_ = 0;
};

const ProgramTable& UnattendedTable() {
  using Kind = ValueEntry::Kind;
  static const ProgramTable kTable{
      .name = "velmoor-unattended",
      .about = "the desktop program's session without a screen",
      .options = {},
      .arguments = {{.value = {"PROJECT", Kind::file}},
                    {.value = {"FRESH", Kind::file}},
                    {.value = {"DEVICE", Kind::file}}},
      .notes =
          "Opens PROJECT, downloads it to the amplifier on DEVICE, uploads into the new project "
          "FRESH,\nand compares the two row by row.\n"};
  return kTable;
}

int Run(const CommandLine& line) {
  const std::vector<std::string>& words = line.Arguments();
  try {
    UnattendedSession(words[0], words[1], words[2]).Run();
    return kDone;
  } catch (const std::exception&) {
    std::cout << "failed\n" << std::flush;
    throw;
  }
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  return velmoor::RunProgram(velmoor::UnattendedTable(), argc, argv, velmoor::Run);
}
