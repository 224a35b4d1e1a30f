// 日志核对: walks the chain of the operation log from its first row to the hash that the next one will be chained to.
#include "core/log.h"
#include "core/schema/schema.h"
#include "maintenance/proof_books.h"

#include <QStringList>

#include <algorithm>

namespace jxc::proof {

void proveLog(Books& books) {
  // A set of an older build: its upgrade begins the chain.
  if (!stands(books.db, "select log_hash from jxc_log")) return;
  // What the next row may hold on to: the row above as it stands. Where that one broke, also what it should have been,
  // or the row above it: whoever puts one in breaks one link, and not that of the row below as well.
  QStringList above{QString()};
  // A closing takes the oldest rows out, and a row behind tells from which hash the first of the others goes on.
  for (const Row row : books.select("select log_note from jxc_log where log_note like '%取出日志%' order by id"))
    if (const auto taken = hashOfTakenRows(row.text("log_note"))) above << *taken;
  bool isBroken = false;
  const auto broken = [&](std::int64_t id, const QString& time, const QString& note, const QString& stored,
                          const QString& due) {
    isBroken = true;
    books.findings.add(Kind::LogChain, [&] {
      return Place{.place = QStringLiteral("第%1号日志，%2，%3").arg(id).arg(time, note), .stored = stored, .due = due};
    });
  };
  books.eachRow("jxc_log", "log_time,a_name,log_note,log_hash", [&](const WalkedRow& row) {
    const QString time = row.text(1), name = row.text(2), note = row.text(3), stored = row.text(4);
    const bool holds =
        std::ranges::any_of(above, [&](const QString& hash) { return stored == logHash(hash, time, name, note); });
    if (holds) {
      above = {stored};
    } else {
      const QString due = logHash(above.front(), time, name, note);
      broken(row.integer(0), time, note, stored, due);
      above = {stored, due, above.back()};
    }
  });
  if (const QString due = lastLogHash(books.db); due != above.front() && !isBroken)
    broken(0, {}, QStringLiteral("最后的日志不见了"), above.front(), due);
}

}  // namespace jxc::proof
