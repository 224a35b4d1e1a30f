// 现金银行: money by account: lines that wait, lines that count, and each account's total.
#include "accounts/cash_accounts.h"
#include "accounts/screens/cash_line_screen.h"
#include "ui/enquiry_screen.h"

namespace jxc {
namespace xjyh_detail {

using ui::Asks;
using ui::ColumnKind;

std::vector<ListItem> accountsOrAll() {
  return cash::fillAccounts(QStringLiteral("全部账户"));
}
bool recompute(const Criteria& criteria, Prompt& prompt) {
  return cash::recomputeAccounts(criteria.account, criteria.from, prompt);
}

constexpr ui::Criterion kWaitingCriteria[] = {{Asks::From, "tdate11", "日期："},
                                              {Asks::To, "tdate12", "至"},
                                              {Asks::Account, "comYhzh1", "账户：", accountsOrAll},
                                              {Asks::Key, "tkey1", "查找："}};
constexpr ui::Criterion kAuditedCriteria[] = {{Asks::From, "tdate21", "日期："},
                                              {Asks::To, "tdate22", "至"},
                                              {Asks::Account, "comYhzh2", "账户：", accountsOrAll},
                                              {Asks::Key, "tkey2", "查找："}};
constexpr ui::ColumnSpec kWaitingColumns[] = {
    {"xj_rq", "日期", ColumnKind::Date},
    {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"xj_dlx", "类型", ColumnKind::Text, 14},
    {"xj_kmmc", "账户", ColumnKind::Text, 14},
    {"xj_je", "金额", ColumnKind::Money, 0, {.sum = true}},
    {"u_name", "经办人"},
    {"xj_note", "备注", ColumnKind::Text, 24},
    {"a_name", "操作员"},
};
constexpr ui::ColumnSpec kAuditedColumns[] = {
    {"xj_kmmc", "账户", ColumnKind::Text, 12},
    {"xj_rq", "日期", ColumnKind::Date},
    {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"xj_dlx", "类型", ColumnKind::Text, 14},
    {"xj_je", "金额", ColumnKind::Money, 0, {.sum = true}},
    {"xj_ljje", "账户余额", ColumnKind::Money},
    {"ghs_name", "往来单位", ColumnKind::Text, 18},
    {"ck_name", "仓库"},
    {"u_name", "经办人"},
    {"xj_note", "备注", ColumnKind::Text, 24},
    {"a_name", "操作员"},
};
constexpr ui::ColumnSpec kTotalColumns[] = {
    {"xj_kmmc", "账户", ColumnKind::Text, 24},
    {"sfje", "本期收支", ColumnKind::Money, 16, {.sum = true}},
    {"ljje", "期末余额", ColumnKind::Money, 16, {.sum = true}},
};

constexpr Right kAudits{"rcgl", 14};
constexpr std::string_view kNothing = "该时间段内没有收付";
constexpr ui::EnquiryCommand kWaitingCommands[] = {
    {.name = "btn_Rukuan", .caption = "进款", .key = "F6", .opens = "F_Xjyh_Jk"},
    {.name = "btn_Chuk", .caption = "出款", .key = "F7", .opens = "F_Xjyh_Ck"},
    {.name = "btn_Yhzz", .caption = "银行转账", .key = "F8", .opens = "F_Xjyh_Zz"},
    {.name = "btn_Modi", .caption = "修改", .key = "F3", .rule = modifyCashLine},
    {.name = "btn_Dele",
     .caption = "删除",
     .key = "Ctrl+D",
     .rule = [](const Row& row, Prompt& prompt) { return cash::deleteLine(row.text("gl_djh"), prompt); }},
    {.name = "btn_Prin", .caption = "打印", .key = "Ctrl+P", .rule = printCashSlip},
    {.name = "btn_Check",
     .caption = "审核",
     .key = "F9",
     .right = kAudits,
     .staysInSight = true,
     .rule = [](const Row& row, Prompt& prompt) { return cash::auditLine(row.text("gl_djh"), prompt); },
     .preview = {"btnPreview1", "审核", "gl_djh"}},
};
constexpr ui::EnquiryCommand kAuditedCommands[] = {
    {.name = "btn_Cxjs", .caption = "重新计算", .key = "F8", .whole = recompute},
    {.name = "btn_Prin2", .caption = "打印", .key = "Ctrl+P", .views = "xjyhtj", .rule = printCashSlip},
    {.name = "btn_UnChk",
     .caption = "取消审核",
     .key = "F9",
     .right = kAudits,
     .staysInSight = true,
     .views = "xjyhtj",
     .rule = [](const Row& row, Prompt& prompt) { return cash::cancelLine(row.integer("id"), prompt); },
     .preview = {"btnPreview2", "取消审核", "gl_djh"}},
};
constexpr ui::EnquiryView kWaiting[] = {
    {.grid = {"xjyh", "未审核的收付", kWaitingColumns, "没有未审核的信息，按F6进款、F7出款", "id", "xjyh"},
     .source = {cash::waitingLines, cash::kCashHasNoWarehouse},
     .leads = {.command = "btn_Modi"}}};
constexpr ui::EnquiryView kAudited[] = {
    {.grid = {"xjyhtj", "收付明细", kAuditedColumns, kNothing, "id", "xjyhtj"},
     .source = {cash::auditedLines, cash::kCashHasNoWarehouse},
     .mode = {"rMxb", "明细表"},
     .leads = {.document = "gl_djh"}},
    {.grid = {"xjyhhz", "账户汇总", kTotalColumns, kNothing, "xj_kmmc"},
     .source = {cash::accountTotals, cash::kCashHasNoWarehouse},
     .mode = {"rHzb", "汇总表"},
     .chart = {.label = "xj_kmmc", .measure = "ljje"},
     .leads = {"xjyhtj", [](Criteria& criteria, const Row& row) { criteria.account = row.text("xj_kmmc"); },
               "xj_kmmc"}}};
constexpr ui::EnquiryTab kTabs[] = {
    {"cxTab1", "现金银行", kWaitingCriteria, kWaiting, kWaitingCommands, "btnSearch1", "F2", "btnDate1"},
    {"cxTab2", "现金银行统计", kAuditedCriteria, kAudited, kAuditedCommands, "btnSearch2", "F2", "btnDate2"}};
constexpr ui::EnquiryCommand kCommands[] = {
    {.name = "btn_Yhzh", .caption = "期初建账", .key = "F4", .opens = "F_Yhzh"}};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Xjyh", .title = "现金银行", .tabs = kTabs, .commands = kCommands, .focus = "xjyh"};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace xjyh_detail
}  // namespace jxc
