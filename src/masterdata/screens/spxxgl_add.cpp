#include "masterdata/screens/spxxgl_add.h"

#include "core/defaults.h"
#include "core/fillers.h"
#include "core/session.h"

#include <QTimer>

#include <utility>

namespace jxc {
namespace spxxgl_add_detail {

using ui::FieldKind;

constexpr auto kOwnFields = std::to_array<ui::FieldSpec>({
    {"tewm", "二维码：", FieldKind::Text, "", 1000},
    {"g_name", "商品名称：", FieldKind::Text, "jxc_goods.g_name"},
    {"g_sptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"gg_name", "规格型号：", FieldKind::EditCombo, "jxc_goods.gg_name"},
    {"color_name", "商品颜色：", FieldKind::EditCombo, "jxc_goods.color_name"},
    {"g_kc", "当前库存：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"comCk", "存放仓库：", FieldKind::Combo},
    {"g_iszp", "该商品可作为赠品", FieldKind::Check},
    {"chkAlert", "重名提醒", FieldKind::Check},
});
constexpr auto kFields = joinFields(kGoodsFields, kOwnFields);
constexpr ui::CommandSpec kCommands[] = {
    {"btnPic", "选择图片", "Ctrl+P"}, {"btnSave", "保存", "F5"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Spxxgl_Add", .title = "增加商品", .fields = kFields, .commands = kCommands, .focus = "g_name"};

}  // namespace spxxgl_add_detail

TF_Spxxgl_Add::TF_Spxxgl_Add() : GoodsForm(spxxgl_add_detail::kScreen, GoodsClassTree::Show::Ordinary) {
  auto area = panel();
  auto [form, side] = area.columns(1, 0);
  form.form({"tewm", "gc_name g_sn", "g_name", "g_sptm dw_name", "gg_name color_name", "g_jj g_sj", "g_lsj g_sj1",
             "g_sj2 g_sj3", "g_sj4 g_sj5", "g_zdkc g_kc", "comCk comTcbl", "tTcbl g_sccs", "g_bz", "g_gdcbj g_iszp",
             "chkAlert"});
  side.widget(pictureArea());
  area.buttons("| btnSave btnCancel");
  btnSave.setProperty("main", true);
  chkAlert.setChecked(true);
  tewm.widget()->setToolTip(QStringLiteral("扫描商品二维码后按回车：名称、规格、产地自动填写"));
  tewm.onEnter([this] {
    readTwoDimensionalCode();
    return false;
  });
  on(btnSave, [this] { btnSaveClick(); });
}

int TF_Spxxgl_Add::addTo(const std::optional<GoodsClass>& goodsClass) {
  first_ = goodsClass && !goodsClass->isLens() ? goodsClass : std::nullopt;
  forPurchase_ = false;
  showModal();
  first_.reset();
  return saved_;
}

std::optional<AddedGoods> TF_Spxxgl_Add::addOne() {
  forPurchase_ = true;
  const bool accepted = showModal();
  forPurchase_ = false;
  return accepted ? std::optional(added_) : std::nullopt;
}

void TF_Spxxgl_Add::activate() {
  session().editMode = QStringLiteral("spxxgl_add");
  saved_ = 0;
  const bool noClass = goodsClasses(false).empty();
  auto warehouses = fillWarehouseCombo({});
  if (noClass || warehouses.empty()) {
    prompt().notice(noClass ? QStringLiteral("请添加商品类别！") : QStringLiteral("请添加仓库信息！"));
    QTimer::singleShot(0, this, [this] { reject(); });
    return;
  }
  execSql("delete from jxc_goodstmp");
  prepare();
  comCk.setItems(warehouses);
  comCk.setKey(defaultWarehouseSn());
  gg_name.setItems(fillPlainCombo("jxc_ggxh", "gg_name", {}, false, "id"));
  color_name.setItems(fillPlainCombo("jxc_color", "color_name", {}, false, "id"));
  // A purchase brings its own quantity: an article that is made for it has no opening stock.
  g_kc.setVisible(!forPurchase_);
  comCk.setVisible(!forPurchase_);
  setClass(first_);
  clearForNext();
}

void TF_Spxxgl_Add::clearForNext() {
  showDraft({});
  for (ui::Field* field : {&tewm, &g_name, &g_sptm, &gg_name, &color_name, &g_kc, &g_iszp})
    field->clear();
  showPicture({});
  classChosen();
  g_name.focus();
}

void TF_Spxxgl_Add::classChosen() {
  const auto chosen = chosenClass();
  if (!chosen) return;
  const QString proposed = proposedGoodsSn(chosen->number);
  if (!proposed.isEmpty()) g_sn.setText(proposed);
}

// A code of five fields: name, part of the origin, specification, -, the other part of the origin.
void TF_Spxxgl_Add::readTwoDimensionalCode() {
  const QStringList parts = tewm.text().split(QStringLiteral("，"));
  if (parts.size() != 5) return;
  g_name.setText(parts[0].trimmed());
  gg_name.setText(parts[2].trimmed());
  g_sccs.setText(parts[4].trimmed() + u' ' + parts[1].trimmed());
  tewm.clear();
}

void TF_Spxxgl_Add::btnSaveClick() {
  if (!checkFields()) return;
  GoodsDraft draft;
  readDraft(draft);
  draft.name = g_name.trimmed();
  draft.barcode = g_sptm.trimmed();
  draft.model = gg_name.trimmed();
  draft.colour = color_name.trimmed();
  draft.openingStock = forPurchase_ ? 0 : g_kc.number();
  draft.warehouse = comCk.key();
  draft.mayBeGift = g_iszp.isChecked();
  draft.warnSameName = chkAlert.isChecked();
  const auto number = addGoods(draft, prompt());
  if (!number) return;
  savePicture(*number);
  ++saved_;
  added_ = {*number, draft.openingStock};
  if (forPurchase_) return accept();
  clearForNext();
}

std::optional<AddedGoods> addGoodsForPurchase() {
  return ui::screenAs<TF_Spxxgl_Add>("F_Spxxgl_Add").addOne();
}

namespace spxxgl_add_detail {
const ui::Registered<TF_Spxxgl_Add> kRegistered{"F_Spxxgl_Add"};
}

}  // namespace jxc
