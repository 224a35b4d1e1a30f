#include "statistics/business_day.h"

#include "accounts/running_balance.h"
#include "core/rounding.h"
#include "core/text.h"
#include "masterdata/partner_side.h"
#include "statistics/trade_terms.h"
#include "stock/document_family.h"
#include "stock/document_list.h"

#include <QDate>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace jxc {
namespace business_day_detail {

constexpr std::string_view kBought = tradeFlags(PartnerType::Supplier), kSold = tradeFlags(PartnerType::Customer);
constexpr qsizetype kDay = 10, kMonth = 7;  // letters of a date

/// A kind of document as a block tells of it: columns are its two letters with ds, sl, je behind.
struct Block {
  const DocumentFamily& family;
  std::string_view letters;
  bool hasMoney = true;  // a transfer moves goods, no money
};
constexpr Block kPurchases{families::purchaseReceipt, "cg"}, kPurchaseReturns{families::purchaseReturn, "ct"},
    kSales{families::sale, "xs"}, kSaleReturns{families::saleReturn, "xt"}, kTransfers{families::transfer, "db", false},
    kLosses{families::loss, "bs"}, kOverflows{families::overflow, "by"};

std::string named(std::string_view letters, const char* what) {
  return std::string(letters) + what;
}
/// A sum that is 0 over nothing.
std::string sumOf(const std::string& expression, const std::string& as) {
  return "iif(sum(" + expression + ") is null,0,sum(" + expression + ")) as " + as;
}
/// The amount on rows that a condition holds for.
std::string onlyIf(const std::string& condition, const std::string& amount, const char* otherwise = "0") {
  return "iif(" + condition + "," + amount + "," + otherwise + ")";
}

/// Sums of one row each, side by side: a single answer, and a single way to a server.
class Figures {
 public:
  Figures(const Criteria& criteria, const Warehouses& warehouses) : criteria_(criteria), warehouses_(warehouses) {}

  Figures& documents(const Block& block) {
    const DocumentFamily& f = block.family;
    const LineColumns& line = *f.line.columns;
    Filter heads;
    heads.add(compose("b.{}=1", {f.status}));
    addPeriod(heads, criteria_, compose("b.{}", {f.date}));
    warehouses_.restrict(heads, compose("b.{}", {f.warehouse}));
    add(Sql(compose("select count(*) as {} from {} b", {named(block.letters, "ds"), f.head})).where(heads));
    std::string sums = sumOf(compose("a.{}", {line.quantity}), named(block.letters, "sl"));
    if (block.hasMoney) sums += "," + sumOf(compose("a.{}", {line.total}), named(block.letters, "je"));
    add(Sql("select " + sums +
            compose(" from {} b inner join {} a on b.{}=a.{}", {f.head, f.lines, f.number, f.number}))
            .where(heads));
    return *this;
  }

  /// Sales less returns of the ledger.
  Figures& profit() {
    Filter filter;
    filter.add("gl_flag in " + std::string(kSold));
    addPeriod(filter, criteria_, "gl_kdrq");
    warehouses_.restrict(filter, "ck_sn");
    return add(Sql("select " + sumOf("gl_zcb", "xscb") + "," + sumOf("gl_lr", "xslr") + "," + sumOf("gl_zje", "xszje") +
                   "," + percentOf("sum(gl_lr)", "sum(gl_zje)") + " as lrl from jxc_goodslist")
                   .where(filter));
  }

  Figures& stock() {
    Filter filter;
    filter.add("b.g_jy=0").add("b.g_sn<>'00000000'");
    warehouses_.restrict(filter, "a.ck_sn");
    const std::string value = "sum(a.kc_sl*a.kc_cbj)";
    return add(Sql("select " + sumOf("a.kc_sl", "kcsl") + ",iif(" + value + " is null,0," +
                   roundedExpression(value, totalDigits()) +
                   ") as kcje from jxc_kcsp a inner join jxc_goods b on a.g_sn=b.g_sn")
                   .where(filter));
  }

