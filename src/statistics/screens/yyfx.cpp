// 营业分析: what the shop did in a period on one page, day by day and month by month.
#include "core/clock.h"
#include "statistics/business_day.h"
#include "statistics/screens/business_page.h"
#include "ui/joined_tables.h"

#include <array>

namespace jxc {
namespace yyfx_detail {

using business_page::kCustomers;
using business_page::kSuppliers;
using business_page::yuan;
using ui::Asks;
using ui::ColumnKind;
using ui::ColumnSpec;

constexpr std::string_view kNothing = "这段时间没有进货和销售";

template <FixedText Letters, FixedText Caption>
constexpr auto ofSide(Right right) {
  return ui::joinedTables(business_page::traded<Letters, Caption>(right),
                          std::array{yuan(joined<Letters, "taxje">, joined<Caption, "税额">, right),
                                     yuan(joined<Letters, "zje">, joined<Caption, "总金额">, right)});
}
/// What was bought and sold, with the margin under the name of the amount that it is of.
template <FixedText Margin>
constexpr auto kTraded = ui::joinedTables(
    ofSide<"cg", "采购">(kSuppliers), ofSide<"xs", "销售">(kCustomers),
    std::array{
        yuan("xscb", "成本", kSeesCost), yuan("xslr", "毛利", kSeesProfit),
        ColumnSpec{.field = "lrl", .caption = Margin.letters, .kind = ColumnKind::Percent, .right = kSeesProfit}});
constexpr auto kDays =
    ui::joinedTables(std::array{ColumnSpec{"rq", "日期", ColumnKind::Date, 10}}, kTraded<"毛利率(含税)%">);
constexpr auto kMonths = ui::joinedTables(
    std::array{ColumnSpec{"js_rq", "月份", ColumnKind::Text, 8}}, kTraded<"毛利率(不含税)%">,
    std::array{ColumnSpec{"sl", "月末库存", ColumnKind::Quantity, 8},
               ColumnSpec{.field = "zje", .caption = "库存金额", .kind = ColumnKind::Total, .right = kSeesCost}});
constexpr ColumnSpec kLines[] = {{"gl_kdrq", "日期", ColumnKind::Date},
                                 {"gl_djh", "单据号", ColumnKind::Text, 15},
                                 {"lx", "类型", ColumnKind::Text, 8},
                                 {"ghs_name", "往来单位", ColumnKind::Text, 18},
                                 {"g_sn", "商品编号"},
                                 {"g_name", "商品名称", ColumnKind::Text, 24},
                                 {"gl_sl", "数量", ColumnKind::Quantity, 8},
                                 yuan("cgzje", "采购总金额", kSuppliers),
                                 yuan("xszje", "销售总金额", kCustomers),
                                 yuan("xslr", "毛利", kSeesProfit),
                                 {"ck_name", "仓库"},
                                 {"u_name", "经办人"}};
constexpr std::string_view kCompared[] = {"cgzje", "xszje", "xslr"};

void narrowToDay(Criteria& criteria, const Row& row) {
  criteria.from = criteria.to = row.text("rq");
}
void narrowToMonth(Criteria& criteria, const Row& row) {
  criteria.from = criteria.to = row.text("js_rq");
}

constexpr ui::Criterion kPageCriteria[] = {
    {Asks::From, "tdate11", "日期："}, {Asks::To, "tdate12", "至"}, {Asks::Warehouse, "comCk", "仓库："}};
constexpr ui::Criterion kDayCriteria[] = {{Asks::From, "tdate21", "日期："},
                                          {Asks::To, "tdate22", "至"},
                                          {Asks::Warehouse, "comCk2", "仓库："},
                                          {Asks::Comparison, "comDb2", "对比："}};
constexpr ui::Criterion kMonthCriteria[] = {{.asks = Asks::From, .name = "tdate31", .label = "月份：", .months = true},
                                            {.asks = Asks::To, .name = "tdate32", .label = "至", .months = true},
                                            {Asks::Warehouse, "comCk3", "仓库："},
                                            {Asks::Comparison, "comDb3", "对比："}};
constexpr ui::EnquiryView kPage[] = {{.grid = {"gridZh", "综合分析", business_page::columns, kNothing},
                                      .source = businessFigures,
                                      .page = makeBusinessPage,
                                      .paper = "yyfx"}};
/// The days of a tab, and the lines behind them.
constexpr ui::EnquiryView dayView(std::string_view grid, std::string_view title, std::string_view mode,
                                  std::string_view caption, std::string_view lines) {
  return {.grid = {grid, title, kDays, kNothing, "rq"},
          .source = businessDays,
          .mode = {mode, caption},
          .chart = {.label = "rq", .measure = "xszje", .byTime = true},
          .compares = kCompared,
          .leads = {lines, narrowToDay, "rq"}};
}
constexpr ui::EnquiryView lineView(std::string_view grid, std::string_view mode) {
  return {.grid = {grid, "进销明细", kLines, kNothing},
          .source = businessLines,
          .mode = {mode, "明细表"},
          .leads = {.document = "gl_djh"}};
}
constexpr ui::EnquiryView kByDay[] = {dayView("gridRq", "按日分析", "rRq", "每日合计", "gridMx"),
                                      lineView("gridMx", "rMx")};
constexpr ui::EnquiryView kByMonth[] = {{.grid = {"gridYf", "按月分析", kMonths, "这几个月没有月末库存", "js_rq"},
                                         .source = businessMonths,
                                         .mode = {"rYf", "每月合计"},
                                         .chart = {.label = "js_rq", .measure = "xszje", .byTime = true},
                                         .compares = kCompared,
                                         .leads = {"gridYfRq", narrowToMonth, "js_rq"}},
                                        dayView("gridYfRq", "月内每日", "rYfRq", "月内每日", "gridYfMx"),
                                        lineView("gridYfMx", "rYfMx")};
constexpr ui::EnquiryCommand kPageCommands[] = {{.name = "btnToday", .caption = "今天", .key = "F3"}};
constexpr ui::EnquiryTab kTabs[] = {
    {.name = "cxTab1", .caption = "综合分析", .criteria = kPageCriteria, .views = kPage, .commands = kPageCommands},
    {.name = "cxTab2",
     .caption = "按日分析",
     .criteria = kDayCriteria,
     .views = kByDay,
     .search = "btnSearch2",
     .period = "btnDate2"},
    {.name = "cxTab3",
     .caption = "按月分析",
     .criteria = kMonthCriteria,
     .views = kByMonth,
     .search = "btnSearch3",
     .period = "btnDate3",
     .first = ui::FirstPeriod::LastTwelveMonths}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Yyfx", .title = "营业分析", .tabs = kTabs};

struct TF_Yyfx : ui::EnquiryScreen {
  TF_Yyfx() : EnquiryScreen(kEnquiry) {
    on(command("btnToday"), [this] {
      for (const char* day : {"tdate11", "tdate12"})
        field(day).setText(clock::today());
      search();
    });
  }
};
const ui::RegisteredEnquiry<TF_Yyfx> kRegistered{kEnquiry};

}  // namespace yyfx_detail
}  // namespace jxc
