#include "stock/internal_documents.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/session.h"
#include "core/statements.h"
#include "stock/document.h"
#include "stock/ledger.h"
#include "stock/posting.h"
#include "stock/trading.h"

#include <cmath>
#include <stdexcept>

namespace jxc::internal_documents {
namespace internal_documents_detail {

/// Where the ledger rows of one direction come from, as expressions of the statement. `a` is the head, `b` the lines.
struct RowSource {
  std::string_view flag, caption;
  std::string_view date, note;               // fields of the head
  std::string_view price, quantity, amount;  // as the ledger signs them
  std::string_view ownQuantity;              // the line's plain figure
  std::string_view goods, warehouse, maker;  // fields of head or lines
  bool fromHead = false;                     // the head itself is the row
  std::string_view lines;                    // table of lines
  std::string_view lineNote = "''";
  std::string_view average = "c.g_pjjj";
  std::string_view link = "0";  // id2
  std::string_view only = {};   // further condition
};

std::string insertStatement(std::string_view head, const RowSource& source) {
  std::string sql =
      "insert into jxc_goodslist "
      "(gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,"
      "gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,"
      "gl_note,gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_"
      "dqkc) ";
  const auto add = [&sql](std::initializer_list<std::string_view> parts) {
    for (const std::string_view part : parts)
      sql += part;
  };
  add({"select '",
       source.flag,
       "',a.gl_djh,a.",
       source.date,
       ",c.g_sn,c.g_name,c.g_jm,c.dw_name,",
       source.price,
       ",0,0,",
       source.quantity,
       ",1,",
       source.amount,
       ",",
       source.amount,
       ",0,",
       source.price,
       ",0,0,0,0,?,?,0,0,",
       source.average,
       ",0,0,a.",
       source.note,
       ",",
       source.lineNote,
       ",d.u_name,",
       source.maker,
       ",e.ck_sn,e.ck_name,'','",
       source.caption,
       "',c.gg_name,c.color_name,",
       source.ownQuantity,
       ",",
       source.link,
       ",'','',0 from ",
       head,
       " a,"});
  if (!source.fromHead) add({source.lines, " b,"});
  add({"jxc_goods c,jxc_user d,jxc_ckxx e where ", source.goods, "=c.g_sn and a.u_sn=d.u_sn and ", source.warehouse,
       "=e.ck_sn and a.gl_djh=?"});
  if (!source.fromHead) sql += " and a.gl_djh=b.gl_djh";
  if (!source.only.empty()) add({" and ", source.only});
  sql += source.fromHead ? " order by a.id" : " order by b.id";
  return sql;
}

std::vector<Rules> makeRules() {
  const RowSource transferIn{.flag = "db",
                             .caption = "调拨入库",
                             .date = "db_dbrq",
                             .note = "db_note",
                             .price = "b.db_dj",
                             .quantity = "b.db_sl",
                             .amount = "b.db_dj*b.db_sl",
                             .ownQuantity = "b.db_sl",
                             .goods = "b.g_sn",
                             .warehouse = "a.ck_in",
                             .maker = "b.a_name",
                             .lines = "jxc_dbsp"};
  RowSource transferOut = transferIn;
  transferOut.caption = "调拨出库";
  transferOut.quantity = "-1*b.db_sl";
  transferOut.amount = "-1*b.db_dj*b.db_sl";
  transferOut.warehouse = "a.ck_out";

  const RowSource counted{.flag = "pd",
                          .caption = "库存盘点",
                          .date = "pd_rq",
                          .note = "pd_note",
                          .price = "b.pd_dj",
                          .quantity = "b.pd_sl-b.kc_sl",
                          .amount = "b.pd_zje",
                          .ownQuantity = "b.pd_sl",
                          .goods = "b.g_sn",
                          .warehouse = "a.ck_sn",
                          .maker = "b.a_name",
                          .lines = "jxc_kcpdsp",
                          .average = "b.pd_dj",
                          .link = "b.id2",
                          .only = "b.pd_sl<>b.kc_sl"};

  const RowSource lost{.flag = "bs",
                       .caption = "商品报损",
                       .date = "bs_bsrq",
                       .note = "bs_note",
                       .price = "b.bs_dj",
                       .quantity = "-1*b.bs_sl",
                       .amount = "-1*b.bs_zje",
                       .ownQuantity = "b.bs_sl",
                       .goods = "b.g_sn",
                       .warehouse = "a.ck_sn",
                       .maker = "b.a_name",
                       .lines = "jxc_bssp",
                       .lineNote = "left(b.bs_note,64)"};
  const RowSource found{.flag = "by",
                        .caption = "商品报溢",
                        .date = "by_byrq",
                        .note = "by_note",
                        .price = "b.by_dj",
                        .quantity = "b.by_sl",
                        .amount = "b.by_zje",
                        .ownQuantity = "b.by_sl",
                        .goods = "b.g_sn",
                        .warehouse = "a.ck_sn",
                        .maker = "b.a_name",
                        .lines = "jxc_bysp",
                        .lineNote = "left(b.by_note,64)"};

  const RowSource splitSource{.flag = "cf",
                              .caption = "被拆分出库",
                              .date = "cf_cfrq",
                              .note = "cf_note",
                              .price = "a.cf_cbj",
                              .quantity = "-1*a.cf_sl",
                              .amount = "-1*a.cf_sl*a.cf_cbj",
                              .ownQuantity = "a.cf_sl",
                              .goods = "a.g_sn",
                              .warehouse = "a.ck_sn",
                              .maker = "a.a_name",
                              .fromHead = true};
  const RowSource splitParts{.flag = "cf",
                             .caption = "拆分入库",
                             .date = "cf_cfrq",
                             .note = "cf_note",
                             .price = "b.cf_dj",
                             .quantity = "b.cf_sl",
                             .amount = "b.cf_zje",
                             .ownQuantity = "b.cf_sl",
                             .goods = "b.g_sn",
                             .warehouse = "b.ck_sn",
                             .maker = "b.a_name",
                             .lines = "jxc_cfsp"};
  const RowSource bundleWhole{.flag = "kb",
                              .caption = "捆绑入库",
                              .date = "kb_kbrq",
                              .note = "kb_note",
                              .price = "a.kb_cbj",
                              .quantity = "a.kb_sl",
                              .amount = "a.kb_sl*a.kb_cbj",
                              .ownQuantity = "a.kb_sl",
                              .goods = "a.g_sn",
                              .warehouse = "a.ck_sn",
                              .maker = "a.a_name",
                              .fromHead = true};
  const RowSource bundleParts{.flag = "kb",
                              .caption = "被捆绑出库",
                              .date = "kb_kbrq",
                              .note = "kb_note",
                              .price = "b.kb_dj",
                              .quantity = "-1*b.kb_sl",
                              .amount = "-1*b.kb_zje",
                              .ownQuantity = "b.kb_sl",
                              .goods = "b.g_sn",
                              .warehouse = "b.ck_sn",
                              .maker = "b.a_name",
                              .lines = "jxc_kbsp"};
  const auto statements = [](const DocumentFamily& family, std::initializer_list<RowSource> sources) {
    std::vector<std::string> result;
    for (const RowSource& source : sources)
      result.push_back(insertStatement(family.head, source));
    return result;
  };
  return {
      // Receiving rows first: within a day they stand before the sending ones.
      {.family = &families::transfer,
       .auditLog = u"增加已审核库存调拨单",
       .auditLogEnd = u"种商品",
       .rowsALine = 2,
       .inserts = statements(families::transfer, {transferIn, transferOut}),
       .master = Master::None,
       .shortWarehouse = "ck_in"},
      {.family = &families::stocktake,
       .auditLog = u"库存盘点单通过",
       .auditLogEnd = u"个商品",
       .rowsALine = 1,
       .inserts = statements(families::stocktake, {counted}),
       .markLines = "update jxc_kcpdsp set id2=id where gl_djh=?",
       .master = Master::Stock,
       .overwrites = true,
       .differenceWord = u"商品盘点单",
       .bindsChecker = true},
      {.family = &families::loss,
       .auditLog = u"增加已审核商品报损单",
       .auditLogEnd = u"种商品",
       .rowsALine = 1,
       .inserts = statements(families::loss, {lost}),
       .master = Master::Stock,
       .differenceWord = u"报损单",
       .differenceType = u"费用",
       .bindsChecker = true},
      {.family = &families::overflow,
       .auditLog = u"增加已审核商品报溢单",
       .auditLogEnd = u"种商品",
       .rowsALine = 1,
       .inserts = statements(families::overflow, {found}),
       .master = Master::Stock,
       .differenceWord = u"报溢单",
       .differenceType = u"收入",
       .bindsChecker = true},
      {.family = &families::split,
       .auditLog = u"增加已审核商品拆分单",
       .auditLogEnd = u"种商品",
       .rowsALine = 1,
       .rowsOfHead = 1,
       .inserts = statements(families::split, {splitSource, splitParts}),
       .master = Master::StockAndCost,
       .differenceWord = u"拆分单",
       .differenceType = u"费用",
       .replayFirst = true,
       .bindsChecker = true},
      {.family = &families::bundle,
       .auditLog = u"增加已审核商品捆绑单",
       .auditLogEnd = u"种商品",
       .rowsALine = 1,
       .rowsOfHead = 1,
       .inserts = statements(families::bundle, {bundleWhole, bundleParts}),
       .master = Master::StockAndCost,
       .differenceWord = u"捆绑单",
       .differenceType = u"费用",
       .replayFirst = true,
       .bindsChecker = true},
      loanRules(),
      loanReturnRules(),
  };
}

/// What a row adds to the stock.
double inflow(const Rules& rules, const Row& row) {
  return rules.outwards ? -row.number("gl_sl") : row.number("gl_sl");
}

void changeBalance(const Rules& rules, const Row& row) {
  const double quantity = inflow(rules, row);
  const QString warehouse = row.text("ck_sn");
  const QString goods = row.text("g_sn");
  if (rules.overwrites) {
    const double counted = row.number("gl_sysl");
    execSql("update jxc_kcsp set kc_sl=?,kc_zsl=? where g_sn=? and ck_sn=?", counted, counted, goods, warehouse);
    return;
  }
  if (execSql("update jxc_kcsp set kc_sl=kc_sl+(?),kc_zsl=kc_zsl+(?) where ck_sn=? and g_sn=?", quantity, quantity,
              warehouse, goods) == 0)
    execSql("insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?,?,0,?,?,?)", quantity,
            row.number("gl_dj"), goods, warehouse, quantity);
}

void changeMaster(const Rules& rules, const Row& row) {
  if (rules.master == Master::None) return;
  const double quantity = inflow(rules, row);
  const QString goods = row.text("g_sn");
  if (rules.master == Master::StockAndCost && quantity > 0)
    execSql("update jxc_goods set g_kc=g_kc+(?),g_pjjj=? where g_sn=?", quantity,
            trading::averageOr(goods, row.number("gl_dj")), goods);
  else
    execSql("update jxc_goods set g_kc=g_kc+(?) where g_sn=?", quantity, goods);
}

/// What the document made the stock worth more or less, as an expense or an income; no cash goes with it.
void bookDifference(const Rules& rules, const Head& head, double value) {
  if (rules.differenceWord.empty() || std::fabs(value) < 5e-7) return;
  const QString type = !rules.differenceType.empty() ? words(rules.differenceType)
                       : value < 0                   ? u"费用"_qs
                                                     : u"收入"_qs;
  insertRow("jxc_yyfy", {{"gl_djh", head.number},
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
  Head head;
  if (!readHead(family, number, head)) throw std::runtime_error("单据不存在。");
  if (rules.markLines) execSql(rules.markLines, number);
  for (const std::string& insert : rules.inserts)
    execSql(insert, session().a_name, clock::today(), number);
  ensureStockRows(head.month());

  const RowSet rows = openSelect(
      "select id,gl_djh,g_sn,ck_sn,gl_sl,gl_dj,gl_zje,gl_sysl,gl_fdmc,id2 from jxc_goodslist where gl_djh=? order by "
      "id",
      number);
  // A count leaves lines without a difference out; elsewhere every line must have reached the ledger.
  if (!rules.overwrites && rows.rowCount() != rules.rowsALine * lineCount(family, number) + rules.rowsOfHead)
    throw std::runtime_error("单据中的商品、仓库、经办人或客户不存在。");
  double value = 0;
  for (const Row row : rows) {
    if (rules.rowPosted) rules.rowPosted(row);
    changeBalance(rules, row);
    changeMaster(rules, row);
    const double amount = row.number("gl_zje");
    addToMonth(row.text("ck_sn"), head.month(), inflow(rules, row), rules.outwards ? -amount : amount);
    replayLedger(row.integer("id"));
    value += amount;
  }
  if (!rules.auditLog.empty()) {
    const QString middle = rules.overwrites ? u"审核，共%1"_qs : u"，共%1"_qs;
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

bool readHead(const DocumentFamily& family, const QString& number, Head& head) {
  const RowSet rows = openSelect(
      compose("select * from {} where {}=? order by {} desc,id", {family.head, family.number, family.status}), number);
  if (rows.isEmpty()) return false;
  const Row row = rows.front();
  head = {.number = number,
          .date = row.text(family.date),
          .salesperson = row.text("u_sn"),
          .checker = row.text(family.checker),
          .status = static_cast<int>(row.integer(family.status))};
  return true;
}

void addToMonth(const QString& warehouse, const QString& month, double quantity, double value) {
  execSql("update jxc_kcjs set js_sl=js_sl+(?),js_zje=js_zje+(?) where js_rq=? and ck_sn=?", quantity, value, month,
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
