#include "platform/machine.h"

#include <QNetworkInterface>
#include <QProcess>
#include <QStandardPaths>

#include <sys/stat.h>

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

void makeFilesOfGroup() {
  ::umask(S_IRWXO);
}

bool hasBrowser() {
  if (qEnvironmentVariableIsSet("BROWSER")) return true;
  for (const auto* program : {"x-www-browser", "firefox", "firefox-esr", "chromium", "google-chrome", "epiphany"})
    if (!QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty()) return true;
  // One that came another way is known to the desktop.
  QProcess asked;
  asked.start(QStringLiteral("xdg-mime"),
              {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("text/html")});
  return asked.waitForFinished(2000) && !asked.readAllStandardOutput().trimmed().isEmpty();
}

QString userDataDirectory() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/jxc");
}

}  // namespace jxc
