// 月结存与库存检查: month rows and the shortage check of stock/ledger.h.
#include "core/posting.h"
#include "core/prompt.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/cancel_checks.h"
#include "stock/document_family.h"
#include "stock/ledger.h"
#include "stock/partial_movement.h"

namespace jxc {
namespace stock_rows_detail {

void writeMonthStock(const QString& warehouse, const QString& month, double quantity, double value) {
  postSql("update jxc_kcjs set js_sl=?,js_zje=? where js_rq=? and ck_sn=?", quantity, value, month, warehouse);
}

/// A question or a refusal, by parameter; `word` is what the goods cannot do.
QString warningOf(const QString& word) {
  return strIsTrue(session().cs_kc) ? u"”："_qs + word + u"将会出现负库存，是否继续？"_qs
                                    : u"”：不能"_qs + word + u'！';
}
Refusal shortageWords(const RowSet& goods, const QString& warning) {
  if (goods.isEmpty()) return {};
  return {u"该单据中至少一种商品库存不足，\r\n\r\n“"_qs + goods.text(0, 0) + warning, Subject::Lines, goods.text(0, 0)};
}

/// The first goods that leaves a warehouse by a split or bundle and is not there. The whole of a draft stands among its
/// lines, below zero.
Ahead askWhatLeaves(const DocumentFamily& f, const QString& number) {
  const std::string_view quantity = f.line.columns->quantity;
  const std::string short_ =
      ") a where not exists (select b.id from jxc_kcsp b where b.g_sn=a.g_sn and b.ck_sn=a.ck_sn and a.sl<=b.kc_zsl) "
      "order by a.g_sn";
  if (f.comesIn)
    return sendAhead(
        compose("select top 1 a.g_sn from (select {} as g_sn,{} as ck_sn,{} as sl from {} where {}=? union "
                "all select g_sn,{} as ck_sn,-1*{} as sl from {} where {}=? and {}<0",
                {f.whole.goods, f.warehouse, f.whole.quantity, f.head, f.number, f.line.warehouse, quantity, f.lines,
                 f.number, quantity}) +
            short_,
        number, number);
  return sendAhead(compose("select top 1 a.g_sn from (select g_sn,{} as ck_sn,sum({}) as sl from {} where {}=? and "
                           "{}>0 group by g_sn,{}",
                           {f.line.warehouse, quantity, f.lines, f.number, quantity, f.line.warehouse}) +
                       short_,
                   number);
}

}  // namespace stock_rows_detail

void ensureStockRows(const QString& month) {
  using namespace stock_rows_detail;
  const Ahead noBalance = sendAhead(
      "select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcsp where g_sn='00000000') order by "
      "ck_sn");
  const Ahead noMonth = sendAhead(
      "select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq=?) order by ck_sn", month);
  const RowSet &withoutBalance = noBalance.rows(), &withoutMonth = noMonth.rows();
  if (withoutBalance.isEmpty() && withoutMonth.isEmpty()) return;

  Transaction transaction(accountDb());
  for (const Row row : withoutBalance)
    postSql("insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,ck_sn,g_sn,kc_zsl) values (0,0,0,?,'00000000',0)",
            row.text("ck_sn"));
  for (const Row row : withoutMonth)
    postSql(
        "insert into jxc_kcjs (js_rq,js_sl,js_zje,js_xssl,js_xsje,js_cgsl,js_cgje,js_xslr,js_xscb,ck_sn) "
        "values (?,0,0,0,0,0,0,0,0,?)",
        month, row.text("ck_sn"));
  if (!withoutMonth.isEmpty())
    for (const Row row :
         openSelect("select sum(kc_sl) as sl,sum(kc_sl*kc_cbj) as zje,ck_sn from jxc_kcsp group by ck_sn"))
      writeMonthStock(row.text("ck_sn"), month, row.number("sl"), row.number("zje"));
  transaction.commit();
}

void refreshMonthStock(const QString& warehouse, const QString& month) {
  // Rows that are made meanwhile hold nothing.
  const Ahead asked =
      sendAhead("select sum(kc_sl) as sl,sum(kc_sl*kc_cbj) as zje from jxc_kcsp where ck_sn=?", warehouse);
  ensureStockRows(month);
  const RowSet& sums = asked.rows();
  const bool known = !sums.isEmpty();
  stock_rows_detail::writeMonthStock(warehouse, month, known ? sums.number(0, 0) : 0, known ? sums.number(0, 1) : 0);
}

namespace stock_rows_detail {

/// The first goods that the document takes more of than lies in the warehouse; `reversed`: that it brings.
Ahead askShortGoods(const DocumentFamily& family, const QString& number, const QString& warehouse, bool reversed) {
  // Asked of each goods of the document: a join would begin with all goods of the warehouse.
  // What comes in on the whole is never short, however low the stock.
  const std::string sum = reversed ? "sum(-1*{})" : "sum({})";
  // What is issued, or was put away, lies on the shelf or it does not: goods that the warehouse does not know do not.
  if (family.partial)
    return sendAhead(
        compose(
            "select top 1 a.g_sn from (select g_sn,sum({}) as sl from {} where {}=? and g_sn<>'00000000' group by "
            "g_sn) a where a.sl>0 and not exists (select b.id from jxc_kcsp b where b.g_sn=a.g_sn and b.ck_sn=? and "
            "a.sl<=b.kc_sl) order by a.g_sn",
            {family.line.columns->quantity, family.lines, family.number}),
        number, warehouse);
  return sendAhead(
      compose("select top 1 a.g_sn from (select g_sn," + sum +
                  " as sl from {} where {}=? and g_sn<>'00000000' group by g_sn) a where a.sl>0 and exists (select "
                  "b.id from jxc_kcsp b where b.g_sn=a.g_sn and b.ck_sn=? and a.sl>b.kc_zsl) order by a.g_sn",
              {family.line.columns->quantity, family.lines, family.number}),
      number, warehouse);
}

}  // namespace stock_rows_detail

StockShortage::StockShortage(const QString& number, const QString& warehouse, QStringView kind) {
  // Lines below zero go the other way: a cancelled exchange takes away what came back, a returned one gives it out
  // again.
  const bool reversed = kind.startsWith(u'-');
  const DocumentFamily* const family = findFamily(reversed ? kind.mid(1) : kind);
  if (!family || family->shortageWord.empty()) return;
  warning_ = stock_rows_detail::warningOf(reversed ? u"出库"_qs : QStringView(family->shortageWord).toString());
  goods_ = family->whole.goods.empty() ? stock_rows_detail::askShortGoods(*family, number, warehouse, reversed)
                                       : stock_rows_detail::askWhatLeaves(*family, number);
}

Refusal StockShortage::words() const {
  return goods_ ? stock_rows_detail::shortageWords(goods_->rows(), warning_) : Refusal();
}

Refusal checkStockShort(const QString& number, const QString& warehouse, QStringView kind) {
  return StockShortage(number, warehouse, kind).words();
}

Refusal cancel_checks::shortWhenTakenBack(const QString& number) {
  return stock_rows_detail::shortageWords(
      openSelect("select top 1 a.g_sn from (select g_sn,ck_sn,sum(gl_sl) as sl from jxc_goodslist where gl_djh=? and "
                 "g_sn<>'00000000' group by g_sn,ck_sn) a where a.sl>0 and exists (select b.id from jxc_kcsp b where "
                 "b.g_sn=a.g_sn and b.ck_sn=a.ck_sn and a.sl>b.kc_zsl) order by a.g_sn",
                 number),
      stock_rows_detail::warningOf(u"出库"_qs));
}

Refusal cancel_checks::shortWhenClosed(const PartialMovement& m, const QString& source) {
  if (m.direction < 0) return {};
  const DocumentFamily& s = *m.source;
  return stock_rows_detail::shortageWords(
      openSelect(
          compose("select top 1 a.g_sn from (select b.g_sn,c.{} as ck_sn,sum(", {s.warehouse}) +
              partial::openPieces(m, "b") +
              compose(") as sl from {} b,{} c where b.{}=c.{} and c.{}=1 and c.{}=? and ",
                      {s.lines, s.head, s.number, s.number, s.status, s.number}) +
              partial::isOpen(m, "b") +
              compose(" group by b.g_sn,c.{}) a where not exists (select d.id from jxc_kcsp d where d.g_sn=a.g_sn "
                      "and d.ck_sn=a.ck_sn and a.sl<=d.kc_zsl) order by a.g_sn",
                      {s.warehouse}),
          source),
      stock_rows_detail::warningOf(words(m.back->shortageWord)));
}

bool mayGoShort(const Refusal& shortage, Prompt& prompt) {
  if (shortage && strIsTrue(session().cs_kc)) return prompt.ask(shortage.text);
  return !isRefused(shortage, prompt);
}

bool mayLoseBeyondStock(const QString& number, const QString& warehouse, Prompt& prompt) {
  using namespace stock_rows_detail;
  const RowSet found = askShortGoods(families::loss, number, warehouse, false).rows();
  const auto shortage = shortageWords(found, u"”：报损将会出现负库存，是否继续？"_qs);
  return !shortage || prompt.ask(shortage.text);
}

bool mayLoseBeyondStock(const Row& head, Prompt& prompt) {
  return mayLoseBeyondStock(head.text(families::loss.number), head.text(families::loss.warehouse), prompt);
}

}  // namespace jxc
