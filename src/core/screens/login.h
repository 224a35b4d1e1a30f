// 操作员登录: who works here; also the change of operator inside the running program.
#pragma once

#include "ui/screen.h"

#include <QTimer>

class QLabel;

namespace jxc {

/// With the session's `editMode` "hb" it changes the operator of the running program, and leaving it returns to the old
/// one; otherwise leaving it means that nobody is logged in.
class TF_Login : public ui::Screen {
 public:
  TF_Login();
  ui::Field& comAdmin = field("comAdmin");
  ui::Field& tpwd = field("tpwd");
  QPushButton& btnOK = command("btnOK");
  QPushButton& btnCancel = command("btnCancel");
  QLabel* lMsg;
  bool loginOk = false;

 protected:
  void activate() override;
  bool mayLeave() override { return true; }  // nothing is lost

 private:
  void comAdminChange();
  void btnOKClick();
  void lookWhetherToWait();

  QTimer look_;
  bool waits_ = false;
};

}  // namespace jxc
