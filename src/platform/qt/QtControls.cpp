#include "platform/qt/QtControls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTimer>
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/qt/QtAppearance.h"

namespace velmoor::qt {

// ---- button

QtButton::QtButton(QAbstractButton& button)
    : QtControl(button), button_(button), watch_(button, [this](QEvent& event) {
        // Qt drops the pressed state in these cases without telling that the button was released.
        switch (event.type()) {
          case QEvent::MouseButtonPress:
          case QEvent::KeyPress:
            fresh_ = true;
            break;
          case QEvent::FocusOut:
          case QEvent::Hide:
          case QEvent::EnabledChange:
          case QEvent::WindowDeactivate:
            LetGo();
            break;
          default:
            break;
        }
        return false;
      }) {
  QObject::connect(&button, &QAbstractButton::clicked, &context_, [this] { Click.Raise(); });
  QObject::connect(&button, &QAbstractButton::pressed, &context_, [this] {
    // Qt presses a button again when the pointer is dragged back onto it: that is no new press.
    if (held_ || !std::exchange(fresh_, false)) return;
    held_ = true;
    Down.Raise();
  });
  QObject::connect(&button, &QAbstractButton::released, &context_, [this] { LetGo(); });
}

void QtButton::LetGo() {
  if (!held_) return;
  held_ = false;
  Up.Raise();
}

void QtButton::SetCaption(const std::string& caption) {
  button_.setText(ToQt(caption));
}

std::string QtButton::Caption() const {
  return FromQt(button_.text());
}

// ---- text box

QtTextBox::QtTextBox(QLineEdit& edit)
    : QtControl(edit), edit_(edit), watch_(edit, [this](QEvent& event) { return Look(event); }) {
  QObject::connect(&edit, &QLineEdit::textEdited, &context_, [this] { Change.Raise(); });
}

bool QtTextBox::Look(QEvent& event) {
  if (event.type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent&>(event).key();
    // A refused Enter must not reach the window's default button.
    return (key == Qt::Key_Return || key == Qt::Key_Enter) && Refused();
  }
  if (event.type() != QEvent::FocusOut) return false;
  const Qt::FocusReason reason = static_cast<QFocusEvent&>(event).reason();
  const bool leaves = reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
  if (leaves && Refused()) {
    // The change of focus that is under way would win over one asked for now.
    QTimer::singleShot(0, &context_, [this] {
      edit_.setFocus();
      edit_.selectAll();
    });
  }
  return false;
}

bool QtTextBox::Refused() {
  if (validating_) return false;
  validating_ = true;
  const QPointer<QObject> alive(&context_);
  bool cancel = false;
  Validate.Raise(cancel);
  if (alive) validating_ = false;
  return cancel && alive;
}

void QtTextBox::SetText(const std::string& text) {
  edit_.setText(ToQt(text));
}

std::string QtTextBox::Text() const {
  return FromQt(edit_.text());
}

void QtTextBox::SelectAll() {
  edit_.selectAll();
}

// ---- combo box

QtComboBox::QtComboBox(QComboBox& combo) : QtControl(combo), combo_(combo) {
  QObject::connect(&combo, &QComboBox::activated, &context_, [this] { Click.Raise(); });
}

void QtComboBox::SetItems(const std::vector<std::string>& items) {
  combo_.clear();
  for (const std::string& item : items) combo_.addItem(ToQt(item));
  combo_.setCurrentIndex(-1);
}

std::vector<std::string> QtComboBox::Items() const {
  std::vector<std::string> items;
  items.reserve(static_cast<std::size_t>(combo_.count()));
  for (int i = 0; i < combo_.count(); ++i) items.push_back(FromQt(combo_.itemText(i)));
  return items;
}

void QtComboBox::SetListIndex(int index) {
  combo_.setCurrentIndex(index < combo_.count() ? index : -1);
}

int QtComboBox::ListIndex() const {
  return combo_.currentIndex();
}

std::string QtComboBox::Text() const {
  return FromQt(combo_.currentText());
}

// ---- check box

QtCheckBox::QtCheckBox(QCheckBox& box) : QtControl(box), box_(box) {
  QObject::connect(&box, &QCheckBox::clicked, &context_, [this] { Click.Raise(); });
}

void QtCheckBox::SetValue(bool checked) {
  box_.setChecked(checked);
}

bool QtCheckBox::Value() const {
  return box_.isChecked();
}

void QtCheckBox::SetCaption(const std::string& caption) {
  box_.setText(ToQt(caption));
}

std::string QtCheckBox::Caption() const {
  return FromQt(box_.text());
}

// ---- option group

QtOptionGroup::QtOptionGroup(QWidget& container) : QtControl(container) {
  for (int index = 0;; ++index) {
    const QString name = container.objectName() + QStringLiteral("_%1").arg(index);
    auto* const choice = container.findChild<QRadioButton*>(name);
    if (choice == nullptr) break;
    choices_.push_back(choice);
    QObject::connect(choice, &QRadioButton::clicked, &context_,
                     [this, index] { Click.Raise(index); });
  }
}

QRadioButton& QtOptionGroup::Choice(int index) const {
  return *choices_.at(static_cast<std::size_t>(index));
}

void QtOptionGroup::SetValue(int index) {
  for (QRadioButton* const choice : choices_) {
    // An exclusive button cannot be switched off.
    choice->setAutoExclusive(false);
    choice->setChecked(false);
    choice->setAutoExclusive(true);
  }
  if (index >= 0) Choice(index).setChecked(true);
}

int QtOptionGroup::Value() const {
  const auto set = std::find_if(choices_.begin(), choices_.end(),
                                [](const QRadioButton* choice) { return choice->isChecked(); });
  return set == choices_.end() ? -1 : static_cast<int>(set - choices_.begin());
}

void QtOptionGroup::SetChoiceEnabled(int index, bool enabled) {
  Choice(index).setEnabled(enabled);
}

bool QtOptionGroup::ChoiceEnabled(int index) const {
  return Choice(index).isEnabledTo(Choice(index).parentWidget());
}

void QtOptionGroup::SetChoiceCaption(int index, const std::string& caption) {
  Choice(index).setText(ToQt(caption));
}

std::string QtOptionGroup::ChoiceCaption(int index) const {
  return FromQt(Choice(index).text());
}

// ---- label

QtLabel::QtLabel(QLabel& label)
    : QtControl(label),
      label_(label),
      watch_(label,
             [this](QEvent& event) {
               if (event.type() == QEvent::ApplicationPaletteChange) Paint();
               return false;
             }),
      text_(FromQt(label.text())) {}

void QtLabel::SetText(const std::string& text) {
  text_ = text;
  label_.setText(ToQt(text));
}

std::string QtLabel::Text() const {
  return text_;
}

void QtLabel::SetTone(Tone tone) {
  tone_ = tone;
  Paint();
}

void QtLabel::Paint() {
  QPalette palette = QApplication::palette();
  palette.setColor(QPalette::WindowText, TextColor(tone_, palette));
  label_.setPalette(tone_ == Tone::normal ? QPalette() : palette);
}

// ---- progress bar

QtProgressBar::QtProgressBar(QProgressBar& bar) : QtControl(bar), bar_(bar) {
  SetProgress(0, 0);
}

void QtProgressBar::SetProgress(int value, int maximum) {
  // A range of no length would show the bar as busy.
  bar_.setRange(0, std::max(maximum, 1));
  bar_.setValue(maximum <= 0 ? 0 : std::clamp(value, 0, maximum));
}

int QtProgressBar::Value() const {
  return bar_.value();
}

int QtProgressBar::Maximum() const {
  return bar_.maximum();
}

// ---- timer

QtTimer::QtTimer() : timer_(std::make_unique<QTimer>()) {
  QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] { Tick.Raise(); });
}
QtTimer::~QtTimer() {
  // Its own tick may be what ends the form.
  timer_->stop();
  timer_->disconnect();
  timer_.release()->deleteLater();
}

void QtTimer::SetInterval(std::chrono::milliseconds interval) {
  timer_->setInterval(interval);
}

void QtTimer::SetEnabled(bool enabled) {
  if (enabled) {
    timer_->start();
  } else {
    timer_->stop();
  }
}

bool QtTimer::Enabled() const {
  return timer_->isActive();
}

}  // namespace velmoor::qt
