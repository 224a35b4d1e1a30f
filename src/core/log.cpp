#include "core/log.h"

#include "core/backup.h"
#include "core/clock.h"
#include "core/schema/schema.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/posting.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <optional>

namespace jxc {
namespace log_detail {

constexpr int kNoteWidth = 200;
constexpr int kRowsAtOnce = 10000;
constexpr char16_t kLastHash[] = u"末行校验值";
constexpr int kHashLength = 64;

/// Of the writer's transaction: on a server, too, one writes at a time, and so no two rows follow the same one.
void append(Database& database, const QString& text) {
  // A zero character, which a barcode reader may send, is kept by no server: the hash is of what will be read.
  QString note = QString(text).remove(QChar(0)).left(kNoteWidth);
  if (!note.isEmpty() && note.back().isHighSurrogate()) note.chop(1);
  const QString time = clock::stamp();
  const QString& name = session().a_name;
  const QString hash = logHash(lastLogHash(database), time, name, note);
  const std::array<Value, 4> row{Value(time), Value(name), Value(note), Value(hash)};
  postStatement(database, "insert into jxc_log (log_time,a_name,log_note,log_hash) values (?,?,?,?)", row);
  const std::array<Value, 1> last{Value(hash)};
  postStatement(database, "update jxc_logchain set lc_hash=?", last);
}

/// Calls `take` with the rows in their order up to the row `end`, a handful at a time.
template <class Take>
void eachRow(Database& database, std::string_view columns, std::int64_t end, Take take) {
  const std::string sql = "select top " + std::to_string(kRowsAtOnce) + " id," + std::string(columns) +
                          " from jxc_log where id>? and id<=? order by id";
  std::int64_t last = database.lookup("select min(id) from jxc_log").integer() - 1;
  for (;;) {
    const std::array<Value, 2> range{Value(static_cast<long long>(last)), Value(static_cast<long long>(end))};
    const RowSet rows = database.select(std::string_view(sql), range);
    for (const Row row : rows)
      take(row);
    if (rows.rowCount() < kRowsAtOnce) return;
    last = rows.integer(rows.rowCount() - 1, 0);
  }
}

QString cell(QString text) {
  return u'"' + text.replace(u'"', u"\"\""_qs) + u'"';
}

/// The last of the rows that are no younger than `until`; empty: of all. Where a clock went back, an older row behind a
/// younger one stays: the chain has no holes.
std::int64_t lastRow(Database& database, const QString& until) {
  if (!until.isEmpty()) {
    const std::array<Value, 1> moment{Value(until)};
    const std::int64_t younger = database.lookup("select min(id) from jxc_log where log_time>?", moment).integer();
    if (younger != 0) {
      const std::array<Value, 1> before{Value(static_cast<long long>(younger))};
      return database.lookup("select max(id) from jxc_log where id<?", before).integer();
    }
  }
  return database.lookup("select max(id) from jxc_log").integer();
}

/// A table that every spreadsheet program opens; its owner's alone, like a backup.
QString writeRows(Database& database, std::int64_t end) {
  const QString file = QDir(backupFolder(database)).filePath(u"操作日志"_qs + backupStamp() + u".csv"_qs);
  QFile out(file);
  const auto fail = [&] {
    throw DbError(DbError::Kind::File, QStringLiteral("日志没有清除：不能另存到 %1：%2").arg(file, out.errorString()));
  };
  if (!out.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFileDevice::ReadOwner | QFileDevice::WriteOwner)) fail();
  out.write("\xEF\xBB\xBF");
  out.write(u"日志日期,操作员,日志内容,校验值\r\n"_qs.toUtf8());
  eachRow(database, "log_time,a_name,log_note,log_hash", end, [&](const Row& row) {
    out.write((cell(row.text("log_time")) + u',' + cell(row.text("a_name")) + u',' + cell(row.text("log_note")) + u',' +
               row.text("log_hash") + u"\r\n"_qs)
                  .toUtf8());
  });
  if (!out.flush() || out.error() != QFileDevice::NoError) {
    out.remove();
    fail();
  }
  return file;
}

}  // namespace log_detail

void writeLog(Database& database, const QString& text) {
  std::optional<Transaction> own;
  if (!database.inTransaction()) own.emplace(database);
  log_detail::append(database, text);
  if (own) own->commit();
}

void writeLog(const QString& text) {
  writeLog(accountDb(), text);
}

void logChange(std::string_view table, const QString& before, const QString& now) {
  const auto all = schema::tables();
  const auto entry = std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.name == table; });
  const QString word = entry == all.end() ? QString() : words(entry->purpose);
  if (before.isEmpty())
    writeLog(QStringLiteral("增加%1：%2").arg(word, now));
  else if (now.isEmpty())
    writeLog(QStringLiteral("删除%1：%2").arg(word, before));
  else if (before == now)
    writeLog(QStringLiteral("修改%1：%2").arg(word, now));
  else
    writeLog(QStringLiteral("修改%1：%2 → %3").arg(word, before, now));
}

std::optional<QString> takeLogRows(Database& database, const QString& why, const QString& until) {
  using namespace log_detail;
  Transaction transaction(database);
  const std::int64_t end = lastRow(database, until);
  const std::array<Value, 1> upTo{Value(static_cast<long long>(end))};
  const auto rows = database.lookup("select count(*) from jxc_log where id<=?", upTo).integer();
  if (rows == 0) return {};
  const QString file = writeRows(database, end);
  auto notTaken = qScopeGuard([&file] { QFile::remove(file); });  // the rows are still where they were
  const QString last =
      until.isEmpty() ? lastLogHash(database) : database.lookup("select log_hash from jxc_log where id=?", upTo).text();
  database.execute("delete from jxc_log where id<=?", upTo);
  append(database, QStringLiteral("%1，取出日志%2行，%3%4，另存为%5")
                       .arg(why)
                       .arg(rows)
                       .arg(QString::fromUtf16(kLastHash), last, file));
  transaction.commit();
  notTaken.dismiss();
  return file;
}

QString logHash(QStringView before, QStringView time, QStringView name, QStringView note) {
  // Marks between the parts: none of them can be read as the end of another.
  QCryptographicHash hash(QCryptographicHash::Sha256);
  for (const QStringView part : {before, time, name, note}) {
    hash.addData(part.toUtf8());
    hash.addData(QByteArrayView("\x1F", 1));
  }
  return QString::fromLatin1(hash.result().toHex());
}

std::optional<QString> hashOfTakenRows(QStringView note) {
  const QStringView mark(log_detail::kLastHash);
  const qsizetype at = note.indexOf(mark);
  if (at < 0) return {};
  const QStringView hash = note.mid(at + mark.size(), log_detail::kHashLength);
  return hash.size() == log_detail::kHashLength ? std::optional(hash.toString()) : std::nullopt;
}

QString lastLogHash(Database& database) {
  return database.lookup("select lc_hash from jxc_logchain").text();
}

void beginLogChain(Database& database) {
  Transaction transaction(database);
  createTable(database, "jxc_logchain");
  QString last;
  log_detail::eachRow(database, "log_time,a_name,log_note", log_detail::lastRow(database, {}), [&](const Row& row) {
    last = logHash(last, row.text("log_time"), row.text("a_name"), row.text("log_note"));
    const std::array<Value, 2> values{Value(last), row.value("id")};
    postStatement(database, "update jxc_log set log_hash=? where id=?", values);
  });
  const std::array<Value, 1> values{Value(last)};
  database.execute("update jxc_logchain set lc_hash=?", values);
  transaction.commit();
}

}  // namespace jxc
