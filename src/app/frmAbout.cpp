#include "app/frmAbout.h"

#include <algorithm>

#include "app/LicenceNotices.h"
#include "app/Version.h"
#include "platform/Clipboard.h"
#include "platform/Form.h"
#include "platform/World.h"

namespace velmoor {

std::string frmAbout::Versions() {
  std::string text = std::string("Velmoor ") + kProgramVersion;
  if (!world().foundations) return text;
  for (const std::string& foundation : world().foundations()) text += "\r" + foundation;
  return text;
}

void frmAbout::Show() const {
  const std::unique_ptr<Form> form = world().forms->Load("frmAbout");
  form->label("lblVersions").SetText(Versions());
  form->label("lblNotices").SetText(LicenceNotices());
  Connections held;
  held += form->button("cmdCopy").Click.Connect([] {
    std::string text = Versions();
    std::ranges::replace(text, '\r', '\n');
    world().clipboard->SetText(text + "\n");
  });
  held += form->button("cmdCancel").Click.Connect([&form] { (void)form->Unload(); });
  form->button("cmdCopy").SetEnabled(world().clipboard != nullptr);
  form->Show(FormMode::modal);
}

}  // namespace velmoor
