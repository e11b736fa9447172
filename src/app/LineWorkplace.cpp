#include "app/LineWorkplace.h"

#include <algorithm>
#include <sstream>

#include "app/frmResults.h"
#include "platform/Events.h"
#include "platform/FileDialogs.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/SerialPorts.h"
#include "platform/World.h"

namespace velmoor {
namespace {

// The session's port for a device, or for "COM1" and so on.
std::int16_t PortOf(const std::string& port) {
  const std::string name = UpperCase(port);
  const auto number =
      name.starts_with("COM") ? ParseWhole(std::string_view(name).substr(3)) : std::nullopt;
  if (number && *number >= 1 && *number <= kSerialPorts) {
    return static_cast<std::int16_t>(*number - 1);
  }
  return world().serialPorts == nullptr ? std::int16_t{0} : world().serialPorts->Lend(port);
}

// As a line file names the session's port.
std::string NameOfPort(std::int16_t com) {
  if (world().serialPorts == nullptr) return "COM" + NumberText(com + 1);
  return world().serialPorts->Look(com).device;
}

}  // namespace

LineWorkplace::LineWorkplace(SessionState& session, Hooks hooks)
    : session_(session), hooks_(std::move(hooks)) {}

// ---- the file

std::optional<LineFile> LineWorkplace::Read(const std::string& path) {
  try {
    return ReadLineFile(path);
  } catch (const LineFileError& error) {
    std::vector<CsvRow> rows{{"What Was Refused"}};
    std::istringstream faults(error.what());
    for (std::string fault; std::getline(faults, fault);) rows.push_back({fault});
    (void)frmResults({.caption = "Refused: " + GetFileTitle(path),
                      .summary = GetFileTitle(path) + " is no line file that can be used.",
                      .rows = std::move(rows),
                      .widths = {100}})
        .Show(FormMode::modal);
    return std::nullopt;
  }
}

void LineWorkplace::Open(const std::string& path, LineFile line) {
  Close();
  line_ = std::move(line);
  path_ = path;
  com_ = PortOf(line_->port);
  states_.Take(*line_);
  next_ = 0;
  hooks_.showPages();
  Identify(false);
}

void LineWorkplace::Close() {
  Rest();
  HidePage();
  line_.reset();
  path_.clear();
}

void LineWorkplace::SearchAndSave() {
  const auto path = world().dialogs->SaveFile({.title = "Search the Line and Save",
                                               .filter = "Line File (*.toml)|*.toml",
                                               .defaultSuffix = "toml",
                                               .initialDirectory = {},
                                               .initialName = "line.toml"},
                                              true);
  if (!path) return;
  Rest();
  hooks_.leaveLine();
  std::optional<LineFile> found;
  runner_.RunAlone("Search the Line", [&] {
    found = SearchLine(runner_, {.com = session_.COM()}, NameOfPort(session_.COM()),
                       GetFileDirectory(*path));
    if (found) WriteLineFile(*path, *found);
  });
  hooks_.followDevice();
  const std::string told = runner_.ToldOf({});
  if (!found || !told.empty()) {
    return ShowExclamation(told.empty() ? "The search was stopped." : told);
  }
  Open(*path, std::move(*found));
  OfferProjects();
}

// Axes that were found have no projects yet.
void LineWorkplace::OfferProjects() {
  std::vector<std::string> missing;
  for (const LineAxis& axis : line_->axes) {
    if (!axis.project.empty() && !world().files->Exists(axis.project)) {
      missing.push_back(axis.project);
    }
  }
  if (missing.empty() ||
      !AskYesNo(NumberText(missing.size()) + (missing.size() == 1 ? " axis has" : " axes have") +
                " no project yet.\rDo you wish to make new ones?  Upload reads the amplifiers "
                "into them.")) {
    return;
  }
  const BusyPointer busy;
  for (const std::string& project : missing) {
    world().files->ReplaceDurably(JoinPath(world().appDirectory, "Velmoor.spt"), project);
  }
  states_.LookAgain();
}

// ---- the page

void LineWorkplace::ShowPage() {
  if (!line_) return;
  page_.ShowLine(GetFileTitle(path_),
                 path_ + ", " + line_->port + " at " + NumberText(line_->bitsPerSecond) + " bit/s");
}

void LineWorkplace::HidePage() {
  if (!page_.IsOpen()) return;
  page_.Unload();
  // Whatever happens meanwhile may change the files.
  states_.LookAgain();
}

void LineWorkplace::OpenAxis(std::size_t place) {
  const LineAxisState& state = states_.Axes().at(place);
  const LineAxis axis = state.axis;
  const bool present = state.presence == LineAxisState::Presence::present;
  hooks_.command("LineWorkplace.OpenAxis: ", [this, axis, present] {
    if (axis.project.empty()) {
      ShowExclamation("The line file names no project of axis " + axis.address + ".");
      return false;
    }
    hooks_.openAxis(
        axis, {.com = com_, .bitsPerSecond = line_->bitsPerSecond, .axis = axis.address}, present);
    return true;
  });
}

// ---- while nothing else happens

void LineWorkplace::LookAtNext() {
  if (!line_ || !page_.IsOpen() || runner_.Runs()) return;
  if (const auto place = states_.LookAtNext()) page_.RefreshAxis(*place);
  if (session_.IsOnline()) {
    watch_.Rest();
    return page_.ShowRemark("Online with axis " + session_.Axis() +
                            ": the line is looked at again once that is offline.");
  }
  if (states_.Axes().empty()) return;
  next_ %= states_.Axes().size();
  const auto look = watch_.Ask(*line_, com_, states_.Axes()[next_].axis.address);
  if (!look) return page_.ShowRemark("The line cannot be looked at: " + watch_.Failure());
  page_.ShowRemark({});
  states_.Note(next_, *look);
  page_.RefreshAxis(next_);
  ++next_;
}

void LineWorkplace::Rest() {
  watch_.Rest();
}

}  // namespace velmoor
