// 商品列: how goods are told apart in lists, and what else is known of them.
#pragma once

#include "ui/specs.h"

#include <array>

namespace jxc {

inline constexpr std::array goodsNames{ui::ColumnSpec{"g_sn", "商品编号", ui::ColumnKind::Text, 9},
                                       ui::ColumnSpec{"g_name", "商品名称", ui::ColumnKind::Text, 24},
                                       ui::ColumnSpec{"gg_name", "规格型号", ui::ColumnKind::Text, 9},
                                       ui::ColumnSpec{"color_name", "颜色", ui::ColumnKind::Text, 4},
                                       ui::ColumnSpec{"dw_name", "单位", ui::ColumnKind::Text, 4}};
inline constexpr std::array goodsDetails{
    ui::ColumnSpec{.field = "g_sptm", .caption = "商品条码", .use = {.hidden = true}},
    ui::ColumnSpec{.field = "g_sccs", .caption = "商品产地", .use = {.hidden = true}},
    ui::ColumnSpec{.field = "g_bz", .caption = "商品备注", .use = {.hidden = true}}};

}  // namespace jxc
