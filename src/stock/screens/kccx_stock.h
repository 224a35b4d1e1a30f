// 库存列表: stock now and at the end of a day, as two panels of the enquiry of current stock.
#pragma once

#include "core/fillers.h"
#include "masterdata/goods_classes.h"
#include "stock/stock_enquiry.h"
#include "ui/enquiry_spec.h"
#include "ui/joined_tables.h"

#include <array>

namespace jxc::kccx_stock {

using ui::Asks;
using ui::ColumnKind;
using ui::ColumnSpec;

inline constexpr ui::Criterion inputs[] = {
    {Asks::Warehouse, "comCk", "仓库：", fillOwnWarehouses},
    {Asks::GoodsClass, "tsplb", "商品类别：", goodsClassItems},
    {Asks::Key, "tkey", "商品信息："},
    {.asks = Asks::Box, .name = "chk0", .label = "不显示库存为零的商品", .box = kHidesZeroStock},
    {.asks = Asks::Box, .name = "chkJy", .label = "显示禁用商品", .box = kWithDisabledGoods},
};
inline constexpr ui::Criterion historyInputs[] = {
    {Asks::Day, "tdate2", "截止日期："},
    {Asks::Warehouse, "comCk2", "仓库：", fillOwnWarehouses},
    {Asks::GoodsClass, "tsplb2", "商品类别：", goodsClassItems},
    {Asks::Key, "tkey2", "商品信息："},
    {.asks = Asks::Box, .name = "chk2", .label = "不显示库存为零的商品", .box = kHidesZeroStock},
    // What was disabled since then had its value all the same.
    {.asks = Asks::Box, .name = "chkJy2", .label = "显示禁用商品", .box = kWithDisabledGoods},
};
inline constexpr std::array names{
    ColumnSpec{"g_sn", "商品编号"},
    ColumnSpec{"g_name", "商品名称", ColumnKind::Text, 24},
    ColumnSpec{"g_qgd", "屈光度", ColumnKind::Power, 8},
    ColumnSpec{"g_sgd", "散光度", ColumnKind::Power, 8},
    ColumnSpec{"gc_name", "类别"},
    ColumnSpec{"gg_name", "规格型号"},
    ColumnSpec{"color_name", "颜色"},
    ColumnSpec{"dw_name", "单位", ColumnKind::Text, 6},
};
inline constexpr std::array more{
    ColumnSpec{.field = "fzkc", .caption = "辅助单位库存", .kind = ColumnKind::Quantity, .use = {.hidden = true}},
    ColumnSpec{.field = "g_sptm", .caption = "商品条码", .use = {.hidden = true}},
    ColumnSpec{.field = "g_sccs", .caption = "商品产地", .use = {.hidden = true}},
};
inline constexpr auto columns = ui::joinedTables(
    names,
    std::array{
        ColumnSpec{"kcsl", "当前库存", ColumnKind::Quantity, 0, {.sum = true}},
        ColumnSpec{"kczsl", "帐面库存", ColumnKind::Quantity, 0, {.sum = true}},
        ColumnSpec{"xssl", "销售总数", ColumnKind::Quantity, 0, {.sum = true}},
        ColumnSpec{.field = "g_scjj", .caption = "上次进价", .kind = ColumnKind::Money, .right = kSeesStockCost},
        ColumnSpec{.field = "cbjj", .caption = "成本均价", .kind = ColumnKind::Money, .right = kSeesStockCost},
        ColumnSpec{"kczje", "库存总值", ColumnKind::Total, 0, {.sum = true}, kSeesStockCost},
        ColumnSpec{.field = "g_sj", .caption = "预设售价", .kind = ColumnKind::Money, .right = kSeesPrice},
        ColumnSpec{"xszje", "售价总值", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
    },
    more);
inline constexpr auto historyColumns = ui::joinedTables(
    names,
    std::array{
        ColumnSpec{"kcsl", "历史库存", ColumnKind::Quantity, 0, {.sum = true}},
        ColumnSpec{.field = "cbjj", .caption = "成本均价", .kind = ColumnKind::Money, .right = kSeesStockCost},
        ColumnSpec{"kczje", "库存总值", ColumnKind::Total, 0, {.sum = true}, kSeesStockCost},
    },
    more);
inline constexpr ui::EnquiryView views[] = {
    {.grid = {"gridKc", "当前库存", columns, "没有符合条件的商品", "id", "kccx"},
     .source = currentStockByPage,
     .chart = {.label = "g_name", .measure = "kcsl"},
     .leads = {.command = "btn_Ckmx"},
     .paper = "kccx"}};
inline constexpr ui::EnquiryView historyViews[] = {
    {.grid = {"gridLs", "历史库存", historyColumns, "到这一天为止没有进出库的商品"},
     .source = stockAt,
     .chart = {.label = "g_name", .measure = "kcsl"},
     .leads = {.command = "btn_Ckmx"}}};

}  // namespace jxc::kccx_stock
