#include "accounts/screens/partner_overview_screens.h"

#include "accounts/cash_accounts.h"
#include "core/clock.h"
#include "core/rights.h"
#include "core/session.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_text.h"
#include "output/money_reports.h"
#include "output/screens/print_outlet.h"
#include "ui/period_menu.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace jxc {
namespace partner_overview_screens_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kCustomerFields[] = {
    {"tdate11", "日期：", FieldKind::Date},      {"tdate12", "至", FieldKind::Date},
    {"tKhName1", "客户：", FieldKind::Picker},   {"comUser", "经办人：", FieldKind::Combo},
    {"tkey", "查找：", FieldKind::Text, "", 50}, {"rMxb", "明细表", FieldKind::Radio},
    {"rHzb", "汇总表", FieldKind::Radio},        {"chkZero", "期末应收为零的客户不显示", FieldKind::Check},
    {"chkAll", "所有客户", FieldKind::Check},
};
constexpr ui::FieldSpec kSupplierFields[] = {
    {"tdate11", "日期：", FieldKind::Date},      {"tdate12", "至", FieldKind::Date},
    {"tKhName1", "供货商：", FieldKind::Picker}, {"comUser", "经办人：", FieldKind::Combo},
    {"tkey", "查找：", FieldKind::Text, "", 50}, {"rMxb", "明细表", FieldKind::Radio},
    {"rHzb", "汇总表", FieldKind::Radio},        {"chkZero", "期末应付为零的供货商不显示", FieldKind::Check},
    {"chkAll", "所有供货商", FieldKind::Check},
};

constexpr ui::ColumnSpec kCustomerDetail[] = {
    {"name", "客户", ColumnKind::Text, 20},
    {"k_rq", "日期", ColumnKind::Date},
    {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"k_djtxt", "类型", ColumnKind::Text, 12},
    {"k_qcje", "期初应收", ColumnKind::Money},
    {"k_yfje", "本期应收", ColumnKind::Money, 0, true},
    {"k_sfje", "本期已收", ColumnKind::Money, 0, true},
    {"k_ljje", "期末应收", ColumnKind::Money},
    {"k_fkfs", "账户"},
    {"gl_djh2", "关联单据", ColumnKind::Text, 15},
    {"u_name", "经办人"},
    {"k_note", "备注", ColumnKind::Text, 24},
    {"a_name", "操作员"},
};
constexpr ui::ColumnSpec kSupplierDetail[] = {
    {"name", "供货商", ColumnKind::Text, 20},
    {"k_rq", "日期", ColumnKind::Date},
    {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"k_djtxt", "类型", ColumnKind::Text, 12},
    {"k_qcje", "期初应付", ColumnKind::Money},
    {"k_yfje", "本期应付", ColumnKind::Money, 0, true},
    {"k_sfje", "本期已付", ColumnKind::Money, 0, true},
    {"k_ljje", "期末应付", ColumnKind::Money},
    {"k_fkfs", "账户"},
    {"gl_djh2", "关联单据", ColumnKind::Text, 15},
    {"u_name", "经办人"},
    {"k_note", "备注", ColumnKind::Text, 24},
    {"a_name", "操作员"},
};
constexpr ui::ColumnSpec kGoodsColumns[] = {
    {"g_sn", "商品编号"},
    {"g_name", "商品名称", ColumnKind::Text, 24},
    {"gg_name", "规格型号"},
    {"color_name", "颜色"},
    {"dw_name", "单位", ColumnKind::Text, 6},
    {"gl_sl", "数量", ColumnKind::Quantity, 0, true},
    {"gl_dj", "单价", ColumnKind::Money},
    {"gl_zje", "金额", ColumnKind::Money, 0, true},
    {"ck_name", "仓库"},
    {"gl_bz", "备注", ColumnKind::Text, 20},
};
constexpr ui::ColumnSpec kCustomerSummary[] = {
    {"k_ghskh", "客户编号"},
    {"name", "客户", ColumnKind::Text, 28},
    {"qcje", "期初应收", ColumnKind::Money, 14, true},
    {"yfje", "本期应收", ColumnKind::Money, 14, true},
    {"sfje", "本期已收", ColumnKind::Money, 14, true},
    {"wfje", "期末应收", ColumnKind::Money, 14, true},
};
constexpr ui::ColumnSpec kSupplierSummary[] = {
    {"k_ghskh", "供货商编号"},
    {"name", "供货商", ColumnKind::Text, 28},
    {"qcje", "期初应付", ColumnKind::Money, 14, true},
    {"yfje", "本期应付", ColumnKind::Money, 14, true},
    {"sfje", "本期已付", ColumnKind::Money, 14, true},
    {"wfje", "期末应付", ColumnKind::Money, 14, true},
};
constexpr std::string_view kNothing = "该时间段内没有往来，改变条件后按F2查询";
constexpr ui::GridSpec kCustomerGrids[] = {
    {"gridMx", "应收明细", kCustomerDetail, kNothing, "id", "yskgl"},
    {"gridGoods", "单据商品", kGoodsColumns, "销售单和退货单的商品在这里显示"},
    {"gridHz", "应收汇总", kCustomerSummary, kNothing, "k_ghskh"},
};
constexpr ui::GridSpec kSupplierGrids[] = {
    {"gridMx", "应付明细", kSupplierDetail, kNothing, "id", "yfkgl"},
    {"gridGoods", "单据商品", kGoodsColumns, "采购单和退货单的商品在这里显示"},
    {"gridHz", "应付汇总", kSupplierSummary, kNothing, "k_ghskh"},
};
constexpr ui::CommandSpec kCustomerCommands[] = {
    {"btnDate", "时间段"},          {"btnSearch1", "查询", "F2"},   {"btn_Fukuan", "销售收款", "F6"},
    {"btn_Cxjs", "重新计算", "F8"}, {"btn_Prin", "打印", "Ctrl+P"}, {"btn_Export", "导出", "Ctrl+S"},
    {"btnCancel", "退出", "Esc"}};
