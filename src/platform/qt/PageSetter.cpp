#include "platform/qt/PageSetter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPageSize>
#include <QPen>
#include <algorithm>
#include <array>
#include <stdexcept>

#include "platform/qt/QtText.h"
#include "platform/qt/TableMeasure.h"

namespace velmoor::qt {
namespace {

constexpr double kDotsPerPoint = kDotsPerInch / 72.0;
constexpr double kDotsPerMm = kDotsPerInch / 25.4;

constexpr double kSideMargin = 18 * kDotsPerMm;
constexpr double kFrameMargin = 12 * kDotsPerMm;  // above the head of a page and below its foot
constexpr double kFrameGap = 6 * kDotsPerMm;      // between that and what stands on the page
constexpr double kRuleGap = 2.5 * kDotsPerPoint;
constexpr double kRowPadding = 1.6 * kDotsPerPoint;  // above and below the text of a row
constexpr int kRowsBelowHeading = 2;                 // a heading never stands on a page without

struct FontStyle {
  int dots;  // of its size
  bool bold;
  const char* color;
};

constexpr std::array<FontStyle, 7> kFonts{{{333, true, "#000000"},     // title: 20 points
                                           {167, false, "#404040"},    // subtitle: 10
                                           {217, true, "#000000"},     // section: 13
                                           {133, false, "#404040"},    // note: 8
                                           {142, true, "#000000"},     // heading: 8.5
                                           {142, false, "#000000"},    // cell
                                           {133, false, "#404040"}}};  // frame

const FontStyle& StyleOf(PageFont font) {
  return kFonts.at(static_cast<std::size_t>(font));
}

QFont MakeFont(PageFont font, const QString& family) {
  QFont made(family);
  made.setHintingPreference(QFont::PreferNoHinting);
  made.setPixelSize(StyleOf(font).dots);
  made.setBold(StyleOf(font).bold);
  return made;
}

// Fills pages from top to bottom.
class Setting {
 public:
  Setting(const PrintDocument& document, Paper paper, const QString& family)
      : document_(document), size_(PaperInDots(paper)), width_(size_.width() - 2 * kSideMargin) {
    for (std::size_t font = 0; font < kFonts.size(); ++font) {
      metrics_.emplace_back(MakeFont(static_cast<PageFont>(font), family));
    }
    header_ = BrokenInto(ToQt(document.header), width_, Metrics(PageFont::frame));
    const double line = Metrics(PageFont::frame).lineSpacing();
    top_ = kFrameMargin + line * static_cast<double>(header_.size()) + kRuleGap + kFrameGap;
    bottom_ = size_.height() - kFrameMargin - line - kRuleGap - kFrameGap;
  }

  std::vector<SetPage> Run() {
    OpenPage();
    PutLines(PageFont::title, ToQt(document_.title));
    PutLines(PageFont::subtitle, ToQt(document_.subtitle));
    y_ += 4 * kDotsPerMm;
    PutFacts();
    PutSignatures();
    y_ += 4 * kDotsPerMm;
    for (const PrintSection& section : document_.sections) PutSection(section);
    for (std::size_t page = 0; page < pages_.size(); ++page) PutFrame(page);
    return std::move(pages_);
  }

 private:
  [[nodiscard]] const QFontMetricsF& Metrics(PageFont font) const {
    return metrics_[static_cast<std::size_t>(font)];
  }

  void OpenPage() {
    pages_.emplace_back();
    y_ = top_;
  }

  void Put(PageFont font, double x, double top, const QString& text) {
    pages_.back().texts.push_back({font,
                                   {kSideMargin + x, top + Metrics(font).ascent()},
                                   text,
                                   Metrics(font).horizontalAdvance(text)});
  }
  void PutLines(PageFont font, const QString& text) {
    if (text.isEmpty()) return;
    for (const QString& line : BrokenInto(text, width_, Metrics(font))) {
      Put(font, 0, y_, line);
      y_ += Metrics(font).lineSpacing();
    }
  }
  void Rule(PageLine kind, double y, double width) {
    pages_.back().lines.emplace_back(kind, QLineF(kSideMargin, y, kSideMargin + width, y));
  }

  // ---- the first page

