#include "masterdata/screens/spxxgl_lens.h"

#include "core/defaults.h"
#include "core/fillers.h"
#include "masterdata/goods_change.h"
#include "masterdata/screens/goods_picture.h"
#include "masterdata/screens/spxxgl_jp.h"
#include "ui/progress.h"

#include <QLabel>

#include <utility>

namespace jxc {
namespace spxxgl_lens_detail {

using ui::FieldKind;

constexpr auto kProduct = std::to_array<ui::FieldSpec>({
    {"g_qc", "商品名称：", FieldKind::Text, "jxc_goods.g_qc"},
    {"g_qgd", "屈光度：", FieldKind::Percent},
    {"g_sgd", "散光度：", FieldKind::Percent},
});
constexpr auto kName = std::to_array<ui::FieldSpec>({{"g_name", "商品全名：", FieldKind::Text, "", 0, ui::ReadOnly}});

constexpr auto kAddFields = joinFields(kGoodsFields, kProduct, kName,
                                       std::to_array<ui::FieldSpec>({
                                           {"g_kc", "当前库存：", FieldKind::Quantity, "", 0, ui::NoMinus},
                                           {"comCk", "存放仓库：", FieldKind::Combo},
                                       }));
constexpr auto kRangeFields = joinFields(kGoodsFields, kProduct,
                                         std::to_array<ui::FieldSpec>({
                                             {"g_qgd1", "到：", FieldKind::Percent},
                                             {"comQgd", "屈光度间隔：", FieldKind::Combo},
                                             {"g_sgd1", "到：", FieldKind::Percent},
                                             {"comSgd", "散光度间隔：", FieldKind::Combo},
                                             {"chkYcz", "已存在的光度也再增加一个商品", FieldKind::Check},
                                         }));
constexpr auto kModiFields =
    joinFields(kGoodsFields, kProduct, kName,
               std::to_array<ui::FieldSpec>({{"g_sptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"}}));

constexpr ui::CommandSpec kCommands[] = {{"btnJp", "选择商品名称", "F2"},
                                         {"btnPic", "选择图片", "Ctrl+P"},
                                         {"btnCam", "拍照", "Ctrl+T"},
                                         {"btnSave", "保存", "F5"},
                                         {"btnCancel", "退出", "Esc"}};
constexpr ui::CommandSpec kRangeCommands[] = {
    {"btnJp", "选择商品名称", "F2"}, {"btnSave", "保存", "F5"}, {"btnCancel", "退出", "Esc"}};

constexpr ui::ScreenSpec kAdd = {.name = "F_Spxxgl_Add2",
                                 .title = "增加镜片信息(包括隐形眼镜)",
                                 .fields = kAddFields,
                                 .commands = kCommands,
                                 .focus = "g_qc"};
constexpr ui::ScreenSpec kRange = {.name = "F_Spxxgl_Add3",
                                   .title = "批量增加镜片",
                                   .fields = kRangeFields,
                                   .commands = kRangeCommands,
                                   .focus = "g_qc"};
constexpr ui::ScreenSpec kModi = {.name = "F_Spxxgl_Modi2",
                                  .title = "修改镜片信息(包括隐形眼镜)",
                                  .fields = kModiFields,
                                  .commands = kCommands,
                                  .focus = "g_qc"};

std::optional<GoodsClass> onlyLens(const std::optional<GoodsClass>& chosen) {
  return chosen && chosen->isLens() ? chosen : std::nullopt;
}

std::vector<ListItem> steps() {
  std::vector<ListItem> items;
  for (const auto* step : {u"0.25", u"0.50", u"0.75", u"1.00", u"1.25", u"1.50"})
    items.push_back({QString::fromUtf16(step), QString::fromUtf16(step)});
  return items;
}

}  // namespace spxxgl_lens_detail

LensForm::LensForm(const ui::ScreenSpec& spec) : GoodsForm(spec, GoodsClassTree::Show::Lenses) {
  comTcbl.setItems({{QStringLiteral("不提成"), QStringLiteral("0")},
                    {QStringLiteral("按金额提成"), QStringLiteral("1")},
                    {QStringLiteral("按比例提成"), QStringLiteral("2")},
                    {QStringLiteral("按毛利提成"), QStringLiteral("3")}});
  on(command("btnJp"), [this] { pickProduct(); });
  for (ui::Field* field : {&g_qc, &g_qgd, &g_sgd})
    field->onChanged([this] { productChanged(); });
}

void LensForm::classChosen() {
  const auto chosen = chosenClass();
  if (!chosen) return;
  const QString proposed = proposedGoodsSn(chosen->number);
  if (!proposed.isEmpty()) g_sn.setText(proposed);
}

void LensForm::presetClass(const std::optional<GoodsClass>& wanted) {
  if (wanted) return setClass(wanted);
  if (!chosenClass()) setClass(goodsClassNumbered(u"1000"_qs));
}

void LensForm::pickProduct() {
  const QString taken = ui::screenAs<TF_Spxxgl_Jp>("F_Spxxgl_Jp").pick();
  if (taken.isEmpty()) return;
  g_qc.setText(taken);
  productChanged();
}

TF_Spxxgl_Add2::TF_Spxxgl_Add2() : LensForm(spxxgl_lens_detail::kAdd) {
  auto area = panel();
  auto [form, side] = area.columns(1, 0);
  form.form({"gc_name g_sn", "g_qc", "g_qgd g_sgd", "g_name", "dw_name g_zdkc", "g_jj g_sj", "g_lsj g_sj1",
             "g_sj2 g_sj3", "g_sj4 g_sj5", "g_kc comCk", "comTcbl tTcbl", "g_sccs", "g_bz", "g_gdcbj"});
  placePicture(side);
  area.buttons("btnJp | btnSave btnCancel");
  on(btnSave, [this] { btnSaveClick(); });
}

int TF_Spxxgl_Add2::addTo(const std::optional<GoodsClass>& goodsClass) {
  first_ = spxxgl_lens_detail::onlyLens(goodsClass);
  showModal();
  first_.reset();
  return saved_;
}

int TF_Spxxgl_Add2::addLike(std::int64_t id) {
  like_ = copyOfGoods(id);
  return addTo(goodsClassNumbered(like_->classNumber));
}

void TF_Spxxgl_Add2::activate() {
  saved_ = 0;
  prepare();
  comCk.setItems(fillWarehouseCombo({}));
  comCk.setKey(defaultWarehouseSn());
  presetClass(first_);
  clearForNext();
  if (!like_) return;
  const GoodsDraft like = *std::exchange(like_, std::nullopt);
  showDraft(like);
  classChosen();
  g_qc.setText(like.lens->product);
  g_qgd.setNumber(like.lens->sphere.toDouble());
  g_sgd.setNumber(like.lens->cylinder.toDouble());
  productChanged();
}

void TF_Spxxgl_Add2::clearForNext() {
  showDraft({});
  g_qc.clear();
  g_qgd.clear();
  g_sgd.clear();
  g_name.clear();
  g_kc.clear();
  showPicture({});
  classChosen();
  g_qc.focus();
}

void TF_Spxxgl_Add2::productChanged() {
  g_name.setText(lensName(g_qc.trimmed(), powerText(g_qgd.number()), powerText(g_sgd.number())));
}

void TF_Spxxgl_Add2::btnSaveClick() {
  if (!checkFields()) return;
  GoodsDraft draft;
  readDraft(draft);
  productChanged();
  draft.name = g_name.trimmed();
  draft.lens = LensPowers{g_qc.trimmed(), powerText(g_qgd.number()), powerText(g_sgd.number())};
  draft.warnSameName = false;
  draft.openingStock = g_kc.number();
  draft.warehouse = comCk.key();
  const auto number = addGoods(draft, prompt());
  if (!number) return;
  savePicture(*number);
  ++saved_;
  clearForNext();
}

TF_Spxxgl_Add3::TF_Spxxgl_Add3() : LensForm(spxxgl_lens_detail::kRange), count_(new QLabel(this)) {
  count_->setObjectName(QStringLiteral("lCount"));
  auto area = panel();
  area.form({"gc_name g_sn", "g_qc", "g_qgd g_qgd1 comQgd", "g_sgd g_sgd1 comSgd"});
  area.widget(count_).row("chkYcz |");
  area.form({"dw_name g_zdkc", "g_jj g_sj", "g_lsj g_sj1", "g_sj2 g_sj3", "g_sj4 g_sj5", "comTcbl tTcbl", "g_sccs",
             "g_bz", "g_gdcbj"});
  area.text(QStringLiteral("每一对屈光度和散光度增加一个商品，编号自动生成；范围从小到大填写，如 -6.00 到 -0.25。"));
  area.buttons("btnJp | btnSave btnCancel");
  comQgd.setItems(spxxgl_lens_detail::steps());
  comSgd.setItems(spxxgl_lens_detail::steps());
  for (ui::Field* each : {&g_qgd1, &comQgd, &g_sgd1, &comSgd, &chkYcz})
    each->onChanged([this] { productChanged(); });
  on(btnSave, [this] { btnSaveClick(); });
}

bool TF_Spxxgl_Add3::addTo(const std::optional<GoodsClass>& goodsClass) {
  first_ = spxxgl_lens_detail::onlyLens(goodsClass);
  const bool added = showModal();
  first_.reset();
  return added;
}

void TF_Spxxgl_Add3::activate() {
  prepare();
  presetClass(first_);
  showDraft({});
  chkYcz.setChecked(false);
  for (ui::Field* field : {&g_qc, &g_qgd, &g_qgd1, &g_sgd, &g_sgd1})
    field->clear();
  classChosen();
  productChanged();
}

/// What F5 will do, while one types.
void TF_Spxxgl_Add3::productChanged() {
  const auto found = countLensRange(g_qc.trimmed(), sphere(), cylinder());
  if (!found) return count_->setText(QStringLiteral("范围不正确"));
  QString text = QStringLiteral("将增加 %1 个").arg(found->pairs);
  if (found->there > 0) {
    text += QStringLiteral("，其中 %1 个已存在").arg(found->there);
    text += chkYcz.isChecked() ? QStringLiteral("，也再增加一个")
                               : QStringLiteral("，将跳过，实际增加 %1 个").arg(found->pairs - found->there);
  }
  count_->setText(text);
}

void TF_Spxxgl_Add3::btnSaveClick() {
  if (!checkFields()) return;
  GoodsDraft common;
  readDraft(common);
  common.name = g_qc.trimmed();
  const auto there = chkYcz.isChecked() ? PairsThere::AreMadeAgain : PairsThere::AreSkipped;
  if (addLensRange(common, sphere(), cylinder(), prompt(), ui::progressOnDemand(QStringLiteral("正在增加镜片……"), this),
                   there))
    accept();
}

TF_Spxxgl_Modi2::TF_Spxxgl_Modi2() : LensForm(spxxgl_lens_detail::kModi) {
  auto area = panel();
  auto [form, side] = area.columns(1, 0);
  form.form({"gc_name g_sn", "g_qc", "g_qgd g_sgd", "g_name", "g_sptm dw_name", "g_jj g_sj", "g_lsj g_sj1",
             "g_sj2 g_sj3", "g_sj4 g_sj5", "g_zdkc comTcbl", "tTcbl g_sccs", "g_bz", "g_gdcbj"});
  placePicture(side);
  area.buttons("btnJp | btnSave btnCancel");
  on(btnSave, [this] { btnSaveClick(); });
}

bool TF_Spxxgl_Modi2::edit(std::int64_t id) {
  id_ = id;
  const bool saved = showModal();
  id_ = 0;
  return saved;
}

void TF_Spxxgl_Modi2::activate() {
  prepare();
  before_ = id_ == 0 ? GoodsDraft() : readGoods(id_);
  showDraft(before_);
  hidePricesWithoutRight();
  const LensPowers lens = before_.lens.value_or(LensPowers{});
  g_qc.setText(lens.product);
  g_qgd.setNumber(lens.sphere.toDouble());
  g_sgd.setNumber(lens.cylinder.toDouble());
  g_name.setText(before_.name);
  g_sptm.setText(before_.barcode);
  setClass(goodsClassNumbered(before_.classNumber));
  lockNumber(!mayRenumberGoods(before_));
  showPicture(goodsPictureFile(before_.number));
}

void TF_Spxxgl_Modi2::productChanged() {
  g_name.setText(lensName(g_qc.trimmed(), powerText(g_qgd.number()), powerText(g_sgd.number())));
}

void TF_Spxxgl_Modi2::btnSaveClick() {
  if (!checkFields()) return;
  GoodsDraft draft = before_;
  readDraft(draft);
  draft.name = g_name.trimmed();
  draft.barcode = g_sptm.trimmed();
  // Powers that were not touched keep their text: the power table goes by it.
  LensPowers& lens = *draft.lens;
  lens.product = g_qc.trimmed();
  if (lens.sphere.toDouble() != g_qgd.number()) lens.sphere = powerText(g_qgd.number());
  if (lens.cylinder.toDouble() != g_sgd.number()) lens.cylinder = powerText(g_sgd.number());
  draft.warnSameName = false;
  if (!changeGoods(id_, draft, false, prompt())) return;
  pictureFollows(before_.number, id_);
  accept();
}

namespace spxxgl_lens_detail {
const ui::Registered<TF_Spxxgl_Add2> kRegisteredAdd2{"F_Spxxgl_Add2"};
const ui::Registered<TF_Spxxgl_Add3> kRegisteredAdd3{"F_Spxxgl_Add3"};
const ui::Registered<TF_Spxxgl_Modi2> kRegisteredModi2{"F_Spxxgl_Modi2"};
}  // namespace spxxgl_lens_detail

}  // namespace jxc
