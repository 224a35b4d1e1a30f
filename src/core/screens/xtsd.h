// 系统锁定: nobody gets past the lock but the operator himself.
#pragma once

#include "ui/screen.h"

namespace jxc {

class TF_Xtsd : public ui::Screen {
 public:
  TF_Xtsd();
  ui::Field& tname = field("tname");
  ui::Field& tpwd = field("tpwd");
  QPushButton& btnOK = command("btnOK");

 protected:
  void activate() override;
  bool mayLeave() override { return false; }
  bool keyPressed(QKeyEvent& key) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void btnOKClick();
};

}  // namespace jxc
