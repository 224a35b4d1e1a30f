// 流水列: a line of the stock ledger on its side, what came in or what went out, as lists of movements show it.
#pragma once

#include "ui/enquiry_spec.h"
#include "ui/joined_tables.h"

#include <array>

namespace jxc::movement_columns {

using ui::ColumnKind;
using ui::ColumnSpec;

constexpr ColumnSpec pieces(std::string_view field, std::string_view caption) {
  return {field, caption, ColumnKind::Quantity, 6, {.sum = true}};
}
constexpr ColumnSpec yuan(std::string_view field, std::string_view caption, Right right = kSeesCost) {
  return {field, caption, ColumnKind::Total, 8, {.sum = true}, right};
}
constexpr ColumnSpec price(std::string_view field, std::string_view caption, Right right = kSeesCost) {
  return {.field = field, .caption = caption, .kind = ColumnKind::Money, .width = 6, .right = right};
}
constexpr ColumnSpec hidden(std::string_view field, std::string_view caption) {
  return {.field = field, .caption = caption, .use = {.hidden = true}};
}

inline constexpr std::array when{ColumnSpec{"gl_kdrq", "日期", ColumnKind::Date},
                                 ColumnSpec{"dnote", "类型", ColumnKind::Text, 9}};
inline constexpr std::array document{ColumnSpec{"gl_djh", "单据号", ColumnKind::Text, 13}};
constexpr auto in(Right right = kSeesCost) {
  return std::array{price("rkdj", "入库单价", right), pieces("rksl", "入库数量"), yuan("rkje", "入库金额", right)};
}
/// … with the stock behind the line.
constexpr auto out(Right right = kSeesCost) {
  return std::array{price("ckdj", "出库单价", right), pieces("cksl", "出库数量"), yuan("ckje", "出库金额", right),
                    ColumnSpec{"gl_kc", "结存数量", ColumnKind::Quantity, 6}};
}
inline constexpr std::array where{ColumnSpec{"ck_name", "仓库", ColumnKind::Text, 8}, hidden("u_name", "经办人"),
                                  hidden("gl_bz", "备注")};
/// The movements of one goods, which stands in the title or in the list above.
constexpr auto ofOneGoods(Right right) {
  return ui::joinedTables(when, document, in(right), out(right), where,
                          std::array{ColumnSpec{"ghs_name", "往来单位", ColumnKind::Text, 18},
                                     hidden("g_sn", "商品编号"), hidden("g_name", "商品名称")});
}

/// A line has one side: the figures of the other one stand back.
inline ui::RowLook sideOf(const Row& line, std::string_view column) {
  const bool isFigure = column.starts_with("rk") || (column.starts_with("ck") && column.size() == 4);
  return isFigure && line.number(column) == 0 ? ui::RowLook::Muted : ui::RowLook::Normal;
}

}  // namespace jxc::movement_columns
