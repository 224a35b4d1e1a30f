// 商品表单: what the dialogs of one article have in common: class, unit, prices, commission, picture.
#pragma once

#include "masterdata/goods.h"
#include "masterdata/screens/goods_class_tree.h"
#include "ui/screen.h"

#include <array>
#include <string_view>

class QLabel;

namespace jxc {

/// Joins tables of inputs: each dialog has the common ones and its own.
template <std::size_t... N>
constexpr auto joinFields(const std::array<ui::FieldSpec, N>&... parts) {
  std::array<ui::FieldSpec, (N + ...)> all{};
  std::size_t at = 0;
  const auto append = [&](const auto& part) {
    for (const auto& field : part)
      all[at++] = field;
  };
  (append(parts), ...);
  return all;
}

/// Inputs that every article has.
inline constexpr auto kGoodsFields = std::to_array<ui::FieldSpec>({
    {"gc_name", "商品类别：", ui::FieldKind::Picker, "jxc_goodsclass.gc_name"},
    {"g_sn", "商品编号：", ui::FieldKind::Text, "jxc_goods.g_sn"},
    {"dw_name", "商品单位：", ui::FieldKind::Combo},
    {"g_jj", "预设进价：", ui::FieldKind::Money, "", 0, ui::NoMinus},
    {"g_sj", "预设售价：", ui::FieldKind::Money, "", 0, ui::NoMinus},
    {"g_lsj", "零售价：", ui::FieldKind::Money, "", 0, ui::NoMinus},
    {"g_sj1", "一级批发价：", ui::FieldKind::Money, "", 0, ui::NoMinus},
    {"g_sj2", "二级批发价：", ui::FieldKind::Money, "", 0, ui::NoMinus},
    {"g_sj3", "三级批发价：", ui::FieldKind::Money, "", 0, ui::NoMinus},
    {"g_sj4", "四级批发价：", ui::FieldKind::Money, "", 0, ui::NoMinus},
    {"g_sj5", "五级批发价：", ui::FieldKind::Money, "", 0, ui::NoMinus},
    {"g_zdkc", "库存下限：", ui::FieldKind::Integer, "", 9, ui::NoMinus},
    {"comTcbl", "提成方式：", ui::FieldKind::Combo},
    {"tTcbl", "提成金额：", ui::FieldKind::Percent, "", 0, ui::NoMinus, "元"},
    {"g_sccs", "产品产地：", ui::FieldKind::Text, "jxc_goods.g_sccs"},
    {"g_bz", "备注：", ui::FieldKind::Text, "jxc_goods.g_bz"},
    {"g_gdcbj", "预设进价作为销售成本价", ui::FieldKind::Check},
});

/// Base of the dialogs of one article.
class GoodsForm : public ui::Screen {
 public:
  ui::Field& gc_name = field("gc_name");
  ui::Field& g_sn = field("g_sn");
  ui::Field& dw_name = field("dw_name");
  ui::Field& g_jj = field("g_jj");
  ui::Field& g_sj = field("g_sj");
  ui::Field& g_lsj = field("g_lsj");
  ui::Field& g_zdkc = field("g_zdkc");
  ui::Field& comTcbl = field("comTcbl");
  ui::Field& tTcbl = field("tTcbl");
  ui::Field& g_sccs = field("g_sccs");
  ui::Field& g_bz = field("g_bz");
  ui::Field& g_gdcbj = field("g_gdcbj");

  /// Takes a file as the picture of the article, kept with its next save; tells when it is no picture.
  void usePicture(const QString& file);

 protected:
  GoodsForm(const ui::ScreenSpec& spec, GoodsClassTree::Show classes);

  /// Units, commission kinds, and which inputs the parameters and rights show.
  void prepare();
  /// Puts an article into the common inputs, and takes it out again: what no input shows stays as it is in the draft.
  void showDraft(const GoodsDraft& draft);
  void readDraft(GoodsDraft& draft) const;
  void setClass(const std::optional<GoodsClass>& chosen);
  void setUnit(const QString& name);
  /// Called when the operator has chosen a class.
  virtual void classChosen() {}
  std::optional<GoodsClass> chosenClass() const { return class_; }

  /// For the dialogs of a change: prices that the operator may not see are neither shown nor changed.
  void hidePricesWithoutRight();
  void lockNumber(bool locked);
  /// After a change: the picture goes with a new number, and a newly chosen one is saved.
  void pictureFollows(const QString& numberBefore, std::int64_t id);
  static std::optional<GoodsClass> goodsClassNumbered(const std::optional<QString>& number);

  /// The picture at the side of the form, with its commands below: from a file (btnPic), from the camera (btnCam).
  void placePicture(ui::Panel& side);
  void showPicture(const QString& file);
  void savePicture(const QString& number);

 private:
  std::optional<ListItem> pickClass();
  void unitChanged();
  void showCommission();
  void choosePicture();
  void takePicture();

  GoodsClassTree::Show classes_;
  std::optional<GoodsClass> class_;
  QString unit_;  // the one before "增加新单位..." was chosen
  QLabel* picture_ = nullptr;
  QString chosenPicture_;
};

/// Inputs of ordinary articles besides.
inline constexpr auto kOrdinaryGoodsFields = std::to_array<ui::FieldSpec>({
    {"g_name", "商品名称：", ui::FieldKind::Text, "jxc_goods.g_name"},
    {"g_sptm", "商品条码：", ui::FieldKind::Text, "jxc_goods.g_sptm"},
    {"gg_name", "规格型号：", ui::FieldKind::EditCombo, "jxc_goods.gg_name"},
    {"color_name", "商品颜色：", ui::FieldKind::EditCombo, "jxc_goods.color_name"},
    {"g_iszp", "该商品可作为赠品", ui::FieldKind::Check},
    {"chkAlert", "重名提醒", ui::FieldKind::Check},
});

inline constexpr ui::CommandSpec kOrdinaryGoodsCommands[] = {
    {"btnPic", "选择图片", "Ctrl+P"},
    {"btnCam", "拍照", "Ctrl+T"},
    {"btnSave", "保存", "F5"},
    {"btnCancel", "退出", "Esc"},
};

/// Base of the dialogs of one ordinary article: everything but lenses.
class OrdinaryGoodsForm : public GoodsForm {
 public:
  ui::Field& g_name = field("g_name");
  ui::Field& g_sptm = field("g_sptm");
  ui::Field& gg_name = field("gg_name");
  ui::Field& color_name = field("color_name");
  ui::Field& g_iszp = field("g_iszp");
  ui::Field& chkAlert = field("chkAlert");

 protected:
  explicit OrdinaryGoodsForm(const ui::ScreenSpec& spec);
  void prepareOrdinary();
  void showOrdinary(const GoodsDraft& draft);
  GoodsDraft readOrdinary() const;
};

}  // namespace jxc
