// 库存查询: what stands in the warehouses now, as the current-stock panel lists it.
#pragma once

#include "core/sql.h"

#include <QString>

#include <optional>

namespace jxc {

/// "current stock >= 10": one of the six comparisons with a quantity.
struct StockComparison {
  QString sign;  // "=", ">=", "<=", "<>", ">", "<"
  double quantity = 0;
};

struct StockFilter {
  QString warehouse;    // ck_sn; "-1" or empty: all that the operator may see
  QString classNumber;  // gc_sn: this class and all below; empty: all
  QString key;          // number, mnemonic, name, origin, model, barcode, colour
  QString supplier;     // ghs_sn; empty: all
  std::optional<StockComparison> comparison;
  bool hideZero = false;
  bool withDisabled = false;
};

/// Rows of `jxc_goods` with class name, stock `kcsl`, book stock `kczsl`, sold so far `xssl`, cost `cbjj` (of the
/// warehouse; over all of them weighted by book stock), stock in the second unit `fzkc`, value at cost `kczje` and at
/// the preset sale price `xszje`. Ordered by goods number. Throws std::invalid_argument for an unknown comparison.
Sql currentStockStatement(const StockFilter& filter);

}  // namespace jxc
