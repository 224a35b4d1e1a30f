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

/// Fields of quantity, money and profit: of a ledger row "gl_sl" …, of a sum "sl" ….
template <PartnerType Side, FixedText Prefix>
constexpr auto figures() {
  constexpr Right money = seesMoney<Side>;
  constexpr std::array both{
      ColumnSpec{joined<Prefix, "sl">, "数量", ColumnKind::Quantity, 8, {.sum = true}},
      ColumnSpec{joined<Prefix, "je">, "金额", ColumnKind::Total, 0, {.sum = true}, money},
      ColumnSpec{joined<Prefix, "taxje">, "税额", ColumnKind::Total, 0, {.sum = true}, money},
      ColumnSpec{joined<Prefix, "zje">, "总金额", ColumnKind::Total, 0, {.sum = true}, money},
  };
  if constexpr (!isSales<Side>) {
    return both;
  } else {
    return ui::joinedTables(
        both,
        std::array{
            ColumnSpec{joined<Prefix, "zcb">, "成本", ColumnKind::Total, 0, {.sum = true}, kSeesCost},
            ColumnSpec{joined<Prefix, "lr">, "毛利", ColumnKind::Total, 0, {.sum = true}, kSeesCost},
            ColumnSpec{
                .field = "lrl", .caption = "毛利率(%)", .kind = ColumnKind::Percent, .width = 8, .right = kSeesCost}});
  }
}

/// Rows of the ledger.
template <PartnerType Side>
inline constexpr auto lines = ui::joinedTables(
    std::array{ColumnSpec{"gl_kdrq", "日期", ColumnKind::Date}, ColumnSpec{"gl_djh", "单据号", ColumnKind::Text, 15},
               ColumnSpec{"ghs_name", partnerCaption<Side>, ColumnKind::Text, 18}},
    goodsNames,
    std::array{ColumnSpec{.field = "gl_dj", .caption = "单价", .kind = ColumnKind::Money, .right = seesMoney<Side>}},
    figures<Side, "gl_">(),
    std::array{ColumnSpec{"ck_name", "仓库"}, ColumnSpec{"u_name", "经办人"},
               ColumnSpec{"gl_bz", "备注", ColumnKind::Text, 16}});

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
};

}  // namespace jxc::trade_columns
