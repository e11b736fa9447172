// A line in the main window: its file, what is known of its axes, its page, the look at each axis
// in turn, and the works on those that are chosen.
//
// Owned by the main window. It stands above the single axis: while a project is open the line
// rests, and no work of it runs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "app/LinePage.h"
#include "app/LineRunner.h"
#include "app/LineStates.h"
#include "operations/LineActions.h"
#include "operations/LineWatch.h"

namespace velmoor {

class LineWorkplace {
 public:
  struct Hooks {
    // Runs it as the user's command, behind that prefix.
    std::function<void(const std::string& prefix, const std::function<bool()>& work)> command;
    // The port is free, and the session offline, from now on.
    std::function<void()> leaveLine;
    // A run is over: the device object is the main window's again.
    std::function<void()> followDevice;
    // Another page is to be on show.
    std::function<void()> showPages;
    // Opens the project of an axis, talking to it by these settings; `present`: it answers.
    std::function<void(const LineAxis& axis, const LineSettings& settings, bool present)> openAxis;
  };

  // `session` must outlive the object.
  LineWorkplace(SessionState& session, Hooks hooks);

  [[nodiscard]] bool IsOpen() const { return line_.has_value(); }
  [[nodiscard]] const std::string& Path() const { return path_; }
  // Reads a line file. Nothing: refused, and told with every line. Throws FileError.
  [[nodiscard]] static std::optional<LineFile> Read(const std::string& path);
  // Opens a line that was read there, in the place of the one before.
  void Open(const std::string& path, LineFile line);
  // Searches the line behind the session's port, and writes what it finds as a line file.
  void SearchAndSave();
  void Close();

  // ---- the page
  void ShowPage();
  void HidePage();
  [[nodiscard]] const Form* Shown() const { return page_.Shown(); }

  // ---- while nothing else happens
  // Looks at the next axis, and at the next project's file.
  void LookAtNext();
  // Leaves the port, for whatever comes.
  void Rest();

  // ---- a run
  [[nodiscard]] bool Runs() const { return runner_.Runs(); }
  [[nodiscard]] bool Stopped() const { return runner_.Stopped(); }
  void Stop() { runner_.Stop(); }

 private:
  void Act(LineAction action);
  void OpenAxis(std::size_t place);
  [[nodiscard]] std::string ChosenWords() const;
  // Runs `work` for the chosen axes, and takes what it found by `note`.
  LineTable Run(const std::string& caption, const std::function<LineTable(LineRun& run)>& work);
  // The same for those axes.
  LineTable RunOn(const std::string& caption, const std::vector<LineAxis>& axes,
                  const std::function<LineTable(LineRun& run)>& work);
  void ShowResults(const std::string& caption, const LineTable& table);

  void Identify(bool tells);
  void Compare();
  void Download(bool onlyNew);
  void Upload();
  void ResetAlarms();
  void SetParameters();
  void Copy();
  void Report();
  void OfferProjects();

  SessionState& session_;
  Hooks hooks_;
  std::optional<LineFile> line_;
  std::string path_;
  std::int16_t com_ = 0;
  LineStates states_;
  LineRunner runner_{session_};
  LineWatch watch_{session_};
  std::size_t next_ = 0;  // whose turn it is to be looked at
  LinePage page_{states_,
                 {.act = [this](LineAction action) { Act(action); },
                  .open = [this](std::size_t place) { OpenAxis(place); }}};
};

}  // namespace velmoor
