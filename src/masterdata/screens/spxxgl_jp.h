// 镜片商品名称: the library of lens products, from which the lens dialogs take their product names.
#pragma once

#include "masterdata/goods_lenses.h"
#include "ui/list_screen.h"

class QRadioButton;

namespace jxc {

class TF_Spxxgl_Jp : public ui::ListScreen {
 public:
  TF_Spxxgl_Jp();
  /// Opens the library; the product name that was taken, empty when none was.
  QString pick();
};

/// One product: an ordinary lens or a contact lens.
class LensProductScreen : public ui::Screen {
 public:
  explicit LensProductScreen(const ui::ScreenSpec& spec);
  ui::Field& tlxmc = field("tlxmc");
  ui::Field& item1 = field("item1");
  ui::Field& item2 = field("item2");
  ui::Field& tnote = field("tnote");
  bool edit(std::int64_t id);

 protected:
  void activate() override;

 private:
  void relabel();
  QRadioButton* rPtjp_;
  QRadioButton* rYxjp_;
  std::int64_t id_ = 0;
};

}  // namespace jxc
