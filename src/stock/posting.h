// 单据过账: what audit of a document writes: cash, partner, invoice, expense and stock ledgers.
#pragma once

#include <QString>

namespace jxc {

struct DocumentFamily;

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

/// What the head of a document books, in yuan.
struct Balanced {
  double due = 0, paid = 0;
};

/// Whether nothing is left to settle: whoever types what the screen shows of a due amount has paid it. Half of the last
/// digit shown is no difference, but never more than half a fen. Decimals are compared, not doubles.
bool paysDue(double paid, double due);

/// What becomes of a difference between paid and payable (yuan), by parameter.
enum class Difference : char {
  None,
  BalancingLine,  // 优惠商品: a line of goods "00000000" takes it
  Spread,         // 平摊法: the lines take it, until at most 0.4 is left; the paid amount follows
  PaidFollows     // 平摊法, where the lines bear nothing: at most 0.4 too little, or too much
};
Difference differenceOf(double paid, double payable);

/// Settles it on the lines. A balancing line that stands on the document becomes what the two amounts say now, or goes.
/// The caller writes the head.
Balanced balancePurchase(const QString& number, double paid, double payable);
Balanced balanceSale(const QString& number, double paid, double payable);

/// Before a document reaches the ledgers: a balancing line that it has becomes `difference`, or goes. None is made.
void renewBalancingLine(const DocumentFamily& family, const QString& number, double difference);

}  // namespace jxc
