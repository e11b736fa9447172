#include "link/AxisScan.h"

#include <set>

#include "platform/Events.h"
#include "platform/Numbers.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr std::int32_t kShortWait = 80;  // milliseconds
constexpr std::int32_t kLongWait = 500;
constexpr std::int32_t kTimeOut = 5000;

class AxisScan {
 public:
  explicit AxisScan(clsHX7Helix7& helix) : helix_(helix) {}

  // One question to an axis; what others say meanwhile is heard too.
  void Ask(char axis, std::int32_t wait) {
    (void)helix_.SerialComm().sendAndListen(
        std::string(1, axis) + "TYPE", wait,
        [this, axis](const std::string& line) { return Hear(line, axis); });
    helix_.SetTimeOut(kTimeOut);
  }

  [[nodiscard]] bool Has(char axis) const { return found_.contains(axis); }
  // Answers came when another axis was asked already, or nobody could read them.
  [[nodiscard]] bool WasDisturbed() const { return disturbed_; }
  [[nodiscard]] std::vector<std::string> Found() const {
    std::vector<std::string> axes;
    for (const char axis : found_) axes.emplace_back(1, axis);
    return axes;
  }

 private:
  // False once the axis has answered.
  bool Hear(const std::string& line, char asked) {
    const char axis = line.front();
    const bool isType = line.size() > 5 && std::string_view(line).substr(1).starts_with("TYPE=");
    if (isType && Mid(line, 11, 4) == "0600") found_.insert(axis);
    const bool isEcho = std::string_view(line).substr(1) == "TYPE";
    if (axis != asked || !(isType || isEcho)) {
      disturbed_ = true;
    } else if (isEcho) {
      // The amplifier is there: its answer has the time that every answer has.
      gMainForm->Comm().SetReadTimeOut(kLongWait);
    }
    return axis != asked || !isType;
  }

  clsHX7Helix7& helix_;
  std::set<char> found_;  // "0" to "9" stand before "A" to "F"
  bool disturbed_ = false;
};

}  // namespace

std::vector<std::string> ScanAxes(clsHX7Helix7& helix,
                                  const std::function<bool(int queried)>& queried) {
  AxisScan scan(helix);
  for (int i = 0; i < kAxisCount; ++i) {
    const bool last = i + 1 == kAxisCount;
    scan.Ask(HexText(static_cast<std::uint32_t>(i)).front(), last ? kLongWait : kShortWait);
    const bool goOn = queried(i + 1);
    YieldEvents();
    if (!goOn) return scan.Found();
  }
  for (int i = 0; i < kAxisCount && scan.WasDisturbed(); ++i) {
    const char axis = HexText(static_cast<std::uint32_t>(i)).front();
    if (scan.Has(axis)) continue;
    scan.Ask(axis, kLongWait);
    YieldEvents();
    if (!queried(kAxisCount)) break;
  }
  return scan.Found();
}

}  // namespace velmoor
