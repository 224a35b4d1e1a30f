// 商品销售排行: goods and customers by what they brought, and how fast goods turn over.
#include "core/rights.h"
#include "statistics/screens/trade_columns.h"

namespace jxc {
namespace spxsph_detail {

using namespace trade_columns;

constexpr auto kSide = PartnerType::Customer;
constexpr std::string_view kNothing = "该时间段内没有销售";

/// An order that the operator may not see is not offered.
std::vector<ListItem> orders() {
  std::vector<ListItem> items{{QStringLiteral("按数量"), u"sl"_qs}};
  if (hasRight(kSeesPrice)) items.push_back({QStringLiteral("按金额"), u"je"_qs});
  if (hasRight(kSeesCost)) items.push_back({QStringLiteral("按毛利"), u"lr"_qs});
  return items;
}
std::vector<ListItem> turnOrders() {
  return {{QStringLiteral("按周转率"), u"zzbl"_qs},
          {QStringLiteral("按进货数量"), u"cgsl"_qs},
          {QStringLiteral("按销售数量"), u"xssl"_qs},
          {QStringLiteral("按当前库存"), u"kcsl"_qs}};
}

template <FixedText Number>
constexpr auto kInputs = ui::joinedTables(inputs<kSide, Number, false>,
                                          std::array{
                                              ui::Criterion{Asks::Order, joined<"comPx", Number>, "排行：", orders}});
constexpr ui::Criterion kTurnInputs[] = {
    {Asks::From, "tdate31", "日期："},
    {Asks::To, "tdate32", "至"},
    {Asks::Key, "tkey3", "商品信息："},
    {Asks::GoodsClass, "tsplb3", "商品类别：", goodsClassItems},
    {Asks::Warehouse, "comCk3", "仓库："},
    {Asks::Order, "comPx3", "排行：", turnOrders},
    {.asks = Asks::Box, .name = "chkAll3", .label = "包括只进未销、只销未进的商品", .box = kTurnOfAllGoods}};

template <std::size_t N>
constexpr auto sumsOf(const std::array<ColumnSpec, N>& names) {
  return ui::joinedTables(names, figures<kSide, "">());
}
constexpr auto kGoods = ui::joinedTables(
    goodsNames, figures<kSide, "">(), std::array{ColumnSpec{"kcsl", "当前库存", ColumnKind::Quantity}}, goodsDetails);
constexpr auto kTypes = sumsOf(std::array{ColumnSpec{"kt_name", "客户类型", ColumnKind::Text, 20}});
constexpr auto kRegions = sumsOf(std::array{ColumnSpec{"z_name", "地区", ColumnKind::Text, 20}});
constexpr auto kCustomers =
    sumsOf(std::array{ColumnSpec{"ghs_sn", "客户编号"}, ColumnSpec{"ghs_name", "客户", ColumnKind::Text, 24}});
constexpr auto kTurn =
    ui::joinedTables(goodsNames, std::array{ColumnSpec{"cgsl", "进货数量", ColumnKind::Quantity, 0, {.sum = true}},
                                            ColumnSpec{"xssl", "销售数量", ColumnKind::Quantity, 0, {.sum = true}},
                                            ColumnSpec{"kcsl", "当前库存", ColumnKind::Quantity, 0, {.sum = true}},
                                            ColumnSpec{"zzbl", "周转率(%)", ColumnKind::Percent}});

template <FixedText Number>
constexpr ui::EnquiryView kLines{.grid = {joined<"gridMx", Number>, "明细表", lines<kSide>, kNothing},
                                 .source = tradeLinesOf<kSide>,
                                 .mode = {joined<"rMx", Number>, "明细表"},
                                 .leads = {.document = "gl_djh"}};
constexpr ui::EnquiryView kGoodsViews[] = {{.grid = {"gridSp", "商品排行", kGoods, kNothing, "g_sn"},
                                            .source = goodsRanking,
                                            .mode = {"rSp", "商品排行"},
                                            .chart = {.label = "g_name", .measure = "sl"},
                                            .leads = {"gridMx1", narrowTo<TradeBy::Goods>, "g_name"}},
                                           kLines<"1">};
constexpr ui::EnquiryView kCustomerViews[] = {{.grid = {"gridKh", "客户排行", kCustomers, kNothing, "ghs_sn"},
                                               .source = tradeTotalsOf<kSide, TradeBy::Partner>,
                                               .mode = {"rKh", "按客户"},
                                               .chart = {.label = "ghs_name", .measure = "je"},
                                               .leads = {"gridMx2", narrowTo<TradeBy::Partner>, "ghs_name"}},
                                              {.grid = {"gridLx", "客户类型排行", kTypes, kNothing, "kt_name"},
                                               .source = tradeTotalsOf<kSide, TradeBy::CustomerType>,
                                               .mode = {"rLx", "按客户类型"},
                                               .chart = {.label = "kt_name", .measure = "je"},
                                               .leads = {"gridKh", narrowTo<TradeBy::CustomerType>, "kt_name"}},
                                              {.grid = {"gridDq", "地区排行", kRegions, kNothing, "z_name"},
                                               .source = tradeTotalsOf<kSide, TradeBy::Region>,
                                               .mode = {"rDq", "按地区"},
                                               .chart = {.label = "z_name", .measure = "je"},
                                               .leads = {"gridKh", narrowTo<TradeBy::Region>, "z_name"}},
                                              kLines<"2">};
constexpr ui::EnquiryView kTurnViews[] = {
    {.grid = {"gridZz", "库存周转率", kTurn, "该时间段内没有既进货又销售的商品", "g_sn"},
     .source = stockTurn,
     .mode = {"rZz", "周转率"},
     .chart = {.label = "g_name", .measure = "zzbl"},
     .leads = {"gridMx3", narrowTo<TradeBy::Goods>, "g_name"}},
    kLines<"3">};
constexpr ui::EnquiryTab kTabs[] = {{.name = "cxTab1",
                                     .caption = "商品基本排行",
                                     .criteria = kInputs<"1">,
                                     .views = kGoodsViews,
                                     .search = "btnSearch1",
                                     .period = "btnDate1"},
                                    {.name = "cxTab2",
                                     .caption = "客户排行",
                                     .criteria = kInputs<"2">,
                                     .views = kCustomerViews,
                                     .search = "btnSearch2",
                                     .period = "btnDate2"},
                                    {.name = "cxTab5",
                                     .caption = "库存周转率",
                                     .criteria = kTurnInputs,
                                     .views = kTurnViews,
                                     .search = "btnSearch5",
                                     .period = "btnDate5"}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Spxsph", .title = "商品销售排行", .tabs = kTabs};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace spxsph_detail
}  // namespace jxc
