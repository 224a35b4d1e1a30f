// 操作日志查看: rules of reading and emptying the operation log.
#pragma once

#include "core/prompt.h"
#include "core/sql.h"

#include <QString>

namespace jxc {

/// The whole log, the latest first.
Sql logStatement();
/// Rows from one day to another, both included, whose text or operator holds what was typed; empty finds all of them.
Sql logStatement(const QString& from, const QString& to, const QString& typed);

/// Whether the operator may empty the log.
bool mayClearLog();
/// Empties the log. Asks. False when there is nothing in it, when it was refused or the operator said no.
bool clearLog(Prompt& prompt);

}  // namespace jxc
