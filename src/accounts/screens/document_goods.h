// 单据商品: the goods of a partner's document, in a list below the one that its number stands in.
#pragma once

#include "accounts/partner_overview.h"
#include "masterdata/partner_side.h"
#include "masterdata/screens/goods_columns.h"
#include "masterdata/screens/partner_text.h"
#include "ui/enquiry_spec.h"
#include "ui/joined_tables.h"

#include <array>

namespace jxc {

/// Lines of the stock ledger; an operator without the right to see their money sees the pieces.
template <PartnerType Side>
inline constexpr auto documentGoodsColumns = [] {
  using ui::ColumnKind, ui::ColumnSpec;
  return ui::joinedTables(goodsNames,
                          std::array{ColumnSpec{"gl_sl", "数量", ColumnKind::Quantity, 0, {.sum = true}},
                                     ColumnSpec{"gl_dj", "单价", ColumnKind::Money, 0, {}, seesMoney<Side>},
                                     ColumnSpec{"gl_zje", "金额", ColumnKind::Money, 0, {.sum = true}, seesMoney<Side>},
                                     ColumnSpec{"ck_name", "仓库"}, ColumnSpec{"gl_bz", "备注", ColumnKind::Text, 20}});
}();

/// Of sales, returns and loans, or of receipts and returns: the documents that move goods.
template <PartnerType Side>
bool movesGoods(const Row& row) {
  const QString kind = row.text("gl_djh").left(2);
  if constexpr (Side == PartnerType::Customer)
    return kind == u"XS" || kind == u"XT" || kind == u"XH";
  else
    return kind == u"CJ" || kind == u"CT";
}

template <PartnerType Side>
inline constexpr ui::RowsBelow goodsOfDocument = {
    {"gridGoods", "单据商品", documentGoodsColumns<Side>,
     Side == PartnerType::Customer ? "销售单和退货单的商品在这里显示" : "采购单和退货单的商品在这里显示"},
    partner_books::documentGoods,
    [](Criteria& criteria, const Row& row) { criteria.document = row.text("gl_djh"); },
    movesGoods<Side>};

}  // namespace jxc
