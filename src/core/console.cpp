#include "core/console.h"

#include "core/account_place.h"
#include "core/at_work.h"
#include "core/backup.h"
#include "core/console_admission.h"
#include "core/console_copy.h"
#include "core/log.h"
#include "core/schema/schema.h"
#include "core/startup.h"
#include "core/statement_script.h"
#include "core/verified_copy.h"
#include "engine/server.h"
#include "engine/transaction.h"
#include "engine/waiting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <istream>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace jxc {
namespace console_detail {

constexpr int done = 0;
constexpr int failed = 1;
constexpr int misused = 2;

/// Of a command that may write, until its end.
std::shared_ptr<ConsoleAtWork>& atWork() {
  static std::shared_ptr<ConsoleAtWork> own;
  return own;
}

// ---- create

int create(Console& console, ConsoleWords words) {
  bool force = false;
  QString station;
  while (!words.isEmpty()) {
    const QString word = words.take();
    if (word == u"--force") {
      force = true;
    } else if (word == u"--station") {
      station = words.takeValue(word);
    } else {
      throw unknownConsoleWord(word);
    }
  }
  if (const QString server = consoleServer(console.file); !server.isEmpty()) {
    createOnServer(server, force);
    if (!station.isEmpty()) admitStation(server, station, kLogTables);
    return done;
  }
  if (!station.isEmpty()) throw ConsoleMisuse(QStringLiteral("--station 只用于服务器上的帐套"));
  makeConsoleAccount(console, force, [](const QString& file) {
    SqliteOptions options;
    options.create = true;
    createAllTables(*openSqlite(file, options));
  });
  return done;
}

int station(Console& console, ConsoleWords words) {
  const QString user = words.isEmpty() ? QString() : words.take();
  if (user.isEmpty() || user.startsWith(u'-')) throw ConsoleMisuse(QStringLiteral("station 后面缺少服务器用户名"));
  if (!words.isEmpty()) throw unknownConsoleWord(words.take());
  const QString server = consoleServer(console.file);
  if (server.isEmpty()) throw ConsoleMisuse(QStringLiteral("station 只用于服务器上的帐套"));
  openConsoleAccount(console);  // tells what is no account set
  admitStation(server, user, kLogTables);
  return done;
}

// ---- sql

/// A script and what it is called in messages.
struct Source {
  QString name;
  std::string text;
};

Source readSource(const QString& file, std::istream& in) {
  if (file == u"-") return {QStringLiteral("-"), std::string(std::istreambuf_iterator<char>(in), {})};
  QFile source(file);
  if (!source.open(QIODevice::ReadOnly)) {
    throw ConsoleRefusal(QStringLiteral("不能读取 %1：%2").arg(file, source.errorString()));
  }
  std::string text = source.readAll().toStdString();
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);  // editors of another system put a mark in front
  return {file, std::move(text)};
}

/// A value on one line: what would break the line or the columns is written as \n, \r, \t.
std::string cellText(const RowSet& rows, int row, int column) {
  if (rows.isNull(row, column)) return {};
  QString text = rows.text(row, column);
  text.replace(u'\t', QStringLiteral("\\t"))
      .replace(u'\n', QStringLiteral("\\n"))
      .replace(u'\r', QStringLiteral("\\r"));
  return text.toStdString();
}

void printRows(const RowSet& rows, std::ostream& out) {
  for (int column = 0; column < rows.columnCount(); ++column) {
    out << (column == 0 ? "" : "\t") << rows.columns()[static_cast<std::size_t>(column)];
  }
  out << '\n';
  for (int row = 0; row < rows.rowCount(); ++row) {
    for (int column = 0; column < rows.columnCount(); ++column) {
      out << (column == 0 ? "" : "\t") << cellText(rows, row, column);
    }
    out << '\n';
  }
}

void runStatement(Database& database, std::string_view text, bool checkOnly, std::ostream& out) {
  if (checkOnly) {
    database.check(text);
  } else if (givesRows(text)) {
    printRows(database.select(text), out);
  } else {
    database.execute(text);
  }
}

