// 借货查询: loans and their returns as a list, what is still out, and the deposits that the shop holds.
#pragma once

#include "core/enquiry.h"
#include "stock/document_list.h"

namespace jxc::loan_enquiry {

/// Heads of loans and returns, as `listedDocuments` has them, and yuan of their lines: yj (deposits of a loan), zzj
/// (rent), thyj (deposit paid back).
struct Documents : DocumentSet<families::loan, families::loanReturn> {
  static Sql documents(const Criteria& criteria, const Warehouses& warehouses);
};

/// Lines of the same documents: djh, rq, gtype, kh_name, ck_name, u_name, the goods, jh_sl (lent, or brought back),
/// jh_hhsl, jh_xssl, opensl, jh_zj, jh_ts, jh_zzj, jh_yj, jh_thyj, jh_kmmc, gl_djh2 (of a return its loan), jh_dj and
/// jh_zje (cost), lid, rowkey.
Sql lines(const Criteria& criteria, const Warehouses& warehouses);

/// Loan lines of which goods are out or a deposit is held, the oldest first, whatever the period: the same names, and
/// jcts (days out, today counted), ysje (rent until today of what is out), jh_yj2 (rent charged), heldyj (yuan of the
/// deposit that are held).
Sql open(const Criteria& criteria, const Warehouses& warehouses);

/// The deposits that are held, summed by account: jh_kmmc, num (lines), heldyj, hqyj (of it, of lines of
/// which nothing is out any more).
Sql deposits(const Criteria& criteria, const Warehouses& warehouses);

}  // namespace jxc::loan_enquiry
