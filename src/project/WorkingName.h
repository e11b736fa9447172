// The name of a project's working file: "line1.tmp" beside "line1.spj".
//
// What a crash left under it is used up. A file that is none of ours, or a link, a pipe or a folder
// that somebody has put there, stays as it is: the working file is "line1.velmoor.tmp" then.
#pragma once

#include <string>

namespace velmoor {

struct WorkingName {
  std::string path;
  std::string remark;  // for the user; empty where there is nothing to tell
};

// Where the working file of a project lies: beside it, or, where that folder cannot be written, in
// a place of the user's own, under a title of that project alone.
struct WorkingPlace {
  std::string directory;
  std::string title;
  bool elsewhere = false;
};

[[nodiscard]] WorkingPlace WorkingPlaceOf(const std::string& directory, const std::string& title);

// `project` is the file that is worked on, or a copy of it. Throws FileError with the reason where
// neither name can be had, or another user's file has the first one: that user may have the project
// open.
[[nodiscard]] WorkingName ChooseWorkingName(const std::string& directory, const std::string& title,
                                            const std::string& project);

// What an opening is refused with where another program has the project.
[[nodiscard]] std::string InUseWords(const std::string& title);

// Why the file is no project that could be opened, in the words of a refused opening; empty: it may
// be one. Changes nothing, neither the file nor what is open.
[[nodiscard]] std::string WhyNoProject(const std::string& path);

}  // namespace velmoor
