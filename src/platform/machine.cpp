#include "platform/machine.h"

#include "engine/shared_folder.h"

#include <QFile>
#include <QFileInfo>
#include <QNetworkInterface>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

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

bool makePrivateFolder(const QString& path) {
  const QFileInfo folder(path);
  if (folder.isDir()) return true;
  const QString above = folder.absolutePath();
  if (above == folder.absoluteFilePath() || !makePrivateFolder(above)) return false;
  const QByteArray name = QFile::encodeName(path);
  if (::mkdir(name.constData(), S_IRWXU) != 0) return QFileInfo(path).isDir();
  // The folder above hands its group down; who may write is said here, whatever the umask is.
  if (isSharedFolder(above)) ::chmod(name.constData(), S_ISGID | S_IRWXU | S_IRWXG);
  return true;
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

void giveWayToOthers() {
  constexpr int lower = 10, lowest = 19;
  const auto thread = static_cast<id_t>(::gettid());
  ::setpriority(PRIO_PROCESS, thread, std::min(::getpriority(PRIO_PROCESS, thread) + lower, lowest));
}

QString userDataDirectory() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/jxc");
}

}  // namespace jxc
