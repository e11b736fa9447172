#include "platform/headless/HeadlessFailure.h"
#include "platform/headless/HeadlessForms.h"

namespace velmoor::headless {

HeadlessMainWindow::~HeadlessMainWindow() {
  if (forms_.main_ == this) forms_.main_ = nullptr;
}

void HeadlessMainWindow::SetPanel(StatusPanel panel, const std::string& text) {
  panels_[panel] = text;
  if (panel == StatusPanel::status) statusTexts.push_back(text);
}

std::string HeadlessMainWindow::Panel(StatusPanel panel) const {
  const auto at = panels_.find(panel);
  return at == panels_.end() ? std::string() : at->second;
}

Control& HeadlessMainWindow::ControlAt(std::size_t /*place*/) {
  throw std::logic_error("The main window has no controls");
}

void HeadlessMainWindow::Activate() {
  minimised = false;
  ++activations;
}

void HeadlessMainWindow::SetGeometry(std::optional<int> left, std::optional<int> top,
                                     std::optional<int> width, std::optional<int> height) {
  geometry = {left.value_or(geometry.left), top.value_or(geometry.top),
              width.value_or(geometry.width), height.value_or(geometry.height)};
}

bool HeadlessMainWindow::Close() {
  if (closing_) return false;
  if (!visible) return true;
  closing_ = true;
  QueryUnload.Raise();
  bool cancel = false;
  Unload.Raise(cancel);
  closing_ = false;
  if (cancel) return false;
  visible = false;
  Closed.Raise();
  return true;
}

void HeadlessMainWindow::Choose(const std::string& command) {
  HeadlessCommand& chosen = commands_.Named(command);
  if (forms_.InputBlocked()) return Fail("The user cannot reach " + command + " now");
  if (!chosen.Enabled() || !chosen.Visible()) return Fail(command + " is disabled or hidden");
  chosen.Chosen.Raise();
}

void HeadlessMainWindow::ChooseRecent(int place) {
  const auto at = static_cast<std::size_t>(place);
  if (at >= recent_.size() || recent_[at].empty()) return Fail("That recent entry is not shown");
  RecentChosen.Raise(place);
}

}  // namespace velmoor::headless