/// Statements that write are kept all or none. One that only reads takes no lock that another station could wait for.
int sql(Console& console, ConsoleWords words) {
  std::vector<Source> sources;
  bool checkOnly = false;
  while (!words.isEmpty()) {
    const QString word = words.take();
    if (word == u"-c") {
      sources.push_back({QStringLiteral("-c"), words.takeValue(word).toStdString()});
    } else if (word == u"-f") {
      sources.push_back(readSource(words.takeValue(word), console.streams.in));
    } else if (word == u"--check") {
      checkOnly = true;
    } else {
      throw unknownConsoleWord(word);
    }
  }
  if (sources.empty()) sources.push_back(readSource(QStringLiteral("-"), console.streams.in));

  const LongWork longWork;  // whoever types statements knows how long they take
  const std::unique_ptr<Database> database = openConsoleAccount(console);
  std::optional<Transaction> transaction;
  for (const Source& source : sources) {
    for (const ScriptStatement& statement : splitStatements(source.text)) {
      if (!checkOnly && !transaction && !givesRows(statement.text)) transaction.emplace(*database);
      try {
        runStatement(*database, statement.text, checkOnly, console.streams.out);
      } catch (const DbError& error) {
        const auto inside = static_cast<std::size_t>(std::max(error.position(), 0));
        const ScriptPosition position = positionIn(source.text, statement.offset + inside);
        console.streams.out.flush();
        console.streams.err << source.name.toStdString() << ':' << position.line << ':' << position.column << ": "
                            << error.what() << '\n'
                            << statement.text << '\n';
        return failed;
      }
    }
  }
  if (transaction) transaction->commit();
  return done;
}

// ---- upgrade, backup

/// An administrator works on several sets: which one it is belongs to a message that says nothing of it.
template <class Work>
auto naming(const QString& file, Work work) {
  try {
    return work();
  } catch (const DbError& failure) {
    if (isServerAddress(file) || failure.message().contains(QFileInfo(file).fileName())) throw;
    throw DbError(failure.kind(), failure.message() + QStringLiteral("文件：") + file);
  }
}

int upgrade(Console& console, ConsoleWords words) {
  if (!words.isEmpty()) throw unknownConsoleWord(words.take());
  const std::unique_ptr<Database> database = openConsoleAccount(console);
  if (const QString owner = ownerToAsk(*database); !owner.isEmpty())
    throw ConsoleRefusal(QStringLiteral("升级由帐套的所有者进行，请用服务器上的用户“%1”连接。").arg(owner));
  CopyBefore copyBefore;
  if (consoleServer(console.file).isEmpty())
    copyBefore = [&] {
      const QString copy = backupInto(QFileInfo(console.file).path(), *database);
      console.streams.out << QStringLiteral("升级前已备份到 %1\n").arg(copy).toStdString();
      return copy;
    };
  upgradeSchema(*database, copyBefore);
  return done;
}

int backup(Console& console, ConsoleWords words) {
  QString target;
  bool force = false;
  while (!words.isEmpty()) {
    const QString word = words.take();
    if (word == u"--force") {
      force = true;
    } else if (target.isEmpty() && !word.isEmpty() && !word.startsWith(u'-')) {
      target = word;
    } else {
      throw unknownConsoleWord(word);
    }
  }
  if (target.isEmpty()) throw ConsoleMisuse(QStringLiteral("backup 后面缺少文件名"));
  if (QFileInfo::exists(target) && !force) {
    throw ConsoleRefusal(QStringLiteral("备份文件已经存在，加 --force 才会覆盖：") + target);
  }
  const std::unique_ptr<Database> database = openConsoleAccount(console, ConsoleAccess::OwnerToo);
  naming(console.file, [&] { makeVerifiedCopy(*database, target); });
  return done;
}

// ---- words

