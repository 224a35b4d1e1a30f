#include "accounts/partner_posting.h"

#include "accounts/cash_ledger.h"
#include "core/clock.h"
#include "core/defaults.h"
#include "core/numbers.h"
#include "core/posting.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "stock/ledger_rows.h"

namespace jxc::partner_books {
namespace partner_posting_detail {

/// The document as a line of the ledger. The balance stored here is provisional: the recompute that follows writes it.
void insertLedgerLine(const PartnerSide& side, Kind kind, const Row& document) {
  const QString partner = document.text("k_ghskh");
  const QString date = document.text("k_rq");
  const double balance =
      ysyfkBalanceAt(partner, side.which, date) + document.number("k_yfje") - document.number("k_sfje");
  const QString settles = kind == Kind::Payment ? document.text("gl_djh2") : QString();
  insertRow("jxc_ysyfk", {{"k_ghskh", partner},
                          {"a_name", document.text("a_name")},
                          {"u_sn", document.text("u_sn")},
                          {"k_fkfs", document.text("k_fkfs")},
                          {"k_sfje", document.number("k_sfje")},
                          {"k_yhje", document.number("k_yhje")},
                          {"k_qcje", document.number("k_qcje")},
                          {"k_ljje", balance},
                          {"k_yfje", document.number("k_yfje")},
                          {"k_type", document.text("k_type")},
                          {"k_djlx", document.text("k_djlx")},
                          {"k_djtxt", document.text("k_djtxt")},
                          {"k_note", document.text("k_note")},
                          {"k_flag", document.integer("k_flag")},
                          {"k_rq", date},
                          {"gl_djh", document.text("gl_djh")},
                          {"gl_djh2", settles}});
}

/// What is given up is a negative amount due, under a number of its own that points to the payment.
void insertRounding(const PartnerSide& side, const Row& document) {
  const QString date = document.text("k_rq");
  const QString prefix = prefixOf(side, Kind::Due);
  const QString paymentNote = words(side.paymentWord) + u"单抹零登记："_qs + document.text("gl_djh");
  insertRow("jxc_ysyfk", {{"k_ghskh", document.text("k_ghskh")},
                          {"a_name", document.text("a_name")},
                          {"u_sn", document.text("u_sn")},
                          {"k_fkfs", words(side.dueWord)},
                          {"k_sfje", 0.0},
                          {"k_yhje", 0.0},
                          {"k_qcje", document.number("k_qcje")},
                          {"k_ljje", 0.0},
                          {"k_yfje", -document.number("k_mlje")},
                          {"k_type", words(side.type)},
                          {"k_djlx", prefix},
                          {"k_djtxt", u"增加"_qs + words(side.dueWord) + u"(抹零)"_qs},
                          {"k_note", paymentNote},
                          {"k_flag", 1},
                          {"k_rq", date},
                          {"gl_djh", nextDocNoOn("jxc_ysyfk", "gl_djh", prefix, date)},
                          {"gl_djh2", document.text("gl_djh")}});
}

/// Profit figures are sums over the stock ledger: the rounding stands there as a line of goods "00000000". Given up by
/// us it lowers the profit; given up by a supplier it lowers what was bought, and no profit.
void insertStockLine(const PartnerSide& side, const QString& payment) {
  const bool lowersProfit = side.cashSign > 0;
  const std::string partnerName = compose("f.{}", {side.name});
  const std::string statement =
      ledgerInsert({{"gl_flag", "?"},
                    {"gl_kdrq", "a.k_rq"},
                    {"g_sn", "'00000000'"},
                    {"g_name", "'优惠商品'"},
                    {"g_jm", "'YHSP'"},
                    {"dw_name", "''"},
                    {"gl_dj", "0"},
                    {"gl_sl", "0"},
                    {"gl_zje", "a.k_yfje"},
                    {"gl_lr", lowersProfit ? "a.k_yfje" : "0"},
                    {"gl_checker", "a.a_name"},
                    {"gl_pjjj", "0"},
                    {"gl_note", "a.k_note"},
                    {"a_name", "a.a_name"},
                    {"ck_sn", "?"},
                    {"ck_name", "?"},
                    {"ghs_sn", "a.k_ghskh"},
                    {"ghs_name", partnerName},
                    {"gg_name", "''"},
                    {"color_name", "''"},
                    {"gl_sysl", "0"},
                    {"id2", "a.id"},
                    {"gl_djh2", "a.gl_djh2"}},
                   compose("from jxc_ysyfk a,{} f,jxc_user d where a.u_sn=d.u_sn and a.k_ghskh=f.{} and a.gl_djh2=?",
                           {side.table, side.sn}));
  postSql(statement, words(side.stockFlag), clock::today(), defaultWarehouseSn(), defaultWarehouseName(), payment);
}

void insertCashLine(const PartnerSide& side, const Row& document) {
  const QString partner = document.text("k_ghskh");
  insertRow("jxc_xjyh", {{"xj_rq", document.text("k_rq")},
                         {"gl_djh", document.text("gl_djh")},
                         {"xj_dlx", words(side.paymentWord) + u"单"_qs},
                         {"xj_je", document.number("k_sfje") * side.cashSign},
                         {"u_name", lookupValue("select u_name from jxc_user where u_sn=?", document.text("u_sn"))},
                         {"ghs_name", partnerName(side, partner)},
                         {"ghs_sn", partner},
                         {"ck_name", u""},
                         {"xj_kmmc", document.text("k_fkfs")},
                         {"xj_note", document.text("k_note")},
                         {"a_name", document.text("a_name")},
                         {"xj_chk", u"1"},
                         {"xj_ljje", 0.0}});
}

}  // namespace partner_posting_detail

void postDocument(const PartnerSide& side, Kind kind, const Row& document) {
  namespace detail = partner_posting_detail;
  const QString date = document.text("k_rq");
  detail::insertLedgerLine(side, kind, document);
  if (kind == Kind::Payment && document.number("k_mlje") != 0) {
    detail::insertRounding(side, document);
    detail::insertStockLine(side, document.text("gl_djh"));
  }
  recomputeYsyfk(document.text("k_ghskh"), side.which, date);
  if (kind != Kind::Payment) return;
  detail::insertCashLine(side, document);
  recomputeXjyh(document.text("k_fkfs"), date);
}

void takeBackDocument(const PartnerSide& side, Kind kind, const Row& document) {
  const QString number = document.text("gl_djh");
  const QString date = document.text("k_rq");
  const bool payment = kind == Kind::Payment;
  postSql("delete from jxc_ysyfk where gl_djh=?", number);
  if (payment) {
    removeRounding(number);
    postSql("delete from jxc_xjyh where gl_djh=?", number);
  }
  recomputeYsyfk(document.text("k_ghskh"), side.which, date);
  postSql("update jxc_ysyfk_dj set k_check=0,k_checker='',k_chkrq='' where gl_djh=?", number);
  if (payment) recomputeXjyh(document.text("k_fkfs"), date);
}

}  // namespace jxc::partner_books