  /// What came to be owed on one side and what was paid, of partners in use: how many payments, their amount, what came
  /// to be owed, what was paid at once or later.
  Figures& partners(const PartnerSide& side, const std::array<const char*, 4>& columns) {
    Filter filter;
    filter.add(compose("b.{}=0", {side.forbidden})).add("a.k_type=?", words(side.type));
    filter.add("(a.k_djlx is null or a.k_djlx<>?)", QString::fromUtf16(carriedKind));
    addPeriod(filter, criteria_, "a.k_rq");
    const std::string isPayment = "a.k_djlx='" + std::string(side.paymentPrefix) + "'";
    return add(Sql("select " + sumOf(onlyIf(isPayment, "1"), columns[0]) + "," +
                   sumOf(onlyIf(isPayment, "a.k_sfje"), columns[1]) + "," + sumOf("a.k_yfje", columns[2]) + "," +
                   sumOf("a.k_sfje", columns[3]) +
                   compose(" from jxc_ysyfk a inner join {} b on a.k_ghskh=b.{}", {side.table, side.sn}))
                   .where(filter));
  }

  Figures& add(const Sql& part) {
    if (count_ > 0) all_.add(",");
    all_.add("(").add(part).add(") p" + std::to_string(count_++));
    return *this;
  }
  Sql row() const { return Sql("select * from ").add(all_); }

 private:
  const Criteria& criteria_;
  const Warehouses& warehouses_;
  Sql all_;
  int count_ = 0;
};

/// Rows of the ledger that are trade.
Filter tradeOf(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add("x.gl_flag in ('cj','ct','xs','xt')");
  addPeriod(filter, criteria, "x.gl_kdrq");
  warehouses.restrict(filter, "x.ck_sn");
  return filter;
}

/// What one side of the ledger comes to on a day or in a month.
struct Side {
  bool any = false;
  double pieces = 0, net = 0, tax = 0, total = 0, cost = 0, profit = 0;
};
struct Traded {
  Side bought, sold;
};
using TradedBy = std::map<QString, Traded>;  // by day or month

/// Rows of the ledger with their day (ten letters of the date) or month (seven), to be summed by it.
constexpr std::array<std::string_view, 2> kTimeAndFlag{"tjrq", "gl_flag"};
constexpr std::array<std::string_view, 6> kFigures{"gl_sl", "gl_je", "gl_taxje", "gl_zje", "gl_zcb", "gl_lr"};
Sql tradedBy(const Criteria& criteria, const Warehouses& warehouses, qsizetype letters) {
  return Sql("select left(x.gl_kdrq," + std::to_string(letters) +
             ") as tjrq,x.gl_flag,x.gl_sl,x.gl_je,x.gl_taxje,x.gl_zje,x.gl_zcb,x.gl_lr from jxc_goodslist x")
      .where(tradeOf(criteria, warehouses));
}

TradedBy readTraded(EnquiryReader& reader, const Sql& lines) {
  TradedBy all;
  for (const Row row : reader.sums(lines, {kTimeAndFlag, kFigures})) {
    Traded& traded = all[row.text("tjrq")];
    Side& side = row.text("gl_flag").startsWith(u'x') ? traded.sold : traded.bought;
    side.any = true;
    side.pieces += row.number("gl_sl");
    side.net += row.number("gl_je");
    side.tax += row.number("gl_taxje");
    side.total += row.number("gl_zje");
    side.cost += row.number("gl_zcb");
    side.profit += row.number("gl_lr");
  }
  return all;
}

constexpr std::array kTradedColumns{"cgsl",    "cgje",  "cgtaxje", "cgzje", "xssl", "xsje",
                                    "xstaxje", "xszje", "xscb",    "xslr",  "lrl"};

/// The columns of both sides. The cost and what the margin is of differ between days and months; a side without trade
/// is 0, or null.
void addTraded(RowSet& rows, const Traded& traded, double cost, double marginOf, bool emptyIsNull) {
  constexpr int kHundredths = 2;
  const auto add = [&](const Side& side, std::initializer_list<double> figures) {
    for (const double figure : figures)
      side.any || !emptyIsNull ? rows.addReal(figure) : rows.addNull();
  };
  const auto& [bought, sold] = traded;
  add(bought, {bought.pieces, bought.net, bought.tax, bought.total});
  add(sold, {sold.pieces, sold.net, sold.tax, sold.total, cost, sold.profit});
  rows.addReal(marginOf == 0 ? 0 : roundEps(sold.profit * 100 / marginOf, kHundredths));
}

RowSet tradedRows(std::vector<std::string> before) {
  before.insert(before.end(), kTradedColumns.begin(), kTradedColumns.end());
  return RowSet(std::move(before));
}

/// A day, or the first one of a month; no date when it is neither.
QDate dayOf(const QString& text) {
  return QDate::fromString(text.size() == kMonth ? text + QStringLiteral("-01") : text.left(kDay), Qt::ISODate);
}

/// The days without trade, too.
void fill(TradedBy& days, const Criteria& criteria) {
  constexpr qint64 kLongest = 3 * 366;
  if (days.empty()) return;
  QDate from = dayOf(criteria.from), to = dayOf(criteria.to);
  if (to.isValid() && criteria.to.size() == kMonth) to.setDate(to.year(), to.month(), to.daysInMonth());
  if (!from.isValid() || !to.isValid() || from.daysTo(to) >= kLongest) {
    from = dayOf(days.begin()->first);
    to = dayOf(days.rbegin()->first);
  }
  if (!from.isValid() || !to.isValid() || from.daysTo(to) >= kLongest) return;
  for (QDate day = from; day <= to; day = day.addDays(1))
    days.try_emplace(day.toString(Qt::ISODate));
}

/// Goods in use below their limit: of the whole shop by their stock altogether, of some warehouses by that in one of
/// them. The limit is of the goods, whatever the warehouse.
Sql goodsBelowLimit(const Warehouses& warehouses) {
  Filter filter, own;
  filter.add("a.g_sn<>'00000000'").add("a.g_jy=0");
  warehouses.restrict(own, "k.ck_sn");
  if (own.isEmpty())
    filter.add("a.g_kc<a.g_zdkc");
  else
    filter.add(
        Sql("exists (select k.id from jxc_kcsp k where k.g_sn=a.g_sn and k.kc_sl<a.g_zdkc").andWhere(own).add(")"));
  return Sql("select count(*) as bj from jxc_goods a").where(filter);
}

Sql owedBy(const PartnerSide& side, const char* as) {
  return Sql("select " + sumOf(std::string(side.balance), as) +
             compose(" from {} where {}=0", {side.table, side.forbidden}));
}

}  // namespace business_day_detail

