// The definitions of all alarms and device errors, and the translation between the forms in which
// they appear: panel display ("A.9F"), numeric code, readable name.
//
// Read once at the start and unchanged afterwards. Before that every lookup gives an empty text. A
// lookup takes the first match and reports no error: without a match its result is empty.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Database.h"
#include "project/data/CatalogueSource.h"
#include "session/Session.h"

namespace velmoor {

class clsHX7Alarm final : public AlarmNames {
 public:
  // Path of the catalogue's working copy.
  void SetDatabasePath(const std::string& path) { strDatabasePath_ = path; }
  // The catalogue's number of the language of the names; without: English, as what is not
  // translated.
  void SetLanguage(std::int32_t language) { language_ = language; }
  // Throws DatabaseError.
  void ReadFromDB();
  // The same of the catalogue itself, without a working copy; names in English. Throws
  // DatabaseError.
  void ReadFromCatalogue(const std::string& path);

  // The readable name of a panel display.
  [[nodiscard]] std::string GetAlarmName(const std::string& strDisplay) const override;
  // The readable name of a code given in hexadecimal.
  [[nodiscard]] std::string GetErrorName(const std::string& strDisplay) const override;
  // The key of a panel display.
  [[nodiscard]] std::string GetAlarmID(const std::string& strDisplay) const;
  // The panel display of a code given as it stands in the table, in decimal: intended, though
  // GetErrorName takes the other form.
  [[nodiscard]] std::string GetErrorPanelDisplay(const std::string& strCode) const override;
  // The code to show for a panel display: the display's first four characters, or, for the four
  // alarms that have a code of their own, that code in hexadecimal. A text that is no alarm comes
  // back unchanged.
  [[nodiscard]] std::string GetAlarmCode(const std::string& strDisplay) const override;

 private:
  struct Row {
    std::string name;
    std::string key;
    std::string code;     // decimal; empty where the alarm has none
    std::string display;  // such as "A.9F"
  };

  [[nodiscard]] const Row* FindRow(std::string Row::*field, std::string_view text) const;

  static void Translate(Database& database, std::int32_t language, std::vector<Row>& list);

  std::string strDatabasePath_;
  std::int32_t language_ = catalogue_source::kEnglish;
  std::vector<Row> arAlarmList_;
};

}  // namespace velmoor
