// 镜片光度表屏幕: opens the sphere by cylinder sheet of lens products over a trading document.
#pragma once

#include "stock/document_rules.h"

namespace jxc {

/// Lets the operator type quantities by power and makes lines of them. What was done: no lines when it was left. With
/// `mayMake` powers without an article may be typed too, and are made on first use.
CopyResult enterLensSheets(const DocumentRules& rules, const LinePlace& place, Lines target, bool mayMake);

}  // namespace jxc