constexpr std::array commands = {
    ConsoleCommand{
        u"create",
        u"jxcctl [--home 目录 | --db 文件] create [--force] [--station 用户]\n"
        u"  新建帐套：建立全部数据表和初始数据。文件已经存在时拒绝，除非加 --force，那时原来的文件改名保留。\n"
        u"  --station 在服务器上同时为工作站准备一个用户，和 station 命令所做的一样。\n",
        create},
    ConsoleCommand{u"station",
                   u"jxcctl [--db 连接地址] station 用户\n"
                   u"  让服务器上的一个用户作为工作站使用帐套：能读写数据，不能建立和删除数据表，日志只能增加。\n"
                   u"  用户不存在时建立，密码由服务器管理员另外设置；其他用户不再能连接这个数据库。\n",
                   station},
    ConsoleCommand{u"copy",
                   u"jxcctl copy 来源 目标 [--quiet]\n"
                   u"  把整个帐套从文件复制到 PostgreSQL 服务器，或者复制回文件，最后核对每个表的行数和合计。\n"
                   u"  来源和目标是帐套文件，或者服务器的连接地址（postgresql://用户@服务器/数据库）。\n"
                   u"  目标必须是空的数据库或不存在的文件；中途断开时目标里什么也不留，可以重新开始。\n",
                   copyCommand},
    ConsoleCommand{
        u"sql",
        u"jxcctl [--home 目录 | --db 文件] sql [-c 语句]… [-f 文件]… [--check]\n"
        u"  依次执行语句（Jet 语法），语句之间用分号隔开；没有 -c 和 -f 时从标准输入读取，-f - 也是标准输入。\n"
        u"  查询结果逐行输出，字段之间用制表符隔开，第一行是字段名，空值输出为空；字段内的制表符和换行写成 \\t \\n "
        u"\\r。\n"
        u"  遇到第一个错误就停止，写明位置，本次执行的全部修改都不保留。\n"
        u"  --check 只检查语句，不执行。\n",
        sql},
    ConsoleCommand{u"upgrade",
                   u"jxcctl [--home 目录 | --db 文件] upgrade\n"
                   u"  把旧版本的帐套升级到当前版本，和登录时所做的一样；升级之前在帐套文件旁边留一份备份。\n",
                   upgrade},
    ConsoleCommand{
        u"backup",
        u"jxcctl [--home 目录 | --db 文件] backup 备份文件 [--force]\n"
        u"  把帐套完整备份到一个文件，其他工作站正在使用时也可以。文件已经存在时拒绝，除非加 --force。\n"
        u"  帐套在服务器上时，备份同样是一个帐套文件。备份写好以后重新打开核对，旁边的 .sum 文件是它的校验和。\n",
        backup},
};

QString overview(std::span<const ConsoleCommand> more) {
  QString text = QStringLiteral("用法：\n");
  for (const std::span<const ConsoleCommand> each : {std::span<const ConsoleCommand>(commands), more})
    for (const ConsoleCommand& command : each)
      text += QString::fromUtf16(command.help);
  text += QStringLiteral(
      "\n  --home 目录  程序目录，帐套文件是其中的 data/jxc.mdb；不写时和主程序用同一个目录\n"
      "  --db 文件    直接指定帐套文件，或者服务器的连接地址（postgresql://用户@服务器/数据库）\n"
      "  --operator 名称  帐套有密码时，以哪个系统管理员的身份执行；不写时为内置的系统管理员\n"
      "  --password-fd 号  从这个文件描述符读一行密码；不写时在终端上输入。密码不能写在命令行里\n"
      "  --as-owner   帐套文件的所有者用 prove 和 backup 时不输入密码\n"
      "  --help       显示帮助；写在命令后面时只显示该命令的帮助\n"
      "返回值：0 完成，1 出错，2 命令写错。\n");
  return text;
}

bool isHelp(const QString& word) {
  return word == u"--help" || word == u"-h";
}

const ConsoleCommand& commandNamed(const QString& name, std::span<const ConsoleCommand> more) {
  for (const std::span<const ConsoleCommand> each : {std::span<const ConsoleCommand>(commands), more})
    for (const ConsoleCommand& command : each)
      if (name == QString::fromUtf16(command.name)) return command;
  throw unknownConsoleWord(name);
}

