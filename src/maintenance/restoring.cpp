#include "maintenance/restoring.h"

#include "core/account_copy.h"
#include "core/account_place.h"
#include "core/at_work.h"
#include "core/backup.h"
#include "core/build_info.h"
#include "core/data_module.h"
#include "core/file_names.h"
#include "core/log.h"
#include "core/owner.h"
#include "core/program_directory.h"
#include "core/schema/schema.h"
#include "core/schema/upgrade.h"
#include "core/session_fields.h"
#include "core/statements.h"
#include "engine/bulk.h"
#include "engine/file_use.h"
#include "engine/new_file.h"
#include "engine/presence.h"
#include "engine/server.h"
#include "engine/waiting.h"
#include "stock/document_family.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace jxc {
namespace restoring_detail {

// Of the whole time until it is known what a backup holds.
constexpr int percentOfCopying = 25, percentOfCheck = 55, percentOfUpgrade = 60;
constexpr qint64 pieceBytes = 1 << 20;
constexpr qint64 headBytes = 32;

struct Stopped {};

DbError cannotRestore(const QString& reason) {
  return DbError(DbError::Kind::File, QStringLiteral("这个文件不能用来恢复：") + reason);
}

CopyReport part(const CopyReport& report, int from, int to) {
  return [report, from, to](int percent) { return !report || report(from + (to - from) * percent / 100); };
}

/// What its first bytes tell of a file, before it is copied.
void refuseOthers(const QString& name) {
  const QFileInfo info(name);
  if (!info.exists()) throw cannotRestore(QStringLiteral("文件不存在。"));
  if (info.isDir()) throw cannotRestore(QStringLiteral("这是一个文件夹。"));
  if (info.size() == 0) throw cannotRestore(QStringLiteral("文件是空的。"));
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly)) throw cannotRestore(file.errorString() + u'。');
  const QByteArray head = file.read(headBytes);
  file.close();
  if (head.mid(4).startsWith("Standard Jet DB") || head.mid(4).startsWith("Standard ACE DB"))
    throw cannotRestore(QStringLiteral("它是旧系统的 Access 数据库，不是本系统的备份。"));
  if (head.startsWith("PGDMP"))
    throw cannotRestore(QStringLiteral("它是数据库服务器的备份（pg_dump），请由服务器管理员用 pg_restore 恢复。"));
  if (!addressIn(name).isEmpty()) throw cannotRestore(QStringLiteral("里面只有服务器的连接地址，没有数据。"));
  if (!head.startsWith("SQLite format 3"))
    throw cannotRestore(QStringLiteral("它不是本系统的备份文件，或者开头已经损坏。"));
}

/// Asked of a file that is closed here again: another descriptor of the set in use, once closed, would take its locks.
void refuseOpenOnes(const QString& name) {
  if (isAccountFileInUse(name))
    throw cannotRestore(QStringLiteral("它正在使用。请选择备份文件，或者先关闭打开它的程序。"));
}

void copyBytes(const QString& from, const QString& to, const CopyReport& report) {
  QFile source(from), target(to);
  if (!source.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) throw cannotRestore(source.errorString() + u'。');
  if (!target.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) throw cannotRestore(target.errorString() + u'。');
  const qint64 size = std::max<qint64>(source.size(), 1);
  QByteArray piece(pieceBytes, Qt::Uninitialized);
  for (qint64 at = 0;;) {
    const qint64 read = source.read(piece.data(), piece.size());
    if (read < 0) throw cannotRestore(QStringLiteral("读到一半出错，磁盘可能已经损坏：") + source.errorString());
    if (read == 0) return;
    if (target.write(piece.constData(), read) != read)
      throw DbError(DbError::Kind::Full, QStringLiteral("程序目录里没有地方放备份的内容：") + target.errorString());
    at += read;
    if (report && !report(static_cast<int>(std::min<qint64>(99, 100 * at / size)))) throw Stopped();
  }
}

/// The first or the last of all documents by their dates.
QString documentAtEnd(Database& books, bool isLast) {
  QString found, key;
  for (const DocumentFamily& family : documentFamilies()) {
    const std::string date(family.date), number(family.number), order = isLast ? " desc" : "";
    const RowSet rows = books.select("select top 1 " + date + "," + number + " from " + std::string(family.head) +
                                     " where " + date + ">'' order by " + date + order + "," + number + order);
    if (rows.isEmpty()) continue;
    const QString words = rows.text(0, 0).left(10) + QStringLiteral("  ") + rows.text(0, 1);
    if (found.isEmpty() || (isLast ? words > found : words < found)) found = words;
  }
  return found;
}

}  // namespace restoring_detail

struct OpenedBackup::Beside {
  explicit Beside(const QString& name)
      : file(name, [](int error) {
          throw DbError(DbError::Kind::File,
                        QStringLiteral("程序目录里不能放备份的内容：") + QString::fromLocal8Bit(std::strerror(error)));
        }) {}
  NewFile file;  // never kept
};

OpenedBackup::~OpenedBackup() = default;

