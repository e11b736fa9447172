#include "instruments/RecordingList.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/Csv.h"
#include "platform/Trapped.h"

namespace velmoor {
namespace {

constexpr std::array<const char*, 4> kHeadings{"", "Name", "Began", "Note"};

}  // namespace

void RecordingList::Read(std::optional<RecordingFolder> folder) {
  std::vector<Row> rows;
  if (folder) {
    for (const std::string& each : folder->Names()) {
      Row row{.name = each, .heading = {}, .fault = {}};
      try {
        row.heading = ReadRecordingHeading(folder->PathOf(each));
      } catch (const std::exception& error) {
        row.fault = error.what();
      }
      const Row* const before = At(RowOf(each));
      row.shown = before != nullptr && before->shown && row.fault.empty();
      rows.push_back(std::move(row));
    }
  }
  folder_ = std::move(folder);
  rows_ = std::move(rows);
}

int RecordingList::ShowOnly(const std::string& which) {
  for (Row& row : rows_) row.shown = row.name == which && row.fault.empty();
  return RowOf(which);
}

bool RecordingList::Toggle(int row) {
  if (At(row) == nullptr || !At(row)->fault.empty()) return false;
  bool& shown = rows_[static_cast<std::size_t>(row) - 1].shown;
  shown = !shown;
  return true;
}

std::vector<std::pair<std::string, Recording>> RecordingList::TakeShown() {
  std::vector<std::pair<std::string, Recording>> taken;
  for (Row& row : rows_) {
    if (!row.shown) continue;
    row.shown = Trapped("The recording cannot be shown!\r", [&] {
      taken.emplace_back(row.name, ReadRecording(folder_->PathOf(row.name)));
      return true;
    });
  }
  std::ranges::reverse(taken);
  return taken;
}

const RecordingList::Row* RecordingList::At(int row) const {
  return row < 1 || row >= Rows() ? nullptr : &rows_[static_cast<std::size_t>(row) - 1];
}

int RecordingList::RowOf(const std::string& which) const {
  const auto place = std::ranges::find(rows_, which, &Row::name);
  return place == rows_.end() ? 0 : static_cast<int>(place - rows_.begin()) + 1;
}

std::string RecordingList::WhyNot(int row, const std::string& next) const {
  const Row* const at = At(row);
  if (at == nullptr || !folder_ || next == at->name) return {};
  return folder_->WhyNot(next);
}

std::vector<std::vector<std::string>> RecordingList::Details(int row) const {
  std::vector<CsvRow> rows{{"What", "As it was"}};
  const Row* const at = At(row);
  if (at == nullptr) return rows;
  const RecordingHeading& heading = at->heading;
  const std::array<std::pair<const char*, const std::string*>, 9> texts{
      {{"Fault", &at->fault},
       {"Moment of time 0", &heading.begun},
       {"Project", &heading.project},
       {"Axis", &heading.axis},
       {"Began", &heading.cause},
       {"Gains", &heading.gains},
       {"In-position window", &heading.window},
       {"Samples a second", &heading.rate},
       {"Note", &heading.note}}};
  for (const auto& [word, text] : texts) {
    if (!text->empty()) rows.push_back({word, *text});
  }
  for (const std::string& remark : heading.remarks) {
    const std::size_t colon = remark.find(": ");
    const bool parted = colon != std::string::npos;
    rows.push_back(
        {parted ? remark.substr(0, colon) : "", parted ? remark.substr(colon + 2) : remark});
  }
  return rows;
}

// ---- as a grid's source

std::string RecordingList::Text(int row, int column) const {
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  const Row& at = rows_.at(static_cast<std::size_t>(row) - 1);
  switch (column) {
    case show:
      return at.shown ? "Hide" : "Show";
    case name:
      return at.name;
    case began:
      return at.fault.empty() ? at.heading.cause : "cannot be read";
    default:
      return at.heading.note;
  }
}

CellTraits RecordingList::Traits(int row, int column) const {
  CellTraits traits;
  if (row == 0) return traits;
  const bool readable = rows_.at(static_cast<std::size_t>(row) - 1).fault.empty();
  traits.action = column == show && readable;
  traits.editable = column == name || (column == note && readable);
  if (column == began && !readable) traits.tone = Tone::alarm;
  return traits;
}

void RecordingList::SetText(int row, int column, const std::string& text) {
  Row& at = rows_.at(static_cast<std::size_t>(row) - 1);
  if (!folder_) return;
  Trapped("The recording cannot be changed!\r", [&] {
    if (column == name && text != at.name) {
      folder_->Rename(at.name, text);
      at.name = text;
    }
    if (column == note && text != at.heading.note) {
      folder_->Annotate(at.name, text);
      at.heading.note = text;
    }
    return true;
  });
}

}  // namespace velmoor
