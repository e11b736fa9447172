// Texts across the wall: UTF-8 on the logic's side, where "\r" separates lines. Whatever is shown
// comes this way, so control characters are made visible here.
#pragma once

#include <QString>
#include <string>

#include "platform/VisibleText.h"

namespace velmoor::qt {

[[nodiscard]] inline QString ToQt(const std::string& text) {
  const std::string visible = VisibleLines(text);
  return QString::fromUtf8(visible.data(), static_cast<qsizetype>(visible.size()));
}

[[nodiscard]] inline std::string FromQt(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace velmoor::qt
