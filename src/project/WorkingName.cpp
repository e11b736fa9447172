#include "project/WorkingName.h"

#include <cstdint>
#include <functional>

#include "platform/Database.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

// A copy begins with the salt of its original.
constexpr std::size_t kSalt = 16;

// The file opens with the password of projects. A copy is looked at, for what lies beside the file
// under the name of a journal may be anybody's.
bool OpensAsProject(const std::string& path) {
  Files& files = *world().files;
  const std::string copy = JoinPath(world().catalogueCopyDirectory, "left.tmp");
  bool opens = false;
  try {
    files.LayWorkingCopy(path, copy);
    (void)OpenForReading(copy);
    opens = true;
  } catch (const std::runtime_error&) {
    opens = false;
  }
  world().databases->Release(copy);
  files.Remove(copy);
  return opens;
}

// What a program that was killed has left of a project.
bool IsLeftover(const std::string& path, const std::string& project) {
  const Files& files = *world().files;
  try {
    const std::string bytes = files.ReadAll(path);
    if (bytes.empty()) return true;
    const bool copied =
        bytes.size() >= kSalt && files.ReadAll(project).starts_with(bytes.substr(0, kSalt));
    return copied || OpensAsProject(path);
  } catch (const FileError&) {
    return false;
  }
}

bool IsUsable(const std::string& path, const std::string& project) {
  switch (world().files->StateOf(path)) {
    case NameState::free:
      return true;
    case NameState::own:
      return IsLeftover(path, project);
    case NameState::anothers:
      throw FileError(path + ": it belongs to another user, who may have the project open");
    case NameState::foreign:
      break;
  }
  return false;
}

// The one that stays, where it can be had.
std::string OwnPlace() {
  Files& files = *world().files;
  const std::string& own = world().workDirectory;
  try {
    if (!own.empty()) files.MakeDirectories(own);
  } catch (const FileError&) {
    // A user without a home.
  }
  return files.IsWritableDirectory(own) ? own : world().catalogueCopyDirectory;
}

}  // namespace

WorkingPlace WorkingPlaceOf(const std::string& directory, const std::string& title) {
  const Files& files = *world().files;
  if (files.IsWritableDirectory(directory.empty() ? "." : directory)) return {directory, title};
  const std::string path = files.Absolute(JoinPath(directory, title));
  const auto number = static_cast<std::uint32_t>(std::hash<std::string>()(path));
  return {OwnPlace(), DropRight(title, 4) + "-" + HexText(number, 8) + ".spj", true};
}

WorkingName ChooseWorkingName(const std::string& directory, const std::string& title,
                              const std::string& project) {
  // The ending is cut by characters, not by the dot: "line1.spjx" is worked on as "line1.stmp".
  const std::string stem = JoinPath(directory, DropRight(title, 3));
  const std::string usual = stem + "tmp";
  if (IsUsable(usual, project)) return {usual, {}};
  const std::string other = stem + "velmoor.tmp";
  if (!IsUsable(other, project)) {
    throw FileError(usual + " and " + other + ": neither is a file of this program");
  }
  return {other, GetFileTitle(usual) +
                     " is no file of Velmoor's and stays as it is; the project is "
                     "worked on in " +
                     GetFileTitle(other) + "."};
}

}  // namespace velmoor
