// 控制台: the account database from a command line, over the same rules as the windows.
#pragma once

#include <QString>
#include <QStringList>

#include <iosfwd>

namespace jxc {

/// The three streams of a console, UTF-8.
struct ConsoleStreams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
};

/// Runs one command line of jxcctl (without the program's name): make an account set, run statements, upgrade, back up.
/// Returns the exit status: 0 done, 1 failed with a message on `err`, 2 the words were not understood.
/// `executableDirectory` is where the program directory is looked for when the command line does not name it.
int runConsole(const QStringList& words, const QString& executableDirectory, ConsoleStreams streams);

}  // namespace jxc
