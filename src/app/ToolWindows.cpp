#include "app/ToolWindows.h"

#include <algorithm>

#include "platform/Form.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {

bool IsToolWindowOpened(std::string_view strType) {
  const std::string wanted = LowerCase(strType);
  const std::vector<Form*> shown = world().forms->Shown();
  return std::any_of(shown.begin(), shown.end(), [&wanted](const Form* form) {
    const std::string name = LowerCase(form->Name());
    if (name != "frmproperties") return name == wanted;
    const std::string caption = LowerCase(form->Caption());
    const std::string strLeadWord = caption.substr(0, caption.find(' '));
    return wanted.find(strLeadWord) != std::string::npos;
  });
}

}  // namespace velmoor
