// 商品列: how goods are told apart in lists of them and of lines, and what else is known of them.
#pragma once

#include "ui/specs.h"

#include <array>

namespace jxc {

inline constexpr std::array<ui::ColumnSpec, 5> goodsNames = {{
    {"g_sn", "商品编号", ui::ColumnKind::Text, 9},
    {"g_name", "商品名称", ui::ColumnKind::Text, 28},
    {"gg_name", "规格型号", ui::ColumnKind::Text, 10},
    {"color_name", "颜色", ui::ColumnKind::Text, 5},
    {"dw_name", "单位", ui::ColumnKind::Text, 4},
}};
inline constexpr std::array goodsNamesNoColour{goodsNames[0], goodsNames[1], goodsNames[2], goodsNames[4]};
/// Goods to choose from, with what lies of them in the warehouse.
inline constexpr std::array<ui::ColumnSpec, 10> goodsToPick = {{
    {"g_sn", "商品编号", ui::ColumnKind::Text, 10},
    {"g_name", "商品名称", ui::ColumnKind::Text, 28},
    {"g_qgd", "屈光度", ui::ColumnKind::Power, 8},
    {"g_sgd", "散光度", ui::ColumnKind::Power, 8},
    {"g_jm", "简码", ui::ColumnKind::Text, 10},
    {"g_sptm", "商品条码", ui::ColumnKind::Text, 15},
    {"gg_name", "规格型号", ui::ColumnKind::Text, 12},
    {"color_name", "颜色", ui::ColumnKind::Text, 8},
    {"dw_name", "单位", ui::ColumnKind::Text, 6},
    {"kc_sl", "库存数量", ui::ColumnKind::Quantity, 10},
}};
inline constexpr ui::ColumnSpec goodsBarcode = {.field = "g_sptm", .caption = "商品条码", .use = {.hidden = true}};
inline constexpr std::array goodsDetails{
    goodsBarcode, ui::ColumnSpec{.field = "g_sccs", .caption = "商品产地", .use = {.hidden = true}},
    ui::ColumnSpec{.field = "g_bz", .caption = "商品备注", .use = {.hidden = true}}};

}  // namespace jxc
