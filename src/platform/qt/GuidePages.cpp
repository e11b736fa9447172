#include "platform/qt/GuidePages.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextDocument>
#include <algorithm>

#include "platform/HelpViewer.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

GuidePage ReadPage(const QString& file) {
  GuidePage page{file, file, {}};
  bool code = false;
  const QStringList lines = GuideText(file).split(QLatin1Char('\n'));
  for (const QString& line : lines) {
    if (line.startsWith(QLatin1String("```"))) code = !code;
    if (code) continue;
    QString words = line.section(QLatin1Char(' '), 1);
    words.remove(QLatin1Char('`'));
    if (line.startsWith(QLatin1String("# "))) page.title = words;
    if (line.startsWith(QLatin1String("## "))) page.headings.append(words);
  }
  return page;
}

}  // namespace

GuidePlace PlaceOfLink(const QString& link, const QString& page) {
  const QString file = link.section(QLatin1Char('#'), 0, 0);
  return {file.isEmpty() ? page : file, link.section(QLatin1Char('#'), 1)};
}

std::vector<GuidePage> GuidePages() {
  std::vector<GuidePage> pages{ReadPage(QString::fromLatin1(kFirstPage))};
  static const QRegularExpression link(QStringLiteral("\\]\\(([a-z0-9-]+\\.md)"));
  auto links = link.globalMatch(GuideText(QString::fromLatin1(kFirstPage)));
  while (links.hasNext()) {
    const QString file = links.next().captured(1);
    const bool known = std::any_of(pages.begin(), pages.end(),
                                   [&file](const GuidePage& page) { return page.file == file; });
    if (!known) pages.push_back(ReadPage(file));
  }
  return pages;
}

QString GuideText(const QString& file) {
  QFile text(QString::fromLatin1(kGuideFolder) + file);
  return text.open(QIODevice::ReadOnly) ? QString::fromUtf8(text.readAll()) : QString();
}

QString GuideWords(const QString& file) {
  QTextDocument page;
  page.setMarkdown(GuideText(file), QTextDocument::MarkdownDialectGitHub);
  return page.toPlainText();
}

QString AnchorOf(const QString& heading) {
  return ToQt(HelpAnchor(FromQt(heading)));
}

}  // namespace velmoor::qt
