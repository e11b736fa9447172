#include "tables/ZoneStrip.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "tables/clsHX7Zone.h"

namespace velmoor {
namespace {

using Kind = DrawingShape::Kind;

constexpr double kEdge = 40;  // room at both ends
constexpr double kZonesTop = 6, kLaneHeight = 16, kLanes = 3;
constexpr double kAxis = kZonesTop + kLanes * kLaneHeight + 4;
constexpr double kProgramme = kAxis + 12, kNumbers = kAxis + 24;
constexpr std::size_t kMostRemarks = 3;

void Include(std::optional<Travel>& range, const Travel& part) {
  if (!range) range = part;
  range->low = std::min(range->low, part.low);
  range->high = std::max(range->high, part.high);
}

class Strip {
 public:
  Strip(const Travel& range, int resolution) : range_(range), resolution_(resolution) {}

  [[nodiscard]] double At(double position) const {
    const double part = (position - range_.low) / (range_.high - range_.low);
    return kEdge + std::clamp(part, 0.0, 1.0) * (kStripWidth - 2 * kEdge);
  }

  void Axis() {
    Add(Kind::line, kEdge, kAxis, kStripWidth - kEdge, kAxis);
    for (const double end : {range_.low, range_.high}) Text(At(end), kNumbers, Number(end));
  }

  void Zone(const ZoneSpan& zone, int lane, bool strong) {
    const double top = kZonesTop + lane * kLaneHeight;
    const double left = At(std::min(zone.lower, zone.upper));
    const double right = At(std::max(zone.lower, zone.upper));
    Add(Kind::rectangle, left, top, std::max(right, left + 1), top + kLaneHeight - 3, strong);
    Text((left + right) / 2, top + kLaneHeight / 2 - 1, NumberText(zone.zone), strong);
  }

  void Limit(double position, const char* word) {
    const bool beyond = position < range_.low || position > range_.high;
    const double x = At(position);
    if (!beyond) Add(Kind::line, x, kZonesTop - 4, x, kAxis + 4, true);
    Text(x, kProgramme, std::string(word) + (beyond ? " beyond" : ""), !beyond);
  }

  void Programme(const Travel& travel) {
    const double middle = (At(travel.low) + At(travel.high)) / 2;
    Add(Kind::arrow, middle, kAxis, At(travel.low), kAxis, true);
    Add(Kind::arrow, middle, kAxis, At(travel.high), kAxis, true);
    Text(kStripWidth / 2, kNumbers,
         "programme " + Number(travel.low) + " to " + Number(travel.high), true);
  }

  [[nodiscard]] std::vector<DrawingShape> Take() { return std::move(shapes_); }

 private:
  [[nodiscard]] std::string Number(double position) const {
    return FixedText(position, resolution_);
  }
  void Add(Kind kind, double x1, double y1, double x2, double y2, bool strong = false) {
    shapes_.push_back({kind, x1, y1, x2, y2, {}, strong});
  }
  void Text(double x, double y, const std::string& words, bool strong = false) {
    shapes_.push_back({Kind::text, x, y, x, y, words, strong});
  }

  Travel range_;
  int resolution_;
  std::vector<DrawingShape> shapes_;
};

// What is drawn: all that is known, but for limits so wide that nothing else could be seen.
std::optional<Travel> RangeOf(const std::vector<ZoneSpan>& zones,
                              const std::optional<Travel>& limits,
                              const std::optional<Travel>& programme) {
  constexpr double kWide = 4;
  std::optional<Travel> range = programme;
  for (const ZoneSpan& zone : zones) {
    Include(range, {std::min(zone.lower, zone.upper), std::max(zone.lower, zone.upper)});
  }
  if (!range) return limits;
  const double room = kWide * std::max(range->high - range->low, 1.0);
  if (limits && limits->high - limits->low <= room) Include(range, *limits);
  return range;
}

std::string Overlap(const ZoneSpan& first, const ZoneSpan& second) {
  const bool sound = first.lower <= first.upper && second.lower <= second.upper;
  const double from = std::max(first.lower, second.lower);
  const double to = std::min(first.upper, second.upper);
  if (!sound || from >= to) return {};
  return "Zones " + NumberText(first.zone) + " and " + NumberText(second.zone) + " overlap from " +
         NumberText(from) + " to " + NumberText(to) + ".";
}

}  // namespace

std::vector<ZoneSpan> SpansOf(const clsHX7Zone& table) {
  std::vector<ZoneSpan> spans;
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    const auto lower = ParseFloat(table.Text(row, clsHX7Zone::lower));
    const auto upper = ParseFloat(table.Text(row, clsHX7Zone::upper));
    if (lower && upper) spans.push_back({row - 1, *lower, *upper});
  }
  return spans;
}

std::vector<DrawingShape> ZoneStrip(const std::vector<ZoneSpan>& zones,
                                    const std::optional<Travel>& limits,
                                    const std::optional<Travel>& programme, int selected,
                                    int resolution) {
  const auto range = RangeOf(zones, limits, programme);
  if (!range || range->low >= range->high) return {};
  Strip strip(*range, resolution);
  strip.Axis();
  if (programme) strip.Programme(*programme);
  if (limits) {
    strip.Limit(limits->low, "limit");
    strip.Limit(limits->high, "limit");
  }
  int lane = 0;
  for (const ZoneSpan& zone : zones) {
    strip.Zone(zone, lane, zone.zone == selected);
    lane = (lane + 1) % static_cast<int>(kLanes);
  }
  return strip.Take();
}

std::string ZoneRemarks(const std::vector<ZoneSpan>& zones) {
  std::vector<std::string> remarks;
  for (std::size_t i = 0; i < zones.size(); ++i) {
    if (zones[i].lower > zones[i].upper) {
      remarks.push_back("Zone " + NumberText(zones[i].zone) +
                        ": the lower limit is above the upper.");
    }
    for (std::size_t j = i + 1; j < zones.size(); ++j) {
      std::string overlap = Overlap(zones[i], zones[j]);
      if (!overlap.empty()) remarks.push_back(std::move(overlap));
    }
  }
  std::string words;
  for (std::size_t i = 0; i < std::min(remarks.size(), kMostRemarks); ++i) {
    words += (i == 0 ? "" : "\r") + remarks[i];
  }
  if (remarks.size() > kMostRemarks) {
    words += "\rand " + NumberText(remarks.size() - kMostRemarks) + " more.";
  }
  return words;
}

}  // namespace velmoor
