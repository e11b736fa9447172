#include "app/frmAbout.h"

#include <algorithm>

#include "app/LicenceNotices.h"
#include "app/Version.h"
#include "platform/Clipboard.h"
#include "platform/World.h"

namespace velmoor {

std::string frmAbout::Versions() {
  std::string text = std::string("Velmoor ") + kProgramVersion;
  if (!world().foundations) return text;
  for (const std::string& foundation : world().foundations()) text += "\r" + foundation;
  return text;
}

void frmAbout::FormLoad() {
  ui().lblVersions.SetText(Versions());
  ui().lblNotices.SetText(LicenceNotices());
  connections_ += ui().cmdCopy.Click.Connect([] {
    std::string text = Versions();
    std::ranges::replace(text, '\r', '\n');
    world().clipboard->SetText(text + "\n");
  });
  connections_ += ui().cmdCancel.Click.Connect([this] { Unload(); });
  ui().cmdCopy.SetEnabled(world().clipboard != nullptr);
}

}  // namespace velmoor
