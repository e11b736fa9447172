#include "console/TextCommands.h"

#include <ostream>

#include "console/ConsoleBoxes.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/VisibleText.h"
#include "platform/World.h"
#include "project/ProjectText.h"

namespace velmoor {
namespace {

// A copy of the file, in the program's own folder: a project is exported while Velmoor has it open,
// from a folder that cannot be written, and while version control asks.
std::string CopyOf(const std::string& path) {
  Files& files = *world().files;
  const std::string folder = JoinPath(world().catalogueCopyDirectory, "export");
  files.MakeDirectories(folder);
  std::string copy = JoinPath(folder, GetFileTitle(path));
  files.LayWorkingCopy(path, copy);
  return copy;
}

bool Export(const Context& context) {
  Files& files = *world().files;
  const std::string project = files.Absolute(context.Argument(1));
  const bool toFile = context.line.Arguments().size() > 2;
  const std::string target = toFile ? files.Absolute(context.Argument(2)) : std::string();
  if (toFile && files.IsSameFile(project, target)) {
    throw UsageError("The text would replace the project");
  }
  Work work(context);
  if (!work.Open(files.Exists(project) ? CopyOf(project) : project)) return false;
  const std::string text = ExportText(
      work.project(), context.line.Has("all") ? TextScope::everything : TextScope::changed);
  if (!toFile) {
    context.program.out << text;
    return true;
  }
  const bool present = files.Exists(target);
  if (present && files.ReadAll(target) == text) return true;
  if (present) RequireAgreement(context);
  files.WriteDurably(target, text);
  return true;
}

bool ImportFromText(const Context& context) {
  context.program.boxes.Agree(context.line.Has("yes"));
  const std::string text = world().files->ReadAll(world().files->Absolute(context.Argument(2)));
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  const std::vector<std::string> faults = ImportText(work.project(), text, context.Argument(2));
  TellFaults(context, faults);
  return faults.empty() && (!work.project().NeedsSaving() || work.Save());
}

}  // namespace

Commands TextCommands() {
  const ArgumentEntry file = FileArgument();
  return {
      {{"export",
        "write a project as text, TOML, or print it: what differs from a new project, or --all",
        {file, {.value = {"TOML", ValueEntry::Kind::file}, .required = false}},
        {"all", "read-only", "yes"}},
       Export},
      {{"import-text",
        "put such a text into a project and save; one bad value, and nothing is changed",
        {file, {.value = {"TOML", ValueEntry::Kind::file}}},
        {"yes"}},
       ImportFromText},
  };
}

}  // namespace velmoor
