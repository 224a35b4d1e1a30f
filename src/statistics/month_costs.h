// 库存成本统计: what stock was worth at the end of each month, and what was bought and sold in it.
#pragma once

#include "core/enquiry.h"

namespace jxc {

/// A row a month `js_rq`: pieces `sl` and value `zje` (yuan, two decimals whatever the parameters say) as the month was
/// left, null where nothing was kept of it; purchases less returns `cgsl`, `cgzje`, `cgje`, `cgtax`, and sales less
/// returns `xssl`, `xszje`, `xsje`, `xstax` (pieces, with tax, before tax, tax), with their cost `zcb` and profit `lr`.
Sql monthCosts(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc
