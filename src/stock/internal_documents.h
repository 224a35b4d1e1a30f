// 内部单据规则: transfer, stocktake, loss, overflow, split and bundle as values of one posting and one cancel routine.
#pragma once

#include "stock/document_family.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace jxc::internal_documents {

/// What a row does to the goods master.
enum class Master : char { None, Stock, StockAndCost };

struct Rules {
  const DocumentFamily* family;
  std::u16string_view auditLog;  // + number + "，共" + n + auditLogEnd
  std::u16string_view auditLogEnd;
  int rowsALine;                     // ledger rows that a line of goods makes
  std::vector<std::string> inserts;  // ledger rows; values: auditor, today, number
  const char* markLines;             // before the ledger is written; null: nothing
  Master master;
  bool overwrites;                     // a count sets the stock, it does not add to it
  std::u16string_view differenceWord;  // "报损单" … in the note of the difference; empty: none is booked
  std::u16string_view differenceType;  // "费用" or "收入"; empty: by sign
  bool replayFirst;                    // cancel replays before stock goes back
  bool bindsChecker;                   // cancel asks who audited it
  std::string_view shortWarehouse;     // cancel tests stock of this warehouse of the head; empty: it does not
};

const Rules& rulesOf(const DocumentFamily& family);

/// The head, as audit and cancel need it.
struct Head {
  QString number, date, salesperson, checker;
  int status = 0;
  QString month() const { return date.left(7); }
};
bool readHead(const DocumentFamily& family, const QString& number, Head& head);

/// Adds to a month's figures of a warehouse.
void addToMonth(const QString& warehouse, const QString& month, double quantity, double value);

}  // namespace jxc::internal_documents
