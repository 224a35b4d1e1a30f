// 镜片: the dialogs of lenses: one pair of powers, a whole range, and a change.
#pragma once

#include "masterdata/goods_lenses.h"
#include "masterdata/screens/goods_form.h"

namespace jxc {

/// What the lens dialogs have in common: the product from the library.
class LensForm : public GoodsForm {
 public:
  ui::Field& g_qc = field("g_qc");
  ui::Field& g_qgd = field("g_qgd");
  ui::Field& g_sgd = field("g_sgd");
  QPushButton& btnSave = command("btnSave");

 protected:
  explicit LensForm(const ui::ScreenSpec& spec);
  void classChosen() override;
  /// The class that was asked for, the one of the lens before, or that of all lenses.
  void presetClass(const std::optional<GoodsClass>& wanted);
  /// The product and what goes with it was changed.
  virtual void productChanged() {}

 private:
  void pickProduct();
};

/// "增加镜片信息(包括隐形眼镜)"
class TF_Spxxgl_Add2 : public LensForm {
 public:
  TF_Spxxgl_Add2();
  ui::Field& g_name = field("g_name");
  ui::Field& g_kc = field("g_kc");
  ui::Field& comCk = field("comCk");
  int addTo(const std::optional<GoodsClass>& goodsClass);
  /// The same, beginning with a lens like this one.
  int addLike(std::int64_t id);

 protected:
  void activate() override;
  void productChanged() override;

 private:
  void btnSaveClick();
  void clearForNext();
  std::optional<GoodsClass> first_;
  std::optional<GoodsDraft> like_;
  int saved_ = 0;
};

/// "批量增加镜片"
class TF_Spxxgl_Add3 : public LensForm {
 public:
  TF_Spxxgl_Add3();
  ui::Field& g_qgd1 = field("g_qgd1");
  ui::Field& comQgd = field("comQgd");
  ui::Field& g_sgd1 = field("g_sgd1");
  ui::Field& comSgd = field("comSgd");
  ui::Field& chkYcz = field("chkYcz");
  /// Whether a range was added.
  bool addTo(const std::optional<GoodsClass>& goodsClass);

 protected:
  void activate() override;
  void productChanged() override;

 private:
  void btnSaveClick();
  PowerRange sphere() const { return {g_qgd.number(), g_qgd1.number(), comQgd.key().toDouble()}; }
  PowerRange cylinder() const { return {g_sgd.number(), g_sgd1.number(), comSgd.key().toDouble()}; }
  std::optional<GoodsClass> first_;
  QLabel* count_;
};

/// "修改镜片信息(包括隐形眼镜)"
class TF_Spxxgl_Modi2 : public LensForm {
 public:
  TF_Spxxgl_Modi2();
  ui::Field& g_name = field("g_name");
  ui::Field& g_sptm = field("g_sptm");
  bool edit(std::int64_t id);

 protected:
  void activate() override;
  void classChosen() override {}
  void productChanged() override;

 private:
  void btnSaveClick();
  std::int64_t id_ = 0;
  GoodsDraft before_;
};

}  // namespace jxc
