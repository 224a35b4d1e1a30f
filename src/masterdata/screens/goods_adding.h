// 新商品: how another screen has a new article made.
#pragma once

#include <QString>

#include <optional>

namespace jxc {

struct AddedGoods {
  QString number;           // g_sn
  double openingStock = 0;  // g_kc as it was keyed in
};

/// F9 of a purchase document: opens "增加商品" without opening stock and returns the article that was saved, or
/// nothing.
std::optional<AddedGoods> addGoodsForPurchase();

}  // namespace jxc
