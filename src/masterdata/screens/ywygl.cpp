// 业务员管理: the desk of an employee: his documents of a period and his diary.
#include "masterdata/employees.h"
#include "masterdata/screens/diary_entry_screen.h"
#include "ui/display.h"
#include "ui/enquiry_screen.h"

namespace jxc {
namespace ywygl_detail {

using ui::Asks;
using ui::ColumnKind;

constexpr ui::Criterion kCriteria[] = {{Asks::From, "date1", "单据日期："}, {Asks::To, "date2", "至"}};
constexpr ui::ColumnSpec kUserColumns[] = {
    {"u_name", "员工姓名", ColumnKind::Text, 10}, {"u_duty", "职务", ColumnKind::Text, 8}, {"u_tele", "电话"}};
constexpr ui::ColumnSpec kDocumentColumns[] = {
    {"rq", "日期", ColumnKind::Date},
    {"zflx", "单据类型"},
    {"djh", "单据号", ColumnKind::Text, 16},
    {"dwmc", "往来单位", ColumnKind::Text, 18},
    {"ck_name", "仓库"},
    {"yfje", "应付应收", ColumnKind::Money, 0, {.sum = true}},
    {"sfje", "实付实收", ColumnKind::Money, 0, {.sum = true}},
    {"wfje", "未付未收", ColumnKind::Money, 0, {.sum = true}},
};
constexpr ui::ColumnSpec kDiaryColumns[] = {{"rz_rq", "日期", ColumnKind::Date},
                                            {"rz_note", "日志内容", ColumnKind::Text, 60}};

Sql employees(const Criteria&) {
  return employeeListStatement();
}

QString totals(const ui::Grid& list) {
  const auto money = [](double amount) { return ui::displayNumber(ColumnKind::Money, amount); };
  double bought = 0, sold = 0;
  for (const Row row : list.rows()) {
    const bool isPurchase = row.integer("dsort") <= 2;
    (isPurchase ? bought : sold) += row.number("yfje");
  }
  return QStringLiteral("单据数：%1    采购合计：%2    销售合计：%3    未付未收：%4")
      .arg(list.rowCount())
      .arg(money(bought), money(sold), money(list.sum("wfje")));
}

bool modify(const Row& row, Prompt&) {
  const EmployeeDiaryDraft entry = readEmployeeDiary(row.integer("id"));
  return ui::screenAs<DiaryEntryScreen>("F_Ywyrz_Modi").edit(entry);
}
bool remove(const Row& row, Prompt& prompt) {
  return deleteEmployeeDiary(row.integer("id"), prompt);
}

constexpr NoWarehouse kDiaryHasNone{"a diary is its employee's, wherever he works"};
constexpr ui::EnquirySide kEmployees = {
    .grid = {"gridUser", "员工列表", kUserColumns, "还没有员工"},
    .source = {employees, NoWarehouse{"employees are of the whole shop"}},
    .narrow = [](Criteria& criteria, const Row& row) { criteria.employee = row.text("u_sn"); }};
constexpr ui::EnquiryView kDocuments[] = {{.grid = {"gridDj", "员工单据", kDocumentColumns, "这段时间没有已审核的单据"},
                                           .source = deskDocuments,
                                           .leads = {.document = "djh"},
                                           .foot = {"lTotal", totals}}};
constexpr ui::EnquiryView kDiary[] = {{.grid = {"gridRz", "员工日志", kDiaryColumns, "还没有日志，按F2增加"},
                                       .source = {employeeDiary, kDiaryHasNone},
                                       .leads = {.command = "btnModi"}}};
constexpr ui::EnquiryCommand kDiaryCommands[] = {
    {"btnAdd", "增加", "F2"},
    {.name = "btnModi", .caption = "修改", .key = "F3", .rule = modify},
    {.name = "btnDele", .caption = "删除", .key = "Ctrl+D", .rule = remove},
};
constexpr ui::EnquiryTab kTabs[] = {
    {.name = "cxTab1",
     .caption = "单据",
     .criteria = kCriteria,
     .views = kDocuments,
     .search = "btnSearch",
     .period = "btnMenu1"},
    {.name = "cxTab2", .caption = "日志", .views = kDiary, .commands = kDiaryCommands, .search = {}}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Ywygl",
                                      .title = "业务员管理",
                                      .tabs = kTabs,
                                      .side = &kEmployees,
                                      .first = ui::FirstPeriod::WholeMonth,
                                      .focus = "gridUser"};

struct TF_Ywygl : ui::EnquiryScreen {
  TF_Ywygl() : EnquiryScreen(kEnquiry) {
    on(command("btnAdd"), [this] {
      const auto employee = grid("gridUser").current();
      if (!employee) return;
      const EmployeeDiaryDraft fresh{.id = 0, .employee = employee->text("u_sn"), .date = {}, .note = {}};
      if (ui::screenAs<DiaryEntryScreen>("F_Ywyrz_Add").edit(fresh)) rowsChanged();
    });
  }
};

const ui::RegisteredEnquiry<TF_Ywygl> kRegistered{kEnquiry};

}  // namespace ywygl_detail
}  // namespace jxc
