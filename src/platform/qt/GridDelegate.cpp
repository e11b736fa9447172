#include "platform/qt/GridDelegate.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QTableView>
#include <QTimer>

#include "platform/qt/GridModel.h"
#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

constexpr int kStripe = 3;
constexpr int kCorner = 8;
constexpr int kButtonWidth = 22;
constexpr int kSignWidth = 16;  // of the lock, and of the arrow of a list

// Blanks as wide as the digits that the number has fewer than its column behind the point.
QString PaddedNumber(const QString& text, int decimals) {
  constexpr QChar kDigitWide(0x2007), kPointWide(0x2008);
  const qsizetype point = text.indexOf(QLatin1Char('.'));
  const qsizetype digits = point < 0 ? 0 : text.size() - point - 1;
  QString padded = text;
  if (point < 0 && decimals > 0) padded += kPointWide;
  return padded + QString(std::max<qsizetype>(decimals - digits, 0), kDigitWide);
}

void DrawMark(QPainter& painter, const QStyleOptionViewItem& option, CellMark mark) {
  const QRect& cell = option.rect;
  const QColor color = LampColor(Tone::busy, option.palette);
  if (mark == CellMark::stripe) {
    painter.fillRect(cell.left(), cell.top(), kStripe, cell.height() - 1, color);
  } else if (mark == CellMark::corner) {
    const QPoint at = cell.topLeft();
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(QPolygon({at, at + QPoint(kCorner, 0), at + QPoint(0, kCorner)}));
    painter.restore();
  }
}

void DrawButton(QPainter& painter, const QStyleOptionViewItem& option, const QRect& place,
                const QString& caption) {
  QStyleOptionButton button;
  button.rect = place;
  button.palette = option.palette;
  button.state = QStyle::State_Enabled | QStyle::State_Raised;
  const bool current = option.state.testFlag(QStyle::State_HasFocus);
  if (current) button.state |= QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
  button.text = caption;
  QApplication::style()->drawControl(QStyle::CE_PushButton, &button, &painter);
}

// A cell that bears no caption offers nothing.
void DrawAction(QPainter& painter, const QStyleOptionViewItem& option, const QString& caption) {
  if (caption.isEmpty()) return;
  constexpr int kEdge = 2;
  DrawButton(painter, option, option.rect.adjusted(kEdge, 1, -kEdge, -1), caption);
}

void DrawLamp(QPainter& painter, const QStyleOptionViewItem& option, bool on) {
  const QColor color = LampColor(on ? Tone::good : Tone::normal, option.palette);
  const double side = std::min(option.rect.height(), 18) - 6.0;
  QRectF circle(0, 0, side, side);
  circle.moveCenter(QRectF(option.rect).center());
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  // Lit or not, its edge stands off from light and dark grounds alike.
  QColor edge = option.palette.color(QPalette::Text);
  edge.setAlpha(110);
  painter.setPen(QPen(edge, 1));
  painter.setBrush(color);
  painter.drawEllipse(circle);
  painter.restore();
}

}  // namespace

GridDelegate::GridDelegate(const GridModel& model, Hooks hooks, QObject* parent)
    : QStyledItemDelegate(parent), model_(model), hooks_(std::move(hooks)) {}

QRect GridDelegate::ButtonRect(const QRect& cell) {
  return {cell.right() - kButtonWidth, cell.top() + 1, kButtonWidth, cell.height() - 2};
}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const CellTraits traits = model_.Traits(index);
  const Tone tone = traits.locked ? Tone::faint : traits.tone;
  if (tone != Tone::normal) {
    option->palette.setColor(QPalette::Text, TextColor(tone, option->palette));
  }
  option->font.setBold(traits.bold);
  if (traits.decimals < 0) return;
  option->text = PaddedNumber(option->text, traits.decimals);
  option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
}

// A lock stands where the text is not, the arrow of a list at the end.
void GridDelegate::DrawSigns(QPainter& painter, const QStyleOptionViewItem& option,
                             const CellTraits& traits) {
  QRect sign(0, 0, kSignWidth - 4, kSignWidth - 4);
  sign.moveCenter(option.rect.center());
  if (traits.locked) {
    sign.moveLeft(traits.decimals < 0 ? option.rect.right() - kSignWidth : option.rect.left() + 3);
    static const QIcon kLock = ProgramIcon(QStringLiteral("lock"));
    kLock.paint(&painter, sign);
  } else if (traits.editable && !traits.comboItems.empty()) {
    QStyleOption arrow;
    arrow.palette = option.palette;
    arrow.state = QStyle::State_Enabled;
    arrow.rect = sign;
    arrow.rect.moveLeft(option.rect.right() - kSignWidth);
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, &painter);
  }
}

