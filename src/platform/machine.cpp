#include "platform/machine.h"

#include <QFile>
#include <QNetworkInterface>
#include <QStandardPaths>
#include <QStorageInfo>

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

std::int64_t freeDiskBytes(const QString& folder) {
  const QStorageInfo storage(folder);
  return storage.isValid() ? storage.bytesAvailable() : -1;
}

bool restrictToOwner(const QString& file) {
  return QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

QString userDataDirectory() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/jxc");
}

}  // namespace jxc
