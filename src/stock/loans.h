// 借货: what is known of goods on loan: how much of a line is still out, what is held of its deposit, and which sale a
// loan became.
#pragma once

#include "core/reading.h"

#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace jxc::loans {

/// Yuan that are left of the deposit of a loan line, called so in the statement: less the rent that was used of it and
/// what its returns have paid back. Below zero where the rent was higher: then nothing is held.
std::string depositLeft(std::string_view line);

/// A line of an audited loan.
struct LoanLine {
  std::int64_t id = 0;
  QString loan, date;  // number, yyyy-MM-dd
  QString goods, partner, warehouse, salesperson, account;
  double lent = 0, back = 0, sold = 0;           // pieces
  double cost = 0, rent = 0;                     // yuan a piece; yuan a piece and day
  double deposit = 0, rentUsed = 0, refund = 0;  // yuan; refund: paid back so far

  double open() const;                  // pieces
  double held() const;                  // yuan of the deposit, at least 0
  int daysUntil(const QString&) const;  // days charged until this date, the first and the last counted; at least 1
};
/// Nothing: there is no such line, or its loan is not audited.
std::optional<LoanLine> loanLine(std::int64_t id);
/// All lines of an audited loan by their id, in one question.
std::map<std::int64_t, LoanLine> linesOf(const QString& loan);

/// Why a loan cannot be cancelled: something came back of it.
std::optional<QString> returnedBy(const QString& loan);
/// Why the return of what a customer kept cannot be cancelled: its sale is audited.
std::optional<QString> soldBy(const QString& back);
/// Why a waiting sale cannot be deleted: it is what a customer kept of a loan, and its return stands.
std::optional<QString> saleStays(const QString& sale);
/// Why the pieces of a sale's line cannot be changed: they are what a customer kept of a loan.
std::optional<QString> piecesStay(std::int64_t saleLine);
/// The sale that was made with this return, and the return that was made with this sale; empty: none.
QString saleOf(const QString& back);
QString conversionOf(const QString& sale);

}  // namespace jxc::loans
