#include "app/frmLog.h"

#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/TextViewer.h"
#include "platform/World.h"

namespace velmoor {
namespace {

enum Column { kTime, kText };
constexpr std::chrono::milliseconds kLook{500};
constexpr int kAsContents = 0;
// "2026-03-01 14:05:09.123  W  link      0PRM800: No response error."
constexpr std::size_t kTimeLength = 23;
constexpr std::size_t kLevel = 25;
constexpr std::size_t kRest = 28;

}  // namespace

void frmLog::FormLoad() {
  Grid& grid = ui().vsEntries;
  grid.Bind(this);
  grid.SetColumnWidth(kTime, kAsContents);
  grid.SetColumnShare(kText);
  connections_ +=
      grid.Tip.Connect([this](int row, int, std::string& tip) { tip = Text(row, kText); });
  ui().lblPath.SetText("The newest entries of this session.  File: " + CurrentLog()->Path());
  connections_ += ui().txtFilter.Change.Connect([this] { Look(true); });
  connections_ += ui().chkWarnings.Click.Connect([this] { Look(true); });
  connections_ += ui().cmdFile.Click.Connect([this] { cmdFile_Click(); });
  connections_ += ui().cmdClose.Click.Connect([this] { Unload(); });
  tmrLook_ = world().forms->NewTimer();
  tmrLook_->SetInterval(kLook);
  connections_ += tmrLook_->Tick.Connect([this] { Look(false); });
  tmrLook_->SetEnabled(true);
  lines_.clear();
  Look(true);
}

frmLog::Entry frmLog::Parted(const std::string& line) {
  if (line.size() <= kRest) return {.time = {}, .text = line};
  return {.time = line.substr(0, kTimeLength),
          .text = line.substr(kRest),
          .isWarning = line[kLevel] == 'W'};
}

void frmLog::Look(bool always) {
  std::vector<std::string> lines = CurrentLog()->Recent();
  if (!always && lines == lines_) return;
  Grid& grid = ui().vsEntries;
  const bool follows = always || grid.Row() < 1 || grid.Row() >= Rows() - 1;
  lines_ = std::move(lines);
  shown_.clear();
  const std::string wanted = LowerCase(ui().txtFilter.Text());
  for (const std::string& line : lines_) {
    const bool passes = wanted.empty() || LowerCase(line).find(wanted) != std::string::npos;
    Entry entry = Parted(line);
    if (passes && (entry.isWarning || !ui().chkWarnings.Value())) {
      shown_.push_back(std::move(entry));
    }
  }
  grid.Refresh();
  if (follows && !shown_.empty()) grid.SetCurrent(Rows() - 1, kTime);
}

std::string frmLog::Text(int row, int column) const {
  if (row == 0) return column == kTime ? "Time" : "Entry";
  const Entry& entry = shown_.at(static_cast<std::size_t>(row) - 1);
  if (column == kTime) return entry.time;
  return entry.isWarning ? "Warning: " + entry.text : entry.text;
}

CellTraits frmLog::Traits(int row, int /*column*/) const {
  CellTraits traits;
  if (shown_.at(static_cast<std::size_t>(row) - 1).isWarning) traits.tone = Tone::alarm;
  return traits;
}

void frmLog::cmdFile_Click() {
  const std::string path = CurrentLog()->Path();
  TextViewer* const viewer = world().textViewer;
  const bool shown = viewer != nullptr && viewer->IsAvailable() && viewer->Open(path);
  if (!shown) ShowExclamation("The log could not be shown!\rIt lies in\r" + path);
}

}  // namespace velmoor
