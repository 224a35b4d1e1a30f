// 流水行: a row of the stock ledger as it is posted: its columns, and where each kind of document takes them from.
#pragma once

#include "core/statements.h"
#include "stock/document_family.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace jxc {

/// A column of the ledger and what is written into it, as an expression of the statement.
struct LedgerColumn {
  std::string_view name, expression;
};

/// The other side of a document, whose code stands in its head.
struct LedgerPartner {
  std::string_view table, number, name;
};
inline constexpr LedgerPartner ledgerSuppliers{"jxc_ghsxx", "ghs_sn", "ghs_name"};
inline constexpr LedgerPartner ledgerCustomers{"jxc_khxx", "kh_sn", "kh_name"};

/// Where the ledger rows of a document come from. In expressions `a` is the head, `b` its lines, `c` the goods, `d` the
/// employee, `e` the warehouse, `f` the partner.
struct LedgerSource {
  const DocumentFamily* family;
  const LedgerPartner* partner = nullptr;  // null: a move within the house
  std::string_view goods = "b.g_sn", warehouse = "a.ck_sn";
  bool fromHead = false;                // the head itself is the row, there are no lines
  std::string_view only = {};           // further condition
  std::vector<LedgerColumn> different;  // what is not as usual; flag, quantity, price and amounts always are
};

/// The statement that writes the rows of a document, one a line in the order of lines; its values are auditor, today
/// and number. Columns that the source does not name take what is usual: names of goods, employee, warehouse and
/// partner, no discount, no tax, no profit, and 0 in what the replay works out. Throws std::logic_error when a column
/// does not exist, or is left out without having a usual value.
std::string ledgerInsert(const LedgerSource& source);
/// The same over any rows, for what is no document of goods: `from` is the statement behind its columns. The usual
/// values refer to the tables above, and auditor and today are values.
std::string ledgerInsert(std::initializer_list<LedgerColumn> different, std::string_view from);

/// Appends one row given by its values; the rest is as usual where that does not come from a table. Values in the order
/// of the columns are found fastest.
void postLedgerRow(std::initializer_list<Field> fields);

}  // namespace jxc
