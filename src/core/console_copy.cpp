#include "core/console_copy.h"

#include "core/account_copy.h"
#include "core/account_place.h"
#include "core/clock.h"
#include "core/console_admission.h"
#include "core/schema/schema.h"
#include "core/set_files.h"
#include "engine/bulk.h"
#include "engine/file_use.h"
#include "engine/server.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ostream>

namespace jxc {
namespace console_copy_detail {

void requireUnused(const QString& file) {
  if (isAccountFileInUse(file))
    throw ConsoleRefusal(QStringLiteral("帐套正在使用，请先退出使用它的所有窗口和程序：") + file);
}

/// The set that was there stays, with the log that a crash may have left: nobody can be sure that it is of no use any
/// more, and its log must not be played into the new one. It goes back when the new one does not come into its place.
void takePlace(const QString& beside, const QString& file) {
  requireUnused(file);
  const QString old = file + QStringLiteral(".old-") + clock::now().toString(QStringLiteral("yyyyMMdd-HHmmss"));
  moveSetFile(file, old);
  if (std::rename(QFile::encodeName(beside).constData(), QFile::encodeName(file).constData()) == 0) return;
  const QString why = QString::fromLocal8Bit(std::strerror(errno));
  try {
    moveSetFile(old, file);
  } catch (const DbError& error) {
    throw ConsoleRefusal(
        QStringLiteral("不能写入帐套文件 %1，原来的帐套现在叫 %2，请把它改回原名：%3").arg(file, old, error.message()));
  }
  throw ConsoleRefusal(QStringLiteral("不能写入帐套文件 %1：%2").arg(file, why));
}

void tellProgress(std::ostream& out, const CopyProgress& progress) {
  out << '\r' << progress.rows << " / " << progress.totalRows << "  " << progress.table.toStdString() << "        "
      << std::flush;
}

}  // namespace console_copy_detail

QString consoleServer(const QString& place) {
  return isServerAddress(place) ? place : addressIn(place);
}

void createOnServer(const QString& address, bool force) {
  const std::unique_ptr<Database> database = openPostgres(address, {.create = true});
  if (!force && !bulkOf(*database).storedTables().empty())
    throw ConsoleRefusal(QStringLiteral("服务器上的数据库里已经有数据表，加 --force 才会重建（原有数据将全部丢失）"));
  createAllTables(*database);
}

void makeDatabaseFile(const QString& file, const std::function<void(const QString& beside)>& fill) {
  using namespace console_copy_detail;
  refuseNetworkShare(file);
  if (QFileInfo(file).isDir()) throw ConsoleRefusal(QStringLiteral("帐套文件的位置是一个文件夹，没有改动它：") + file);
  requireUnused(file);
  const QString beside = unfinishedAtConsole(file);
  removeSetFile(beside);
  const bool wasThere = QFileInfo::exists(file);
  try {
    fill(beside);
    if (!wasThere && QFileInfo::exists(file))
      throw ConsoleRefusal(QStringLiteral("另一个程序刚才建立了帐套文件，没有改动它：") + file);
    takePlace(beside, file);
  } catch (...) {
    removeSetFile(beside);
    throw;
  }
}

int copyCommand(Console& console, ConsoleWords words) {
  QStringList places;
  bool quiet = false;
  while (!words.isEmpty()) {
    const QString word = words.take();
    if (word == u"--quiet")
      quiet = true;
    else if (places.size() < 2 && !word.startsWith(u'-'))
      places << word;
    else
      throw unknownConsoleWord(word);
  }
  if (places.size() < 2) throw ConsoleMisuse(QStringLiteral("copy 后面要写来源和目标"));
  const QString server = consoleServer(places[1]);
  if (server.isEmpty() && QFileInfo::exists(places[1]))
    throw ConsoleRefusal(QStringLiteral("目标文件已经存在：") + places[1]);
  Console source = console;
  source.file = places[0];
  const std::unique_ptr<Database> from = openConsoleAccount(source);
  const auto fill = [&](Database& to) {
    const QStringList differences = copyAccountSet(*from, to, [&](const CopyProgress& progress) {
      if (!quiet) console_copy_detail::tellProgress(console.streams.out, progress);
    });
    if (!differences.isEmpty())
      throw ConsoleRefusal(QStringLiteral("复制后的数据和原来的不符，没有保留：\n") + differences.join(u'\n'));
  };
  if (server.isEmpty())
    makeDatabaseFile(places[1], [&](const QString& beside) { fill(*openSqlite(beside, {.create = true})); });
  else
    fill(*openPostgres(server, {.create = true}));
  if (!quiet) console.streams.out << '\n';
  console.streams.out << QStringLiteral("复制完成，每个表的行数和合计都相符。\n").toStdString();
  return 0;
}

}  // namespace jxc
