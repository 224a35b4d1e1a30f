#include "accounts/partner_documents.h"

#include "accounts/cash_ledger.h"
#include "accounts/partner_posting.h"
#include "core/clock.h"
#include "core/list_audit.h"
#include "core/log.h"
#include "core/numbers.h"
#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/unusual.h"
#include "masterdata/partners.h"
#include "stock/document_family.h"

namespace jxc::partner_books {
namespace partner_documents_detail {

/// What waits behind the lock may come out of it: only the new day counts.
Refusal refusal(const PartnerSide& side, Kind kind, const Draft& draft) {
  if (const Refusal locked = lockedOn(draft.date)) return locked;
  if (draft.amount == 0) return {wordOf(side, kind) + u"不能为0！"_qs, Subject::Amount};
  return {draft.employee.isEmpty(), u"经办人不能为空！"_qs, Subject::Employee};
}

QString insertDocument(const PartnerSide& side, Kind kind, const Draft& draft, const QString& kindText) {
  const bool payment = kind == Kind::Payment;
  const QString prefix = prefixOf(side, kind);
  // By way of the ledger, which looks at the documents too: rounding lines stand in the ledger alone, and a document
  // under the number of one would take it along when it is cancelled.
  const QString number = previewNumber(side, kind, draft.date);
  insertRow("jxc_ysyfk_dj", {{"gl_djh", number},
                             {"k_rq", draft.date},
                             {"k_fkfs", payment ? draft.account : words(side.dueWord)},
                             {"k_yfje", payment ? 0 : draft.amount},
                             {"k_sfje", payment ? draft.amount : 0},
                             {"k_qcje", 0.0},
                             {"k_yhje", 0.0},
                             {"k_ljje", 0.0},
                             {"k_mlje", payment ? draft.rounding : 0},
                             {"k_flag", payment ? -1 : 1},
                             {"k_type", words(side.type)},
                             {"k_djlx", prefix},
                             {"k_djtxt", kindText},
                             {"gl_djh2", draft.settles},
                             {"k_note", draft.note},
                             {"k_check", 0},
                             {"k_checker", u""},
                             {"k_chkrq", u""},
                             {"u_sn", draft.employee},
                             {"a_name", session().a_name},
                             {"k_ghskh", draft.partner}});
  return number;
}

QString addNew(const PartnerSide& side, Kind kind, const Draft& draft) {
  Draft clean = draft;
  clean.note = cleanNote(draft.note);
  clean.settles.clear();
  if (kind == Kind::Payment) return addPayment(side, clean, words(side.paymentWord));
  const QString number = insertDocument(side, kind, clean, u"增加"_qs + words(side.dueWord));
  writePartnerLog(side, words(side.addedDueLog), draft.partner, draft.amount);
  if (strIsTrue(session().cs_shdj)) auditDocument(side, kind, number);
  return number;
}

/// Empty: another station has audited or deleted it since it was opened.
std::optional<QString> change(const PartnerSide& side, Kind kind, const Draft& draft) {
  const RowSet rows = openSelect("select gl_djh,k_ghskh from jxc_ysyfk_dj where id=? and k_check=0", draft.id);
  if (rows.isEmpty()) return {};
  const QString note = cleanNote(draft.note);
  if (kind == Kind::Due) {
    updateRow("jxc_ysyfk_dj", draft.id,
              {{"a_name", session().a_name},
               {"u_sn", draft.employee},
               {"k_yfje", draft.amount},
               {"k_note", note},
               {"k_rq", draft.date}});
  } else {
    updateRow("jxc_ysyfk_dj", draft.id,
              {{"a_name", session().a_name},
               {"k_fkfs", draft.account},
               {"u_sn", draft.employee},
               {"k_sfje", draft.amount},
               {"k_note", note},
               {"k_rq", draft.date},
               {"k_mlje", draft.rounding}});
  }
  const QString what = kind == Kind::Due ? words(side.changedDueLog) : u"修改"_qs + words(side.paymentWord);
  writePartnerLog(side, what, rows.front().text("k_ghskh"), draft.amount);
  return rows.front().text("gl_djh");
}

/// The receipts screen asks with the words of the receivables one, as its operators know it.
QString deleteQuestion(const PartnerSide& side, Kind kind) {
  const bool receipt = kind == Kind::Payment && side.isCustomer();
  return u"您确定要删除该"_qs + wordOf(side, receipt ? Kind::Due : kind) + u"信息吗！"_qs;
}

/// A deleted payment no longer counts as collected on its sale or purchase. Returns keep what was settled on them.
void takeOffDocument(const PartnerSide& side, double paid, const QString& document) {
  const DocumentFamily& f = side.isCustomer() ? families::sale : families::purchaseReceipt;
  execSql(compose("update {} set {}={}-(?) where {}=?", {f.head, f.collected, f.collected, f.number}), paid, document);
  execSql(compose("update {} set {}=0 where {}<0 and {}=?", {f.head, f.collected, f.collected, f.number}), document);
  if (side.isCustomer()) writeLog(QStringLiteral("审核收款，"));  // under these words the log viewer finds deleted ones
}

Refusal dayLocked(const PartnerSide& side, Kind kind, const QString& number, OnDay what) {
  const RowSet rows = openSelect("select top 1 k_rq from jxc_ysyfk_dj where gl_djh=? and k_djlx=? order by id", number,
                                 prefixOf(side, kind));
  return rows.isEmpty() ? Refusal() : lockedOn(rows.text(0, 0), what);
}

bool isWaiting(const QString& number) {
  return !lookupValue("select gl_djh from jxc_ysyfk_dj where k_check=0 and gl_djh=?", number).isEmpty();
}

/// The partners that an operator bound to warehouses may see in lists; everybody else sees all.
Sql partnerSource(const PartnerSide& side) {
  if (!areListsBound()) return std::string(side.table);
  return {compose("(select distinct m.* from {} m,jxc_ckxx n where (m.ck_sn=n.ck_sn or m.ck_sn='-1') and m.{}=0 "
                  "and n.ck_asn like ?)",
                  {side.table, side.forbidden}),
          u"%"_qs + session().a_sn + u"%"_qs};
}

}  // namespace partner_documents_detail

void writePartnerLog(const PartnerSide& side, const QString& what, const QString& partner, double amount) {
  writeLog(what + u"，"_qs + words(side.noun) + u"："_qs + partnerName(side, partner) + u"，金额："_qs +
           numberText(amount));
}

QString cleanNote(const QString& typed) {
  return sanitizeText(typed.trimmed()).left(200);
}

QString wordOf(const PartnerSide& side, Kind kind) {
  return words(kind == Kind::Due ? side.dueWord : side.paymentWord);
}

QString prefixOf(const PartnerSide& side, Kind kind) {
  return words(kind == Kind::Due ? side.openingPrefix : side.paymentPrefix);
}

bool isPartnerChosen(const PartnerSide& side, const QString& partner, Prompt& prompt) {
  return !refused({{partner.isEmpty(), u"请选择"_qs + words(side.noun) + u"！"_qs, Subject::Partner}}, prompt);
}

QString previewNumber(const PartnerSide& side, Kind kind, const QString& date) {
  return nextDocNoOn("jxc_ysyfk", "gl_djh", prefixOf(side, kind), date);
}

std::optional<Draft> openDocument(const PartnerSide& side, Kind kind, std::int64_t id, Prompt& prompt) {
  const RowSet rows = openSelect("select * from jxc_ysyfk_dj where id=? and k_djlx=?", id, prefixOf(side, kind));
  if (rows.isEmpty()) return {};
  const Row row = rows.front();
  if (row.flag("k_check")) {
    prompt.notice(QStringLiteral("该单据已审核，不能修改！"));
    return {};
  }
  return Draft{.id = id,
               .number = row.text("gl_djh"),
               .partner = row.text("k_ghskh"),
               .date = row.text("k_rq"),
               .amount = row.number(kind == Kind::Due ? "k_yfje" : "k_sfje"),
               .rounding = row.number("k_mlje"),
               .account = row.text("k_fkfs"),
               .employee = row.text("u_sn"),
               .note = row.text("k_note"),
               .settles = row.text("gl_djh2")};
}

std::optional<QString> saveDocument(const PartnerSide& side, Kind kind, const Draft& draft, Prompt& prompt) {
  namespace detail = partner_documents_detail;
  if (draft.id == 0 && !isPartnerChosen(side, draft.partner, prompt)) return {};
  if (isRefused(detail::refusal(side, kind, draft), prompt)) return {};
  const QString newest = lookupValue("select max(k_rq) from jxc_ysyfk_dj where k_rq<=?", clock::today() + u'~');
  const FiguresOfDocument figures{
      .yuan = draft.amount, .date = draft.date, .newest = newest, .lastEntry = lookupValue(lastLogEntry)};
  if (!confirmUnusual(figures, prompt)) return {};
  std::optional<QString> number;
  Refusal left;
  {
    Transaction transaction(accountDb());
    PeriodLock().demandOpen(draft.date);
    if (draft.id == 0) left = partnerLeft(side, draft.partner);
    if (!left) {
      number = draft.id == 0 ? detail::addNew(side, kind, draft) : detail::change(side, kind, draft);
      transaction.commit();
    }
  }
  if (isRefused(left, prompt)) return {};
  if (number && draft.id == 0) prompt.say(wordOf(side, kind) + u"单 "_qs + *number + u" 已保存"_qs);
  return number;
}

QString stateAfterSaving() {
  return strIsTrue(session().cs_shdj) ? u" 已审核"_qs : u" 等待审核"_qs;
}

QString addPayment(const PartnerSide& side, const Draft& draft, const QString& kindText) {
  namespace detail = partner_documents_detail;
  const QString number = detail::insertDocument(side, Kind::Payment, draft, kindText);
  writePartnerLog(side, u"增加"_qs + words(side.paymentWord), draft.partner, draft.amount);
  if (strIsTrue(session().cs_shdj)) auditDocument(side, Kind::Payment, number);
  return number;
}

bool auditDocument(const PartnerSide& side, Kind kind, const QString& number) {
  Transaction transaction(accountDb());
  const PeriodLock lock;
  const RowSet rows =
      openSelect("select * from jxc_ysyfk_dj where gl_djh=? and k_djlx=? and k_check=0", number, prefixOf(side, kind));
  if (rows.isEmpty()) return false;
  const Row document = rows.front();
  lock.demandOpen(document.text("k_rq"));
  const QString partner = document.text("k_ghskh");
  postDocument(side, kind, document);
  execSql("update jxc_ysyfk_dj set k_check=1,k_checker=?,k_chkrq=? where gl_djh=?", session().a_name, clock::today(),
          number);
  // Also on a payment the log shows what is due, which is nothing there.
  writePartnerLog(side, u"审核"_qs + wordOf(side, kind), partner, document.number("k_yfje"));
  transaction.commit();
  return true;
}

bool checkSkDj(const QString& number) {
  return auditDocument(customerSide, Kind::Payment, number);
}

bool checkFkDj(const QString& number) {
  return auditDocument(supplierSide, Kind::Payment, number);
}

bool auditOne(const PartnerSide& side, Kind kind, const QString& number, Prompt& prompt) {
  return !isRefused(partner_documents_detail::dayLocked(side, kind, number, OnDay::Dated), prompt) &&
         prompt.ask(u"您确定要审核该"_qs + wordOf(side, kind) + u"信息吗！"_qs) && auditDocument(side, kind, number);
}

bool auditAll(const PartnerSide& side, Kind kind, const RowSet& list, Prompt& prompt) {
  ListAudit walk{
      .question = u"您的操作将审核当前列表中所有未审核的单据，确认吗？\r\n\r\n如需审核某个单据，请按右键！"_qs,
      .audit = [&](const ListedDocument& document, Prompt&) { return auditDocument(side, kind, document.number); },
      .listed = list.rowCount()};
  for (const Row row : list)
    if (!row.flag("k_check")) walk.waiting.push_back({.number = row.text("gl_djh"), .id = row.integer("id")});
  return auditEach(walk, prompt).has_value();
}

bool unCheck(const PartnerSide& side, Kind kind, const QString& number, Prompt& prompt) {
  namespace detail = partner_documents_detail;
  const QString word = wordOf(side, kind);
  if (kind == Kind::Due && detail::isWaiting(number)) return false;
  if (isRefused(detail::dayLocked(side, kind, number, OnDay::Booked), prompt) ||
      !prompt.ask(u"您确定要取消审核该"_qs + word + u"信息吗！"_qs))
    return false;

  Transaction transaction(accountDb());
  const PeriodLock lock;
  const RowSet rows =
      openSelect("select * from jxc_ysyfk_dj where gl_djh=? and k_djlx=? and k_check<>0", number, prefixOf(side, kind));
  if (rows.isEmpty()) return false;
  const Row document = rows.front();
  lock.demandOpen(document.text("k_rq"), OnDay::Booked);
  takeBackDocument(side, kind, document);
  QString what = u"取消审核"_qs + word;
  if (kind == Kind::Payment && side.isCustomer()) what += u"，单据号："_qs + number;
  writePartnerLog(side, what, document.text("k_ghskh"), document.number(kind == Kind::Due ? "k_yfje" : "k_sfje"));
  transaction.commit();
  return true;
}

bool deleteDocument(const PartnerSide& side, Kind kind, std::int64_t id, Prompt& prompt) {
  namespace detail = partner_documents_detail;
  const auto read = [&] {
    return openSelect("select k_check,k_sfje,gl_djh2 from jxc_ysyfk_dj where id=? and k_djlx=?", id,
                      prefixOf(side, kind));
  };
  const RowSet seen = read();
  if (seen.isEmpty()) return false;
  if (seen.front().flag("k_check")) {
    prompt.notice(QStringLiteral("该单据已审核，不能删除！"));
    return false;
  }
  if (!prompt.ask(detail::deleteQuestion(side, kind))) return false;

  Transaction transaction(accountDb());
  const RowSet rows = read();
  if (rows.isEmpty() || rows.front().flag("k_check")) return false;
  execSql("delete from jxc_ysyfk_dj where id=?", id);
  if (kind == Kind::Payment) detail::takeOffDocument(side, rows.front().number("k_sfje"), rows.front().text("gl_djh2"));
  transaction.commit();
  return true;
}

Sql documentList(const PartnerSide& side, Kind kind, const DocumentFilter& choices) {
  namespace detail = partner_documents_detail;
  Filter filter;
  filter.add("a.u_sn=b.u_sn")
      .add(compose("a.k_ghskh=c.{}", {side.sn}))
      .add("a.k_djlx=?", prefixOf(side, kind))
      .add("a.k_rq>=?", choices.from)
      .add("a.k_rq<=?", choices.to + u" 23:59:59"_qs);
  if (!choices.partner.isEmpty()) filter.add("a.k_ghskh=?", choices.partner);
  if (const QString key = choices.key.trimmed(); !key.isEmpty()) {
    const QString like = u"%"_qs + sanitizeKeyword(key) + u"%"_qs;
    filter.add("(a.gl_djh like ? or a.k_note like ?)", like, like);
  }
  return Sql(compose("select a.*,b.u_name,c.{} as name from jxc_ysyfk_dj a,jxc_user b,", {side.name}))
      .add(detail::partnerSource(side))
      .add(" c")
      .where(filter)
      .add(" order by a.id desc");
}

}  // namespace jxc::partner_books
