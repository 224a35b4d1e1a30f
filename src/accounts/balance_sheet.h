// 资产负债表: what the shop has and owes on a day, and what each figure is made of; and who owes what.
#pragma once

#include "core/enquiry.h"
#include "core/fillers.h"

#include <vector>

namespace jxc {

/// Box: what the stock was worth on the chosen day, by the running values of the ledger, and net assets with it.
inline constexpr unsigned kStockOfTheDay = 1;

/// Rows in the order of their codes `g_sn`: [资产合计] 100 of 101 库存商品总值 (of now, whatever the day), 102
/// 固定资产总值, 103 现金, 104 全部银行合计 with a row for each account below it, 109 应收款合计; [负债合计] 200 of 201
/// 应付款合计; [净资产] 300. At the end of the criteria's last day (`to`). Columns: `rowkey`, `g_sn`, `ts_note`,
/// `ts_zje`, `code` and `account` by which a row is followed, `aside` (1 on what no sum takes in). Yuan. Without the
/// right to see costs stock and payables are left out, without that to see prices receivables, and with any of them the
/// sums.
Computation balanceSheet(const Criteria& criteria);
/// What a row is made of: `kind` is its `code`, `account` its account. `id`, `rq`, `gl_djh` (number of a document, of
/// goods, of a partner), `lx`, `dnote`, `je`, whose sum is the row's figure; nothing for the sums of the sheet.
Sql balanceLines(const Criteria& criteria);

/// Box: only partners with a balance.
inline constexpr unsigned kOwingOnly = 1;
/// Customers and suppliers with what is owed now: `rowkey`, `side` ("kh", "ghs"), `lx`, `sn`, `name`, `lxr`, `tele`,
/// `ys` (我方应收), `yf` (我方应付). Of a side whose amounts the role must not see nobody.
Sql partnersOwing(const Criteria& criteria);
/// Lines of one of them (`group` its side, `partner`) in the period; `kind` is one of `fillOpenOrSettled`.
Sql owedLines(const Criteria& criteria);
/// "全部单据", "仅欠款单据", "不欠款的单据".
std::vector<ListItem> fillOpenOrSettled();

}  // namespace jxc
