#include "link/AxisScan.h"

#include "platform/Events.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::int32_t kSearchTimeOut = 500;  // milliseconds
constexpr std::int32_t kTimeOut = 5000;

}  // namespace

std::vector<std::string> ScanAxes(clsHX7Helix7& helix,
                                  const std::function<void(int queried)>& queried) {
  std::vector<std::string> axes;
  for (int i = 0; i < kAxisCount; ++i) {
    const std::string axis = HexText(static_cast<std::uint32_t>(i));
    // Each question puts the long time-out back.
    helix.SetTimeOut(kSearchTimeOut);
    if (helix.GetAxis(axis)) axes.push_back(axis);
    queried(i + 1);
    YieldEvents();
  }
  helix.SetTimeOut(kTimeOut);
  return axes;
}

}  // namespace velmoor
