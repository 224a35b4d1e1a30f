// 费用及收入: what waits, what counts line by line, and its sums by type and department.
#include "accounts/expenses.h"
#include "accounts/screens/expense_entry.h"
#include "ui/enquiry_screen.h"
#include "ui/progress.h"
#include "ui/refresh_after.h"

namespace jxc {
namespace fyjsr_detail {

using ui::Asks;
using ui::ColumnKind;

std::vector<ListItem> departmentsOrAll() {
  return expenses::fillDepartments(QStringLiteral("全部部门"));
}

constexpr ui::Criterion kWaitingCriteria[] = {{Asks::From, "tdate11", "日期："},
                                              {Asks::To, "tdate12", "至"},
                                              {Asks::Kind, "comFylx1", "项目：", expenses::fillAllTypes},
                                              {Asks::Partner, "comDept1", "部门：", departmentsOrAll}};
constexpr ui::Criterion kAuditedCriteria[] = {
    {Asks::From, "tdate21", "日期："},
    {Asks::To, "tdate22", "至"},
    {Asks::Kind, "comFylx2", "项目：", expenses::fillAllTypes},
    {Asks::Partner, "comDept2", "部门：", departmentsOrAll},
    {.asks = Asks::Key, .name = "tkey2", .label = "查找：", .views = "fyjsrtj"}};

constexpr ui::ColumnSpec kColumns[] = {
    {"fy_rq", "日期", ColumnKind::Date},
    {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"fy_sc", "收支", ColumnKind::Text, 6},
    {"fy_lx", "类型", ColumnKind::Text, 12},
    {"fy_je", "金额", ColumnKind::Money, 0, {.sum = true}},
    {"fy_kmmc", "账户", ColumnKind::Text, 12},
    {"de_name", "部门", ColumnKind::Text, 12},
    {"u_name", "经办人"},
    {"fy_note", "备注", ColumnKind::Text, 24},
    {"a_name", "操作员"},
};
constexpr ui::ColumnSpec kSums[] = {
    {"fy_lx", "类型", ColumnKind::Text, 18},
    {"de_name", "部门", ColumnKind::Text, 18},
    {"fyje", "金额", ColumnKind::Money, 16, {.sum = true}},
    {"fy_note", "类型说明", ColumnKind::Text, 32},
};

constexpr Right kAudits{"rcgl", 13};
constexpr std::string_view kNothing = "该时间段内没有已审核的费用和收入";
constexpr ui::EnquiryCommand kWaitingCommands[] = {
    {.name = "btn_Fy", .caption = "费用", .key = "F6", .opens = "F_Fyjsr_Add"},
    {.name = "btn_Sr", .caption = "收入", .key = "F7", .opens = "F_Fyjsr_Add1"},
    {.name = "btn_Modi", .caption = "修改", .key = "F3", .rule = modifyExpense},
    {.name = "btn_Copy1", .caption = "再记一笔", .key = "F8", .rule = enterExpenseAgain},
    {.name = "btn_Dele",
     .caption = "删除",
     .key = "Ctrl+D",
     .rule = [](const Row& row, Prompt& prompt) { return expenses::remove(row.integer("id"), prompt); }},
    {.name = "btn_Prin1", .caption = "打印单据", .key = "Ctrl+P", .rule = printExpense},
    {.name = "btn_Check1",
     .caption = "审核",
     .key = "F9",
     .right = kAudits,
     .staysInSight = true,
     .rule = [](const Row& row, Prompt& prompt) { return expenses::auditOne(row.text("gl_djh"), prompt); },
     .preview = {"btnPreview1", "审核", "gl_djh"}},
    {.name = "btn_Check", .caption = "审核全部", .key = "Ctrl+F9", .right = kAudits, .staysInSight = true},
};
constexpr ui::EnquiryCommand kAuditedCommands[] = {
    {.name = "btn_Copy2", .caption = "再记一笔", .key = "F8", .views = "fyjsrtj", .rule = enterExpenseAgain},
    {.name = "btn_Prin2", .caption = "打印单据", .key = "Ctrl+P", .views = "fyjsrtj", .rule = printExpense},
    {.name = "btn_UnChk",
     .caption = "取消审核",
     .key = "F9",
     .right = kAudits,
     .staysInSight = true,
     .views = "fyjsrtj",
     .rule = [](const Row& row, Prompt& prompt) { return expenses::cancel(row.integer("id"), prompt); },
     .preview = {"btnPreview2", "取消审核", "gl_djh"}},
};
constexpr ui::EnquiryView kWaiting[] = {
    {.grid = {"fyjsr", "未审核的费用和收入", kColumns, "没有未审核的信息，按F6记费用、F7记收入", "id", "fyjsr"},
     .source = {expenses::waitingLines, expenses::kExpensesHaveNoWarehouse},
     .leads = {.command = "btn_Modi"}}};
constexpr ui::EnquiryView kAudited[] = {{.grid = {"fyjsrtj", "费用收入明细", kColumns, kNothing, "id", "fyjsrtj"},
                                         .source = {expenses::auditedLines, expenses::kExpensesHaveNoWarehouse},
                                         .mode = {"rMxb", "明细表"},
                                         .leads = {.document = "gl_djh"}},
                                        {.grid = {"fyjsrhz", "费用收入汇总", kSums, kNothing, "rowkey"},
                                         .source = {expenses::totals, expenses::kExpensesHaveNoWarehouse},
                                         .mode = {"rHzb", "汇总表"},
                                         .chart = {.label = "fy_lx", .behind = "de_name", .measure = "fyje"},
                                         .leads = {"fyjsrtj",
                                                   [](Criteria& criteria, const Row& row) {
                                                     criteria.kind = row.text("fy_lx");
                                                     criteria.partner = row.text("de_sn");
                                                   },
                                                   "fy_lx"}}};
constexpr ui::EnquiryTab kTabs[] = {{.name = "cxTab1",
                                     .caption = "未审核",
                                     .criteria = kWaitingCriteria,
                                     .views = kWaiting,
                                     .commands = kWaitingCommands,
                                     .period = "btnDate1"},
                                    {.name = "cxTab2",
                                     .caption = "已审核",
                                     .criteria = kAuditedCriteria,
                                     .views = kAudited,
                                     .commands = kAuditedCommands,
                                     .search = "btnSearch2",
                                     .period = "btnDate2"}};
constexpr ui::EnquiryCommand kCommands[] = {
    {.name = "btn_Fylx", .caption = "类型设置", .key = "F4", .opens = "F_Fylx"}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Fyjsr",
                                      .title = "费用及收入",
                                      .tabs = kTabs,
                                      .commands = kCommands,
                                      .focus = "fyjsr",
                                      .printKey = "F11"};

struct TF_Fyjsr : ui::EnquiryScreen {
  TF_Fyjsr() : EnquiryScreen(kEnquiry) {
    on(command("btn_Check"), [this] {
      const ui::Grid& waiting = grid("fyjsr");
      if (waiting.isEmpty()) return;
      ui::refreshAfter(
          [&] { expenses::auditAll(waiting.rows(), prompt(), ui::progressOnDemand(u"正在审核……"_qs, this)); },
          [this] { rowsChanged(); });
    });
  }
};
const ui::RegisteredEnquiry<TF_Fyjsr> kRegistered{kEnquiry};

}  // namespace fyjsr_detail
}  // namespace jxc
