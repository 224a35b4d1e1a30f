#include "accounts/running_balance.h"

#include "core/posting.h"
#include "core/statements.h"

#include <cmath>

namespace jxc {

double carryBalance(double balance, const RowSet& rows, const SqlText& update) {
  enum Column { Id, Stored, FirstAmount };
  const int lowering = rows.columnCount() - 1;
  for (int row = 0; row < rows.rowCount(); ++row) {
    for (int column = FirstAmount; column < lowering; ++column)
      balance += rows.number(row, column);
    balance -= rows.number(row, lowering);
    // Stored figures keep six decimals, the balance is carried with all it has.
    const bool agrees = !rows.isNull(row, Stored) && std::fabs(rows.number(row, Stored) - balance) < 5e-7;
    if (!agrees) postSql(update, balance, rows.integer(row, Id));
  }
  return balance;
}

void AskedBalance::carry() const {
  const double last = carryBalance(before_.number(), lines_.rows(), update_);
  if (keepLast_) postSql(keepLast_, last, number_);
}

}  // namespace jxc
