// 商品数值对话框: one figure of one goods, as it is and as it is to be.
#pragma once

#include "engine/row_set.h"
#include "ui/screen.h"

namespace jxc {

/// A dialog over the goods of a row (g_sn, g_name; `id` where there is one) with its name in `tname` and 确定 as
/// `btnOK`, which changes the figure and closes. What is refused leaves it open.
class GoodsFigureScreen : public ui::Screen {
 protected:
  explicit GoodsFigureScreen(const ui::ScreenSpec& screen) : Screen(screen) {
    on(command("btnOK"), [this] {
      if (checkFields() && change(prompt())) accept();
    });
  }
  /// True: it was changed.
  bool ask(const Row& goods) {
    goods_ = goods.text("g_sn");
    id_ = goods.integer("id");
    field("tname").setText(goods_ + u' ' + goods.text("g_name"));
    return showModal();
  }
  virtual bool change(Prompt& asked) = 0;
  const QString& goods() const { return goods_; }
  std::int64_t id() const { return id_; }

 private:
  QString goods_;
  std::int64_t id_ = 0;
};

}  // namespace jxc
