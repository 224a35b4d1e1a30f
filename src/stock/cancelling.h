// 取消审核: takes back what audit wrote and leaves the document waiting.
#pragma once

#include <QString>

namespace jxc {

class Prompt;

/// Single: asks before it cancels. Batch: the caller has asked for the whole list.
enum class CancelMode : char { Single, Batch };

// Each checks right, effects elsewhere, checker and gate, asks, and then works in one transaction. True: cancelled.
bool cancelPurchase(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
bool cancelPurchaseReturn(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
bool cancelSale(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
bool cancelSaleReturn(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
// Documents within the house; no money line goes with them but the difference in value.
bool cancelTransfer(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
bool cancelStocktake(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
bool cancelLoss(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
bool cancelOverflow(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
bool cancelSplit(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
bool cancelBundle(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
// A loan waits again. A loan return has no waiting state: the whole document goes, with the income from its rent, and
// quantity and used-up deposit go back to the lines of the loan.
bool cancelLoan(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);
bool cancelLoanReturn(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);

/// The one of these that the number belongs to. Throws std::out_of_range for a number of no family.
bool cancelDocument(const QString& number, Prompt& prompt, CancelMode mode = CancelMode::Single);

}  // namespace jxc
