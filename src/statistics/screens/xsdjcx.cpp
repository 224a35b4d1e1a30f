// 销售退货查询: audited sales and returns of customers: what is open of them, collecting, whole return, cancel; their
// goods summed, and each day as a chart.
#include "statistics/screens/trade_columns.h"
#include "stock/screens/trade_list_screen.h"

namespace jxc {
namespace xsdjcx_detail {

using namespace document_list_screen;  // NOLINT(google-build-using-namespace): inside this file's own namespace
constexpr PartnerType kSide = PartnerType::Customer;

using Sales = List<"F_Xsdjcx", "销售退货查询", SeveralKinds | OfCustomers | WithMoney,
                   DocumentSet<families::sale, families::saleReturn>, "xsthmxb">;

template <Sql (*Of)(const Criteria&, const Warehouses&)>
Sql ofLedger(const Criteria& criteria, const Warehouses& warehouses) {
  return Of(asDocuments(criteria), warehouses);
}
void toDay(Criteria& criteria, const Row& day) {
  narrowTo<TradeBy::Day>(criteria, day);
  criteria.order.clear();  // the day of the document, also where the list goes by the audit
}

constexpr auto kLines = ui::joinedTables(
    std::array{ColumnSpec{"rq", "日期", ColumnKind::Date}, ColumnSpec{"djh", "单据号", ColumnKind::Text, 15},
               ColumnSpec{"ghs_name", "客户", ColumnKind::Text, 12}},
    trade_columns::goodsOfLine,
    std::array{ColumnSpec{"gc_name", "商品类别", ColumnKind::Text, 9},
               ColumnSpec{.field = "gl_dj", .caption = "单价", .kind = ColumnKind::Money, .right = kSeesPrice}},
    trade_columns::figures<kSide, "gl_">(),
    std::array{ColumnSpec{.field = "gtype", .caption = "单据类型", .use = {.hidden = true}},
               ColumnSpec{.field = "ck_name", .caption = "仓库", .use = {.hidden = true}},
               ColumnSpec{.field = "u_name", .caption = "经办人", .use = {.hidden = true}},
               ColumnSpec{.field = "gl_bz", .caption = "备注", .use = {.hidden = true}},
               ColumnSpec{.field = "kh_lxr", .caption = "联系人", .use = {.hidden = true}},
               ColumnSpec{.field = "kh_tele", .caption = "联系电话", .use = {.hidden = true}},
               ColumnSpec{.field = "kh_address", .caption = "地址", .use = {.hidden = true}}});
constexpr auto kGoods =
    ui::joinedTables(trade_columns::goodsSums<kSide>, std::array{ColumnSpec{"kcsl", "当前库存", ColumnKind::Quantity}});
constexpr auto kDays = trade_columns::sums<kSide, trade_columns::timeColumn<TradeBy::Day>>;
constexpr ui::EnquiryView kViews[] = {Sales::kViews[0],
                                      {.grid = {"gridMx", "明细表", kLines, "没有符合条件的商品", "rowkey"},
                                       .source = documentSales,
                                       .mode = {"rMxb", "明细表"},
                                       .leads = {.document = "djh"},
                                       .paper = Sales::kViews[1].paper},
                                      {.grid = {"gridHz", "汇总表", kGoods, "没有符合条件的商品", "g_sn"},
                                       .source = ofLedger<goodsRanking>,
                                       .mode = {"rHzb", "商品汇总"},
                                       .chart = {.label = "g_name", .measure = "zje"},
                                       .leads = {"gridMx", narrowTo<TradeBy::Goods>, "g_name"}},
                                      {.grid = {"gridRq", "按日合计", kDays, "这段时间没有销售", "tjrq"},
                                       .source = ofLedger<tradeTotalsOf<kSide, TradeBy::Day>>,
                                       .mode = {"rRq", "按日合计"},
                                       .chart = {.label = "tjrq", .measure = "zje"},
                                       .leads = {"gridDj", toDay, "tjrq"}}};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = Sales::kCriteria, .views = kViews}};
constexpr ui::EnquirySpec kEnquiry = Sales::with(kTabs, tradeCommands<kSide, Sales>);

const ui::RegisteredEnquiry<TradeListOf<kSide>> kRegistered{kEnquiry};

}  // namespace xsdjcx_detail
}  // namespace jxc
