#include "recordings/RecordingFile.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/Bounds.h"
#include "platform/Csv.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::string_view kFirstLine = "# Velmoor recording 1";
constexpr std::string_view kAnyVersion = "# Velmoor recording ";
constexpr const char* kTime = "time (s)";
constexpr const char* kRemark = "Remark";

struct Key {
  const char* word;
  std::string RecordingHeading::*text;
};
constexpr std::array<Key, 8> kKeys{{{"Begun", &RecordingHeading::begun},
                                    {"Project", &RecordingHeading::project},
                                    {"Axis", &RecordingHeading::axis},
                                    {"Started", &RecordingHeading::cause},
                                    {"Gains", &RecordingHeading::gains},
                                    {"In-position window", &RecordingHeading::window},
                                    {"Samples a second", &RecordingHeading::rate},
                                    {"Note", &RecordingHeading::note}}};

std::string HeadingLine(const std::string& word, const std::string& text) {
  return "# " + word + ": " + Shortened(VisibleText(text), bounds::kLine / 2) + "\n";
}

std::string HeadingText(const RecordingHeading& heading) {
  std::string text = std::string(kFirstLine) + "\n";
  for (const Key& key : kKeys) {
    const std::string& value = heading.*key.text;
    if (!value.empty()) text += HeadingLine(key.word, value);
  }
  for (const std::string& remark : heading.remarks) text += HeadingLine(kRemark, remark);
  CsvRow columns{kTime};
  for (const RecordedItem& item : heading.items) {
    columns.push_back(item.unit.empty() ? item.name : item.name + " (" + item.unit + ")");
  }
  return text + CsvLine(columns);
}

std::string SampleLine(const RecordedSample& sample, const std::vector<RecordedItem>& items) {
  std::string line = FixedText(sample.time, 3);
  for (std::size_t i = 0; i < items.size(); ++i) {
    line += ',';
    if (std::cmp_equal(i, sample.item)) line += FixedText(sample.value, items[i].decimals);
  }
  return line + "\n";
}

void TakeHeadingLine(std::string_view line, RecordingHeading& heading) {
  line.remove_prefix(std::min<std::size_t>(2, line.size()));
  const std::size_t colon = line.find(": ");
  if (colon == std::string_view::npos) return;
  const std::string_view word = line.substr(0, colon);
  std::string text(line.substr(colon + 2));
  if (word == kRemark) heading.remarks.push_back(std::move(text));
  const auto* const key = std::ranges::find(kKeys, word, &Key::word);
  if (key != kKeys.end()) heading.*key->text = std::move(text);
}

RecordedItem ItemOf(const std::string& column) {
  const std::size_t open = column.rfind(" (");
  if (open == std::string::npos || !column.ends_with(')')) return {.name = column, .unit = {}};
  return {.name = column.substr(0, open),
          .unit = column.substr(open + 2, column.size() - open - 3)};
}

int DecimalsOf(std::string_view number) {
  const std::size_t point = number.find('.');
  return point == std::string_view::npos ? 0 : static_cast<int>(number.size() - point - 1);
}

// Reads a file from its beginning.
class Reader {
 public:
  explicit Reader(std::string path) : path_(std::move(path)) {}

  RecordingHeading heading;

  // Up to `take`, which gets each sample and says whether to go on. The decimals of the items are
  // those of what was read so far.
  void Read(const std::function<bool(const RecordedSample&)>& take) {
    world().files->ReadLines(path_, [&](std::string_view line) {
      ++line_;
      if (line_ == 1) return TakeFirst(line);
      if (!columns_ && line.starts_with('#')) {
        if (line_ > kMostHeadingLines) Fail("the heading is too long");
        TakeHeadingLine(line, heading);
        return true;
      }
      if (!columns_) return TakeColumns(line) && take != nullptr;
      return line.empty() || TakeSample(line, take);
    });
    if (!columns_) Fail("it is no recording");
  }

 private:
  static constexpr int kMostHeadingLines = 500;

  [[noreturn]] void Fail(const std::string& reason) const {
    throw RecordingError(path_ + ":" + NumberText(std::max(line_, 1)) + ": " + reason);
  }

  bool TakeFirst(std::string_view line) const {
    if (line == kFirstLine) return true;
    Fail(line.starts_with(kAnyVersion) ? "it is of a newer version of Velmoor"
                                       : "it is no recording");
  }

  bool TakeColumns(std::string_view line) {
    const std::vector<CsvRow> rows = ParseCsv(line);
    if (rows.empty() || rows.front().front() != kTime) Fail("it is no recording");
    for (auto column = rows.front().begin() + 1; column != rows.front().end(); ++column) {
      heading.items.push_back(ItemOf(*column));
    }
    columns_ = true;
    return true;
  }

