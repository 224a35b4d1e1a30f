// 业务员的购销: the tab of what each employee bought or sold, the same for both sides: by employee, goods, partner and
// document, and the lines behind.
#pragma once

#include "statistics/screens/trade_columns.h"

namespace jxc::employee_trade {

using namespace trade_columns;  // NOLINT(google-build-using-namespace): a table of columns over that one

/// The employee is asked for behind what the other statistics ask for.
template <FixedText Number>
inline constexpr ui::Criterion employee{Asks::Employee, joined<"comUser", Number>, "业务员："};
inline constexpr std::array employeeNames{ColumnSpec{"u_sn", "编号", ColumnKind::Text, 8},
                                          ColumnSpec{"u_name", "业务员", ColumnKind::Text, 12}};

template <PartnerType Side>
inline constexpr std::array documentNames{ColumnSpec{"tjrq", "日期", ColumnKind::Date, 10},
                                          ColumnSpec{"djh", "单据号", ColumnKind::Text, 15},
                                          ColumnSpec{"ghs_name", partnerCaption<Side>, ColumnKind::Text, 14},
                                          ColumnSpec{"u_name", "业务员", ColumnKind::Text, 7}};

template <PartnerType Side, FixedText Number>
struct Trade {
  static constexpr std::string_view kGoods = joined<"gridSp", Number>, kLines = joined<"gridMx", Number>;
  static constexpr auto kInputs = ui::joinedTables(inputs<Side, Number, false>, std::array{employee<Number>});
  static constexpr ui::EnquiryView kViews[] = {
      sumView<Side, TradeBy::Employee>(joined<"gridYwy", Number>, joined<"rYwy", Number>, "按业务员",
                                       sums<Side, employeeNames>, "u_sn", "u_name", kGoods),
      sumView<Side, TradeBy::Goods>(kGoods, joined<"rSp", Number>, "按商品", goodsSums<Side>, "g_sn", "g_name", kLines),
      sumView<Side, TradeBy::Partner>(joined<"gridDw", Number>, joined<"rDw", Number>,
                                      isSales<Side> ? "按客户" : "按供货商", sums<Side, partnerColumns<Side>>, "ghs_sn",
                                      "ghs_name", kLines),
      sumView<Side, TradeBy::Document>(joined<"gridDjhz", Number>, joined<"rDjhz", Number>, "按单据",
                                       sums<Side, documentNames<Side>>, "djh", "djh", kLines),
      lineView<Side>(kLines, joined<"rMx", Number>)};
  static constexpr ui::EnquiryTab kTab = tab<Number>(isSales<Side> ? "商品销售" : "商品采购", kInputs, kViews);
};

}  // namespace jxc::employee_trade
