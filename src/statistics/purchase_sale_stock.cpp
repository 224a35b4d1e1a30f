#include "statistics/purchase_sale_stock.h"

#include "core/rights.h"
#include "engine/number_text.h"
#include "statistics/trade_terms.h"
#include "stock/ledger_flags.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace jxc {
namespace purchase_sale_stock_detail {

constexpr std::string_view kMoney = "00000000";
constexpr int kRowsBetweenLooks = 4096;

bool isAtCost(const Criteria& criteria) {
  return criteria.has(kAtCost) || !hasRight(kSeesPrice);
}

/// Of ledger rows `x`, but for their date.
Filter rowsAskedFor(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  addChoice(filter, "x.g_sn", criteria.goods);
  warehouses.restrict(filter, "x.ck_sn");
  addGoods(filter, criteria, {"g_sn", "g_jm", "g_name", "gg_name"});
  return filter;
}

// ---- lines ----

constexpr std::string_view kFigures[] = {"dnote", "rkdj", "rksl", "rkje", "ckdj", "cksl", "ckje"};

/// Rows of goods and warehouses that are there; a class that is gone is "其他". Columns of figures come last.
Sql rowsWith(const std::string& columns) {
  return Sql(
      "select x.id,x.gl_kdrq,x.gl_djh,x.g_sn,y.g_name,y.gg_name,y.dw_name,y.color_name,"
      "iif(z.gc_name is null,'其他',z.gc_name) as gc_name,x.ghs_name,m.ck_name,x.ck_sn,x.u_name,x.gl_bz,x.gl_kc,"
      "x.gl_kczje" +
      columns +
      " from ((jxc_goodslist x inner join jxc_goods y on x.g_sn=y.g_sn) inner join jxc_ckxx m on "
      "x.ck_sn=m.ck_sn) left outer join jxc_goodsclass z on y.gc_sn=z.gc_sn");
}

/// Figures of one line on its side.
struct Figures {
  Counts side = Counts::Nowhere;
  double price = 0, quantity = 0, amount = 0;
};

class MovementLines {
 public:
  MovementLines(const RowSet& rows, bool atCost) : rows_(rows), atCost_(atCost) {}

  RowSet onTheirSides(EnquiryReader& reader) const {
    std::vector<std::string> names(rows_.columns().begin(), rows_.columns().begin() + flag_);
    names.insert(names.end(), std::begin(kFigures), std::end(kFigures));
    RowSet lines(std::move(names));
    for (int row = 0; row < rows_.rowCount(); ++row) {
      if (row % kRowsBetweenLooks == 0) reader.progress(50);
      const LedgerFlag* const flag = findLedgerFlag(rows_.utf8(row, flag_));
      if (!flag || flag->caption.empty()) continue;
      const Figures figures = of(*flag, row);
      if (figures.side == Counts::Nowhere) continue;
      for (int column = 0; column < flag_; ++column)
        copyCell(lines, rows_, row, column);
      lines.addText(flag->captionOf(rows_.number(row, quantity_)).toUtf8().toStdString());
      add(lines, figures.side == Counts::Out ? Figures{} : figures);
      add(lines, figures.side == Counts::Out ? figures : Figures{});
    }
    return lines;
  }

 private:
  Figures of(const LedgerFlag& flag, int row) const {
    const double quantity = rows_.number(row, quantity_);
    // A line of trade without quantity is one of money.
    const bool isMoney = quantity == 0 && flag.amount != ShownAmount::WithTax;
    Figures result{isMoney ? flag.counts : flag.countsAs(quantity), rows_.number(row, price_)};
    // Rows that leave the stock are stored below zero where their kind adds to it, and the other way round.
    const bool turns = (flag.group == MovementGroup::In) == (result.side == Counts::Out);
    const auto turned = [turns](double number) { return turns && number != 0 ? -number : number; };
    result.quantity = turned(quantity);
    if (flag.amount == ShownAmount::OfSale && atCost_) {
      result.price = rows_.number(row, cost_);
      const double cost = rows_.number(row, costAmount_);
      result.amount = result.side == Counts::Out ? cost : std::abs(cost);
    } else {
      result.amount = turned(rows_.number(row, flag.amount == ShownAmount::WithTax ? withTax_ : beforeTax_));
    }
    return result;
  }
  static void add(RowSet& lines, const Figures& figures) {
    lines.addReal(figures.price);
    lines.addReal(figures.quantity);
    lines.addReal(figures.amount);
  }

