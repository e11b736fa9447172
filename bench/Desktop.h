// The real program, velmoor, started with settings of its own and without a screen.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Child.h"

namespace velmoor::bench {

// What the program does by itself in each start: the splash window stays for a second, and so does
// the window of the settings.
inline constexpr double kPause = 1;  // s

// A program with windows of Qt that tells of each of its drawings.
class WindowProgram : public Child {
 public:
  WindowProgram(const std::string& program, const std::vector<std::string>& words,
                Variables variables = {});
  // Returns when the window of that name has been drawn.
  void WaitForWindow(const std::string& name);
};

class Desktop final : public WindowProgram {
 public:
  // Opens `project`, or asks for one where that is empty. Settings, log and sockets lie below
  // `folder`, and COM1 is a port that does not exist.
  explicit Desktop(const std::filesystem::path& folder, const std::string& project = {});
  // Returns when the program has opened its project.
  void WaitForProject();
  // The same for a line file in the place of the project: its axes have been identified.
  void WaitForLineFile();

 private:
  void WaitForLogged(const std::string& words);

  std::filesystem::path log_;
};

// Qt with one empty window as large as the program's: this program under another word.
class BareWindow final : public WindowProgram {
 public:
  BareWindow();
  void WaitForWindow() { WindowProgram::WaitForWindow("bare"); }
  // What velmoor-bench does under that word: shows the window, and serves events until it is ended.
  static constexpr const char* kWord = "--bare-window";
  static int Show(int argc, char** argv);
};

}  // namespace velmoor::bench
