// 流水结存核对: each row of the stock ledger must follow from the row before it.
#include "core/text.h"
#include "engine/number_text.h"
#include "maintenance/proof_books.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace jxc::proof {
namespace prove_stock_detail {

/// What a cancel left in the running figures: a goods stood several times on the document, each replay left out its
/// own row only, so all but the last stayed in.
struct Leftover {
  int document;
  double quantity;
};
using Leftovers = std::unordered_map<int, std::vector<Leftover>>;  // by pair

/// +1 where a line of the family brings goods into its warehouse.
int direction(const DocumentFamily& family) {
  return family.comesIn ? 1 : -1;
}

Leftovers leftoversOf(const Books& books) {
  struct Sum {
    double all = 0, last = 0;
    int count = 0;
  };
  std::unordered_map<std::int64_t, Sum> sums;  // document and pair
  const auto note = [&](int document, int goods, int warehouse, double quantity) {
    const int pair = books.findPair(goods, warehouse);
    if (pair < 0) return;
    Sum& sum = sums[static_cast<std::int64_t>(document) << 32 | pair];
    sum.all += quantity;
    sum.last = quantity;
    ++sum.count;
  };
  int headDone = -1;
  for (const WaitingLine& line : books.waiting) {
    if (!line.cancelled) continue;
    const Document& document = books.documents[static_cast<std::size_t>(line.document)];
    if (document.goods >= 0 && headDone != line.document) {
      note(line.document, document.goods, document.warehouse, -direction(*document.family) * document.headQuantity);
      headDone = line.document;
    }
    const int warehouse = line.warehouse >= 0 ? line.warehouse : document.warehouse;
    note(line.document, line.goods, warehouse, direction(*document.family) * line.quantity);
    if (document.warehouseIn >= 0) note(line.document, line.goods, document.warehouseIn, line.quantity);
  }
  Leftovers leftovers;
  for (const auto& [key, sum] : sums)
    if (sum.count > 1)
      leftovers[static_cast<int>(key & 0xffffffff)].push_back({static_cast<int>(key >> 32), sum.all - sum.last});
  return leftovers;
}

bool follows(const LedgerRow& row, const RunningStock& before, const RunningStock& after) {
  return sameFigure(row.stockBefore, before.quantity) && sameFigure(row.valueBefore, before.value) &&
         sameFigure(row.average, after.average) && sameFigure(row.stock, after.quantity) &&
         sameFigure(row.value, after.value);
}

RunningStock storedIn(const LedgerRow& row) {
  return {row.stock, row.average, row.value};
}

/// One goods in one warehouse.
class Walk {
 public:
  Walk(Books& books, const Leftovers& leftovers) : books_(books), leftovers_(leftovers) {}
  void run(int pairIndex);

 private:
  void judge(const LedgerRow& row, const RunningStock& before, const RunningStock& due);
  bool followsWithout(const LedgerRow& row, RunningStock before) const;
  bool byPrice(const LedgerRow& row, const RunningStock& before) const;
  bool withOtherDigits(const LedgerRow& row, const RunningStock& before, const RunningStock& due);
  bool leftByCancel(const LedgerRow& row, const RunningStock& before) const;
  bool averageWasSet(const LedgerRow& row, const RunningStock& before, const RunningStock& due) const;
  bool costWasFilled(const LedgerRow& row, const RunningStock& before) const;
  Place placeOf(const LedgerRow& row, const RunningStock& before, const RunningStock& due) const;

