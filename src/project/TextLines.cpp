#include "project/TextLines.h"

#include "platform/KeyedText.h"
#include "platform/Numbers.h"

namespace velmoor::project_text {

std::string Line(std::string_view key, const std::string& value, const std::string& comment) {
  return std::string(key) + " = " + value + (comment.empty() ? "" : "  " + KeyedComment(comment)) +
         "\n";
}

std::string LiteralOf(const Parameter& parameter, const std::string& text) {
  const bool number = parameter.form == ValueForm::number || parameter.form == ValueForm::units;
  return number ? NumberOrQuoted(text) : QuotedText(text);
}

std::string RowLine(const MotionTable& table, const TableShape& shape, const RowTexts& given,
                    bool typed) {
  std::string cells;
  for (std::size_t i = 0; i < given.cells.size(); ++i) {
    const std::string text = given.cells[i].value_or(std::string());
    if (text.empty()) continue;
    const bool number = typed && IsNumberCell(table.Layout().columns[i]);
    cells += (cells.empty() ? " " : ", ") + std::string(shape.cells[i]) + " = " +
             (number ? NumberOrQuoted(text) : QuotedText(text));
  }
  return Line(NumberText(given.row - 1 + shape.firstNumber),
              cells.empty() ? "{}" : "{" + cells + " }", {});
}

}  // namespace velmoor::project_text
