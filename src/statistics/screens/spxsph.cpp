// 商品销售排行: goods and customers by what they brought, and how fast goods turn over.
#include "core/rights.h"
#include "statistics/screens/trade_columns.h"
#include "statistics/screens/trade_screen.h"

namespace jxc {
namespace spxsph_detail {

using namespace trade_columns;

constexpr auto kSide = PartnerType::Customer;

/// An order that the operator may not see is not offered.
std::vector<ListItem> orders() {
  std::vector<ListItem> items{{QStringLiteral("按数量"), u"sl"_qs}};
  if (hasRight(kSeesPrice)) items.push_back({QStringLiteral("按金额"), u"je"_qs});
  if (hasRight(kSeesProfit)) items.push_back({QStringLiteral("按毛利"), u"lr"_qs});
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

constexpr auto kGoods = ui::joinedTables(
    goodsNames, figures<kSide, "">(), std::array{ColumnSpec{"kcsl", "当前库存", ColumnKind::Quantity}}, goodsDetails);
constexpr std::array kTypeColumn{ColumnSpec{"kt_name", "客户类型", ColumnKind::Text, 20}},
    kRegionColumn{ColumnSpec{"z_name", "地区", ColumnKind::Text, 20}};
constexpr auto kTypes = sums<kSide, kTypeColumn>, kRegions = sums<kSide, kRegionColumn>;
constexpr auto kCustomers = sums<kSide, partnerColumns<kSide>>;
constexpr auto kTurn =
    ui::joinedTables(goodsNames, std::array{ColumnSpec{"cgsl", "进货数量", ColumnKind::Quantity, 0, {.sum = true}},
                                            ColumnSpec{"xssl", "销售数量", ColumnKind::Quantity, 0, {.sum = true}},
                                            ColumnSpec{"kcsl", "当前库存", ColumnKind::Quantity, 0, {.sum = true}},
                                            ColumnSpec{"zzbl", "周转率(%)", ColumnKind::Percent}});

constexpr ui::EnquiryView kRanking = [] {
  auto view = sumView<kSide, TradeBy::Goods>("gridSp", "rSp", "商品排行", kGoods, "g_sn", "g_name", "gridMx1");
  view.source = goodsRanking;
  view.chart.measure = "sl";
  return view;
}();
constexpr ui::EnquiryView kGoodsViews[] = {kRanking, lineView<kSide>("gridMx1", "rMx1")};
constexpr ui::EnquiryView kCustomerViews[] = {
    sumView<kSide, TradeBy::Partner>("gridKh", "rKh", "按客户", kCustomers, "ghs_sn", "ghs_name", "gridMx2"),
    sumView<kSide, TradeBy::CustomerType>("gridLx", "rLx", "按客户类型", kTypes, "kt_name", "kt_name", "gridKh"),
    sumView<kSide, TradeBy::Region>("gridDq", "rDq", "按地区", kRegions, "z_name", "z_name", "gridKh"),
    lineView<kSide>("gridMx2", "rMx2")};
constexpr ui::EnquiryView kTurnViews[] = {
    {.grid = {"gridZz", "库存周转率", kTurn, "该时间段内没有既进货又销售的商品", "g_sn"},
     .source = stockTurn,
     .mode = {"rZz", "周转率"},
     .chart = {.label = "g_name", .measure = "zzbl"},
     .leads = {"gridMx3", narrowTo<TradeBy::Goods>, "g_name"}},
    lineView<kSide>("gridMx3", "rMx3")};
constexpr ui::EnquiryTab kTabs[] = {tab<"1">("商品基本排行", kInputs<"1">, kGoodsViews),
                                    tab<"2">("客户排行", kInputs<"2">, kCustomerViews),
                                    tab<"5">("库存周转率", kTurnInputs, kTurnViews)};
constexpr std::array kCommands{furtherConditions};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Spxsph", .title = "商品销售排行", .tabs = kTabs, .commands = kCommands};

const ui::RegisteredEnquiry<TradeScreen> kRegistered{kEnquiry};

}  // namespace spxsph_detail
}  // namespace jxc
