#include "engine/sqlite/own_file.h"

#include "engine/sqlite/open_files.h"
#include "engine/sqlite/write_ahead_log.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace jxc::sqlite {
namespace own_file_detail {

QString asideName(const QString& log) {
  const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
  QString name = log + u'.' + stamp;
  for (int i = 2; QFileInfo::exists(name); ++i)
    name = log + u'.' + stamp + u'-' + QString::number(i);
  return name;
}

QString shortName(const QString& file) {
  return QFileInfo(file).fileName();
}

void putAside(const FileRole& role, const QString& log, Opening& opening) {
  const QString aside = asideName(log);
  if (!QFile::rename(log, aside))
    throw cannotReach(role, QStringLiteral("文件旁边的日志不属于它，又不能改名：%1。请先把它移到别处。").arg(log));
  opening.remarks << QStringLiteral(
                         "帐套文件 %1 旁边有另一个文件留下的日志，多半是在非正常退出以后用备份替换了帐套文件。"
                         "系统没有使用这个日志，帐套就是备份时的样子；日志已改名为 %2，请暂时保留。")
                         .arg(shortName(role.file), shortName(aside));
}

void keepLost(const FileRole& role, const QString& log, const LogContent& content, Opening& opening) {
  const QString aside = asideName(log);
  const bool isKept = QFile::copy(log, aside);
  opening.dropsPages = true;
  opening.remarks << QStringLiteral(
                         "帐套文件 %1 的日志末尾有 %2 页读不通（断电或磁盘出错），已经舍去，"
                         "请核对最后保存的几张单据。%3")
                         .arg(shortName(role.file))
                         .arg(content.lostPages)
                         .arg(isKept ? QStringLiteral("原来的日志另存为 %1。").arg(shortName(aside)) : QString());
}

/// Somebody else has the file open. Whoever opens it first makes the log, and whoever closes it last takes it away, a
/// moment after and before he holds the file.
void requireLogOfOthers(const FileRole& role, const QString& log) {
  constexpr int pauses = 100, pause = 50;  // ms
  for (int i = 0; i < pauses; ++i) {
    const Exclusion exclusion(role.file);
    if (exclusion.isHeld() || QFileInfo::exists(log) || !readHeader(exclusion.descriptor()).keepsLog) return;
    QThread::msleep(pause);
  }
  throw cannotReach(role, QStringLiteral("别的窗口正在使用它，它的日志文件却被删除了。请先退出那个窗口。"));
}

}  // namespace own_file_detail

Opening settleLog(const FileRole& role) {
  using namespace own_file_detail;
  const QString log = role.file + QStringLiteral("-wal");
  const NobodyOpens guard;
  Opening opening;
  if (isOpenHere(role.file)) return opening;
  const Exclusion exclusion(role.file);
  if (!exclusion.isHeld()) {
    requireLogOfOthers(role, log);
    return opening;
  }
  opening.alone = true;
  const LogContent content = readLog(log);
  if (!content.holdsCommits && content.lostPages == 0) return opening;
  const FileHeader header = readHeader(exclusion.descriptor());
  // A file that is complete by itself has no log: a backup that nobody has opened yet.
  if (!header.keepsLog || !content.belongsTo(header.number))
    putAside(role, log, opening);
  else if (content.lostPages > 0)
    keepLost(role, log, content, opening);
  return opening;
}

}  // namespace jxc::sqlite
