// The measures of one table on paper: columns as wide as their texts where there is room, narrower
// ones with broken lines where there is not, numbers with their decimal points below each other.
#pragma once

#include <QFontMetricsF>
#include <QString>
#include <QStringList>
#include <vector>

#include "platform/PrintDocument.h"

namespace velmoor::qt {

// `text` in lines of up to `width`, broken at blanks, and within a word that is wider by itself.
[[nodiscard]] QStringList BrokenInto(const QString& text, double width,
                                     const QFontMetricsF& metrics);

class TableMeasure {
 public:
  TableMeasure(const PrintSection& section, double width, const QFontMetricsF& cells,
               const QFontMetricsF& headings);

  struct Piece {
    QString text;
    double x = 0;  // from the table's left edge
    double width = 0;
    int line = 0;
  };
  // The texts of one line of the table, and how many lines of text the tallest cell takes.
  struct Row {
    std::vector<Piece> pieces;
    int lines = 1;
  };
  [[nodiscard]] Row Headings() const;
  [[nodiscard]] Row Cells(const std::vector<PrintCell>& row) const;
  [[nodiscard]] double Width() const { return width_; }

 private:
  struct Column {
    double left = 0, width = 0;
    double before = 0, behind = 0;  // the decimal point of its numbers, from it and behind
    std::vector<double> widths;     // of its texts
    double least = 0;               // below this a word or a number would be broken
    bool allNumbers = true;         // and its heading stands at the right, as they do
  };
  // How many texts of the column take more than one line at that width.
  [[nodiscard]] static std::ptrdiff_t Broken(const Column& column, double width);
  void Look(const QFontMetricsF& metrics, Column& column, const PrintCell& cell) const;
  void LookAtHeading(Column& column, const QString& heading) const;
  void Narrow(double room);
  void Place(double width);
  [[nodiscard]] double NumberLeft(const Column& column, const QString& text) const;

  const PrintSection& section_;
  QFontMetricsF cells_, headings_;
  std::vector<Column> columns_;
  double width_ = 0;
};

}  // namespace velmoor::qt
