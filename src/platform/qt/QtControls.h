// The Qt adapters of the controls, one a kind. Each speaks for a widget that belongs to its form.
#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "platform/Controls.h"
#include "platform/qt/EventWatch.h"
#include "platform/qt/LampWidget.h"
#include "platform/qt/QtText.h"

class QAbstractButton;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QRadioButton;
class QTimer;

namespace velmoor::qt {

// What all controls share.
template <typename Port>
class QtControl : public Port {
 public:
  explicit QtControl(QWidget& widget) : widget_(widget) {}
  void SetEnabled(bool enabled) override { widget_.setEnabled(enabled); }
  [[nodiscard]] bool Enabled() const override { return widget_.isEnabledTo(widget_.window()); }
  void SetVisible(bool visible) override { widget_.setVisible(visible); }
  [[nodiscard]] bool Visible() const override { return !widget_.isHidden(); }
  void SetToolTip(const std::string& text) override { widget_.setToolTip(ToQt(text)); }
  [[nodiscard]] std::string ToolTip() const override { return FromQt(widget_.toolTip()); }
  void SetFocus() override { widget_.setFocus(); }

 protected:
  // Lives as long as the adapter: connections to it end before the widget is gone.
  QObject context_;

 private:
  QWidget& widget_;
};

class QtButton final : public QtControl<Button> {
 public:
  explicit QtButton(QAbstractButton& button);
  void SetCaption(const std::string& caption) override;
  [[nodiscard]] std::string Caption() const override;

 private:
  void LetGo();
  QAbstractButton& button_;
  EventWatch watch_;
  bool held_ = false;
  bool fresh_ = false;  // a key or the mouse was pressed, and not yet answered by Down
};

class QtTextBox final : public QtControl<TextBox> {
 public:
  explicit QtTextBox(QLineEdit& edit);
  void SetText(const std::string& text) override;
  [[nodiscard]] std::string Text() const override;
  void SelectAll() override;

 private:
  bool Look(QEvent& event);
  bool Refused();
  QLineEdit& edit_;
  EventWatch watch_;
  bool validating_ = false;
};

class QtComboBox final : public QtControl<ComboBox> {
 public:
  explicit QtComboBox(QComboBox& combo);
  void SetItems(const std::vector<std::string>& items) override;
  [[nodiscard]] std::vector<std::string> Items() const override;
  void SetListIndex(int index) override;
  [[nodiscard]] int ListIndex() const override;
  [[nodiscard]] std::string Text() const override;

 private:
  QComboBox& combo_;
};

class QtCheckBox final : public QtControl<CheckBox> {
 public:
  explicit QtCheckBox(QCheckBox& box);
  void SetValue(bool checked) override;
  [[nodiscard]] bool Value() const override;
  void SetCaption(const std::string& caption) override;
  [[nodiscard]] std::string Caption() const override;

 private:
  QCheckBox& box_;
};

// A container of radio buttons named after it, with "_0", "_1", ... behind.
class QtOptionGroup final : public QtControl<OptionGroup> {
 public:
  explicit QtOptionGroup(QWidget& container);
  void SetValue(int index) override;
  [[nodiscard]] int Value() const override;
  [[nodiscard]] int Count() const override { return static_cast<int>(choices_.size()); }
  void SetChoiceEnabled(int index, bool enabled) override;
  [[nodiscard]] bool ChoiceEnabled(int index) const override;
  void SetChoiceCaption(int index, const std::string& caption) override;
  [[nodiscard]] std::string ChoiceCaption(int index) const override;

 private:
  [[nodiscard]] QRadioButton& Choice(int index) const;
  std::vector<QRadioButton*> choices_;
};

class QtLabel final : public QtControl<Label> {
 public:
  explicit QtLabel(QLabel& label);
  void SetText(const std::string& text) override;
  [[nodiscard]] std::string Text() const override;
  void SetTone(Tone tone) override;
  [[nodiscard]] Tone TextTone() const override { return tone_; }

 private:
  void Paint();
  QLabel& label_;
  EventWatch watch_;
  std::string text_;
  Tone tone_ = Tone::normal;
};

class QtLamp final : public QtControl<Lamp> {
 public:
  explicit QtLamp(LampWidget& lamp) : QtControl(lamp), lamp_(lamp) {}
  void SetTone(Tone tone) override { lamp_.SetTone(tone); }
  [[nodiscard]] Tone LampTone() const override { return lamp_.LampTone(); }

 private:
  LampWidget& lamp_;
};

class QtProgressBar final : public QtControl<ProgressBar> {
 public:
  explicit QtProgressBar(QProgressBar& bar);
  void SetProgress(int value, int maximum) override;
  [[nodiscard]] int Value() const override;
  [[nodiscard]] int Maximum() const override;

 private:
  QProgressBar& bar_;
};

class QtTimer final : public Timer {
 public:
  QtTimer();
  ~QtTimer() override;
  QtTimer(const QtTimer&) = delete;
  QtTimer& operator=(const QtTimer&) = delete;
  void SetInterval(std::chrono::milliseconds interval) override;
  void SetEnabled(bool enabled) override;
  [[nodiscard]] bool Enabled() const override;

 private:
  std::unique_ptr<QTimer> timer_;
};

}  // namespace velmoor::qt
