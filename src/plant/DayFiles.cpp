#include "plant/DayFiles.h"

#include <utility>

#include "plant/Messages.h"
#include "platform/Csv.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::size_t kLook = std::size_t{8} << 20U;
constexpr std::size_t kDate = 10;  // characters of "2026-03-01"
constexpr std::string_view kSuffix = ".csv";

}  // namespace

DayFiles::DayFiles(std::string folder, std::string line, std::string like, std::vector<int> items,
                   std::size_t mostBytes)
    : folder_(std::move(folder)),
      line_(std::move(line)),
      like_(std::move(like)),
      items_(std::move(items)),
      mostBytes_(mostBytes) {}

std::string DayFiles::Heading() const {
  CsvRow cells{"time", "axis", "name", "state", "display"};
  for (const int item : items_) cells.push_back(FieldOf(item));
  return CsvLine(cells);
}

void DayFiles::Take(const AxisState& axis) {
  const std::string now = UtcNow();
  if (const std::string day = now.substr(0, kDate); day != day_) {
    Flush();
    file_.reset();
    day_ = day;
  }
  CsvRow cells{now, axis.axis.address, VisibleText(axis.axis.name), StateWord(axis),
               VisibleText(axis.reading.display)};
  for (const int item : items_) {
    const auto value = axis.values.find(item);
    cells.push_back(value == axis.values.end() ? std::string() : NumberText(value->second));
  }
  rows_ += CsvLine(cells);
}

void DayFiles::Flush() {
  if (rows_.empty()) return;
  try {
    if (!file_) Open(day_);
    file_->Add(rows_);
    sinceLook_ += rows_.size();
    if (sinceLook_ > kLook) {
      KeepBound();
      sinceLook_ = 0;
    }
    trouble_.clear();
  } catch (const FileError& error) {
    trouble_ = error.what();
    file_.reset();
  }
  rows_.clear();
}

// Rows of other columns go to a file of their own.
std::string DayFiles::Today(const std::string& stem) const {
  const std::string heading = Heading();
  for (int number = 1;; ++number) {
    std::string path = JoinPath(
        folder_, stem + (number == 1 ? "" : "-" + NumberText(number)) + std::string(kSuffix));
    std::string first;
    if (world().files->Exists(path)) {
      world().files->ReadLines(path, [&first](std::string_view line) {
        first = line;
        return false;
      });
    }
    if (first.empty() || heading.starts_with(first)) return path;
  }
}

void DayFiles::Open(const std::string& day) {
  world().files->MakeDirectories(folder_);
  KeepBound();
  const std::string path = Today(TopicLevel(line_) + "-" + day);
  const bool isNew = !world().files->Exists(path);
  file_ = world().files->Continue(path, like_);
  if (isNew) file_->Add(Heading());
}

// Names are dates: the oldest goes first, the present one stays.
void DayFiles::KeepBound() const {
  const std::string prefix = TopicLevel(line_) + "-";
  std::vector<std::string> mine;
  std::size_t bytes = 0;
  for (const std::string& name : world().files->NamesIn(folder_)) {
    if (!name.starts_with(prefix) || !name.ends_with(kSuffix)) continue;
    mine.push_back(name);
    bytes += world().files->SizeOf(JoinPath(folder_, name));
  }
  for (std::size_t i = 0; i + 1 < mine.size() && bytes > mostBytes_; ++i) {
    const std::string path = JoinPath(folder_, mine[i]);
    bytes -= world().files->SizeOf(path);
    world().files->Remove(path);
  }
}

}  // namespace velmoor
