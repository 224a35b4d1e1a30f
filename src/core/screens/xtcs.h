// 系统设置: company, mail, system parameters and till settings on three pages, made from the table of parameters.
#pragma once

#include "core/parameters.h"
#include "ui/screen.h"

#include <QSize>

namespace jxc {

class TF_Xtcs : public ui::Screen {
 public:
  TF_Xtcs();

  /// Room for the page of parameters; on a smaller display the pages scroll.
  QSize sizeHint() const override { return {1200, 680}; }

  QPushButton& btnOK = command("btnOK");
  QPushButton& btnDefault = command("btnDefault");
  QPushButton& btnEmail = command("btnEmail");

 protected:
  void activate() override;

 private:
  void couple();
  void showValues(const ParameterValues& values);
  ParameterValues values();
  void followSwitches();
  void saveValue();
  void restoreStandard();
  void sendTestMail();

  QTabWidget* pages_ = nullptr;
  QWidget* mail_ = nullptr;
};

}  // namespace jxc
