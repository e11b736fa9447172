// The tools of a project, and what each is called in every place: the one table that transfers,
// windows, help, reports, comparisons and the command line read.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "layouts/frmMain.h"

namespace velmoor {

// The commands of the main window.
using MainCommand = layouts::frmMain::Id;

// In the order in which a list of what is not downloaded names them.
enum class Tool : std::uint8_t {
  mechanicalSystem,
  editor,
  tuning,
  interface,
  flexibleIO,
  overTravel,
  homing,
  position,
  jog,
  zone
};
inline constexpr std::size_t kTools = 10;

struct ToolInfo {
  Tool tool;
  std::string_view item{};     // in transfers and comparisons: "Flexible I/O Parameters"
  std::string_view status{};   // in the status bar while it is transferred
  std::string_view rows{};     // what its rows are there: "Parameters", "Steps"
  std::string_view pending{};  // where it is named as not downloaded
  std::string_view limited{};  // where a limit has replaced values of it; empty: not named
  std::string_view place{};    // "Index Table step": of a row, in front of its number
  int firstRow = 0;            // the number of its first row there
  std::string_view word{};     // on the command line, as an item and as a report's section
  std::string_view report{};   // title of its section
  std::string_view section{};  // "srptIndex": the section's place in the main report
  MainCommand open{};          // the menu command that opens its window
  std::string_view trap{};     // heads the box of an error while it opens
  bool modal = false;          // its window blocks the main window
  std::string_view window{};   // the name of its form
  std::string_view caption{};  // its beginning, where one form serves several tools
  std::string_view page{};     // of the guide
  std::string_view anchor{};
  std::optional<MainCommand> upload{};  // the menu commands of its transfers
  std::optional<MainCommand> download{};
};

// By the number of the tool.
[[nodiscard]] std::span<const ToolInfo, kTools> Tools();
[[nodiscard]] const ToolInfo& InfoOf(Tool tool);

// The order in which an upload of everything reads them, which is that of the command line's items.
inline constexpr std::array<Tool, 5> kUploadOrder{Tool::mechanicalSystem, Tool::editor, Tool::jog,
                                                  Tool::zone, Tool::position};
// The tables, in the order in which a download sends them.
inline constexpr std::array<Tool, 3> kTables{Tool::position, Tool::jog, Tool::zone};
// The tools that show parameters in a grid.
inline constexpr std::array<Tool, 6> kParameterTools{
    Tool::editor, Tool::tuning, Tool::flexibleIO, Tool::homing, Tool::interface, Tool::overTravel};

}  // namespace velmoor
