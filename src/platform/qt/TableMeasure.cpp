#include "platform/qt/TableMeasure.h"

#include <algorithm>
#include <tuple>

#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

constexpr double kLeastGap = 120;  // dots between two columns
constexpr double kMostGap = 420;

// The digits before the decimal point, or the whole of a text without one.
QString BeforePoint(const QString& text) {
  const qsizetype point = text.indexOf(QLatin1Char('.'));
  return point < 0 ? text : text.left(point);
}

// How much of `word` fits, at least one character.
qsizetype Fitting(const QString& word, double width, const QFontMetricsF& metrics) {
  qsizetype length = word.size();
  while (length > 1 && metrics.horizontalAdvance(word.left(length)) > width) --length;
  // A character of two parts stays whole.
  if (length < word.size() && word[length].isLowSurrogate()) --length;
  return std::max<qsizetype>(length, word[0].isHighSurrogate() ? 2 : 1);
}

double WidestWord(const QString& text, const QFontMetricsF& metrics) {
  double widest = 0;
  for (const QString& word : text.split(QLatin1Char(' '))) {
    widest = std::max(widest, metrics.horizontalAdvance(word));
  }
  return widest;
}

}  // namespace

QStringList BrokenInto(const QString& text, double width, const QFontMetricsF& metrics) {
  QStringList lines;
  QString line;
  for (QString word : text.split(QLatin1Char(' '))) {
    const QString longer = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
    if (metrics.horizontalAdvance(longer) <= width) {
      line = longer;
      continue;
    }
    if (!line.isEmpty()) lines.append(line);
    while (metrics.horizontalAdvance(word) > width && word.size() > 1) {
      const qsizetype length = Fitting(word, width, metrics);
      lines.append(word.left(length));
      word = word.mid(length);
    }
    line = word;
  }
  lines.append(line);
  return lines;
}

TableMeasure::TableMeasure(const PrintSection& section, double width, const QFontMetricsF& cells,
                           const QFontMetricsF& headings)
    : section_(section), cells_(cells), headings_(headings), columns_(section.headings.size()) {
  for (const auto& row : section.rows) {
    for (std::size_t i = 0; i < columns_.size(); ++i) Look(cells, columns_[i], row[i]);
  }
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    LookAtHeading(columns_[i], ToQt(section.headings[i]));
  }
  const double gaps = kLeastGap * static_cast<double>(columns_.empty() ? 0 : columns_.size() - 1);
  Narrow(width - gaps);
  Place(width);
}

// ---- widths

void TableMeasure::Look(const QFontMetricsF& metrics, Column& column, const PrintCell& cell) const {
  const QString text = ToQt(cell.text);
  if (text.isEmpty()) return;
  if (cell.number) {
    const double before = metrics.horizontalAdvance(BeforePoint(text));
    column.before = std::max(column.before, before);
    column.behind = std::max(column.behind, metrics.horizontalAdvance(text) - before);
    column.least = std::max(column.least, column.before + column.behind);
  } else {
    column.allNumbers = false;
    column.widths.push_back(metrics.horizontalAdvance(text));
    column.least = std::max(column.least, WidestWord(text, metrics));
  }
}

void TableMeasure::LookAtHeading(Column& column, const QString& heading) const {
  if (column.before == 0) column.allNumbers = false;
  column.widths.push_back(headings_.horizontalAdvance(heading));
  column.least = std::max(column.least, WidestWord(heading, headings_));
  column.width = std::max(column.before + column.behind, std::ranges::max(column.widths));
}

std::ptrdiff_t TableMeasure::Broken(const Column& column, double width) {
  return std::ranges::count_if(column.widths, [width](double text) { return text > width; });
}

// Takes from the column where the fewest texts break for it, and first from the widest of these.
// Words are broken only where that is not enough.
void TableMeasure::Narrow(double room) {
  constexpr double kStep = 20;
  const auto cost = [](const Column& column) {
    const double width = column.width - kStep;
    return std::tuple(width < column.least, width < column.least ? 0 : Broken(column, width),
                      -width);
  };
  double total = 0;
  for (const Column& column : columns_) total += column.width;
  while (total > room) {
    std::ranges::min_element(columns_, {}, cost)->width -= kStep;
    total -= kStep;
  }
}

void TableMeasure::Place(double width) {
  double used = 0;
  for (const Column& column : columns_) used += column.width;
  const auto gaps = static_cast<double>(columns_.size() > 1 ? columns_.size() - 1 : 1);
  const double gap = std::clamp((width - used) / gaps, 0.0, kMostGap);
  double left = 0;
  for (Column& column : columns_) {
    column.left = left;
    left += column.width + gap;
  }
  width_ = columns_.empty() ? 0 : left - gap;
}

// ---- texts

TableMeasure::Row TableMeasure::Headings() const {
  Row row;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const Column& column = columns_[i];
    const QStringList lines = BrokenInto(ToQt(section_.headings[i]), column.width, headings_);
    for (int line = 0; line < lines.size(); ++line) {
      const double width = headings_.horizontalAdvance(lines[line]);
      const double x = column.left + (column.allNumbers ? column.width - width : 0);
      row.pieces.push_back({lines[line], x, width, line});
    }
    row.lines = std::max(row.lines, static_cast<int>(lines.size()));
  }
  return row;
}

// Where numbers stand among texts they stand at the left, as these do.
double TableMeasure::NumberLeft(const Column& column, const QString& text) const {
  const double block =
      column.allNumbers ? std::max(column.width - column.before - column.behind, 0.0) : 0;
  return column.left + block + column.before - cells_.horizontalAdvance(BeforePoint(text));
}

TableMeasure::Row TableMeasure::Cells(const std::vector<PrintCell>& cells) const {
  Row row;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const Column& column = columns_[i];
    const QString text = ToQt(cells[i].text);
    if (text.isEmpty()) continue;
    const double width = cells_.horizontalAdvance(text);
    if (cells[i].number && column.before + column.behind <= column.width) {
      row.pieces.push_back({text, NumberLeft(column, text), width, 0});
      continue;
    }
    const QStringList lines = BrokenInto(text, column.width, cells_);
    for (int line = 0; line < lines.size(); ++line) {
      row.pieces.push_back({lines[line], column.left, cells_.horizontalAdvance(lines[line]), line});
    }
    row.lines = std::max(row.lines, static_cast<int>(lines.size()));
  }
  return row;
}

}  // namespace velmoor::qt
