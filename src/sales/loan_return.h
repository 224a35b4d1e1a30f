// 客户还货: goods come back from a loan, as a whole or line by line: the rent is taken from the deposit and booked as
// income, and what the deposit leaves may go back to the customer. A return has no waiting state.
#pragma once

#include "core/prompt.h"
#include "core/reading.h"
#include "stock/document_rules.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc::loan_return {

/// The head of a return in the making. Customer and warehouse are those of the loan.
struct ReturnDraft : DraftOfPartner {
  QString loan, loanDate;  // number of the loan, and its day, yyyy-MM-dd
};

/// What a line brings back. Figures in yuan; `days` and `rent` (a piece and day) make `rentTotal` when the quantity
/// changes.
struct ReturnLine {
  std::int64_t id = 0, loanLine = 0;
  QString goods, account;
  double cost = 0;                   // a piece, as it was lent
  double quantity = 0;               // pieces that come back
  double open = 0;                   // pieces that are out: no more can
  double deposit = 0, rentUsed = 0;  // of the loan line, before this return
  double held = 0;                   // of the deposit, before this return
  double available = 0;              // of it what this return may use: `held`, or less
  double rent = 0, rentTotal = 0, refund = 0;
  int days = 1;

  /// Rent and refund follow the quantity: what the deposit leaves goes back.
  void setQuantity(double pieces);
  /// Rent that the deposit does not cover: collected from the customer.
  double toCollect() const;
  /// Of the deposit what stays held although the last piece is back: no later return pays it.
  double stays() const;
};

/// What is open of a loan (`line` 0) or of one of its lines, as this operator's return of today. Nothing: refused.
std::optional<ReturnDraft> open(const QString& loan, std::int64_t line, Prompt& prompt);
/// Brings open lines of the loan onto the return that it does not have: all of them, or the oldest with this barcode.
/// How many; nothing: refused, as a barcode of nothing that is out.
std::optional<int> addMissing(const ReturnDraft& draft, const QString& barcode, Prompt& prompt);
/// Its lines as its list shows them: id, id2, g_sn and the names of the goods, gl_djh2, jh_hhsl, jh_ts, jh_zj, jh_zzj,
/// jh_yj, jh_thyj, jh_kmmc, bsje (to collect).
Sql lines();
std::optional<ReturnLine> line(std::int64_t id);
/// OK of the line dialog. False: refused.
bool changeLine(const ReturnLine& line, Prompt& prompt);
void removeLine(std::int64_t id);
/// Another day of return: days are counted anew, and rents and refunds follow.
void redate(ReturnDraft& draft, const QString& date);
/// Leaves the return: nothing stays of it.
void discard();

/// What changes hands when the return is saved, in yuan.
struct Money {
  double rent = 0, refund = 0, toCollect = 0;
  double stays = 0;  // held on, of lines of which nothing is out any more
};
Money money();

/// Asks, and saves what was put together as an audited return, in one transaction. Its number; nothing: refused, or the
/// operator said no.
std::optional<QString> save(const ReturnDraft& draft, Prompt& prompt);

}  // namespace jxc::loan_return
