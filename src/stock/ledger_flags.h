// 库存流水标志: the vocabulary of stock movements: caption, direction, and what each does to the average cost.
#pragma once

#include <QString>
#include <QStringView>

#include <string>
#include <string_view>

namespace jxc {

/// In-group rows change the running quantity by adding `gl_sl`, out-group rows by subtracting it.
enum class MovementGroup : char { In, Out };

/// Whether a row moves the moving-average cost.
enum class MovesAverage : char { No, Always, Inflow /* only when gl_sl > 0 */ };

/// Account sets may hold rows that no writer of this program makes: they came by data exchange.
enum class LedgerWriter : char { Here, Exchange };

struct LedgerFlag {
  std::string_view flag;               // ASCII, as `gl_flag` stores it
  std::u16string_view caption;         // what statistics print for the row
  std::u16string_view reverseCaption;  // the same for a negative quantity; empty when it makes no difference
  MovementGroup group;
  MovesAverage moves;
  LedgerWriter writer = LedgerWriter::Here;

  /// Whether a row of `gl_sl` pieces moves the average.
  bool movesAverage(double quantity) const {
    return moves == MovesAverage::Always || (moves == MovesAverage::Inflow && quantity > 0);
  }
  /// A replay that starts at such a row sets the warehouse's cost price at its end, whatever its sign.
  bool setsCost() const { return moves != MovesAverage::No; }
};

/// Of a row of `jxc_goodslist`. Null for an unknown flag: such a row moves nothing.
const LedgerFlag* findLedgerFlag(std::string_view flag);
const LedgerFlag* findLedgerFlag(QStringView flag);
/// Condition "(gl_flag='bs' or …)": rows that never move the average, so that their own cost goes after it.
const std::string& rowsBehindAverage();
/// Caption of a row with this flag and quantity; empty for an unknown flag.
QString ledgerCaption(QStringView flag, double quantity);

}  // namespace jxc
