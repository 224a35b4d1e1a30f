// 单据过账: what audit of a document writes: cash, partner, invoice, expense and stock ledgers.
#pragma once

#include <QString>

namespace jxc {

// Each takes the number of a document whose head has just been audited, inside the caller's transaction.
void postPurchase(const QString& number);
void postPurchaseReturn(const QString& number);
void postSale(const QString& number);
void postSaleReturn(const QString& number);

// Documents within the house: stock ledger, balances and month figures; the difference in value is an expense or an
// income without a cash line.
void postTransfer(const QString& number);
void postStocktake(const QString& number);
void postLoss(const QString& number);
void postOverflow(const QString& number);
void postSplit(const QString& number);
void postBundle(const QString& number);

/// Goods leave on loan: stock and month figures, no money.
void postLoan(const QString& number);
/// Goods come back from a loan, or leave it as sold (lines of `jh_flag` "销售", whose sale is posted by the caller):
/// stock, quantity and used-up deposit of the loan lines that `id2` names, and the rent as income, one row an account.
/// The head is written with status 1: a return has no waiting state.
void postLoanReturn(const QString& number);

/// Settles a paid amount that differs from the payable (both yuan), by parameter: a balancing line of goods "00000000"
/// takes the difference, or it is spread over the lines until at most 0.4 is left, and the paid amount follows.
void balancePurchase(const QString& number, double paid, double payable);
void balanceSale(const QString& number, double paid, double payable);

}  // namespace jxc
