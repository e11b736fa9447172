#include "plant/Journal.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/Bounds.h"
#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::size_t kSegmentBytes = std::size_t{1} << 20U;
constexpr std::size_t kHeld = 256;  // messages in memory
constexpr std::size_t kDigits = 15;
constexpr std::size_t kFields = 7;  // of a line
constexpr std::string_view kSuffix = ".txt";
constexpr std::string_view kDoneSuffix = ".done";

// A line is a mark and its fields behind tabs: what was told of an axis and a kind at the
// beginning of the file, how many were dropped by then, a message.
constexpr char kTold = 'T';
constexpr char kDropped = 'D';
constexpr char kMessage = 'M';

std::string Clean(std::string text) {
  std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
  return text;
}

std::string LineOf(char mark, const std::string& axisAndKind, const Told& told) {
  std::string line{mark};
  for (const std::string& field :
       {axisAndKind, NumberText(told.sequence), told.key,
        std::string(told.message.retained ? "1" : "0"), told.message.topic, told.message.text}) {
    line += '\t' + field;
  }
  return line + '\n';
}

std::vector<std::string> FieldsOf(std::string_view line) {
  std::vector<std::string> fields;
  for (std::size_t end = line.find('\t'); end != std::string_view::npos; end = line.find('\t')) {
    fields.emplace_back(line.substr(0, end));
    line.remove_prefix(end + 1);
  }
  fields.emplace_back(line);
  return fields;
}

// Of the fields of such a line.
Publication MessageIn(const std::vector<std::string>& fields) {
  return {fields[5], fields[6], fields[4] == "1"};
}

std::string AxisOf(const std::string& axisAndKind) {
  return axisAndKind.substr(0, axisAndKind.find(' '));
}

std::uint64_t NumberOf(std::string_view text) {
  const auto number = ParseWhole(text);
  return number && *number > 0 ? static_cast<std::uint64_t>(*number) : 0;
}

}  // namespace

Journal::Journal(std::string folder, std::string name, std::size_t mostBytes)
    : folder_(std::move(folder)),
      name_(std::move(name)),
      mostBytes_(std::max(mostBytes, 2 * kSegmentBytes)) {}

std::string Journal::PathOf(std::uint64_t first) const {
  return JoinPath(folder_,
                  name_ + "-" + PadToDigits(NumberText(first), kDigits) + std::string(kSuffix));
}

std::string Journal::DonePathOf(std::uint64_t first) const {
  return DropRight(PathOf(first), kSuffix.size()) + std::string(kDoneSuffix);
}

// ---- what is there

void Journal::Load() {
  const std::string prefix = name_ + "-";
  for (const std::string& file : world().files->NamesIn(folder_)) {
    if (!file.starts_with(prefix) || !file.ends_with(kSuffix)) continue;
    LoadSegment(NumberOf(DropRight(file.substr(prefix.size()), kSuffix.size())));
  }
  delivered_ = next_;
  for (const auto& [first, segment] : segments_) {
    if (segment.delivered < segment.count) {
      delivered_ = first + segment.delivered;
      break;
    }
  }
  read_ = delivered_;
  RemoveDelivered();
}

void Journal::LoadSegment(std::uint64_t first) {
  Segment segment;
  world().files->ReadLines(PathOf(first), [&](std::string_view line) {
    segment.bytes += line.size() + 1;
    TakeLine(line, segment);
    return true;
  });
  if (world().files->Exists(DonePathOf(first))) {
    const std::size_t done = world().files->ReadAll(DonePathOf(first)).size();
    segment.delivered = std::min<std::uint64_t>(done, segment.count);
  }
  next_ = std::max(next_, first + segment.count);
  segments_[first] = segment;
}

void Journal::TakeLine(std::string_view line, Segment& segment) {
  const std::vector<std::string> fields = FieldsOf(line);
  if (fields.size() == 2 && line.front() == kDropped) {
    dropped_ = std::max(dropped_, NumberOf(fields[1]));
    return;
  }
  if (fields.size() != kFields) return;
  if (line.front() == kMessage) ++segment.count;
  Told told{.sequence = NumberOf(fields[2]), .key = fields[3], .message = MessageIn(fields)};
  std::uint64_t& sequence = sequences_[AxisOf(fields[1])];
  sequence = std::max(sequence, told.sequence);
  latest_[fields[1]] = std::move(told);
}

std::uint64_t Journal::NextSequence(const std::string& axis) const {
  const auto found = sequences_.find(axis);
  return found == sequences_.end() ? 1 : found->second + 1;
}

// ---- writing

// Every process begins a file of its own: the last line of another's may be half of one.
void Journal::Begin() {
  const std::string path = PathOf(next_);
  // A file without a message, which a killed or a full disk has left.
  segments_.erase(next_);
  world().files->Remove(path);
  world().files->Remove(DonePathOf(next_));
  auto file = world().files->Begin(path, {});
  std::string head = std::string{kDropped} + '\t' + NumberText(dropped_) + '\n';
  for (const auto& [axisAndKind, told] : latest_) head += LineOf(kTold, axisAndKind, told);
  segments_[next_].bytes = head.size();
  file->Add(head);
  file_ = std::move(file);
}

