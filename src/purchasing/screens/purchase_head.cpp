#include "purchasing/screens/purchase_head.h"

#include "masterdata/screens/partner_picker.h"
#include "stock/screens/head_screen.h"

namespace jxc {
namespace purchase_head_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"dateCg", "单据日期：", FieldKind::Date},
    {"tghs", "供货商：", FieldKind::Picker},
    {"comCk", "仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tfpno", "发票号码：", FieldKind::Text, "jxc_jhd.j_fpno"},
    {"tfpje", "发票金额：", FieldKind::Money},
    {"tyf", "运费：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tbzf", "包装费：", FieldKind::Money, "", 0, ui::NoMinus},
    {"chkYf", "我方付费", FieldKind::Check},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr HeadScreenSpec kHead = {.screen = {.name = "F_ModiDateJh",
                                             .title = "修改采购单据",
                                             .fields = kFields,
                                             .commands = kCommands,
                                             .focus = "dateCg"},
                                  .pickPartner = pickSupplier,
                                  .partner = "tghs",
                                  .employeeFlag = "u_cg"};

class TF_ModiDateJh : public HeadScreen {
 public:
  TF_ModiDateJh() : HeadScreen(kHead) {}
};

const ui::Registered<TF_ModiDateJh> kRegistered{"F_ModiDateJh"};

}  // namespace purchase_head_detail

QString changePurchaseHead(const DocumentFamily& family, const QString& number) {
  return ui::screenAs<HeadScreen>("F_ModiDateJh").change(family, number);
}

}  // namespace jxc
