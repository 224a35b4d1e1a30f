#include "core/deletion.h"

#include "core/refusal.h"
#include "core/statements.h"

namespace jxc {

bool deleteAsking(const Deletion& deletion, std::int64_t id, Prompt& prompt) {
  std::optional<QString> refusal;
  const auto stillThere = [&] {
    RowSet rows = openSelect(compose("select * from {} where id=?", {deletion.table}), id);
    if (!rows.isEmpty() && deletion.refusal) refusal = deletion.refusal(rows.front());
    return rows;
  };
  if (stillThere().isEmpty()) return true;
  if (!refusal) {
    if (!prompt.ask(deletion.question)) return false;
    Transaction transaction(accountDb());
    const RowSet rows = stillThere();
    if (rows.isEmpty()) return true;
    if (!refusal) {
      execSql(compose("delete from {} where id=?", {deletion.table}), id);
      if (deletion.alsoDelete) deletion.alsoDelete(rows.front());
      transaction.commit();
      return true;
    }
  }
  return !isRefused(refusal, prompt);
}

}  // namespace jxc
