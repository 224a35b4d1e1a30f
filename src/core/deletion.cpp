#include "core/deletion.h"

#include "core/mentions.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"

namespace jxc {
namespace deletion_detail {

Refusal refusalOf(const Hindrance& hindrance, std::string_view table, const Row& row) {
  QString text = hindrance.told + u"\r\n\r\n"_qs + rowInWords(table, row);
  if (!hindrance.holder.isEmpty()) text += u"\r\n用于："_qs + hindrance.holder;
  if (!hindrance.nextStep.isEmpty()) text += u"\r\n\r\n"_qs + hindrance.nextStep;
  return text;
}

}  // namespace deletion_detail

bool deleteAsking(const Deletion& deletion, std::int64_t id, Prompt& prompt) {
  Refusal refusal;
  const auto stillThere = [&] {
    RowSet rows = openSelect(compose("select * from {} where id=?", {deletion.table}), id);
    if (!rows.isEmpty() && deletion.hindrance) {
      if (const auto hindrance = deletion.hindrance(rows.front()))
        refusal = deletion_detail::refusalOf(*hindrance, deletion.table, rows.front());
    }
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
