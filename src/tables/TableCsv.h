// The motion tables as comma-separated texts.
//
// Index: step,label,position,speed,rdst,rspd,pout,event,loop,next,dirty with steps from 1. Zone:
// zone,lower,upper,dirty with zones from 0. Jog: jog,speed,dirty with rows from 0.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Csv.h"
#include "session/Project.h"
#include "session/Tools.h"

namespace velmoor {

class clsHX7Jog;
class clsHX7Position;
class clsHX7Zone;
class MotionTable;

// The names of the columns, then a row for each of the table.
[[nodiscard]] std::vector<CsvRow> CsvRowsOf(const MotionTable& table);
[[nodiscard]] std::string ExportCsv(const MotionTable& table);

// The table that a text is of, by its heading; nothing: of none.
[[nodiscard]] std::optional<Tool> TableOfCsv(std::string_view text);

// Puts the text's rows into the table and marks the rows that changed. With a column for the row's
// number the rows named are replaced and the others stay; without one the text is the whole table.
// The mark column is ignored. Each bad cell gives one line, "Row 3, column speed: ...", the first
// bounds::kFaultsTold of them; with any such line nothing is changed. Empty: done, and the caller
// accepts the change.
[[nodiscard]] std::vector<std::string> ImportCsv(const Project& project, clsHX7Position& table,
                                                 std::string_view text);
[[nodiscard]] std::vector<std::string> ImportCsv(const Project& project, clsHX7Zone& table,
                                                 std::string_view text);
[[nodiscard]] std::vector<std::string> ImportCsv(const Project& project, clsHX7Jog& table,
                                                 std::string_view text);

}  // namespace velmoor
