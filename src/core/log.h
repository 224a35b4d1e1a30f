// 操作日志: who did what, when.
#pragma once

#include <QString>

#include <string_view>

namespace jxc {

/// Tables whose rows stay: the users of stations on a server may only add some.
inline constexpr std::string_view kLogTables[] = {"jxc_log"};

/// Adds a row to the operation log under the operator of the session. Texts beyond the column's 200 characters are cut:
/// a long remark must not stop the command that it tells of.
void writeLog(const QString& text);

}  // namespace jxc
