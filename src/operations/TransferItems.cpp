#include "operations/TransferItems.h"

#include <algorithm>

namespace velmoor {
namespace {

constexpr const char* kAllTables = "All Tables";

}  // namespace

const std::vector<TransferItem>& UploadItemsOfMenu() {
  static const std::vector<TransferItem> kUploads = [] {
    std::vector<TransferItem> items;
    for (const ToolInfo& info : Tools()) {
      items.push_back({info.upload, std::string(info.item), {info.tool}});
    }
    items.push_back({MainCommand::mnuToolsUploadTablesAll,
                     kAllTables,
                     {Tool::jog, Tool::zone, Tool::position}});
    return items;
  }();
  return kUploads;
}

const std::vector<TransferItem>& DownloadItemsOfMenu() {
  static const std::vector<TransferItem> kDownloads = [] {
    std::vector<TransferItem> items;
    for (const ToolInfo& info : Tools()) {
      if (!info.download) continue;
      std::vector<Tool> tools{info.tool};
      if (info.tool == Tool::editor) tools.push_back(Tool::mechanicalSystem);
      items.push_back({info.download, std::string(info.item), std::move(tools)});
    }
    items.push_back(
        {MainCommand::mnuToolsDownloadTablesAll, kAllTables, {kTables.begin(), kTables.end()}});
    return items;
  }();
  return kDownloads;
}

const TransferItem& ItemOf(const std::vector<TransferItem>& items, Tool tool) {
  return *std::ranges::find_if(
      items, [tool](const TransferItem& item) { return item.tools.front() == tool; });
}

TransferItem JoinedItem(const std::vector<TransferItem>& items, const std::vector<Tool>& tools) {
  TransferItem joined;
  for (const Tool tool : tools) {
    if (!joined.name.empty()) joined.name += ", ";
    joined.name += InfoOf(tool).item;
    const auto item = std::ranges::find_if(
        items, [tool](const TransferItem& each) { return each.tools.front() == tool; });
    const std::vector<Tool> parts = item == items.end() ? std::vector{tool} : item->tools;
    for (const Tool part : parts) {
      const bool there = std::ranges::find(joined.tools, part) != joined.tools.end();
      if (!there) joined.tools.push_back(part);
    }
  }
  return joined;
}

}  // namespace velmoor
