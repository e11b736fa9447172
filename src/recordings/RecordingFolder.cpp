#include "recordings/RecordingFolder.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::string_view kSuffix = ".csv";
constexpr std::size_t kLongest = 100;  // characters of a name

}  // namespace

RecordingFolder::RecordingFolder(const std::string& project)
    : project_(project),
      folder_(JoinPath(GetFileDirectory(project),
                       DropRight(GetFileTitle(project), 4) + ".recordings")) {}

std::vector<std::string> RecordingFolder::Names() const {
  std::vector<std::string> names;
  for (const std::string& file : world().files->NamesIn(folder_)) {
    if (!file.starts_with('.') && file.ends_with(kSuffix)) {
      names.push_back(DropRight(file, kSuffix.size()));
    }
  }
  std::ranges::reverse(names);
  return names;
}

std::string RecordingFolder::PathOf(const std::string& name) const {
  return JoinPath(folder_, name + std::string(kSuffix));
}

std::string RecordingFolder::NewName(const std::string& moment, const std::string& word) const {
  world().files->MakeOwnFolder(folder_, project_);
  std::string stem = moment;
  // Not every file system takes a colon.
  std::ranges::replace(stem, ':', '-');
  if (!word.empty()) stem += " " + word;
  std::string name = stem;
  for (int i = 2; world().files->Exists(PathOf(name)); ++i) name = stem + " " + NumberText(i);
  return name;
}

std::string RecordingFolder::WhyNot(const std::string& name) const {
  if (Trim(name).empty()) return "A recording needs a name.";
  if (name.size() > kLongest) return "The name is too long.";
  constexpr std::string_view kBarred = "/\\:*?\"<>|";
  if (name.find_first_of(kBarred) != std::string::npos || VisibleText(name) != name) {
    return "A name cannot have any of the characters " + std::string(kBarred) + " in it.";
  }
  if (name.starts_with('.')) return "A name cannot begin with a point.";
  if (world().files->Exists(PathOf(name))) return "There is a recording of that name already.";
  return {};
}

void RecordingFolder::Rename(const std::string& name, const std::string& to) const {
  if (const std::string reason = WhyNot(to); !reason.empty()) throw FileError(reason);
  world().files->Rename(PathOf(name), PathOf(to));
}

void RecordingFolder::Annotate(const std::string& name, const std::string& note) const {
  RewriteHeading(PathOf(name), project_, [&note](RecordingHeading& heading) {
    heading.note = std::string(Trim(VisibleText(note)));
  });
}

void RecordingFolder::Remove(const std::string& name) const {
  world().files->Remove(PathOf(name));
}

}  // namespace velmoor
