// 入库日报月报、出库日报月报: what was bought or sold of each goods by day and by month; one description for both
// sides.
#include "statistics/screens/trade_columns.h"

namespace jxc {
namespace rbyb_detail {

using namespace trade_columns;

/// One of the two tabs: sums by partner and goods, sums of the whole day or month, and the lines behind.
template <PartnerType Side, FixedText Number, bool Months>
struct Report {
  static constexpr std::string_view kTime = Months ? "月份" : "日期";
  static constexpr std::string_view kNothing = isSales<Side> ? "该时间段内没有出库" : "该时间段内没有入库";
  static constexpr std::string_view kSums = joined<"gridHz", Number>, kTimes = joined<"gridRq", Number>,
                                    kLines = joined<"gridMx", Number>;
  static constexpr auto kGoodsOf = Months ? TradeBy::PartnerGoodsMonth : TradeBy::PartnerGoodsDay;
  static constexpr auto kAllOf = Months ? TradeBy::Month : TradeBy::Day;
  static constexpr std::array kTimeColumn{ColumnSpec{"tjrq", kTime, ColumnKind::Text, 10}};
  static constexpr auto kSumColumns =
      ui::joinedTables(kTimeColumn, std::array{ColumnSpec{"ghs_name", partnerCaption<Side>, ColumnKind::Text, 18}},
                       goodsNames, figures<Side, "">(), goodsDetails);
  static constexpr auto kTimeColumns = ui::joinedTables(kTimeColumn, figures<Side, "">());
  static constexpr ui::EnquiryView kViews[] = {
      {.grid = {kSums, Months ? "月报表" : "日报表", kSumColumns, kNothing, "rowkey"},
       .source = tradeTotalsOf<Side, kGoodsOf>,
       .mode = {joined<"rHz", Number>, Months ? "月报表" : "日报表"},
       .leads = {kLines, narrowTo<kGoodsOf>, "g_name"}},
      {.grid = {kTimes, Months ? "按月合计" : "按日合计", kTimeColumns, kNothing, "tjrq"},
       .source = tradeTotalsOf<Side, kAllOf>,
       .mode = {joined<"rRq", Number>, Months ? "按月合计" : "按日合计"},
       .chart = {.label = "tjrq", .measure = "zje"},
       .leads = {kSums, narrowTo<kAllOf>, "tjrq"}},
      {.grid = {kLines, "明细表", lines<Side>, kNothing},
       .source = tradeLinesOf<Side>,
       .mode = {joined<"rMx", Number>, "明细表"},
       .leads = {.document = "gl_djh"}}};
  static constexpr ui::EnquiryTab kTab = {.name = joined<"cxTab", Number>,
                                          .caption = Months ? "月报" : "日报",
                                          .criteria = inputs<Side, Number, Months>,
                                          .views = kViews,
                                          .search = joined<"btnSearch", Number>,
                                          .period = joined<"btnDate", Number>};
};

template <PartnerType Side>
constexpr ui::EnquiryTab kTabs[] = {Report<Side, "1", false>::kTab, Report<Side, "2", true>::kTab};
template <PartnerType Side>
constexpr ui::EnquirySpec kEnquiry = {.name = isSales<Side> ? "F_Ckrbyb" : "F_Rkrbyb",
                                      .title = isSales<Side> ? "出库日报月报" : "入库日报月报",
                                      .tabs = kTabs<Side>};

const ui::RegisteredEnquiry<> kPurchases{kEnquiry<PartnerType::Supplier>};
const ui::RegisteredEnquiry<> kSales{kEnquiry<PartnerType::Customer>};

}  // namespace rbyb_detail
}  // namespace jxc
