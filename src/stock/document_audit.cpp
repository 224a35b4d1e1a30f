// 单据审核: audit of stock/document.h: gates, shared numbers, one document, a list.
#include "core/clock.h"
#include "core/numbers.h"
#include "core/period_lock.h"
#include "core/posting.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "engine/server.h"
#include "stock/document.h"
#include "stock/failing_command.h"
#include "stock/ledger.h"
#include "stock/stocktake.h"

#include <stdexcept>

namespace jxc {
namespace document_audit_detail {

/// Heads that still wait under the number.
void deleteWaitingHeads(const DocumentFamily& family, const QString& number) {
  postSql(compose("delete from {} where {}=0 and {}=?", {family.head, family.status, family.number}), number);
}

/// The audited head first, otherwise the one that was saved first.
Ahead askHead(const DocumentFamily& family, const QString& number) {
  return sendAhead(
      compose("select * from {} where {}=? order by {} desc,id", {family.head, family.number, family.status}), number);
}
RowSet headOf(const DocumentFamily& family, const QString& number) {
  return askHead(family, number).rows();
}

StockShortage askShortage(const DocumentFamily& family, const QString& number, const QString& warehouse) {
  return {number, warehouse, QStringView(family.shortageAtAudit)};
}

/// One operator's head moves to a fresh number of its own date, with his lines; further heads of his go.
void renumber(const DocumentFamily& family, const QString& number, const QString& operatorName, std::int64_t headId) {
  const QString date =
      lookupValue(compose("select {} from {} where id=?", {family.date, family.head}), headId).left(10);
  const QString fresh = nextDocNoOn(family.lines, family.number, words(family.prefix), date);
  renumberDocument(family, headId, number, fresh, SharedNumber::Yes);
  execSql(compose("delete from {} where {}=0 and {}=? and a_name=?", {family.head, family.status, family.number}),
          number, operatorName);
}

}  // namespace document_audit_detail

Refusal auditGate(const QString&, const QString& date) {
  return lockedOn(date);
}
Refusal cancelGate(const QString&, const QString& date) {
  return lockedOn(date, OnDay::Booked);
}

void claimNumber(const DocumentFamily& family, const QString& number) {
  using namespace document_audit_detail;
  const auto heads = [&](std::string_view condition) {
    return lookupNumber(
        compose("select count(*) from {} where {}=?", {family.head, family.number}) + std::string(condition), number);
  };
  if (heads("") == 1) return;

  Transaction transaction(accountDb());
  const std::string waiting = compose(" and {}=0", {family.status});
  bool used = false;
  const RowSet audited = openSelect(compose("select top 1 a_name from {} where {}=1 and {}=? order by id desc",
                                            {family.head, family.status, family.number}),
                                    number);
  if (!audited.isEmpty()) {
    execSql(compose("delete from {} where {}=0 and {}=? and a_name=?", {family.head, family.status, family.number}),
            number, audited.text(0, 0));
    used = true;
  }
  if (!used || heads(waiting) > 0)
    for (const Row claimant :
         openSelect(compose("select a_name,min(id) as rid from {} where {}=0 and {}=? group by a_name order by a_name",
                            {family.head, family.status, family.number}),
                    number)) {
      if (used) renumber(family, number, claimant.text("a_name"), claimant.integer("rid"));
      used = true;  // the first operator keeps the number
    }
  transaction.commit();
}

void claimNumber(const QString& number, QStringView kind) {
  claimNumber(documentFamily(kind), number);
}

AuditOutcome auditInside(const DocumentFamily& family, const QString& number, const HeadChange& change) {
  using namespace document_audit_detail;
  if (!family.post) throw std::logic_error("this family is audited by its own rules");
  const PeriodLock lock;  // travel with the question behind them
  const Ahead asked = askHead(family, number);
  claimNumber(family, number);
  // A single head has nothing to settle.
  const RowSet heads = asked.rows().rowCount() == 1 ? asked.rows() : headOf(family, number);
  if (heads.isEmpty()) return AuditOutcome::NoLines;
  const Row head = heads.front();
  if (head.integer(family.status) == 1) {
    deleteWaitingHeads(family, number);
    return AuditOutcome::AlreadyAudited;
  }
  lock.demandOpen(head.text(family.date));
  const std::int64_t id = head.integer("id");
  if (change)
    change(id);
  else if (!family.discount.empty() && head.integer(family.settlement) == 0)
    postSql(compose("update {} set {}={}-{} where id=?", {family.head, family.discount, family.due, family.paid}), id);
  postSql(compose("update {} set {}=1,{}=?,{}=? where id=?",
                  {family.head, family.status, family.checker, family.checkDate}),
          session().a_name, clock::today(), id);
  deleteWaitingHeads(family, number);
  family.post(number);
  return AuditOutcome::Audited;
}

AuditOutcome auditAsking(const DocumentFamily& family, const QString& number, Prompt& prompt,
                         const HeadChange& change) {
  using namespace document_audit_detail;
  const PeriodLock lock;
  const Ahead lines = askLineCount(family, number);
  RowSet heads = headOf(family, number);
  const auto gone = [&] {
    prompt.notice(changedMeanwhile(number));
    return AuditOutcome::NoLines;
  };
  if (lines.number() == 0) return gone();
  if (heads.rowCount() > 1) {
    // What two operators saved under one number needs stock apart: settled first, and kept when the audit is refused.
    onDocument(number, u"审核", [&] { claimNumber(family, number); });
    heads = headOf(family, number);
  }
  if (heads.isEmpty()) return gone();
  const bool waiting = heads.front().integer(family.status) == 0;
  if (waiting && isRefused(lock.against(heads.front().text(family.date)), prompt)) return AuditOutcome::Refused;
  const QString warehouse = heads.front().text(family.warehouse);
  const auto standsAgainst = [&] {
    return waiting && family.standsAgainst ? family.standsAgainst(number) : std::nullopt;
  };
  // Sent ahead: where something may stand against it, both are one trip.
  const auto asked = waiting ? std::optional(askShortage(family, number, warehouse)) : std::nullopt;
  if (isRefused(standsAgainst(), prompt)) return AuditOutcome::Refused;
  const auto shortage = asked ? asked->words() : Refusal();
  if (!mayGoShort(shortage, prompt)) return AuditOutcome::Refused;
  // An audit dialog asks about what it is going to write.
  if (waiting && !change && family.mayAuditMore && !family.mayAuditMore(heads.front(), prompt))
    return AuditOutcome::Refused;

  const auto recount = waiting && family.isCount() ? stock_count::Recount::ask(number, prompt) : std::nullopt;
  if (waiting && family.isCount() && !recount) return AuditOutcome::Refused;

  Refusal changed;
  bool moved = false;
  const AuditOutcome outcome = onDocument(number, u"审核", [&] {
    Transaction transaction(accountDb());
    // Of the moment before the audit, and in its first trip: an audit that should not have been is taken back.
    const Ahead now = askHead(family, number);
    const StockShortage shortageNow = askShortage(family, number, warehouse);
    moved = recount && !recount->takeUp(number);
    if (moved) return AuditOutcome::Refused;
    changed = standsAgainst();
    if (changed) return AuditOutcome::Refused;
    const AuditOutcome done = auditInside(family, number, change);
    if (done == AuditOutcome::Audited) {
      // Stock went while the question stood: what the operator agreed to is no longer what would happen.
      moved = now.rows().front().text(family.warehouse) != warehouse;
      changed = shortageNow.words();
      if (moved || (changed && changed != shortage)) return AuditOutcome::Refused;
    }
    transaction.commit();
    return done;
  });
  if (moved) return auditAsking(family, number, prompt, change);
  if (outcome == AuditOutcome::Refused) isRefused(changed, prompt);
  refused({{outcome == AuditOutcome::AlreadyAudited || outcome == AuditOutcome::NoLines, changedMeanwhile(number)}},
          prompt);
  return outcome;
}

AuditOutcome checkDj(const DocumentFamily& family, const QString& number, Prompt& prompt) {
  return auditAsking(family, number, prompt, {});
}

std::optional<int> auditAll(const std::vector<ListedDocument>& documents, Prompt& prompt,
                            const AuditProgress& progress) {
  return auditEach(
      {.question = u"您的操作将审核当前列表中所有未审核的单据，确认吗？\r\n\r\n（如需审核某个单据，请按右键！）"_qs,
       .waiting = documents,
       .audit =
           [&](const ListedDocument& document, Prompt& collecting) {
             const DocumentFamily& family = documentFamily(document.number);
             if (family.isCount() && isRefused(stock_count::passedOver(document.number), collecting)) return false;
             return checkDj(family, document.number, collecting) == AuditOutcome::Audited;
           },
       .progress = progress},
      prompt);
}

}  // namespace jxc
