// 更换皮肤: the operator's own look of the program.
#pragma once

#include "ui/screen.h"

namespace jxc {

class TF_Skin : public ui::Screen {
 public:
  TF_Skin();
  ui::Field& comSkin = field("comSkin");
  QPushButton& btnOK = command("btnOK");
  QPushButton& btnCancel = command("btnCancel");

 protected:
  void activate() override;
  bool mayLeave() override;

 private:
  QString before_;
};

}  // namespace jxc
