#include "platform/qt/QtPdfMaker.h"

#include <QBuffer>
#include <QHashSeed>
#include <QPdfWriter>
#include <QUuid>
#include <stdexcept>

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

// Moves the number of `digits` digits at `at`, which is a place in the file, by `by`.
void MovePlace(QByteArray& pdf, qsizetype at, qsizetype digits, qsizetype by) {
  const qsizetype place = pdf.mid(at, digits).toLongLong() + by;
  pdf.replace(at, digits, QByteArray::number(place).rightJustified(digits, '0'));
}

// What stands behind the file's head has moved by `by`: the table of the objects' places, at the
// end, follows. Its entries are lines such as "0000000015 00000 n ", the first of which is no
// object's.
void MoveObjects(QByteArray& pdf, qsizetype head, qsizetype by) {
  constexpr qsizetype kEntry = 20;
  constexpr qsizetype kDigits = 10;
  const QByteArray word = "\nstartxref\n";
  const qsizetype start = pdf.lastIndexOf(word) + word.size();
  const qsizetype digits = pdf.indexOf('\n', start) - start;
  const qsizetype table = pdf.mid(start, digits).trimmed().toLongLong() + by;
  pdf.replace(start, digits, QByteArray::number(table));
  const qsizetype count = pdf.indexOf('\n', table) + 1;
  const qsizetype first = pdf.indexOf('\n', count) + 1 + kEntry;
  for (qsizetype entry = first; pdf.mid(entry + kDigits, 6) == " 00000"; entry += kEntry) {
    if (pdf.mid(entry, kDigits).toLongLong() > head) MovePlace(pdf, entry, kDigits, by);
  }
}

// The engine dates the file by the clock and in the zone of this place. The moment takes the place
// behind `key`. False: there is no such place.
bool Date(QByteArray& pdf, const QByteArray& key, const WallTime& moment) {
  const qsizetype found = pdf.indexOf(key);
  if (found < 0) return false;
  const qsizetype begin = found + key.size();
  const qsizetype length = pdf.indexOf(')', begin) - begin;
  const QByteArray dated = PdfMoment(moment);
  pdf.replace(begin, length, dated);
  MoveObjects(pdf, begin, dated.size() - length);
  return true;
}

// The description of the file has its dates in another form, of one length.
void DateDescription(QByteArray& pdf, const WallTime& moment) {
  const QByteArray dated =
      QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02d+00:00", moment.year, moment.month,
                        moment.day, moment.hour, moment.minute, moment.second)
          .toLatin1();
  for (const char* const name : {"xmp:CreateDate=\"", "xmp:ModifyDate=\"", "xmp:MetadataDate=\""}) {
    const qsizetype found = pdf.indexOf(name);
    if (found >= 0) pdf.replace(found + static_cast<qsizetype>(qstrlen(name)), dated.size(), dated);
  }
}

// Later engines number each file by chance, in its description and in hexadecimal at its end. The
// number comes from the title and the moment instead; of the same length, it moves nothing.
void Number(QByteArray& pdf, const PrintDocument& document) {
  constexpr qsizetype kDigits = 36;
  const QByteArray key = "uuid:";
  const qsizetype found = pdf.indexOf(key);
  if (found < 0) return;
  const QByteArray chance = pdf.mid(found + key.size(), kDigits);
  const QByteArray origin = QByteArray::fromStdString(document.title) + PdfMoment(document.moment);
  const QByteArray number = QUuid::createUuidV5(QUuid(), origin).toByteArray(QUuid::WithoutBraces);
  pdf.replace(chance, number);
  pdf.replace(chance.toHex(), number.toHex());
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
  if (!Date(bytes, "/CreationDate (", document.moment)) {
    throw std::runtime_error("The PDF document bears no date");
  }
  Date(bytes, "/ModDate (", document.moment);
  DateDescription(bytes, document.moment);
  Number(bytes, document);
  return bytes.toStdString();
}

}  // namespace velmoor::qt
