#include "windows/SaveAs.h"

#include "platform/Files.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {

bool SaveAs(const FileDialogRequest& request, const std::string& prefix,
            const std::function<std::string()>& bytes) {
  return Trapped(prefix, [&] {
    const auto path = world().dialogs->SaveFile(request, true);
    if (path) world().files->WriteDurably(*path, bytes());
    return path.has_value();
  });
}

}  // namespace velmoor