  // Labels at the left, as wide as the widest needs and half of the page at most.
  void PutFacts() {
    const QFontMetricsF& label = Metrics(PageFont::note);
    double width = 0;
    for (const PrintFact& fact : document_.facts) {
      width = std::max(width, label.horizontalAdvance(ToQt(fact.label)));
    }
    width = std::min(width + 4 * kDotsPerMm, width_ / 2);
    for (const PrintFact& fact : document_.facts) {
      const QStringList labels = BrokenInto(ToQt(fact.label), width - 2 * kDotsPerMm, label);
      const QStringList texts =
          BrokenInto(ToQt(fact.text), width_ - width, Metrics(PageFont::cell));
      for (qsizetype line = 0; line < std::max(labels.size(), texts.size()); ++line) {
        if (line < labels.size()) Put(PageFont::note, 0, y_, labels[line]);
        if (line < texts.size()) Put(PageFont::cell, width, y_, texts[line]);
        y_ += Metrics(PageFont::cell).lineSpacing();
      }
      y_ += kRowPadding;
    }
  }
  void PutSignatures() {
    if (document_.signatures.empty()) return;
    y_ += 14 * kDotsPerMm;
    const double gap = 6 * kDotsPerMm;
    const auto count = static_cast<double>(document_.signatures.size());
    const double width = (width_ - (count - 1) * gap) / count;
    double x = 0;
    for (const std::string& words : document_.signatures) {
      pages_.back().lines.emplace_back(PageLine::strong,
                                       QLineF(kSideMargin + x, y_, kSideMargin + x + width, y_));
      Put(PageFont::note, x, y_ + kRuleGap, ToQt(words));
      x += width + gap;
    }
    y_ += Metrics(PageFont::note).lineSpacing() + kRuleGap;
  }

  // ---- tables

  [[nodiscard]] double HeightOf(PageFont font, const TableMeasure::Row& row) const {
    return row.lines * Metrics(font).lineSpacing() + 2 * kRowPadding;
  }
  void PutRow(PageFont font, const TableMeasure::Row& row) {
    const double line = Metrics(font).lineSpacing();
    for (const TableMeasure::Piece& piece : row.pieces) {
      Put(font, piece.x, y_ + kRowPadding + piece.line * line, piece.text);
    }
    y_ += HeightOf(font, row);
  }
  void PutHeadings(const TableMeasure::Row& headings) {
    PutRow(PageFont::heading, headings);
    Rule(PageLine::strong, y_, width_);
  }

  void PutSection(const PrintSection& section) {
    const TableMeasure table(section, width_, Metrics(PageFont::cell), Metrics(PageFont::heading));
    const TableMeasure::Row headings = table.Headings();
    std::vector<TableMeasure::Row> rows;
    for (const auto& row : section.rows) rows.push_back(table.Cells(row));
    if (section.newPage || !HasRoomFor(section, headings, rows)) OpenPage();
    PutLines(PageFont::section, ToQt(section.title));
    PutLines(PageFont::note, ToQt(section.note));
    y_ += 2 * kDotsPerMm;
    PutHeadings(headings);
    for (const TableMeasure::Row& row : rows) {
      if (y_ + HeightOf(PageFont::cell, row) > bottom_) Continue(section, headings);
      PutRow(PageFont::cell, row);
      Rule(PageLine::hair, y_, width_);
    }
    y_ += 8 * kDotsPerMm;
  }

  [[nodiscard]] bool HasRoomFor(const PrintSection& section, const TableMeasure::Row& headings,
                                const std::vector<TableMeasure::Row>& rows) const {
    double height = Metrics(PageFont::section).lineSpacing() + 2 * kDotsPerMm +
                    HeightOf(PageFont::heading, headings);
    if (!section.note.empty()) height += Metrics(PageFont::note).lineSpacing();
    for (std::size_t row = 0; row < std::min<std::size_t>(rows.size(), kRowsBelowHeading); ++row) {
      height += HeightOf(PageFont::cell, rows[row]);
    }
    return y_ + height <= bottom_;
  }

  void Continue(const PrintSection& section, const TableMeasure::Row& headings) {
    OpenPage();
    PutLines(PageFont::note, ToQt(section.title) + QStringLiteral(", continued"));
    y_ += 2 * kDotsPerMm;
    PutHeadings(headings);
  }

