#include "project/data/clsHX7ComboList.h"

#include <utility>

#include "platform/Trapped.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

using schema::ListEntry;

// The items joined so far, without the "|" before the first.
std::string Joined(const std::string& items) {
  return items.empty() ? items : items.substr(1);
}

ComboLists ReadLists(const std::string& path, const std::string& table) {
  ComboLists lists;
  std::string current;
  std::size_t number = 1;
  const auto database = OpenForReading(path);
  const auto rows = database->OpenTable(table, ListEntry::kDecId);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    // Any other number begins the next list, whatever it is: the numbers rise by one.
    if (rows->Text(ListEntry::kDecDataId) != std::to_string(number)) {
      lists.push_back(Joined(current));
      current.clear();
      ++number;
    }
    current += "|" + rows->Text(ListEntry::kDecName);
  }
  lists.push_back(Joined(current));
  return lists;
}

}  // namespace

bool clsHX7ComboList::GetComboLists(const std::string& strComboListTable) {
  return Trapped("clsComboList.GetComboLists: ", [&] {
    colComboList_ = ReadLists(strDatabasePath_, strComboListTable);
    return true;
  });
}

}  // namespace velmoor
