// 业务员销售统计: what each employee sold, what he has earned by it, and what he collected.
#include "statistics/commission.h"
#include "statistics/employee_totals.h"
#include "statistics/screens/employee_trade.h"

namespace jxc {
namespace ywyxstj_detail {

using namespace employee_trade;

// A commission on sales tells of sale amounts, one on profit of cost.
constexpr ColumnSpec kBySales{"xstc", "销售提成", ColumnKind::Total, 0, {.sum = true}, kSeesPrice};
constexpr ColumnSpec kByProfit{"lrtc", "毛利提成", ColumnKind::Total, 0, {.sum = true}, kSeesProfit};

constexpr ui::Criterion kInputs[] = {{Asks::From, "tdate21", "日期："}, {Asks::To, "tdate22", "至"}, employee<"2">};
constexpr ColumnSpec kCommission[] = {{.field = "g_sn", .caption = "编号", .use = {.hidden = true}},
                                      {"hz_txt1", "业务员", ColumnKind::Text, 8},
                                      {"hz_txt2", "提成方式", ColumnKind::Text, 26},
                                      {"hz_glkczje", "比例(%)", ColumnKind::Percent, 7},
                                      {"hz_kc", "应收金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
                                      {"hz_kczje", "实收金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
                                      {"hz_rksl", "毛利", ColumnKind::Total, 0, {.sum = true}, kSeesProfit},
                                      {"hz_rkzje", "提成毛利", ColumnKind::Total, 0, {.sum = true}, kSeesProfit},
                                      {"hz_glkc", "提成起点", ColumnKind::Money, 8},
                                      kBySales,
                                      kByProfit};
constexpr ColumnSpec kCommissionLines[] = {{"rq", "日期", ColumnKind::Date},
                                           {"djh", "单据号", ColumnKind::Text, 15},
                                           {"u_name", "业务员", ColumnKind::Text, 6},
                                           {"dwmc", "客户", ColumnKind::Text, 12},
                                           {"zy", "摘要", ColumnKind::Text, 22},
                                           {"sl", "数量", ColumnKind::Quantity, 6},
                                           kBySales,
                                           kByProfit,
                                           {"yfje", "应收金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
                                           {"sfje", "实收金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
                                           {"lr", "毛利", ColumnKind::Total, 0, {.sum = true}, kSeesProfit},
                                           {"cglr", "提成毛利", ColumnKind::Total, 0, {.sum = true}, kSeesProfit}};

/// The commission without saying by what would tell of cost whoever may see prices only.
Computation apart(const Criteria& criteria, const Warehouses& warehouses) {
  return [all = commissions(criteria, warehouses)](EnquiryReader& reader) {
    constexpr std::string_view kEither[] = {"hz_ckzje"};
    return all(reader).without(kEither);
  };
}
bool isEarned(const Row& row) {
  return row.text("hz_flag") != QStringView(kNotYetEarned);
}

constexpr std::string_view kNoneEarns = "该时间段内没有提成：请在“员工设置”中设置提成比例";
constexpr ui::EnquiryView kCommissionViews[] = {
    {.grid = {"gridTc", "业务员提成", kCommission, kNoneEarns, "rowkey"},
     .source = apart,
     .mode = {"rTchz", "提成汇总"},
     .leads = {"gridTcmx", [](Criteria& criteria, const Row& row) { criteria.employee = row.text("g_sn"); }, "hz_txt1"},
     .rowLook = [](const Row& row) { return isEarned(row) ? ui::RowLook::Normal : ui::RowLook::Warning; },
     .counts = isEarned},
    {.grid = {"gridTcmx", "业务员提成明细", kCommissionLines, kNoneEarns},
     .source = commissionLines,
     .mode = {"rTcmx", "提成明细"},
     .leads = {.document = "djh"}}};

constexpr ui::Criterion kReceiptInputs[] = {
    {Asks::From, "tdate31", "日期："},
    {Asks::To, "tdate32", "至"},
    {.asks = Asks::Partner, .name = "tKh3", .label = "客户：", .pick = pickPartner<PartnerType::Customer>},
    {Asks::Key, "tkey3", "单号备注："},
    employee<"3">};
constexpr auto kCollected = ui::joinedTables(
    employeeNames, std::array{ColumnSpec{"bs", "收款笔数", ColumnKind::Quantity, 8, {.sum = true}},
                              ColumnSpec{"sfje", "收款金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice}});
constexpr ColumnSpec kReceipts[] = {
    {"k_rq", "日期", ColumnKind::Date},        {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"kh_name", "客户", ColumnKind::Text, 20}, {"k_sfje", "收款金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
    {"k_fkfs", "账户", ColumnKind::Text, 12},  {"u_name", "业务员", ColumnKind::Text, 10},
    {"k_note", "备注", ColumnKind::Text, 40}};
constexpr std::string_view kNoReceipt = "该时间段内没有收款";
constexpr ui::EnquiryView kReceiptViews[] = {{.grid = {"gridSk", "业务员收款", kCollected, kNoReceipt, "u_sn"},
                                              .source = {receiptsByEmployee, kReceiptsHaveNoWarehouse},
                                              .mode = {"rSkhz", "收款汇总"},
                                              .chart = {.label = "u_name", .measure = "sfje"},
                                              .leads = {"gridSkmx", narrowTo<TradeBy::Employee>, "u_name"}},
                                             {.grid = {"gridSkmx", "业务员收款明细", kReceipts, kNoReceipt},
                                              .source = {receipts, kReceiptsHaveNoWarehouse},
                                              .mode = {"rSkmx", "收款明细"},
                                              .leads = {.document = "gl_djh"}}};
constexpr ui::EnquiryTab kTabs[] = {Trade<PartnerType::Customer, "1">::kTab,
                                    tab<"2">("业务员提成", kInputs, kCommissionViews),
                                    tab<"3">("收款", kReceiptInputs, kReceiptViews)};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Ywyxstj", .title = "业务员销售统计", .tabs = kTabs};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace ywyxstj_detail
}  // namespace jxc
