// 镜片光度表屏幕: opens the sphere by cylinder sheet of lens products over a document or what else takes many lines.
#pragma once

#include "stock/document_rules.h"

namespace jxc {

/// Lets the operator type quantities by power and makes lines of them. What was done: no lines when it was left. With
/// `mayMake` powers without an article may be typed too, and are made on first use.
CopyResult enterLensSheets(const DocumentRules& rules, const LinePlace& place, Lines target, bool mayMake);
/// The same for what is no document; `hasPrice`: one price for all of a sheet may be typed.
CopyResult enterLensSheets(const ManyLines& lines, const LinePlace& place, Lines target, bool mayMake, bool hasPrice);

}  // namespace jxc