  // What a killed program left of its last line is passed over.
  bool TakeSample(std::string_view line, const std::function<bool(const RecordedSample&)>& take) {
    std::size_t comma = line.find(',');
    const auto time = ParseFloat(line.substr(0, comma));
    if (!time || comma == std::string_view::npos) return CutOff();
    RecordedSample sample{.time = *time};
    for (std::size_t i = 0; i < heading.items.size(); ++i) {
      if (comma == std::string_view::npos) return CutOff();
      const std::size_t next = line.find(',', comma + 1);
      const std::string_view cell = line.substr(comma + 1, next - comma - 1);
      comma = next;
      if (cell.empty()) continue;
      const auto value = ParseFloat(cell);
      if (!value) return CutOff();
      heading.items[i].decimals = std::max(heading.items[i].decimals, DecimalsOf(cell));
      sample.item = static_cast<int>(i);
      sample.value = *value;
      if (!take(sample)) return false;
    }
    return true;
  }

  // Nothing may follow it.
  bool CutOff() {
    if (cutOff_) Fail("it is no line of a recording");
    cutOff_ = true;
    return true;
  }

  std::string path_;
  int line_ = 0;
  bool columns_ = false;
  bool cutOff_ = false;
};

// The items that have samples; each item's new place, -1 without one.
std::vector<int> KeepUsed(std::vector<RecordedItem>& items, const std::vector<bool>& used) {
  std::vector<int> places(items.size(), -1);
  std::vector<RecordedItem> kept;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (!used[i]) continue;
    places[i] = static_cast<int>(kept.size());
    kept.push_back(std::move(items[i]));
  }
  items = std::move(kept);
  return places;
}

void DropUnused(Recording& recording) {
  std::vector<bool> used;
  for (const auto& curve : recording.curves) used.push_back(!curve.empty());
  (void)KeepUsed(recording.heading.items, used);
  std::erase_if(recording.curves, [](const auto& curve) { return curve.empty(); });
}

std::string NewNameFor(const std::string& path) {
  return path + ".new";
}

}  // namespace

RecordingWriter::RecordingWriter(const std::string& path, const std::string& like,
                                 RecordingHeading heading)
    : heading_(std::move(heading)), file_(world().files->Begin(path, like)) {
  file_->Add(HeadingText(heading_));
}

void RecordingWriter::Add(const RecordedSample& sample) {
  constexpr std::size_t kMostPending = 65536;
  pending_ += SampleLine(sample, heading_.items);
  if (pending_.size() > kMostPending) Flush();
}

void RecordingWriter::Flush() {
  file_->Add(pending_);
  pending_.clear();
}

Recording ReadRecording(const std::string& path) {
  Reader reader(path);
  std::vector<std::vector<ChartPoint>> curves;
  std::size_t samples = 0;
  reader.Read([&](const RecordedSample& sample) {
    if (++samples > bounds::kSamples) {
      throw RecordingError(path + ": it has more samples than can be shown");
    }
    curves.resize(reader.heading.items.size());
    curves[static_cast<std::size_t>(sample.item)].push_back({sample.time, sample.value});
    return true;
  });
  Recording recording;
  curves.resize(reader.heading.items.size());
  recording.heading = std::move(reader.heading);
  recording.curves = std::move(curves);
  DropUnused(recording);
  return recording;
}

RecordingHeading ReadRecordingHeading(const std::string& path) {
  Reader reader(path);
  reader.Read(nullptr);
  return std::move(reader.heading);
}

void WriteRecording(const std::string& path, const std::string& like, Recording recording) {
  DropUnused(recording);
  std::vector<RecordedSample> samples;
  for (std::size_t i = 0; i < recording.curves.size(); ++i) {
    for (const ChartPoint& point : recording.curves[i]) {
      samples.push_back({point.x, static_cast<int>(i), point.y});
    }
  }
  std::ranges::stable_sort(samples, {}, &RecordedSample::time);
  RecordingWriter writer(path, like, recording.heading);
  for (const RecordedSample& sample : samples) writer.Add(sample);
  writer.Flush();
}

void RewriteHeading(const std::string& path, const std::string& like,
                    const std::function<void(RecordingHeading&)>& change) {
  // Once for what has samples, and with how many decimals; once for the samples.
  Reader survey(path);
  std::vector<bool> used;
  survey.Read([&](const RecordedSample& sample) {
    used.resize(survey.heading.items.size());
    used[static_cast<std::size_t>(sample.item)] = true;
    return true;
  });
  used.resize(survey.heading.items.size());
  const std::vector<int> places = KeepUsed(survey.heading.items, used);
  change(survey.heading);
  const std::string next = NewNameFor(path);
  world().files->Remove(next);
  try {
    RecordingWriter writer(next, like, survey.heading);
    Reader(path).Read([&](const RecordedSample& sample) {
      writer.Add({sample.time, places[static_cast<std::size_t>(sample.item)], sample.value});
      return true;
    });
    writer.Flush();
  } catch (...) {
    world().files->Remove(next);
    throw;
  }
  world().files->Rename(next, path);
}

}  // namespace velmoor
