// Sets the pages of a document: where each text and each line stands.
//
// Needs an application object for its fonts, and no printer. Lengths are in dots of 1/1200 inch
// from the upper left corner of the paper, whatever the pages are drawn on.
#pragma once

#include <QLineF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <vector>

#include "platform/PrintDocument.h"

namespace velmoor::qt {

inline constexpr int kDotsPerInch = 1200;

enum class PageFont { title, subtitle, section, note, heading, cell, frame };

struct PageText {
  PageFont font;
  QPointF baseline;
  QString text;
  double width;
};

enum class PageLine { hair, strong };

struct SetPage {
  std::vector<PageText> texts;
  std::vector<std::pair<PageLine, QLineF>> lines;
};

class PageSetter {
 public:
  PageSetter(const PrintDocument& document, Paper paper);

  [[nodiscard]] const std::vector<SetPage>& Pages() const { return pages_; }
  // Draws the page, from 0, with a painter whose unit is one dot.
  void Draw(std::size_t page, QPainter& painter) const;

 private:
  QString family_;
  std::vector<SetPage> pages_;
};

// Gives the device that paper, upright and without margins.
void LayOut(QPagedPaintDevice& device, Paper paper);
// Draws all pages, or those from `first` to `last`, from 1. Throws std::runtime_error when the
// device takes none.
void DrawPages(const PageSetter& pages, QPagedPaintDevice& device);
void DrawPages(const PageSetter& pages, QPagedPaintDevice& device, int first, int last);

// In dots; A4 or Letter, upright.
[[nodiscard]] QSizeF PaperInDots(Paper paper);
// The family that is used where a document asks for `asked`.
[[nodiscard]] QString FamilyFor(const QString& asked);

}  // namespace velmoor::qt
