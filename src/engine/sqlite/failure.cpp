#include "engine/sqlite/failure.h"

#include "engine/sqlite/functions.h"

#include <QDir>

#include <cerrno>
#include <string>
#include <string_view>

namespace jxc::sqlite {
namespace failure_detail {

using Kind = DbError::Kind;

struct Reason {
  Kind kind;
  QString text;
};

/// Reasons that lie in the file or its disk, not in the statement. Kind::Other stands for none of them.
Reason fileReason(int code) {
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return {Kind::Busy, QStringLiteral("数据库正被另一台工作站使用，请稍后再试。")};
    case SQLITE_FULL:
      return {Kind::Full, QStringLiteral("磁盘空间已满，数据没有保存，请清理磁盘后再试。")};
    case SQLITE_READONLY:
      return {Kind::File, QStringLiteral("数据库文件是只读的，数据没有保存，请检查文件和目录的写入权限。")};
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return {Kind::File, QStringLiteral("没有访问数据库文件的权限。")};
    case SQLITE_CANTOPEN:
      return {Kind::File, QStringLiteral("数据库的文件打不开，请检查文件、目录的权限和磁盘。")};
    case SQLITE_IOERR:
      return {Kind::File, QStringLiteral("读写数据库时磁盘出错（代码 %1），请检查磁盘或网络。").arg(code)};
    case SQLITE_CORRUPT:
      return {Kind::File, QStringLiteral("数据库文件已损坏，请用备份恢复。")};
    case SQLITE_NOTADB:
      return {Kind::File, QStringLiteral("文件不是本系统的数据库。")};
    case SQLITE_NOMEM:
      return {Kind::Other, QStringLiteral("内存不足。")};
    default:
      return {Kind::Other, {}};
  }
}

bool destroysFile(int code) {
  return (code & 0xff) == SQLITE_CORRUPT || (code & 0xff) == SQLITE_NOTADB;
}

/// "UNIQUE constraint failed: jxc_goods.g_sn" → "jxc_goods.g_sn"
QString behindColon(const QString& message) {
  const qsizetype colon = message.indexOf(QLatin1String(": "));
  return colon < 0 ? message : message.mid(colon + 2);
}

Reason constraintReason(int code, const QString& message) {
  const QString where = behindColon(message);
  if (code == SQLITE_CONSTRAINT_NOTNULL) return {Kind::Constraint, QStringLiteral("%1 不能为空。").arg(where)};
  return {Kind::Constraint, QStringLiteral("数据重复：%1 已有相同的值。").arg(where)};
}

/// What the functions of the dialect refuse while a statement runs.
Reason functionReason(const QString& message) {
  const auto behind = [&](std::string_view sign) { return message.mid(static_cast<qsizetype>(sign.size())); };
  const auto is = [&](std::string_view sign) {
    return message.startsWith(QLatin1String(sign.data(), static_cast<qsizetype>(sign.size())));
  };
  using namespace function_failure;
  if (is(kTooWide)) return {Kind::TooWide, QStringLiteral("%1 的内容太长。").arg(behind(kTooWide))};
  if (is(kNoNumber)) return {Kind::TypeMismatch, QStringLiteral("这里必须是数值，不能是“%1”。").arg(behind(kNoNumber))};
  if (is(kArithmetic)) {
    const bool zero = behind(kArithmetic) == QLatin1String("division by zero");
    return {Kind::Arithmetic, zero ? QStringLiteral("除数不能为零。") : QStringLiteral("数值超出范围。")};
  }
  return {Kind::Other, {}};
}

Reason statementReason(int code, const QString& message) {
  if (Reason reason = functionReason(message); !reason.text.isEmpty()) return reason;
  switch (code & 0xff) {
    case SQLITE_CONSTRAINT:
      return constraintReason(code, message);
    case SQLITE_INTERRUPT:
      return {Kind::Other, QStringLiteral("操作已取消。")};
    case SQLITE_TOOBIG:
      return {Kind::Other, QStringLiteral("内容太大，数据库不能保存。")};
    case SQLITE_MISMATCH:
      return {Kind::TypeMismatch, QStringLiteral("数据类型不符。")};
    default:
      break;
  }
  if (message.startsWith(QLatin1String("no such table")) || message.startsWith(QLatin1String("no such column")))
    return {Kind::UnknownName, QStringLiteral("数据库中没有 %1。").arg(behindColon(message))};
  if (message.contains(QLatin1String("already exists")))
    return {Kind::Constraint, QStringLiteral("数据库对象已存在：%1").arg(message)};
  if (message == QLatin1String("integer overflow")) return {Kind::Arithmetic, QStringLiteral("数值超出范围。")};
  return {Kind::Other, QStringLiteral("数据库错误：%1").arg(message)};
}

}  // namespace failure_detail

QString fileNote(const QString& file, bool essential) {
  if (file.isEmpty() || (!essential && file.contains(QLatin1String("jxc.mdb"), Qt::CaseInsensitive))) return {};
  return QStringLiteral("文件：") + QDir::toNativeSeparators(file);
}

QString diskReason(int error) {
  switch (error) {
    case ENOENT:
      return QStringLiteral("目录不存在。");
    case EACCES:
    case EPERM:
      return QStringLiteral("没有写入权限。");
    case EROFS:
      return QStringLiteral("磁盘是只读的。");
    case ENOSPC:
    case EDQUOT:
      return QStringLiteral("磁盘空间已满。");
    default:
      return QStringLiteral("磁盘出错（代码 %1）。").arg(error);
  }
}

DbError cannotOpen(const FileRole& role, const QString& reason, DbError::Kind kind) {
  const QString subject =
      role.essential ? QStringLiteral("帐套数据库（jxc.mdb）打不开：") : QStringLiteral("数据库打不开：");
  return DbError(kind, subject + reason + fileNote(role.file, role.essential));
}

DbError cannotReach(const FileRole& role, const QString& reason, DbError::Kind kind) {
  const QString subject = role.essential ? QStringLiteral("帐套打不开：") : QStringLiteral("数据库打不开：");
  return DbError(kind, subject + reason + fileNote(role.file, false));
}

DbError cannotOpen(const FileRole& role, int code) {
  using namespace failure_detail;
  const Reason reason = fileReason(code);
  if (destroysFile(code)) return cannotOpen(role, reason.text, reason.kind);
  if (!reason.text.isEmpty()) return cannotReach(role, reason.text, reason.kind);
  return cannotOpen(role, QStringLiteral("数据库不能读取（代码 %1）。").arg(code));
}

DbError statementFailed(const FileRole& role, int code, const char* nativeMessage, std::string_view statement) {
  using namespace failure_detail;
  if (destroysFile(code)) {
    const DbError error = cannotOpen(role, code);
    return DbError(error.kind(), error.message(), std::string(statement));
  }
  Reason reason = fileReason(code);
  if (reason.text.isEmpty()) reason = statementReason(code, QString::fromUtf8(nativeMessage));
  return DbError(reason.kind, reason.text, std::string(statement));
}

}  // namespace jxc::sqlite
