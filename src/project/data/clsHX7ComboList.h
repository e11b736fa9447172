// The combo lists of the catalogue, read once at the program's start.
#pragma once

#include <string>

#include "session/Session.h"

namespace velmoor {

class clsHX7ComboList {
 public:
  // Path of the catalogue's working copy.
  void SetDatabasePath(const std::string& path) { strDatabasePath_ = path; }
  // Reads all lists of the table anew. False after a failure, which the user was told.
  bool GetComboLists(const std::string& strComboListTable);
  // Entry i (from 0) is the list with the key i + 1; its items are joined by "|".
  [[nodiscard]] const ComboLists& ComboList() const { return colComboList_; }

 private:
  std::string strDatabasePath_;
  ComboLists colComboList_;
};

}  // namespace velmoor
