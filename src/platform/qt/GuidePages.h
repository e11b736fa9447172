// The pages of the built-in guide.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace velmoor::qt {

// A place in the guide: a page's file name, and a heading as HelpAnchor writes it, or nothing.
struct GuidePlace {
  QString page;
  QString anchor;
  bool operator==(const GuidePlace&) const = default;
};

// "tables.md#jog-table", or "#jog-table" within `page`.
[[nodiscard]] GuidePlace PlaceOfLink(const QString& link, const QString& page);

struct GuidePage {
  QString file;
  QString title;
  QStringList headings;  // of the second level, in their order
};

inline constexpr char kGuideFolder[] = ":/velmoor/guide/";
inline constexpr char kFirstPage[] = "index.md";

// The first page, and behind it the pages that it links, in that order.
[[nodiscard]] std::vector<GuidePage> GuidePages();
// Markdown; empty where the guide has no such page.
[[nodiscard]] QString GuideText(const QString& file);
// The page as it reads, without the marks of its source.
[[nodiscard]] QString GuideWords(const QString& file);
[[nodiscard]] QString AnchorOf(const QString& heading);

}  // namespace velmoor::qt
