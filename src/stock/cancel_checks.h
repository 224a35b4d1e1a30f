// 取消审核检查: what every cancel asks before it touches anything, in the order in which the operator sees it.
#pragma once

#include "core/refusal.h"
#include "stock/cancelling.h"
#include "stock/document_family.h"

#include <QString>

namespace jxc::cancel_checks {

/// The operator's right, or "您没有取消审核…的权限！".
bool hasCancelRight(const DocumentFamily& family, Prompt& prompt);
/// Only the checker himself, the administrator, or anyone where the checker's own role may cancel: it is the checker's
/// role that decides how far his signature binds others.
bool isFreeOfChecker(const DocumentFamily& family, const QString& number, const QString& checker, Prompt& prompt);
bool passesGate(const QString& number, const QString& date, Prompt& prompt);
/// Asks unless the caller has asked for a whole list.
bool isConfirmed(const QString& question, Prompt& prompt, CancelMode mode);
QString usualQuestion(const QString& number);
/// What is asked when the goods that a document brought in are no longer all there: its ledger rows against the book
/// stock of their warehouses. As of `checkStockShort`.
Refusal shortWhenTakenBack(const QString& number);
/// The same of what is open of a source, when a return closes it: goods that never came may have been sold already.
Refusal shortWhenClosed(const PartialMovement& movement, const QString& source);

}  // namespace jxc::cancel_checks
