// 控制台复制: jxcctl copy, and what the console does on a server.
#pragma once

#include "core/console.h"

namespace jxc {

/// The address of the server that a place means: its own, or the one that stands in the account file; empty for a
/// database file.
QString consoleServer(const QString& place);

/// `create` on a server: refuses when there are tables already, but for `force`.
void createOnServer(const QString& address, bool force);

/// Makes a database file beside its place and moves it there when it is whole.
void makeDatabaseFile(const QString& file, const std::function<void(const QString& beside)>& fill);

/// copy FROM TO
int copyCommand(Console& console, ConsoleWords words);

}  // namespace jxc