/// The options in front of the command, then the command.
int runWords(QStringList list, const QString& executableDirectory, ConsoleStreams streams,
             std::span<const ConsoleCommand> more) {
  ConsoleWords words(std::move(list));
  QString home;
  QString file;
  Console who{streams, {}, {}};
  while (!words.isEmpty()) {
    QString word = words.take();
    for (const char16_t* option : {u"--home=", u"--db=", u"--operator=", u"--password-fd="})
      if (word.startsWith(option)) words.splitOption(word);
    if (isHelp(word)) {
      streams.out << overview(more).toStdString();
      return done;
    }
    if (word == u"--home") {
      home = words.takeValue(word);
    } else if (word == u"--db") {
      file = words.takeValue(word);
    } else if (word == u"--operator") {
      who.operatorName = words.takeValue(word);
    } else if (word == u"--password-fd") {
      who.passwordDescriptor = words.takeNumber(word, 0, 1023);
    } else if (word == u"--as-owner") {
      who.isOwner = true;
    } else {
      const ConsoleCommand& command = commandNamed(word, more);
      QStringList rest;
      while (!words.isEmpty())
        rest << words.take();
      if (std::any_of(rest.cbegin(), rest.cend(), isHelp)) {
        streams.out << QString::fromUtf16(command.help).toStdString();
        return done;
      }
      if (!home.isEmpty() && !file.isEmpty()) throw ConsoleMisuse(QStringLiteral("--home 和 --db 只能写一个"));
      if (file.isEmpty()) {
        // As the program itself finds it, whose command line begins with its name.
        QStringList arguments{QString()};
        if (!home.isEmpty()) arguments << QStringLiteral("--home") << home;
        home = findProgramDirectory(arguments, executableDirectory);
        file = home + QStringLiteral("/data/jxc.mdb");
      }
      who.file = file;
      who.home = home;
      return command.run(who, ConsoleWords(rest));
    }
  }
  throw ConsoleMisuse(QStringLiteral("缺少命令"));
}

}  // namespace console_detail

int ConsoleWords::takeNumber(const QString& option, int least, int most) {
  bool fine = false;
  const int number = takeValue(option).toInt(&fine);
  if (!fine || number < least || number > most) {
    throw ConsoleMisuse(QStringLiteral("%1 后面应为 %2 到 %3 之间的整数").arg(option).arg(least).arg(most));
  }
  return number;
}

ConsoleMisuse unknownConsoleWord(const QString& word) {
  return ConsoleMisuse(QStringLiteral("不认识“%1”").arg(word));
}

std::unique_ptr<Database> openConsoleAccount(const Console& console, ConsoleAccess access) {
  if (!isServerAddress(console.file) && !QFileInfo::exists(console.file))
    throw ConsoleRefusal(QStringLiteral("帐套文件不存在：") + console.file);
  auto database = console_detail::naming(console.file, [&] { return openAccountPlace(console.file); });
  for (const QString& remark : database->openingRemarks())
    console.streams.err << "jxcctl: " << remark.toStdString() << '\n';
  admitToConsole(console, database, access);
  if (access == ConsoleAccess::Administrator)
    console_detail::atWork() = comeToWorkAtConsole(
        *database, [&](const QString& why) { console.streams.err << "jxcctl: " << why.toStdString() << std::endl; });
  return database;
}

void makeConsoleAccount(const Console& console, bool force, const std::function<void(const QString&)>& fill) {
  using namespace console_detail;
  if (QFileInfo::exists(console.file) && !force) {
    throw ConsoleRefusal(QStringLiteral("帐套文件已经存在，加 --force 才会重建（原来的文件改名保留）：") +
                         console.file);
  }
  if (!console.home.isEmpty()) setProgramDirectory(console.home);
  naming(console.file, [&] { makeDatabaseFile(console.file, fill); });
  if (console.home.isEmpty()) return;
  for (const QString& remark : ensureCatalogue())
    console.streams.err << "jxcctl: " << remark.toStdString() << '\n';
}

int runConsole(const QStringList& words, const QString& executableDirectory, ConsoleStreams streams,
               std::span<const ConsoleCommand> more) {
  using namespace console_detail;
  int status = failed;
  try {
    status = runWords(words, executableDirectory, streams, more);
  } catch (const ConsoleMisuse& misuse) {
    streams.err << "jxcctl: " << misuse.what() << '\n' << QStringLiteral("用 jxcctl --help 查看用法。\n").toStdString();
    status = misused;
  } catch (const std::exception& failure) {
    streams.err << "jxcctl: " << failure.what() << '\n';
  }
  atWork().reset();
  streams.out.flush();
  // A pipe that broke or a disk that is full has lost rows: that is no success.
  if (!streams.out && status == done) status = failed;
  return status;
}

}  // namespace jxc
