// A round indicator that draws its tone.
#pragma once

#include <QWidget>

#include "platform/Controls.h"

namespace velmoor::qt {

class LampWidget final : public QWidget {
  Q_OBJECT

 public:
  explicit LampWidget(QWidget* parent = nullptr);
  void SetTone(Tone tone);
  [[nodiscard]] Tone LampTone() const { return tone_; }
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Tone tone_ = Tone::normal;
};

}  // namespace velmoor::qt
