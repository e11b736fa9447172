// What is known of the axes of a line, in the words of its page. Knows no window and asks nobody.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "operations/LineRun.h"
#include "operations/LineWatch.h"
#include "platform/Controls.h"
#include "project/ProjectGlance.h"

namespace velmoor {

struct LineAxisState {
  enum class Presence : std::uint8_t { unknown, present, absent };

  LineAxis axis;
  bool chosen = true;  // the next work is for it
  Presence presence = Presence::unknown;
  int silences = 0;  // in a row
  std::string amplifier{}, motor{}, encoder{}, firmware{};
  std::optional<AlarmReading> alarm{};
  std::optional<std::size_t> differences{};  // of the latest comparison
  bool seen = false;                         // its project's file was looked at
  ProjectGlance glance{};

  [[nodiscard]] std::string AlarmText() const;
  // "equal", "3 differ", "2 to download", "unknown", "absent", "no project file"
  [[nodiscard]] std::string StateText() const;
  [[nodiscard]] Tone StateTone() const;
  [[nodiscard]] Tone AlarmTone() const;
};

class LineStates {
 public:
  // Nothing is known of any axis.
  void Take(const LineFile& line);

  [[nodiscard]] std::vector<LineAxisState>& Axes() { return axes_; }
  [[nodiscard]] const std::vector<LineAxisState>& Axes() const { return axes_; }
  [[nodiscard]] std::vector<LineAxis> Chosen() const;
  void ChooseAll(bool chosen);

  // One that was there counts as gone with its second silence.
  void Note(std::size_t place, const LineWatch::Look& look);
  void NoteInfo(const LineTable& table);
  void NoteCompared(const LineTable& table);
  // What was sent or read whole is the same on both sides. `whole`: of every axis that was done;
  // otherwise nothing is known of how it compares.
  void NoteMoved(const LineTable& table, bool whole);
  // The projects of those that were done have changed.
  void NoteChanged(const LineTable& table);
  // The files may have changed.
  void LookAgain();
  // Looks at the file of one axis that was not looked at since; nothing: all were.
  [[nodiscard]] std::optional<std::size_t> LookAtNext();
  // "16 axes: 15 present, 1 absent, 1 in alarm"
  [[nodiscard]] std::string Summary() const;

 private:
  LineAxisState* Find(const std::string& address);
  void NotePresence(const LineTable& table);

  std::vector<LineAxisState> axes_;
};

}  // namespace velmoor
