// 当前库存核对: what stands per goods and warehouse against the ledger, the goods master against its warehouses, month
// rows against the stock.
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "maintenance/proof_books.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <ranges>
#include <set>
#include <unordered_map>

namespace jxc::proof {
namespace prove_balances_detail {

/// What cancelled documents tell of a pair: they left no row.
struct Cancelled {
  bool any = false;            // one that moved it, other than a count
  std::vector<double> prices;  // in their lines
};

/// All that is asked about one pair beyond its rows.
struct Around {
  std::vector<Cancelled> cancelled;     // by pair
  std::vector<char> cancelledOutgoing;  // by pair: a document that does not set the cost was cancelled
  std::vector<char> cancelledTwice;     // by pair: a cancelled document has the goods on several lines
  bool closed = false;                  // a period was closed once
  bool fixedCost = false;
  bool mayGoShort = false;  // by parameter: what was cancelled since may have left the goods short for a while
};

Around lookAround(Books& books) {
  Around around;
  around.cancelled.resize(books.pairs.size());
  around.cancelledOutgoing.resize(books.pairs.size());
  around.cancelledTwice.resize(books.pairs.size());
  std::set<std::pair<int, int>> seen;  // document, pair
  std::set<int> heads;
  for (const WaitingLine& line : books.waiting) {
    if (!line.cancelled) continue;
    const Document& document = books.documents[static_cast<std::size_t>(line.document)];
    // What a split took apart, or a bundle became, stands in the head.
    if (document.goods >= 0 && heads.insert(line.document).second) {
      const int pair = books.findPair(document.goods, document.warehouse);
      if (pair >= 0) {
        Cancelled& cancelled = around.cancelled[static_cast<std::size_t>(pair)];
        cancelled.any = true;
        if (document.headQuantity != 0) cancelled.prices.push_back(std::fabs(document.total / document.headQuantity));
      }
    }
    for (const int warehouse : {line.warehouse >= 0 ? line.warehouse : document.warehouse, document.warehouseIn}) {
      if (warehouse < 0) continue;
      const int pair = books.findPair(line.goods, warehouse);
      if (pair < 0) continue;
      const auto at = static_cast<std::size_t>(pair);
      if (!seen.insert({line.document, pair}).second) around.cancelledTwice[at] = 1;
      const DocumentFamily& family = *document.family;
      const bool comesIn = family.comesIn || warehouse == document.warehouseIn;
      // What comes back from a customer comes at its cost.
      const bool atCost = comesIn && !family.line.columns->cost.empty();
      around.cancelled[at].prices.push_back(atCost ? line.cost : line.price);
      if (family.isCount()) continue;
      around.cancelled[at].any = true;
      if (leavesCost(family)) around.cancelledOutgoing[at] = 1;
    }
  }
  around.closed = !books.closedUntil.empty() || !books.select("select top 1 id from jxc_nj").isEmpty();
  const RowSet parameters = books.select("select cs_cs009,cs_kc from jxc_xtcs");
  around.fixedCost = !parameters.isEmpty() && strIsTrue(parameters.text(0, 0));
  around.mayGoShort = !parameters.isEmpty() && strIsTrue(parameters.text(0, 1));
  return around;
}

bool isCostSetter(const LedgerRow& row) {
  return row.flag && row.flag->setsCost() && !(row.isOpening() && row.number < 0);
}

/// Whether something that does not set the cost was posted after the last row that does, before later rows.
bool postedBehindCost(const Pair& pair) {
  std::int64_t lastSetter = 0, latest = 0;
  for (const LedgerRow& row : pair.rows)
    if (isCostSetter(row)) lastSetter = std::max(lastSetter, row.id);
  for (std::size_t i = 0; i + 1 < pair.rows.size(); ++i) {
    const LedgerRow& row = pair.rows[i];
    if (!isCostSetter(row)) latest = std::max(latest, row.id);
  }
  return latest > lastSetter;
}

/// A cost that the goods had here after some row.
bool wasCost(const Pair& pair, double cost) {
  return std::ranges::any_of(
      pair.rows, [cost](const LedgerRow& row) { return sameFigure(row.average, cost) || sameFigure(row.price, cost); });
}

/// Costs and prices that a goods ever had.
struct CostRange {
  double least = std::numeric_limits<double>::max(), most = 0;
  void saw(double cost) {
    least = std::min(least, std::fabs(cost));
    most = std::max(most, std::fabs(cost));
  }
  void saw(const CostRange& other) {
    least = std::min(least, other.least);
    most = std::max(most, other.most);
  }
  bool holds(double cost, double slack) const { return cost >= least - slack && cost <= most + slack; }
};

/// What the warehouses say about one goods.
struct GoodsSum {
  double shelf = 0, book = 0, worth = 0;
  CostRange costs;     // of rows and lines
  CostRange balances;  // of what stands in the warehouses
  int places = 0;
  bool moved = false;
  bool negative = false;   // short in some warehouse once: a weighted average may lie outside of all averages then
  bool cancelled = false;  // a document of the goods was cancelled: it left no row
  std::int64_t lastSetter = 0, last = 0;
};

using GoodsSums = std::unordered_map<int, GoodsSum>;

GoodsSums sumGoods(const Books& books, const Around& around) {
  GoodsSums sums;
  for (std::size_t i = 0; i < books.pairs.size(); ++i) {
    const Pair& pair = books.pairs[i];
    GoodsSum& sum = sums[pair.goods];
    sum.shelf += pair.balance.shelf;
    sum.book += pair.balance.book;
    sum.worth += pair.balance.cost * pair.balance.book;
    sum.cancelled = sum.cancelled || around.cancelledOutgoing[i] || around.cancelledTwice[i] || around.cancelled[i].any;
    for (const double price : around.cancelled[i].prices)
      sum.costs.saw(price);
    sum.places += pair.balance.id != 0;
    if (pair.balance.id != 0) sum.balances.saw(pair.balance.cost);
    for (const LedgerRow& row : pair.rows) {
      sum.moved = true;
      sum.last = std::max(sum.last, row.id);
      sum.costs.saw(row.average);
      sum.negative = sum.negative || row.stock < 0;
      if (!isCostSetter(row)) continue;
      sum.costs.saw(row.price);
      const std::string_view flag = row.flag->flag;
      // Splits and bundles set the average, too, but before their replay: the next purchase brings it up to date.
      if (flag == "cj" || flag == "ct") sum.lastSetter = std::max(sum.lastSetter, row.id);
    }
  }
  return sums;
}

void provePair(Books& books, Around& around, const GoodsSums& sums, int index) {
  const Pair& pair = books.pairs[static_cast<std::size_t>(index)];
  const auto place = [&](double stored, double due) {
    return [&books, &pair, stored, due] { return Place{books.nameOf(pair), numberText(stored), numberText(due)}; };
  };
  if (pair.balance.id == 0) {
    if (!pair.rows.empty())
      books.findings.add(Kind::BalanceMissing, [&] {
        return Place{books.nameOf(pair), u"没有"_qs, numberText(pair.rows.back().stock)};
      });
    return;
  }
  double ledger = 0, sold = 0;
  for (const LedgerRow& row : pair.rows) {
    ledger += row.inflow();
    if (row.flag && (row.flag->flag == "xs" || row.flag->flag == "xt")) sold += row.quantity;
  }
  const Balance& balance = pair.balance;
  if (!sameAmount(balance.book, ledger)) books.findings.add(Kind::BookStock, place(balance.book, ledger));
  const double shelf = balance.book - pair.waitingIn + pair.waitingOut;
  if (!sameAmount(balance.shelf, shelf)) books.findings.add(Kind::ShelfStock, place(balance.shelf, shelf));
  if (!sameAmount(balance.sold, sold))
    books.findings.add(
        around.closed && (balance.sold > sold || !books.closedUntil.empty()) ? Kind::SoldClosed : Kind::Sold,
        place(balance.sold, sold));

  if (std::ranges::none_of(pair.rows, isCostSetter))
    return;  // the cost is that of a first sale, or of the opening entry
  const double average = pair.rows.back().average;
  if (sameFigure(balance.cost, average)) return;
  const auto at = static_cast<std::size_t>(index);
  const auto wasCancelled = [&](const LedgerRow& row) {
    return !isCostSetter(row) && row.number >= 0 && books.log.cancelled(row.number);
  };
  // A ledger that begins with a sale opens at the average that the goods has on the day of each replay.
  const bool opensAtMaster = !pair.rows.front().movesAverage();
  const bool behind = opensAtMaster || postedBehindCost(pair) || around.cancelledOutgoing[at] ||
                      around.cancelledTwice[at] || std::ranges::any_of(pair.rows, wasCancelled) ||
                      books.log.hasDeleted();
  // A cost that the goods may have had, in whatever warehouse. Where stock was short, it may lie outside of all prices.
  const GoodsSum& goods = sums.at(pair.goods);
  const bool explained = behind && (goods.negative || (around.mayGoShort && goods.cancelled && balance.cost != 0) ||
                                    goods.costs.holds(balance.cost, std::pow(10.0, -books.digits.money)));
  const Kind kind = around.fixedCost && (explained || wasCost(pair, balance.cost)) ? Kind::WarehouseCostFixed
                    : explained && !around.fixedCost                               ? Kind::WarehouseCostBehind
                                                                                   : Kind::WarehouseCost;
  books.findings.add(kind, place(balance.cost, average));
}

// ---- goods -------------------------------------------------------------------------------------------------------

void proveGoods(Books& books, const Around& around, const GoodsSums& sums) {
  std::vector<char> known(static_cast<std::size_t>(books.goods.size()));
  books.eachRow("jxc_goods", "g_sn,g_kc,g_pjjj", [&](const WalkedRow& row) {
    if (row.utf8(1) == "00000000") return;
    const int goods = books.goods.find(row.utf8(1));
    if (goods >= 0) known[static_cast<std::size_t>(goods)] = 1;
    const auto found = goods < 0 ? sums.end() : sums.find(goods);
    const GoodsSum sum = found == sums.end() ? GoodsSum{} : found->second;
    const auto place = [&](double stored, double due) {
      return [&row, stored, due] { return Place{u"商品 "_qs + row.text(1), numberText(stored), numberText(due)}; };
    };
    const double stock = row.number(2);
    if (!sameAmount(stock, sum.shelf)) books.findings.add(Kind::GoodsStock, place(stock, sum.shelf));
    if (!sum.moved || std::fabs(sum.book) < 1e-9 || sum.lastSetter == 0) return;
    const double average = row.number(3);
    const double due = std::fabs(roundEps(sum.worth / sum.book, books.digits.money));
    if (sameAmount(average, due)) return;
    // Within the costs that the goods has had, and something moved since a document last set it.
    const double slack = std::pow(10.0, -books.digits.money);
    CostRange costs = sum.costs;
    costs.saw(sum.balances);
    // A cancelled document may have left the goods short for a while, with an average beyond all that its rows tell
    // now.
    const bool plausible =
        sum.negative || (around.mayGoShort && sum.cancelled && average != 0) || costs.holds(average, slack);
    const bool behind = sum.last > sum.lastSetter || sum.places > 1 || around.fixedCost || sum.cancelled;
    // Only more digits than now tell: fewer would call an average that was lost to zero a rounding.
    bool otherDigits = false;
    for (int digits = books.digits.money + 1; digits < 7; ++digits)
      otherDigits = otherDigits || sameAmount(average, std::fabs(roundEps(sum.worth / sum.book, digits)));
    const Kind kind = plausible && behind ? Kind::GoodsAverageBehind
                      : otherDigits       ? Kind::RunningOtherDigits
                                          : Kind::GoodsAverage;
    books.findings.add(kind, place(average, due));
  });
  std::vector<char> knownPlaces(static_cast<std::size_t>(books.warehouses.size()));
  for (const Row row : books.select("select ck_sn from jxc_ckxx")) {
    const int index = books.warehouses.find(row.text("ck_sn").toStdString());
    if (index >= 0) knownPlaces[static_cast<std::size_t>(index)] = 1;
  }
  for (const int at : books.pairsInOrder) {
    const Pair& pair = books.pairs[static_cast<std::size_t>(at)];
    if (pair.rows.empty() && pair.balance.id == 0) continue;
    const auto place = [&] { return Place{books.nameOf(pair), u"没有资料"_qs, {}}; };
    if (!known[static_cast<std::size_t>(pair.goods)] && books.goods.text(pair.goods) != "00000000")
      books.findings.add(Kind::GoodsGone, place);
    if (!knownPlaces[static_cast<std::size_t>(pair.warehouse)]) books.findings.add(Kind::WarehouseGone, place);
  }
}

bool isTradingRow(const LedgerRow& row) {
  if (!row.flag) return false;
  const std::string_view flag = row.flag->flag;
  return flag == "cj" || flag == "ct" || flag == "xs" || flag == "xt";
}

/// Whether something was cancelled on the day of this row or later; or behind its audit in the log, where the clock of
/// the station that audited goes before that of the one that cancelled.
bool cancelledSince(Books& books, const LedgerRow& row) {
  const auto any = [&books](const std::string& condition, const Value& from) {
    const std::string asked = "select top 1 id from jxc_log where log_note like '取消审核%' and " + condition;
    return !books.select(asked, from).isEmpty();
  };
  const RowSet posted = books.select("select gl_chkrq,gl_djh from jxc_goodslist where id=?", row.id);
  if (any("log_time>=?", posted.value(0, 0))) return true;
  const RowSet told =
      books.select("select max(id) from jxc_log where log_note like ?", u'%' + posted.text(0, 1) + u'%');
  return !told.isNull(0, 0) && any("id>?", told.value(0, 0));
}

}  // namespace prove_balances_detail

void proveBalances(Books& books) {
  using namespace prove_balances_detail;
  books.step(80, u"核对当前库存"_qs);
  Around around = lookAround(books);
  const GoodsSums sums = sumGoods(books, around);
  for (const int index : books.pairsInOrder)
    if (books.goods.text(books.pairs[static_cast<std::size_t>(index)].goods) != "00000000")
      provePair(books, around, sums, index);
  books.step(84, u"核对商品资料"_qs);
  proveGoods(books, around, sums);
}

void proveMonths(Books& books) {
  using prove_balances_detail::isTradingRow;
  books.step(88, u"核对本月结存"_qs);
  const RowSet twice =
      books.select("select js_rq,ck_sn,count(*) as num from jxc_kcjs group by js_rq,ck_sn having count(*)>1");
  for (const Row row : twice)
    books.findings.add(Kind::MonthTwice, [&] {
      return Place{u"月份 "_qs + row.text("js_rq") + u" 仓库 "_qs + row.text("ck_sn"), row.text("num"), u"1"_qs};
    });
  const QString month = books.select("select max(js_rq) as rq from jxc_kcjs").front().text("rq");
  if (month.isEmpty()) return;

  struct Warehouse {
    double stock = 0, value = 0;
    const LedgerRow* last = nullptr;
    const LedgerRow* refreshed = nullptr;  // the last one that wrote the whole stock into the row of this month
    std::int64_t lastOther = 0;            // id of the last row of another month
    bool strayed() const { return lastOther > (refreshed ? refreshed->id : 0); }
  };
  std::unordered_map<int, Warehouse> sums;
  const std::string thisMonth = month.toStdString();
  const std::vector<char> isNow = books.whichDates([&](const std::string& day) { return day.starts_with(thisMonth); });
  for (const Pair& pair : books.pairs) {
    Warehouse& at = sums[pair.warehouse];
    at.stock += pair.balance.shelf;
    at.value += pair.balance.shelf * pair.balance.cost;
    const auto later = [](const LedgerRow& row, const LedgerRow* than) { return !than || row.id > than->id; };
    for (const LedgerRow& row : pair.rows) {
      if (later(row, at.last)) at.last = &row;
      if (!isNow[static_cast<std::size_t>(row.date)])
        at.lastOther = std::max(at.lastOther, row.id);
      else if (isTradingRow(row) && later(row, at.refreshed))
        at.refreshed = &row;
    }
  }

  const bool costChangedByHand =
      std::ranges::any_of(std::array{Kind::RunningByPrice, Kind::RunningAverageSet, Kind::RunningOtherDigits},
                          [&](Kind kind) { return books.findings.has(kind); });
  for (const Row row : books.select("select ck_sn,js_sl,js_zje from jxc_kcjs where js_rq=? order by ck_sn,id", month)) {
    const auto found = sums.find(books.warehouses.find(row.text("ck_sn").toStdString()));
    const Warehouse due = found == sums.end() ? Warehouse{} : found->second;
    const auto close = [](double a, double b) { return std::fabs(a - b) < 1e-4 + 1e-9 * std::fabs(a); };
    const bool sameStock = close(row.number("js_sl"), due.stock);
    if (sameStock && close(row.number("js_zje"), due.value)) continue;
    // Only a purchase or a sale of this very month writes the whole stock into its row.
    // Other documents of the month add their quantity to it, so that the stock still agrees, if not its value.
    bool exact = false;
    if (sameStock && costChangedByHand) {
      // Recomputations and changes of the average leave month rows to the next document.
    } else if (due.refreshed) {
      exact = due.refreshed == due.last || (!sameStock && !due.strayed());
    }
    // A cancel leaves no row behind, but a line in the log; the one of another month refreshes another row.
    exact = exact && !prove_balances_detail::cancelledSince(books, *due.refreshed);
    books.findings.add(exact ? Kind::Month : Kind::MonthBehind, [&] {
      return Place{u"月份 "_qs + month + u" 仓库 "_qs + row.text("ck_sn"),
                   u"数量 "_qs + row.text("js_sl") + u" 金额 "_qs + row.text("js_zje"),
                   u"数量 "_qs + numberText(due.stock) + u" 金额 "_qs + numberText(due.value)};
    });
  }
}

}  // namespace jxc::proof
