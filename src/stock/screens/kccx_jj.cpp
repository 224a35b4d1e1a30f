#include "stock/screens/kccx_jj.h"

#include "core/reading.h"
#include "stock/average_change.h"
#include "stock/screens/goods_figure_screen.h"
#include "stock/screens/preview_screen.h"

namespace jxc {
namespace kccx_jj_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tname", "商品名称：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tck", "仓库：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tyjj", "现在均价：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"txjj", "新均价：", FieldKind::Money, "", 0, ui::NoMinus},
};
constexpr ui::CommandSpec kCommands[] = {
    {"btnOK", "确定", "F5"}, {"btnPreview", "预览影响", "F9"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Kccx_Jj", .title = "修改当前库存均价", .fields = kFields, .commands = kCommands, .focus = "txjj"};

class TF_Kccx_Jj : public GoodsFigureScreen {
 public:
  TF_Kccx_Jj() : GoodsFigureScreen(kScreen) {
    panel()
        .warning(QStringLiteral("成本均价由系统累计得出，用于计算销售毛利，请不要经常修改。\n"
                                "以后补录或取消较早的单据时，系统会重新推算均价并覆盖修改。"))
        .form({"tname", "tck", "tyjj txjj"})
        .buttons("btnPreview | btnOK btnCancel");
    on(command("btnPreview"), [this] {
      if (checkFields())
        showWhatIf(QStringLiteral("修改均价"), goods(), [this](Prompt& agreeing) { return change(agreeing); });
    });
  }
  bool changeOf(const Row& goods, const QString& warehouse) {
    warehouse_ = warehouse;
    field("tck").setText(warehouse.isEmpty() ? QStringLiteral("所有仓库")
                                             : lookupValue("select ck_name from jxc_ckxx where ck_sn=?", warehouse));
    field("tyjj").setNumber(averageToChange(goods.text("g_sn"), warehouse));
    return ask(goods);
  }

 protected:
  void activate() override { field("txjj").clear(); }

 private:
  bool change(Prompt& asked) override { return changeAverage(goods(), warehouse_, field("txjj").number(), asked); }
  QString warehouse_;
};
const ui::Registered<TF_Kccx_Jj> kRegistered{"F_Kccx_Jj"};

}  // namespace kccx_jj_detail

bool changeAverageOf(const Row& goods, const QString& warehouse) {
  return ui::screenAs<kccx_jj_detail::TF_Kccx_Jj>("F_Kccx_Jj").changeOf(goods, warehouse);
}

}  // namespace jxc
