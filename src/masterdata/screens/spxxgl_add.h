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
  /// that were saved.
  int addTo(const std::optional<GoodsClass>& goodsClass);
  /// The same, beginning with an article like this one.
  int addLike(std::int64_t id);
  /// For a document: makes one article and closes. A document that brings the goods itself leaves opening stock out.
  /// `barcode`: one that was scanned and that no article has. The number of the article; empty: the operator left
  /// without one.
  enum class OpeningStock : char { Offered, BroughtByDocument };
  QString addOne(OpeningStock openingStock, const QString& barcode = {});

 protected:
  void activate() override;
  void classChosen() override;

 private:
  void btnSaveClick();
  void readTwoDimensionalCode();
  void clearForNext();

  std::optional<GoodsClass> first_;
  std::optional<OpeningStock> forDocument_;
  GoodsDraft begins_;  // what the form shows first
  int saved_ = 0;
  QString added_;
};

}  // namespace jxc
