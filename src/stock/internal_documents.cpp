#include "stock/internal_documents.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/posting.h"
#include "core/session.h"
#include "core/statements.h"
#include "stock/document.h"
#include "stock/ledger.h"
#include "stock/ledger_rows.h"
#include "stock/posting.h"
#include "stock/stock_effect.h"
#include "stock/stocktake.h"

#include <cmath>
#include <map>
#include <optional>
#include <stdexcept>

namespace jxc::internal_documents {
namespace internal_documents_detail {

/// Parts of a whole hardly ever add up to the last decimal of its cost: what no coin could pay is no difference. Less
/// what a sum of amounts may lose in doubles.
constexpr double halfFen = 0.005 - 5e-7;

/// Cost is price and amount, and nothing is bought or sold.
std::vector<Rules> makeRules() {
  const LedgerSource transferIn{.family = &families::transfer,
                                .warehouse = "a.ck_in",
                                .different = {{"gl_flag", "'db'"},
                                              {"ghs_name", "'调拨入库'"},
                                              {"gl_note", "a.db_note"},
                                              {"gl_dj", "b.db_dj"},
                                              {"gl_sl", "b.db_sl"},
                                              {"gl_zje", "b.db_dj*b.db_sl"},
                                              {"gl_sysl", "b.db_sl"}}};
  const LedgerSource transferOut{.family = &families::transfer,
                                 .warehouse = "a.ck_out",
                                 .different = {{"gl_flag", "'db'"},
                                               {"ghs_name", "'调拨出库'"},
                                               {"gl_note", "a.db_note"},
                                               {"gl_dj", "b.db_dj"},
                                               {"gl_sl", "-1*b.db_sl"},
                                               {"gl_zje", "-1*b.db_dj*b.db_sl"},
                                               {"gl_sysl", "b.db_sl"}}};
  const LedgerSource counted{.family = &families::stocktake,
                             .only = "b.pd_sl<>b.kc_sl",
                             .different = {{"gl_flag", "'pd'"},
                                           {"ghs_name", "'库存盘点'"},
                                           {"gl_note", "a.pd_note"},
                                           {"gl_dj", "b.pd_dj"},
                                           {"gl_pjjj", "b.pd_dj"},
                                           {"gl_sl", "b.pd_sl-b.kc_sl"},
                                           {"gl_zje", "b.pd_zje"},
                                           {"gl_sysl", "b.pd_sl"},
                                           {"id2", "b.id2"}}};
  const LedgerSource lost{.family = &families::loss,
                          .different = {{"gl_flag", "'bs'"},
                                        {"ghs_name", "'商品报损'"},
                                        {"gl_note", "a.bs_note"},
                                        {"gl_bz", "left(b.bs_note,64)"},
                                        {"gl_dj", "b.bs_dj"},
                                        {"gl_sl", "-1*b.bs_sl"},
                                        {"gl_zje", "-1*b.bs_zje"},
                                        {"gl_sysl", "b.bs_sl"}}};
  const LedgerSource found{.family = &families::overflow,
                           .different = {{"gl_flag", "'by'"},
                                         {"ghs_name", "'商品报溢'"},
                                         {"gl_note", "a.by_note"},
                                         {"gl_bz", "left(b.by_note,64)"},
                                         {"gl_dj", "b.by_dj"},
                                         {"gl_sl", "b.by_sl"},
                                         {"gl_zje", "b.by_zje"},
                                         {"gl_sysl", "b.by_sl"}}};
  const LedgerSource splitSource{.family = &families::split,
                                 .goods = "a.g_sn",
                                 .fromHead = true,
                                 .different = {{"gl_flag", "'cf'"},
                                               {"ghs_name", "'被拆分出库'"},
                                               {"gl_note", "a.cf_note"},
                                               {"gl_dj", "a.cf_cbj"},
                                               {"gl_sl", "-1*a.cf_sl"},
                                               {"gl_zje", "-1*a.cf_sl*a.cf_cbj"},
                                               {"gl_sysl", "a.cf_sl"}}};
  const LedgerSource splitParts{.family = &families::split,
                                .warehouse = "b.ck_sn",
                                .different = {{"gl_flag", "'cf'"},
                                              {"ghs_name", "'拆分入库'"},
                                              {"gl_note", "a.cf_note"},
                                              {"gl_dj", "b.cf_dj"},
                                              {"gl_sl", "b.cf_sl"},
                                              {"gl_zje", "b.cf_zje"},
                                              {"gl_sysl", "b.cf_sl"}}};
  const LedgerSource bundleWhole{.family = &families::bundle,
                                 .goods = "a.g_sn",
                                 .fromHead = true,
                                 .different = {{"gl_flag", "'kb'"},
                                               {"ghs_name", "'捆绑入库'"},
                                               {"gl_note", "a.kb_note"},
                                               {"gl_dj", "a.kb_cbj"},
                                               {"gl_sl", "a.kb_sl"},
                                               {"gl_zje", "a.kb_sl*a.kb_cbj"},
                                               {"gl_sysl", "a.kb_sl"}}};
  const LedgerSource bundleParts{.family = &families::bundle,
                                 .warehouse = "b.ck_sn",
                                 .different = {{"gl_flag", "'kb'"},
                                               {"ghs_name", "'被捆绑出库'"},
                                               {"gl_note", "a.kb_note"},
                                               {"gl_dj", "b.kb_dj"},
                                               {"gl_sl", "-1*b.kb_sl"},
                                               {"gl_zje", "-1*b.kb_zje"},
                                               {"gl_sysl", "b.kb_sl"}}};
  return {
      // Receiving rows first: within a day they stand before the sending ones.
      {.family = &families::transfer,
       .auditLog = u"增加已审核库存调拨单",
       .auditLogEnd = u"种商品",
       .rowsALine = 2,
       .inserts = {ledgerInsert(transferIn), ledgerInsert(transferOut)},
       .master = Master::None,
       .bringsIn = true},
      {.family = &families::stocktake,
       .auditLog = u"库存盘点单通过",
       .auditLogEnd = u"个商品",
       .rowsALine = 1,
       .only = " and pd_sl<>kc_sl",
       .inserts = {ledgerInsert(counted)},
       .markLines = "update jxc_kcpdsp set id2=id where gl_djh=?",
       .master = Master::Stock,
       .takesUnknown = true,
       .differenceWord = u"商品盘点单",
       .replayFirst = true,
       .bindsChecker = true,
       .bringsIn = true,
       .averageAtCancel = true},
      {.family = &families::loss,
       .auditLog = u"增加已审核商品报损单",
       .auditLogEnd = u"种商品",
       .rowsALine = 1,
       .inserts = {ledgerInsert(lost)},
       .master = Master::Stock,
       .differenceWord = u"报损单",
       .differenceType = u"费用",
       .bindsChecker = true},
      {.family = &families::overflow,
       .auditLog = u"增加已审核商品报溢单",
       .auditLogEnd = u"种商品",
       .rowsALine = 1,
       .inserts = {ledgerInsert(found)},
       .master = Master::Stock,
       .takesUnknown = true,
       .differenceWord = u"报溢单",
       .differenceType = u"收入",
       .bindsChecker = true,
       .bringsIn = true},
      {.family = &families::split,
       .auditLog = u"增加已审核商品拆分单",
       .auditLogEnd = u"种商品",
       .rowsALine = 1,
       .rowsOfHead = 1,
       .inserts = {ledgerInsert(splitSource), ledgerInsert(splitParts)},
       .master = Master::StockAndCost,
       .differenceWord = u"拆分单",
       .differenceType = u"费用",
       .leastDifference = halfFen,
       .replayFirst = true,
       .bindsChecker = true,
       .bringsIn = true},
      {.family = &families::bundle,
       .auditLog = u"增加已审核商品捆绑单",
       .auditLogEnd = u"种商品",
       .rowsALine = 1,
       .rowsOfHead = 1,
       .inserts = {ledgerInsert(bundleWhole), ledgerInsert(bundleParts)},
       .master = Master::StockAndCost,
       .differenceWord = u"捆绑单",
       .differenceType = u"费用",
       .leastDifference = halfFen,
       .replayFirst = true,
       .bindsChecker = true,
       .bringsIn = true},
      loanRules(),
      loanReturnRules(),
  };
}

/// What goods cost that the warehouse does not know yet, in yuan.
using Costs = std::map<QString, double>;

Ahead askUnknown(const DocumentFamily& family, const QString& number) {
  return sendAhead(
      compose("select distinct b.g_sn,a.{} as ck_sn,a.{} as rq from {} a,{} b where a.{}=b.{} and a.{}=1 and b.{}=? "
              "and not exists (select c.id from jxc_kcsp c where c.g_sn=b.g_sn and c.ck_sn=a.{})",
              {family.warehouse, family.date, family.head, family.lines, family.number, family.number, family.status,
               family.number, family.warehouse}),
      number);
}

/// Asked before the ledger is written: its new rows would be taken for the history of the goods. A count that found no
/// cost takes it over: goods that were found are worth what they cost elsewhere, not nothing.
Costs priceUnknown(const DocumentFamily& family, const QString& number, const RowSet& unknown) {
  Costs costs;
  for (const Row row : unknown) {
    const QString goods = row.text("g_sn");
    const double cost = getGoodsCost(goods, row.text("ck_sn"), row.text("rq"));
    costs[goods] = cost;
    if (!family.isCount()) continue;
    for (const Row line :
         openSelect("select id,pd_sl,kc_sl from jxc_kcpdsp where gl_djh=? and g_sn=? and pd_dj=0", number, goods))
      postSql("update jxc_kcpdsp set pd_dj=?,pd_zje=? where id=?", cost,
              stock_count::valueOf(line.number("pd_sl") - line.number("kc_sl"), cost), line.integer("id"));
  }
  return costs;
}

/// What a row does to stock.
StockEffect effectOf(const Rules& rules, const Costs& costs, const Row& row) {
  const double quantity = row.number("gl_sl");
  const double inflow = rules.outwards ? -quantity : quantity;
  const double price = row.number("gl_dj");
  const auto known = costs.find(row.text("g_sn"));
  return {.id = row.integer("id"),
          .goods = row.text("g_sn"),
          .warehouse = row.text("ck_sn"),
          .date = row.text("gl_kdrq"),
          .flag = row.text("gl_flag"),
          .quantity = quantity,
          .price = price,
          .physical = inflow,
          .book = inflow,
          .firstCost = known == costs.end() ? price : known->second,
          .movesCost = rules.master == Master::StockAndCost && inflow > 0};
}

void changeMaster(const StockEffect& effect, std::optional<double> average) {
  if (average)
    postSql("update jxc_goods set g_kc=g_kc+(?),g_pjjj=? where g_sn=?", effect.physical, *average, effect.goods);
  else
    postSql("update jxc_goods set g_kc=g_kc+(?) where g_sn=?", effect.physical, effect.goods);
}

/// Adds to the month's figures of each warehouse what its rows bring.
void addToMonths(const Rules& rules, const QString& month, const RowSet& rows) {
  struct Change {
    double quantity = 0, value = 0;
  };
  const int direction = rules.outwards ? -1 : 1;
  std::map<QString, Change> changes;
  for (const Row row : rows) {
    Change& change = changes[row.text("ck_sn")];
    change.quantity += direction * row.number("gl_sl");
    change.value += direction * row.number("gl_zje");
  }
  for (const auto& [warehouse, change] : changes)
    addToMonth(warehouse, month, change.quantity, change.value);
}

/// What the document made the stock worth more or less, as an expense or an income; no cash goes with it.
void bookDifference(const Rules& rules, const Head& head, double value) {
  if (rules.differenceWord.empty() || std::fabs(value) < rules.leastDifference) return;
  const QString type = !rules.differenceType.empty() ? words(rules.differenceType)
                       : value < 0                   ? u"费用"_qs
                                                     : u"收入"_qs;
  postRow("jxc_yyfy", {{"gl_djh", head.number},
                       {"fy_rq", head.date},
                       {"fy_lx", type},
                       {"fy_je", value},
                       {"u_sn", head.salesperson},
                       {"fy_note", words(rules.differenceWord) + head.number + u"成本差额"_qs},
                       {"a_name", session().a_name},
                       {"fy_sc", type},
                       {"fy_flag", type == u"费用" ? u"1"_qs : u"2"_qs},
                       {"de_sn", u"100001"_qs},
                       {"fy_kmmc", u"现金"_qs},
                       {"fy_chk", u"1"_qs}});
}

void post(const DocumentFamily& family, const QString& number) {
  const Rules& rules = rulesOf(family);
  const Ahead asked = askHead(family, number);
  const Costs costs = rules.takesUnknown ? priceUnknown(family, number, askUnknown(family, number).rows()) : Costs{};
  if (rules.markLines) postSql(rules.markLines, number);
  for (const std::string& insert : rules.inserts)
    postSql(insert, session().a_name, clock::today(), number);
  const Ahead lines = sendAhead(
      compose("select count(*) from {} where {}=?", {family.lines, family.number}) + std::string(rules.only), number);
  const Ahead ledger = askLedger(number);
  Head head;
  if (!readHead(family, asked.rows(), head)) throw std::runtime_error("单据不存在。");
  const RowSet& rows = ledger.rows();
  // Of a count only differences make rows. Whatever a line names may have been deleted meanwhile.
  if (rows.rowCount() != rules.rowsALine * static_cast<std::int64_t>(lines.number()) + rules.rowsOfHead)
    throw std::runtime_error("单据中的商品、仓库、经办人或客户不存在。");
  ensureStockRows(head.month());

  std::vector<StockEffect> effects;
  double value = 0;
  for (const Row row : rows) {
    if (rules.rowPosted) rules.rowPosted(row);
    effects.push_back(effectOf(rules, costs, row));
    value += row.number("gl_zje");
  }
  postEffects(effects, MasterOrder::BeforeReplay, [&](const StockEffect& effect, std::optional<double> average) {
    if (rules.master != Master::None) changeMaster(effect, average);
  });
  addToMonths(rules, head.month(), rows);
  if (!rules.auditLog.empty()) {
    const QString middle = family.isCount() ? u"审核，共%1"_qs : u"，共%1"_qs;
    writeLog(words(rules.auditLog) + number + middle.arg(rows.rowCount() / rules.rowsALine) + words(rules.auditLogEnd));
  }
  if (rules.posted) rules.posted(head, rows.rowCount());
  bookDifference(rules, head, value);
}

}  // namespace internal_documents_detail

const Rules& rulesOf(const DocumentFamily& family) {
  static const std::vector<Rules> all = internal_documents_detail::makeRules();
  for (const Rules& rules : all)
    if (rules.family == &family) return rules;
  throw std::out_of_range("no document within the house: " + words(family.prefix).toStdString());
}

Ahead askHead(const DocumentFamily& family, const QString& number) {
  return sendAhead(
      compose("select * from {} where {}=? order by {} desc,id", {family.head, family.number, family.status}), number);
}

bool readHead(const DocumentFamily& family, const RowSet& asked, Head& head) {
  if (asked.isEmpty()) return false;
  const Row row = asked.front();
  head = {.number = row.text(family.number),
          .date = row.text(family.date),
          .salesperson = row.text("u_sn"),
          .checker = row.text(family.checker),
          .status = static_cast<int>(row.integer(family.status))};
  return true;
}

Ahead askLedger(const QString& number) {
  return sendAhead(
      "select id,gl_flag,gl_djh,gl_kdrq,g_sn,ck_sn,gl_sl,gl_dj,gl_zje,gl_sysl,gl_fdmc,id2 from jxc_goodslist where "
      "gl_djh=? order by id",
      number);
}

void addToMonth(const QString& warehouse, const QString& month, double quantity, double value) {
  postSql("update jxc_kcjs set js_sl=js_sl+(?),js_zje=js_zje+(?) where js_rq=? and ck_sn=?", quantity, value, month,
          warehouse);
}

}  // namespace jxc::internal_documents

namespace jxc {

void postTransfer(const QString& number) {
  internal_documents::internal_documents_detail::post(families::transfer, number);
}
void postStocktake(const QString& number) {
  internal_documents::internal_documents_detail::post(families::stocktake, number);
}
void postLoss(const QString& number) {
  internal_documents::internal_documents_detail::post(families::loss, number);
}
void postOverflow(const QString& number) {
  internal_documents::internal_documents_detail::post(families::overflow, number);
}
void postSplit(const QString& number) {
  internal_documents::internal_documents_detail::post(families::split, number);
}
void postBundle(const QString& number) {
  internal_documents::internal_documents_detail::post(families::bundle, number);
}
void postLoan(const QString& number) {
  internal_documents::internal_documents_detail::post(families::loan, number);
}
void postLoanReturn(const QString& number) {
  internal_documents::internal_documents_detail::post(families::loanReturn, number);
}

}  // namespace jxc
