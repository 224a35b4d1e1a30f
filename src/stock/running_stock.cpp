#include "stock/running_stock.h"

#include "core/posting.h"
#include "core/statements.h"
#include "engine/number_text.h"
#include "stock/ledger_flags.h"

#include <cmath>

namespace jxc {
namespace running_stock_detail {

bool agrees(const RowSet& rows, int row, StockColumn column, double figure) {
  const int at = static_cast<int>(column);
  return !rows.isNull(row, at) && std::fabs(rows.number(row, at) - figure) < 5e-7;
}

/// Figures stand in the books with 15 significant digits; below a thousand million the six decimals are within them.
double asWritten(double figure) {
  if (std::fabs(figure) < 1e9) return figure;
  NumberBuffer buffer;
  return parseNumber(formatNumber(figure, buffer)).value_or(figure);
}
RunningStock asWritten(const RunningStock& figures) {
  return {asWritten(figures.quantity), asWritten(figures.average), asWritten(figures.value)};
}

}  // namespace running_stock_detail

void RunningStock::advance(const StockMovement& row, const StockDigits& digits) {
  const LedgerFlag* flag = row.flag;
  // The pool is what the average is taken over: stock and value before the row plus what the row brings. When goods
  // flow against the sign of the stock (an ordinary purchase return), the pool is taken with signs dropped, so that
  // the returned quantity and value are added to it and not taken out. The shop's books have always been kept so.
  double poolQuantity = 0;
  double poolValue = 0;
  if (flag && flag->group == MovementGroup::In) {
    const bool against = (row.quantity > 0 && quantity < 0) || (row.quantity < 0 && quantity > 0);
    const auto part = [against](double figure) { return against ? std::fabs(figure) : figure; };
    poolQuantity = part(quantity) + part(row.quantity);
    poolValue = part(value) + part(row.net);
    quantity += row.quantity;
  } else if (flag) {
    quantity -= row.quantity;
  }

  const bool moves = flag && flag->movesAverage(row.quantity);
  if (moves && quantity != 0 && poolQuantity != 0) {
    quantity = roundEps(quantity, digits.quantity);
    if (quantity != 0) average = std::fabs(poolValue / poolQuantity);
  }
  // A movement that empties the stock leaves its unit price as the cost; an opening row doesn't.
  if (moves && flag->flag != "qc" && quantity == 0 && poolQuantity != 0) average = row.price;

  average = roundEps(average, digits.money);
  if (digits.roundQuantity) quantity = roundEps(quantity, digits.quantity);
  // The value always follows from average and quantity and is never accumulated.
  value = quantity == 0 ? 0 : roundEps(average * quantity, digits.total);
}

RunningStock carryStock(RunningStock running, const RowSet& rows, std::int64_t skippedId, const StockDigits& digits) {
  using enum StockColumn;
  using running_stock_detail::agrees;
  using running_stock_detail::asWritten;
  const auto number = [&rows](int row, StockColumn column) { return rows.number(row, static_cast<int>(column)); };
  for (int row = 0; row < rows.rowCount(); ++row) {
    const std::int64_t id = rows.integer(row, static_cast<int>(Id));
    if (id == skippedId) continue;
    const RunningStock before = asWritten(running);
    running.advance({.flag = findLedgerFlag(rows.utf8(row, static_cast<int>(Flag))),
                     .quantity = number(row, Quantity),
                     .net = number(row, Net),
                     .price = number(row, Price)},
                    digits);
    const RunningStock after = asWritten(running);
    if (agrees(rows, row, StockBefore, before.quantity) && agrees(rows, row, ValueBefore, before.value) &&
        agrees(rows, row, Average, after.average) && agrees(rows, row, Stock, after.quantity) &&
        agrees(rows, row, StockValue, after.value))
      continue;
    postSql("update jxc_goodslist set gl_sqsl=?,gl_sqje=?,gl_pjjj=?,gl_kc=?,gl_kczje=? where id=?", before.quantity,
            before.value, after.average, after.quantity, after.value, id);
  }
  return asWritten(running);
}

StockBefore::StockBefore(const QString& goods, const QString& warehouse, const QString& date)
    : goods_(goods),
      last_(sendAhead("select top 1 gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq<? "
                      "order by gl_kdrq desc,id desc",
                      goods, warehouse, date)) {}

void StockBefore::askMissing() {
  if (!average_ && last_.rows().isEmpty())
    average_ = sendAhead("select top 1 g_pjjj from jxc_goods where g_sn=?", goods_);
}

RunningStock StockBefore::take() {
  askMissing();
  if (average_) return {0, average_->number(), 0};
  const RowSet& last = last_.rows();
  return {last.number(0, 0), last.number(0, 1), last.number(0, 2)};
}

}  // namespace jxc
