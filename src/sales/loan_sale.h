// 借转销售: the customer keeps what was lent: a return and a sale at one stroke. Stock rises by what is open and falls
// again at the price of the sale.
#pragma once

#include "core/prompt.h"
#include "stock/trading_document.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc::loan_sale {

/// A sale of all that is open of a loan line. Customer and warehouse are those of the loan; `payable` follows price and
/// quantity, `paid` is typed. Amounts in yuan.
struct Conversion : TradingDraft {
  std::int64_t line = 0;
  QString loan, loanDate, goods;
  double quantity = 0;
  double price = 0, retail = 0;  // a piece
  double rent = 0;               // a piece and day
  int days = 1;
  double held = 0;       // of the deposit
  double rentTaken = 0;  // from the deposit; never more than is held
  double refund = 0;     // what goes back of the deposit: the loan ends here

  /// What is due follows the price, and so does the paid amount.
  void setPrice(double yuan);
  /// Days are counted anew.
  void setDate(const QString& date);
  /// The rent for all days, as far as the deposit covers it, or none; the refund follows.
  void takeRent(bool taken);
  void setRentTaken(double yuan);
};

/// Nothing: refused.
std::optional<Conversion> open(std::int64_t line, Prompt& prompt);

/// Numbers of what was made.
struct Converted {
  QString back, sale;
};
/// Asks, and saves both, audited, in one transaction. Nothing: refused, or the operator said no.
std::optional<Converted> save(const Conversion& conversion, Prompt& prompt);

}  // namespace jxc::loan_sale
