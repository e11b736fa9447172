// The desktop's wish for light or dark colours, while the program runs too.
//
// Desktops tell it over the message bus, by the portal for programs. Without one the program's
// first palette is all that is known.
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace velmoor::qt {

class DesktopTheme final : public QObject {
  Q_OBJECT

 public:
  using Taker = std::function<void(bool dark)>;

  // `taker` is told the wish as soon as it is known, and each time that it changes.
  explicit DesktopTheme(Taker taker);

  // Nothing: the desktop has told none.
  [[nodiscard]] std::optional<bool> WantsDark() const { return wantsDark_; }

 private Q_SLOTS:
  void OnSettingChanged(const QString& group, const QString& name, const QDBusVariant& value);

 private:
  void Ask();
  void Take(const QVariant& scheme);

  Taker taker_;
  std::optional<bool> wantsDark_;
};

}  // namespace velmoor::qt
