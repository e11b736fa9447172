#include "app/HelpTopics.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/Form.h"
#include "platform/HelpViewer.h"
#include "platform/World.h"
#include "session/Tools.h"

namespace velmoor {
namespace {

constexpr std::array kOthers{
    HelpTopic{"frmMain", "", "index.md", ""},
    HelpTopic{"frmSplash", "", "start.md", "starting-velmoor"},
    HelpTopic{"frmInitialSettings", "", "start.md", "starting-velmoor"},
    HelpTopic{"frmAbout", "", "index.md", "versions-and-licences"},
    HelpTopic{"frmCommunications", "", "start.md", "communications-settings"},
    HelpTopic{"frmRescalePreview", "", "machine.md", "what-a-change-rescales"},
    HelpTopic{"frmProperties", "", "parameters.md", ""},
    HelpTopic{"frmInertiaRatio", "", "tuning.md", "inertia-ratio"},
    HelpTopic{"frmDialogPosition", "", "tables.md", "position"},
    HelpTopic{"frmDialogEvent", "", "tables.md", "event"},
    HelpTopic{"frmDialogPOut", "", "tables.md", "outputs"},
    HelpTopic{"frmRehearsal", "", "rehearsal.md", "in-the-window"},
    HelpTopic{"frmDialogStop", "", "transfers.md", "stopping-a-transfer"},
    HelpTopic{"frmCompare", "", "transfers.md", "comparing"},
    HelpTopic{"frmHistory", "", "transfers.md", "the-history"},
    HelpTopic{"frmRecovery", "", "start.md", "work-that-was-not-saved"},
    HelpTopic{"frmStart", "", "start.md", "the-start-page"},
    HelpTopic{"frmProject", "", "start.md", "the-road-of-a-project"},
    HelpTopic{"frmLine", "", "line.md", "the-line-in-the-window"},
    HelpTopic{"frmLineSet", "", "line.md", "parameters-of-several-axes"},
    HelpTopic{"frmResults", "", "line.md", "results"},
    HelpTopic{"frmDoubts", "", "transfers.md", "values-in-doubt"},
    HelpTopic{"frmServoJog", "", "test-run.md", "the-window"},
    HelpTopic{"frmHomePosition", "", "test-run.md", "home-position"},
    HelpTopic{"frmMonitoring", "", "monitoring.md", "the-window"},
    HelpTopic{"frmTryIt", "", "tuning.md", "trying-gains"},
    HelpTopic{"frmRecordings", "", "recordings.md", "the-window"},
    HelpTopic{"frmAlarms", "", "monitoring.md", "alarms-without-a-project"},
    HelpTopic{"frmProductInfo", "", "monitoring.md", "product-information"},
    HelpTopic{"frmTerminal", "", "terminal.md", "the-window"},
    HelpTopic{"frmTerminalOptions", "", "terminal.md", "terminal-options"},
    HelpTopic{"frmPrint", "", "reports.md", "printing"},
    HelpTopic{"frmPreview", "", "reports.md", "preview"},
    HelpTopic{"frmLog", "", "messages.md", "the-log"},
    HelpTopic{"frmError", "", "messages.md", "an-unexpected-error"},
};

}  // namespace

std::span<const HelpTopic> HelpTopics() {
  // A tool's window comes before one that serves several of them.
  static const std::vector<HelpTopic> kTopics = [] {
    std::vector<HelpTopic> topics;
    for (const ToolInfo& info : Tools()) {
      topics.push_back({info.window, info.caption, info.page, info.anchor});
    }
    topics.insert(topics.end(), kOthers.begin(), kOthers.end());
    return topics;
  }();
  return kTopics;
}

void ShowHelpFor(const Form* form) {
  if (world().helpViewer == nullptr) return;
  const std::string name = form == nullptr ? std::string() : form->Name();
  const std::string caption = form == nullptr ? std::string() : form->Caption();
  const auto topics = HelpTopics();
  const auto topic = std::ranges::find_if(topics, [&](const HelpTopic& entry) {
    return name == entry.window && caption.starts_with(entry.leadWord);
  });
  const HelpTopic& found = topic == topics.end() ? kOthers.front() : *topic;
  world().helpViewer->ShowPage(std::string(found.page), std::string(found.anchor));
}

}  // namespace velmoor
