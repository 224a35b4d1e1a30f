// 销售屏幕部件: columns that the screens of sale and customer return share, as plain data.
#pragma once

#include "masterdata/screens/goods_columns.h"
#include "ui/joined_tables.h"
#include "ui/specs.h"

#include <array>

namespace jxc::sales_parts {

inline constexpr auto goodsColumns = ui::joinedTables(
    goodsToPick, std::array{ui::ColumnSpec{"g_sj", "预设售价", ui::ColumnKind::Money, 11, {}, kSeesPrice},
                            ui::ColumnSpec{"g_lsj", "零售价", ui::ColumnKind::Money, 11, {}, kSeesPrice}});

inline constexpr ui::ColumnSpec historyColumns[] = {
    {"ls_xsrq", "出货日期", ui::ColumnKind::Date},
    {"kh_name", "客户", ui::ColumnKind::Text, 18},
    {"ls_dj", "单价", ui::ColumnKind::Money, 12, {}, kSeesPrice},
    {"ls_sl", "数量", ui::ColumnKind::Quantity, 10},
    {"ls_tax", "税率(%)", ui::ColumnKind::Percent, 9, {}, kSeesPrice},
    {"ls_taxdj", "含税单价", ui::ColumnKind::Money, 12, {}, kSeesPrice},
    {"ls_dzl", "打折率", ui::ColumnKind::Percent, 9},
    {"ls_zje", "总金额", ui::ColumnKind::Money, 13, {}, kSeesPrice},
    {"gl_djh", "单据编号", ui::ColumnKind::Text, 16},
    {"ls_bz", "备注", ui::ColumnKind::Text, 12},
};

inline constexpr ui::ColumnSpec quoteColumns[] = {
    {"kb_bjrq", "报价日期", ui::ColumnKind::Date},
    {"kb_bj", "报价", ui::ColumnKind::Money, 12, {}, kSeesPrice},
    {"a_name", "操作员", ui::ColumnKind::Text, 10},
    {"kb_note", "备注", ui::ColumnKind::Text, 20},
};

}  // namespace jxc::sales_parts
