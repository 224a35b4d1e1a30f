// 单位设置: the list of units, also opened from the unit input of an article.
#pragma once

#include "ui/screen.h"

namespace jxc {

class TF_Dwgl : public ui::Screen {
 public:
  TF_Dwgl();
  ui::Field& tname = field("tname");
  ui::Grid& gridDw = grid("gridDw");

  /// Opens the list; the name of the unit that was taken, empty when none was.
  QString pick();

 protected:
  void activate() override;

 private:
  void changed(const QString& number);
  void take();
};

}  // namespace jxc