QString OpenedBackup::workFolder() {
  if (dataModule().isAccountOpen() && !isOnServer(accountDb()))
    if (const QString file = placeOf(accountDb()); !file.isEmpty()) return QFileInfo(file).path();
  const QString data = programPath(QStringLiteral("data"));
  return QFileInfo(data).isDir() ? data : QDir::tempPath();
}

std::unique_ptr<OpenedBackup> OpenedBackup::open(const QString& name, const CopyReport& report, For what,
                                                 const QString& folder) {
  using namespace restoring_detail;
  const LongWork longWork;
  refuseOpenOnes(name);
  refuseOthers(name);
  std::unique_ptr<OpenedBackup> opened(new OpenedBackup);
  OpenedBackup& backup = *opened;
  backup.file = name;
  try {
    backup.sum = checkSum(name, part(report, 0, percentOfCopying / 2));
    backup.beside_ =
        std::make_unique<Beside>(QDir(folder).filePath(what == For::Restore ? u"restore.mdb"_qs : u"rehearsal.mdb"_qs));
    const QString& beside = backup.beside_->file.name();
    copyBytes(name, beside, part(report, percentOfCopying / 2, percentOfCopying));
    // A plain copy of a set in use may have a log beside it.
    if (const QString log = name + QStringLiteral("-wal"); QFileInfo(log).size() > 0)
      copyBytes(log, beside + QStringLiteral("-wal"), {});
    backup.database_ = openSqlite(beside, {.essential = false});
  } catch (const Stopped&) {
    return nullptr;
  } catch (const DbError& error) {
    if (error.message().startsWith(QStringLiteral("这个文件不能"))) throw;
    throw cannotRestore(QString(error.message()).replace(backup.beside_ ? backup.beside_->file.name() : name, name));
  }
  Database& books = *backup.database_;
  const StorageCheck storage = books.checkStorage(part(report, percentOfCopying, percentOfCheck));
  if (!storage.finished) return nullptr;
  if (!storage.damage.isEmpty())
    throw cannotRestore(QStringLiteral("它已损坏：") + storage.damage.mid(0, 2).join(QStringLiteral("；")));
  if (!stands(books, "select cs_employdate from jxc_xtcs") || !stands(books, "select c_name from jxc_company"))
    throw cannotRestore(QStringLiteral("里面没有帐套的数据表。"));
  backup.schema = books.lookup("select cs_employdate from jxc_xtcs").text();
  if (backup.schema > QString::fromStdString(schema::newestStamp()))
    throw cannotRestore(QStringLiteral("它来自更新版本的程序（%1），请先更新本程序再恢复。").arg(backup.schema));
  backup.isOlder = !isSchemaCurrent(books);
  if (backup.isOlder) upgradeSchema(books);
  if (report && !report(percentOfUpgrade)) return nullptr;

  backup.shop = books.lookup("select c_name from jxc_company").text();
  backup.firstDocument = documentAtEnd(books, false);
  backup.lastDocument = documentAtEnd(books, true);
  for (const StoredTable& stored : bulkOf(books).storedTables())
    backup.rows += books.lookup("select count(*) from [" + stored.table.name + "]").integer();
  const Session before = what == For::Restore ? session() : Session{};
  const auto back = qScopeGuard([&] {
    if (what == For::Restore) session() = before;
  });
  if (what == For::Restore) readParameters(books);
  const CopyReport proving = part(report, percentOfUpgrade, 100);
  backup.proof = proof::prove(books, [&](int percent, const QString&) { return proving(std::min(percent, 99)); });
  if (!backup.proof.finished && backup.proof.wrong() == 0) return nullptr;
  backup.documents = backup.proof.documents;
  return opened;
}

QStringList OpenedBackup::words() const {
  QStringList lines{
      QStringLiteral("单位名称：") + (shop.isEmpty() ? QStringLiteral("（空）") : shop),
      QStringLiteral("第一张单据：") + (firstDocument.isEmpty() ? QStringLiteral("没有单据") : firstDocument),
      QStringLiteral("最后一张单据：") + (lastDocument.isEmpty() ? QStringLiteral("没有单据") : lastDocument),
      QStringLiteral("单据 %1 张，数据 %2 行").arg(documents).arg(rows)};
  lines << QStringLiteral("数据表版本：") +
               (isOlder
                    ? QStringLiteral("较旧（%1），恢复时升级").arg(schema.isEmpty() ? QStringLiteral("未升级") : schema)
                    : QStringLiteral("和本程序相同"));
  switch (sum) {
    case SumState::Matches:
      lines << QStringLiteral("校验和：和写成时相同");
      break;
    case SumState::Differs:
      lines << QStringLiteral("校验和：和写成时不同，文件被改动过或者磁盘有错");
      break;
    case SumState::Unknown:
      lines << QStringLiteral("校验和：旁边没有校验和文件");
      break;
  }
  lines << QStringLiteral("核对：") + (proof.isClean() ? QStringLiteral("数据相符") : proof.summary());
  return lines;
}

// ---- into the set in use

