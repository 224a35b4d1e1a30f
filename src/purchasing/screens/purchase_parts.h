// 采购屏幕部件: columns that the screens of receipt and purchase return share, as plain data.
#pragma once

#include "ui/specs.h"

namespace jxc::purchase_parts {

inline constexpr ui::ColumnSpec goodsColumns[] = {
    {"g_sn", "商品编号", ui::ColumnKind::Text, 10},    {"g_name", "商品名称", ui::ColumnKind::Text, 24},
    {"g_jm", "简码", ui::ColumnKind::Text, 10},        {"g_sptm", "商品条码", ui::ColumnKind::Text, 15},
    {"gg_name", "规格型号", ui::ColumnKind::Text, 12}, {"color_name", "颜色", ui::ColumnKind::Text, 8},
    {"dw_name", "单位", ui::ColumnKind::Text, 6},      {"kc_sl", "库存数量", ui::ColumnKind::Quantity, 10},
    {"g_pjjj", "平均进价", ui::ColumnKind::Money, 11}, {"g_scjj", "最近进价", ui::ColumnKind::Money, 11},
    {"g_jj", "预设进价", ui::ColumnKind::Money, 11},
};

inline constexpr ui::ColumnSpec historyColumns[] = {
    {"j_jhrq", "进货日期", ui::ColumnKind::Date},      {"j_sn", "单据编号", ui::ColumnKind::Text, 16},
    {"jh_dj", "单价", ui::ColumnKind::Money, 12},      {"jh_sl", "数量", ui::ColumnKind::Quantity, 10},
    {"jh_tax", "税率(%)", ui::ColumnKind::Percent, 9}, {"jh_taxdj", "含税单价", ui::ColumnKind::Money, 12},
    {"jh_dzl", "打折率", ui::ColumnKind::Percent, 9},  {"jh_zje", "总金额", ui::ColumnKind::Money, 13},
    {"jh_bz", "备注", ui::ColumnKind::Text, 12},
};

inline constexpr ui::ColumnSpec quoteColumns[] = {
    {"gb_bjrq", "报价日期", ui::ColumnKind::Date},
    {"gb_bj", "报价", ui::ColumnKind::Money, 12},
    {"a_name", "操作员", ui::ColumnKind::Text, 10},
    {"gb_note", "备注", ui::ColumnKind::Text, 20},
};

}  // namespace jxc::purchase_parts
