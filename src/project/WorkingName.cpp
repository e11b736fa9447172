#include "project/WorkingName.h"

#include <cstdint>
#include <functional>

#include "platform/Database.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/data/ProjectContents.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

// A copy begins with the salt of its original.
constexpr std::size_t kSalt = 16;

// What opening the file as a project is refused with; empty: it opens. A copy is looked at, for
// what lies beside the file under the name of a journal may be anybody's.
std::string RefusalOf(const std::string& path) {
  Files& files = *world().files;
  const std::string copy = JoinPath(world().catalogueCopyDirectory, "left.tmp");
  std::string refusal;
  try {
    files.LayWorkingCopy(path, copy);
    // A later version may have added to it.
    CheckContents(*OpenForReading(copy), Strangers::allowed);
  } catch (const std::runtime_error& error) {
    refusal = error.what();
    const std::string place = copy + ": ";
    if (refusal.starts_with(place)) refusal.erase(0, place.size());
  }
  world().databases->Release(copy);
  files.Remove(copy);
  return refusal;
}

// What a program that was killed has left of a project.
bool IsLeftover(const std::string& path, const std::string& project) {
  const Files& files = *world().files;
  try {
    const std::string bytes = files.ReadAll(path);
    if (bytes.empty()) return true;
    const bool copied =
        bytes.size() >= kSalt && files.ReadAll(project).starts_with(bytes.substr(0, kSalt));
    return copied || RefusalOf(path).empty();
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

std::string InUseWords(const std::string& title) {
  return "Project " + title + " is in use by another program!";
}

std::string WhyNoProject(const std::string& path) {
  if (!world().files->Exists(path)) {
    return "Project file " + GetFileTitle(path) + " cannot be found at " + path + "!";
  }
  if (world().files->IsSameFile(DropRight(path, 3) + "tmp", path)) {
    return "Cannot create temporary project file for project " + GetFileTitle(path) + "!";
  }
  const std::string refusal = RefusalOf(path);
  return refusal.empty() ? refusal : "Error reading databases!\r" + refusal;
}

}  // namespace velmoor
