// 费用及收入录入: expenses and income as they are entered.
#pragma once

#include "accounts/expenses.h"
#include "ui/screen.h"

namespace jxc {

/// 费用信息, 收入信息: one form, with the types of its side.
class ExpenseEntryScreen : public ui::Screen {
 public:
  ExpenseEntryScreen(const ui::ScreenSpec& spec, expenses::Side side);

  ui::Field& comFylx = field("comFylx");
  ui::Field& tfyje = field("tfyje");
  ui::Field& comUser = field("comUser");
  ui::Field& comYhzh = field("comYhzh");
  ui::Field& comDept = field("comDept");
  ui::Field& dateCg = field("dateCg");
  ui::Field& tnote = field("tnote");

  /// Opens on a line that waits, or on a copy of one. Whether it was saved.
  bool edit(const expenses::Draft& draft);

 protected:
  void activate() override;

 private:
  void fillDepartments(const QString& chosen);
  void addDepartment();
  expenses::Draft collect() const;
  void save();
  const expenses::Side side_;
  expenses::Draft draft_;
  QString department_;  // the one chosen last, while 添加新部门... is
};

// Commands on a row of the list; whether the list has changed, be it by another station.
bool modifyExpense(const Row& row, Prompt& prompt);
bool enterExpenseAgain(const Row& row, Prompt& prompt);
/// Shows the slip of what was entered here, or the document that brought the line.
bool printExpense(const Row& row, Prompt& prompt);

}  // namespace jxc
