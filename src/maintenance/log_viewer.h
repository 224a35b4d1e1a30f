// 操作日志查看: rules of reading and emptying the operation log.
#pragma once

#include "core/enquiry.h"
#include "core/prompt.h"

namespace jxc {

/// Rows of the period whose text or operator holds the key, the latest first.
Sql logLines(const Criteria& criteria);

/// Whether the operator may empty the log.
bool mayClearLog();
/// Empties the log; what stood there is kept in a file (core/log.h). Asks. False when there is nothing in it, when it
/// was refused or the operator said no.
bool clearLog(Prompt& prompt);

}  // namespace jxc
