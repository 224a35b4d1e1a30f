#include "engine/sqlite/integrity.h"

#include "engine/sqlite/native.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <vector>

namespace jxc::sqlite {
namespace integrity_detail {

constexpr int mostPlaces = 5;                // of damage that are told
constexpr int pieceBytes = 1 << 20;          // read at once
constexpr int stepsBetweenReports = 100000;  // of SQLite's machine: some hundredths of a second
// Reading the file takes about so much of the whole time, when it comes from the disk.
constexpr int percentOfReading = 30;

/// The one who waits, as a C interface can call him: what he throws is kept until its call has come back.
class Reporter {
 public:
  Reporter(sqlite3* connection, const std::function<bool(int percent)>& progress, double expectedSteps)
      : connection_(connection), progress_(progress), expectedSteps_(std::max(expectedSteps, 1.0)) {
    if (progress_) sqlite3_progress_handler(connection_, stepsBetweenReports, &Reporter::stepped, this);
  }
  ~Reporter() { sqlite3_progress_handler(connection_, 0, nullptr, nullptr); }
  Reporter(const Reporter&) = delete;
  Reporter& operator=(const Reporter&) = delete;

  /// Whether it goes on.
  bool tell(int percent) {
    if (!progress_ || stopped_) return !stopped_;
    try {
      stopped_ = !progress_(percent);
    } catch (...) {
      thrown_ = std::current_exception();
      stopped_ = true;
    }
    return !stopped_;
  }
  bool isStopped() const {
    if (thrown_) std::rethrow_exception(thrown_);
    return stopped_;
  }

 private:
  static int stepped(void* self) {
    auto* const reporter = static_cast<Reporter*>(self);
    reporter->steps_ += stepsBetweenReports;
    const double share = std::min(1.0, reporter->steps_ / reporter->expectedSteps_);
    return reporter->tell(percentOfReading + static_cast<int>(share * (99 - percentOfReading))) ? 0 : 1;
  }

  sqlite3* connection_;
  const std::function<bool(int percent)>& progress_;
  double expectedSteps_, steps_ = 0;
  bool stopped_ = false;
  std::exception_ptr thrown_;
};

QByteArray quoted(QByteArray name) {
  return '"' + name.replace('"', "\"\"") + '"';
}

QByteArray text(sqlite3_stmt* statement, int column) {
  return reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
}

double number(sqlite3* connection, const QByteArray& sql) {
  sqlite3_stmt* raw = nullptr;
  sqlite3_prepare_v2(connection, sql.constData(), -1, &raw, nullptr);
  const StatementHandle statement(raw);
  return raw != nullptr && sqlite3_step(raw) == SQLITE_ROW ? sqlite3_column_double(raw, 0) : 0;
}

/// How many steps of SQLite's machine the comparison takes: some for each row, some for each entry of an index.
double stepsToCome(sqlite3* connection) {
  constexpr double stepsOfRow = 20, stepsOfEntry = 10;
  sqlite3_stmt* raw = nullptr;
  sqlite3_prepare_v2(connection,
                     "select name,(select count(*) from sqlite_schema i where i.type='index' and i.tbl_name=t.name)"
                     " from sqlite_schema t where type='table' and rootpage>0 and sql not like '%without rowid%'",
                     -1, &raw, nullptr);
  const StatementHandle tables(raw);
  double steps = 0;
  while (raw != nullptr && sqlite3_step(raw) == SQLITE_ROW) {
    const double rows = number(connection, "select max(_rowid_) from " + quoted(text(raw, 0)));
    steps += rows * (stepsOfRow + stepsOfEntry * sqlite3_column_int(raw, 1));
  }
  return steps;
}

/// From the first byte to the last, through SQLite's own descriptor: another one, once closed, would take this
/// process's locks on the file with it. What follows finds the pages in memory.
void readThrough(sqlite3* connection, Reporter& reporter, StorageCheck& check) {
  sqlite3_file* file = nullptr;
  sqlite3_int64 size = 0;
  if (sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
      file->pMethods == nullptr || file->pMethods->xFileSize(file, &size) != SQLITE_OK)
    return;
  std::vector<char> piece(pieceBytes);
  for (sqlite3_int64 at = 0; at < size; at += pieceBytes) {
    if (!reporter.tell(static_cast<int>(percentOfReading * at / size))) return;
    const int code = file->pMethods->xRead(file, piece.data(), pieceBytes, at);
    if (code == SQLITE_OK || code == SQLITE_IOERR_SHORT_READ) continue;
    check.damage << QStringLiteral("第 %1 字节起读不出来（代码 %2）").arg(at).arg(code);
    if (check.damage.size() >= mostPlaces) return;
  }
}

void compare(sqlite3* connection, const Reporter& reporter, StorageCheck& check) {
  sqlite3_stmt* raw = nullptr;
  const QByteArray sql = "pragma integrity_check(" + QByteArray::number(mostPlaces) + ")";
  int code = sqlite3_prepare_v2(connection, sql.constData(), -1, &raw, nullptr);
  const StatementHandle statement(raw);
  while (code == SQLITE_OK || code == SQLITE_ROW) {
    code = sqlite3_step(raw);
    if (code != SQLITE_ROW) break;
    const QString line = QString::fromUtf8(text(raw, 0));
    if (line != u"ok") check.damage += line.split(u'\n').mid(0, mostPlaces);
  }
  if (code == SQLITE_DONE || reporter.isStopped()) return;
  // Short memory or another station say nothing of the file.
  if (const int kind = code & 0xff; kind != SQLITE_CORRUPT && kind != SQLITE_NOTADB && kind != SQLITE_IOERR)
    throw statementFailed({}, code, sqlite3_errmsg(connection), "integrity_check");
  check.damage << QString::fromUtf8(sqlite3_errmsg(connection));
}

/// Letters of ASCII and no zero among them, as codes, dates and most of what is empty are: seen eight at a time.
bool isPlain(const unsigned char* bytes, int count) {
  constexpr std::uint64_t high = 0x8080808080808080, low = 0x0101010101010101;
  for (; count >= 8; bytes += 8, count -= 8) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, bytes, 8);
    if (((eight | (eight - low)) & high) != 0) return false;  // also where a byte is zero
  }
  for (; count > 0; ++bytes, --count)
    if (*bytes == 0 || *bytes >= 0x80) return false;
  return true;
}