namespace {

bool IsCurrentRow(const QStyleOptionViewItem& option, const QModelIndex& index) {
  const auto* const view = qobject_cast<const QTableView*>(option.widget);
  return view != nullptr && view->currentIndex().row() == index.row();
}

}  // namespace

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  const CellTraits traits = model_.Traits(index);
  if (traits.action) return DrawAction(*painter, option, index.data().toString());
  QStyleOptionViewItem cell(option);
  if (traits.locked) painter->fillRect(option.rect, option.palette.color(QPalette::Midlight));
  if (option.state.testFlag(QStyle::State_Selected)) {
    painter->fillRect(option.rect, option.palette.highlight());
  }
  // The text ends before what stands at the end.
  const bool signedCell = traits.editable && !traits.comboItems.empty();
  if (signedCell) cell.rect.setRight(option.rect.right() - kSignWidth);
  if (traits.button) cell.rect.setRight(ButtonRect(option.rect).left() - 1);
  QStyledItemDelegate::paint(painter, cell, index);
  DrawSigns(*painter, option, traits);
  DrawMark(*painter, option, traits.mark);
  if (traits.button && IsCurrentRow(option, index)) {
    DrawButton(*painter, option, ButtonRect(option.rect), QStringLiteral("..."));
  }
  if (traits.lamp != CellLamp::none) DrawLamp(*painter, option, traits.lamp == CellLamp::on);
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
  const CellTraits traits = model_.Traits(index);
  editor_ = traits.comboItems.empty() ? CreateTextEditor(parent, index)
                                      : CreateComboEditor(parent, traits, index);
  return editor_;
}

QWidget* GridDelegate::CreateTextEditor(QWidget* parent, const QModelIndex& index) const {
  auto* const edit = new QLineEdit(parent);
  edit->setFrame(false);
  const QPersistentModelIndex place(index);
  connect(edit, &QLineEdit::textEdited, this,
          [this, edit, place] { hooks_.changed(ReadEditor(*edit, place)); });
  return edit;
}

QWidget* GridDelegate::CreateComboEditor(QWidget* parent, const CellTraits& traits,
                                         const QModelIndex& index) const {
  auto* const combo = new QComboBox(parent);
  combo->setEditable(traits.comboOpen);
  for (const std::string& item : traits.comboItems) combo->addItem(ToQt(item));
  const QPersistentModelIndex place(index);
  auto* const self = const_cast<GridDelegate*>(this);
  connect(combo, &QComboBox::textHighlighted, this, [this, combo, place](const QString& text) {
    GridEdit edit = ReadEditor(*combo, place);
    edit.text = FromQt(text);
    edit.comboIndex = combo->findText(text);
    hooks_.changed(edit);
  });
  connect(combo, &QComboBox::activated, this, [this, self, combo, place] {
    hooks_.changed(ReadEditor(*combo, place));
    Q_EMIT self->commitData(combo);
    Q_EMIT self->closeEditor(combo);
  });
  QTimer::singleShot(0, combo, [combo] { combo->showPopup(); });
  return combo;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  const QString text = index.data(Qt::EditRole).toString();
  if (auto* const combo = qobject_cast<QComboBox*>(editor)) {
    combo->setCurrentIndex(combo->findText(text));
    if (combo->isEditable()) combo->setEditText(text);
    return;
  }
  auto* const edit = qobject_cast<QLineEdit*>(editor);
  // The source may be read again while the user types.
  if (!edit->isModified()) edit->setText(text);
}

GridEdit GridDelegate::ReadEditor(const QWidget& editor, const QModelIndex& index) {
  GridEdit edit;
  edit.row = index.row() + 1;
  edit.column = index.column();
  if (const auto* const combo = qobject_cast<const QComboBox*>(&editor)) {
    edit.text = FromQt(combo->currentText());
    edit.comboIndex = combo->findText(combo->currentText());
  } else {
    edit.text = FromQt(qobject_cast<const QLineEdit*>(&editor)->text());
  }
  return edit;
}

void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel*,
                                const QModelIndex& index) const {
  const auto* const combo = qobject_cast<const QComboBox*>(editor);
  // A closed list that was opened and left without a choice.
  if (combo != nullptr && !combo->isEditable() && combo->currentIndex() < 0) return;
  hooks_.committed(ReadEditor(*editor, index));
}

bool GridDelegate::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && hooks_.key(static_cast<const QKeyEvent&>(*event))) {
    return true;
  }
  return QStyledItemDelegate::eventFilter(watched, event);
}

}  // namespace velmoor::qt
