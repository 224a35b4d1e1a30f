#include "engine/postgres/connecting.h"
#include "engine/postgres/postgres_database.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <unistd.h>

namespace jxc::postgres {
namespace backup_detail {

DbError notWritten(const QString& reason) {
  return DbError(DbError::Kind::File, QStringLiteral("备份文件没有写成：") + reason);
}

}  // namespace backup_detail

// The server's own tool sees one moment of the database while others write.
void PostgresDatabase::backupTo(const QString& file, const std::function<bool(int percent)>& progress) {
  using namespace backup_detail;
  if (depth_ > 0) throw DbError(DbError::Kind::Other, QStringLiteral("操作还没有完成，现在不能备份。"));
  const QString tool = QStandardPaths::findExecutable(QStringLiteral("pg_dump"));
  if (tool.isEmpty())
    throw notWritten(QStringLiteral("本机没有安装 pg_dump（postgresql-client），请安装后再试，或者在服务器上备份。"));
  const QString unfinished = QStringLiteral("%1.%2.tmp").arg(file).arg(::getpid());
  QFile::remove(unfinished);
  {
    QFile own(unfinished);  // its owner's alone from the first moment on
    if (!own.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFileDevice::ReadOwner | QFileDevice::WriteOwner))
      throw notWritten(own.errorString());
  }
  QProcess dump;
  if (demandsVerifiedServer(address_)) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PGSSLMODE"), QStringLiteral("verify-full"));
    dump.setProcessEnvironment(environment);
  }
  dump.start(tool,
             {QStringLiteral("--format=custom"), QStringLiteral("--no-owner"), QStringLiteral("--no-password"),
              QStringLiteral("--file=") + unfinished, QStringLiteral("--dbname=") + QString::fromStdString(address_)});
  bool cancelled = false;
  while (!dump.waitForFinished(200) && dump.state() != QProcess::NotRunning) {
    if (cancelled || !progress || progress(0)) continue;
    cancelled = true;
    dump.kill();
  }
  if (cancelled || dump.exitStatus() != QProcess::NormalExit || dump.exitCode() != 0) {
    const QString reason = QString::fromUtf8(dump.readAllStandardError()).trimmed();
    QFile::remove(unfinished);
    if (cancelled) return;
    throw notWritten(reason.isEmpty() ? dump.errorString() : reason);
  }
  if (std::rename(QFile::encodeName(unfinished).constData(), QFile::encodeName(file).constData()) != 0) {
    QFile::remove(unfinished);
    throw notWritten(QStringLiteral("文件不能改名。"));
  }
  if (progress) progress(100);
}

}  // namespace jxc::postgres
