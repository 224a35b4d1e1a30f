#include "sales/screens/sales_head.h"

#include "masterdata/screens/partner_picker.h"
#include "stock/screens/head_screen.h"
#include "stock/screens/trading_parts.h"

namespace jxc {
namespace sales_head_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"dateCg", "单据日期：", FieldKind::Date},
    {"tkh", "客户：", FieldKind::Picker},
    {"comCk", "仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tfpno", "发票号码：", FieldKind::Text, "jxc_lsxsd.ls_fpno"},
    {"tfpje", "发票金额：", FieldKind::Money},
    {"tyf", "运费：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tbzf", "包装费：", FieldKind::Money, "", 0, ui::NoMinus},
    {"chkYf", "我方付费", FieldKind::Check},
};
constexpr HeadScreenSpec kHead = {.screen = {.name = "F_ModiDateXs",
                                             .title = "修改销售单据",
                                             .fields = kFields,
                                             .commands = trading_parts::okCancel,
                                             .focus = "dateCg"},
                                  .side = &customerSide,
                                  .pickPartner = pickCustomer,
                                  .partner = "tkh",
                                  .employeeFlag = "u_xs"};

class TF_ModiDateXs : public HeadScreen {
 public:
  TF_ModiDateXs() : HeadScreen(kHead) {}
};

const ui::Registered<TF_ModiDateXs> kRegistered{"F_ModiDateXs"};

}  // namespace sales_head_detail

QString changeSalesHead(const DocumentFamily& family, const QString& number) {
  return ui::screenAs<HeadScreen>("F_ModiDateXs").change(family, number);
}

}  // namespace jxc
