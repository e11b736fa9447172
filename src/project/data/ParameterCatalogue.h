// What the catalogue's working copy tells about the parameters: read by the tools and the reports.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace velmoor {

// The names of the three tables of a working copy, as its `tablemanager` tells them.
struct CatalogueTables {
  std::string ParametersTable;
  std::string NibbleTable;
  std::string DecDataTable;
};

// One parameter's definition. All fields are the catalogue's texts; numbers are decimal.
struct ParameterDefinition {
  std::string user_constant;   // "Pn803"
  std::string parameter_name;  // as the user reads it
  std::string Min;             // of rows with a user unit: in counts
  std::string Max;
  std::string initial_value;  // of a list row: the item's index from 0
  std::string Unit;
  std::string dec_data_id;     // key of the combo list from 1; "0": none
  std::string edit_type;       // "1001" to "1003": not for the direct parameter editor
  std::string nibble_data_id;  // key of the digit definition; "0": not coded in digits
  std::string fixed_digit;     // up to four digits, "1" marks a digit that cannot be changed
  std::string category_name;
  std::string group;  // "Gains", or a group within one: "Gains > First set"
  std::string Size;   // bytes in the amplifier
  std::string help;   // a sentence or two for the user
};

// What one digit of a parameter coded in digits may hold.
struct NibbleDigit {
  int use_bit = 0;         // count of allowed values; 0: the digit stays "0"
  std::string digit_name;  // what the digit selects; empty where it is not used
  std::string choices;     // what each value means, joined by "|"; empty for a plain number
};

struct NibbleDefinition {
  std::string nibble_data_id;
  std::array<NibbleDigit, 4> digits;  // digit 0 is the right-most one
};

// All open the working copy at `path` for the call alone and throw DatabaseError.
[[nodiscard]] CatalogueTables GetTableNames(const std::string& path);
// In the table's order, which is ascending by parameter.
[[nodiscard]] std::vector<ParameterDefinition> ReadParameterDefinitions(const std::string& path,
                                                                        const std::string& table);
[[nodiscard]] std::vector<NibbleDefinition> ReadNibbleDefinitions(const std::string& path,
                                                                  const std::string& table);

}  // namespace velmoor
