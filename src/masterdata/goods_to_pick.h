// 选择商品: what the goods list of a trading document asks of the catalogue.
#pragma once

#include "core/sql.h"
#include "masterdata/goods.h"
#include "stock/trading_document.h"

#include <string_view>

namespace jxc {

/// The part of a document's goods list that every document has; stock and partners are its own.
inline GoodsFilter goodsFilterOf(const PickFilter& wanted) {
  return {
      .key = wanted.key, .classNumber = wanted.classNumber, .lensProduct = wanted.lensProduct, .number = wanted.goods};
}

/// Goods `a` with what lies of them in one warehouse (`b.kc_sl`, pieces; a goods unknown there has none), the most used
/// first: `counter` is `g_xspl` or `g_cgpl`.
Sql goodsByWarehouse(const QString& warehouse, const Filter& filter, std::string_view counter);

}  // namespace jxc
