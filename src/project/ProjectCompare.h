// Two project files, row by row.
#pragma once

#include <string>
#include <vector>

namespace velmoor {

// Where two projects differ in what goes to the amplifier.
struct ProjectDifference {
  std::string part;   // "Index Table", "Parameters"
  std::string row;    // "5" of the index table (from 1), "31" of the zones (from 0), "Pn81B"
  std::string field;  // the column of the file, "ControllerSpeed"
  std::string first, second;
  int place = 0;  // of the value within its part
};

// How many rows of one part were compared, and where they differ.
struct PartComparison {
  std::string part;
  int rows = 0;
  std::vector<ProjectDifference> differences;
  // Rows that no download brings over are told of, and make nothing different.
  bool counts = true;
  // Values that are the same in both, where these were asked for.
  std::vector<ProjectDifference> equal{};
};

// A part that counts has a difference.
[[nodiscard]] bool Differs(const std::vector<PartComparison>& parts);

// The part that a parameter is told in.
[[nodiscard]] std::string ComparedPart(const std::string& strPn);
inline constexpr const char* kNotSentPart = "Not sent by Velmoor";

enum class CompareScope { different, everything };  // everything tells equal values too

// Compares the controller's form of the three tables and of all parameters, as it is compared with
// the amplifier. Labels, which live in
// the project alone, and dirty marks are no difference. Throws DatabaseError.
[[nodiscard]] std::vector<PartComparison> CompareProjects(
    const std::string& firstPath, const std::string& secondPath,
    CompareScope scope = CompareScope::different);

}  // namespace velmoor
