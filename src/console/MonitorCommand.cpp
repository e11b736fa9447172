#include "console/MonitorCommand.h"

#include <algorithm>
#include <bitset>
#include <chrono>
#include <ostream>
#include <string_view>

#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::string_view kDefaultItems = "PUN,PER,NFB,TREF,STS";
constexpr std::int64_t kMostPasses = 100'000'000;

std::vector<MonitoredItem> ItemsOf(std::string_view list) {
  std::vector<MonitoredItem> items;
  for (const std::string& name : SplitAtCommas(list)) {
    const auto item = ItemNamed(name);
    if (!item) throw UsageError(NoItem(name));
    items.push_back(MonitoredItems()[static_cast<std::size_t>(*item)]);
  }
  return items;
}

// Lines as their bits, the highest first; other values as they come.
std::string ValueText(const MonitoredItem& item, std::int32_t value) {
  if (item.kind != ValueKind::bits) return NumberText(value);
  const std::string bits = std::bitset<32>(static_cast<std::uint32_t>(value)).to_string();
  return Right(bits, static_cast<std::size_t>(item.bits));
}

bool Monitor(const Context& context) {
  (void)context.line.Required("port");
  const std::vector<MonitoredItem> items = ItemsChosen(context);
  const std::int64_t passes = PassesChosen(context);
  Work work(context);
  if (!work.Connect()) return false;
  std::vector<TableOut::Column> columns{{"time", JsonField::Kind::text},
                                        {"seconds", JsonField::Kind::number}};
  for (const MonitoredItem& item : items) columns.push_back(ColumnOf(item));
  TableOut table(context, columns);
  const std::chrono::milliseconds start = world().clock->Monotonic();
  for (std::int64_t pass = 0; pass < passes; ++pass) {
    if (work.session().StopProcedure() || !context.program.out) return false;
    CsvRow cells = MomentCells(start);
    if (!ReadItems(*work.session().Helix7(), items, cells)) return false;
    table.Row(cells);
  }
  return true;
}

}  // namespace

std::vector<MonitoredItem> ItemsChosen(const Context& context) {
  return ItemsOf(context.line.Value("items").value_or(std::string(kDefaultItems)));
}

std::int64_t PassesChosen(const Context& context) {
  const auto count = ParseWhole(context.line.Required("count"));
  if (!count || *count < 1 || *count > kMostPasses) {
    throw UsageError("--count takes a number of passes from 1");
  }
  return *count;
}

TableOut::Column ColumnOf(const MonitoredItem& item) {
  const bool bits = item.kind == ValueKind::bits;
  return {std::string(WordOf(item.command)),
          bits ? JsonField::Kind::text : JsonField::Kind::number};
}

CsvRow MomentCells(std::chrono::milliseconds start) {
  constexpr double kMillisecondsInSecond = 1000;
  const std::chrono::milliseconds since = world().clock->Monotonic() - start;
  return {MomentText(world().clock->Now()),
          FixedText(static_cast<double>(since.count()) / kMillisecondsInSecond, 3)};
}

bool ReadItems(clsHX7Helix7& helix, const std::vector<MonitoredItem>& items, CsvRow& cells) {
  for (const MonitoredItem& item : items) {
    std::int32_t value = 0;
    const ResultCode result = helix.GetHelixValue(static_cast<std::int32_t>(item.command), value);
    if (result != kSuccess) {
      DisplayError(result, std::string(WordOf(item.command)) + " cannot be read!");
      return false;
    }
    cells.push_back(ValueText(item, value));
  }
  return true;
}

Commands MonitorCommands() {
  return {{{"monitor", "print values over time", {}, {"port", "axis", "items", "count", "json"}},
           Monitor}};
}

}  // namespace velmoor