  // ---- the frame of a page

  void PutFrame(std::size_t index) {
    SetPage& page = pages_[index];
    const QFontMetricsF& metrics = Metrics(PageFont::frame);
    const auto put = [&](double x, double top, const QString& text) {
      page.texts.push_back({PageFont::frame,
                            {kSideMargin + x, top + metrics.ascent()},
                            text,
                            metrics.horizontalAdvance(text)});
    };
    const auto rule = [&](double y) {
      page.lines.emplace_back(PageLine::hair, QLineF(kSideMargin, y, kSideMargin + width_, y));
    };
    double y = kFrameMargin;
    for (const QString& line : header_) {
      put(0, y, line);
      y += metrics.lineSpacing();
    }
    rule(y + kRuleGap);
    const double foot = size_.height() - kFrameMargin - metrics.lineSpacing();
    rule(foot - kRuleGap);
    put(0, foot, ToQt(document_.date) + QStringLiteral("   ") + ToQt(document_.time));
    const QString number = Numbered(document_.page, index + 1) + QLatin1Char(' ') +
                           Numbered(document_.pages, pages_.size());
    put(width_ - metrics.horizontalAdvance(number), foot, number);
  }
  static QString Numbered(const std::string& words, std::size_t number) {
    return ToQt(words).replace(QLatin1Char('#'), QString::number(number));
  }

  const PrintDocument& document_;
  QSizeF size_;
  double width_;
  std::vector<QFontMetricsF> metrics_;
  QStringList header_;
  double top_ = 0, bottom_ = 0;
  double y_ = 0;
  std::vector<SetPage> pages_;
};

}  // namespace

void LayOut(QPagedPaintDevice& device, Paper paper) {
  const QPageSize size(paper == Paper::a4 ? QPageSize::A4 : QPageSize::Letter);
  QPageLayout layout(size, QPageLayout::Portrait, {});
  layout.setMode(QPageLayout::FullPageMode);
  device.setPageLayout(layout);
}

void DrawPages(const PageSetter& pages, QPagedPaintDevice& device) {
  DrawPages(pages, device, 1, static_cast<int>(pages.Pages().size()));
}

void DrawPages(const PageSetter& pages, QPagedPaintDevice& device, int first, int last) {
  QPainter painter;
  bool drawn = painter.begin(&device);
  const double scale = static_cast<double>(device.logicalDpiX()) / kDotsPerInch;
  painter.scale(scale, scale);
  for (int page = first; drawn && page <= last; ++page) {
    drawn = page == first || device.newPage();
    if (drawn) pages.Draw(static_cast<std::size_t>(page) - 1, painter);
  }
  if (!drawn) throw std::runtime_error("The document cannot be printed.");
}

QSizeF PaperInDots(Paper paper) {
  return paper == Paper::a4 ? QSizeF(210 * kDotsPerMm, 297 * kDotsPerMm)
                            : QSizeF(8.5 * kDotsPerInch, 11.0 * kDotsPerInch);
}

// A font of that name holds pictures and Greek letters: texts set in it could not be read.
QString FamilyFor(const QString& asked) {
  const bool readable = !asked.isEmpty() && asked != QLatin1String("Symbol");
  return readable ? asked : QStringLiteral("sans-serif");
}

PageSetter::PageSetter(const PrintDocument& document, Paper paper)
    : family_(FamilyFor(ToQt(document.font))), pages_(Setting(document, paper, family_).Run()) {}

void PageSetter::Draw(std::size_t page, QPainter& painter) const {
  const SetPage& set = pages_.at(page);
  for (const auto& [kind, line] : set.lines) {
    const bool hair = kind == PageLine::hair;
    painter.setPen(QPen(QColor(hair ? "#9a9a9a" : "#000000"), (hair ? 0.25 : 0.7) * kDotsPerPoint));
    painter.drawLine(line);
  }
  for (std::size_t font = 0; font < kFonts.size(); ++font) {
    painter.setFont(MakeFont(static_cast<PageFont>(font), family_));
    painter.setPen(QColor(kFonts[font].color));
    for (const PageText& text : set.texts) {
      if (text.font == static_cast<PageFont>(font)) painter.drawText(text.baseline, text.text);
    }
  }
}

}  // namespace velmoor::qt
