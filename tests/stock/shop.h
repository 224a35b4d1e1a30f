// 店铺夹具: a small shop over a fresh account set: goods with short codes, documents in one line each.
#pragma once

#include "accounts/cash_ledger.h"
#include "accounts/partner_ledger.h"
#include "harness/account_set_fixture.h"
#include "harness/invariants.h"
#include "harness/row_texts.h"
#include "harness/waiting_document.h"
#include "purchasing/receipt.h"
#include "stock/cancelling.h"
#include "stock/document.h"
#include "stock/ledger.h"
#include "stock/posting.h"

namespace jxc::test {

inline const QString mainWarehouse = QStringLiteral("100001");

class ShopTest : public AccountSetFixture {
 protected:
  using Line = Pieces;

  /// A goods whose prices and average are all `price`.
  void addGoods(const QString& sn, double price = 0, const QString& barcode = {}) {
    execSql(
        "insert into jxc_goods (g_sn,g_name,g_sptm,g_jj,g_scjj,g_pjjj,g_sj,g_lsj,g_jm,g_kc,g_cgpl,g_xspl,g_jy,g_gdcbj,"
        "dw_name,gg_name,color_name) values (?,?,?,?,?,?,?,?,'JJ',0,0,0,0,0,'付','','')",
        sn, QStringLiteral("镜架") + sn, barcode, price, price, price, price, price);
  }

  /// A bare row of the ledger, as an account set may hold it.
  std::int64_t ledgerRow(const QString& flag, const QString& date, double quantity, double net, double price,
                         const QString& goods = QStringLiteral("A"), const QString& warehouse = mainWarehouse) {
    return insertRow("jxc_goodslist", {{"gl_flag", flag},
                                       {"gl_kdrq", date},
                                       {"g_sn", goods},
                                       {"ck_sn", warehouse},
                                       {"gl_sl", quantity},
                                       {"gl_je", net},
                                       {"gl_dj", price},
                                       {"gl_pjjj", 0.0},
                                       {"gl_kc", 0.0},
                                       {"gl_kczje", 0.0},
                                       {"gl_sqsl", 0.0},
                                       {"gl_sqje", 0.0}});
  }

  /// What a row of trade moves: pieces, and yuan without tax, of tax, of cost, of profit.
  struct Trade {
    double quantity, net, tax = 0, cost = 0, profit = 0;
  };
  std::int64_t ledgerRow(const QString& flag, const QString& date, const Trade& trade,
                         const QString& goods = QStringLiteral("A"), const QString& warehouse = mainWarehouse) {
    const std::int64_t id = ledgerRow(flag, date, trade.quantity, trade.net, 0, goods, warehouse);
    updateRow(
        "jxc_goodslist", id,
        {{"gl_taxje", trade.tax}, {"gl_zje", trade.net + trade.tax}, {"gl_zcb", trade.cost}, {"gl_lr", trade.profit}});
    return id;
  }

  /// "stock average value" of a ledger row.
  QString figures(std::int64_t id) {
    const RowSet row = openSelect("select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where id=?", id);
    if (row.isEmpty()) return QStringLiteral("no row");
    return numberText(row.number(0, 0)) + u' ' + numberText(row.number(0, 1)) + u' ' + numberText(row.number(0, 2));
  }
  /// The same of the last row of a goods.
  QString lastFigures(const QString& goods) {
    return figures(lookupValue("select top 1 id from jxc_goodslist where g_sn=? order by gl_kdrq desc,id desc", goods)
                       .toLongLong());
  }
  /// "flag quantity → stock average value" of the rows of a document; and what it booked as lost or gained.
  QStringList rows(const QString& number) {
    QStringList list;
    for (const Row row : openSelect("select id,gl_flag,gl_sl from jxc_goodslist where gl_djh=? order by id", number))
      list << row.text("gl_flag") + u' ' + row.text("gl_sl") + u" → "_qs + figures(row.integer("id"));
    return list;
  }
  QString difference(const QString& number) {
    return row("select fy_lx,fy_je,fy_flag,fy_note from jxc_yyfy where gl_djh=?", number);
  }
  /// "kc_sl kc_zsl kc_cbj" of a goods in the main warehouse.
  QString balanceOf(const QString& goods) {
    const RowSet row =
        openSelect("select kc_sl,kc_zsl,kc_cbj from jxc_kcsp where g_sn=? and ck_sn=?", goods, mainWarehouse);
    if (row.isEmpty()) return QStringLiteral("no row");
    return numberText(row.number(0, 0)) + u' ' + numberText(row.number(0, 1)) + u' ' + numberText(row.number(0, 2));
  }
  /// All cells of the rows of a statement, by a blank.
  template <class... Args>
  static QString row(const SqlText& sql, const Args&... args) {
    return textsOf(openSelect(sql, args...)).join(u' ');
  }
  double supplierOwed() { return lookupNumber("select ghs_lwje from jxc_ghsxx where ghs_sn='100001'"); }
  double customerOwes() { return lookupNumber("select kh_lwje from jxc_khxx where kh_sn=?", customer()); }
  double cash() { return xjyhBalanceNow(QStringLiteral("现金")); }
  QString lastLog() { return lookupValue("select top 1 log_note from jxc_log order by id desc"); }
  QString customer() { return lookupValue("select top 1 kh_sn from jxc_khxx order by id"); }

