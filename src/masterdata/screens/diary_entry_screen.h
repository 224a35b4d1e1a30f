// 员工日志录入: one entry of an employee's diary.
#pragma once

#include "masterdata/employee_diary.h"
#include "ui/screen.h"

namespace jxc {

class DiaryEntryScreen : public ui::Screen {
 public:
  explicit DiaryEntryScreen(const ui::ScreenSpec& spec);
  /// Whether it was saved.
  bool edit(EmployeeDiaryDraft draft);

 protected:
  void activate() override;

 private:
  EmployeeDiaryDraft draft_;
};

}  // namespace jxc
