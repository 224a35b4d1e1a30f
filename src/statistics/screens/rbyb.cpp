// 入库日报月报、出库日报月报: what was bought or sold of each goods by day and by month; one description for both
// sides.
#include "statistics/screens/trade_columns.h"

namespace jxc {
namespace rbyb_detail {

using namespace trade_columns;

/// One of the two tabs: sums by partner and goods, sums of the whole day or month, and the lines behind.
template <PartnerType Side, FixedText Number, bool Months>
struct Report {
  static constexpr std::string_view kSums = joined<"gridHz", Number>, kTimes = joined<"gridRq", Number>,
                                    kLines = joined<"gridMx", Number>;
  static constexpr auto kGoodsOf = Months ? TradeBy::PartnerGoodsMonth : TradeBy::PartnerGoodsDay;
  static constexpr auto kAllOf = Months ? TradeBy::Month : TradeBy::Day;
  static constexpr auto kSumColumns = ui::joinedTables(
      timeColumn<kAllOf>, std::array{ColumnSpec{"ghs_name", partnerCaption<Side>, ColumnKind::Text, 18}}, goodsNames,
      figures<Side, "">(), goodsDetails);
  static constexpr auto kTimeColumns = sums<Side, timeColumn<kAllOf>>;
  static constexpr ui::EnquiryView kGoods = [] {
    auto view = sumView<Side, kGoodsOf>(kSums, joined<"rHz", Number>, Months ? "月报表" : "日报表", kSumColumns,
                                        "rowkey", "g_name", kLines);
    view.source = latestFirstOf<Side, kGoodsOf>;
    view.chart = {};
    return view;
  }();
  static constexpr ui::EnquiryView kViews[] = {
      kGoods,
      sumView<Side, kAllOf>(kTimes, joined<"rRq", Number>, Months ? "按月合计" : "按日合计", kTimeColumns, "tjrq",
                            "tjrq", kSums),
      lineView<Side>(kLines, joined<"rMx", Number>)};
  static constexpr ui::EnquiryTab kTab = tab<Number>(Months ? "月报" : "日报", inputs<Side, Number, Months>, kViews);
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
