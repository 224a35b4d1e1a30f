#include "purchasing/receipt.h"

#include "core/clock.h"
#include "core/defaults.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/posting.h"

namespace jxc::receipt {
namespace receipt_detail {

constexpr char16_t spreading[] = u"0";  // cs_xsjgts: a difference is spread over the lines

void writeHead(const ReceiptDraft& draft, const QString& number, double due, double paid) {
  const bool putaway = strIsTrue(session().cs_sprk);
  const bool straight = draft.straightToStock.value_or(false);
  const bool settled = draft.settlement == Settlement::AtPaidAmount;
  // What will be spread over the lines is not payable any more.
  const double stored = settled && session().cs_xsjgts == spreading ? paid : due;
  insertRow("jxc_jhd", {{"j_sn", number},
                        {"ghs_sn", draft.partner},
                        {"ck_sn", draft.warehouse},
                        {"j_jhrq", draft.date},
                        {"j_yfje", stored},
                        {"j_sfje", paid},
                        {"u_sn", draft.salesperson},
                        {"j_note", sanitizeText(draft.note).left(200)},
                        {"a_name", session().a_name},
                        {"j_sn2", sanitizeText(draft.originalNumber).left(16)},
                        {"j_yhje", 0.0},
                        {"j_hkje", 0.0},
                        {"j_th", 0},
                        {"j_crk", !putaway || straight},
                        {"j_qk", straight},
                        {"j_fpno", sanitizeText(draft.invoiceNumber).left(32)},
                        {"j_fpje", draft.invoiceAmount},
                        {"j_yf", draft.freight},
                        {"j_bzf", draft.packing},
                        {"j_yffs", freightPayerText(draft.freight, draft.packing, draft.wePayFreight)},
                        {"j_dhdid", QString()},
                        {"j_status", 0},
                        {"j_checker", QString()},
                        {"j_chkrq", QString()},
                        {"j_jsfs", static_cast<int>(draft.settlement)},
                        {"j_kmmc", draft.account},
                        {"ht_sn", draft.contract},
                        {"j_dhbz", 0}});
  if (straight) execSql("update jxc_jhsp set jh_rksl=jh_sl where j_sn=?", number);
  if (!putaway) execSql("update jxc_jhsp set jh_rksl=jh_sl,jh_qxsl=0 where j_sn=?", number);
  if (!draft.contract.isEmpty())
    execSql("update jxc_htgl set ghs_sn=?,gl_djh=? where ht_sn=?", draft.partner, number, draft.contract);
  if (settled) balancePurchase(number, paid, due);
}

constexpr char linesWithNames[] =
    "select a.*,b.g_name,b.g_jm,b.gg_name,b.color_name,b.dw_name,b.g_sptm from jxc_jhsp a,jxc_goods b "
    "where a.g_sn=b.g_sn and a.j_sn=?";

}  // namespace receipt_detail

// ---- the document on the screen ----------------------------------------------------------------------------------

RowSet draftLines(const QString& number) {
  return openSelect(std::string(receipt_detail::linesWithNames) + " and a.a_name=? order by a.id", number,
                    session().a_name);
}

RowSet waitingLines(const QString& number) {
  return openSelect(std::string(receipt_detail::linesWithNames) + " order by a.id", number);
}

double payable(const QString& number) {
  return roundTotalIfSeparate(
      lookupNumber("select sum(jh_zje) as zje from jxc_jhsp where g_sn<>'00000000' and j_sn=?", number));
}

double paidAfter(double payable, double typed) {
  return session().cs_cgje == u"0" ? payable : typed;
}

ReceiptDraft newReceipt(const QString& lastDate) {
  ReceiptDraft draft;
  draft.date = newDocumentDate(lastDate);
  draft.number = newDocumentNumber(families::purchaseReceipt, draft.date);
  draft.partner = defaultSupplierSn();
  draft.warehouse = defaultWarehouseSn();
  draft.salesperson = defaultEmployeeSn();
  draft.settlement = session().cs_activatets == u"1" ? Settlement::RestOnAccount : Settlement::AtPaidAmount;
  draft.account = lookupValue("select top 1 yh_name from jxc_yhzh order by id");
  draft.wePayFreight = session().cs_djsh == u"0";  // "收货方支付": here that is us
  if (strIsTrue(session().cs_sprk)) draft.straightToStock = false;
  return draft;
}

SaveResult saveReceipt(const ReceiptDraft& draft, Prompt& prompt) {
  const DocumentFamily& family = families::purchaseReceipt;
  if (refused({{draftLineCount(family, draft.number) == 0, u"单据中没有业务发生，不能保存！"_qs},
               {draft.partner.isEmpty(), u"请选择供货商！"_qs},
               {draft.salesperson.isEmpty(), u"请选择经办人！"_qs},
               {draft.warehouse.isEmpty(), u"请选择仓库！"_qs}},
              prompt))
    return {.number = draft.number};
  const double paid = roundTotalIfSeparate(draft.paid);
  return saveDocument(
      family,
      {.number = draft.number,
       .date = draft.date,
       .writeHead = [&](const QString& number) { receipt_detail::writeHead(draft, number, payable(number), paid); }},
      prompt);
}

// ---- waiting receipts --------------------------------------------------------------------------------------------

RowSet waitingReceipts(const WaitingFilter& filter) {
  Filter where;
  where.add("a.ghs_sn=b.ghs_sn").add("a.ck_sn=c.ck_sn").add("a.u_sn=d.u_sn").add("a.j_status=0");
  if (!filter.partner.isEmpty()) where.add("a.ghs_sn=?", filter.partner);
  if (!filter.warehouse.isEmpty()) where.add("a.ck_sn=?", filter.warehouse);
  if (isWarehouseBound())
    where.add("a.ck_sn in (select ck_sn from jxc_ckxx where ck_asn like ?)", u"%"_qs + session().a_sn + u"%"_qs);
  if (!filter.key.trimmed().isEmpty()) {
    const QString like = u"%"_qs + sanitizeKeyword(filter.key.trimmed()) + u"%"_qs;
    where.add("(a.j_sn like ? or a.j_sn2 like ? or a.j_note like ? or b.ghs_name like ? or b.ghs_jm like ?)", like,
              like, like, like, like);
  }
  return openSelectWith(
      "select a.*,a.j_yfje-a.j_sfje-a.j_yhje as wfje,b.ghs_name,c.ck_name,d.u_name "
      "from jxc_jhd a,jxc_ghsxx b,jxc_ckxx c,jxc_user d" +
          where.where() + (filter.newestFirst ? " order by a.id desc" : " order by a.id"),
      where.values());
}

std::optional<AuditDraft> loadForAudit(const QString& number) {
  const RowSet rows = openSelect(
      "select a.*,b.ghs_name,c.ck_name,d.u_name from jxc_jhd a,jxc_ghsxx b,jxc_ckxx c,jxc_user d "
      "where a.ghs_sn=b.ghs_sn and a.ck_sn=c.ck_sn and a.u_sn=d.u_sn and a.j_status=0 and a.j_sn=? order by a.id",
      number);
  if (rows.isEmpty()) return std::nullopt;
  const Row row = rows.front();
  AuditDraft draft;
  draft.number = number;
  draft.date = row.text("j_jhrq");
  draft.partnerName = row.text("ghs_name");
  draft.warehouseName = row.text("ck_name");
  draft.salespersonName = row.text("u_name");
  draft.operatorName = row.text("a_name");
  draft.payable = row.number("j_yfje");
  draft.paid = row.number("j_sfje");
  draft.settlement = row.integer("j_jsfs") == 1 ? Settlement::RestOnAccount : Settlement::AtPaidAmount;
  draft.account = row.text("j_kmmc");
  draft.note = row.text("j_note");
  return draft;
}

AuditOutcome saveCheckedValueTab2(const AuditDraft& draft, Prompt& prompt) {
  const QString gate = auditGate(draft.number, draft.date);
  if (gate != u"ok") {
    prompt.notice(gate);
    return AuditOutcome::Refused;
  }
  const double paid = roundTotalIfSeparate(draft.paid);
  const auto change = [&](std::int64_t head) {
    const double due = lookupNumber("select j_yfje from jxc_jhd where id=?", head);
    const bool settled = draft.settlement == Settlement::AtPaidAmount;
    const bool spread = session().cs_xsjgts == receipt_detail::spreading;
    updateRow("jxc_jhd", head,
              {{"j_yfje", settled && spread ? paid : due},
               {"j_yhje", settled && !spread ? due - paid : 0.0},
               {"j_jsfs", static_cast<int>(draft.settlement)},
               {"j_sfje", paid},
               {"j_note", sanitizeText(draft.note).left(100)},
               {"j_kmmc", draft.account}});
    if (settled && paid <= due) balancePurchase(draft.number, paid, due);
  };
  return auditAsking(families::purchaseReceipt, draft.number, prompt, change);
}

// ---- history -----------------------------------------------------------------------------------------------------

RowSet receiptHistory(const QString& goods, const QString& supplier) {
  if (strIsTrue(session().cs_employ))
    return openSelect(
        "select top 10 b.j_jhrq,a.* from jxc_jhsp a,jxc_jhd b where a.j_sn=b.j_sn and b.j_status=1 and a.g_sn=? "
        "and b.ghs_sn=? order by a.j_sn desc,a.id desc",
        goods, supplier);
  return openSelect(
      "select top 10 b.j_jhrq,a.* from jxc_jhsp a,jxc_jhd b where a.j_sn=b.j_sn and b.j_status=1 and a.g_sn=? "
      "order by a.j_sn desc,a.id desc",
      goods);
}

RowSet supplierQuotes(const QString& goods, const QString& supplier) {
  return openSelect("select * from jxc_ghsbj where g_sn=? and ghs_sn=? order by id desc", goods, supplier);
}

}  // namespace jxc::receipt
