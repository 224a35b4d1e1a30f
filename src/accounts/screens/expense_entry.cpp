#include "accounts/screens/expense_entry.h"

#include "accounts/cash_accounts.h"
#include "core/defaults.h"
#include "core/text.h"
#include "output/money_reports.h"
#include "output/printed_documents.h"
#include "output/screens/document_viewing.h"
#include "output/screens/print_outlet.h"

namespace jxc {
namespace expense_entry_detail {

using expenses::Side;
using ui::FieldKind;

constexpr ui::FieldSpec kExpenseFields[] = {
    {"comFylx", "费用类型：", FieldKind::Combo},
    {"tfyje", "金额：", FieldKind::Money},
    {"comUser", "经办人：", FieldKind::Combo},
    {"comYhzh", "付款账户：", FieldKind::Combo},
    {"comDept", "部门：", FieldKind::Combo},
    {"dateCg", "日期：", FieldKind::Date},
    {"tnote", "备注：", FieldKind::Text, "jxc_yyfy.fy_note", 0, ui::OffersRemarks},
};
constexpr ui::FieldSpec kIncomeFields[] = {
    {"comFylx", "收入类型：", FieldKind::Combo},
    {"tfyje", "金额：", FieldKind::Money},
    {"comUser", "经办人：", FieldKind::Combo},
    {"comYhzh", "收款账户：", FieldKind::Combo},
    {"comDept", "部门：", FieldKind::Combo},
    {"dateCg", "日期：", FieldKind::Date},
    {"tnote", "备注：", FieldKind::Text, "jxc_yyfy.fy_note", 0, ui::OffersRemarks},
};
constexpr ui::CommandSpec kCommands[] = {
    {"btnPrin", "打印", "F4"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

constexpr ui::ScreenSpec kExpense = {
    .name = "F_Fyjsr_Add", .title = "费用信息", .fields = kExpenseFields, .commands = kCommands, .focus = "comFylx"};
constexpr ui::ScreenSpec kIncome = {
    .name = "F_Fyjsr_Add1", .title = "收入信息", .fields = kIncomeFields, .commands = kCommands, .focus = "comFylx"};

/// The entry of the departments that is none, but the way to their dictionary.
const QString kNewDepartment = QStringLiteral("new");

std::vector<ListItem> accounts() {
  std::vector<ListItem> items = cash::fillAccounts();
  items.push_back({words(expenses::kNotBooked), words(expenses::kNotBooked)});
  return items;
}

bool editDraft(const std::optional<expenses::Draft>& draft) {
  return draft &&
         ui::screenAs<ExpenseEntryScreen>(draft->side == Side::Expense ? "F_Fyjsr_Add" : "F_Fyjsr_Add1").edit(*draft);
}

}  // namespace expense_entry_detail

ExpenseEntryScreen::ExpenseEntryScreen(const ui::ScreenSpec& spec, expenses::Side side)
    : Screen(spec), side_(side), draft_(expenses::newDraft(side)) {
  panel().form({"comFylx tfyje", "comUser comYhzh", "comDept dateCg", "tnote"}).buttons("btnPrin | btnOK btnCancel");
  comDept.onChanged([this] {
    if (comDept.key() == expense_entry_detail::kNewDepartment)
      addDepartment();
    else
      department_ = comDept.key();
  });
  on(command("btnOK"), [this] { save(); });
  addKey(command("btnPrin"), "Ctrl+P");  // F4 in a date or a remark opens what these offer
  on(command("btnPrin"), [this] {
    if (mayTakeOutUnsaved(prompt()) && checkFields())
      sendToPaper(expenseSlipReport(collect()), PrintWay::Preview, this, windowTitle());
  });
}

bool ExpenseEntryScreen::edit(const expenses::Draft& draft) {
  draft_ = draft;
  const bool done = showModal();
  draft_ = expenses::newDraft(side_);
  return done;
}

void ExpenseEntryScreen::activate() {
  const bool isNew = draft_.type.isEmpty();
  if (isNew) draft_ = expenses::newDraft(side_);
  command("btnPrin").setVisible(mayPrintUnsaved());
  comFylx.setItems(expenses::fillTypes(side_));
  comYhzh.setItems(expense_entry_detail::accounts());
  comUser.setItems(fillEmployees());
  fillDepartments(draft_.department);
  dateCg.load(draft_.date);
  tfyje.load(draft_.amount);
  tnote.load(draft_.note);
  comFylx.setKey(draft_.type);  // of a new one nothing: a type that nobody chose would be booked
  if (isNew) return comUser.setKey(keyToPropose(comUser.items(), defaultEmployeeSn()));
  comYhzh.setKey(draft_.account);
  comUser.setKey(draft_.employee);
}

/// With the one that is meant chosen: of a new draft the first, of one that stands its own, or none when it is gone.
void ExpenseEntryScreen::fillDepartments(const QString& chosen) {
  std::vector<ListItem> items = expenses::fillDepartments();
  department_ = chosen.isEmpty() && !items.empty() ? items.front().key : chosen;
  items.push_back({QStringLiteral("添加新部门..."), expense_entry_detail::kNewDepartment});
  comDept.setItems(items);
  comDept.setKey(department_);
}

/// The newest one is meant, when the dictionary has got one.
void ExpenseEntryScreen::addDepartment() {
  const auto before = expenses::fillDepartments();
  const QString chosen = department_;
  ui::openScreen("F_Dept");
  const auto now = expenses::fillDepartments();
  fillDepartments(now.size() > before.size() ? now.back().key : chosen);
}

expenses::Draft ExpenseEntryScreen::collect() const {
  expenses::Draft draft = draft_;
  draft.date = dateCg.text();
  draft.type = comFylx.key();
  draft.amount = tfyje.number();
  draft.employee = comUser.key();
  draft.account = comYhzh.key();
  draft.department = comDept.key() == expense_entry_detail::kNewDepartment ? QString() : comDept.key();
  draft.note = tnote.trimmed();
  return draft;
}

void ExpenseEntryScreen::save() {
  if (checkFields() && expenses::save(collect(), prompt())) accept();
}

bool modifyExpense(const Row& row, Prompt& prompt) {
  const auto draft = expenses::openForChange(row.integer("id"), prompt);
  return !draft || expense_entry_detail::editDraft(draft);
}

bool enterExpenseAgain(const Row& row, Prompt& prompt) {
  return expense_entry_detail::editDraft(expenses::copyForToday(row.integer("id"), prompt));
}

bool printExpense(const Row& row, Prompt& prompt) {
  showDocument(row.text("gl_djh"), nullptr, prompt);
  return false;
}

namespace expense_entry_detail {

struct TF_Fyjsr_Add : ExpenseEntryScreen {
  TF_Fyjsr_Add() : ExpenseEntryScreen(kExpense, Side::Expense) {}
};
struct TF_Fyjsr_Add1 : ExpenseEntryScreen {
  TF_Fyjsr_Add1() : ExpenseEntryScreen(kIncome, Side::Income) {}
};

const ui::Registered<TF_Fyjsr_Add> kExpenseScreen{"F_Fyjsr_Add"};
const ui::Registered<TF_Fyjsr_Add1> kIncomeScreen{"F_Fyjsr_Add1"};

}  // namespace expense_entry_detail
}  // namespace jxc
