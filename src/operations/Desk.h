// Port: what an operation tells whoever runs it, beside the message boxes in which it asks and
// tells what ends it. Filled by the main window and by the console program's session.
//
// A stop goes the other way: the desk sets the session's stop request, at which operations look
// between two rows and between two tries of a search.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmoor {

class clsHX7Project;
struct PartComparison;

enum class LineState : std::uint8_t { offline, searching, online, alarm, lost };

// A row of a long work, out of `rows` of its item and `steps` of the whole.
struct WorkStep {
  std::string current{};  // of the item; empty: the work has no items
  int row = 0;
  int rows = 0;
  std::string total{};
  int finished = 0;
  int steps = 0;
};

class Desk {
 public:
  virtual ~Desk() = default;

  // A long work begins; `items`: it tells of the item under way too. It can be stopped.
  virtual void WorkBegins(const std::string& caption, int steps, bool items) = 0;
  virtual void WorkGoesOn(const WorkStep& step) = 0;
  // Also behind a work that has ended already.
  virtual void WorkEnds() = 0;

  // A search tries the next speed, the first, the second and so on since it began. It can be
  // stopped.
  virtual void SearchGoesOn(std::int32_t bitsPerSecond, const std::string& axis, int tries) = 0;
  virtual void SearchEnds() = 0;

  // A text that stands until the next one.
  virtual void StatusTold(const std::string& text) = 0;
  virtual void LineChanged(LineState state) = 0;
  // What an upload would change, before the question whether to commit it.
  virtual void DifferencesFound(const std::vector<PartComparison>& parts) = 0;
  // Values of the project are in doubt: shows them, and lets somebody who is there settle them.
  virtual void DoubtsFound(clsHX7Project& project) = 0;
  // Somebody stands before the machine, who can be asked whether its servo may go on.
  [[nodiscard]] virtual bool IsAttended() const = 0;
};

}  // namespace velmoor
