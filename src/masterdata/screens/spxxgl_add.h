// 增加商品: the dialog of a new ordinary article.
#pragma once

#include "masterdata/screens/goods_adding.h"
#include "masterdata/screens/goods_form.h"

namespace jxc {

class TF_Spxxgl_Add : public GoodsForm {
 public:
  TF_Spxxgl_Add();
  ui::Field& tewm = field("tewm");
  ui::Field& g_name = field("g_name");
  ui::Field& g_sptm = field("g_sptm");
  ui::Field& gg_name = field("gg_name");
  ui::Field& color_name = field("color_name");
  ui::Field& g_kc = field("g_kc");
  ui::Field& comCk = field("comCk");
  ui::Field& g_iszp = field("g_iszp");
  ui::Field& chkAlert = field("chkAlert");
  QPushButton& btnSave = command("btnSave");

  /// From the catalogue: stays open for one article after the other. The number of those that were saved.
  int addTo(const std::optional<GoodsClass>& goodsClass);
  /// From a purchase document: one article, without opening stock.
  std::optional<AddedGoods> addOne();

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
  AddedGoods added_;
};

}  // namespace jxc
