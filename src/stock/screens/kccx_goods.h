// 商品信息: where one goods stands, as a panel of the enquiry of current stock: goods above, and below what is known of
// the current one.
#pragma once

#include "masterdata/screens/goods_columns.h"
#include "stock/goods_situation.h"
#include "ui/enquiry_spec.h"
#include "ui/joined_tables.h"

#include <array>

namespace jxc::kccx_goods {

using ui::ColumnKind;
using ui::ColumnSpec;

constexpr ColumnSpec pieces(std::string_view field, std::string_view caption) {
  return {field, caption, ColumnKind::Quantity, 7, {.sum = true}};
}
constexpr ColumnSpec price(std::string_view field, std::string_view caption, Right right) {
  return {.field = field, .caption = caption, .kind = ColumnKind::Money, .right = right};
}
inline constexpr std::array whereItStands{pieces("kcsl", "当前库存"), pieces("kczsl", "帐面库存"),
                                          pieces("ztsl", "未入库"),   pieces("dcsl", "未出库"),
                                          pieces("jcsl", "借出"),     pieces("kysl", "可用库存")};
inline constexpr ColumnSpec value = {"kczje", "库存总值", ColumnKind::Total, 0, {.sum = true}, kSeesStockCost};

inline constexpr auto goods = ui::joinedTables(
    goodsNames, whereItStands,
    std::array{
        value, price("g_sj", "预设售价", kSeesPrice),
        ColumnSpec{.field = "g_scjj",
                   .caption = "上次进价",
                   .kind = ColumnKind::Money,
                   .use = {.hidden = true},
                   .right = kSeesStockCost},
        ColumnSpec{.field = "g_zdkc", .caption = "库存下限", .kind = ColumnKind::Number, .use = {.hidden = true}},
        ColumnSpec{"zt", "状态", ColumnKind::Text, 4}, goodsBarcode});
inline constexpr auto warehouses =
    ui::joinedTables(std::array{ColumnSpec{"ck_name", "仓库", ColumnKind::Text, 18}}, whereItStands,
                     std::array{pieces("xssl", "销售总数"), price("cbjj", "成本均价", kSeesStockCost), value});
inline constexpr std::array prices{ColumnSpec{"gl_kdrq", "日期", ColumnKind::Date},
                                   ColumnSpec{"dnote", "类型", ColumnKind::Text, 9},
                                   ColumnSpec{"gl_djh", "单据号", ColumnKind::Text, 15},
                                   ColumnSpec{"ghs_name", "往来单位", ColumnKind::Text, 22},
                                   ColumnSpec{"ck_name", "仓库", ColumnKind::Text, 12},
                                   ColumnSpec{"gl_sl", "数量", ColumnKind::Quantity, 9},
                                   price("jj", "进价", kSeesStockCost),
                                   price("sj", "售价", kSeesPrice)};
inline constexpr std::array waiting{
    ColumnSpec{"rq", "日期", ColumnKind::Date},           ColumnSpec{"gtype", "单据类型", ColumnKind::Text, 9},
    ColumnSpec{"djh", "单据号", ColumnKind::Text, 15},    ColumnSpec{"ghs_name", "往来单位", ColumnKind::Text, 22},
    ColumnSpec{"ck_name", "仓库", ColumnKind::Text, 12},  ColumnSpec{"ck_in", "对方仓库", ColumnKind::Text, 12},
    ColumnSpec{"gl_sl", "数量", ColumnKind::Quantity, 9}, ColumnSpec{"u_name", "经办人", ColumnKind::Text, 8}};

inline void toGoods(Criteria& criteria, const Row& row) {
  criteria = {};
  criteria.goods = row.text("g_sn");
}
inline QString whose(const Row& row) {
  return row.text("g_sn") + u'　' + row.text("g_name");
}

inline constexpr ui::RowsBelow belowWaiting = {.grid = {"gridDs3", "待审核单据", waiting, "没有待审核的单据", "rowkey"},
                                               .source = waitingWithGoods,
                                               .narrow = toGoods,
                                               .document = "djh",
                                               .mode = {"rDs3", "待审核单据"},
                                               .says = whose};
inline constexpr ui::RowsBelow belowPrices = {.grid = {"gridJg3", "最近进价售价", prices, "没有进货或销售"},
                                              .source = lastPrices,
                                              .narrow = toGoods,
                                              .document = "gl_djh",
                                              .mode = {"rJg3", "最近进价售价"},
                                              .next = &belowWaiting,
                                              .says = whose};
inline constexpr ui::RowsBelow belowWarehouses = {.grid = {"gridCk3", "各仓库", warehouses, "没有库存", "ck_sn"},
                                                  .source = situationByWarehouse,
                                                  .narrow = toGoods,
                                                  .mode = {"rCk3", "各仓库"},
                                                  .next = &belowPrices,
                                                  .says = whose};

inline constexpr ui::Criterion inputs[] = {{ui::Asks::Key, "tKey3", "商品信息："}};
inline constexpr ui::EnquiryView views[] = {{.grid = {"gridSp3", "商品信息", goods, "没有符合条件的商品"},
                                             .source = goodsSituation,
                                             .leads = {.command = "btn_Ckmx"},
                                             .below = &belowWarehouses}};

}  // namespace jxc::kccx_goods
