// 盘点辅助窗口: what a count is helped by: goods that nobody has counted yet, empty sheets, another count to take in.
#pragma once

#include "core/fillers.h"
#include "stock/document_rules.h"

#include <QString>

namespace jxc {

/// Shows goods with stock that are not on the document, class by class, and puts them onto it as the operator says.
/// What was done: no lines when they are left as they are.
CopyResult handleUncounted(const LinePlace& place, Lines where);

/// Lists what a warehouse has of some classes without its stock, for a sheet of paper to count on.
void showCountSheet(const ListItem& warehouse);

/// Lets the operator choose among the waiting counts that `number` can take in; empty: he left, or there is none
/// (told).
QString chooseJoined(const QString& number, Prompt& prompt);

}  // namespace jxc
