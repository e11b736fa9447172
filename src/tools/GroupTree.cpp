#include "tools/GroupTree.h"

#include <algorithm>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::string_view kWithin = " > ";
constexpr const char* kOpened = "\u25be ";
constexpr const char* kClosed = "\u25b8 ";

std::string OuterOf(const std::string& group) {
  return group.substr(0, group.find(kWithin));
}

}  // namespace

GroupTree::GroupTree(const std::vector<std::string>& groups) : branches_(1) {
  const auto isNew = [this](const std::string& group) {
    return std::ranges::find(branches_, group, &Branch::group) == branches_.end();
  };
  for (const std::string& each : groups) {
    const std::string outer = OuterOf(each);
    if (isNew(outer)) branches_.push_back({outer});
    if (!isNew(each)) continue;
    // Behind the last one of its outer group.
    const auto last = std::find_if(branches_.rbegin(), branches_.rend(), [&](const Branch& branch) {
      return OuterOf(branch.group) == outer;
    });
    branches_.insert(last.base(), {each});
  }
}

bool GroupTree::Holds(std::size_t branch, const std::string& group) const {
  const std::string& own = branches_[branch].group;
  return own.empty() || group == own || group.starts_with(own + std::string(kWithin));
}

bool GroupTree::IsWithin(std::size_t branch) const {
  return branches_[branch].group.find(kWithin) != std::string::npos;
}

bool GroupTree::HasOwn(std::size_t branch) const {
  return branch > 0 && branch + 1 < branches_.size() && !IsWithin(branch) && IsWithin(branch + 1);
}

// The chosen branch, or one within it, is what is looked at.
bool GroupTree::IsOpen(std::size_t branch) const {
  return OuterOf(Chosen()) == OuterOf(branches_[branch].group);
}

std::string GroupTree::Text(int row, int column) const {
  if (row == 0) return column == 0 ? "Group" : "Rows";
  const auto branch = static_cast<std::size_t>(row) - 1;
  const std::string& group = branches_[branch].group;
  if (column == 1) return NumberText(branches_[branch].rows);
  if (group.empty()) return "All parameters";
  if (IsWithin(branch)) return "      " + group.substr(group.find(kWithin) + kWithin.size());
  return (HasOwn(branch) ? (IsOpen(branch) ? kOpened : kClosed) : "   ") + group;
}

void GroupTree::Bind(Grid& grid, Connections& connections, std::function<void()> chosen) {
  constexpr int kNameWidth = 24, kRowsWidth = 5;
  grid_ = &grid;
  chosen_ = 0;
  grid.Bind(this);
  grid.SetColumnWidth(0, kNameWidth);
  grid.SetColumnWidth(1, kRowsWidth);
  grid.SetCurrent(1, 0);
  ShowOpen();
  connections += grid.RowColChange.Connect([this, chosen = std::move(chosen)] {
    if (grid_->Row() < 1 || grid_->Row() == static_cast<int>(chosen_) + 1) return;
    chosen_ = static_cast<std::size_t>(grid_->Row()) - 1;
    ShowOpen();
    chosen();
  });
}

void GroupTree::ShowOpen() {
  for (std::size_t branch = 0; branch < branches_.size(); ++branch) {
    grid_->SetRowHidden(static_cast<int>(branch) + 1, IsWithin(branch) && !IsOpen(branch));
  }
  grid_->Refresh();
}

void GroupTree::Count(const std::vector<std::string>& groups) {
  for (std::size_t branch = 0; branch < branches_.size(); ++branch) {
    branches_[branch].rows = static_cast<int>(std::ranges::count_if(
        groups, [&](const std::string& group) { return Holds(branch, group); }));
  }
  grid_->Refresh();
}

}  // namespace velmoor
