// 修改均价: the average cost of a goods as it stands now, set by hand.
#pragma once

#include "core/prompt.h"

#include <QString>

namespace jxc {

/// Sets the average (yuan a piece, above 0, rounded to the money digits) of a goods in one warehouse or (empty) in all
/// that the operator may see: balance and last ledger row with its value, and the goods' own, which is that average
/// where every warehouse takes it and weighted by book stock otherwise. The next replay from before that row works it
/// out anew. True: it was set, and the log tells.
bool changeAverage(const QString& goods, const QString& warehouse, double average, Prompt& prompt);

/// The average that is changed: of the warehouse, or of the goods.
double averageToChange(const QString& goods, const QString& warehouse);

}  // namespace jxc
