// 销售屏幕部件: columns that the screens of sale and customer return share, as plain data.
#pragma once

#include "ui/specs.h"

namespace jxc::sales_parts {

inline constexpr ui::ColumnSpec goodsColumns[] = {
    {"g_sn", "商品编号", ui::ColumnKind::Text, 10},    {"g_name", "商品名称", ui::ColumnKind::Text, 24},
    {"g_jm", "简码", ui::ColumnKind::Text, 10},        {"g_sptm", "商品条码", ui::ColumnKind::Text, 15},
    {"gg_name", "规格型号", ui::ColumnKind::Text, 12}, {"color_name", "颜色", ui::ColumnKind::Text, 8},
    {"dw_name", "单位", ui::ColumnKind::Text, 6},      {"kc_sl", "库存数量", ui::ColumnKind::Quantity, 10},
    {"g_sj", "预设售价", ui::ColumnKind::Money, 11},   {"g_lsj", "零售价", ui::ColumnKind::Money, 11},
};

inline constexpr ui::ColumnSpec historyColumns[] = {
    {"ls_xsrq", "出货日期", ui::ColumnKind::Text, 12}, {"kh_name", "客户", ui::ColumnKind::Text, 18},
    {"ls_dj", "单价", ui::ColumnKind::Money, 12},      {"ls_sl", "数量", ui::ColumnKind::Quantity, 10},
    {"ls_tax", "税率(%)", ui::ColumnKind::Percent, 9}, {"ls_taxdj", "含税单价", ui::ColumnKind::Money, 12},
    {"ls_dzl", "打折率", ui::ColumnKind::Percent, 9},  {"ls_zje", "总金额", ui::ColumnKind::Money, 13},
    {"gl_djh", "单据编号", ui::ColumnKind::Text, 16},  {"ls_bz", "备注", ui::ColumnKind::Text, 12},
};

inline constexpr ui::ColumnSpec quoteColumns[] = {
    {"kb_bjrq", "报价日期", ui::ColumnKind::Date},
    {"kb_bj", "报价", ui::ColumnKind::Money, 12},
    {"a_name", "操作员", ui::ColumnKind::Text, 10},
    {"kb_note", "备注", ui::ColumnKind::Text, 20},
};

}  // namespace jxc::sales_parts
