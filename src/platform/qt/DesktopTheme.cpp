#include "platform/qt/DesktopTheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace velmoor::qt {
namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kGroup = QStringLiteral("org.freedesktop.appearance");
const QString kName = QStringLiteral("color-scheme");
constexpr uint kDark = 1;  // 2: light, 0: no wish

// Portals wrap a value once or twice.
QVariant Unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace

DesktopTheme::DesktopTheme(Taker taker) : taker_(std::move(taker)) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
              SLOT(OnSettingChanged(QString, QString, QDBusVariant)));
  Ask();
}

void DesktopTheme::Ask() {
  QDBusMessage question =
      QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
  question << kGroup << kName;
  auto* const answer =
      new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    answer->deleteLater();
    // A change that came meanwhile is the later one.
    if (!reply.isError() && !wantsDark_) Take(reply.value().variant());
  });
}

void DesktopTheme::OnSettingChanged(const QString& group, const QString& name,
                                    const QDBusVariant& value) {
  if (group == kGroup && name == kName) Take(value.variant());
}

void DesktopTheme::Take(const QVariant& scheme) {
  bool known = false;
  const uint wish = Unwrapped(scheme).toUInt(&known);
  if (!known) return;
  wantsDark_ = wish == kDark;
  taker_(*wantsDark_);
}

}  // namespace velmoor::qt
