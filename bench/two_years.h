// 两年的店: an account set with documents of two years up to today and all that their audits leave, filled in seconds.
#pragma once

#include "bare_shop.h"

namespace jxc::bench {

/// So many rows of the stock ledger, of two thousand goods in one warehouse, five rows a document, all of it proven.
void fillTwoYears(Shop& shop, int rows);

}  // namespace jxc::bench
