// Opening the tools' windows.

#include <algorithm>

#include "app/frmMain.h"
#include "platform/ScopedFlag.h"
#include "platform/Trapped.h"

namespace velmoor {

bool frmMain::RunToolCommand(MainCommand command) {
  if (!clsProject) return false;
  const auto info = std::ranges::find(Tools(), command, &ToolInfo::open);
  if (info == Tools().end()) return RunItemCommand(command);
  if (clsProject->IsShown(info->tool)) {
    clsProject->BringToFront(info->tool);
  } else {
    Trapped(std::string(info->trap), [&] { return clsProject->Show(info->tool); });
  }
  return true;
}

// ---- windows

void frmMain::SetToolOpened(ToolWindow tool, bool opened) {
  toolOpened_[static_cast<std::size_t>(tool)] = opened;
}

void frmMain::OpenTool(ToolWindow window, const std::string& prefix,
                       const std::function<bool()>& show) {
  SetToolOpened(window, Trapped(prefix, show));
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

}  // namespace velmoor
