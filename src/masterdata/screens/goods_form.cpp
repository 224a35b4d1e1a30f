#include "masterdata/screens/goods_form.h"

#include "core/fillers.h"
#include "core/rights.h"
#include "core/session.h"
#include "core/text.h"
#include "masterdata/screens/dwgl.h"
#include "masterdata/screens/goods_camera.h"
#include "masterdata/screens/goods_class_picker.h"
#include "masterdata/screens/goods_picture.h"
#include "masterdata/units.h"
#include "platform/camera/camera.h"
#include "ui/file_dialogs.h"

#include <QFile>
#include <QLabel>

#include <algorithm>

namespace jxc {
namespace goods_form_detail {

constexpr int kSetCommission = 19;  // of the rights "qtcz"
constexpr std::array<std::string_view, 5> kLevels = {"g_sj1", "g_sj2", "g_sj3", "g_sj4", "g_sj5"};

}  // namespace goods_form_detail

GoodsForm::GoodsForm(const ui::ScreenSpec& spec, GoodsClassTree::Show classes) : Screen(spec), classes_(classes) {
  gc_name.onPick([this] { return pickClass(); });
  dw_name.onChanged([this] { unitChanged(); });
  comTcbl.onChanged([this] { showCommission(); });
  comTcbl.setItems({{QStringLiteral("不提成"), QStringLiteral("0")},
                    {QStringLiteral("按件数提成"), QStringLiteral("1")},
                    {QStringLiteral("按比例提成"), QStringLiteral("2")},
                    {QStringLiteral("按毛利提成"), QStringLiteral("3")}});
}

void GoodsForm::prepare() {
  setUnit(dw_name.text());
  const bool levels = strIsTrue(session().cs_cs013);
  for (const auto name : goods_form_detail::kLevels)
    field(name).setVisible(levels);
  g_lsj.setVisible(strIsTrue(session().cs_lsj));
  g_lsj.widget()->setToolTip(QStringLiteral("零售价不参与任何业务，可以打印。"));
  const bool commissions = hasRight("qtcz", goods_form_detail::kSetCommission);
  comTcbl.setVisible(commissions);
  tTcbl.setVisible(commissions);
  chosenPicture_.clear();
  showCommission();
}

void GoodsForm::setUnit(const QString& name) {
  std::vector<ListItem> items;
  bool known = false;
  for (const Row row : selectUnits()) {
    items.push_back({row.text("dw_name"), row.text("dw_name")});
    known = known || row.text("dw_name") == name;
  }
  // An article keeps its unit also when the word was taken off the list.
  if (!known && !name.isEmpty()) items.push_back({name, name});
  items.push_back({QStringLiteral("增加新单位..."), {}});  // no key: it is no unit
  dw_name.setItems(items);
  if (!name.isEmpty()) dw_name.setText(name);
  unit_ = dw_name.key();
}

void GoodsForm::unitChanged() {
  if (const QString chosen = dw_name.key(); !chosen.isEmpty()) {
    unit_ = chosen;
    return;
  }
  const QString taken = ui::screenAs<TF_Dwgl>("F_Dwgl").pick();
  setUnit(taken.isEmpty() ? unit_ : taken);
}

void GoodsForm::showCommission() {
  const int kind = comTcbl.index();
  tTcbl.setLabel(kind == 1   ? QStringLiteral("每件提成：")
                 : kind >= 2 ? QStringLiteral("提成比例：")
                             : QStringLiteral("提成金额："));
  tTcbl.suffix()->setText(kind == 1 ? QStringLiteral("元") : kind >= 2 ? QStringLiteral("%") : QString());
  tTcbl.suffix()->setVisible(kind > 0);  // empty it would still take room
  tTcbl.setEnabled(kind > 0);
}

std::optional<ListItem> GoodsForm::pickClass() {
  const auto chosen =
      ui::screenAs<TF_Spxxgl_Class>("F_Spxxgl_Class").pick(classes_, class_ ? class_->number : QString());
  if (!chosen) return {};
  setClass(chosen);
  classChosen();
  return ListItem{chosen->name, chosen->number};
}

void GoodsForm::setClass(const std::optional<GoodsClass>& chosen) {
  class_ = chosen;
  gc_name.setPicked(chosen ? ListItem{chosen->name, chosen->number} : ListItem{});
}

void GoodsForm::showDraft(const GoodsDraft& draft) {
  g_sn.setText(draft.number);
  if (!draft.unit.isEmpty()) setUnit(draft.unit);
  g_jj.setNumber(draft.purchasePrice);
  g_sj.setNumber(draft.salePrice);
  g_lsj.setNumber(draft.retailPrice);
  for (std::size_t i = 0; i < draft.levelPrices.size(); ++i)
    field(goods_form_detail::kLevels[i]).setNumber(draft.levelPrices[i]);
  g_zdkc.setNumber(draft.lowestStock);
  comTcbl.setIndex(std::clamp(draft.commissionKind, 0, 3));
  tTcbl.setNumber(draft.commission);
  g_sccs.setText(draft.origin);
  g_bz.setText(draft.note);
  g_gdcbj.setChecked(draft.fixedCost);
  showCommission();
}

void GoodsForm::readDraft(GoodsDraft& draft) const {
  draft.classNumber = class_ ? std::optional(class_->number) : std::nullopt;
  draft.number = g_sn.trimmed();
  draft.unit = dw_name.key();
  draft.purchasePrice = g_jj.number();
  draft.salePrice = g_sj.number();
  draft.retailPrice = g_lsj.number();
  for (std::size_t i = 0; i < draft.levelPrices.size(); ++i) {
    draft.levelPrices[i] = const_cast<GoodsForm*>(this)->field(goods_form_detail::kLevels[i]).number();
  }
  draft.lowestStock = g_zdkc.integer();
  draft.commissionKind = std::max(0, comTcbl.index());
  draft.commission = tTcbl.number();
  draft.origin = g_sccs.trimmed();
  draft.note = g_bz.trimmed();
  draft.fixedCost = g_gdcbj.isChecked();
}

void GoodsForm::hidePricesWithoutRight() {
  g_jj.setVisible(session().canSeeCost);
  g_sj.setVisible(session().canSeePrice);
  if (session().canSeePrice) return;
  g_lsj.setVisible(false);
  for (const auto name : goods_form_detail::kLevels)
    field(name).setVisible(false);
}

void GoodsForm::lockNumber(bool locked) {
  g_sn.setReadOnly(locked);
  g_sn.widget()->setToolTip(locked ? QStringLiteral("该商品已有业务，编号不能修改") : QString());
}

std::optional<GoodsClass> GoodsForm::goodsClassNumbered(const std::optional<QString>& number) {
  const auto classes = goodsClasses();
  const auto found =
      std::find_if(classes.begin(), classes.end(), [&](const GoodsClass& one) { return one.number == number; });
  return found == classes.end() ? std::nullopt : std::optional(*found);
}

void GoodsForm::pictureFollows(const QString& numberBefore, std::int64_t id) {
  const QString number = lookupValue("select g_sn from jxc_goods where id=?", id);
  if (number != numberBefore) QFile::rename(goodsPictureFile(numberBefore), goodsPictureFile(number));
  savePicture(number);
}

void GoodsForm::placePicture(ui::Panel& side) {
  picture_ = new QLabel(QStringLiteral("没有图片"));
  picture_->setObjectName(QStringLiteral("imagePic"));
  picture_->setAccessibleName(QStringLiteral("商品图片"));
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setFrameShape(QFrame::Box);
  picture_->setFixedSize(fontMetrics().averageCharWidth() * 26, fontMetrics().height() * 9);
  side.widget(picture_).buttons("btnPic").buttons("btnCam").stretch();
  on(command("btnCam"), [this] { takePicture(); });
  on(command("btnPic"), [this] { choosePicture(); });
}

void GoodsForm::choosePicture() {
  const QString file =
      ui::chooseOpenFile(this, QStringLiteral("选择图片"),
                         QStringLiteral("图片文件 (*.bmp *.gif *.png *.jpg *.jpeg *.BMP *.GIF *.PNG *.JPG)"));
  if (!file.isEmpty()) usePicture(file);
}

void GoodsForm::usePicture(const QString& file) {
  showPicture(file);
  if (picture_->pixmap(Qt::ReturnByValue).isNull()) {
    prompt().notice(QStringLiteral("图片文件不能读取，请选择其他图片！"));
    return;
  }
  chosenPicture_ = file;
}

void GoodsForm::takePicture() {
  if (!isCameraConnected()) {
    prompt().notice(QStringLiteral("没有找到摄像头，请连接摄像头后再试，或者选择图片文件！"));
    return;
  }
  const QString file = ui::screenAs<TF_Spxxgl_Cam>("F_Spxxgl_Cam").shoot();
  if (!file.isEmpty()) usePicture(file);
}

void GoodsForm::showPicture(const QString& file) {
  const QPixmap picture = goodsPicture(file, picture_->size() - QSize(4, 4));
  if (picture.isNull()) {
    picture_->setText(QStringLiteral("没有图片"));
  } else {
    picture_->setPixmap(picture);
  }
}

void GoodsForm::savePicture(const QString& number) {
  if (chosenPicture_.isEmpty()) return;
  const QString file = std::exchange(chosenPicture_, QString());
  try {
    saveGoodsPicture(number, file);
    if (file == cameraPictureFile()) QFile::remove(file);
  } catch (const std::runtime_error& failure) {
    // The article is saved; its picture can be chosen again.
    prompt().notice(QString::fromUtf8(failure.what()));
  }
}

OrdinaryGoodsForm::OrdinaryGoodsForm(const ui::ScreenSpec& spec) : GoodsForm(spec, GoodsClassTree::Show::Ordinary) {
  chkAlert.setChecked(true);
}

void OrdinaryGoodsForm::prepareOrdinary() {
  prepare();
  gg_name.setItems(fillPlainCombo("jxc_ggxh", "gg_name", {}, false, "id"));
  color_name.setItems(fillPlainCombo("jxc_color", "color_name", {}, false, "id"));
}

void OrdinaryGoodsForm::showOrdinary(const GoodsDraft& draft) {
  showDraft(draft);
  g_name.setText(draft.name);
  g_sptm.setText(draft.barcode);
  gg_name.setText(draft.model);
  color_name.setText(draft.colour);
  g_iszp.setChecked(draft.mayBeGift);
}

GoodsDraft OrdinaryGoodsForm::readOrdinary() const {
  GoodsDraft draft;
  readDraft(draft);
  draft.name = g_name.trimmed();
  draft.barcode = g_sptm.trimmed();
  draft.model = gg_name.trimmed();
  draft.colour = color_name.trimmed();
  draft.mayBeGift = g_iszp.isChecked();
  draft.warnSameName = chkAlert.isChecked();
  return draft;
}

}  // namespace jxc
