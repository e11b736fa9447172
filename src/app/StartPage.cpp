#include "app/StartPage.h"

#include <algorithm>
#include <array>

#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

enum Column { kName, kFolder, kChanged, kPending, kAction, kColumns };
constexpr std::array<const char*, kColumns> kHeadings{"Project", "Folder", "Saved", "Delivery", ""};
constexpr std::array<int, kColumns> kWidths{18, 26, 21, 26, 9};

struct PageButton {
  Button* button;
  MainCommand command;
};
std::array<PageButton, 6> ButtonsOf(const layouts::frmStart& page) {
  return {{{&page.cmdNew, MainCommand::mnuFileNew},
           {&page.cmdOpen, MainCommand::mnuFileOpen},
           {&page.cmdRead, MainCommand::mnuFileReadAmplifier},
           {&page.cmdTry, MainCommand::mnuToolsSimulated},
           {&page.cmdConnect, MainCommand::mnuToolsCommunicationsSettings},
           {&page.cmdGuide, MainCommand::mnuHelpContents}}};
}

std::string DeliveryOf(const ProjectGlance& glance) {
  switch (glance.state) {
    case ProjectGlance::State::missing:
      return "Not found";
    case ProjectGlance::State::unreadable:
      return "Cannot be read";
    case ProjectGlance::State::project:
      break;
  }
  if (glance.marked > 0) return "To download: " + NumberText(glance.marked);
  return glance.delivered.empty() ? "Not delivered yet" : "Delivered " + glance.delivered;
}

Tone ToneOf(const ProjectGlance& glance) {
  if (glance.state != ProjectGlance::State::project) return Tone::alarm;
  if (glance.marked > 0) return Tone::busy;
  return glance.delivered.empty() ? Tone::faint : Tone::good;
}

}  // namespace

void StartPage::FormLoad() {
  for (const PageButton& entry : ButtonsOf(ui())) {
    connections_ +=
        entry.button->Click.Connect([this, command = entry.command] { hooks_.choose(command); });
  }
  Grid& grid = ui().vsRecent;
  grid.Bind(this);
  for (int column = 0; column < kColumns; ++column) {
    grid.SetColumnWidth(column, kWidths.at(static_cast<std::size_t>(column)));
  }
  grid.SetColumnShare(kFolder);
  connections_ += grid.RowChosen.Connect([this](int row) { Open(row); });
  connections_ += grid.CellButton.Connect([this](int row, int) { Open(row); });
  connections_ += grid.Tip.Connect([this](int row, int, std::string& tip) { tip = At(row).path; });
  looks_ = world().forms->NewTimer();
  looks_->SetInterval(std::chrono::milliseconds(1));
  connections_ += looks_->Tick.Connect([this] { LookAtNext(); });
}

void StartPage::ShowRecent(const std::vector<std::string>& recent, bool ready) {
  std::vector<std::string> shown;
  for (const Entry& entry : entries_) shown.push_back(entry.path);
  std::vector<std::string> wanted = recent;
  std::erase(wanted, std::string());
  const bool appears = !IsOpen();
  if (appears && !Show(FormMode::page)) return;
  if (appears || shown != wanted) Take(recent);
  for (const PageButton& entry : ButtonsOf(ui())) entry.button->SetEnabled(ready);
  ui().vsRecent.SetEnabled(ready);
}

void StartPage::Take(const std::vector<std::string>& recent) {
  entries_.clear();
  for (std::size_t place = 0; place < recent.size(); ++place) {
    if (!recent[place].empty()) entries_.push_back({static_cast<int>(place), recent[place]});
  }
  Grid& grid = ui().vsRecent;
  grid.Refresh();
  grid.SetRowsInSight(static_cast<int>(entries_.size()));
  grid.SetVisible(!entries_.empty());
  ui().lblNone.SetVisible(entries_.empty());
  if (!entries_.empty()) grid.SetCurrent(1, kName);
  looks_->SetEnabled(!entries_.empty());
}

void StartPage::LookAtNext() {
  const auto next = std::ranges::find(entries_, false, &Entry::seen);
  if (next == entries_.end()) return looks_->SetEnabled(false);
  next->glance = GlanceAt(next->path);
  next->seen = true;
  ui().vsRecent.RefreshRow(static_cast<int>(next - entries_.begin()) + 1);
}

void StartPage::Open(int row) {
  hooks_.open(At(row).place);
}

int StartPage::Columns() const {
  return kColumns;
}

std::string StartPage::Text(int row, int column) const {
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  const Entry& entry = At(row);
  switch (column) {
    case kName:
      return DropRight(GetFileTitle(entry.path), 4);
    case kFolder:
      return GetFileDirectory(entry.path);
    case kChanged:
      return entry.glance.changed;
    case kPending:
      return entry.seen ? DeliveryOf(entry.glance) : std::string();
    default:
      return "Open";
  }
}

CellTraits StartPage::Traits(int row, int column) const {
  CellTraits traits;
  traits.action = column == kAction;
  if (column == kPending && At(row).seen) traits.tone = ToneOf(At(row).glance);
  return traits;
}

}  // namespace velmoor
