// 控制台: the account database from a command line, over the same rules as the windows.
#pragma once

#include "engine/database.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <iosfwd>
#include <memory>
#include <span>
#include <stdexcept>

namespace jxc {

/// The three streams of a console, UTF-8.
struct ConsoleStreams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
};

/// The words of a command were not understood: exit status 2.
struct ConsoleMisuse : std::runtime_error {
  explicit ConsoleMisuse(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// The command was understood, but cannot be carried out: exit status 1.
struct ConsoleRefusal : std::runtime_error {
  explicit ConsoleRefusal(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// The words of a command line, taken from the front.
class ConsoleWords {
 public:
  explicit ConsoleWords(QStringList words) : words_(std::move(words)) {}
  bool isEmpty() const { return words_.isEmpty(); }
  QString take() { return words_.takeFirst(); }
  /// What stands behind an option.
  QString takeValue(const QString& option) {
    if (words_.isEmpty()) throw ConsoleMisuse(option + QStringLiteral(" 后面缺少内容"));
    return words_.takeFirst();
  }
  /// The same as a number within limits.
  int takeNumber(const QString& option, int least, int most);
  /// "--home=DIR" as two words.
  void splitOption(QString& word) {
    const qsizetype sign = word.indexOf(u'=');
    words_.prepend(word.mid(sign + 1));
    word.truncate(sign);
  }

 private:
  QStringList words_;
};
ConsoleMisuse unknownConsoleWord(const QString& word);

/// One call of the console: where it writes to, and on which account set it works.
struct Console {
  ConsoleStreams streams;
  QString file;                 // the account database
  QString home;                 // the program directory that it is in; empty when --db names a file of its own
  QString operatorName = {};    // who works here; empty: the built-in administrator
  int passwordDescriptor = -1;  // where his password comes from; none: the terminal
  bool isOwner = false;         // the owner of the file, who may read it anyway
};

/// Who may run a command on a set with passwords: an administrator, or also the owner of the file, who says so and only
/// reads. Alone: an administrator whose command takes the set for itself.
enum class ConsoleAccess : char { Administrator, OwnerToo, Alone };

/// A command by its name. `help` is whole lines; `run` returns the exit status.
struct ConsoleCommand {
  const char16_t* name;
  const char16_t* help;
  int (*run)(Console&, ConsoleWords);
};

/// Opens the account set of a call; refuses when there is none, and whom it does not admit (core/console_admission.h).
std::unique_ptr<Database> openConsoleAccount(const Console& console,
                                             ConsoleAccess access = ConsoleAccess::Administrator);
/// Makes the account file of a call: `fill` works on a fresh file beside its place, which is moved there when it is
/// whole, so that a failure half-way leaves what was there. Refuses when there is one already, but for `force`. A
/// program directory gets its catalogue of account sets as well.
void makeConsoleAccount(const Console& console, bool force, const std::function<void(const QString& file)>& fill);

/// Runs one command line of jxcctl (without the program's name): make an account set, run statements, upgrade, back up,
/// and what `more` offers. Returns the exit status: 0 done, 1 failed with a message on `err`, 2 the words were not
/// understood. `executableDirectory` is where the program directory is looked for when the command line does not name
/// it.
int runConsole(const QStringList& words, const QString& executableDirectory, ConsoleStreams streams,
               std::span<const ConsoleCommand> more = {});

}  // namespace jxc
