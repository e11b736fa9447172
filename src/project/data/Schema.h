// The names of all tables and columns of the project file and of the catalogue's working copy, and
// the one place that knows how to open them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Database.h"

namespace velmoor::schema {

// The password of every project, of the template and of the catalogue.
inline constexpr std::string_view kPassword = "nurvex";

// The format of the project files that this program writes. What changes it, and what every version
// meant, is told in docs/file-format.md.
inline constexpr std::int64_t kFormatVersion = 2;

// One row a parameter of the project.
struct Parameters {
  static constexpr std::string_view kTable = "tblParameters";
  static constexpr std::string_view kPn = "pn";        // the key, such as "Pn803"
  static constexpr std::string_view kValue = "value";  // as shown: item text, units, or digits
  static constexpr std::string_view kControllerValue = "ControllerValue";  // as sent
  static constexpr std::string_view kDirty = "Dirty";                      // "1": not yet sent
  static constexpr std::string_view kDescription = "Description";          // machine rows only
};

// Settings that are no parameter of the hardware.
struct Misc {
  static constexpr std::string_view kTable = "tblMisc";
  static constexpr std::string_view kPropertyName = "PropertyName";  // the key
  static constexpr std::string_view kValue = "value";
  static constexpr std::string_view kTestRunSpeed = "testrunspeed";
  static constexpr std::string_view kHomingOffset = "homing offset";
  static constexpr std::string_view kFormat = "format";         // the file's version
  static constexpr std::string_view kMotorSize = "motor size";  // watts; absent: not known
  // Behind it the word of a tool, "transfer index": "sent 2026-03-01 14:05:09", or "read" and the
  // moment.
  static constexpr std::string_view kTransfer = "transfer ";
};

// The motion programme; always walked in the order of kId.
struct Position {
  static constexpr std::string_view kTable = "tblPosition";
  static constexpr std::size_t kRows = 128;
  static constexpr std::string_view kId = "ID";        // 1 to 128
  static constexpr std::string_view kIndex = "Index";  // the amplifier's row, 0 to 127
  static constexpr std::string_view kPosition = "Position";
  static constexpr std::string_view kSpeed = "Speed";
  static constexpr std::string_view kRSPD = "RSPD";
  static constexpr std::string_view kRDST = "RDST";
  static constexpr std::string_view kEvent = "Event";
  static constexpr std::string_view kLoop = "Loop";
  static constexpr std::string_view kNext = "Next";
  static constexpr std::string_view kLabel = "Label";
  static constexpr std::string_view kPOut = "POut";
  static constexpr std::string_view kControllerPosition = "ControllerPosition";
  static constexpr std::string_view kControllerSpeed = "ControllerSpeed";
  static constexpr std::string_view kControllerRSPD = "ControllerRSPD";
  static constexpr std::string_view kControllerRDST = "ControllerRDST";
  static constexpr std::string_view kControllerNext = "ControllerNext";
  static constexpr std::string_view kDirty = "Dirty";
};

// The zones; always walked in the order of kZone.
struct Zone {
  static constexpr std::string_view kTable = "tblZone";
  static constexpr std::size_t kRows = 32;
  static constexpr std::string_view kZone = "Zone";  // 0 to 31
  static constexpr std::string_view kLowerLimit = "LowerLimit";
  static constexpr std::string_view kUpperLimit = "UpperLimit";
  static constexpr std::string_view kControllerLowerLimit = "ControllerLowerLimit";
  static constexpr std::string_view kControllerUpperLimit = "ControllerUpperLimit";
  static constexpr std::string_view kTexts[] = {kLowerLimit, kUpperLimit, kControllerLowerLimit,
                                                kControllerUpperLimit};
  static constexpr std::size_t kBits = 5;
  static constexpr std::string_view kBit[kBits] = {"POut0", "POut1", "POut2", "POut3", "POut4"};
  static constexpr std::string_view kDirty = "Dirty";
};

// The jog speeds; always walked in the order of kJog.
struct Jog {
  static constexpr std::string_view kTable = "tblJog";
  static constexpr std::size_t kRows = 16;
  static constexpr std::string_view kJog = "Jog";  // 0 to 15
  static constexpr std::string_view kSpeed = "Speed";
  static constexpr std::string_view kControllerValue = "ControllerValue";
  static constexpr std::size_t kBits = 4;
  static constexpr std::string_view kBit[kBits] = {"Jog0", "Jog1", "Jog2", "Jog3"};
  static constexpr std::string_view kDirty = "Dirty";
};

// The one row that names the three tables of the catalogue's working copy.
struct TableManager {
  static constexpr std::string_view kTable = "tablemanager";
  static constexpr std::string_view kParameters = "userparameter_table";
  static constexpr std::string_view kNibbles = "nibble_table";
  static constexpr std::string_view kLists = "dec_table";
};

// Parameter definitions, ascending by user_constant.
struct Definition {
  static constexpr std::string_view kUserConstant = "user_constant";
  static constexpr std::string_view kParameterName = "parameter_name";
  static constexpr std::string_view kMin = "Min";
  static constexpr std::string_view kMax = "Max";
  static constexpr std::string_view kInitialValue = "initial_value";
  static constexpr std::string_view kUnit = "Unit";
  static constexpr std::string_view kDecDataId = "dec_data_id";
  static constexpr std::string_view kEditType = "edit_type";
  static constexpr std::string_view kNibbleDataId = "nibble_data_id";
  static constexpr std::string_view kFixedDigit = "fixed_digit";
  static constexpr std::string_view kCategoryName = "category_name";
  static constexpr std::string_view kGroup = "parameter_group";
  static constexpr std::string_view kSize = "Size";
  static constexpr std::string_view kHelp = "help";
};

// Digit definitions: four records for each nibble_data_id, the right-most digit first.
struct Nibble {
  static constexpr std::string_view kNibbleDataId = "nibble_data_id";
  static constexpr std::string_view kUseBit = "use_bit";  // count of values; 0: the digit stays "0"
  static constexpr std::string_view kDigitName = "digit_name";  // what the digit selects
  static constexpr std::string_view kChoices = "choices";       // what each value means
};

// Combo lists, sorted by dec_id.
struct ListEntry {
  static constexpr std::string_view kDecId = "dec_id";
  static constexpr std::string_view kDecDataId = "dec_data_id";
  static constexpr std::string_view kDecName = "dec_name";
};

struct AlarmName {
  static constexpr std::string_view kTable = "alarmname";
  static constexpr std::string_view kName = "alarm_name";
  static constexpr std::string_view kId = "alarm_name_id";
};

struct AlarmDisplay {
  static constexpr std::string_view kTable = "VKLME_RX900_DispAl";
  static constexpr std::string_view kId = "alarm_name_id";
  static constexpr std::string_view kDisplay = "alarm_display";
  static constexpr std::string_view kCode = "alarm_code";
};

// ---- what a project holds

// The mark of a record that still has to be downloaded, in every table that has marks.
inline constexpr std::string_view kMark = Position::kDirty;

// One table of a project.
struct ProjectTable {
  TableDefinition definition;
  std::string_view title;   // in the user's words
  std::string_view key;     // the column that names a record, or numbers it
  std::size_t records = 0;  // as many, numbered from `first`; 0: named, and kMostRecords at most
  std::int64_t first = 0;
};

// Bounds of what is believed; no project that this program wrote comes near them.
inline constexpr std::size_t kMostRecords = 4096;
inline constexpr std::size_t kMostText = 4096;  // bytes of one field

// The tables of a project, in the order in which the template has them, and all there are.
[[nodiscard]] const std::vector<ProjectTable>& ProjectTables();
[[nodiscard]] const ProjectTable& ProjectTableNamed(std::string_view name);

}  // namespace velmoor::schema

namespace velmoor {

// Open a file for one operation: a project or the catalogue's working copy. Throws DatabaseError.
[[nodiscard]] std::unique_ptr<Database> OpenForReading(const std::string& path);
// A project. Throws DatabaseError, and NewerFormat where its format is newer than this program's:
// nothing is ever written into such a file.
[[nodiscard]] std::unique_ptr<Database> OpenForWriting(const std::string& path);

}  // namespace velmoor
