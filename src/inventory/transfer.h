// 库存调拨: the rules of the stock transfer: goods go from one warehouse to another at a stated unit price.
#pragma once

#include "stock/document_rules.h"

namespace jxc::transfer {

struct TransferDraft : DocumentDraft {  // its warehouse is the sending one
  QString into;                         // code of the receiving one
};

/// As its screens ask for them. The price of a line is the sending warehouse's cost, or by parameter (`cs_dbdj`) the
/// preset purchase price; the amount goes by the sale price where the parameter says so, and the ledger by the price.
const RulesOver<TransferDraft>& rules();

}  // namespace jxc::transfer