namespace restoring_detail {

bool isDamaged(Database& set) {
  try {
    return !set.checkStorage().damage.isEmpty();
  } catch (const DbError&) {
    return true;
  }
}

/// The present set beside the other backups. Nothing when it was stopped; whoever has a set that can no longer be
/// copied, since its own disk is dying, decides himself.
std::optional<QString> keepPresent(Database& set, const QString& called, Prompt& prompt,
                                   const RestoreReports& reports) {
  const QString folder = reports.folder.isEmpty() ? backupFolder(accountDb()) : reports.folder;
  const QString file =
      freeFileName(folder, asFileName(called) + QStringLiteral("(恢复前)") + backupStamp(), QStringLiteral(".DAT"));
  try {
    return makeVerifiedCopy(set, file, reports.keeping) ? std::optional(file) : std::nullopt;
  } catch (const DbError& error) {
    if (isOnServer(set) || !isDamaged(set)) throw;
    if (prompt.ask(QStringLiteral("现在的帐套不能另存：%1\r\n\r\n仍要恢复吗？恢复以后，现在的数据就没有了。")
                       .arg(error.message())))
      return QString();
    return {};
  }
}

/// What a restore brings besides the backup is written into the copy of it, so that all of it comes in one transaction.
/// Where nothing came, the copy is as it was, for the next attempt.
class BroughtWithIt {
 public:
  BroughtWithIt(OpenedBackup& backup, Database& set, const QString& kept)
      : books_(backup.database()), chain_(lastLogHash(books_)) {
    Transaction transaction(books_);
    // The backups are those of the place, not of the day that comes back, nor of the shop that it comes from.
    std::array<Value, 7> state;
    state.fill(Value(QString()));
    if (stands(set, "select bz_set from jxc_backupzk")) {
      const RowSet rows = set.select(
          "select top 1 bz_time,bz_file,bz_fail,bz_trytime,bz_tryfile,bz_tryfail,bz_set from jxc_backupzk order by id");
      for (std::size_t i = 0; i < state.size() && !rows.isEmpty(); ++i)
        state[i] = Value(rows.text(0, static_cast<int>(i)));
    }
    books_.execute(
        "update jxc_backupzk set bz_time=?,bz_file=?,bz_fail=?,bz_trytime=?,bz_tryfile=?,bz_tryfail=?,bz_set=?", state);
    logRestore(backup, kept);
    line_ = books_.lookup("select max(id) from jxc_log").integer();
    transaction.commit();
  }
  ~BroughtWithIt() {
    if (hasCome_) return;
    try {
      Transaction transaction(books_);
      const std::array<Value, 1> line{Value(static_cast<long long>(line_))}, chain{Value(chain_)};
      books_.execute("delete from jxc_log where id=?", line);
      books_.execute("update jxc_logchain set lc_hash=?", chain);
      transaction.commit();
    } catch (const DbError&) {
      // A copy that can no longer be written to is of no use to a next attempt either.
    }
  }
  BroughtWithIt(const BroughtWithIt&) = delete;
  BroughtWithIt& operator=(const BroughtWithIt&) = delete;
  void hasCome() { hasCome_ = true; }

 private:
  Database& books_;
  QString chain_;
  std::int64_t line_ = 0;
  bool hasCome_ = false;
};

}  // namespace restoring_detail

QString restoreFailure(const DbError& error) {
  const auto* const lost = dynamic_cast<const ConnectionLost*>(&error);
  if (lost != nullptr && lost->isUnknown()) return error.message();  // it may be kept, and nobody knows yet
  return QStringLiteral("没有恢复，帐套和原来一样。\r\n\r\n") + error.message();
}

void logRestore(OpenedBackup& backup, const QString& kept) {
  writeLog(
      backup.database(),
      QStringLiteral("恢复数据：%1%2")
          .arg(QFileInfo(backup.file).fileName(),
               kept.isEmpty() ? QString() : QStringLiteral("，原来的帐套另存为%1").arg(QFileInfo(kept).fileName())));
}

bool restoreBackup(OpenedBackup& backup, Database& set, const QString& called, Prompt& prompt,
                   const RestoreReports& reports) {
  using namespace restoring_detail;
  const auto alone = takeForOneself(set, AloneFor::Restore, prompt);
  if (!alone) return false;
  if (!prompt.ask(
          backup.words().join(QStringLiteral("\r\n")) +
          QStringLiteral("\r\n\r\n恢复以后，帐套“%1”现在的数据由这份备份代替；现在的帐套先另存为“(恢复前)”。\r\n\r\n"
                         "确定要恢复吗？")
              .arg(called)))
    return false;
  const auto kept = keepPresent(set, called, prompt, reports);
  if (!kept) return false;
  bool isDone = false;
  asOwnerOf(set, prompt, QStringLiteral("恢复数据"), [&](const std::unique_ptr<Database>& his) {
    BroughtWithIt brought(backup, set, *kept);
    isDone = replaceAccountSet(backup.database(), his ? *his : set, reports.writing);
    if (isDone) brought.hasCome();
  });
  return isDone;
}

bool restoreBackup(OpenedBackup& backup, Prompt& prompt, const RestoreReports& reports) {
  return restoreBackup(backup, accountDb(), QString::fromUtf16(build::accountName), prompt, reports);
}

}  // namespace jxc
