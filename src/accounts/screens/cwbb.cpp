// 财务报表管理: who owes what, what the shop earned, what it has, and its months as charts. Each figure leads to what
// it is made of.
#include "accounts/balance_sheet.h"
#include "accounts/income_statement.h"
#include "ui/enquiry_screen.h"
#include "ui/joined_tables.h"

namespace jxc {
namespace cwbb_detail {

using ui::Asks;
using ui::ColumnKind;
using ui::ColumnSpec;

constexpr ColumnSpec yuan(std::string_view field, std::string_view caption, int width = 0) {
  return {field, caption, ColumnKind::Total, width};
}

// ---- who owes what -----------------------------------------------------------------------------------------------

constexpr ui::Criterion kOwingCriteria[] = {
    {Asks::Key, "tkey1", "往来单位："},
    {.asks = Asks::Box, .name = "chkYe", .label = "只看有余额的", .box = kOwingOnly, .on = true},
    {.asks = Asks::From, .name = "tdate11", .label = "明细日期：", .ofBelow = true},
    {.asks = Asks::To, .name = "tdate12", .label = "至", .ofBelow = true},
    {.asks = Asks::Kind, .name = "comGl", .label = "单据过滤：", .items = fillOpenOrSettled}};
constexpr ColumnSpec kPartners[] = {{"lx", "类型", ColumnKind::Text, 8},
                                    {"sn", "编号"},
                                    {"name", "往来单位", ColumnKind::Text, 28},
                                    {"lxr", "联系人", ColumnKind::Text, 10},
                                    {"tele", "电话", ColumnKind::Text, 14},
                                    {"ys", "我方应收金额", ColumnKind::Total, 14, {.sum = true}},
                                    {"yf", "我方应付金额", ColumnKind::Total, 14, {.sum = true}}};
constexpr ColumnSpec kOwed[] = {{"rq", "日期", ColumnKind::Date},
                                {"djh", "单据号", ColumnKind::Text, 15},
                                {"zflx", "类型", ColumnKind::Text, 16},
                                {"yfje", "应收(应付)", ColumnKind::Total, 0, {.sum = true}},
                                {"sfje", "已收(已付)", ColumnKind::Total, 0, {.sum = true}},
                                {"wfje", "未收(未付)", ColumnKind::Total, 0, {.sum = true}},
                                {"ljje", "余额", ColumnKind::Total},
                                {"u_name", "经办人"},
                                {"dnote", "备注", ColumnKind::Text, 24},
                                {"a_name", "操作员"}};
constexpr ui::RowsBelow kOwedBelow = {
    .grid = {"gridYsyfMx", "应收应付明细", kOwed, "该时间段内没有往来"},
    .source = {owedLines, kStatementsAreOfTheShop},
    .narrow =
        [](Criteria& criteria, const Row& row) {
          criteria.group = row.text("side");
          criteria.partner = row.text("sn");
        },
    .document = "djh",
    .says = [](const Row& row) { return QStringLiteral("应收应付明细：") + row.text("name"); }};
constexpr ui::EnquiryView kOwing[] = {
    {.grid = {"gridYsyf", "应收应付表", kPartners, "没有应收和应付的往来单位", "rowkey"},
     .source = {partnersOwing, kStatementsAreOfTheShop},
     .below = &kOwedBelow}};

// ---- what the shop earned ----------------------------------------------------------------------------------------

constexpr ui::Criterion kIncomeCriteria[] = {
    {.asks = Asks::From, .name = "tdate21", .label = "日期：", .views = "gridJy"},
    {.asks = Asks::To, .name = "tdate22", .label = "至", .views = "gridJy"},
    {.asks = Asks::Kind, .name = "comNd", .label = "年度：", .items = fillYears, .views = "gridNd"},
    {.asks = Asks::Comparison, .name = "comDb", .label = "对比：", .views = "gridJy"}};
constexpr ColumnSpec kItem{"ts_note", "项目", ColumnKind::Text, 24};
constexpr ColumnSpec kStatement[] = {kItem, yuan("ts_zje", "累计金额", 16), yuan("ts_dj", "本期金额", 16)};
constexpr ColumnSpec kMonths[] = {kItem,
                                  yuan("m1", "1月"),
                                  yuan("m2", "2月"),
                                  yuan("m3", "3月"),
                                  yuan("m4", "4月"),
                                  yuan("m5", "5月"),
                                  yuan("m6", "6月"),
                                  yuan("m7", "7月"),
                                  yuan("m8", "8月"),
                                  yuan("m9", "9月"),
                                  yuan("m10", "10月"),
                                  yuan("m11", "11月"),
                                  yuan("m12", "12月"),
                                  yuan("zj", "合计")};
constexpr ColumnSpec kLines[] = {{"rq", "日期", ColumnKind::Date},
                                 {"gl_djh", "单据号", ColumnKind::Text, 15},
                                 {"lx", "类型", ColumnKind::Text, 16},
                                 {"je", "金额", ColumnKind::Total, 14, {.sum = true}},
                                 {"u_name", "经办人"},
                                 {"dnote", "说明", ColumnKind::Text, 40}};

void narrowToRow(Criteria& criteria, const Row& row) {
  criteria.kind = row.text("code");
  criteria.group = row.text("fy_lx");
}
void narrowToYear(Criteria& criteria, const Row& row) {
  narrowToRow(criteria, row);
  criteria.from = row.text("nf") + QStringLiteral("-01-01");
  criteria.to = row.text("nf") + QStringLiteral("-12-31");
}
QString itemInWords(const Row& row) {
  return QStringLiteral("经营情况明细表：") + row.text("ts_note").trimmed();
}
ui::RowLook lookOfItem(const Row& row) {
  return row.flag("waits") ? ui::RowLook::Muted : ui::RowLook::Normal;
}
constexpr ui::RowsBelow linesBelow(std::string_view grid, ui::Narrow narrow) {
  return {.grid = {grid, "经营情况明细表", kLines, "这一项在该时间段内没有发生"},
          .source = {incomeLines, kStatementsAreOfTheShop},
          .narrow = narrow,
          .document = "gl_djh",
          .says = itemInWords};
}
constexpr ui::RowsBelow kIncomeBelow = linesBelow("gridJyMx", narrowToRow),
                        kMonthsBelow = linesBelow("gridNdMx", narrowToYear);
constexpr std::string_view kCompared[] = {"ts_dj"};
constexpr ui::EnquiryView kIncome[] = {{.grid = {"gridJy", "经营情况表", kStatement, "没有可以查看的项目", "rowkey"},
                                        .source = {incomeStatement, kStatementsAreOfTheShop},
                                        .mode = {"rJy", "本期"},
                                        .compares = kCompared,
                                        .below = &kIncomeBelow,
                                        .rowLook = lookOfItem},
                                       {.grid = {"gridNd", "经营情况表(按月)", kMonths, "没有可以查看的项目", "rowkey"},
                                        .source = {incomeByMonth, kStatementsAreOfTheShop},
                                        .mode = {"rNd", "按月"},
                                        .below = &kMonthsBelow,
                                        .rowLook = lookOfItem}};

// ---- what the shop has -------------------------------------------------------------------------------------------

constexpr ui::Criterion kBalanceCriteria[] = {
    {Asks::Day, "zcfzr", "日期："},
    {.asks = Asks::Box, .name = "chkKc", .label = "另列该日的库存", .box = kStockOfTheDay}};
constexpr ColumnSpec kSheet[] = {{"ts_note", "项目", ColumnKind::Text, 44}, yuan("ts_zje", "金额", 18)};
constexpr ColumnSpec kSheetLines[] = {{"rq", "日期", ColumnKind::Date},
                                      {"gl_djh", "编号", ColumnKind::Text, 15},
                                      {"lx", "类型", ColumnKind::Text, 16},
                                      {"dnote", "说明", ColumnKind::Text, 40},
                                      {"je", "金额", ColumnKind::Total, 14, {.sum = true}}};
constexpr ui::RowsBelow kSheetBelow = {
    .grid = {"gridZcMx", "资产负债明细", kSheetLines, "这一项没有明细"},
    .source = {balanceLines, kStatementsAreOfTheShop},
    .narrow =
        [](Criteria& criteria, const Row& row) {
          criteria.kind = row.text("code");
          criteria.account = row.text("account");
        },
    .has = [](const Row& row) { return row.text("code") != u"100" && !row.text("code").startsWith(u"300"); },
    .document = "gl_djh",
    .says = [](const Row& row) { return QStringLiteral("明细：") + row.text("ts_note").trimmed(); }};
constexpr ui::EnquiryView kBalance[] = {
    {.grid = {"gridZc", "资产负债表", kSheet, "没有可以查看的项目", "rowkey"},
     .source = {balanceSheet, kStatementsAreOfTheShop},
     .below = &kSheetBelow,
     .rowLook = [](const Row& row) { return row.flag("aside") ? ui::RowLook::Muted : ui::RowLook::Normal; }}};

// ---- charts ------------------------------------------------------------------------------------------------------

constexpr ui::Criterion kChartCriteria[] = {
    {.asks = Asks::From, .name = "tdate41", .label = "月份：", .months = true},
    {.asks = Asks::To, .name = "tdate42", .label = "至", .months = true},
    {.asks = Asks::Warehouse, .name = "comCk4", .label = "仓库：", .views = "gridLr gridLrMx"}};
constexpr ColumnSpec kMonthColumn{"js_rq", "月份", ColumnKind::Text, 12};
constexpr ColumnSpec kProfit[] = {kMonthColumn, {"xslr", "利润", ColumnKind::Total, 18, {.sum = true}, kSeesProfit}};
constexpr ColumnSpec kSpent[] = {kMonthColumn, {"xslr", "费用", ColumnKind::Total, 18, {.sum = true}}};
constexpr ColumnSpec kProfitLines[] = {{"rq", "日期", ColumnKind::Date},
                                       {"gl_djh", "单据号", ColumnKind::Text, 15},
                                       {"lx", "类型", ColumnKind::Text, 12},
                                       {"dnote", "商品名称", ColumnKind::Text, 36},
                                       {"je", "利润", ColumnKind::Total, 14, {.sum = true}, kSeesProfit},
                                       {"u_name", "经办人"}};
void narrowToMonth(Criteria& criteria, const Row& row) {
  criteria.from = criteria.to = row.text("js_rq");
}
constexpr std::string_view kNothing = "这几个月没有发生";
constexpr ui::EnquiryView kCharts[] = {{.grid = {"gridLr", "按月的利润图", kProfit, kNothing, "js_rq"},
                                        .source = profitByMonth,
                                        .mode = {"rLr", "按月的利润图"},
                                        .chart = {.label = "js_rq", .measure = "xslr", .first = true, .byTime = true},
                                        .leads = {"gridLrMx", narrowToMonth, "js_rq"}},
                                       {.grid = {"gridLrMx", "利润明细", kProfitLines, kNothing},
                                        .source = profitLines,
                                        .mode = {"rLrMx", "利润明细"},
                                        .leads = {.document = "gl_djh"}},
                                       {.grid = {"gridFy", "按月的费用图", kSpent, kNothing, "js_rq"},
                                        .source = {expensesByMonth, kStatementsAreOfTheShop},
                                        .mode = {"rFy", "按月的费用图"},
                                        .chart = {.label = "js_rq", .measure = "xslr", .first = true, .byTime = true},
                                        .leads = {"gridFyMx", narrowToMonth, "js_rq"}},
                                       {.grid = {"gridFyMx", "费用明细", kLines, kNothing},
                                        .source = {expenseLines, kStatementsAreOfTheShop},
                                        .mode = {"rFyMx", "费用明细"},
                                        .leads = {.document = "gl_djh"}}};

constexpr ui::EnquiryTab kTabs[] = {
    {.name = "cxTab1", .caption = "应收应付表", .criteria = kOwingCriteria, .views = kOwing, .period = "btnDate1"},
    {.name = "cxTab2",
     .caption = "经营情况表",
     .criteria = kIncomeCriteria,
     .views = kIncome,
     .search = "btnSearch2",
     .period = "btnDate2"},
    {.name = "cxTab3",
     .caption = "资产负债表",
     .criteria = kBalanceCriteria,
     .views = kBalance,
     .search = "btnSearch3"},
    {.name = "cxTab4",
     .caption = "财务图表",
     .criteria = kChartCriteria,
     .views = kCharts,
     .search = "btnSearch4",
     .period = "btnDate4",
     .first = ui::FirstPeriod::LastTwelveMonths}};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Cwbb",
    .title = "财务报表管理",
    .tabs = kTabs,
    .explanation = "销售收入按开单金额统计，不论是否已收到；尚未审核的费用和收入也计入经营情况表，审核之前可能变动"};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace cwbb_detail
}  // namespace jxc
