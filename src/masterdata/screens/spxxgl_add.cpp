#include "masterdata/screens/spxxgl_add.h"

#include "core/defaults.h"
#include "core/fillers.h"
#include "masterdata/goods_change.h"

#include <QTimer>

#include <utility>

namespace jxc {
namespace spxxgl_add_detail {

using ui::FieldKind;

constexpr auto kOwnFields = std::to_array<ui::FieldSpec>({
    {"tewm", "二维码：", FieldKind::Text, "", 1000},
    {"g_kc", "当前库存：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"comCk", "存放仓库：", FieldKind::Combo},
});
constexpr auto kFields = joinFields(kGoodsFields, kOrdinaryGoodsFields, kOwnFields);
constexpr ui::ScreenSpec kScreen = {.name = "F_Spxxgl_Add",
                                    .title = "增加商品",
                                    .fields = kFields,
                                    .commands = kOrdinaryGoodsCommands,
                                    .focus = "g_name"};

}  // namespace spxxgl_add_detail

TF_Spxxgl_Add::TF_Spxxgl_Add() : OrdinaryGoodsForm(spxxgl_add_detail::kScreen) {
  auto area = panel();
  auto [form, side] = area.columns(1, 0);
  form.form({"tewm", "gc_name g_sn", "g_name", "g_sptm dw_name", "gg_name color_name", "g_jj g_sj", "g_lsj g_sj1",
             "g_sj2 g_sj3", "g_sj4 g_sj5", "g_zdkc g_kc", "comCk comTcbl", "tTcbl g_sccs", "g_bz", "g_gdcbj g_iszp",
             "chkAlert"});
  placePicture(side);
  area.buttons("| btnSave btnCancel");
  tewm.widget()->setToolTip(QStringLiteral("扫描商品二维码后按回车：名称、规格、产地自动填写"));
  tewm.onEnter([this] {
    readTwoDimensionalCode();
    return false;
  });
  on(btnSave, [this] { btnSaveClick(); });
}

int TF_Spxxgl_Add::addTo(const std::optional<GoodsClass>& goodsClass) {
  first_ = goodsClass && !goodsClass->isLens() ? goodsClass : std::nullopt;
  showModal();
  first_.reset();
  begins_ = {};
  return saved_;
}

int TF_Spxxgl_Add::addLike(std::int64_t id) {
  begins_ = copyOfGoods(id);
  return addTo(goodsClassNumbered(begins_.classNumber));
}

QString TF_Spxxgl_Add::addOne(OpeningStock openingStock, const QString& barcode) {
  forDocument_ = openingStock;
  begins_.barcode = barcode;
  showModal();
  forDocument_.reset();
  begins_ = {};
  return added_;
}

void TF_Spxxgl_Add::activate() {
  saved_ = 0;
  added_.clear();
  const bool noClass = goodsClasses(false).empty();
  auto warehouses = fillWarehouseCombo({});
  if (noClass || warehouses.empty()) {
    prompt().notice(noClass ? QStringLiteral("请添加商品类别！") : QStringLiteral("请添加仓库信息！"));
    QTimer::singleShot(0, this, [this] { reject(); });
    return;
  }
  prepareOrdinary();
  comCk.setItems(warehouses);
  comCk.setKey(defaultWarehouseSn());
  const bool stockOffered = forDocument_ != OpeningStock::BroughtByDocument;
  g_kc.setVisible(stockOffered);
  comCk.setVisible(stockOffered);
  setClass(first_);
  clearForNext();
}

void TF_Spxxgl_Add::clearForNext() {
  showOrdinary(std::exchange(begins_, {}));
  tewm.clear();
  g_kc.clear();
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

// A code of five fields: name, part of the origin, model, -, the other part of the origin.
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
  GoodsDraft draft = readOrdinary();
  draft.openingStock = forDocument_ == OpeningStock::BroughtByDocument ? 0 : g_kc.number();
  draft.warehouse = comCk.key();
  const auto number = addGoods(draft, prompt());
  if (!number) return;
  savePicture(*number);
  ++saved_;
  added_ = *number;
  if (forDocument_) return accept();
  clearForNext();
}

namespace spxxgl_add_detail {
const ui::Registered<TF_Spxxgl_Add> kRegistered{"F_Spxxgl_Add"};
}

}  // namespace jxc