bool Journal::Write(const std::string& line) {
  try {
    const bool full = file_ && segments_.rbegin()->second.bytes >= kSegmentBytes;
    if (!file_ || full) Begin();
    file_->Add(line);
    Segment& segment = segments_.rbegin()->second;
    segment.bytes += line.size();
    ++segment.count;
    trouble_.clear();
    return true;
  } catch (const FileError& error) {
    // What is half written stays the end of its file.
    file_.reset();
    trouble_ = error.what();
    return false;
  }
}

void Journal::Add(const std::string& axis, const std::string& kind, Told told) {
  told.key = Clean(std::move(told.key));
  told.message.topic = Clean(std::move(told.message.topic));
  told.message.text = Clean(std::move(told.message.text));
  const std::string axisAndKind = axis + " " + kind;
  const std::string line = LineOf(kMessage, axisAndKind, told);
  sequences_[axis] = told.sequence;
  const Publication message = told.message;
  latest_[axisAndKind] = std::move(told);
  const bool fits = line.size() <= bounds::kLine;
  const bool written = fits && Write(line);
  const bool room = queue_.size() < kHeld;
  if (!written && (!room || read_ < next_ || !fits)) {
    ++dropped_;
    return;
  }
  if (room && read_ == next_) {
    queue_.push_back({next_, message});
    ++read_;
  }
  ++next_;
  KeepBound();
}

// ---- delivery

const Publication* Journal::Next() {
  if (queue_.empty() && read_ < next_) Refill();
  return queue_.empty() ? nullptr : &queue_.front().message;
}

// From the files, as many as are held at once.
void Journal::Refill() {
  while (read_ < next_ && queue_.empty()) {
    auto segment = segments_.upper_bound(read_);
    const auto following = segment;
    if (segment != segments_.begin()) --segment;
    const bool holds = segment != segments_.end() && segment->first <= read_ &&
                       read_ < segment->first + segment->second.count;
    if (!holds) {
      // It was held in memory by a process that is gone, or its file went.
      const std::uint64_t from = following == segments_.end() ? next_ : following->first;
      dropped_ += from - read_;
      if (underWay_.empty()) delivered_ = from;
      read_ = from;
      continue;
    }
    std::uint64_t number = segment->first;
    const std::uint64_t end = segment->first + segment->second.count;
    try {
      world().files->ReadLines(PathOf(segment->first), [&](std::string_view line) {
        if (!line.starts_with(kMessage)) return true;
        const std::vector<std::string> fields = FieldsOf(line);
        if (number++ < read_ || fields.size() != kFields) return true;
        queue_.push_back({read_++, MessageIn(fields)});
        return queue_.size() < kHeld && number < end;
      });
    } catch (const FileError& error) {
      trouble_ = error.what();
    }
    // Of a file that somebody has cut or taken away.
    if (queue_.empty()) {
      dropped_ += end - read_;
      read_ = end;
    }
  }
}

void Journal::Handed() {
  underWay_.push_back(std::move(queue_.front()));
  queue_.pop_front();
}

void Journal::Delivered(std::size_t count) {
  for (; count > 0 && !underWay_.empty(); --count) {
    delivered_ = underWay_.front().number + 1;
    Note(underWay_.front());
    underWay_.pop_front();
  }
  if (underWay_.empty() && queue_.empty()) delivered_ = read_;
  RemoveDelivered();
}

void Journal::StartOver() {
  queue_.insert(queue_.begin(), std::make_move_iterator(underWay_.begin()),
                std::make_move_iterator(underWay_.end()));
  underWay_.clear();
}

// What cannot be noted is delivered once more by the next process, under the number that it has.
void Journal::Note(const Entry& entry) {
  auto segment = segments_.upper_bound(entry.number);
  if (segment == segments_.begin()) return;
  --segment;
  if (entry.number >= segment->first + segment->second.count) return;
  try {
    if (!done_ || doneOf_ != segment->first) {
      done_ = world().files->Continue(DonePathOf(segment->first), {});
      doneOf_ = segment->first;
    }
    done_->Add("\n");
    ++segment->second.delivered;
  } catch (const FileError& error) {
    trouble_ = error.what();
  }
}

// ---- bounds

std::size_t Journal::Bytes() const {
  std::size_t bytes = 0;
  for (const auto& [first, segment] : segments_) bytes += segment.bytes;
  return bytes;
}

void Journal::KeepBound() {
  while (segments_.size() > 1 && Bytes() > mostBytes_) {
    const auto oldest = segments_.begin();
    const std::uint64_t end = oldest->first + oldest->second.count;
    // Those under way may still arrive.
    const std::uint64_t lost =
        end - std::min(end, std::max(oldest->first, delivered_ + underWay_.size()));
    std::erase_if(queue_, [end](const Entry& entry) { return entry.number < end; });
    dropped_ += lost;
    read_ = std::max(read_, end);
    if (underWay_.empty()) delivered_ = std::max(delivered_, end);
    Remove(oldest);
  }
}

void Journal::RemoveDelivered() {
  while (!segments_.empty()) {
    const auto oldest = segments_.begin();
    const bool isLast = std::next(oldest) == segments_.end();
    if (isLast || oldest->first + oldest->second.count > delivered_) return;
    Remove(oldest);
  }
}

void Journal::Remove(Segments::iterator segment) {
  if (doneOf_ == segment->first) done_.reset();
  try {
    world().files->Remove(PathOf(segment->first));
    world().files->Remove(DonePathOf(segment->first));
  } catch (const FileError& error) {
    trouble_ = error.what();
  }
  segments_.erase(segment);
}

}  // namespace velmoor
