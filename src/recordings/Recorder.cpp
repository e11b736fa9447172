#include "recordings/Recorder.h"

#include <algorithm>
#include <utility>

#include "platform/Log.h"
#include "platform/Numbers.h"

namespace velmoor {

void Recorder::Begin(const RecordingFolder& folder, RecordingHeading heading, RecorderOrder order,
                     double now) {
  Stop();
  folder_ = folder;
  heading_ = std::move(heading);
  order_ = std::move(order);
  order_.before = std::clamp(order_.before, 0.0, kLongestBefore);
  held_.clear();
  failure_.clear();
  samples_ = 0;
  seconds_ = 0;
  if (order_.trigger) {
    // A folder that refuses is told now, and not when the moment has come.
    (void)folder_->NewName(heading_.begun);
    watch_.emplace(*order_.trigger);
    state_ = State::waiting;
    Changed.Raise();
    return;
  }
  watch_.reset();
  Start(now, heading_.begun);
}

void Recorder::Start(double now, const std::string& moment) {
  heading_.begun = moment;
  name_ = folder_->NewName(moment);
  writer_ = std::make_unique<RecordingWriter>(folder_->PathOf(name_), folder_->Project(), heading_);
  began_ = now;
  state_ = State::running;
  for (RecordedSample& sample : held_) Write(sample);
  held_.clear();
  Changed.Raise();
}

void Recorder::Hold(const RecordedSample& sample) {
  held_.push_back(sample);
  while (held_.front().time < sample.time - order_.before) held_.pop_front();
}

void Recorder::Write(const RecordedSample& sample) {
  const double time = sample.time - began_;
  writer_->Add({time, sample.item, sample.value});
  writer_->Flush();
  if (samples_++ == 0) first_ = time;
  seconds_ = std::max(seconds_, time);
}

void Recorder::Take(int item, double now, double value, const std::string& moment) {
  if (state_ == State::idle) return;
  const RecordedSample sample{now, item, value};
  try {
    if (state_ == State::waiting) {
      Hold(sample);
      const bool watched =
          heading_.items.at(static_cast<std::size_t>(item)).name == watch_->Watched().item;
      if (watched && watch_->Take(value)) Start(now, moment);
      return;
    }
    if (order_.length > 0 && now - began_ > order_.length) return Stop();
    Write(sample);
  } catch (const FileError& error) {
    failure_ = error.what();
    LogWarning("recording", failure_);
    Stop();
  }
}

void Recorder::Stop() {
  const State before = std::exchange(state_, State::idle);
  if (before == State::idle) return;
  held_.clear();
  if (before == State::running) Finish();
  Changed.Raise();
  if (before == State::running) Ended.Raise();
}

// The heading tells the rate that was reached, and items that were not read are left out.
void Recorder::Finish() {
  writer_.reset();
  try {
    if (samples_ == 0) {
      folder_->Remove(name_);
      name_.clear();
      if (failure_.empty()) failure_ = "Nothing was read of the axis, so nothing was recorded";
      return;
    }
    const std::string path = folder_->PathOf(name_);
    RewriteHeading(path, folder_->Project(), [this](RecordingHeading& heading) {
      heading.rate = FixedText(Rate(), 1) + " (all items together)";
    });
  } catch (const FileError& error) {
    failure_ = error.what();
    LogWarning("recording", failure_);
  }
}

double Recorder::Rate() const {
  const double length = seconds_ - first_;
  return samples_ < 2 || length <= 0 ? 0 : static_cast<double>(samples_ - 1) / length;
}

std::string Recorder::Words() const {
  switch (state_) {
    case State::waiting:
      return "Waiting: " + watch_->Watched().words;
    case State::running:
      return "Recording: " + FixedText(seconds_, 1) + " s, " + FixedText(Rate(), 1) +
             " samples a second";
    case State::idle:
      break;
  }
  if (!failure_.empty()) return "Recording failed: " + failure_;
  return name_.empty() ? std::string() : "Recorded as " + name_;
}

}  // namespace velmoor
