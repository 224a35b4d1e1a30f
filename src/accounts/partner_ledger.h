// 应收应付与发票流水: the running balances of customers and suppliers: what is owed, and what is still to invoice.
#pragma once

#include "accounts/running_balance.h"

#include <QString>

#include <cstdint>

namespace jxc {

/// A partner's side: as `k_type` and `fp_type` it is the text "kh" or "ghs".
enum class PartnerType : char { Customer, Supplier };
QString partnerTypeText(PartnerType type);

/// Date beyond all lines: asks for the present balance.
inline const QString allDates = QStringLiteral("9999-12-31");

/// Rewrites `k_ljje` of a partner from `date` on, in order of date and entry, and writes the last balance to the
/// partner (`kh_lwje`, `ghs_lwje`). A customer's balance is positive when he owes the shop, a supplier's when the shop
/// owes him. Full precision, nothing is rounded here; lines that already agree are not written.
void recomputeYsyfk(const QString& partner, PartnerType type, const QString& date);
/// The same in its two steps.
AskedBalance askYsyfk(const QString& partner, PartnerType type, const QString& date);

/// Balance up to and including `date`; with `beforeId`, of the lines entered before that one only (the balance just
/// before a given line). 0 without a line.
double ysyfkBalanceAt(const QString& partner, PartnerType type, const QString& date, std::int64_t beforeId = 0);

/// Present balance rounded to the digits of totals, as entry forms show it.
double ysyfkBalanceNow(const QString& partner, PartnerType type);

/// Removes the rounding of a payment (what was let off beyond it): its line, and the line of the stock ledger that
/// carries it into the profit. The caller recomputes the balance.
void removeRounding(const QString& payment);

/// The same ledger for invoices: `fp_ljje` over counted lines (`fp_check`), due minus invoiced.
void recomputeFp(const QString& partner, PartnerType type, const QString& date);
AskedBalance askFp(const QString& partner, PartnerType type, const QString& date);
double fpBalanceAt(const QString& partner, PartnerType type, const QString& date, std::int64_t beforeId = 0);

}  // namespace jxc
