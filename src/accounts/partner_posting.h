// 应收应付过账: what the audit of a receivable, payable, receipt or payment writes, and how it is taken back.
#pragma once

#include "accounts/partner_documents.h"

namespace jxc::partner_books {

/// Writes the ledger line of a document (a row of `jxc_ysyfk_dj`); of a payment also its cash line, and with rounding
/// the rounding line and its stock-ledger line, so that what was given up lowers the profit. Inside the caller's
/// transaction.
void postDocument(const PartnerSide& side, Kind kind, const Row& document);

/// Removes all of these and marks the document as waiting. Inside the caller's transaction.
void takeBackDocument(const PartnerSide& side, Kind kind, const Row& document);

}  // namespace jxc::partner_books
