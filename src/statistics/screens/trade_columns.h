// 购销统计列: columns and inputs that the enquiries of purchases and of sales share, made for a side at compile time.
#pragma once

#include "masterdata/goods_classes.h"
#include "masterdata/screens/goods_columns.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_text.h"
#include "statistics/trade_totals.h"
#include "ui/enquiry_screen.h"
#include "ui/joined_tables.h"

#include <array>

namespace jxc::trade_columns {

using ui::Asks;
using ui::ColumnKind;
using ui::ColumnSpec;

template <PartnerType Side>
inline constexpr bool isSales = Side == PartnerType::Customer;
template <PartnerType Side>
inline constexpr std::string_view partnerCaption = joined<PartnerText<Side>::noun>;

/// Fields of quantity, money and profit: of a ledger row "gl_sl" …, of a sum "sl" …. Beside the names of a line there
/// is room for one amount.
template <PartnerType Side, FixedText Prefix>
constexpr auto figures() {
  constexpr Right money = seesMoney<Side>;
  constexpr std::array both{
      ColumnSpec{joined<Prefix, "sl">, "数量", ColumnKind::Quantity, 8, {.sum = true}},
      ColumnSpec{
          joined<Prefix, "je">, "金额", ColumnKind::Total, 0, {.sum = true, .hidden = !joined<Prefix>.empty()}, money},
      ColumnSpec{joined<Prefix, "taxje">, "税额", ColumnKind::Total, 0, {.sum = true, .hidden = true}, money},
      ColumnSpec{joined<Prefix, "zje">, "总金额", ColumnKind::Total, 0, {.sum = true}, money},
  };
  if constexpr (!isSales<Side>) {
    return both;
  } else {
    return ui::joinedTables(
        both, std::array{ColumnSpec{joined<Prefix, "zcb">, "成本", ColumnKind::Total, 0, {.sum = true}, kSeesCost},
                         ColumnSpec{joined<Prefix, "lr">, "毛利", ColumnKind::Total, 0, {.sum = true}, kSeesProfit},
                         ColumnSpec{.field = "lrl",
                                    .caption = "毛利率(%)",
                                    .kind = ColumnKind::Percent,
                                    .width = 8,
                                    .right = kSeesProfit}});
  }
}

/// Rows of the ledger.
inline constexpr auto goodsOfLine = [] {
  auto columns = goodsNames;
  columns.back().use.hidden = true;  // the unit
  return columns;
}();
template <PartnerType Side>
inline constexpr auto lines = ui::joinedTables(
    std::array{ColumnSpec{"gl_kdrq", "日期", ColumnKind::Date}, ColumnSpec{"gl_djh", "单据号", ColumnKind::Text, 15},
               ColumnSpec{"ghs_name", partnerCaption<Side>, ColumnKind::Text, 12}},
    goodsOfLine,
    std::array{ColumnSpec{.field = "gl_dj", .caption = "单价", .kind = ColumnKind::Money, .right = seesMoney<Side>}},
    figures<Side, "gl_">(),
    std::array{ColumnSpec{"u_name", "经办人", ColumnKind::Text, 7},
               ColumnSpec{.field = "ck_name", .caption = "仓库", .use = {.hidden = true}},
               ColumnSpec{.field = "gl_bz", .caption = "备注", .width = 16, .use = {.hidden = true}}});

/// What is summed, by columns that say what a sum is of.
template <PartnerType Side, const auto& Names>
inline constexpr auto sums = ui::joinedTables(Names, figures<Side, "">());
template <TradeBy By>
inline constexpr std::array timeColumn{ColumnSpec{"tjrq",
                                                  By == TradeBy::Day     ? "日期"
                                                  : By == TradeBy::Month ? "月份"
                                                                         : "年度",
                                                  ColumnKind::Text, 10}};
inline constexpr std::array classColumns{ColumnSpec{"gc_sn", "类别编号"},
                                         ColumnSpec{"gc_name", "商品类别", ColumnKind::Text, 24}};
template <PartnerType Side>
inline constexpr std::array partnerColumns{ColumnSpec{"ghs_sn", joined<PartnerText<Side>::noun, "编号">},
                                           ColumnSpec{"ghs_name", partnerCaption<Side>, ColumnKind::Text, 24}};
template <PartnerType Side>
inline constexpr auto goodsSums =
    ui::joinedTables(goodsNames, figures<Side, "">(), goodsDetails,
                     std::array{ColumnSpec{.field = "gc_name", .caption = "商品类别", .use = {.hidden = true}}});

template <PartnerType Side>
inline constexpr std::string_view nothingTraded = isSales<Side> ? "该时间段内没有销售" : "该时间段内没有采购";

/// The lines behind the sums of a tab.
template <PartnerType Side>
constexpr ui::EnquiryView lineView(std::string_view grid, std::string_view mode, std::string_view caption = "明细表") {
  return {.grid = {grid, caption, lines<Side>, nothingTraded<Side>},
          .source = tradeLinesOf<Side>,
          .mode = {mode, caption},
          .leads = {.document = "gl_djh"}};
}
/// What stands beside an earlier period.
template <PartnerType Side>
inline constexpr std::array<std::string_view, isSales<Side> ? 2 : 1> comparedFigures = [] {
  if constexpr (isSales<Side>)
    return std::array<std::string_view, 2>{"zje", "lr"};
  else
    return std::array<std::string_view, 1>{"zje"};
}();
/// Sums by a grouping; `key` names a row, `label` says what it is of, also below its bar, and Enter leads to the view
/// `to`.
template <PartnerType Side, TradeBy By>
constexpr ui::EnquiryView sumView(std::string_view grid, std::string_view mode, std::string_view caption,
                                  std::span<const ColumnSpec> columns, std::string_view key, std::string_view label,
                                  std::string_view to) {
  // Whose rows are those of a day or month each, has no row beside them in another period.
  constexpr bool isOfTime = By == TradeBy::PartnerGoodsDay || By == TradeBy::PartnerGoodsMonth;
  constexpr bool isTime = By == TradeBy::Day || By == TradeBy::Month || By == TradeBy::Year;
  return {.grid = {grid, caption, columns, nothingTraded<Side>, key},
          .source = tradeTotalsOf<Side, By>,
          .mode = {mode, caption},
          .chart = {.label = label, .measure = "zje", .byTime = isTime},
          .compares = isOfTime ? std::span<const std::string_view>() : comparedFigures<Side>,
          .leads = {to, narrowTo<By>, label}};
}

/// Documents that take goods in, and those that give them back.
template <PartnerType Side>
std::vector<ListItem> kinds() {
  if constexpr (isSales<Side>)
    return {{QStringLiteral("销售和退货"), QString::fromUtf16(allKey)},
            {QStringLiteral("商品销售"), u"xs"_qs},
            {QStringLiteral("顾客退货"), u"xt"_qs}};
  else
    return {{QStringLiteral("进货和退货"), QString::fromUtf16(allKey)},
            {QStringLiteral("采购进货"), u"cj"_qs},
            {QStringLiteral("采购退货"), u"ct"_qs}};
}

/// What is asked for; the names of inputs end in the number of the tab.
template <PartnerType Side, FixedText Number, bool Months>
inline constexpr std::array inputs{
    ui::Criterion{.asks = Asks::From,
                  .name = joined<"tdate", Number, "1">,
                  .label = Months ? "月份：" : "日期：",
                  .months = Months},
    ui::Criterion{.asks = Asks::To, .name = joined<"tdate", Number, "2">, .label = "至", .months = Months},
    ui::Criterion{.asks = Asks::Partner,
                  .name = joined<"tGhs", Number>,
                  .label = joined<PartnerText<Side>::noun, "：">,
                  .pick = pickPartner<Side>},
    ui::Criterion{Asks::Key, joined<"tkey", Number>, "商品信息："},
    ui::Criterion{Asks::GoodsClass, joined<"tsplb", Number>, "商品类别：", goodsClassItems},
    ui::Criterion{Asks::Warehouse, joined<"comCk", Number>, "仓库："},
    ui::Criterion{Asks::Kind, joined<"comLx", Number>, "类型：", kinds<Side>},
    ui::Criterion{Asks::Comparison, joined<"comDb", Number>, "对比："},
};

/// A tab whose inputs end in its number.
template <FixedText Number>
constexpr ui::EnquiryTab tab(std::string_view caption, std::span<const ui::Criterion> criteria,
                             std::span<const ui::EnquiryView> views) {
  return {.name = joined<"cxTab", Number>,
          .caption = caption,
          .criteria = criteria,
          .views = views,
          .search = joined<"btnSearch", Number>,
          .period = joined<"btnDate", Number>};
}

}  // namespace jxc::trade_columns