Sql businessFigures(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace business_day_detail;
  Figures figures(criteria, warehouses);
  for (const Block* block :
       {&kPurchases, &kPurchaseReturns, &kSales, &kSaleReturns, &kTransfers, &kLosses, &kOverflows})
    figures.documents(*block);
  figures.stock().partners(supplierSide, {"fkds", "fkje", "yfje", "sfje"});
  figures.partners(customerSide, {"skds", "skje", "ysje", "ssje"}).profit();
  return Sql("select 1 as id,m.*,m.cgsl-m.ctsl as cghjsl,m.cgje-m.ctje as cghjje,m.xssl-m.xtsl as xshjsl,"
             "m.xsje-m.xtje as xshjje from (")
      .add(figures.row())
      .add(") m");
}

Computation businessDays(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace business_day_detail;
  const Sql lines = tradedBy(criteria, warehouses, kDay);
  return [lines, criteria](EnquiryReader& reader) {
    TradedBy days = readTraded(reader, lines);
    fill(days, criteria);
    RowSet rows = tradedRows({"rq"});
    for (const auto& [day, traded] : days) {
      rows.addText(day.toStdString());
      addTraded(rows, traded, traded.sold.cost, traded.sold.total, false);
    }
    return rows;
  };
}

Computation businessMonths(const Criteria& asked, const Warehouses& warehouses) {
  using namespace business_day_detail;
  Criteria criteria = asked;
  criteria.from = asked.from.left(kMonth);
  criteria.to = asked.to.left(kMonth);
  Filter filter;
  addPeriod(filter, criteria, "js_rq");
  warehouses.restrict(filter, "ck_sn");
  const Sql stock = Sql("select js_rq,sum(js_sl) as sl,round(sum(js_zje),2) as zje from jxc_kcjs")
                        .where(filter)
                        .add(" group by js_rq order by js_rq desc");
  const Sql lines = tradedBy(criteria, warehouses, kMonth);
  return [stock, lines](EnquiryReader& reader) {
    const RowSet months = reader.select(stock);
    const TradedBy traded = months.isEmpty() ? TradedBy() : readTraded(reader, lines);
    RowSet rows = tradedRows({"js_rq", "sl", "zje"});
    for (const Row month : months) {
      const auto found = traded.find(month.text("js_rq"));
      const Traded known = found == traded.end() ? Traded() : found->second;
      rows.addText(month.text("js_rq").toStdString());
      rows.addReal(month.number("sl"));
      rows.addReal(month.number("zje"));
      // Returns alone give no margin here: sales before tax have to be above 0.
      addTraded(rows, known, known.sold.net - known.sold.profit, std::max(0.0, known.sold.net), true);
    }
    return rows;
  };
}

