// 综合分析页: the figures of a period as blocks on one page.
#pragma once

#include "masterdata/screens/partner_text.h"
#include "ui/enquiry_screen.h"

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

inline constexpr ColumnSpec columns[] = {
    documents("cgds", "进货单数"),
    pieces("cgsl", "进货数量"),
    yuan("cgje", "进货金额", kSuppliers),
    documents("ctds", "进货退货单数"),
    pieces("ctsl", "进货退货数量"),
    yuan("ctje", "进货退货金额", kSuppliers),
    pieces("cghjsl", "进货合计数量"),
    yuan("cghjje", "进货合计金额", kSuppliers),
    documents("xsds", "销售单数"),
    pieces("xssl", "销售数量"),
    yuan("xsje", "销售金额", kCustomers),
    documents("xtds", "顾客退货单数"),
    pieces("xtsl", "顾客退货数量"),
    yuan("xtje", "顾客退货金额", kCustomers),
    pieces("xshjsl", "销售合计数量"),
    yuan("xshjje", "销售合计金额", kCustomers),
    pieces("kcsl", "现有库存数量"),
    yuan("kcje", "现有库存金额", kSeesStockCost),
    documents("dbds", "调拨单数"),
    pieces("dbsl", "调拨数量"),
    documents("bsds", "报损单数"),
    pieces("bssl", "报损数量"),
    yuan("bsje", "报损金额", kSeesCost),
    documents("byds", "报溢单数"),
    pieces("bysl", "报溢数量"),
    yuan("byje", "报溢金额", kSeesCost),
    documents("fkds", "向供货商付款单数"),
    yuan("fkje", "向供货商付款金额", kSuppliers),
    yuan("yfje", "应付供货商", kSuppliers),
    yuan("sfje", "实付供货商", kSuppliers),
    documents("skds", "向客户收款单数"),
    yuan("skje", "向客户收款金额", kCustomers),
    yuan("ysje", "应收客户", kCustomers),
    yuan("ssje", "实收客户", kCustomers),
    yuan("xscb", "销售成本", kSeesCost),
    yuan("xslr", "销售毛利", kSeesCost),
    yuan("xszje", "销售净额(含税)", kCustomers),
    {.field = "lrl", .caption = "毛利率(含税)%", .kind = ColumnKind::Percent, .right = kSeesCost},
};

}  // namespace business_page

/// Shows a row of these columns, which are those of `businessFigures`.
ui::RowPane* makeBusinessPage();

}  // namespace jxc
