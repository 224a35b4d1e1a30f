#include "core/verified_copy.h"

#include "core/account_copy.h"
#include "engine/new_file.h"
#include "engine/server.h"
#include "engine/waiting.h"
#include "platform/machine.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace jxc {
namespace verified_copy_detail {

constexpr int percentOfCopying = 95;   // the sum takes the rest
constexpr int percentOfFetching = 70;  // of a set on a server; its file is checked in the rest
constexpr qint64 pieceBytes = 1 << 20;

struct Stopped {};

DbError notWritten(const QString& reason) {
  return DbError(DbError::Kind::File, QStringLiteral("备份文件没有写成：") + reason);
}

/// A part of the work as a part of the whole.
CopyReport part(const CopyReport& report, int from, int to) {
  return [&report, from, to](int percent) { return !report || report(from + (to - from) * percent / 100); };
}

/// Empty when `report` stopped it or the file cannot be read.
QByteArray sumOf(const QString& name, const CopyReport& report) {
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return {};
  QCryptographicHash hash(QCryptographicHash::Blake2b_256);
  QByteArray piece(pieceBytes, Qt::Uninitialized);
  const qint64 size = std::max<qint64>(file.size(), 1);
  for (qint64 at = 0;;) {
    const qint64 read = file.read(piece.data(), piece.size());
    if (read < 0) return {};
    if (read == 0) return hash.result().toHex();
    hash.addData(QByteArrayView(piece.constData(), read));
    at += read;
    if (report && !report(static_cast<int>(std::min<qint64>(99, 100 * at / size)))) return {};
  }
}

/// The sum of what stood there is not that of what comes; it comes back when nothing does.
class SumBefore {
 public:
  explicit SumBefore(QString name) : name_(std::move(name)) {
    QFile file(name_);
    if (file.open(QIODevice::ReadOnly)) content_ = file.readAll();
    file.close();
    QFile::remove(name_);
  }
  ~SumBefore() {
    if (content_.isEmpty()) return;
    QFile file(name_);
    if (file.open(QIODevice::WriteOnly)) file.write(content_);
  }
  SumBefore(const SumBefore&) = delete;
  SumBefore& operator=(const SumBefore&) = delete;
  void forget() { content_.clear(); }

 private:
  QString name_;
  QByteArray content_;
};

/// A copy without its sum is no worse for being read: a disk that is full by now takes nothing back.
void keepSum(const QString& file, const QByteArray& sum) {
  QSaveFile out(sumFileOf(file));
  if (sum.isEmpty() || !out.open(QIODevice::WriteOnly)) return;
  out.write(sum + "  " + QFile::encodeName(QFileInfo(file).fileName()) + '\n');
  out.setPermissions(QFile::permissions(file));
  out.commit();
}

/// The tables of a server as an account file, which is then copied and checked as every other one.
bool copyFromServer(Database& server, const QString& file, const CopyReport& report) {
  // Like the copy that follows, so that a later one sweeps away what a killed one left.
  const NewFile fetched(file + u'0', [](int error) { throw notWritten(QString::fromLocal8Bit(std::strerror(error))); });
  const std::unique_ptr<Database> beside = openSqlite(fetched.name(), {.create = true, .essential = false});
  try {
    const QStringList differences = copyAccountSet(server, *beside, [&](const CopyProgress& done) {
      const auto total = std::max<std::int64_t>(done.totalRows, 1);
      if (report && !report(static_cast<int>(percentOfFetching * done.rows / total))) throw Stopped();
    });
    if (!differences.isEmpty())
      throw notWritten(QStringLiteral("读回来的数据和服务器上的不符：") + differences.mid(0, 2).join(u'；'));
  } catch (const Stopped&) {
    return false;
  }
  bool goesOn = true;
  beside->backupTo(file, [&](int percent) {
    goesOn = part(report, percentOfFetching, 100)(percent) || percent >= 100;  // it stands there by then
    return goesOn;
  });
  return goesOn;
}

/// In whatever thread, over a connection that is free for it.
bool copyNow(Database& set, const QString& file, const CopyReport& report, Beside beside) {
  const LongWork longWork;
  SumBefore before(sumFileOf(file));
  const CopyReport copying = part(report, 0, percentOfCopying);
  bool isMade = true;
  if (isOnServer(set))
    isMade = copyFromServer(set, file, copying);
  else
    set.backupTo(file, [&](int percent) {
      isMade = copying(percent) || percent >= 100;
      return isMade;
    });
  if (!isMade) return false;
  before.forget();
  if (beside == Beside::Sum) keepSum(file, sumOf(file, {}));
  if (report) report(100);
  return true;
}

void requireNoTransaction(const Database& set) {
  if (set.inTransaction()) throw DbError(DbError::Kind::Other, QStringLiteral("操作还没有完成，现在不能备份。"));
}

}  // namespace verified_copy_detail

VerifiedCopy::VerifiedCopy(Database& set, const QString& file, Beside beside) : file_(file) {
  using verified_copy_detail::copyNow;
  verified_copy_detail::requireNoTransaction(set);
  if (Database::OpenReader open = set.readerOpener())
    work_ = std::make_unique<WorkBehind>([this, beside, open = std::move(open)](const CopyReport& report) {
      giveWayToOthers();  // stations on this machine post meanwhile
      const std::unique_ptr<Database> own = open();
      isMade_ = copyNow(*own, file_, report, beside);
    });
  else
    isMade_ = copyNow(set, file_, {}, beside);
}

void VerifiedCopy::stop() {
  if (work_) work_->stop();
}

bool VerifiedCopy::result(const CopyReport& report) {
  if (work_) work_->result(report);
  return isMade_;
}

bool makeVerifiedCopy(Database& set, const QString& file, const CopyReport& report, Beside beside) {
  using namespace verified_copy_detail;
  requireNoTransaction(set);
  if (!set.readerOpener()) return copyNow(set, file, report, beside);
  const bool isMade = VerifiedCopy(set, file, beside).result(report);
  if (isMade && report) report(100);
  return isMade;
}

QString sumFileOf(const QString& file) {
  return file + QStringLiteral(".sum");
}

SumState checkSum(const QString& file, const CopyReport& report) {
  QFile kept(sumFileOf(file));
  if (kept.size() > verified_copy_detail::pieceBytes || !kept.open(QIODevice::ReadOnly)) return SumState::Unknown;
  const QByteArray sum = kept.readAll().split(' ').first().trimmed();
  if (sum.isEmpty()) return SumState::Unknown;
  const QByteArray now = verified_copy_detail::sumOf(file, report);
  if (now.isEmpty()) return SumState::Unknown;
  return now == sum ? SumState::Matches : SumState::Differs;
}

}  // namespace jxc
