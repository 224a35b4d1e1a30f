#include "purchasing/screens/kcbj_modi.h"

#include "masterdata/goods_change.h"
#include "stock/screens/goods_figure_screen.h"

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

class TF_Kcbj_Modi : public GoodsFigureScreen {
 public:
  TF_Kcbj_Modi() : GoodsFigureScreen(kScreen) {
    panel()
        .form({"tname", "tkc tsl"})
        .text(QStringLiteral("库存下限属于商品，对所有仓库有效。"))
        .buttons("| btnOK btnCancel");
  }
  bool changeOf(const Row& goods) {
    field("tkc").setNumber(goods.number("kc"));
    field("tsl").setNumber(goods.number("g_zdkc"));
    return ask(goods);
  }

 private:
  bool change(Prompt& asked) override { return changeGoodsCell(id(), "g_zdkc", field("tsl").text(), asked); }
};
const ui::Registered<TF_Kcbj_Modi> kRegistered{"F_Kcbj_Modi"};

}  // namespace kcbj_modi_detail

bool changeMinimum(const Row& goods, Prompt&) {
  return ui::screenAs<kcbj_modi_detail::TF_Kcbj_Modi>("F_Kcbj_Modi").changeOf(goods);
}

}  // namespace jxc
