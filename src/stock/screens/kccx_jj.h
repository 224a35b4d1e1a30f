// 修改当前库存均价: the dialog that sets the average cost of a goods.
#pragma once

#include <QString>

namespace jxc {

class Row;

/// For the goods of a row (g_sn, g_name) in one warehouse or (empty) in all. True: it was changed.
bool changeAverageOf(const Row& goods, const QString& warehouse);

}  // namespace jxc
