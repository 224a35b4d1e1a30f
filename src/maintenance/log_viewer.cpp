#include "maintenance/log_viewer.h"

#include "core/log.h"
#include "core/owner.h"
#include "core/rights.h"
#include "core/statements.h"
#include "core/text.h"

namespace jxc {

Sql logLines(const Criteria& criteria) {
  Criteria asStored = criteria;  // the log writes brackets and the like in their wide forms
  asStored.key = sanitizeText(criteria.key.trimmed());
  Filter filter;
  addPeriod(filter, criteria, "log_time");
  addKey(filter, asStored, {"log_note", "a_name"});
  return Sql("select id,log_time,a_name,log_note from jxc_log").where(filter).add(" order by id desc");
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
  std::optional<QString> file;
  const bool isDone =
      asOwner(prompt, QStringLiteral("清除日志"), [&] { file = takeLogRows(accountDb(), QStringLiteral("清除日志")); });
  if (file) prompt.say(QStringLiteral("日志已另存为 %1").arg(*file));
  return isDone;
}

}  // namespace jxc
