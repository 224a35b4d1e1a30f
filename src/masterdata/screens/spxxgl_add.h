// 增加商品: the dialog of a new ordinary article.
#pragma once

#include "masterdata/screens/goods_form.h"

namespace jxc {

class TF_Spxxgl_Add : public OrdinaryGoodsForm {
 public:
  TF_Spxxgl_Add();
  ui::Field& tewm = field("tewm");
  ui::Field& g_kc = field("g_kc");
  ui::Field& comCk = field("comCk");
  QPushButton& btnSave = command("btnSave");

  /// From the catalogue: stays open for one article after the other, and begins in this class. The number of those
  /// that were saved. A purchase document opens the screen by its name with the session's `editMode` "cgjh": then it
  /// makes one article, without opening stock, and closes.
  int addTo(const std::optional<GoodsClass>& goodsClass);
  const QString& added() const { return added_; }  // number of the last article that was saved; empty without

 protected:
  void activate() override;
  void classChosen() override;

 private:
  void btnSaveClick();
  void readTwoDimensionalCode();
  void clearForNext();

  std::optional<GoodsClass> first_;
  bool forPurchase_ = false;
  int saved_ = 0;
  QString added_;
};

}  // namespace jxc
