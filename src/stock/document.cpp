#include "stock/document.h"

#include "accounts/partner_ledger.h"
#include "core/clock.h"
#include "core/habits.h"
#include "core/log.h"
#include "core/numbers.h"
#include "core/period_lock.h"
#include "core/posting.h"
#include "core/rights.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/unusual.h"
#include "stock/contract_ties.h"
#include "stock/conversion.h"
#include "stock/failing_command.h"
#include "stock/ledger.h"
#include "stock/partial_rest.h"
#include "stock/stocktake.h"

#include <algorithm>
#include <stdexcept>

namespace jxc {
namespace document_detail {

/// This operator's draft lines take another number, and what remembers the draft follows them.
void moveDraft(const DocumentFamily& family, const QString& from, const QString& to) {
  const auto moved =
      execSql(compose("update {} set {}=? where {}=? and a_name=?", {family.lines, family.number, family.number}) +
                  ofDraft(family, family.lines),
              to, from, session().a_name);
  if (moved == 0) return;  // what is remembered under the number is another operator's
  for (const NumberMention& m : family.mentions)
    if (!m.saved.empty())
      execSql(compose("update {} set {}=? where {}=? and {}=0", {m.table, m.column, m.column, m.saved}), to, from);
}

QString saveQuestion(const DocumentFamily& family) {
  if (!strIsTrue(session().cs_shdj))
    return u"单据保存后处于“未审核”状态，是否确认保存？\r\n\r\n"_qs + words(family.waitingHint);
  const QString where = family.enquiry.empty() ? QString() : u"在“"_qs + words(family.enquiry) + u"”功能中"_qs;
  return u"单据保存后将直接审核，是否确认保存？\r\n\r\n保存后如果有问题可以"_qs + where + u"取消审核！"_qs;
}

/// What stands on this operator's draft, for the question about what is hardly meant; asked in one trip.
FiguresOfDocument figuresOf(const DocumentFamily& family, const SaveRequest& request) {
  const std::string_view pieces = family.line.columns->quantity, total = family.line.columns->total;
  const std::string_view yuan = total.empty() ? "0" : total;  // goods that only come onto the shelf tell no money
  const Ahead largest = sendAhead(
      compose("select max({}) as slmax,min({}) as slmin,max({}) as zjemax,min({}) as zjemin from {} where {}=? and "
              "a_name=?",
              {pieces, pieces, yuan, yuan, family.lines, family.number}) +
          ofDraft(family, family.lines),
      request.number, session().a_name);
  const Ahead newest = sendAhead("select max(gl_kdrq) from jxc_goodslist where gl_kdrq<=?", clock::today() + u'~');
  const Ahead lastEntry = sendAhead(lastLogEntry);
  const Row lines = largest.rows().front();
  return {.pieces = std::max(lines.number("slmax"), -lines.number("slmin")),
          .yuan = std::max(lines.number("zjemax"), -lines.number("zjemin")),
          .date = request.date,
          .newest = newest.rows().text(0, 0),
          .lastEntry = lastEntry.rows().text(0, 0)};
}

/// Number to save under: a head that stands already, or another operator's lines, leave it to them.
QString numberToSave(const DocumentFamily& family, QString number, const QString& date) {
  const auto renew = [&](std::string_view table) {
    const QString fresh = nextDocNoOn(table, family.number, words(family.prefix), date);
    moveDraft(family, number, fresh);
    number = fresh;
  };
  if (rowExists(family.head, family.number, number)) renew(family.head);
  if (isNumberTaken(family.lines, family.number, number)) renew(family.lines);
  return number;
}

/// Lines of this operator under the number that meet " and …".
std::int64_t ownLineCount(const DocumentFamily& family, const QString& number, const std::string& condition) {
  return static_cast<std::int64_t>(lookupNumber(
      compose("select count(*) from {} where {}=? and a_name=?", {family.lines, family.number}) + condition, number,
      session().a_name));
}
constexpr char ofGoods[] = " and g_sn<>'00000000'";

bool hasWarehouse(const DocumentFamily& family, const QString& number) {
  return exists(compose("select a.id from {} a,jxc_ckxx b where a.{}=b.ck_sn and a.{}=?",
                        {family.head, family.warehouse, family.number}),
                number);
}

/// Lines of goods, whoever made them.
bool hasGoods(const DocumentFamily& family, const QString& number) {
  return !lookupValue(compose("select top 1 id from {} where {}=? and g_sn<>'00000000'", {family.lines, family.number}),
                      number)
              .isEmpty();
}

bool isWaiting(const DocumentFamily& family, const QString& number) {
  const RowSet heads = openSelect(compose("select {} as status from {} where {}=? order by {} desc",
                                          {family.status, family.head, family.number, family.status}),
                                  number);
  return !heads.isEmpty() && heads.front().integer("status") == 0;
}

/// What is made of the lines costs what they are worth.
void refreshWholeCost(const DocumentFamily& family, const QString& number) {
  const double parts = lookupNumber(
      compose("select sum({}) from {} where {}=?", {family.line.columns->total, family.lines, family.number}), number);
  const double quantity = lookupNumber(
      compose("select {} from {} where {}=?", {family.whole.quantity, family.head, family.number}), number);
  execSql(compose("update {} set {}=? where {}=?", {family.head, family.whole.cost, family.number}),
          unitCostOf(parts, quantity), number);
}

void deleteDocument(const DocumentFamily& family, const QString& number) {
  contract_ties::documentGoes(family, number);
  execSql(compose("delete from {} where {}=?", {family.head, family.number}), number);
  execSql(compose("delete from {} where {}=?", {family.lines, family.number}), number);
  if (!family.onDelete.empty()) execSql(family.onDelete, number);
}

/// The day that a waiting document has once its head was changed: behind the lock it can only be moved out.
QString dayAfter(const HeadEdit& edit, const QString& before) {
  return edit.date.isEmpty() ? before : edit.date;
}

Ahead askDate(const DocumentFamily& family, const QString& number) {
  return sendAhead(compose("select top 1 {} from {} where {}=? order by {} desc,id",
                           {family.date, family.head, family.number, family.status}),
                   number);
}
QString dateIn(const Ahead& asked) {
  return asked.rows().isEmpty() ? QString() : asked.rows().text(0, 0);
}

/// The number that the document has then; empty: it waits no longer.
QString rewriteHead(const DocumentFamily& family, const QString& number, const HeadEdit& edit) {
  Transaction transaction(accountDb());
  const PeriodLock lock;
  if (!isWaiting(family, number)) return {};
  const std::int64_t head = firstIdOf(family.head, family.number, number);
  const auto set = [&](std::string_view field, const auto& value, auto sign) {
    if (!field.empty() && value) updateRow(family.head, head, {{field, Value(*value * sign)}});
  };
  const auto setText = [&](std::string_view field, const std::optional<QString>& value) {
    if (!field.empty() && value) updateRow(family.head, head, {{field, *value}});
  };
  QString fresh = number;
  const QString before = lookupValue(compose("select {} from {} where id=?", {family.date, family.head}), head);
  lock.demandOpen(dayAfter(edit, before));
  if (!edit.date.isEmpty() && edit.date != before.left(10)) {
    if (family.redateRenewsNumber || isNumberTaken(family.lines, family.number, number))
      fresh = nextDocNoOn(family.lines, family.number, words(family.prefix), edit.date);
    // Sales may carry the time of day behind the date.
    updateRow(family.head, head, {{family.date, edit.date.left(10) + before.mid(10)}});
  }
  setText(family.partner, edit.partner);
  setText(family.warehouse, edit.warehouse);
  setText("u_sn", edit.salesperson);
  setText(family.invoiceNumber, edit.invoiceNumber);
  set(family.invoiceAmount, edit.invoiceAmount, family.headSign);
  set(family.freight, edit.freight, 1);
  set(family.packing, edit.packing, 1);
  if (!family.freightPayer.empty() && (edit.freight || edit.packing))
    setText(family.freightPayer,
            freightPayerText(edit.freight.value_or(0), edit.packing.value_or(0), edit.wePayFreight));
  if (fresh != number) renumberDocument(family, head, number, fresh, SharedNumber::No);
  if (edit.partner) contract_ties::partnerChanged(family, fresh, *edit.partner);
  transaction.commit();
  return fresh;
}

}  // namespace document_detail

// ---- number ------------------------------------------------------------------------------------------------------

QString newDocumentNumber(const DocumentFamily& family, const QString& date) {
  return nextDocNoOn(family.head, family.number, words(family.prefix), date);
}

QString newDocumentDate(const QString& lastDate) {
  return lastDate.isEmpty() || session().cs_djrq == u"0" ? clock::today() : lastDate;
}

bool confirmDocumentDate(const QString& date, Prompt& prompt) {
  const QString today = clock::today();
  if (date.left(10) <= today) return true;
  return prompt.ask(u"您选择的日期："_qs + date + u"，\r\n\r\n大于计算机的当前日期："_qs + today +
                    u"，\r\n\r\n确认继续吗？"_qs);
}

QString redateDraft(const DocumentFamily& family, const QString& number, const QString& date) {
  Transaction transaction(accountDb());
  const QString fresh = newDocumentNumber(family, date);
  document_detail::moveDraft(family, number, fresh);
  transaction.commit();
  return fresh;
}

QString usableDraftNumber(const DocumentFamily& family, const QString& number, const QString& date) {
  if (!isNumberTaken(family.lines, family.number, number) && !isDraftSaved(family, number)) return number;
  Transaction transaction(accountDb());
  const QString fresh = nextDocNoOn(family.lines, family.number, words(family.prefix), date);
  document_detail::moveDraft(family, number, fresh);
  transaction.commit();
  return fresh;
}

// ---- draft lines -------------------------------------------------------------------------------------------------

bool isDraftSaved(const DocumentFamily& family, const QString& number) {
  return exists(compose("select top 1 id from {} where {}=? and a_name=?", {family.head, family.number}), number,
                session().a_name);
}

std::string ofDraft(const DocumentFamily& family, std::string_view lines) {
  return compose(" and not exists (select h.id from {} h where h.{}={}.{} and h.a_name={}.a_name)",
                 {family.head, family.number, lines, family.number, lines});
}

std::int64_t draftLineCount(const DocumentFamily& family, const QString& number) {
  return document_detail::ownLineCount(family, number, ofDraft(family, family.lines));
}

std::int64_t draftGoodsCount(const DocumentFamily& family, const QString& number) {
  return document_detail::ownLineCount(family, number, document_detail::ofGoods + ofDraft(family, family.lines));
}

Ahead askLineCount(const DocumentFamily& family, const QString& number) {
  return sendAhead(compose("select count(*) from {} where {}=?", {family.lines, family.number}), number);
}
std::int64_t lineCount(const DocumentFamily& family, const QString& number) {
  return static_cast<std::int64_t>(askLineCount(family, number).number());
}

bool goodsOnDocument(const DocumentFamily& family, const QString& number, const QString& goods, bool draft) {
  if (draft)
    return exists(compose("select top 1 id from {} where {}=? and g_sn=? and a_name=?", {family.lines, family.number}) +
                      ofDraft(family, family.lines),
                  number, goods, session().a_name);
  return !lookupValue(compose("select top 1 id from {} where {}=? and g_sn=?", {family.lines, family.number}), number,
                      goods)
              .isEmpty();
}

bool deleteDraftLine(const DocumentFamily& family, std::int64_t lineId) {
  return execSql(compose("delete from {} where id=? and a_name=?", {family.lines}) + ofDraft(family, family.lines),
                 lineId, session().a_name) > 0;
}

void discardDraft(const DocumentFamily& family, const QString& number) {
  execSql(
      compose("delete from {} where {}=? and a_name=?", {family.lines, family.number}) + ofDraft(family, family.lines),
      number, session().a_name);
}

Answer leaveDraft(const DocumentFamily& family, const QString& number, Prompt& prompt) {
  if (draftLineCount(family, number) == 0) return Answer::No;
  const Answer answer = prompt.askOrCancel(u"当前单据还未保存，是否保存？"_qs);
  if (answer == Answer::No) discardDraft(family, number);
  return answer;
}

// ---- save --------------------------------------------------------------------------------------------------------

QString changedMeanwhile(const QString& number) {
  return (number.isEmpty() ? u"单据"_qs : u"单据 "_qs + number + u' ') +
         u"已被其他电脑保存、审核、取消或删除，\r\n\r\n没有改动任何数据！"_qs;
}

Refusal withoutGoods(const DocumentFamily& family, const QString& number, const QString& text) {
  if (draftGoodsCount(family, number) > 0) return {};
  return {isDraftSaved(family, number) ? changedMeanwhile(number) : text, Subject::Lines};
}

SaveResult saveDocument(const DocumentFamily& family, const SaveRequest& request, Prompt& prompt) {
  SaveResult result;
  result.number = request.number;
  const bool auditNow = strIsTrue(session().cs_shdj);
  const auto shortage = [&] {
    return auditNow && !request.warehouse.isEmpty()
               ? checkStockShort(result.number, request.warehouse, QStringView(family.shortageAtAudit))
               : Refusal();
  };
  const auto agreed = shortage();  // as the screen has just asked
  if (!confirmUnusual(document_detail::figuresOf(family, request), prompt)) return result;
  if (!prompt.askUnlessHabit(document_detail::saveQuestion(family), kSavesAtOnce)) return result;

  bool wentShort = false;
  Refusal changed = changedMeanwhile(request.number);
  result.saved = onDocument(request.number, u"保存", [&] {
    Transaction transaction(accountDb());
    const PeriodLock lock;
    if (isDraftSaved(family, request.number)) return false;
    if (lock.holds(request.date)) {
      changed = lock.against(request.date);
      return false;
    }
    if (const Refusal more = request.standsAgainst ? request.standsAgainst() : Refusal()) {
      changed = more;
      return false;
    }
    result.number = document_detail::numberToSave(family, request.number, request.date);
    request.writeHead(result.number);
    const std::int64_t goodsLines = document_detail::ownLineCount(family, result.number, document_detail::ofGoods);
    if (goodsLines == 0) return false;
    if (!document_detail::hasWarehouse(family, result.number)) throw std::runtime_error("单据中的仓库已被删除。");
    if (!auditNow || family.logsEverySave)
      writeLog(words(family.savedLog) + result.number + u"，共%1种商品"_qs.arg(goodsLines));
    // The operator has agreed to short stock a moment ago, as a refusal of his screen: not asked again here, unless
    // stock went while the question stood.
    const auto now = shortage();
    wentShort = (now && now != agreed) || (auditNow && family.isCount() && stock_count::passedOver(result.number)) ||
                (auditNow && family.standsAgainst && family.standsAgainst(result.number));
    if (auditNow && !wentShort) result.audited = auditInside(family, result.number) == AuditOutcome::Audited;
    transaction.commit();
    return true;
  });
  if (!result.saved) {
    isRefused(changed, prompt);
    return {.number = request.number};
  }
  if (auditNow && wentShort) result.audited = checkDj(family, result.number, prompt) == AuditOutcome::Audited;
  return result;
}

// ---- waiting documents -------------------------------------------------------------------------------------------

QString ownerOf(const DocumentFamily& family, const QString& number) {
  const RowSet heads =
      openSelect(compose("select a_name from {} where {}=? order by id", {family.head, family.number}), number);
  for (const Row head : heads)
    if (head.text("a_name") == session().a_name) return session().a_name;
  return heads.isEmpty() ? session().a_name : heads.text(0, 0);
}

void renumberDocument(const DocumentFamily& family, std::int64_t headId, const QString& from, const QString& to,
                      SharedNumber shared) {
  const RowSet head = openSelect(compose("select * from {} where id=?", {family.head}), headId);
  const QString owner = head.front().text("a_name");
  updateRow(family.head, headId, {{family.number, to}});
  execSql(compose("update {} set {}=? where {}=? and a_name=?", {family.lines, family.number, family.number}), to, from,
          owner);
  for (const NumberMention& m : family.mentions) {
    // An unsaved return under the number is another operator's.
    const std::string condition = m.saved.empty() ? "" : compose(" and {}<>0", {m.saved});
    const std::string statement = compose("update {} set {}=? where {}=?", {m.table, m.column, m.column}) + condition;
    if (shared == SharedNumber::No)
      execSql(statement, to, from);
    else if (!m.partner.empty())
      execSql(statement + compose(" and {}=?", {m.partner}), to, from, head.front().text(family.partner));
  }
}

double backAtMost(double due, double settled) {
  return std::clamp(settled, std::min(due, 0.0), std::max(due, 0.0));
}

std::optional<double> settledBefore(const DocumentFamily& family, const QString& number) {
  for (const DocumentFamily& f : documentFamilies()) {
    if (f.isReturned.empty() || f.partner != family.partner || &f == &family) continue;
    const RowSet heads = openSelect(compose("select {},{},{} from {} where {}=1 and {}=?",
                                            {f.paid, f.collected, f.number, f.head, f.isReturned, f.returnedBy}),
                                    number);
    if (!heads.isEmpty()) return heads.number(0, 0) + heads.number(0, 1) - partial::restPaidBack(f, heads.text(0, 2));
  }
  return {};
}

void refreshWaitingTotals(const DocumentFamily& family, const QString& number) {
  if (family.isCount()) {
    const RowSet sums =
        openSelect("select sum(pd_sl) as pdsl,sum(kc_sl) as kcsl from jxc_kcpdsp where gl_djh=?", number);
    execSql("update jxc_kcpd set pd_sl=?,kc_sl=? where gl_djh=?", sums.number(0, 0), sums.number(0, 1), number);
  }
  if (!family.whole.goods.empty() && !family.comesIn) document_detail::refreshWholeCost(family, number);
  if (!family.pieces.empty())
    execSql(compose("update {} set {}=? where {}=?", {family.head, family.pieces, family.number}),
            lookupNumber(compose("select sum({}) from {} where {}=?",
                                 {family.line.columns->quantity, family.lines, family.number}),
                         number),
            number);
  if (family.due.empty()) return;
  const auto sum = [&](std::string_view condition) {
    const std::string statement =
        compose("select sum({}) as zje from {} where {}=?", {family.line.columns->total, family.lines, family.number}) +
        std::string(condition);
    return family.headSign * roundTotalIfSeparate(lookupNumber(statement, number));
  };
  // A return gives back what was paid: its balancing line counts.
  const double due = sum(family.headSign < 0 ? "" : " and g_sn<>'00000000'");
  double paid = sum("");
  if (const auto settled = settledBefore(family, number))
    paid = family.headSign * backAtMost(family.headSign * paid, *settled);
  const QString& typedPaid = family.partner == "ghs_sn" ? session().cs_cgje : session().cs_xsje;
  const bool onAccount =
      lookupNumber(compose("select {} from {} where {}=?", {family.settlement, family.head, family.number}), number) ==
      1;
  if (onAccount && strIsTrue(typedPaid))
    execSql(compose("update {} set {}=? where {}=?", {family.head, family.due, family.number}), due, number);
  else
    execSql(compose("update {} set {}=?,{}=? where {}=?", {family.head, family.due, family.paid, family.number}), due,
            paid, number);
}

Refusal linesLocked(const DocumentFamily& family, const QString& number) {
  const PeriodLock lock;
  const Ahead date = document_detail::askDate(family, number);
  return date.rows().isEmpty() ? Refusal() : lock.against(document_detail::dateIn(date));
}

bool deleteWaitingLine(const DocumentFamily& family, const QString& number, std::int64_t lineId, Prompt& prompt) {
  bool waits = false, emptied = false;
  std::optional<QString> stays;
  Refusal locked;
  {
    Transaction transaction(accountDb());
    locked = linesLocked(family, number);
    waits = document_detail::isWaiting(family, number) && !locked;
    if (waits && family.stays) stays = family.stays(number);
    if (waits) execSql(compose("delete from {} where id=? and {}=?", {family.lines, family.number}), lineId, number);
    // What makes it stay hangs on one of its lines: the others may go.
    if (stays && family.stays(number)) stays.reset();
    if (waits && !stays) {
      // A balancing line settles goods: alone it is no document.
      emptied = !document_detail::hasGoods(family, number);
      if (emptied) {
        document_detail::deleteDocument(family, number);
        writeLog(words(family.emptiedLog) + number);
      } else {
        refreshWaitingTotals(family, number);
      }
      transaction.commit();
    }
  }
  refused({locked, {!waits, changedMeanwhile(number)}, stays}, prompt);
  return emptied;
}

bool removeWaiting(const DocumentFamily& family, const QString& number) {
  if (!document_detail::isWaiting(family, number)) return false;
  document_detail::deleteDocument(family, number);
  writeLog(words(family.deletedLog) + number);
  return true;
}

bool deleteWaitingDocument(const DocumentFamily& family, const QString& number, Prompt& prompt) {
  if (family.stays && isRefused(family.stays(number), prompt)) return false;
  if (!prompt.ask(u"您确定要删除“待审核”单据吗！"_qs)) return false;
  bool deleted = false;
  {
    Transaction transaction(accountDb());
    deleted = removeWaiting(family, number);
    if (deleted) transaction.commit();
  }
  return !refused({{!deleted, changedMeanwhile(number)}}, prompt);
}

QString freightPayerText(double freight, double packing, bool wePay) {
  if (freight <= 0 && packing <= 0) return {};
  return wePay ? wePayText.toString() : u"对方付运费"_qs;
}

QString changeWaitingHead(const DocumentFamily& family, const QString& number, const HeadEdit& edit, Prompt& prompt) {
  const auto otherWarehouse = [&] {
    return *edit.warehouse != lookupValue(compose("select top 1 {} from {} where {}=? order by id",
                                                  {family.warehouse, family.head, family.number}),
                                          number);
  };
  if (edit.warehouse && family.staysWithStock && otherWarehouse()) {
    const QString missing = lookupValue(compose("select top 1 g_sn from {} where {}=? and g_sn not in "
                                                "(select g_sn from jxc_kcsp where ck_sn=?)",
                                                {family.lines, family.number}),
                                        number, *edit.warehouse);
    if (refused({{!missing.isEmpty(), u"当前仓库中不存在商品：“"_qs + missing + u"”，不能更换仓库！"_qs,
                  Subject::Warehouse}},
                prompt))
      return {};
    if (!mayGoShort(checkStockShort(number, *edit.warehouse, QStringView(family.prefix)), prompt)) return {};
  }

  if (!session().canChangeDocDate) return {};
  const PeriodLock lock;
  const Ahead before = document_detail::askDate(family, number);
  if (isRefused(lock.against(document_detail::dayAfter(edit, document_detail::dateIn(before))), prompt)) return {};
  const QString fresh = document_detail::rewriteHead(family, number, edit);
  refused({{fresh.isEmpty(), changedMeanwhile(number)}}, prompt);
  return fresh;
}

// ---- rights ------------------------------------------------------------------------------------------------------

bool mayCancel(const DocumentFamily& family) {
  return hasRight(family.cancel.group, family.cancel.position);
}

bool seesAmounts(const DocumentFamily& family) {
  // Those of a transfer may go by the sale prices on it.
  if (!family.hasMoney() && !family.line.retail.empty()) return session().canSeeCost && session().canSeePrice;
  return family.hasMoney() && family.side == PartnerType::Customer ? session().canSeePrice : session().canSeeCost;
}

}  // namespace jxc
