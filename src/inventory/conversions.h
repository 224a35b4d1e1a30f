// 拆分与捆绑: the two directions of a conversion with their lines, and both of them as one screen has them.
#pragma once

#include "stock/conversion.h"

namespace jxc::conversions {

/// Parts come in at a price that is typed, each into a warehouse of its own.
const ConversionRules& split();
/// Parts leave, each its own warehouse, at what that warehouse has them at.
const ConversionRules& bundle();
/// Either of them, as the number of the document tells; a new document is a split. Its lists name their columns as
/// those of a split, and have besides: djlx (拆分, 捆绑), whole_name (the goods that is taken apart or made).
const RulesOver<ConversionDraft>& both();

}  // namespace jxc::conversions