  const RowSet& rows_;
  bool atCost_;
  int flag_ = rows_.columnIndex("gl_flag"), quantity_ = rows_.columnIndex("gl_sl"), price_ = rows_.columnIndex("gl_dj"),
      cost_ = rows_.columnIndex("gl_cbj"), costAmount_ = rows_.columnIndex("gl_zcb"),
      withTax_ = rows_.columnIndex("gl_zje"), beforeTax_ = rows_.columnIndex("gl_je");
};

// ---- sums ----

/// The goods and warehouses that a table tells of, with the names of the goods (`named` is null of one that is gone)
/// and stock and value behind the last ledger row before the period (`qckc`, `qcje`) and up to its end (`qmkc`, `qmje`,
/// `qmid`). Each last row is found by an index, so that it does not matter how long the ledger is.
Sql lastRows(std::string_view table, const Filter& filter, const Criteria& criteria) {
  const auto last = [](const Filter& when) {
    Filter here;
    here.add("e.g_sn=k.g_sn").add("e.ck_sn=k.ck_sn").add(when.conditions());
    return Sql("(select top 1 e.id from jxc_goodslist e").where(here).add(" order by e.gl_kdrq desc,e.id desc)");
  };
  Filter before, until;
  before.add("e.gl_kdrq<?", criteria.from);
  addPeriod(until, {.from = criteria.has(kMovedOnly) ? criteria.from : QString(), .to = criteria.to}, "e.gl_kdrq");
  if (until.isEmpty()) until.add("e.g_sn=k.g_sn");
  return Sql("select k.g_sn,k.ck_sn,b.g_sn as named,b.g_name,b.gg_name,b.dw_name,b.color_name,"
             "iif(c.gc_name is null,'其他',c.gc_name) as gc_name,p.gl_kc as qckc,p.gl_kczje as qcje,q.id as qmid,"
             "q.gl_kc as qmkc,q.gl_kczje as qmje from ((((select distinct x.g_sn,x.ck_sn from " +
             std::string(table) + " x")
      .where(filter)
      .add(") k left outer join jxc_goodslist p on p.id=")
      .add(last(before))
      .add(") left outer join jxc_goodslist q on q.id=")
      .add(last(until))
      .add(") left outer join jxc_goods b on k.g_sn=b.g_sn) left outer join jxc_goodsclass c on b.gc_sn=c.gc_sn");
}

/// What rows of the period add up to, by goods, warehouse, flag and whether they are above zero.
Sql flows(const Filter& filter, const Criteria& criteria) {
  Filter rows = filter;
  addPeriod(rows, criteria, "x.gl_kdrq");
  return Sql("select x.g_sn,x.ck_sn,x.gl_flag,iif(x.gl_sl>0,1,iif(x.gl_sl<0,-1,0)) as direction,x.gl_sl,x.gl_je" +
             std::string(isAtCost(criteria) ? ",x.gl_zcb" : "") + " from jxc_goodslist x")
      .where(rows);
}
constexpr std::string_view kFlowKeys[] = {"g_sn", "ck_sn", "gl_flag", "direction"},
                           kFlowSums[] = {"gl_sl", "gl_je", "gl_zcb"};

struct Stock {
  double quantity = 0, value = 0;
  void add(double pieces, double yuan) {
    quantity += pieces;
    value += yuan;
  }
};

struct Goods {
  std::vector<std::string_view> warehouses;  // that last rows were looked for in
  int names = -1;                            // the last row that has its names; none: it is gone from the catalogue
  bool isShown = false;
  Stock before, in, out, after;
};

/// The sums of each goods, by its number. Texts are those of the rows it was given.
class Summary {
 public:
  explicit Summary(const RowSet& warehouses) {
    for (int row = 0; row < warehouses.rowCount(); ++row)
      open_.insert(warehouses.utf8(row, 0));
  }

  void takeLastRows(const RowSet& rows) {
    const auto column = [&](std::string_view name) { return rows.columnIndex(name); };
    const int named = column("named"), id = column("qmid"), before = column("qckc"), beforeValue = column("qcje"),
              after = column("qmkc"), afterValue = column("qmje");
    goods_.clear();
    for (int row = 0; row < rows.rowCount(); ++row) {
      if (!open_.contains(rows.utf8(row, kWarehouse))) continue;
      Goods& goods = goods_[rows.utf8(row, kNumber)];
      goods.warehouses.push_back(rows.utf8(row, kWarehouse));
      if (!rows.isNull(row, named)) goods.names = row;
      if (rows.utf8(row, kNumber) == kMoney) continue;
      goods.isShown = goods.isShown || !rows.isNull(row, id);
      goods.before.add(rows.number(row, before), rows.number(row, beforeValue));
      goods.after.add(rows.number(row, after), rows.number(row, afterValue));
    }
  }

  /// Whether last rows were looked for wherever something moved.
  bool knows(const RowSet& flows) const {
    for (int row = 0; row < flows.rowCount(); ++row) {
      if (!open_.contains(flows.utf8(row, kWarehouse))) continue;
      const auto goods = goods_.find(flows.utf8(row, kNumber));
      if (goods == goods_.end() || std::ranges::count(goods->second.warehouses, flows.utf8(row, kWarehouse)) == 0)
        return false;
    }
    return true;
  }

