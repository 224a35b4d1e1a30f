#include "maintenance/log_viewer.h"

#include "core/rights.h"
#include "core/statements.h"
#include "core/text.h"

namespace jxc {

Sql logStatement() {
  return {"select * from jxc_log order by id desc"};
}

Sql logStatement(const QString& from, const QString& to, const QString& typed) {
  const QString key = QStringLiteral("%") + sanitizeText(typed.trimmed()) + QStringLiteral("%");
  // Times are text in one form: their order as text is their order.
  return {
      "select * from jxc_log where log_time>=? and log_time<=? and (log_note like ? or a_name like ?) "
      "order by id desc",
      from, to + QStringLiteral(" 23:59:59"), key, key};
}

bool mayClearLog() {
  return hasRight("qtcz", 14);
}

bool clearLog(Prompt& prompt) {
  if (!mayClearLog()) {
    dispMsg(prompt, QStringLiteral("清除日志！"));
    return false;
  }
  if (!exists("select id from jxc_log")) return false;
  if (!prompt.ask(QStringLiteral("将清除所有日志，并不能恢复，确认清除吗？"))) return false;
  execSql("delete from jxc_log");
  return true;
}

}  // namespace jxc
