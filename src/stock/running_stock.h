// 结存推算: what one ledger row does to the running quantity, average and value of a goods in a warehouse.
#pragma once

#include "core/posting.h"
#include "core/rounding.h"
#include "engine/row_set.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc {

struct LedgerFlag;

struct StockDigits {
  int quantity = quantityDigits();
  int money = moneyDigits();
  int total = totalDigits();
  bool roundQuantity = true;  // the whole recomputation leaves quantities as they are
};

/// What a ledger row brings: `gl_sl`, `gl_je` before tax, `gl_dj`. An unknown flag is null and moves nothing.
struct StockMovement {
  const LedgerFlag* flag;
  double quantity;
  double net;
  double price;
};

/// The figures that run along the ledger of one goods in one warehouse: pieces, yuan a piece, yuan.
struct RunningStock {
  double quantity = 0;
  double average = 0;
  double value = 0;

  void advance(const StockMovement& row, const StockDigits& digits);
};

/// Columns of the rows that `carryStock` walks, in this order and named as in the ledger but for the amount that feeds
/// the average, which the caller chooses.
enum class StockColumn { Id, Flag, Quantity, Net, Price, StockBefore, ValueBefore, Average, Stock, StockValue };
/// Carries figures through ledger rows in their order, leaving row `skippedId` out, and returns the last ones. Only
/// rows whose stored figures differ are written.
RunningStock carryStock(RunningStock running, const RowSet& rows, std::int64_t skippedId, const StockDigits& digits);

/// The figures after the last row before `date`; without one no stock at the goods' average. Asked in three steps, so
/// that many of them travel together: all are made, then all are asked what is missing, then taken.
class StockBefore {
 public:
  StockBefore(const QString& goods, const QString& warehouse, const QString& date);
  void askMissing();
  RunningStock take();

 private:
  QString goods_;
  Ahead last_;
  std::optional<Ahead> average_;
};

}  // namespace jxc
