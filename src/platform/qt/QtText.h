// Texts across the wall: UTF-8 on the logic's side, where "\r" separates lines.
#pragma once

#include <QString>
#include <string>

namespace velmoor::qt {

[[nodiscard]] inline QString ToQt(const std::string& text) {
  QString converted = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  converted.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return converted.replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

[[nodiscard]] inline std::string FromQt(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace velmoor::qt
