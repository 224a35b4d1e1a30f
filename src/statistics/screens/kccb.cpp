// 库存成本统计: stock at the end of each month beside what was bought and sold in it, as a list and as a chart.
#include "statistics/month_costs.h"
#include "ui/enquiry_screen.h"

namespace jxc::kccb_detail {

using ui::Asks;
using ui::ColumnKind;
using ui::ColumnSpec;

constexpr ui::Criterion kCriteria[] = {{.asks = Asks::From, .name = "tdate1", .label = "月份：", .months = true},
                                       {.asks = Asks::To, .name = "tdate2", .label = "至", .months = true},
                                       {Asks::Warehouse, "comCk", "仓库："}};
constexpr ColumnSpec pieces(std::string_view field, std::string_view caption) {
  return {field, caption, ColumnKind::Quantity, 0, {.sum = true}};
}
constexpr ColumnSpec yuan(std::string_view field, std::string_view caption, Right right) {
  return {field, caption, ColumnKind::Total, 0, {.sum = true}, right};
}
constexpr ColumnSpec hidden(std::string_view field, std::string_view caption, Right right) {
  return {field, caption, ColumnKind::Total, 0, {.sum = true, .hidden = true}, right};
}
// What stood there at the end of one month is no part of what stood there at the end of another.
constexpr ColumnSpec kColumns[] = {
    {"js_rq", "月份", ColumnKind::Text, 9},
    {"sl", "期末库存数量", ColumnKind::Quantity},
    {.field = "zje", .caption = "期末库存金额", .kind = ColumnKind::Total, .right = kSeesStockCost},
    pieces("cgsl", "进货数量"),
    yuan("cgzje", "进货金额", kSeesCost),
    hidden("cgje", "进货税前金额", kSeesCost),
    hidden("cgtax", "进货税额", kSeesCost),
    pieces("xssl", "销售数量"),
    yuan("xszje", "销售金额", kSeesPrice),
    hidden("xsje", "销售税前金额", kSeesPrice),
    hidden("xstax", "销售税额", kSeesPrice),
    yuan("zcb", "销售成本", kSeesCost),
    yuan("lr", "毛利", kSeesProfit),
};
constexpr ui::EnquiryView kViews[] = {{.grid = {"gridCb", "库存成本", kColumns, "这些月份没有库存和业务", "js_rq"},
                                       .source = monthCosts,
                                       .chart = {.label = "js_rq", .measure = "zje", .byTime = true}}};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = kCriteria, .views = kViews}};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Kccb", .title = "库存成本统计", .tabs = kTabs, .first = ui::FirstPeriod::LastTwelveMonths};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace jxc::kccb_detail
