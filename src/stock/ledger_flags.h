// 库存流水标志: the vocabulary of stock movements: caption, direction, and what each does to the average cost.
#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

namespace jxc {

/// In-group rows change the running quantity by adding `gl_sl`, out-group rows by subtracting it.
enum class MovementGroup : char { In, Out };

/// Whether a row moves the moving-average cost.
enum class MovesAverage : char { No, Always, Inflow /* only when gl_sl > 0 */ };

struct LedgerFlag {
  std::string_view flag;               // ASCII, as `gl_flag` stores it
  std::u16string_view caption;         // what statistics print for the row
  std::u16string_view reverseCaption;  // the same for a negative quantity; empty when it makes no difference
  MovementGroup group;
  MovesAverage moves;
  bool anchor;    // a replay that starts at such a row sets the warehouse's cost price at its end
  bool reserved;  // no writer in this program, yet account sets may hold such rows from data exchange
};

/// Of a row of `jxc_goodslist`. Null for an unknown flag: such a row moves nothing.
const LedgerFlag* findLedgerFlag(std::string_view flag);
const LedgerFlag* findLedgerFlag(QStringView flag);
/// Caption of a row with this flag and quantity; empty for an unknown flag.
QString ledgerCaption(QStringView flag, double quantity);

}  // namespace jxc
