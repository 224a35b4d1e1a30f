// 商品采购统计: what was bought: the lines, their sums by goods, and those by class.
#include "statistics/screens/trade_columns.h"

namespace jxc {
namespace spcgtj_detail {

using namespace trade_columns;

constexpr auto kSide = PartnerType::Supplier;
constexpr auto kClasses = sums<kSide, classColumns>;
constexpr ui::EnquiryView kGoods = sumView<kSide, TradeBy::Goods>("gridHz", "rHzb", "商品采购汇总表", goodsSums<kSide>,
                                                                  "g_sn", "g_name", "gridMx"),
                          kByClass = [] {
                            auto view = sumView<kSide, TradeBy::GoodsClass>("gridFl", "rFlb", "商品采购分类统计表",
                                                                            kClasses, "gc_sn", "gc_name", "gridHz");
                            view.chart.kind = ui::ChartKind::Pie;
                            return view;
                          }();
constexpr ui::EnquiryView kViews[] = {lineView<kSide>("gridMx", "rMxb", "商品采购明细表"), kGoods, kByClass};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = inputs<kSide, "1", false>, .views = kViews}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Spcgtj", .title = "商品采购统计", .tabs = kTabs};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace spcgtj_detail
}  // namespace jxc
