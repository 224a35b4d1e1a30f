// 采购屏幕部件: columns that the screens of receipt and purchase return share, as plain data.
#pragma once

#include "masterdata/screens/goods_columns.h"
#include "ui/joined_tables.h"
#include "ui/specs.h"

#include <array>

namespace jxc::purchase_parts {

inline constexpr auto goodsColumns = ui::joinedTables(
    goodsToPick, std::array{ui::ColumnSpec{"g_pjjj", "平均进价", ui::ColumnKind::Money, 11, {}, kSeesCost},
                            ui::ColumnSpec{"g_scjj", "最近进价", ui::ColumnKind::Money, 11, {}, kSeesCost},
                            ui::ColumnSpec{"g_jj", "预设进价", ui::ColumnKind::Money, 11, {}, kSeesCost}});

inline constexpr ui::ColumnSpec historyColumns[] = {
    {"j_jhrq", "进货日期", ui::ColumnKind::Date},
    {"j_sn", "单据编号", ui::ColumnKind::Text, 16},
    {"jh_dj", "单价", ui::ColumnKind::Money, 12, {}, kSeesCost},
    {"jh_sl", "数量", ui::ColumnKind::Quantity, 10},
    {"jh_tax", "税率(%)", ui::ColumnKind::Percent, 9, {}, kSeesCost},
    {"jh_taxdj", "含税单价", ui::ColumnKind::Money, 12, {}, kSeesCost},
    {"jh_dzl", "打折率", ui::ColumnKind::Percent, 9},
    {"jh_zje", "总金额", ui::ColumnKind::Money, 13, {}, kSeesCost},
    {"jh_bz", "备注", ui::ColumnKind::Text, 12},
};

inline constexpr ui::ColumnSpec quoteColumns[] = {
    {"gb_bjrq", "报价日期", ui::ColumnKind::Date},
    {"gb_bj", "报价", ui::ColumnKind::Money, 12, {}, kSeesCost},
    {"a_name", "操作员", ui::ColumnKind::Text, 10},
    {"gb_note", "备注", ui::ColumnKind::Text, 20},
};

}  // namespace jxc::purchase_parts
