// 报损报溢: the rules of loss and overflow: goods written off, or surplus booked in, at the cost of their warehouse.
#pragma once

#include "stock/document_rules.h"

namespace jxc::write_off {

/// Both kinds as their one screen asks for them. Which one a document is, its number tells; lists name their columns as
/// the loss has them, and `djlx` is the kind in words.
const RulesOver<DocumentDraft>& rules();

/// A new loss or overflow, after a document of `lastDate`.
DocumentDraft fresh(const DocumentFamily& kind, const QString& lastDate);

}  // namespace jxc::write_off
