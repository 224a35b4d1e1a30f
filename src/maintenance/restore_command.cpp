#include "maintenance/restore_command.h"

#include "core/console_copy.h"
#include "core/data_module.h"
#include "core/session.h"
#include "core/statements.h"
#include "maintenance/restoring.h"

#include <QDir>
#include <QFileInfo>

#include <istream>
#include <ostream>
#include <string>

namespace jxc {
namespace restore_command_detail {

/// Writes what a rule says, and takes a line that begins with y or 是 for a yes.
class ConsolePrompt final : public Prompt {
 public:
  ConsolePrompt(ConsoleStreams streams, bool agrees) : streams_(streams), agrees_(agrees) {}
  void notice(const QString& text) override { streams_.err << "jxcctl: " << plain(text) << '\n'; }
  bool ask(const QString& text) override {
    streams_.out << plain(text) << (agrees_ ? "\n" : " (y/n) ") << std::flush;
    if (agrees_) return true;
    std::string line;
    std::getline(streams_.in, line);
    const QString answer = QString::fromStdString(line).trimmed().toLower();
    return answer.startsWith(u'y') || answer.startsWith(u'是');
  }
  Answer askOrCancel(const QString& text) override { return ask(text) ? Answer::Yes : Answer::No; }

 private:
  static std::string plain(QString text) { return text.remove(u'\r').toStdString(); }
  ConsoleStreams streams_;
  bool agrees_;
};

/// Beside its place, and moved there when it is whole: nothing that stood there can be written to any more.
void restoreAnew(Console& console, OpenedBackup& backup, bool force, Prompt& prompt) {
  if (!prompt.ask(backup.words().join(u'\n') + QStringLiteral("\n\n确定要恢复吗？")))
    throw ConsoleRefusal(QStringLiteral("没有恢复"));
  logRestore(backup, {});
  makeConsoleAccount(console, force,
                     [&](const QString& file) { makeVerifiedCopy(backup.database(), file, {}, Beside::Nothing); });
}

int run(Console& console, ConsoleWords words) {
  QString source;
  bool agrees = false, force = false;
  while (!words.isEmpty()) {
    const QString word = words.take();
    if (word == u"--yes")
      agrees = true;
    else if (word == u"--force")
      force = true;
    else if (source.isEmpty() && !word.isEmpty() && !word.startsWith(u'-'))
      source = word;
    else
      throw unknownConsoleWord(word);
  }
  if (source.isEmpty()) throw ConsoleMisuse(QStringLiteral("restore 后面缺少备份文件"));
  ConsolePrompt prompt(console.streams, agrees);
  session().a_name = QStringLiteral("jxcctl");
  const bool onServer = !consoleServer(console.file).isEmpty();
  if (onServer || (QFileInfo::exists(console.file) && !force)) {
    dataModule().installAccountDb(openConsoleAccount(console, ConsoleAccess::Alone));
    session().r_sn = QString::fromUtf16(builtInSn);
    session().a_sn = session().r_sn;
    loadSession();
    const auto backup = OpenedBackup::open(source);
    RestoreReports reports;
    if (console.home.isEmpty() && !onServer) reports.folder = QFileInfo(console.file).absolutePath();
    try {
      if (!restoreBackup(*backup, prompt, reports)) return 1;
    } catch (const DbError& error) {
      throw ConsoleRefusal(restoreFailure(error).remove(u'\r'));
    }
  } else {
    const auto backup =
        OpenedBackup::open(source, {}, OpenedBackup::For::Restore, QFileInfo(console.file).absolutePath());
    restoreAnew(console, *backup, force, prompt);
  }
  console.streams.out << QStringLiteral("恢复完成。\n").toStdString();
  return 0;
}

}  // namespace restore_command_detail

const ConsoleCommand restoreCommand = {
    u"restore",
    u"jxcctl [--home 目录 | --db 文件] restore 备份文件 [--yes] [--force]\n"
    u"  用备份恢复帐套：先写出备份里有什么，问过以后把现在的帐套另存为“(恢复前)”，再一次写入。\n"
    u"  其他工作站要先退出。--yes 不再询问。帐套文件不存在时用备份新建；打不开时加 --force，原来的文件改名保留。\n",
    restore_command_detail::run};

}  // namespace jxc
