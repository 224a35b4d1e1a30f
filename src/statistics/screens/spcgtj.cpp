// 商品采购统计: what was bought: the lines, their sums by goods, and those by class.
#include "statistics/screens/trade_columns.h"
#include "statistics/screens/trade_screen.h"

namespace jxc {
namespace spcgtj_detail {

using namespace trade_columns;

constexpr auto kSide = PartnerType::Supplier;
constexpr auto kClasses = sums<kSide, classColumns>;
constexpr ui::EnquiryView byClass(std::string_view grid, std::string_view mode, std::string_view caption, bool drawn) {
  auto view = sumView<kSide, TradeBy::GoodsClass>(grid, mode, caption, kClasses, "gc_sn", "gc_name", "gridHz");
  view.chart.kind = ui::ChartKind::Pie;
  view.chart.first = drawn;
  return view;
}
constexpr ui::EnquiryView kViews[] = {
    lineView<kSide>("gridMx", "rMxb", "商品采购明细表"),
    sumView<kSide, TradeBy::Goods>("gridHz", "rHzb", "商品采购汇总表", goodsSums<kSide>, "g_sn", "g_name", "gridMx"),
    byClass("gridFl", "rFlb", "商品采购分类统计表", false), byClass("gridTb", "rTb", "商品采购额分类图表显示", true)};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = inputs<kSide, "1", false>, .views = kViews}};
constexpr std::array kCommands{furtherConditions};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Spcgtj", .title = "商品采购统计", .tabs = kTabs, .commands = kCommands};

const ui::RegisteredEnquiry<TradeScreen> kRegistered{kEnquiry};

}  // namespace spcgtj_detail
}  // namespace jxc
