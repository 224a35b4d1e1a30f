#include "purchasing/screens/kcbj_modi.h"

#include "engine/row_set.h"
#include "masterdata/goods_change.h"
#include "ui/screen.h"

namespace jxc {
namespace kcbj_modi_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tname", "商品名称：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tkc", "库存数量：", FieldKind::Quantity, "", 0, ui::ReadOnly},
    {"tsl", "库存下限：", FieldKind::Integer, "", 9, ui::NoMinus},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Kcbj_Modi", .title = "修改商品库存下限", .fields = kFields, .commands = kCommands, .focus = "tsl"};

class TF_Kcbj_Modi : public ui::Screen {
 public:
  TF_Kcbj_Modi() : Screen(kScreen) {
    panel()
        .form({"tname", "tkc tsl"})
        .text(QStringLiteral("库存下限属于商品，对所有仓库有效。"))
        .buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] {
      if (checkFields() && changeGoodsCell(id_, "g_zdkc", field("tsl").text(), prompt())) accept();
    });
  }
  bool change(const Row& goods) {
    id_ = goods.integer("id");
    field("tname").setText(goods.text("g_sn") + u' ' + goods.text("g_name"));
    field("tkc").setNumber(goods.number("kc"));
    field("tsl").setNumber(goods.number("g_zdkc"));
    return showModal();
  }

 private:
  std::int64_t id_ = 0;
};
const ui::Registered<TF_Kcbj_Modi> kRegistered{"F_Kcbj_Modi"};

}  // namespace kcbj_modi_detail

bool changeMinimum(const Row& goods, Prompt&) {
  return ui::screenAs<kcbj_modi_detail::TF_Kcbj_Modi>("F_Kcbj_Modi").change(goods);
}

}  // namespace jxc