  Books& books_;
  const Leftovers& leftovers_;
  const Pair* pair_ = nullptr;
  int pairIndex_ = 0;
  bool isLast_ = false;
  std::vector<StockDigits> otherDigits_;  // that have explained a row already
  int unexplained_ = 0;
};

void Walk::run(int pairIndex) {
  pairIndex_ = pairIndex;
  pair_ = &books_.pairs[static_cast<std::size_t>(pairIndex)];
  RunningStock before;
  RunningStock beforeOpenings;  // and the opening rows just above, which may have been entered later than this row
  std::int64_t lastOpening = 0;
  for (std::size_t i = 0; i < pair_->rows.size(); ++i) {
    const LedgerRow& row = pair_->rows[i];
    isLast_ = i + 1 == pair_->rows.size();
    // What the goods cost before its first movement is history; the first row tells, unless it sets another cost.
    if (i == 0) before.average = row.average;
    RunningStock due = before;
    due.advance(row.movement(), books_.digits);
    // A closing turns the last row of a period into an opening row that holds its stock before and after alike.
    const bool carried = row.isOpening() && row.number < 0 && sameFigure(row.stockBefore, row.stock) &&
                         sameFigure(row.quantity, row.stock) && i == 0;
    if (!carried && !follows(row, before, due)) {
      if (lastOpening > row.id && followsWithout(row, beforeOpenings))
        books_.findings.add(Kind::RunningLateOpening, [&] { return placeOf(row, before, due); });
      else
        judge(row, before, due);
    }
    if (row.isOpening() && row.number < 0) {
      if (lastOpening == 0) beforeOpenings = before;
      lastOpening = std::max(lastOpening, row.id);
    } else {
      lastOpening = 0;
    }
    before = storedIn(row);
  }
}

void Walk::judge(const LedgerRow& row, const RunningStock& before, const RunningStock& due) {
  const Kind kind = byPrice(row, before)                ? Kind::RunningByPrice
                    : leftByCancel(row, before)         ? Kind::RunningCancelledTwice
                    : withOtherDigits(row, before, due) ? Kind::RunningOtherDigits
                    : averageWasSet(row, before, due)   ? Kind::RunningAverageSet
                    : costWasFilled(row, before)        ? Kind::RunningCostFilled
                                                        : Kind::Running;
  books_.findings.add(kind, [&] { return placeOf(row, before, due); });
}

/// The row as it was posted while the opening rows above it were not there yet.
bool Walk::followsWithout(const LedgerRow& row, RunningStock before) const {
  if (!row.movesAverage()) before.average = row.average;
  RunningStock after = before;
  after.advance(row.movement(), books_.digits);
  return follows(row, before, after);
}

/// The whole recomputation takes the price of a line, not its amount, and leaves quantities unrounded.
bool Walk::byPrice(const LedgerRow& row, const RunningStock& before) const {
  StockDigits digits = books_.digits;
  digits.roundQuantity = false;
  StockMovement movement = row.movement();
  movement.net = row.quantity * row.price;
  RunningStock after = before;
  after.advance(movement, digits);
  return follows(row, before, after);
}

bool Walk::leftByCancel(const LedgerRow& row, const RunningStock& before) const {
  const auto found = leftovers_.find(pairIndex_);
  if (found == leftovers_.end()) return false;
  const double jump = row.stockBefore - before.quantity;
  for (const Leftover& each : found->second) {
    if (!sameAmount(jump, each.quantity)) continue;
    RunningStock stored{row.stockBefore, row.movesAverage() ? before.average : row.average, row.valueBefore};
    stored.advance(row.movement(), books_.digits);
    if (sameFigure(stored.quantity, row.stock) && sameFigure(stored.average, row.average) &&
        sameFigure(stored.value, row.value))
      return true;
  }
  return false;
}

/// The operator may set the average of today: the last row and the balance take it.
bool Walk::averageWasSet(const LedgerRow& row, const RunningStock& before, const RunningStock& due) const {
  return isLast_ && sameFigure(row.stockBefore, before.quantity) && sameFigure(row.valueBefore, before.value) &&
         sameFigure(row.stock, due.quantity) && sameAmount(row.value, row.stock * row.average) &&
         sameFigure(pair_->balance.cost, row.average);
}

/// The synchronisation of costs fills an average of zero with the cost of the row: the price, but for sales.
bool Walk::costWasFilled(const LedgerRow& row, const RunningStock& before) const {
  const bool sale = row.flag && (row.flag->flag == "xs" || row.flag->flag == "xt");
  return (sale || sameFigure(row.average, row.price)) && before.average == 0 && !row.movesAverage() &&
         sameFigure(row.stockBefore, before.quantity) && sameAmount(row.value, row.stock * row.average);
}

/// Postings keep the digits of their day.
bool Walk::withOtherDigits(const LedgerRow& row, const RunningStock& before, const RunningStock& due) {
  // Fewer digits would call a figure that was lost to zero a rounding.
  const auto isLost = [](double stored, double figure) { return stored == 0 && figure != 0; };
  if (isLost(row.average, due.average) || isLost(row.stock, due.quantity) || isLost(row.value, due.value)) return false;
  const auto explains = [&](const StockDigits& digits) {
    RunningStock after = before;
    after.advance(row.movement(), digits);
    return follows(row, before, after);
  };
  if (std::ranges::any_of(otherDigits_, explains)) return true;
  constexpr int enough = 200;  // books that are wrong all over need not be tried with every parameter
  if (unexplained_ > enough) return false;
  for (int money = 0; money <= 6; ++money)
    for (int quantity = 0; quantity <= 6; ++quantity)
      for (int total = 0; total <= 6; ++total) {
        const StockDigits digits{quantity, money, total, true};
        if (!explains(digits)) continue;
        otherDigits_.push_back(digits);
        return true;
      }
  ++unexplained_;
  return false;
}

Place Walk::placeOf(const LedgerRow& row, const RunningStock& before, const RunningStock& due) const {
  const auto figures = [](double stockBefore, double average, double stock, double value) {
    return u"原结存 "_qs + numberText(stockBefore) + u" 均价 "_qs + numberText(average) + u" 结存 "_qs +
           numberText(stock) + u" 金额 "_qs + numberText(value);
  };
  const QString number = row.number < 0 ? QString() : u" 单据 "_qs + books_.numbers.shown(row.number);
  return {books_.nameOf(*pair_) + number + u" 日期 "_qs + QString::fromStdString(books_.dateOf(row)) + u" 流水 "_qs +
              QString::number(row.id),
          figures(row.stockBefore, row.average, row.stock, row.value),
          figures(before.quantity, due.average, due.quantity, due.value)};
}

}  // namespace prove_stock_detail

void proveStock(Books& books) {
  books.step(66, u"逐笔推算库存流水"_qs);
  const prove_stock_detail::Leftovers leftovers = prove_stock_detail::leftoversOf(books);
  prove_stock_detail::Walk walk(books, leftovers);
  int done = 0;
  for (const int pair : books.pairsInOrder) {
    walk.run(pair);
    if (++done % 1000 == 0)
      books.step(66 + static_cast<int>(std::int64_t{14} * done / static_cast<int>(books.pairs.size())),
                 u"逐笔推算库存流水"_qs);
  }
}

}  // namespace jxc::proof
