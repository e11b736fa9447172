#include "recordings/Recording.h"

#include <algorithm>

#include "platform/Numbers.h"

namespace velmoor {

int Recording::Find(const std::string& name) const {
  const auto found = std::ranges::find(heading.items, name, &RecordedItem::name);
  return found == heading.items.end() ? -1 : static_cast<int>(found - heading.items.begin());
}

const std::vector<ChartPoint>& Recording::CurveOf(const std::string& name) const {
  static const std::vector<ChartPoint> kNone;
  const int place = Find(name);
  return place < 0 ? kNone : curves.at(static_cast<std::size_t>(place));
}

double Recording::Begin() const {
  std::optional<double> first;
  for (const auto& curve : curves) {
    if (!curve.empty()) first = std::min(first.value_or(curve.front().x), curve.front().x);
  }
  return first.value_or(0);
}

double Recording::End() const {
  std::optional<double> last;
  for (const auto& curve : curves) {
    if (!curve.empty()) last = std::max(last.value_or(curve.back().x), curve.back().x);
  }
  return last.value_or(0);
}

double Recording::Length() const {
  return End() - Begin();
}

std::string RateText(const Recording& recording) {
  std::string text;
  for (std::size_t i = 0; i < recording.curves.size(); ++i) {
    const auto& curve = recording.curves[i];
    const double length = curve.empty() ? 0 : curve.back().x - curve.front().x;
    if (length <= 0) continue;
    const double rate = static_cast<double>(curve.size() - 1) / length;
    text += (text.empty() ? "" : ", ") + recording.heading.items[i].name + " " + FixedText(rate, 1);
  }
  return text;
}

}  // namespace velmoor
