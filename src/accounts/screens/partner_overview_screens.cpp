#include "accounts/screens/partner_overview_screens.h"

#include "accounts/cash_accounts.h"
#include "core/clock.h"
#include "core/defaults.h"
#include "core/rights.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "masterdata/screens/partner_text.h"
#include "output/money_reports.h"
#include "output/screens/print_outlet.h"

namespace jxc {
namespace partner_overview_screens_detail {

using ui::FieldKind;

// ---- settling ----------------------------------------------------------------------------------------------------

template <PartnerType Side>
constexpr ui::FieldSpec kSettleFields[] = {
    {"tdjh", "单据号：", FieldKind::Text, "", 16, ui::ReadOnly},
    {"tname", joined<PartnerText<Side>::noun, "：">, FieldKind::Text, "", 128, ui::ReadOnly},
    {"tyfje", joined<"单据", PartnerText<Side>::owed, "：">, FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsfje", joined<"单据", PartnerText<Side>::got, "：">, FieldKind::Money, "", 0, ui::ReadOnly},
    {"thkje", "已回款：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"kh_ye", joined<PartnerText<Side>::noun, PartnerText<Side>::owed, "：">, FieldKind::Total, "", 0, ui::ReadOnly},
    {"tje", joined<"本次", PartnerText<Side>::taken, "：">, FieldKind::Money},
    {"comYhzh", "账户：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"dateCg", "日期：", FieldKind::Date},
    {"tnote", "备注：", FieldKind::Text, "", 100, ui::OffersRemarks},
    {"chkPrin", "保存后打印", FieldKind::Check},
    {"chkQk",
     joined<"该单据已", PartnerText<Side>::taken, "，直接清除本单据的欠款(不改变该", PartnerText<Side>::noun, "的",
            PartnerText<Side>::owed, "款)">,
     FieldKind::Check},
};
constexpr ui::CommandSpec kSaveCommands[] = {{"btnSave", "保存", "F5"}, {"btnCancel", "取消", "Esc"}};
template <PartnerType Side>
constexpr ui::ScreenSpec settleSpec(std::string_view name) {
  return {.name = name,
          .title = joined<"单据", PartnerText<Side>::taken>,
          .fields = kSettleFields<Side>,
          .commands = kSaveCommands,
          .focus = "tje"};
}

// ---- repair ------------------------------------------------------------------------------------------------------

template <PartnerType Side>
constexpr ui::FieldSpec kRepairFields[] = {
    {"tname", joined<PartnerText<Side>::noun, "：">, FieldKind::Text, "", 128, ui::ReadOnly},
    {"tdate", "开始日期：", FieldKind::Text, "", 10, ui::ReadOnly}};
template <PartnerType Side>
constexpr ui::ScreenSpec repairSpec(std::string_view name, std::string_view title) {
  return {.name = name, .title = title, .fields = kRepairFields<Side>, .commands = kSaveCommands};
}

/// The texts of the customers' side in the other side's words.
QString sideText(const PartnerSide& side, QString text) {
  if (side.isCustomer()) return text;
  return text.replace(u"客户"_qs, u"供货商"_qs).replace(u"应收"_qs, u"应付"_qs).replace(u"已收"_qs, u"已付"_qs);
}

/// The same in the words of invoices, which are those of both sides.
QString invoiceText(QString text) {
  return text.replace(u"应收款"_qs, u"应开发票"_qs).replace(u"应收"_qs, u"应开"_qs).replace(u"已收"_qs, u"已开"_qs);
}

struct TF_Yskgl_Sk : SettlementScreen {
  TF_Yskgl_Sk() : SettlementScreen(settleSpec<PartnerType::Customer>("F_Yskgl_Sk"), customerSide) {}
};
struct TF_Yfkgl_Fk : SettlementScreen {
  TF_Yfkgl_Fk() : SettlementScreen(settleSpec<PartnerType::Supplier>("F_Yfkgl_Fk"), supplierSide) {}
};
struct TF_Yskgl_Js : PartnerRepairScreen {
  TF_Yskgl_Js()
      : PartnerRepairScreen(repairSpec<PartnerType::Customer>("F_Yskgl_Js", "重新计算应收款"),
                            partner_books::owedLedger, customerSide) {}
};
struct TF_Yfkgl_Js : PartnerRepairScreen {
  TF_Yfkgl_Js()
      : PartnerRepairScreen(repairSpec<PartnerType::Supplier>("F_Yfkgl_Js", "重新计算应付款"),
                            partner_books::owedLedger, supplierSide) {}
};
struct TF_Fpxs_Js : PartnerRepairScreen {
  TF_Fpxs_Js()
      : PartnerRepairScreen(repairSpec<PartnerType::Customer>("F_Fpxs_Js", "重新计算销售发票"),
                            partner_books::invoiceLedger, customerSide) {}
};
struct TF_Fpcg_Js : PartnerRepairScreen {
  TF_Fpcg_Js()
      : PartnerRepairScreen(repairSpec<PartnerType::Supplier>("F_Fpcg_Js", "重新计算进货发票"),
                            partner_books::invoiceLedger, supplierSide) {}
};

const ui::Registered<TF_Yskgl_Sk> kRegisteredYskglSk{"F_Yskgl_Sk"};
const ui::Registered<TF_Yfkgl_Fk> kRegisteredYfkglFk{"F_Yfkgl_Fk"};
const ui::Registered<TF_Yskgl_Js> kRegisteredYskglJs{"F_Yskgl_Js"};
const ui::Registered<TF_Yfkgl_Js> kRegisteredYfkglJs{"F_Yfkgl_Js"};
const ui::Registered<TF_Fpxs_Js> kRegisteredFpxsJs{"F_Fpxs_Js"};
const ui::Registered<TF_Fpcg_Js> kRegisteredFpcgJs{"F_Fpcg_Js"};

}  // namespace partner_overview_screens_detail

// ---- settling ----------------------------------------------------------------------------------------------------

SettlementScreen::SettlementScreen(const ui::ScreenSpec& spec, const PartnerSide& side) : Screen(spec), side_(side) {
  panel()
      .form({"tdjh tname", "tyfje tsfje", "thkje kh_ye", "tje comYhzh", "comUser dateCg", "tnote", "chkQk", "chkPrin"})
      .text(partner_overview_screens_detail::sideText(
          side_, QStringLiteral("注：超出本单据应收金额部分，将计入该客户的应收账款，\r该客户的应收款将减少。")))
      .buttons("| btnSave btnCancel");
  on(command("btnSave"), [this] { save(); });
}

bool SettlementScreen::edit(const partner_books::Settlement& settlement) {
  settlement_ = settlement;
  return showModal();
}

bool editSettlement(const PartnerSide& side, const std::optional<partner_books::Settlement>& opened) {
  return opened && ui::screenAs<SettlementScreen>(side.isCustomer() ? "F_Yskgl_Sk" : "F_Yfkgl_Fk").edit(*opened);
}

void SettlementScreen::activate() {
  field("tdjh").setText(settlement_.number);
  field("tname").setText(settlement_.partnerName);
  field("tyfje").setNumber(settlement_.due);
  field("tsfje").setNumber(settlement_.paid);
  field("thkje").setNumber(settlement_.collected);
  field("kh_ye").setNumber(settlement_.balance);
  field("tje").load(settlement_.proposed);
  field("comYhzh").setItems(cash::fillAccounts());
  if (!settlement_.account.isEmpty()) field("comYhzh").setKey(settlement_.account);
  field("comUser").setItems(fillEmployees());
  field("comUser").setKey(keyToPropose(field("comUser").items(),
                                       settlement_.employee.isEmpty() ? defaultEmployeeSn() : settlement_.employee));
  field("dateCg").setText(clock::today());
  field("dateCg").setEnabled(hasRight("wlzk", 11));
  field("tnote").clear();
  field("chkQk").setChecked(false);
  field("chkPrin").setChecked(false);
}

void SettlementScreen::save() {
  if (!checkFields()) return;
  const partner_books::SettlementDraft draft{.number = settlement_.number,
                                             .date = field("dateCg").text(),
                                             .amount = field("tje").number(),
                                             .account = field("comYhzh").key(),
                                             .employee = field("comUser").key(),
                                             .note = field("tnote").trimmed(),
                                             .writeOff = field("chkQk").isChecked(),
                                             .shownOpen = settlement_.proposed};
  if (!partner_books::settleDocument(side_, draft, prompt())) return;
  accept();
  // Writing off makes no receipt: there is nothing to hand over.
  if (field("chkPrin").isChecked() && !draft.writeOff)
    sendToPaper(settlementReport(side_, draft.number), PrintWay::Preview, parentWidget(), draft.number);
}

// ---- repair ------------------------------------------------------------------------------------------------------

PartnerRepairScreen::PartnerRepairScreen(const ui::ScreenSpec& spec, const partner_books::PartnerLedger& ledger,
                                         const PartnerSide& side)
    : Screen(spec), ledger_(ledger), side_(side) {
  using namespace partner_overview_screens_detail;
  const QString explanation = QStringLiteral(
      "通常情况下不需要重新计算应收款，由于未知原因出现期末应收金额与期初应收、本期应收、本期已收之间的计算值不一致时，"
      "可以"
      "使用本功能重新计算期末应收金额。此功能只用于期末应收金额与期初应收、本期应收、本期已收之间的计算值不一致的情况"
      "。");
  const bool ofInvoices = &ledger_ == &partner_books::invoiceLedger;
  panel()
      .form({"tname", "tdate"})
      .text(ofInvoices ? invoiceText(explanation) : sideText(side_, explanation))
      .buttons("| btnSave btnCancel");
  on(command("btnSave"), [this] {
    if (!from_.isEmpty() && partner_books::recomputePartners(ledger_, side_, partner_, from_, prompt())) accept();
  });
}

bool PartnerRepairScreen::run(const QString& partner, const QString& from) {
  partner_ = partner;
  from_ = from;
  const QString all = QStringLiteral("所有") + words(side_.noun);
  field("tname").setText(partner.isEmpty() ? all : partnerName(side_, partner));
  field("tdate").setText(from);
  return showModal();
}

}  // namespace jxc
