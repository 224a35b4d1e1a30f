// 业务员统计: what employees collected from customers, and the documents by which they bought.
#pragma once

#include "core/enquiry.h"

namespace jxc {

inline constexpr NoWarehouse kReceiptsHaveNoWarehouse{"a customer pays the shop, whichever branch sold to him"};

/// Receipts from customers, the latest first: lines of the customers' ledger with `kh_name` and `u_name`, `k_sfje`
/// yuan. Asked for by period, employee, partner and key (number, note).
Sql receipts(const Criteria& criteria);
/// The same by employee: `u_sn`, `u_name`, how many `bs`, `sfje` yuan. Who is gone is the row kOthers.
Sql receiptsByEmployee(const Criteria& criteria);

/// Audited purchases and returns by employee: `u_sn`, `u_name`, how many `djs`, yuan due `yfje`, paid `sfje`, let off
/// `yhje`, paid later `hkje`, open `wfje`; returns lower them. Asked for as a list of documents is. Who is gone
/// is the row kOthers. Amounts are null for who must not see cost.
Sql purchasesByEmployee(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc
