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

/// The same criteria for the sums: the ledger knows the kinds by its own flags.
template <TradeBy By>
Sql sums(const Criteria& criteria, const Warehouses& warehouses) {
  Criteria ofLedger = criteria;
  ofLedger.kind = criteria.kind.toLower();
  ofLedger.boxes = 0;
  return tradeTotals(kSide, By, ofLedger, warehouses);
}

constexpr auto kGoods = ui::joinedTables(goodsNames, trade_columns::figures<kSide, "">(), goodsDetails);
constexpr auto kDays =
    ui::joinedTables(std::array{ColumnSpec{"tjrq", "日期", ColumnKind::Text, 10}}, trade_columns::figures<kSide, "">());
constexpr ui::EnquiryView kViews[] = {Sales::kViews[0],
                                      Sales::kViews[1],
                                      {.grid = {"gridHz", "汇总表", kGoods, "没有符合条件的商品", "g_sn"},
                                       .source = sums<TradeBy::Goods>,
                                       .mode = {"rHzb", "商品汇总"},
                                       .chart = {.label = "g_name", .measure = "zje"}},
                                      {.grid = {"gridRq", "按日合计", kDays, "这段时间没有销售", "tjrq"},
                                       .source = sums<TradeBy::Day>,
                                       .mode = {"rRq", "按日合计"},
                                       .chart = {.label = "tjrq", .measure = "zje"},
                                       .leads = {"gridDj", narrowTo<TradeBy::Day>, "tjrq"}}};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = Sales::kCriteria, .views = kViews}};
constexpr ui::EnquirySpec kEnquiry = Sales::with(kTabs, tradeCommands<kSide, Sales>);

struct TF_Xsdjcx : TradeListScreen {
  TF_Xsdjcx() : TradeListScreen(kEnquiry, kSide, "F_Yskgl_Sk", "F_Xsth") {}
};

const ui::RegisteredEnquiry<TF_Xsdjcx> kRegistered{kEnquiry};

}  // namespace xsdjcx_detail
}  // namespace jxc