  void takeFlows(const RowSet& rows, bool atCost) {
    const auto column = [&](std::string_view name) { return rows.columnIndex(name); };
    const int flags = column("gl_flag"), directions = column("direction"), quantities = column("gl_sl"),
              amounts = column("gl_je"), withoutSign = column("abs_gl_je"), costs = column("abs_gl_zcb");
    for (int row = 0; row < rows.rowCount(); ++row) {
      const LedgerFlag* const flag = findLedgerFlag(rows.utf8(row, flags));
      if (!flag || !open_.contains(rows.utf8(row, kWarehouse))) continue;
      Goods& goods = goods_[rows.utf8(row, kNumber)];
      if (rows.utf8(row, kNumber) == kMoney) {
        if (flag->flag != "cj" && flag->flag != "xs") continue;
        (flag->flag == "cj" ? goods.in : goods.out).value += rows.number(row, amounts);
        goods.isShown = true;
        continue;
      }
      const double quantity = rows.number(row, quantities);
      const double amount = rows.number(row, atCost && flag->amount == ShownAmount::OfSale ? costs : withoutSign);
      switch (flag->countsAs(rows.number(row, directions))) {
        case Counts::Nowhere:
          break;
        case Counts::In:
          goods.in.add(std::abs(quantity), amount);
          break;
        case Counts::InSigned:
          goods.in.add(quantity, rows.number(row, amounts));
          break;
        case Counts::Out:
          goods.out.add(std::abs(quantity), amount);
          break;
      }
    }
  }

  RowSet rows(const RowSet& lastRows) const {
    std::vector<std::pair<std::string_view, const Goods*>> sorted;
    for (const auto& [number, goods] : goods_)
      if (goods.isShown && goods.names >= 0) sorted.emplace_back(number, &goods);
    std::sort(sorted.begin(), sorted.end());
    RowSet result({"g_sn", "g_name", "gg_name", "dw_name", "color_name", "gc_name", "gl_kc", "gl_kczje", "rksl",
                   "rkzje", "cksl", "ckzje", "glkc", "glkczje"});
    for (const auto& [number, goods] : sorted) {
      result.addText(number);
      for (const char* name : {"g_name", "gg_name", "dw_name", "color_name", "gc_name"})
        copyCell(result, lastRows, goods->names, lastRows.columnIndex(name));
      for (const Stock& each : {goods->before, goods->in, goods->out, goods->after}) {
        result.addReal(toSixDecimals(each.quantity));
        result.addReal(toSixDecimals(each.value));
      }
    }
    return result;
  }

 private:
  static constexpr int kNumber = 0, kWarehouse = 1;  // of last rows and of flows
  std::unordered_set<std::string_view> open_;
  std::unordered_map<std::string_view, Goods> goods_;
};

}  // namespace purchase_sale_stock_detail

Computation stockMovements(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace purchase_sale_stock_detail;
  Filter filter = rowsAskedFor(criteria, warehouses);
  addPeriod(filter, criteria, "x.gl_kdrq");
  filter.add("(x.gl_flag<>'qc' or x.gl_sl<>0)");
  const Sql rows = rowsWith(",x.gl_flag,x.gl_sl,x.gl_dj,x.gl_cbj,x.gl_zcb,x.gl_je,x.gl_zje")
                       .where(filter)
                       .add(" order by m.ck_name,x.g_sn,x.gl_kdrq,x.id");
  return [rows, atCost = isAtCost(criteria)](EnquiryReader& reader) {
    const RowSet all = reader.select(rows);
    return MovementLines(all, atCost).onTheirSides(reader);
  };
}

Sql openingStock(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace purchase_sale_stock_detail;
  Filter filter = rowsAskedFor(criteria, warehouses);
  filter.add("x.gl_flag='qc'");
  if (criteria.has(kHidesZeroOpening)) filter.add("x.gl_sl<>0");
  return rowsWith(",'期初数' as dnote,x.gl_dj as rkdj,x.gl_sl as rksl,x.gl_zje as rkje")
      .where(filter)
      .add(" order by x.g_sn,x.gl_kdrq,x.id");
}

Computation stockSummary(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace purchase_sale_stock_detail;
  Filter filter = rowsAskedFor(criteria, warehouses);
  // Of a period that ends before it begins nothing can be told, stock neither.
  if (!criteria.to.isEmpty() && criteria.from > criteria.to) filter.add("1=0");
  return [asked = flows(filter, criteria), balances = lastRows("jxc_kcsp", filter, criteria),
          ledger = lastRows("jxc_goodslist", filter, criteria), atCost = isAtCost(criteria)](EnquiryReader& reader) {
    const RowSet open = reader.select(Sql("select ck_sn from jxc_ckxx"));
    const std::span<const std::string_view> numbers(kFlowSums);
    const RowSet moved = reader.sums(asked, {kFlowKeys, atCost ? numbers : numbers.first(2)});
    reader.progress(80);
    RowSet last = reader.select(balances);
    Summary summary(open);
    summary.takeLastRows(last);
    // Goods have a balance wherever they moved. Of an account set where one is missing the ledger itself is asked.
    if (!summary.knows(moved)) {
      last = reader.select(ledger);
      summary.takeLastRows(last);
    }
    summary.takeFlows(moved, atCost);
    return summary.rows(last);
  };
}

}  // namespace jxc
