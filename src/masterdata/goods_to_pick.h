// 选择商品: what the goods list of a trading document asks of the catalogue.
#pragma once

#include "masterdata/goods.h"
#include "stock/trading_document.h"

namespace jxc {

/// The part of a document's goods list that every document has; stock and partners are its own.
inline GoodsFilter goodsFilterOf(const PickFilter& wanted) {
  return {
      .key = wanted.key, .classNumber = wanted.classNumber, .lensProduct = wanted.lensProduct, .number = wanted.goods};
}

}  // namespace jxc
