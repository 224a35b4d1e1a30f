// 内部单据规则: transfer, stocktake, loss, overflow, split, bundle, loan and loan return as values of one posting and
// one cancel routine.
#pragma once

#include "core/posting.h"
#include "stock/document_family.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::internal_documents {

/// What a row does to the goods master.
enum class Master : char { None, Stock, StockAndCost };

struct Head;

struct Rules {
  const DocumentFamily* family;
  std::u16string_view auditLog;  // + number + "，共" + n + auditLogEnd; empty: audit writes no log
  std::u16string_view auditLogEnd;
  int rowsALine;                     // ledger rows that a line of goods makes
  int rowsOfHead = 0;                // the head of a split or bundle is a line of its own
  std::string_view only = {};        // condition of the lines that make rows; empty: all
  std::vector<std::string> inserts;  // ledger rows; values: auditor, today, number
  const char* markLines;             // before the ledger is written; null: nothing
  bool outwards = false;             // stock falls by a positive quantity
  Master master;
  bool takesUnknown = false;           // goods that the warehouse does not know begin at what they cost there
  std::u16string_view differenceWord;  // "报损单" … in the note of the difference; empty: none is booked
  std::u16string_view differenceType;  // "费用" or "收入"; empty: by sign
  double leastDifference = 5e-7;       // in yuan; below it there is none
  bool replayFirst;                    // cancel replays before stock goes back
  bool bindsChecker;                   // cancel asks who audited it
  bool bringsIn = false;               // cancel takes goods away again, and asks whether they are still there
  bool averageAtCancel = false;        // what was bought behind it took its pieces into the average of the goods

  // What a kind does beyond stock; null where it does nothing.
  void (*rowPosted)(const Row& row) = nullptr;
  void (*posted)(const Head& head, std::int64_t rows) = nullptr;
  void (*rowCancelled)(const Row& row) = nullptr;
  void (*cancelled)(const QString& number) = nullptr;  // before its lines go
  /// Why it cannot be cancelled: asked before, and again inside its transaction.
  std::optional<QString> (*heldBy)(const QString& number) = nullptr;
  /// What its cancel does besides, for the question; empty: nothing.
  QString (*cancelsAlso)(const QString& number) = nullptr;
  bool cancelDeletes = false;  // there is no waiting state to go back to
};

const Rules& rulesOf(const DocumentFamily& family);

/// The head, as audit and cancel need it.
struct Head {
  QString number, date, salesperson, checker;
  int status = 0;
  QString month() const { return date.left(7); }
};
Ahead askHead(const DocumentFamily& family, const QString& number);
/// Of what was asked; false: there is none.
bool readHead(const DocumentFamily& family, const RowSet& asked, Head& head);

/// The rows of a document in the stock ledger, in their order.
Ahead askLedger(const QString& number);

/// Values of customer loan and loan return, which stand in a file of their own.
Rules loanRules();
Rules loanReturnRules();

/// Adds to a month's figures of a warehouse.
void addToMonth(const QString& warehouse, const QString& month, double quantity, double value);

}  // namespace jxc::internal_documents