constexpr ui::CommandSpec kSupplierCommands[] = {
    {"btnDate", "时间段"},          {"btnSearch1", "查询", "F2"},   {"btn_Fukuan", "采购付款", "F6"},
    {"btn_Cxjs", "重新计算", "F8"}, {"btn_Prin", "打印", "Ctrl+P"}, {"btn_Export", "导出", "Ctrl+S"},
    {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kYskgl = {.name = "F_Yskgl",
                                   .title = "应收款管理",
                                   .fields = kCustomerFields,
                                   .grids = kCustomerGrids,
                                   .commands = kCustomerCommands,
                                   .focus = "tKhName1"};
constexpr ui::ScreenSpec kYfkgl = {.name = "F_Yfkgl",
                                   .title = "应付款管理",
                                   .fields = kSupplierFields,
                                   .grids = kSupplierGrids,
                                   .commands = kSupplierCommands,
                                   .focus = "tKhName1"};

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
constexpr ui::ScreenSpec repairSpec(std::string_view name) {
  return {.name = name,
          .title = joined<"重新计算", PartnerText<Side>::owed, "款">,
          .fields = kRepairFields<Side>,
          .commands = kSaveCommands};
}

constexpr PartnerOverviewWords kReceivables{
    &customerSide, "F_Yskgl_Sk", "F_Yskgl_Js", u"所有客户", u"收款只能在“明细表”进行！", pickCustomer};
constexpr PartnerOverviewWords kPayables{
    &supplierSide, "F_Yfkgl_Fk", "F_Yfkgl_Js", u"所有供货商", u"付款只能在“明细表”进行！", pickSupplier};

bool isCustomer(const PartnerSide& side) {
  return side.isCustomer();
}

/// The texts of the customers' side in the other side's words.
QString sideText(const PartnerSide& side, QString text) {
  if (isCustomer(side)) return text;
  return text.replace(u"客户"_qs, u"供货商"_qs).replace(u"应收"_qs, u"应付"_qs).replace(u"已收"_qs, u"已付"_qs);
}

/// Documents whose goods the lower pane shows.
bool hasGoods(const PartnerSide& side, const QString& number) {
  static constexpr std::u16string_view sold[] = {u"XS", u"XT", u"XH"};
  static constexpr std::u16string_view bought[] = {u"CJ", u"CT"};
  const std::span<const std::u16string_view> prefixes =
      isCustomer(side) ? std::span<const std::u16string_view>(sold) : bought;
  return std::ranges::any_of(prefixes, [&](std::u16string_view prefix) { return number.startsWith(prefix); });
}

struct TF_Yskgl : PartnerOverviewScreen {
  TF_Yskgl() : PartnerOverviewScreen(kYskgl, kReceivables) {}
};
struct TF_Yfkgl : PartnerOverviewScreen {
  TF_Yfkgl() : PartnerOverviewScreen(kYfkgl, kPayables) {}
};
struct TF_Yskgl_Sk : SettlementScreen {
  TF_Yskgl_Sk() : SettlementScreen(settleSpec<PartnerType::Customer>("F_Yskgl_Sk"), customerSide) {}
};
struct TF_Yfkgl_Fk : SettlementScreen {
  TF_Yfkgl_Fk() : SettlementScreen(settleSpec<PartnerType::Supplier>("F_Yfkgl_Fk"), supplierSide) {}
};
struct TF_Yskgl_Js : PartnerRepairScreen {
  TF_Yskgl_Js() : PartnerRepairScreen(repairSpec<PartnerType::Customer>("F_Yskgl_Js"), customerSide) {}
};
struct TF_Yfkgl_Js : PartnerRepairScreen {
  TF_Yfkgl_Js() : PartnerRepairScreen(repairSpec<PartnerType::Supplier>("F_Yfkgl_Js"), supplierSide) {}
};

const ui::Registered<TF_Yskgl> kRegisteredYskgl{"F_Yskgl"};
const ui::Registered<TF_Yfkgl> kRegisteredYfkgl{"F_Yfkgl"};
const ui::Registered<TF_Yskgl_Sk> kRegisteredYskglSk{"F_Yskgl_Sk"};
const ui::Registered<TF_Yfkgl_Fk> kRegisteredYfkglFk{"F_Yfkgl_Fk"};
const ui::Registered<TF_Yskgl_Js> kRegisteredYskglJs{"F_Yskgl_Js"};
const ui::Registered<TF_Yfkgl_Js> kRegisteredYfkglJs{"F_Yfkgl_Js"};

}  // namespace partner_overview_screens_detail

// ---- overview ----------------------------------------------------------------------------------------------------

PartnerOverviewScreen::PartnerOverviewScreen(const ui::ScreenSpec& spec, const PartnerOverviewWords& words)
    : Screen(spec), words_(words) {
  panel()
      .row("tdate11 tdate12 btnDate tKhName1 comUser tkey btnSearch1 |")
      .row("rMxb rHzb chkZero chkAll |")
      .grid("gridMx", 3)
      .grid("gridGoods", 1)
      .grid("gridHz", 4)
      .text(partner_overview_screens_detail::sideText(
          *words_.side, words_.side->isCustomer()
                            ? QStringLiteral("说明：期末应收为负数表示该客户在我方存有货品的预付款。")
                            : QStringLiteral("说明：期末应付为负数表示我方在该供货商存有货品的预付款。")))
      .buttons("btn_Fukuan btn_Cxjs btn_Prin btn_Export | btnCancel");
  tKhName1.onPick(words_.pickPartner);
  tkey.onEnter([this] {
    refresh();
    return true;
  });
  for (ui::Field* each : {&tdate11, &tdate12, &tKhName1, &comUser, &chkZero, &chkAll})
    each->onChanged([this] { refresh(); });
  for (ui::Field* each : {&rMxb, &rHzb})
    each->onChanged([this] {
      showMode();
      refresh();
    });
  ui::addPeriodMenu(command("btnDate"), tdate11, tdate12, [this] { refresh(); });
  on(command("btnSearch1"), [this] { refresh(); });
  on(command("btn_Fukuan"), [this] { settle(); });
  on(command("btn_Cxjs"), [this] { repair(); });
  on(command("btn_Prin"), [this] { print(); });
  gridMx.onCurrentChanged([this] { showGoods(); });
  gridMx.onLoaded([this] { showGoods(); });
  const auto red = [](const Row& row, std::string_view column) {
    return (column == "k_ljje" || column == "wfje") && row.number(column) != 0 ? ui::RowLook::Bad : ui::RowLook::Normal;
  };
  gridMx.setCellLook(red);
  gridMx.setRowLook(
      [](const Row& row) { return row.integer("dsort") == 1 ? ui::RowLook::Muted : ui::RowLook::Normal; });
}

void PartnerOverviewScreen::activate() {
  tdate11.setText(clock::month() + u"-01"_qs);
  tdate12.setText(clock::today());
  tKhName1.clear();
  tkey.clear();
  comUser.setItems(fillKeyedCombo("jxc_user", "u_name", QStringLiteral("所有经办人"), "id", "u_sn"));
  chkZero.setChecked(false);
  chkAll.setChecked(false);
  rMxb.setChecked(true);
  command("btn_Fukuan").setVisible(strIsTrue(session().cs_zerocost));
  showMode();
  refresh();
}

QString PartnerOverviewScreen::partner() const {
  return tKhName1.isEmpty() ? QString() : tKhName1.key();
}

void PartnerOverviewScreen::showMode() {
  const bool detail = rMxb.isChecked();
  gridMx.setVisible(detail);
  gridGoods.setVisible(detail);
  gridHz.setVisible(!detail);
  chkAll.setVisible(!detail);
}

void PartnerOverviewScreen::refresh() {
  const partner_books::OverviewFilter filter{.from = tdate11.text(),
                                             .to = tdate12.text(),
                                             .partner = partner(),
                                             .employee = comUser.key(),
                                             .key = tkey.trimmed(),
                                             .hideZero = chkZero.isChecked(),
                                             .allPartners = chkAll.isChecked()};
  if (!rMxb.isChecked()) return gridHz.loadQuery(partner_books::overviewSummary(*words_.side, filter));
  const std::int64_t id = gridMx.currentId();
  gridMx.loadQuery(partner_books::overviewDetail(*words_.side, filter));
  if (id != 0) gridMx.selectId(id);
}

void PartnerOverviewScreen::showGoods() {
  const QString number = gridMx.isEmpty() ? QString() : gridMx.currentText("gl_djh");
  if (partner_overview_screens_detail::hasGoods(*words_.side, number))
    gridGoods.loadQuery(partner_books::documentGoods(number));
  else
    gridGoods.clearRows();
}

void PartnerOverviewScreen::settle() {
  if (!rMxb.isChecked()) return prompt().notice(words(words_.onlyInDetail));
  if (gridMx.isEmpty()) return;
  const partner_books::OverviewLine line{gridMx.currentText("gl_djh"), gridMx.currentNumber("k_yfje"),
                                         gridMx.currentNumber("k_sfje")};
  const auto settlement = partner_books::openSettlement(*words_.side, line, prompt());
  if (settlement && ui::screenAs<SettlementScreen>(words_.settleScreen).edit(*settlement)) refresh();
}

void PartnerOverviewScreen::repair() {
  const QString shown = partner().isEmpty() ? words(words_.allPartners) : tKhName1.text();
  if (ui::screenAs<PartnerRepairScreen>(words_.repairScreen).run(partner(), shown, tdate11.text())) refresh();
}

void PartnerOverviewScreen::print() {
  const bool customer = words_.side->isCustomer(), detail = rMxb.isChecked();
  const auto name = customer ? (detail ? u"yskmxb" : u"yskglhzb") : (detail ? u"yfkmxb" : u"yfkglhzb");
  ui::Grid& list = detail ? gridMx : gridHz;
  list.waitLoaded();
  sendToPaper(listReport(name, list.rows(), tdate11.text(), tdate12.text()), PrintWay::Preview, this, windowTitle());
}

// ---- settling ----------------------------------------------------------------------------------------------------

SettlementScreen::SettlementScreen(const ui::ScreenSpec& spec, const PartnerSide& side) : Screen(spec), side_(side) {
  panel()
      .form({"tdjh tname", "tyfje tsfje", "thkje kh_ye", "tje comYhzh", "comUser dateCg", "tnote", "chkQk", "chkPrin"})
      .text(partner_overview_screens_detail::sideText(
          side_, QStringLiteral("注：超出本单据应收金额部分，将计入该客户的应收账款，\r该客户的应收款将减少。")))
      .buttons("| btnSave btnCancel");
  command("btnSave").setProperty("main", true);
  on(command("btnSave"), [this] { save(); });
}

bool SettlementScreen::edit(const partner_books::Settlement& settlement) {
  settlement_ = settlement;
  return showModal();
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
  if (!settlement_.employee.isEmpty()) field("comUser").setKey(settlement_.employee);
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
                                             .writeOff = field("chkQk").isChecked()};
  if (!partner_books::settleDocument(side_, draft, prompt())) return;
  accept();
  // Writing off makes no receipt: there is nothing to hand over.
  if (field("chkPrin").isChecked() && !draft.writeOff)
    sendToPaper(settlementReport(side_, draft.number), PrintWay::Preview, parentWidget(), draft.number);
}

// ---- repair ------------------------------------------------------------------------------------------------------

PartnerRepairScreen::PartnerRepairScreen(const ui::ScreenSpec& spec, const PartnerSide& side)
    : Screen(spec), side_(side) {
  panel()
      .form({"tname", "tdate"})
      .text(partner_overview_screens_detail::sideText(
          side_,
          QStringLiteral("通常情况下不需要重新计算应收款，由于未知原因出现期末应收金额与期初应收、本期应收、本期已收"
                         "之间的计算值不一致时，可以使用本功能重新计算期末应收金额。此功能只用于期末应收金额与期初"
                         "应收、本期应收、本期已收之间的计算值不一致的情况。")))
      .buttons("| btnSave btnCancel");
  on(command("btnSave"), [this] {
    if (!from_.isEmpty() && partner_books::recomputePartners(side_, partner_, from_, prompt())) accept();
  });
}

bool PartnerRepairScreen::run(const QString& partner, const QString& shown, const QString& from) {
  partner_ = partner;
  from_ = from;
  field("tname").setText(shown);
  field("tdate").setText(from);
  return showModal();
}

}  // namespace jxc
