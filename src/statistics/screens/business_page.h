// 综合分析页: the figures of a period as blocks on one page.
#pragma once

#include "masterdata/screens/partner_text.h"
#include "ui/enquiry_screen.h"
#include "ui/joined_tables.h"

#include <array>

namespace jxc {
namespace business_page {

using ui::ColumnKind;
using ui::ColumnSpec;

inline constexpr ui::ColumnUse kSum{.sum = true};
constexpr ColumnSpec documents(std::string_view field, std::string_view caption) {
  return {field, caption, ColumnKind::Number, 0, kSum};
}
constexpr ColumnSpec pieces(std::string_view field, std::string_view caption) {
  return {field, caption, ColumnKind::Quantity, 0, kSum};
}
constexpr ColumnSpec yuan(std::string_view field, std::string_view caption, Right right) {
  return {field, caption, ColumnKind::Total, 0, kSum, right};
}
inline constexpr Right kSuppliers = seesMoney<PartnerType::Supplier>, kCustomers = seesMoney<PartnerType::Customer>;

/// Pieces and yuan of a block; the letters of its columns and the beginning of their captions name it.
template <FixedText Letters, FixedText Caption>
constexpr std::array<ColumnSpec, 2> traded(Right right) {
  return {pieces(joined<Letters, "sl">, joined<Caption, "数量">),
          yuan(joined<Letters, "je">, joined<Caption, "金额">, right)};
}
/// … and how many documents.
template <FixedText Letters, FixedText Caption>
constexpr std::array<ColumnSpec, 3> counted(Right right) {
  const auto both = traded<Letters, Caption>(right);
  return {documents(joined<Letters, "ds">, joined<Caption, "单数">), both[0], both[1]};
}

inline constexpr auto columns = ui::joinedTables(
    counted<"cg", "进货">(kSuppliers), counted<"ct", "进货退货">(kSuppliers), traded<"cghj", "进货合计">(kSuppliers),
    counted<"xs", "销售">(kCustomers), counted<"xt", "顾客退货">(kCustomers), traded<"xshj", "销售合计">(kCustomers),
    traded<"kc", "现有库存">(kSeesCost),
    std::array{documents("dbds", "调拨单数"), pieces("dbsl", "调拨数量")},  // goods move, no money
    counted<"bs", "报损">(kSeesCost), counted<"by", "报溢">(kSeesCost),
    std::array{
        documents("fkds", "向供货商付款单数"), yuan("fkje", "向供货商付款金额", kSuppliers),
        yuan("yfje", "应付供货商", kSuppliers), yuan("sfje", "实付供货商", kSuppliers),
        documents("skds", "向客户收款单数"), yuan("skje", "向客户收款金额", kCustomers),
        yuan("ysje", "应收客户", kCustomers), yuan("ssje", "实收客户", kCustomers), yuan("xscb", "销售成本", kSeesCost),
        yuan("xslr", "销售毛利", kSeesProfit), yuan("xszje", "销售净额(含税)", kCustomers),
        ColumnSpec{.field = "lrl", .caption = "毛利率(含税)%", .kind = ColumnKind::Percent, .right = kSeesProfit}});

}  // namespace business_page

/// Shows a row of these columns, which are those of `businessFigures`.
ui::RowPane* makeBusinessPage();

}  // namespace jxc
