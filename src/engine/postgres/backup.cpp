#include "engine/new_file.h"
#include "engine/postgres/connecting.h"
#include "engine/postgres/postgres_database.h"

#include <QProcess>
#include <QStandardPaths>

#include <cstring>

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
  NewFile unfinished(file, [](int error) { throw notWritten(QString::fromLocal8Bit(std::strerror(error))); });
  const auto run = [this, &progress](const QString& program, const QStringList& words) {
    QProcess process;
    if (demandsVerifiedServer(address_)) {
      QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
      environment.insert(QStringLiteral("PGSSLMODE"), QStringLiteral("verify-full"));
      process.setProcessEnvironment(environment);
    }
    process.start(program, words);
    bool cancelled = false;
    while (!process.waitForFinished(200) && process.state() != QProcess::NotRunning) {
      if (cancelled || !progress || progress(0)) continue;
      cancelled = true;
      process.kill();
    }
    if (cancelled) return false;
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
      const QString reason = QString::fromUtf8(process.readAllStandardError()).trimmed();
      throw notWritten(reason.isEmpty() ? process.errorString() : reason);
    }
    return true;
  };
  if (!run(tool, {QStringLiteral("--format=custom"), QStringLiteral("--no-owner"), QStringLiteral("--no-password"),
                  QStringLiteral("--file=") + unfinished.name(),
                  QStringLiteral("--dbname=") + QString::fromStdString(address_)}))
    return;
  // Read whole once more before it takes the place of an older one.
  if (const QString reader = QStandardPaths::findExecutable(QStringLiteral("pg_restore")); !reader.isEmpty())
    if (!run(reader, {QStringLiteral("--file=/dev/null"), unfinished.name()})) return;
  unfinished.keep();
  if (progress) progress(100);
}

/// The server reads its own pages; whether it would notice one that the disk has changed is all that can be asked.
StorageCheck PostgresDatabase::checkStorage(const std::function<bool(int percent)>&) {
  StorageCheck check;
  if (ask("show data_checksums", {}).text(0, 0) == u"off")
    check.advice << QStringLiteral(
        "服务器没有打开数据校验（data_checksums），磁盘悄悄改坏的数据不会被发现；停止服务器后用 pg_checksums --enable "
        "打开");
  return check;
}

}  // namespace jxc::postgres
