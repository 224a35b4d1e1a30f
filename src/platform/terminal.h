// 终端: who sits at the console, and the password that he types.
#pragma once

#include <QString>

#include <optional>

namespace jxc {

/// Asks on the terminal of this process, which does not show what is typed; nothing when it has none. Whoever uses it
/// wipes it.
std::optional<QString> askOnTerminal(const QString& question);
/// One line from a descriptor that the caller of this process has opened; nothing when it cannot be read.
std::optional<QString> readLineFrom(int descriptor);
/// Whether this process runs as the owner of the file, or as root.
bool ownsFile(const QString& file);

}  // namespace jxc
