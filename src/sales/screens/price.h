// 选择售价: the prices that a goods has besides the proposed one.
#pragma once

#include <QString>

namespace jxc {

/// Lets the operator choose one of the preset prices; `price` takes it, or stays.
void askGoodsPrice(const QString& goods, double& price);

}  // namespace jxc
