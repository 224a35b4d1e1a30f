// 借转销售: the customer keeps what was lent: its price, and what of the deposit is rent.
#include "core/clock.h"
#include "core/fillers.h"
#include "core/session.h"
#include "core/text.h"
#include "masterdata/partner_side.h"
#include "masterdata/partners.h"
#include "sales/loan_sale.h"
#include "sales/sale.h"
#include "sales/screens/khjhgl_back.h"
#include "stock/screens/audit_screen.h"
#include "stock/screens/trading_parts.h"
#include "ui/screen.h"

#include <QTimer>

namespace jxc {
namespace khjhgl_xs_detail {

using loan_sale::Conversion;
using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tkh", "客户：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tgname", "商品：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"jh_xssl", "销售数量：", FieldKind::Quantity, "", 0, ui::ReadOnly},
    {"dateCg", "销售日期：", FieldKind::Date},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tdj", "销售单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tlsj", "零售价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tyfje", "应付金额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsfje", "实付金额：", FieldKind::Money, "", 0, ui::NoMinus},
    {"comJsfs", "结算方式：", FieldKind::Combo},
    {"comYhzh", "收款账户：", FieldKind::Combo},
    {"ts", "借用天数：", FieldKind::Integer, "", 0, ui::ReadOnly},
    {"tzj", "单位租金：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tyj2", "可用押金：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"chkZj", "免收租金", FieldKind::Check},
    {"tyj", "扣除押金：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tthyj", "退回押金：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tnote", "备注：", FieldKind::Text, "", 180, ui::OffersRemarks},
};

class TF_Khjhgl_Xs : public ui::Screen {
 public:
  TF_Khjhgl_Xs()
      : Screen({.name = "F_Khjhgl_Xs",
                .title = "新增借货转销售",
                .fields = kFields,
                .commands = trading_parts::okCancel,
                .focus = "tdj"}) {
    panel()
        .warning(u"转销售时当前的借货商品须全部销售，(销售数量等于尚未还货的数量)"_qs)
        .form({"tkh tgname jh_xssl", "dateCg comUser tlsj", "tdj tyfje tsfje", "comJsfs comYhzh", "ts tzj tyj2",
               "chkZj tyj tthyj", "tnote"})
        .buttons("| btnOK btnCancel");
    tdj.onChanged([this] {
      sale_.setPrice(tdj.number());
      tyfje.setNumber(sale_.payable);
      tsfje.setNumber(sale_.paid);
    });
    chkZj.onChanged([this] {
      sale_.takeRent(!chkZj.isChecked());
      tyj.setNumber(sale_.rentTaken);
      tthyj.setNumber(sale_.refund);
    });
    tyj.onChanged([this] {
      sale_.setRentTaken(tyj.number());
      tthyj.setNumber(sale_.refund);
    });
    dateCg.onEnter([this] {
      settleDate();
      return false;
    });
    // Not while the focus is on its way: the question would stand in the middle of it.
    dateCg.onLeft([this] {
      if (dateCg.text() != sale_.date) QTimer::singleShot(0, this, [this] { settleDate(); });
    });
    on(command("btnOK"), [this] { save(); });
  }

  bool keep(std::int64_t line) {
    const auto opened = loan_sale::open(line, prompt());
    if (!opened) return false;
    sale_ = *opened;
    return showModal();
  }

 protected:
  void activate() override {
    field("tkh").setText(partnerName(customerSide, sale_.partner));
    field("tgname").setText(sale_.goods + u'　' +
                            lookupValue("select g_name from jxc_goods where g_sn=?", sale_.goods));
    field("jh_xssl").setNumber(sale_.quantity);
    dateCg.setText(sale_.date);
    comUser.setItems(fillEmployees("u_xs"));
    comUser.setKey(keyToPropose(comUser.items(), sale_.salesperson));
    tlsj.setVisible(strIsTrue(session().cs_lsj));
    tlsj.setNumber(sale_.retail);
    tdj.setNumber(sale_.price);
    tdj.setReadOnly(!sale::rules().lines().priceMayChange());
    tyfje.setNumber(sale_.payable);
    tsfje.setNumber(sale_.paid);
    comJsfs.setItems(settlementItems(u"xs"));
    showSettlement(comJsfs, sale_.settlement);
    comYhzh.setItems(accountItems());
    comYhzh.setKey(sale_.account);
    field("ts").setNumber(sale_.days);
    field("tzj").setNumber(sale_.rent);
    field("tyj2").setNumber(sale_.held);
    chkZj.setChecked(true);
    tyj.setNumber(sale_.rentTaken);
    tthyj.setNumber(sale_.refund);
    tnote.clear();
  }

 private:
  void settleDate() {
    const QString typed = dateCg.text();
    if (typed.isEmpty() || typed == sale_.date || sale_.line == 0) return;
    sale_.setDate(confirmDocumentDate(typed, prompt()) ? typed : clock::today());
    dateCg.setText(sale_.date);
    field("ts").setNumber(sale_.days);
    sale_.takeRent(!chkZj.isChecked());
    tyj.setNumber(sale_.rentTaken);
    tthyj.setNumber(sale_.refund);
  }
  void save() {
    if (sale_.line == 0) return reject();
    if (!checkFields()) return;
    settleDate();
    sale_.salesperson = comUser.key();
    sale_.retail = tlsj.number();
    sale_.paid = tsfje.number();
    sale_.settlement = chosenSettlement(comJsfs);
    sale_.account = comYhzh.key();
    sale_.rentTaken = tyj.number();
    sale_.refund = tthyj.number();
    sale_.note = tnote.trimmed();
    if (loan_sale::save(sale_, prompt())) accept();
  }

  ui::Field& dateCg = field("dateCg");
  ui::Field& comUser = field("comUser");
  ui::Field& tdj = field("tdj");
  ui::Field& tlsj = field("tlsj");
  ui::Field& tyfje = field("tyfje");
  ui::Field& tsfje = field("tsfje");
  ui::Field& comJsfs = field("comJsfs");
  ui::Field& comYhzh = field("comYhzh");
  ui::Field& chkZj = field("chkZj");
  ui::Field& tyj = field("tyj");
  ui::Field& tthyj = field("tthyj");
  ui::Field& tnote = field("tnote");
  Conversion sale_;
};

const ui::Registered<TF_Khjhgl_Xs> kRegistered{"F_Khjhgl_Xs"};

}  // namespace khjhgl_xs_detail

bool keepLoanAsSale(std::int64_t line) {
  return ui::screenAs<khjhgl_xs_detail::TF_Khjhgl_Xs>("F_Khjhgl_Xs").keep(line);
}

}  // namespace jxc
