// What a project's text and the project itself have in common: the names of its sections, what a
// new project holds, and which values somebody could have typed.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "mechanics/MachineDescription.h"
#include "project/data/Parameter.h"
#include "session/Project.h"

namespace velmoor {

class clsHX7Editor;

namespace project_text {

inline constexpr std::int64_t kFormat = 1;
inline constexpr std::string_view kFormatKey = "format";
// What becomes of all that a text does not name.
inline constexpr std::string_view kOthersKey = "others";
inline constexpr std::string_view kOthersDefault = "default";
inline constexpr std::string_view kOthersKept = "kept";
inline constexpr std::string_view kMachine = "machine";
inline constexpr std::string_view kMotor = "motor";
inline constexpr std::string_view kParameters = "parameters";
// Values that nobody can type, in the form of the amplifier: they came with an upload.
inline constexpr std::string_view kAsFound = "as-found";

// What a new project holds. A number in units is that number in all units.
class NewProject {
 public:
  // Reads the template. Throws DatabaseError.
  NewProject();
  // Reads a project in its place: its values stand for the usual ones.
  explicit NewProject(const std::string& path);
  // In those units; not valid where a new project has no such parameter.
  [[nodiscard]] MeantValue ValueOf(const Parameter& parameter, const Units& units) const;
  [[nodiscard]] MachineDescription Machine() const;

 private:
  struct Record {
    std::string controller, text;
  };
  std::map<std::string, Record, std::less<>> records_;
};

// A text of section "machine" speaks of those.
[[nodiscard]] bool BelongsToMachine(std::string_view strPn);

// A parameter's text as somebody types it into a new project.
struct TypedValue {
  bool accepted = false;
  MeantValue meant;
  std::string words;  // refused: why
};
// `old` is the text that it replaces, whose fixed digits stay. `row` is the editor's.
[[nodiscard]] TypedValue JudgeTyped(const Project& project, const clsHX7Editor& editor, int row,
                                    const std::string& old, const std::string& text);

}  // namespace project_text
}  // namespace velmoor
