#include "platform/qt/QtAppearance.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOptionButton>
#include <QStyleOptionMenuItem>
#include <QVariant>
#include <QWidget>
#include <algorithm>

namespace velmoor::qt {
namespace {

struct RoleColor {
  QPalette::ColorRole role;
  const char* light;
  const char* dark;
};

constexpr RoleColor kRoles[] = {
    {QPalette::Window, "#f3f4f6", "#26292e"},
    {QPalette::WindowText, "#1c2024", "#e4e7ea"},
    {QPalette::Base, "#ffffff", "#353a41"},
    {QPalette::AlternateBase, "#f6f8fa", "#3a4047"},
    {QPalette::Text, "#1c2024", "#e4e7ea"},
    {QPalette::PlaceholderText, "#7b838c", "#868e97"},
    {QPalette::Button, "#eceef1", "#40464e"},
    {QPalette::ButtonText, "#1c2024", "#e4e7ea"},
    {QPalette::BrightText, "#ffffff", "#ffffff"},
    {QPalette::Highlight, "#1f6fb2", "#2f7fc4"},
    {QPalette::HighlightedText, "#ffffff", "#ffffff"},
    {QPalette::ToolTipBase, "#ffffff", "#32363c"},
    {QPalette::ToolTipText, "#1c2024", "#e4e7ea"},
    {QPalette::Link, "#1f6fb2", "#6db3f0"},
    {QPalette::Light, "#ffffff", "#43484f"},
    {QPalette::Midlight, "#e3e6e9", "#1d2024"},
    {QPalette::Mid, "#b9bfc6", "#1d2024"},
    {QPalette::Dark, "#9aa1a9", "#17191c"},
    {QPalette::Shadow, "#70777f", "#0e0f11"},
};
constexpr QPalette::ColorRole kTextRoles[] = {QPalette::WindowText, QPalette::Text,
                                              QPalette::ButtonText};

QPalette MakePalette(bool dark) {
  QPalette palette;
  for (const RoleColor& entry : kRoles) {
    palette.setColor(entry.role, QColor(dark ? entry.dark : entry.light));
  }
  for (const QPalette::ColorRole role : kTextRoles) {
    palette.setColor(QPalette::Disabled, role, QColor(dark ? "#969ea7" : "#858c94"));
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(dark ? "#43484f" : "#b9bfc6"));
  return palette;
}

struct ToneColor {
  const char* light;
  const char* dark;
};

constexpr ToneColor kTextTones[] = {
    {"#1c2024", "#e4e7ea"}, {"#14733c", "#5fd38d"}, {"#8a5a00", "#f0b849"},
    {"#b3261e", "#ff8a80"}, {"#666e76", "#9aa2ab"},
};
constexpr ToneColor kLampTones[] = {
    {"#c6cbd1", "#4a5058"}, {"#23a455", "#3ddc84"}, {"#e0a100", "#ffc53d"},
    {"#d93025", "#ff6b60"}, {"#c6cbd1", "#4a5058"},
};

bool IsDarkPalette(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < 128;
}

QColor Pick(const ToneColor (&tones)[5], Tone tone, const QPalette& palette) {
  const ToneColor& colors = tones[static_cast<int>(tone)];
  return {IsDarkPalette(palette) ? colors.dark : colors.light};
}

constexpr const char* kDarkOutline = "#7d858e";
constexpr const char* kDarkFrame = "#545b64";

// Fusion without the pictures on the buttons of boxes and the shadow of disabled texts; and with
// outlines that can be seen in dark colours, where its own are darker than the window.
class Style final : public QProxyStyle {
 public:
  Style() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_EtchDisabledText) return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
  }

  // The row of a menu under the pointer is highlighted; its icon is asked for as that of a tool
  // under the pointer, which is not.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    const bool selected = element == CE_MenuItem && item != nullptr && !item->icon.isNull() &&
                          item->state.testFlags(State_Selected | State_Enabled);
    if (!selected) return QProxyStyle::drawControl(element, option, painter, widget);
    QStyleOptionMenuItem highlighted(*item);
    const int size = pixelMetric(PM_SmallIconSize, option, widget);
    const qreal ratio = painter->device()->devicePixelRatioF();
    highlighted.icon = QIcon(item->icon.pixmap(QSize(size, size), ratio, QIcon::Selected));
    QProxyStyle::drawControl(element, &highlighted, painter, widget);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    const bool dark = IsDarkPalette(option->palette);
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
    const bool mark = element == PE_IndicatorRadioButton || element == PE_IndicatorCheckBox;
    if (dark && mark && button != nullptr) {
      // The outline is made from the colour of the window, by a third darker.
      QStyleOptionButton outlined(*button);
      outlined.palette.setColor(QPalette::Window, QColor(kDarkOutline).lighter(150));
      QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
    } else if (dark && element == PE_FrameGroupBox) {
      DrawGroupFrame(*option, *painter, widget);
    } else {
      QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
  }

 private:
  // Around the contents, below the title.
  void DrawGroupFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget) const {
    constexpr int kTopMargin = 3;
    const auto* const box = qobject_cast<const QGroupBox*>(widget);
    const bool titled = box == nullptr || box->isCheckable() || !box->title().isEmpty();
    const int title =
        titled ? std::max(pixelMetric(PM_IndicatorHeight), option.fontMetrics.height()) : 0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QColor(kDarkFrame));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(
        QRectF(option.rect.adjusted(0, title + kTopMargin, 0, 0)).adjusted(0.5, 0.5, -0.5, -0.5), 2,
        2);
    painter.restore();
  }
};

template <typename Kind>
void ApplyTo(QWidget& root) {
  for (Kind* const item : root.findChildren<Kind*>()) {
    const QVariant name = item->property("programIcon");
    if (name.isValid()) item->setIcon(ProgramIcon(name.toString()));
  }
}

}  // namespace

void SetUpAppearance(bool dark) {
  QApplication::setStyle(new Style);
  SetDark(dark);
}

void SetDark(bool dark) {
  QApplication::setPalette(MakePalette(dark));
}

bool IsDark() {
  return IsDarkPalette(QApplication::palette());
}

bool DesktopIsDark() {
  return IsDark();
}

QColor TextColor(Tone tone, const QPalette& palette) {
  return Pick(kTextTones, tone, palette);
}

QColor LampColor(Tone tone, const QPalette& palette) {
  return Pick(kLampTones, tone, palette);
}

void ApplyIcons(QWidget& root) {
  ApplyTo<QAction>(root);
  ApplyTo<QAbstractButton>(root);
}

}  // namespace velmoor::qt
