#include "core/log.h"

#include "core/clock.h"
#include "core/posting.h"
#include "core/session.h"
#include "core/statements.h"

namespace jxc {

void writeLog(const QString& text) {
  QString note = text.left(200);
  if (!note.isEmpty() && note.back().isHighSurrogate()) note.chop(1);
  postRow("jxc_log", {{"log_time", clock::stamp()}, {"a_name", session().a_name}, {"log_note", note}});
}

}  // namespace jxc
