#include "accounts/invoices.h"

#include "accounts/partner_documents.h"
#include "core/clock.h"
#include "core/list_audit.h"
#include "core/numbers.h"
#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/unusual.h"
#include "engine/number_text.h"
#include "masterdata/partners.h"
#include "stock/document_family.h"

#include <algorithm>

namespace jxc::invoices {
namespace invoices_detail {

using partner_books::cleanNote;
using partner_books::invoiceLedger;
using partner_books::writePartnerLog;

/// The document whose invoice is registered on its line.
const DocumentFamily& tradeOf(const PartnerSide& side) {
  return side.isCustomer() ? families::sale : families::purchaseReceipt;
}

Refusal wrongEmployee(const QString& employee) {
  return {employee.isEmpty(), u"经办人不能为空！"_qs, Subject::Employee};
}
Refusal changedByOthers() {
  return {u"该发票刚刚被其他操作员修改或删除，请重新查询！"_qs};
}

bool isByHand(const PartnerSide& side, const Line& line, const char16_t* refusal, Prompt& prompt) {
  return !refused({{!line.number.startsWith(handPrefix(side)), words(refusal)}}, prompt);
}

/// The line as the database has it now; empty when it is gone, or has become another one's.
RowSet rowOf(const PartnerSide& side, const Line& line) {
  return openSelect("select * from jxc_fpdjb where id=? and gl_djh=? and fp_type=?", line.id, line.number,
                    words(side.type));
}

/// All that a form shows or changes of a line; its balance moves with other lines.
QString shownOf(const Row& row) {
  QStringList texts;
  for (const char* column :
       {"fp_ghskh", "fp_rq", "fp_yfje", "fp_kpje", "fp_no", "fp_kprq", "u_sn", "fp_note", "fp_check"})
    texts << row.text(column);
  return texts.join(u'\n');
}

/// A partner may have been deleted or switched off while the form stood open: his invoice would stand in no list.
Refusal partnerGone(const PartnerSide& side, const QString& partner) {
  const QString found = lookupValue(
      compose("select {} from {} where {}=? and {}=0", {side.sn, side.table, side.sn, side.forbidden}), partner);
  return {found.isEmpty(), u"该"_qs + words(side.noun) + u"已停用或已删除，不能开票！"_qs, Subject::Partner};
}

/// What counts on a locked day stays as it is.
Refusal lockedLine(const RowSet& rows) {
  if (rows.isEmpty() || !rows.front().flag("fp_check")) return {};
  return lockedOn(rows.front().text("fp_rq"), OnDay::Booked);
}

QString insertNew(const PartnerSide& side, const Draft& draft) {
  const QString prefix = handPrefix(side);
  const QString number = previewNumber(side, draft.date);
  const std::int64_t id = insertRow("jxc_fpdjb", {{"gl_djh", number},
                                                  {"fp_rq", draft.date},
                                                  {"fp_no", draft.invoice},
                                                  {"fp_yfje", 0.0},
                                                  {"fp_sfje", 0.0},
                                                  {"fp_kpje", draft.amount},
                                                  {"fp_qcje", 0.0},
                                                  {"fp_ljje", 0.0},
                                                  {"fp_flag", -1},
                                                  {"fp_type", words(side.type)},
                                                  {"fp_djlx", prefix},
                                                  {"fp_djtxt", u"增加发票"},
                                                  {"fp_note", cleanNote(draft.note)},
                                                  {"fp_ghskh", draft.partner},
                                                  {"fp_check", 0},
                                                  {"fp_checker", u""},
                                                  {"fp_chkrq", u""},
                                                  {"fp_kprq", draft.date},
                                                  {"u_sn", draft.employee},
                                                  {"a_name", session().a_name}});
  writePartnerLog(side, u"增加开票"_qs, draft.partner, draft.amount);
  if (strIsTrue(session().cs_shdj)) checkDj(side, id);
  return number;
}

/// What was invoiced in locked days stays; from an open day on more may be invoiced.
Refusal takesBackLocked(const RowSet& rows, double amount) {
  if (rows.isEmpty()) return {};
  const Row row = rows.front();
  const Refusal locked = lockedOn(row.text("fp_kprq"), OnDay::Booked);
  if (!locked || amount >= row.number("fp_kpje")) return {};
  return {locked.text + u"\r\n\r\n已登记的开票金额只能增加；要冲减请用“增加”开一张负数发票。"_qs, Subject::Amount};
}

/// Counts from `day` on: its own, or today.
bool count(const PartnerSide& side, std::int64_t id, const QString& day = {}) {
  Transaction transaction(accountDb());
  const RowSet rows = openSelect("select fp_ghskh,fp_rq from jxc_fpdjb where id=? and fp_check=0", id);
  if (rows.isEmpty()) return false;
  const QString date = day.isEmpty() ? rows.front().text("fp_rq") : day;
  PeriodLock().demandOpen(date);
  execSql("update jxc_fpdjb set fp_check=1,fp_checker=?,fp_chkrq=?,fp_rq=? where id=?", session().a_name,
          clock::today(), date, id);
  recomputeFp(rows.front().text("fp_ghskh"), side.which, date);
  transaction.commit();
  return true;
}

/// Empty: it is gone, or another operator has written to it.
std::optional<QString> change(const PartnerSide& side, const Draft& draft) {
  const RowSet rows = rowOf(side, {draft.id, draft.number});
  if (rows.isEmpty() || shownOf(rows.front()) != draft.shown) return {};
  const Row before = rows.front();
  if (before.flag("fp_check")) PeriodLock().demandOpen(before.text("fp_rq"), OnDay::Booked);
  updateRow("jxc_fpdjb", draft.id,
            {{"a_name", session().a_name},
             {"u_sn", draft.employee},
             {"fp_kpje", draft.amount},
             {"fp_no", draft.invoice},
             {"fp_note", cleanNote(draft.note)},
             {"fp_rq", draft.date},
             {"fp_kprq", draft.date}});
  writePartnerLog(side, u"修改开票"_qs, before.text("fp_ghskh"), draft.amount);
  if (before.flag("fp_check"))
    recomputeFp(before.text("fp_ghskh"), side.which, std::min(before.text("fp_rq"), draft.date));
  return draft.number;
}

bool isUsual(double amount, const QString& date, Prompt& prompt) {
  const QString newest = lookupValue("select max(fp_rq) from jxc_fpdjb where fp_rq<=?", clock::today() + u'~');
  return confirmUnusual({.yuan = amount, .date = date, .newest = newest, .lastEntry = lookupValue(lastLogEntry)},
                        prompt);
}

}  // namespace invoices_detail

QString handPrefix(const PartnerSide& side) {
  return side.isCustomer() ? QStringLiteral("XP") : QStringLiteral("CP");
}

QString previewNumber(const PartnerSide& side, const QString& date) {
  return nextDocNoOn("jxc_fpdjb", "gl_djh", handPrefix(side), date);
}

std::optional<Draft> openInvoice(const PartnerSide& side, const Line& line, Prompt& prompt) {
  namespace detail = invoices_detail;
  if (!detail::isByHand(side, line, u"只能修改手工增加的发票，单据的发票请用“发票登记”！", prompt)) return {};
  const RowSet rows = detail::rowOf(side, line);
  if (rows.isEmpty()) {
    prompt.refuse(detail::changedByOthers());
    return {};
  }
  const Row row = rows.front();
  return Draft{.id = line.id,
               .number = line.number,
               .partner = row.text("fp_ghskh"),
               .date = row.text("fp_rq").left(10),
               .amount = row.number("fp_kpje"),
               .invoice = row.text("fp_no"),
               .employee = row.text("u_sn"),
               .note = row.text("fp_note"),
               .shown = detail::shownOf(row)};
}

std::optional<QString> saveInvoice(const PartnerSide& side, const Draft& typed, Prompt& prompt) {
  namespace detail = invoices_detail;
  Draft draft = typed;
  draft.amount = toSixDecimals(typed.amount);
  draft.invoice = sanitizeText(typed.invoice.trimmed()).left(32);
  if (draft.id == 0 && !partner_books::isPartnerChosen(side, draft.partner, prompt)) return {};
  if (refused({{draft.amount == 0, u"开票金额不能为0！"_qs, Subject::Amount},
               detail::wrongEmployee(draft.employee),
               lockedOn(draft.date),
               draft.id == 0 ? Refusal() : detail::lockedLine(detail::rowOf(side, {draft.id, draft.number}))},
              prompt))
    return {};
  if (!detail::isUsual(draft.amount, draft.date, prompt)) return {};
  std::optional<QString> number;
  Refusal gone;
  {
    Transaction transaction(accountDb());
    PeriodLock().demandOpen(draft.date);
    if (draft.id == 0) gone = detail::partnerGone(side, draft.partner);
    if (!gone) {
      number = draft.id == 0 ? detail::insertNew(side, draft) : detail::change(side, draft);
      if (!number) gone = detail::changedByOthers();
      transaction.commit();
    }
  }
  if (!isRefused(gone, prompt) && draft.id == 0) prompt.say(u"发票 "_qs + *number + u" 已保存"_qs);
  return number;
}

bool deleteInvoice(const PartnerSide& side, const Line& line, Prompt& prompt) {
  namespace detail = invoices_detail;
  if (!detail::isByHand(side, line, u"只能删除手工增加的发票，单据的发票随单据取消！", prompt)) return false;
  if (isRefused(detail::lockedLine(detail::rowOf(side, line)), prompt)) return false;
  if (!prompt.ask(QStringLiteral("您确定要删除该发票信息吗！"))) return false;
  Transaction transaction(accountDb());
  const RowSet rows = detail::rowOf(side, line);
  if (rows.isEmpty()) return false;
  const Row row = rows.front();
  if (row.flag("fp_check")) PeriodLock().demandOpen(row.text("fp_rq"), OnDay::Booked);
  execSql("delete from jxc_fpdjb where id=?", line.id);
  recomputeFp(row.text("fp_ghskh"), side.which, row.text("fp_rq"));
  detail::writePartnerLog(side, u"删除开票"_qs, row.text("fp_ghskh"), row.number("fp_kpje"));
  transaction.commit();
  return true;
}

std::optional<Registration> openRegistration(const PartnerSide& side, const Line& line, Prompt& prompt) {
  namespace detail = invoices_detail;
  const QString trade = words(detail::tradeOf(side).prefix);
  const QString word = side.isCustomer() ? u"销售单"_qs : u"采购单"_qs;
  if (refused({{!line.number.startsWith(trade), u"只能登记"_qs + word + u"的发票信息！"_qs}}, prompt)) return {};
  const RowSet rows = detail::rowOf(side, line);
  if (rows.isEmpty()) {
    prompt.refuse(detail::changedByOthers());
    return {};
  }
  const Row row = rows.front();
  const double invoiced = row.number("fp_kpje");
  const QString day = row.text("fp_kprq").left(10);  // an audit writes the moment of the sale
  if (invoiced != 0 && !prompt.ask(QStringLiteral("该单据发票已开，需要继续开票吗？"))) return {};
  return Registration{.line = line,
                      .partner = row.text("fp_ghskh"),
                      .partnerName = partnerName(side, row.text("fp_ghskh")),
                      .due = row.number("fp_yfje"),
                      .invoiced = invoiced,
                      .amount = invoiced,
                      .invoice = row.text("fp_no"),
                      .date = day.isEmpty() ? clock::today() : day,
                      .employee = row.text("u_sn"),
                      .note = row.text("fp_note"),
                      .shown = detail::shownOf(row)};
}

bool registerInvoice(const PartnerSide& side, const Registration& typed, Prompt& prompt) {
  namespace detail = invoices_detail;
  // The day of the invoice counts: what was sold in a closed month is invoiced in this one.
  if (refused({{typed.amount < 0, u"开票金额不能为负数！"_qs, Subject::Amount},
               detail::wrongEmployee(typed.employee),
               lockedOn(typed.date),
               detail::takesBackLocked(detail::rowOf(side, typed.line), typed.amount)},
              prompt))
    return false;
  if (!detail::isUsual(typed.amount, typed.date, prompt)) return false;
  Refusal changed;
  {
    Transaction transaction(accountDb());
    PeriodLock().demandOpen(typed.date);
    const RowSet rows = detail::rowOf(side, typed.line);
    if (rows.isEmpty() || detail::shownOf(rows.front()) != typed.shown)
      changed = detail::changedByOthers();
    else
      changed = detail::takesBackLocked(rows, typed.amount);
    if (!changed) {
      const Row row = rows.front();
      updateRow("jxc_fpdjb", typed.line.id,
                {{"a_name", session().a_name},
                 {"u_sn", typed.employee},
                 {"fp_kpje", toSixDecimals(typed.amount)},
                 {"fp_no", sanitizeText(typed.invoice.trimmed()).left(32)},
                 {"fp_note", detail::cleanNote(typed.note)},
                 {"fp_kprq", typed.date}});
      recomputeFp(row.text("fp_ghskh"), side.which, row.text("fp_rq"));
      detail::writePartnerLog(side, u"发票登记"_qs, row.text("fp_ghskh"), typed.amount);
      transaction.commit();
    }
  }
  return !isRefused(changed, prompt);
}

bool checkDj(const PartnerSide& side, std::int64_t id) {
  return invoices_detail::count(side, id);
}

bool auditOne(const PartnerSide& side, const Line& line, Prompt& prompt) {
  namespace detail = invoices_detail;
  const RowSet rows = detail::rowOf(side, line);
  const bool waits = !line.number.isEmpty() && !rows.isEmpty() && !rows.front().flag("fp_check");
  if (refused({{!waits, u"该发票已审核或已删除，不需要审核！"_qs}}, prompt)) return !rows.isEmpty();
  const QString question = QStringLiteral("您确定要审核当前选中的单据吗！"), day = rows.front().text("fp_rq").left(10);
  const PeriodLock lock;
  if (!lock.holds(day)) return prompt.ask(question) && checkDj(side, line.id);
  // Behind the lock no balance moves any more.
  const QString today = clock::today();
  if (isRefused(lock.against(today), prompt)) return false;
  const QString later = u"\r\n\r\n它的日期 %1 已经锁定，审核后从今天（%2）起计入余额。"_qs.arg(day, today);
  return prompt.ask(question + later) && detail::count(side, line.id, today);
}

bool auditAll(const PartnerSide& side, const Criteria& criteria, Prompt& prompt) {
  if (refused({{criteria.kind != kWaiting, u"列表中都是已审核的发票，请先选择“未审核”！"_qs}}, prompt)) return false;
  const RowSet list = openSelect(invoiceLines(side, criteria));
  const PeriodLock lock;
  ListAudit walk{
      .question = u"您的操作将审核当前列表中所有未审核的单据，确认吗？\r\n\r\n如需审核某个单据，请按右键！"_qs,
      .audit =
          [&](const ListedDocument& line, Prompt& told) {
            const QString alone = u"它的日期 %1 已经锁定，请单独审核，审核后从当天起计入余额。"_qs.arg(line.date);
            return !refused({{lock.holds(line.date), alone}}, told) && checkDj(side, line.id);
          },
      .listed = list.rowCount()};
  for (const Row row : list)
    walk.waiting.push_back({.number = row.text("gl_djh"), .date = row.text("fp_rq").left(10), .id = row.integer("id")});
  return auditEach(walk, prompt).has_value();
}

bool exclude(const PartnerSide& side, const Line& line, Prompt& prompt) {
  namespace detail = invoices_detail;
  if (refused({{line.number.isEmpty(), u"单据号为空不能排除！"_qs}, detail::lockedLine(detail::rowOf(side, line))},
              prompt))
    return false;
  if (!prompt.ask(QStringLiteral("该单据不开发票或发票不正确，从列表中排除，\r\n\r\n转到发票管理中等待处理，继续吗？")))
    return false;
  Transaction transaction(accountDb());
  const RowSet rows = detail::rowOf(side, line);
  if (rows.isEmpty() || !rows.front().flag("fp_check")) return !rows.isEmpty();
  const Row row = rows.front();
  PeriodLock().demandOpen(row.text("fp_rq"), OnDay::Booked);
  // What does not count has no balance: an old one would be taken for its own.
  execSql("update jxc_fpdjb set fp_check=0,fp_checker='',fp_chkrq='',fp_ljje=0 where id=?", line.id);
  recomputeFp(row.text("fp_ghskh"), side.which, row.text("fp_rq"));
  detail::writePartnerLog(side, u"排除发票，单据号："_qs + line.number, row.text("fp_ghskh"), row.number("fp_kpje"));
  transaction.commit();
  return true;
}

Sql invoiceLines(const PartnerSide& side, const Criteria& criteria) {
  using namespace partner_books;
  return criteria.kind == kWaiting ? waitingLines(invoiceLedger, side, criteria)
                                   : overviewDetail(invoiceLedger, side, criteria);
}

}  // namespace jxc::invoices
