#include "platform/qt/QtSerialAdapters.h"

#include <QSerialPortInfo>

#include "platform/qt/QtText.h"

namespace velmoor::qt {

std::vector<SerialAdapter> SerialAdapters() {
  std::vector<SerialAdapter> adapters;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    if (!info.hasVendorIdentifier()) continue;
    const QString name = info.description().isEmpty() ? info.manufacturer() : info.description();
    adapters.push_back({FromQt(info.systemLocation()), FromQt(name)});
  }
  return adapters;
}

}  // namespace velmoor::qt
