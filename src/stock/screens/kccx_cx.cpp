// 查找库存: what the enquiry of current stock is asked for beside its inputs: a supplier, a comparison of the stock.
#include "core/fillers.h"
#include "ui/screen.h"

namespace jxc::kccx_cx_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"comCk", "仓库：", FieldKind::Combo},
    {"comGhs", "供货商：", FieldKind::Combo},
    {"comBj", "当前库存：", FieldKind::Combo},
    {"tsl", "数量：", FieldKind::Quantity},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Kccx_Cx", .title = "查找库存", .fields = kFields, .commands = kCommands, .focus = "comCk"};

class TF_Kccx_Cx : public ui::Screen {
 public:
  TF_Kccx_Cx() : Screen(kScreen) {
    panel().form({"comCk", "comGhs", "comBj tsl"}).buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] { accept(); });
  }

 protected:
  void activate() override {
    field("comCk").setItems(fillOwnWarehouses(), true);
    std::vector<ListItem> suppliers{{QStringLiteral("所有供货商"), {}}};
    for (const Row row : fillSuppliers())
      suppliers.push_back({row.text("ghs_name"), row.text("ghs_sn")});
    field("comGhs").setItems(suppliers);
    std::vector<ListItem> signs{{QStringLiteral("不限"), {}}};
    for (const char16_t* sign : {u"=", u">=", u"<=", u"<>", u">", u"<"})
      signs.push_back({QString::fromUtf16(sign), QString::fromUtf16(sign)});
    field("comBj").setItems(signs);
    field("tsl").setNumber(0);
  }
};

const ui::Registered<TF_Kccx_Cx> kRegistered{"F_Kccx_Cx"};

}  // namespace jxc::kccx_cx_detail