  static LinePlace placeOf(const DocumentDraft& draft) {
    return {.number = draft.number, .date = draft.date, .warehouse = draft.warehouse};
  }
  static LinePlace placeOf(const TradingDraft& draft) {
    return {.number = draft.number, .date = draft.date, .partner = draft.partner, .warehouse = draft.warehouse};
  }
  /// A line of a draft, by all rules but its questions; at the price of the rules unless one is given.
  LineResult add(const LineRules& lines, const LinePlace& place, const QString& goods, double quantity,
                 std::optional<double> price = {}, const QString& note = {}) {
    LineDraft line = lines.newLine(goods, place, false);
    line.amounts.setQuantity(quantity);
    if (price) line.amounts.setPrice(*price);
    line.note = note;
    return lines.addLine(Lines::Draft, place, line, prompt);
  }
  static QString goodsToPick(const LineRules& lines, const LinePlace& place, const PickFilter& filter = {},
                             std::initializer_list<std::string_view> columns = {"g_sn"}) {
    return textsOf(openSelect(lines.goodsToPick(place, filter)), columns).join(u' ');
  }

  /// Lines of a draft under the number that a new receipt of this date shows.
  receipt::ReceiptDraft draftReceipt(const QString& date, const std::vector<Line>& lines) {
    receipt::ReceiptDraft draft = receipt::newReceipt();
    draft.date = date;
    draft.number = newDocumentNumber(families::purchaseReceipt, date);
    for (const Line& line : lines)
      draft.number = add(receipt::rules().lines(), placeOf(draft), line.goods, line.quantity, line.price).number;
    draft.payable = draft.paid = receipt::payable(draft.number);
    draft.settlement = receipt::Settlement::AtPaidAmount;
    draft.account = QStringLiteral("现金");
    return draft;
  }
  QString save(const receipt::ReceiptDraft& draft) {
    prompt.willSayYes();
    const SaveResult saved = receipt::saveReceipt(draft, prompt);
    EXPECT_TRUE(saved);
    return saved.number;
  }
  AuditOutcome audit(const QString& number) { return checkDj(documentFamily(number), number, prompt); }
  QString audited(const QString& number) {
    EXPECT_EQ(audit(number), AuditOutcome::Audited) << number.toStdString();
    return number;
  }

  /// An audited receipt, all on the supplier's account. Its number.
  QString receive(const QString& date, const std::vector<Line>& lines) {
    receipt::ReceiptDraft draft = draftReceipt(date, lines);
    draft.paid = 0;
    draft.settlement = receipt::Settlement::RestOnAccount;
    return audited(save(draft));
  }

  QString waitingSale(const QString& date, const std::vector<Line>& lines, double paid, int settlement = 1) {
    return waitingDocument(families::sale, date, {{"ls_sfje", paid}, {"ls_jsfs", settlement}}, lines);
  }
  QString sell(const QString& date, const std::vector<Line>& lines, double paid = 0) {
    return audited(waitingSale(date, lines, paid));
  }

  /// A waiting return to the supplier or from the customer ("CT", "XT").
  QString waitingReturn(const DocumentFamily& family, const QString& date, const std::vector<Line>& lines,
                        double paid = 0) {
    return waitingDocument(family, date, {{"th_sfje", -paid}}, lines);
  }
};

}  // namespace jxc::test
