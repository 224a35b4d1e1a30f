#include "platform/machine.h"

#include <QNetworkInterface>
#include <QStandardPaths>

namespace jxc {

QString localIpAddress() {
  for (const QNetworkInterface& card : QNetworkInterface::allInterfaces()) {
    const auto flags = card.flags();
    if (!flags.testFlag(QNetworkInterface::IsUp) || flags.testFlag(QNetworkInterface::IsLoopBack)) continue;
    for (const QNetworkAddressEntry& entry : card.addressEntries()) {
      if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol) return entry.ip().toString();
    }
  }
  return QStringLiteral("127.0.0.1");
}

QString userDataDirectory() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/jxc");
}

}  // namespace jxc
