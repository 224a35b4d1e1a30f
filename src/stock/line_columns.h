// 单据行字段: where a table of document lines keeps what a line is.
#pragma once

#include "core/joined_text.h"

#include <span>
#include <string_view>

namespace jxc {

/// Where a table of lines keeps its figures. Empty names are columns the table does not have.
struct LineColumns {
  std::string_view table;
  std::string_view price, quantity, net, tax, taxedPrice, taxAmount, total, discount;
  std::string_view moved;             // quantity put away or issued, follows the quantity …
  bool (*movedLater)() = nullptr;     // … unless this is true: then goods move by a document of their own
  std::string_view cost, costAmount;  // unit cost and line cost, follows the quantity
  std::string_view lent;              // second copy of the quantity
};

/// The eight figures of a table of trading lines, whose columns all begin alike: jh_dj, jh_sl, jh_je, jh_tax,
/// jh_taxdj, jh_taxje, jh_zje, jh_dzl.
template <FixedText Table, FixedText Prefix>
constexpr LineColumns tradingColumns() {
  return {.table = Table.letters,
          .price = joined<Prefix, "dj">,
          .quantity = joined<Prefix, "sl">,
          .net = joined<Prefix, "je">,
          .tax = joined<Prefix, "tax">,
          .taxedPrice = joined<Prefix, "taxdj">,
          .taxAmount = joined<Prefix, "taxje">,
          .total = joined<Prefix, "zje">,
          .discount = joined<Prefix, "dzl">};
}

/// A table of lines beyond its figures. Empty names are columns that it does not have.
struct LineTable {
  const LineColumns* columns;
  std::string_view note;
  int noteWidth = 64;                                    // characters
  std::string_view retail, shownCost, entryTotal, gift;  // of the sales side
  std::span<const std::string_view> zeros;               // 0 on a new line
  std::string_view closed;                               // quantity that will never be put away or issued
  std::string_view link;                                 // the line's own id, written at audit
  std::string_view warehouse;                            // of the line itself, where lines have their own
  std::string_view countedShelf, countedBook;            // stock that a count found written
  std::string_view source, sourceLine;                   // number and `link` of the line that this one moves a part of
  std::string_view expires = "t_yxq";                    // date of expiry
  std::string_view moves;                   // what the line moves, as an expression, where that is not its quantity
  std::string_view rent, deposit, account;  // of goods on loan: yuan a piece and day, yuan of the line, who took them
  std::string_view kind, kindText;          // a word that the lines of this family have, where tables are shared
};
extern const LineTable stagingLineTable;

}  // namespace jxc
