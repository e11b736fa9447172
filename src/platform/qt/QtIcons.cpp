// Draws the icons: a small subset of SVG, in the palette's colours, sharp at every scale.
//
// Known are path (commands M L H V C Z and their lower-case forms), rect, circle and line, in a
// view of 24 by 24. A shape is stroked, or filled where it bears fill="currentColor";
// class="accent" draws it in the highlight colour.
#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QXmlStreamReader>
#include <memory>
#include <vector>

#include "platform/qt/QtAppearance.h"

namespace velmoor::qt {
namespace {

struct Shape {
  QPainterPath path;
  bool filled = false;
  bool accent = false;
};

// Reads the numbers and letters of a path's data.
class PathReader {
 public:
  explicit PathReader(const QString& data) : data_(data) {}

  QPainterPath Read() {
    QChar command;
    while (SkipBlanks(), at_ < data_.size()) {
      if (data_[at_].isLetter()) command = data_[at_++];
      if (!Step(command)) break;
    }
    return path_;
  }

 private:
  void SkipBlanks() {
    while (at_ < data_.size() && (data_[at_].isSpace() || data_[at_] == QLatin1Char(','))) ++at_;
  }

  double Number() {
    SkipBlanks();
    const qsizetype begin = at_;
    while (at_ < data_.size() && (data_[at_].isDigit() || data_[at_] == QLatin1Char('.') ||
                                  (data_[at_] == QLatin1Char('-') && at_ == begin))) {
      ++at_;
    }
    return data_.mid(begin, at_ - begin).toDouble();
  }

  QPointF Point(const QPointF& origin) {
    const double x = Number();
    const double y = Number();
    return origin + QPointF(x, y);
  }

  // Draws one segment. False: the data is not a path that this reader knows.
  bool Step(QChar command) {
    const QPointF here = path_.currentPosition();
    const QPointF origin = command.isLower() ? here : QPointF();
    switch (command.toUpper().unicode()) {
      case 'M':
        path_.moveTo(Point(origin));
        return true;
      case 'L':
        path_.lineTo(Point(origin));
        return true;
      case 'H':
        path_.lineTo(origin.x() + Number(), here.y());
        return true;
      case 'V':
        path_.lineTo(here.x(), origin.y() + Number());
        return true;
      case 'C': {
        const QPointF first = Point(origin);
        const QPointF second = Point(origin);
        path_.cubicTo(first, second, Point(origin));
        return true;
      }
      case 'Z':
        path_.closeSubpath();
        return true;
      default:
        return false;
    }
  }

  const QString data_;
  qsizetype at_ = 0;
  QPainterPath path_;
};

QPainterPath ReadShape(QStringView element, const QXmlStreamAttributes& attributes) {
  const auto number = [&](const char* name) {
    return attributes.value(QLatin1String(name)).toDouble();
  };
  QPainterPath path;
  if (element == QLatin1String("path")) {
    return PathReader(attributes.value(QLatin1String("d")).toString()).Read();
  }
  if (element == QLatin1String("rect")) {
    path.addRoundedRect(number("x"), number("y"), number("width"), number("height"), number("rx"),
                        number("rx"));
  } else if (element == QLatin1String("circle")) {
    path.addEllipse(QPointF(number("cx"), number("cy")), number("r"), number("r"));
  } else if (element == QLatin1String("line")) {
    path.moveTo(number("x1"), number("y1"));
    path.lineTo(number("x2"), number("y2"));
  }
  return path;
}

// One icon; or, where the file has several as symbols, the one of that name.
std::vector<Shape> ReadIcon(const QString& path, const QString& name) {
  std::vector<Shape> shapes;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return shapes;
  QXmlStreamReader reader(&file);
  bool wanted = true;
  while (!reader.atEnd()) {
    if (reader.readNext() != QXmlStreamReader::StartElement) continue;
    const QXmlStreamAttributes attributes = reader.attributes();
    if (reader.name() == QLatin1String("symbol")) {
      wanted = attributes.value(QLatin1String("id")) == name;
    }
    if (!wanted) continue;
    Shape shape{ReadShape(reader.name(), attributes),
                attributes.value(QLatin1String("fill")) == QLatin1String("currentColor"),
                attributes.value(QLatin1String("class")) == QLatin1String("accent")};
    if (!shape.path.isEmpty()) shapes.push_back(std::move(shape));
  }
  return shapes;
}

class IconEngine final : public QIconEngine {
 public:
  explicit IconEngine(std::shared_ptr<const std::vector<Shape>> shapes)
      : shapes_(std::move(shapes)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const QPalette palette = QApplication::palette();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / 24.0, rect.height() / 24.0);
    for (const Shape& shape : *shapes_) {
      const QColor color = palette.color(group, RoleOf(shape, mode));
      painter->setPen(shape.filled ? QPen(Qt::NoPen)
                                   : QPen(color, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      painter->setBrush(shape.filled ? QBrush(color) : QBrush(Qt::NoBrush));
      painter->drawPath(shape.path);
    }
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new IconEngine(shapes_); }

 private:
  // On a highlighted row all of it is as its text.
  static QPalette::ColorRole RoleOf(const Shape& shape, QIcon::Mode mode) {
    if (mode == QIcon::Selected) return QPalette::HighlightedText;
    return shape.accent && mode != QIcon::Disabled ? QPalette::Link : QPalette::ButtonText;
  }

  std::shared_ptr<const std::vector<Shape>> shapes_;
};

}  // namespace

// The program's own is a file by itself, since desktops show it too.
QIcon ProgramIcon(const QString& name) {
  const QString own = QStringLiteral(":/velmoor/icons/") + name + QStringLiteral(".svg");
  const bool single = QFile::exists(own);
  auto shapes = std::make_shared<const std::vector<Shape>>(
      ReadIcon(single ? own : QStringLiteral(":/velmoor/icons/icons.svg"), name));
  return shapes->empty() ? QIcon() : QIcon(new IconEngine(std::move(shapes)));
}

}  // namespace velmoor::qt
