#include "stock/screens/modi_date.h"

#include "core/reading.h"
#include "masterdata/screens/partner_picker.h"
#include "stock/document.h"
#include "stock/screens/head_screen.h"

namespace jxc {
namespace modi_date_detail {

using ui::FieldKind;

constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

constexpr ui::FieldSpec kDateFields[] = {
    {"gldjh", "单据编号：", FieldKind::Text},
    {"dateCg", "单据日期：", FieldKind::Date},
};
constexpr ui::ScreenSpec kDate = {
    .name = "F_ModiDate", .title = "更改日期", .fields = kDateFields, .commands = kCommands, .focus = "dateCg"};

constexpr ui::FieldSpec kSaleFields[] = {
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
constexpr HeadScreenSpec kSale = {.screen = {.name = "F_ModiDateXs",
                                             .title = "修改销售单据",
                                             .fields = kSaleFields,
                                             .commands = kCommands,
                                             .focus = "dateCg"},
                                  .pickPartner = pickCustomer,
                                  .partner = "tkh",
                                  .employeeFlag = "u_xs"};

class TF_ModiDateXs : public HeadScreen {
 public:
  TF_ModiDateXs() : HeadScreen(kSale) {}
};

class TF_ModiDate : public ui::Screen {
 public:
  TF_ModiDate() : Screen(kDate) {
    gldjh.setReadOnly(true);
    on(command("btnOK"), [this] { saveValue(); });
  }
  QString change(const DocumentFamily& family, const QString& number) {
    family_ = &family;
    number_ = number;
    result_.clear();
    showModal();
    return result_;
  }
  ui::Field& gldjh = field("gldjh");
  ui::Field& dateCg = field("dateCg");

 protected:
  void activate() override {
    gldjh.setText(number_);
    if (family_)
      dateCg.setText(
          lookupValue(compose("select {} from {} where {}=?", {family_->date, family_->head, family_->number}), number_)
              .left(10));
  }

 private:
  void saveValue() {
    if (!checkFields() || !family_) return;
    if (!confirmDocumentDate(dateCg.text(), prompt())) return dateCg.focus();
    result_ = changeWaitingHead(*family_, number_, {.date = dateCg.text()}, prompt());
    if (!result_.isEmpty()) accept();
  }
  const DocumentFamily* family_ = nullptr;
  QString number_, result_;
};

const ui::Registered<TF_ModiDate> kDateRegistered{"F_ModiDate"};
const ui::Registered<TF_ModiDateXs> kSaleRegistered{"F_ModiDateXs"};

}  // namespace modi_date_detail

QString changeDocumentDate(const DocumentFamily& family, const QString& number) {
  return ui::screenAs<modi_date_detail::TF_ModiDate>("F_ModiDate").change(family, number);
}

QString changeSaleHead(const DocumentFamily& family, const QString& number) {
  return ui::screenAs<HeadScreen>("F_ModiDateXs").change(family, number);
}

}  // namespace jxc
