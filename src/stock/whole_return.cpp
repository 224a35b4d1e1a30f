#include "core/refusal.h"
#include "core/statements.h"
#include "stock/partial_rest.h"
#include "stock/trading_rules.h"

namespace jxc {

TradingDraft ReturningRules::fresh(const QString& lastDate) const {
  TradingDraft draft = TradingRules::fresh(lastDate);
  draft.settlement = Settlement::RestOnAccount;
  return draft;
}

std::optional<TradingDraft> ReturningRules::returnWhole(const QString& source, const TradingDraft& current,
                                                        Prompt& prompt) const {
  const DocumentFamily& f = returned_;
  const RowSet heads =
      openSelect(compose("select * from {} where {}=1 and {}=? order by id", {f.head, f.status, f.number}), source);
  const std::optional<Row> head = heads.isEmpty() ? std::nullopt : std::optional<Row>(heads.front());
  if (!mayReturn(source, head ? &*head : nullptr, prompt) || !head) return std::nullopt;
  if (isRefused(partial::openRefusal(f, source), prompt)) return std::nullopt;
  TradingDraft draft = current;
  takeHead(*head, draft);
  Transaction transaction(accountDb());
  draft.number = usableDraftNumber(family(), current.number, current.date);
  copyWholeDocument(f, source, family(), draft.number);
  // The name of a branch may stand in the same place: it is left until the return is saved.
  const std::string_view by = returned_.returnedBy;
  execSql(compose("update {} set {}=? where {}=? and {}=0 and ({}='' or {} is null or {} like ?)",
                  {f.head, by, f.number, returned_.isReturned, by, by, by}),
          draft.number, source, words(family().prefix) + u'%');
  transaction.commit();
  draft.payable = payable(draft.number);
  draft.paid = backAtMost(draft.payable, *draft.settledBefore);
  return draft;
}

void ReturningRules::takeHead(const Row& head, TradingDraft& draft) const {
  const DocumentFamily& f = returned_;
  draft.partner = head.text(f.partner);
  draft.warehouse = head.text(f.warehouse);
  draft.salesperson = head.text("u_sn");
  draft.settledBefore = head.number(f.paid) + head.number(f.collected) - partial::restPaidBack(f, head.text(f.number));
  draft.account = head.text(f.account);
  draft.note = head.text(f.note);
  draft.invoiceNumber = head.text(f.invoiceNumber);
  draft.invoiceAmount = head.number(f.invoiceAmount);
  draft.returnOf = head.text(f.number);
}

void ReturningRules::recallReturned(TradingDraft& draft) const {
  const RowSet heads = openSelect(compose("select top 1 * from {} where {}=? and {}=0 order by id desc",
                                          {returned_.head, returned_.returnedBy, returned_.isReturned}),
                                  draft.number);
  if (heads.isEmpty()) return;
  takeHead(heads.front(), draft);
  draft.paid = backAtMost(payable(draft.number), *draft.settledBefore);
}

void ReturningRules::forgetReturned(const QString& number) const {
  execSql(compose("update {} set {}='' where {}=? and {}=0",
                  {returned_.head, returned_.returnedBy, returned_.returnedBy, returned_.isReturned}),
          number);
}

void ReturningRules::markReturned(const QString& source, const QString& number) const {
  if (source.isEmpty()) return;
  const DocumentFamily& f = returned_;
  execSql(compose("update {} set {}=1,{}=? where {}=?", {f.head, returned_.isReturned, returned_.returnedBy, f.number}),
          number, source);
}

}  // namespace jxc
