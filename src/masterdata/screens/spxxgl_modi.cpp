#include "masterdata/screens/spxxgl_modi.h"

#include "masterdata/goods_change.h"
#include "masterdata/screens/goods_picture.h"

namespace jxc {
namespace spxxgl_modi_detail {

using ui::FieldKind;

constexpr auto kOwnFields = std::to_array<ui::FieldSpec>({{"chkTc", "提成应用到本类别所有商品", FieldKind::Check}});
constexpr auto kFields = joinFields(kGoodsFields, kOrdinaryGoodsFields, kOwnFields);
constexpr ui::ScreenSpec kScreen = {.name = "F_Spxxgl_Modi",
                                    .title = "修改商品",
                                    .fields = kFields,
                                    .commands = kOrdinaryGoodsCommands,
                                    .focus = "g_name"};

}  // namespace spxxgl_modi_detail

TF_Spxxgl_Modi::TF_Spxxgl_Modi() : OrdinaryGoodsForm(spxxgl_modi_detail::kScreen) {
  auto area = panel();
  auto [form, side] = area.columns(1, 0);
  form.form({"gc_name g_sn", "g_name", "g_sptm dw_name", "gg_name color_name", "g_jj g_sj", "g_lsj g_sj1",
             "g_sj2 g_sj3", "g_sj4 g_sj5", "g_zdkc comTcbl", "tTcbl g_sccs", "g_bz", "g_gdcbj g_iszp",
             "chkAlert chkTc"});
  placePicture(side);
  area.buttons("| btnSave btnCancel");
  on(btnSave, [this] { btnSaveClick(); });
}

bool TF_Spxxgl_Modi::edit(std::int64_t id) {
  id_ = id;
  const bool saved = showModal();
  id_ = 0;
  return saved;
}

void TF_Spxxgl_Modi::activate() {
  prepareOrdinary();
  chkTc.setChecked(false);
  chkTc.setVisible(comTcbl.isVisible());
  before_ = id_ == 0 ? GoodsDraft() : readGoods(id_);
  showOrdinary(before_);
  hidePricesWithoutRight();
  setClass(goodsClassNumbered(before_.classNumber));
  lockNumber(!mayRenumberGoods(before_));
  showPicture(goodsPictureFile(before_.number));
}

void TF_Spxxgl_Modi::btnSaveClick() {
  if (!checkFields()) return;
  const GoodsDraft draft = readOrdinary();
  if (!changeGoods(id_, draft, chkTc.isVisible() && chkTc.isChecked(), prompt())) return;
  pictureFollows(before_.number, id_);
  accept();
}

namespace spxxgl_modi_detail {
const ui::Registered<TF_Spxxgl_Modi> kRegistered{"F_Spxxgl_Modi"};
}

}  // namespace jxc
