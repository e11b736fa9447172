#include "Source.h"

#include <QFile>
#include <QHash>
#include <QXmlStreamReader>
#include <algorithm>
#include <stdexcept>

namespace velmoor::layouts {
namespace {

struct Element {
  QString tag;
  QXmlStreamAttributes attributes;
  QString text;
  std::vector<Element> children;

  [[nodiscard]] QString Attribute(const char* name) const {
    return attributes.value(QLatin1String(name)).toString();
  }
};

Element ReadElement(QXmlStreamReader& xml) {
  Element element{xml.name().toString(), xml.attributes(), QString(), {}};
  for (;;) {
    switch (xml.readNext()) {
      case QXmlStreamReader::StartElement:
        element.children.push_back(ReadElement(xml));
        break;
      case QXmlStreamReader::Characters:
        element.text += xml.text();
        break;
      case QXmlStreamReader::EndElement:
      case QXmlStreamReader::Invalid:
        return element;
      default:
        break;
    }
  }
}

// The text of a property, whatever its type; `other` where the element has none of that name.
QString Property(const Element& element, const char* name, const QString& other = {}) {
  for (const Element& child : element.children) {
    const bool wanted = child.tag == QLatin1String("property") &&
                        child.Attribute("name") == QLatin1String(name) && !child.children.empty();
    if (wanted) return child.children.front().text;
  }
  return other;
}

bool Flag(const Element& element, const char* name, bool other) {
  const QString text = Property(element, name);
  return text.isEmpty() ? other : text == QLatin1String("true");
}

QString KindOf(const Element& widget) {
  static const QHash<QString, QString> kKinds{
      {"QPushButton", "Button"},
      {"QCommandLinkButton", "Button"},
      {"QToolButton", "Button"},
      {"QLineEdit", "TextBox"},
      {"QComboBox", "ComboBox"},
      {"QCheckBox", "CheckBox"},
      {"QLabel", "Label"},
      {"QProgressBar", "ProgressBar"},
      {"QTableView", "Grid"},
      {"velmoor::qt::LampWidget", "Lamp"},
      {"velmoor::qt::ChartWidget", "Chart"},
      {"velmoor::qt::TimeChartWidget", "TimeChart"},
      {"velmoor::qt::TerminalWidget", "TerminalScreen"},
      {"velmoor::qt::DrawingWidget", "Drawing"},
      {"velmoor::qt::PageViewWidget", "PageView"},
  };
  const QString widgetClass = widget.Attribute("class");
  const QString name = widget.Attribute("name");
  if (widgetClass == QLatin1String("QRadioButton")) return {};
  if (name.startsWith(QLatin1String("opt"))) return QStringLiteral("OptionGroup");
  // Words that stand for themselves are nobody's to change.
  if (widgetClass == QLatin1String("QLabel") && !name.startsWith(QLatin1String("lbl"))) return {};
  return kKinds.value(widgetClass);
}

class Reader {
 public:
  explicit Reader(Source& source) : source_(source) {}

  void Read(const Element& element, bool enabled) {
    const bool widget = element.tag == QLatin1String("widget");
    if (widget) enabled = enabled && Flag(element, "enabled", true);
    if (widget) AddControl(element, enabled);
    const bool menu = widget && element.Attribute("class") == QLatin1String("QMenu");
    if (menu || element.tag == QLatin1String("action")) AddCommand(element);
    for (const Element& child : element.children) Read(child, enabled);
  }

 private:
  void AddControl(const Element& element, bool enabled) {
    SourceControl control;
    control.name = element.Attribute("name");
    control.kind = KindOf(element);
    if (control.kind.isEmpty()) return;
    control.text = Property(element, "text", Property(element, "title"));
    control.toolTip = Property(element, "toolTip");
    control.enabled = enabled;
    control.visible = Flag(element, "visible", true);
    control.checked = Flag(element, "checked", false);
    if (control.kind == QLatin1String("ComboBox")) AddItems(element, control);
    if (control.kind == QLatin1String("OptionGroup")) AddChoices(element, control);
    source_.controls.push_back(std::move(control));
  }

  static void AddItems(const Element& element, SourceControl& control) {
    for (const Element& child : element.children) {
      if (child.tag == QLatin1String("item")) control.choices += Property(child, "text");
    }
    if (control.choices.isEmpty()) return;
    control.chosen = Property(element, "currentIndex", QStringLiteral("0")).toInt();
  }

  // The buttons of the group, which stand anywhere within it, in the order of their numbers.
  static void AddChoices(const Element& element, SourceControl& control) {
    for (const Element& child : element.children) {
      const QString prefix = control.name + QLatin1Char('_');
      const QString name = child.Attribute("name");
      if (child.Attribute("class") == QLatin1String("QRadioButton") && name.startsWith(prefix)) {
        const int number = name.mid(prefix.size()).toInt();
        while (control.choices.size() <= number) control.choices += QString();
        control.choices[number] = Property(child, "text");
        if (Flag(child, "checked", false)) control.chosen = number;
      }
      AddChoices(child, control);
    }
  }

  void AddCommand(const Element& element) {
    const QString name = element.Attribute("name");
    if (!name.startsWith(QLatin1String("mnu"))) return;
    source_.commands.push_back({.name = name,
                                .text = Property(element, "text", Property(element, "title")),
                                .enabled = Flag(element, "enabled", true),
                                .visible = Flag(element, "visible", true),
                                .checked = Flag(element, "checked", false)});
  }

  Source& source_;
};

}  // namespace

Source ReadSource(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw std::runtime_error((path + QStringLiteral(": cannot be read")).toStdString());
  }
  QXmlStreamReader xml(&file);
  xml.readNextStartElement();
  const Element root = ReadElement(xml);
  if (xml.hasError()) {
    throw std::runtime_error(QStringLiteral("%1:%2: %3")
                                 .arg(path)
                                 .arg(xml.lineNumber())
                                 .arg(xml.errorString())
                                 .toStdString());
  }
  const auto window = std::ranges::find(root.children, QStringLiteral("widget"), &Element::tag);
  if (window == root.children.end()) {
    throw std::runtime_error((path + QStringLiteral(": holds no window")).toStdString());
  }
  Source source{window->Attribute("name"), Property(*window, "windowTitle"), {}, {}};
  Reader(source).Read(*window, true);
  return source;
}

}  // namespace velmoor::layouts