Sql businessLines(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace business_day_detail;
  return Sql("select x.*," + tradeKind("x.gl_flag") + " as lx," +
             onlyIf("x.gl_flag in " + std::string(kBought), "x.gl_zje", "null") + " as cgzje," +
             onlyIf("x.gl_flag in " + std::string(kSold), "x.gl_zje", "null") + " as xszje," +
             onlyIf("x.gl_flag in " + std::string(kSold), "x.gl_lr", "null") + " as xslr from jxc_goodslist x")
      .where(tradeOf(criteria, warehouses))
      .add(" order by x.gl_kdrq desc,x.id desc");
}

Computation dayFigures(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace business_day_detail;
  const Sql figures =
      Figures(criteria, warehouses)
          .documents(kSales)
          .documents(kSaleReturns)
          .profit()
          .add(Sql("select sum(n) as ds from (").add(waitingDocuments(EveryDocument::families, warehouses)).add(") w"))
          .add(goodsBelowLimit(warehouses))
          .add(owedBy(customerSide, "ys"))
          .add(owedBy(supplierSide, "yf"))
          .row();
  Filter counted;
  counted.add("xj_chk='1'").add("xj_je<>0");
  counted.add("(xj_dlx is null or xj_dlx<>?)", QString::fromUtf16(carriedWords));
  addPeriod(counted, criteria, "xj_rq");
  const Sql accounts =
      Sql("select xj_kmmc,sum(xj_je) as je from jxc_xjyh").where(counted).add(" group by xj_kmmc order by xj_kmmc");
  return [figures, accounts](EnquiryReader& reader) {
    RowSet rows({"what", "name", "ds", "sl", "je"});
    const auto tell = [&](std::string_view what, const QString& name, double count, double quantity, double money) {
      rows.addText(what);
      rows.addText(name.toStdString());
      for (const double figure : {count, quantity, money})
        rows.addReal(figure);
    };
    const RowSet found = reader.select(figures);
    const Row day = found.front();
    tell("xs", {}, day.number("xsds"), day.number("xssl"), day.number("xsje"));
    tell("xt", {}, day.number("xtds"), day.number("xtsl"), day.number("xtje"));
    tell("lr", {}, 0, 0, day.number("xslr"));
    for (const Row account : reader.select(accounts))
      tell("zj", account.text("xj_kmmc"), 0, 0, account.number("je"));
    tell("ds", {}, day.number("ds"), 0, 0);
    tell("bj", {}, day.number("bj"), 0, 0);
    tell("ys", {}, 0, 0, day.number("ys"));
    tell("yf", {}, 0, 0, day.number("yf"));
    return rows;
  };
}

}  // namespace jxc
