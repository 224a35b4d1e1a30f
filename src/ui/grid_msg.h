// 布局调整提示: how the columns of a list are arranged, told once before they are saved.
#pragma once

#include "ui/screen.h"

namespace jxc::ui {

inline constexpr std::string_view kGridMsg = "F_GridMsg";

class TF_GridMsg : public Screen {
 public:
  TF_GridMsg();
  QPushButton& btnOK = command("btnOK");
  QPushButton& btnCancel = command("btnCancel");
  /// 1 once the operator has confirmed; then the command of the pop-up menus saves.
  int flag = 0;
};

/// Whether the hint was confirmed since the program started.
bool layoutHintConfirmed();

}  // namespace jxc::ui
