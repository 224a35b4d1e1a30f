// 商品资料: articles of the catalogue, as its form has them when it is filled in.
#pragma once

#include "masterdata/goods.h"

namespace jxc::test {

/// A frame at 10 yuan; `stock` pieces of it lie in the first warehouse from the beginning.
inline GoodsDraft article(const QString& number, const QString& name, const QString& classNumber, double stock = 0) {
  GoodsDraft draft{.number = number, .name = name, .unit = QStringLiteral("付"), .classNumber = classNumber};
  draft.warehouse = QStringLiteral("100001");
  draft.purchasePrice = 10;
  draft.openingStock = stock;
  return draft;
}

}  // namespace jxc::test
