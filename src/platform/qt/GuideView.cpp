#include "platform/qt/GuideView.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>
#include <algorithm>

namespace velmoor::qt {
namespace {

constexpr int kMargin = 18;
constexpr int kLineHeight = 125;  // percent

QString ImageFile(const QString& name) {
  return QString::fromLatin1(kGuideFolder) + name;
}

bool IsCode(const QTextBlock& block) {
  return block.blockFormat().hasProperty(QTextFormat::BlockCodeFence);
}

void LayOutBlock(const QTextBlock& block, const QPalette& palette) {
  QTextBlockFormat format = block.blockFormat();
  const int level = format.headingLevel();
  const bool code = IsCode(block);
  const bool inTable = QTextCursor(block).currentTable() != nullptr;
  format.setLineHeight(code ? 100 : kLineHeight, QTextBlockFormat::ProportionalHeight);
  if (level > 0) {
    format.setTopMargin(level == 1 ? 4 : 18);
    format.setBottomMargin(8);
  } else if (code) {
    format.setBackground(palette.alternateBase());
    format.setLeftMargin(12);
    format.setTopMargin(0);
    format.setBottomMargin(IsCode(block.next()) ? 0 : 10);
  } else {
    const bool item = block.textList() != nullptr;
    format.setTopMargin(0);
    format.setBottomMargin(inTable ? 0 : item ? 4 : 10);
  }
  QTextCursor(block).setBlockFormat(format);
}

}  // namespace

GuideView::GuideView(QWidget* parent) : QTextBrowser(parent) {
  setOpenLinks(false);
  setFrameShape(QFrame::NoFrame);
  setAccessibleName(QStringLiteral("Page of the user guide"));
}

bool GuideView::ShowPage(const QString& file) {
  const QString text = GuideText(file);
  if (text.isEmpty()) return false;
  page_ = file;
  document()->setMarkdown(text, QTextDocument::MarkdownDialectGitHub);
  document()->setDocumentMargin(kMargin);
  LayOut();
  return true;
}

void GuideView::LayOut() {
  // As one edit, or each block would be laid out anew.
  QTextCursor edit(document());
  edit.beginEditBlock();
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    LayOutBlock(block, palette());
  }
  LayOutTables();
  edit.endEditBlock();
  FitImages();
  moveCursor(QTextCursor::Start);
}

void GuideView::LayOutTables() {
  const QList<QTextFrame*> frames = document()->rootFrame()->childFrames();
  for (QTextFrame* const frame : frames) {
    auto* const table = qobject_cast<QTextTable*>(frame);
    if (table == nullptr) continue;
    QTextTableFormat format = table->format();
    format.setBorder(1);
    format.setBorderCollapse(true);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(palette().color(QPalette::Disabled, QPalette::Text));
    format.setCellPadding(5);
    format.setCellSpacing(0);
    format.setTopMargin(4);
    format.setBottomMargin(14);
    table->setFormat(format);
    for (int column = 0; column < table->columns(); ++column) {
      QTextTableCell cell = table->cellAt(0, column);
      QTextTableCellFormat heading = cell.format().toTableCellFormat();
      heading.setBackground(palette().alternateBase());
      cell.setFormat(heading);
    }
  }
}

// A picture that is wider than the page is made as wide as the page.
void GuideView::FitImages() {
  const int room = std::max(200, viewport()->width() - 2 * kMargin - 4);
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextFragment part = at.fragment();
      if (!part.charFormat().isImageFormat()) continue;
      QTextImageFormat format = part.charFormat().toImageFormat();
      const QImage image(ImageFile(format.name()));
      if (image.isNull()) continue;
      const int width = std::min(room, image.width());
      if (static_cast<int>(format.width()) == width) continue;
      format.setWidth(width);
      format.setHeight(static_cast<double>(image.height()) * width / image.width());
      QTextCursor cursor(document());
      cursor.setPosition(part.position());
      cursor.setPosition(part.position() + part.length(), QTextCursor::KeepAnchor);
      cursor.setCharFormat(format);
      return FitImages();  // the fragments are others now
    }
  }
}

void GuideView::ScrollTo(const QString& anchor) {
  for (QTextBlock block = document()->begin(); !anchor.isEmpty() && block.isValid();
       block = block.next()) {
    if (block.blockFormat().headingLevel() == 0 || AnchorOf(block.text()) != anchor) continue;
    setTextCursor(QTextCursor(block));
    const QRectF place = document()->documentLayout()->blockBoundingRect(block);
    verticalScrollBar()->setValue(static_cast<int>(place.top()) - 6);
    return;
  }
  moveCursor(QTextCursor::Start);
  verticalScrollBar()->setValue(0);
}

// The whole page is laid out first: a place below what is laid out so far has no height yet.
void GuideView::ShowCursor() {
  (void)document()->documentLayout()->documentSize();
  ensureCursorVisible();
}

void GuideView::ShowAgain() {
  const QScrollBar& bar = *verticalScrollBar();
  const double place = bar.maximum() > 0 ? static_cast<double>(bar.value()) / bar.maximum() : 0;
  if (!ShowPage(page_)) return;
  verticalScrollBar()->setValue(static_cast<int>(place * verticalScrollBar()->maximum()));
}

QVariant GuideView::loadResource(int type, const QUrl& name) {
  if (type == QTextDocument::ImageResource) return QImage(ImageFile(name.path()));
  return QTextBrowser::loadResource(type, name);
}

void GuideView::resizeEvent(QResizeEvent* event) {
  QTextBrowser::resizeEvent(event);
  FitImages();
}

}  // namespace velmoor::qt