/// Whether each of its arguments that is a text can have been written by this program. A sector that came back as zeros
/// or as noise inside a long text breaks no page. A single zero character was typed by a barcode reader.
void isSoundText(sqlite3_context* context, int count, sqlite3_value** values) {
  bool isSound = true;
  for (int i = 0; isSound && i < count; ++i) {
    if (sqlite3_value_type(values[i]) != SQLITE_TEXT) continue;
    const unsigned char* const bytes = sqlite3_value_text(values[i]);
    const int length = sqlite3_value_bytes(values[i]);
    if (isPlain(bytes, length)) continue;
    const QByteArrayView utf8(bytes, length);
    isSound = utf8.isValidUtf8() && !utf8.contains(QByteArrayView("\0\0", 2));
  }
  sqlite3_result_int(context, isSound ? 1 : 0);
}

void readTexts(sqlite3* connection, const Reporter& reporter, StorageCheck& check) {
  sqlite3_create_function_v2(connection, "jxc_sound", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr, isSoundText,
                             nullptr, nullptr, nullptr);
  sqlite3_stmt* raw = nullptr;
  sqlite3_prepare_v2(
      connection,
      "select t.name,group_concat('\"'||replace(c.name,'\"','\"\"')||'\"') from sqlite_schema t,"
      "pragma_table_info(t.name) c where t.type='table' and t.rootpage>0 and"
      " (c.type like '%char%' or c.type like '%text%') and t.sql not like '%without rowid%' group by t.name",
      -1, &raw, nullptr);
  const StatementHandle tables(raw);
  while (raw != nullptr && !reporter.isStopped() && sqlite3_step(raw) == SQLITE_ROW) {
    const QByteArray table = text(raw, 0);
    sqlite3_stmt* rawRows = nullptr;
    sqlite3_prepare_v2(
        connection,
        "select _rowid_ from " + quoted(table) + " not indexed where jxc_sound(" + text(raw, 1) + ")=0 limit 1", -1,
        &rawRows, nullptr);
    const StatementHandle rows(rawRows);
    if (rawRows != nullptr && sqlite3_step(rawRows) == SQLITE_ROW)
      check.damage << QStringLiteral("%1 中 id=%2 的文字读不通")
                          .arg(QString::fromUtf8(table))
                          .arg(sqlite3_column_int64(rawRows, 0));
    if (check.damage.size() >= mostPlaces) return;
  }
}

}  // namespace integrity_detail

StorageCheck checkIntegrity(sqlite3* connection, const std::function<bool(int percent)>& progress) {
  using namespace integrity_detail;
  StorageCheck check;
  const char* const file = sqlite3_db_filename(connection, "main");
  if (file == nullptr || *file == '\0') return check;
  check.file = QFile::decodeName(file);
  Reporter reporter(connection, progress, progress ? stepsToCome(connection) : 0);
  readThrough(connection, reporter, check);
  if (!reporter.isStopped()) compare(connection, reporter, check);
  if (!reporter.isStopped() && check.damage.isEmpty()) readTexts(connection, reporter, check);
  check.finished = !reporter.isStopped();
  return check;
}

}  // namespace jxc::sqlite
