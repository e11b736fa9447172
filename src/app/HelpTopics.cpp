#include "app/HelpTopics.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/Form.h"
#include "platform/HelpViewer.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::array kTopics{
    HelpTopic{"frmMain", "", "index.md", ""},
    HelpTopic{"frmSplash", "", "start.md", "starting-velmoor"},
    HelpTopic{"frmInitialSettings", "", "start.md", "starting-velmoor"},
    HelpTopic{"frmAbout", "", "index.md", "versions-and-licences"},
    HelpTopic{"frmCommunications", "", "start.md", "communications-settings"},
    HelpTopic{"frmMechanicalSystem", "", "machine.md", "the-window"},
    HelpTopic{"frmRescalePreview", "", "machine.md", "what-a-change-rescales"},
    HelpTopic{"frmProperties", "Interface", "parameters.md", "interface"},
    HelpTopic{"frmProperties", "Flexible", "parameters.md", "flexible-io"},
    HelpTopic{"frmProperties", "Over", "parameters.md", "over-travel"},
    HelpTopic{"frmProperties", "Homing", "parameters.md", "homing"},
    HelpTopic{"frmProperties", "", "parameters.md", ""},
    HelpTopic{"frmEditor", "", "parameters.md", "parameter-editor"},
    HelpTopic{"frmTuning", "", "tuning.md", "gain-tuning"},
    HelpTopic{"frmInertiaRatio", "", "tuning.md", "inertia-ratio"},
    HelpTopic{"frmPosition", "", "tables.md", "index-table"},
    HelpTopic{"frmDialogPosition", "", "tables.md", "position"},
    HelpTopic{"frmDialogEvent", "", "tables.md", "event"},
    HelpTopic{"frmDialogPOut", "", "tables.md", "outputs"},
    HelpTopic{"frmZone", "", "tables.md", "zone-table"},
    HelpTopic{"frmJog", "", "tables.md", "jog-table"},
    HelpTopic{"frmDialogStop", "", "transfers.md", "stopping-a-transfer"},
    HelpTopic{"frmCompare", "", "transfers.md", "comparing"},
    HelpTopic{"frmServoJog", "", "test-run.md", "the-window"},
    HelpTopic{"frmHomePosition", "", "test-run.md", "home-position"},
    HelpTopic{"frmMonitoring", "", "monitoring.md", "the-window"},
    HelpTopic{"frmProductInfo", "", "monitoring.md", "product-information"},
    HelpTopic{"frmTerminal", "", "terminal.md", "the-window"},
    HelpTopic{"frmTerminalOptions", "", "terminal.md", "terminal-options"},
    HelpTopic{"frmPrint", "", "reports.md", "printing"},
    HelpTopic{"frmPreview", "", "reports.md", "preview"},
    HelpTopic{"frmError", "", "messages.md", "an-unexpected-error"},
};

}  // namespace

std::span<const HelpTopic> HelpTopics() {
  return kTopics;
}

void ShowHelpFor(const Form* form) {
  if (world().helpViewer == nullptr) return;
  const std::string name = form == nullptr ? kTopics.front().window : form->Name();
  const std::string caption = form == nullptr ? std::string() : form->Caption();
  const auto* const topic = std::ranges::find_if(kTopics, [&](const HelpTopic& entry) {
    return name == entry.window && caption.starts_with(entry.leadWord);
  });
  const HelpTopic& found = topic == kTopics.end() ? kTopics.front() : *topic;
  world().helpViewer->ShowPage(found.page, found.anchor);
}

}  // namespace velmoor
