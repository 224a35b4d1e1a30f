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

/// What statistics of stock count a row with a positive quantity as; where a negative one has a caption of its own, it
/// is the other side.
enum class Counts : char { Nowhere, In, InSigned /* what is less lowers it */, Out };

/// The amount of a row that statistics show: of goods that were traded the one before tax, and of sales and customers'
/// returns, on demand, their cost.
enum class ShownAmount : char { WithTax, BeforeTax, OfSale };

struct LedgerFlag {
  std::string_view flag;               // ASCII, as `gl_flag` stores it
  std::u16string_view caption;         // what statistics print for the row
  std::u16string_view reverseCaption;  // the same for a negative quantity; empty when it makes no difference
  MovementGroup group;
  MovesAverage moves;
  Counts counts;
  ShownAmount amount = ShownAmount::WithTax;
  LedgerWriter writer = LedgerWriter::Here;

  /// Whether a row of `gl_sl` pieces moves the average.
  bool movesAverage(double quantity) const {
    return moves == MovesAverage::Always || (moves == MovesAverage::Inflow && quantity > 0);
  }
  /// A replay that starts at such a row sets the warehouse's cost price at its end, whatever its sign.
  bool setsCost() const { return moves != MovesAverage::No; }
  /// The caption of a row.
  QStringView captionOf(double quantity) const {
    return quantity < 0 && !reverseCaption.empty() ? reverseCaption : caption;
  }
  /// What a row counts as. Of kinds that have another side, a row without quantity is on neither.
  Counts countsAs(double quantity) const {
    if (reverseCaption.empty() || quantity > 0) return counts;
    if (quantity == 0) return Counts::Nowhere;
    return counts == Counts::Out ? Counts::In : Counts::Out;
  }
};

/// Of a row of `jxc_goodslist`. Null for an unknown flag: such a row moves nothing.
const LedgerFlag* findLedgerFlag(std::string_view flag);
const LedgerFlag* findLedgerFlag(QStringView flag);
/// Condition "(gl_flag='bs' or …)": rows that never move the average, so that their own cost goes after it.
const std::string& rowsBehindAverage();

}  // namespace jxc
