#include "platform/qt/QtPdfMaker.h"

#include <QBuffer>
#include <QHashSeed>
#include <QPdfWriter>

#include "platform/qt/PageSetter.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

// "D:20261124220500"
QByteArray PdfMoment(const WallTime& moment) {
  return QString::asprintf("D:%04d%02d%02d%02d%02d%02d", moment.year, moment.month, moment.day,
                           moment.hour, moment.minute, moment.second)
      .toLatin1();
}

// The engine dates the file by the clock. The moment takes that place; blanks keep every later
// offset what it is.
void Date(QByteArray& pdf, const WallTime& moment) {
  const QByteArray key = "/CreationDate (";
  const qsizetype open = pdf.indexOf(key);
  const qsizetype close = open < 0 ? -1 : pdf.indexOf(')', open);
  if (close < 0) return;
  const qsizetype begin = open + key.size();
  const QByteArray dated = PdfMoment(moment) + ')';
  pdf.replace(begin, close + 1 - begin, dated.leftJustified(close + 1 - begin, ' ', true));
}

}  // namespace

void KeepOrderOfHashes() {
  QHashSeed::setDeterministicGlobalSeed();
}

std::string QtPdfMaker::Pdf(const PrintDocument& document, Paper paper) {
  const PageSetter pages(document, paper);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    LayOut(writer, paper);
    writer.setResolution(kDotsPerInch);
    writer.setTitle(ToQt(document.title));
    writer.setCreator(QStringLiteral("Velmoor"));
    DrawPages(pages, writer);
  }
  Date(bytes, document.moment);
  return bytes.toStdString();
}

}  // namespace velmoor::qt
