// 商品采购统计: what was bought: the lines, their sums by goods, and those by class.
#include "statistics/screens/trade_columns.h"

namespace jxc {
namespace spcgtj_detail {

using namespace trade_columns;

constexpr auto kSide = PartnerType::Supplier;
constexpr std::string_view kNothing = "该时间段内没有采购";

constexpr auto kGoods = ui::joinedTables(goodsNames, figures<kSide, "">(), goodsDetails);
constexpr auto kClasses = ui::joinedTables(
    std::array{ColumnSpec{"gc_sn", "类别编号"}, ColumnSpec{"gc_name", "商品类别", ColumnKind::Text, 24}},
    figures<kSide, "">());

constexpr ui::EnquiryView kViews[] = {{.grid = {"gridMx", "商品采购明细表", lines<kSide>, kNothing},
                                       .source = tradeLinesOf<kSide>,
                                       .mode = {"rMxb", "商品采购明细表"},
                                       .leads = {.document = "gl_djh"}},
                                      {.grid = {"gridHz", "商品采购汇总表", kGoods, kNothing, "g_sn"},
                                       .source = tradeTotalsOf<kSide, TradeBy::Goods>,
                                       .mode = {"rHzb", "商品采购汇总表"},
                                       .chart = {.label = "g_name", .measure = "zje"},
                                       .leads = {"gridMx", narrowTo<TradeBy::Goods>, "g_name"}},
                                      {.grid = {"gridFl", "商品采购分类统计表", kClasses, kNothing, "gc_sn"},
                                       .source = tradeTotalsOf<kSide, TradeBy::GoodsClass>,
                                       .mode = {"rFlb", "商品采购分类统计表"},
                                       .chart = {.label = "gc_name", .measure = "zje", .kind = ui::ChartKind::Pie},
                                       .leads = {"gridHz", narrowTo<TradeBy::GoodsClass>, "gc_name"}}};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = inputs<kSide, "1", false>, .views = kViews}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Spcgtj", .title = "商品采购统计", .tabs = kTabs};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace spcgtj_detail
}  // namespace jxc
