#include "statistics/screens/spxstj_fx.h"

#include "statistics/screens/trade_columns.h"

namespace jxc {
namespace spxstj_fx_detail {

using namespace trade_columns;

constexpr auto kSide = PartnerType::Customer;
template <TradeBy Time>
constexpr auto kColumns = sums<kSide, timeColumn<Time>>;
template <TradeBy Time>
constexpr ui::EnquiryView overTime(std::string_view grid, std::string_view mode, std::string_view caption) {
  auto view = sumView<kSide, Time>(grid, mode, caption, kColumns<Time>, "tjrq", "tjrq", "gridMx");
  view.chart.first = true;
  return view;
}
constexpr ui::EnquiryView kViews[] = {
    overTime<TradeBy::Month>("gridYf", "rYf", "按月"), overTime<TradeBy::Day>("gridRq", "rRq", "按日"),
    overTime<TradeBy::Year>("gridNd", "rNd", "按年"), lineView<kSide>("gridMx", "rMx")};
constexpr ui::Criterion kCriteria[] = {
    {Asks::From, "tdate1", "日期："}, {Asks::To, "tdate2", "至"}, {Asks::Comparison, "comDb", "对比："}};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = kCriteria, .views = kViews}};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Spxstj_Fx", .title = "商品销售分析", .tabs = kTabs, .first = ui::FirstPeriod::YearToToday};

const ui::RegisteredEnquiry<TF_Spxstj_Fx> kRegistered{kEnquiry};

}  // namespace spxstj_fx_detail

TF_Spxstj_Fx::TF_Spxstj_Fx() : EnquiryScreen(spxstj_fx_detail::kEnquiry) {}

void TF_Spxstj_Fx::analyse(const Criteria& criteria, const QString& words) {
  asked_ = criteria;
  setWindowTitle(QStringLiteral("商品销售分析") + (words.isEmpty() ? QString() : QStringLiteral("：") + words));
  showModal();
  asked_ = {};
}

void TF_Spxstj_Fx::complete(Criteria& criteria) const {
  Criteria all = asked_;
  all.from = criteria.from;
  all.to = criteria.to;
  all.compare = criteria.compare;
  criteria = all;
}

}  // namespace jxc
