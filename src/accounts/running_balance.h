// 累计余额: rewrites a running balance in one pass; shared by the cash, partner and invoice ledgers.
#pragma once

#include "engine/posting.h"
#include "engine/row_set.h"
#include "engine/sql_text.h"

#include <QString>

namespace jxc {

/// A closing carries a balance on as one row of its day: how that is called in every ledger, and its kind in those of
/// partners and invoices. It is a kind of its own: nothing was bought, sold, paid or invoiced that day.
inline constexpr char16_t carriedWords[] = u"数据结算结转";
inline constexpr char16_t carriedKind[] = u"JZ";

/// Carries `balance` through `rows` in their order and returns the last one. Columns of a row: id, stored balance,
/// amount that raises it …, amount that lowers it (last). `update` takes balance and id; rows that agree are not
/// written.
double carryBalance(double balance, const RowSet& rows, const SqlText& update);

/// A running balance in two steps, so that its questions travel with others: asked when it is made, for lines that
/// stand there already, and written by `carry`.
class AskedBalance {
 public:
  /// The balance before the lines, and the lines as `carryBalance` takes them.
  AskedBalance(Ahead before, Ahead lines, const char* update)
      : before_(std::move(before)), lines_(std::move(lines)), update_(update) {}
  /// Whose balance it is keeps the last one too: a statement that takes it and his number.
  void keepLast(const char* statement, const QString& number) {
    keepLast_ = statement;
    number_ = number;
  }
  void carry() const;

 private:
  Ahead before_, lines_;
  const char* update_;
  const char* keepLast_ = nullptr;
  QString number_;
};

}  // namespace jxc
