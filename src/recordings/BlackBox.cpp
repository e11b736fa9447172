#include "recordings/BlackBox.h"

#include <algorithm>
#include <utility>

namespace velmoor {

void BlackBox::Take(int item, double now, double raw) {
  samples_.push_back({now, item, raw});
  while (samples_.size() > kMostSamples || samples_.front().time < now - kSeconds) {
    samples_.pop_front();
  }
}

std::optional<double> BlackBox::Latest(int item) const {
  const auto found = std::find_if(samples_.rbegin(), samples_.rend(),
                                  [item](const RecordedSample& each) { return each.item == item; });
  if (found == samples_.rend()) return std::nullopt;
  return found->value;
}

std::string BlackBox::Keep(const RecordingFolder& folder, RecordingHeading heading,
                           const std::string& word, double now, const Convert& convert) const {
  Recording recording{.heading = std::move(heading), .curves = {}};
  recording.curves.resize(recording.heading.items.size());
  for (const RecordedSample& sample : samples_) {
    if (sample.time < now - kSeconds) continue;
    recording.curves.at(static_cast<std::size_t>(sample.item))
        .push_back({sample.time - now, convert(sample.item, sample.value)});
  }
  recording.heading.rate = RateText(recording);
  const std::string name = folder.NewName(recording.heading.begun, word);
  WriteRecording(folder.PathOf(name), folder.Project(), recording);
  return name;
}

}  // namespace velmoor
