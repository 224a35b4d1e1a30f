#include "accounts/screens/partner_document_screens.h"

#include "accounts/cash_accounts.h"
#include "core/clock.h"
#include "core/defaults.h"
#include "core/fillers.h"
#include "core/rights.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "masterdata/screens/partner_picker.h"
#include "output/money_reports.h"
#include "output/screens/print_outlet.h"
#include "stock/screens/preview_screen.h"
#include "ui/period_menu.h"
#include "ui/refresh_after.h"

#include <QAction>

namespace jxc {
namespace partner_document_screens_detail {

using partner_books::Kind;
using ui::ColumnKind;
using ui::FieldKind;

// ---- lists -------------------------------------------------------------------------------------------------------

// What is called after the partner is set by the screen.
constexpr ui::FieldSpec kListFields[] = {
    {"tdate1", "日期：", FieldKind::Date},
    {"tdate2", "至", FieldKind::Date},
    {"tKhName", "往来单位：", FieldKind::Picker},
    {"tkey", "查找：", FieldKind::Text, "", 50},
};
constexpr ui::ColumnSpec kDueColumns[] = {
    {"k_check", "审核", ColumnKind::Flag},
    {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"k_rq", "日期", ColumnKind::Date},
    {"name", "往来单位", ColumnKind::Text, 24},
    {"k_yfje", "金额", ColumnKind::Money, 0, {.sum = true}},
    {"u_name", "经办人"},
    {"k_note", "备注", ColumnKind::Text, 28},
    {"a_name", "操作员"},
    {"k_checker", "审核人"},
    {"k_chkrq", "审核日期", ColumnKind::Date},
};
constexpr ui::ColumnSpec kPaymentColumns[] = {
    {"k_check", "审核", ColumnKind::Flag},
    {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"k_rq", "日期", ColumnKind::Date},
    {"name", "往来单位", ColumnKind::Text, 22},
    {"k_fkfs", "账户", ColumnKind::Text, 12},
    {"k_sfje", "金额", ColumnKind::Money, 0, {.sum = true}},
    {"k_mlje", "抹零", ColumnKind::Money, 0, {.sum = true}},
    {"gl_djh2", "关联单据", ColumnKind::Text, 15},
    {"u_name", "经办人"},
    {"k_note", "备注", ColumnKind::Text, 24},
    {"a_name", "操作员"},
    {"k_checker", "审核人"},
    {"k_chkrq", "审核日期", ColumnKind::Date},
};
constexpr ui::GridSpec kDueGrid[] = {{"gridList", "单据列表", kDueColumns, "没有单据：选择往来单位后按F3增加"}};
constexpr ui::GridSpec kPaymentGrid[] = {{"gridList", "单据列表", kPaymentColumns, "没有单据：选择往来单位后按F3增加"}};
constexpr ui::CommandSpec kListCommands[] = {
    {"btnDate", "时间段"},
    {"btnSearch1", "查询", "F2"},
    {"btnAdd", "增加", "F3"},
    {"btnModi", "修改", "F4"},
    {"btnDele", "删除", "Ctrl+D"},
    {"btn_ChaKan", "查看单据", "F8"},
    {"btn_Dydj", "打印单据", "Ctrl+P"},
    {"btn_Prin", "打印列表", "F7"},
    {"btn_Check", "审核全部", "F6"},
    {"btnPreview", "预览影响", "F9"},
    {"btn_Export", "导出", "Ctrl+S"},
    {"btnCancel", "退出", "Esc"},
};

constexpr ui::ScreenSpec listSpec(std::string_view name, std::string_view title, std::span<const ui::GridSpec> grids) {
  return {.name = name,
          .title = title,
          .fields = kListFields,
          .grids = grids,
          .commands = kListCommands,
          .focus = "tKhName"};
}
constexpr ui::ScreenSpec kYskdj = listSpec("F_Yskdj", "应收登记", kDueGrid);
constexpr ui::ScreenSpec kYsksk = listSpec("F_Ysksk", "收款登记", kPaymentGrid);
constexpr ui::ScreenSpec kYfkdj = listSpec("F_Yfkdj", "应付登记", kDueGrid);
constexpr ui::ScreenSpec kYfkfk = listSpec("F_Yfkfk", "付款登记", kPaymentGrid);

// ---- entry forms -------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kDueFields[] = {
    {"tdjh", "单据号：", FieldKind::Text, "jxc_ysyfk_dj.gl_djh", 0, ui::ReadOnly},
    {"dateCg", "日期：", FieldKind::Date},
    {"tname", "往来单位：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"kh_ye", "当前余额：", FieldKind::Total, "", 0, ui::ReadOnly},
    {"tgsj", "金额：", FieldKind::Money},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tnote", "备注：", FieldKind::Text, "jxc_ysyfk_dj.k_note", 0, ui::OffersRemarks},
    {"chkPrin", "保存后打印", FieldKind::Check},
};
constexpr ui::FieldSpec kPaymentFields[] = {
    {"tdjh", "单据号：", FieldKind::Text, "jxc_ysyfk_dj.gl_djh", 0, ui::ReadOnly},
    {"dateCg", "日期：", FieldKind::Date},
    {"tname", "往来单位：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"kh_ye", "当前余额：", FieldKind::Total, "", 0, ui::ReadOnly},
    {"comYhzh", "账户：", FieldKind::Combo},
    {"tgsj", "金额：", FieldKind::Money},
    {"tmlje", "抹零：", FieldKind::Money},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tnote", "备注：", FieldKind::Text, "jxc_ysyfk_dj.k_note", 0, ui::OffersRemarks},
    {"chkPrin", "保存后打印", FieldKind::Check},
};
constexpr ui::CommandSpec kEntryCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

constexpr ui::ScreenSpec entrySpec(std::string_view name, std::string_view title,
                                   std::span<const ui::FieldSpec> fields) {
  return {.name = name, .title = title, .fields = fields, .commands = kEntryCommands, .focus = "tgsj"};
}
constexpr ui::ScreenSpec kYskdjSele = entrySpec("F_Yskdj_Sele", "增加应收款", kDueFields);
constexpr ui::ScreenSpec kYskskSele = entrySpec("F_Ysksk_Sele", "增加收款", kPaymentFields);
constexpr ui::ScreenSpec kYfkdjSele = entrySpec("F_Yfkdj_Sele", "增加应付款", kDueFields);
constexpr ui::ScreenSpec kYfkfkSele = entrySpec("F_Yfkfk_Sele", "增加付款", kPaymentFields);

constexpr PartnerDocumentWords kReceivable{&customerSide, Kind::Due, "F_Yskdj_Sele", 7, pickCustomer};
constexpr PartnerDocumentWords kReceipt{&customerSide, Kind::Payment, "F_Ysksk_Sele", 8, pickCustomer};
constexpr PartnerDocumentWords kPayable{&supplierSide, Kind::Due, "F_Yfkdj_Sele", 9, pickSupplier};
constexpr PartnerDocumentWords kPayment{&supplierSide, Kind::Payment, "F_Yfkfk_Sele", 10, pickSupplier};

template <const ui::ScreenSpec& description, const PartnerDocumentWords& texts>
struct ListOf : PartnerDocumentsScreen {
  ListOf() : PartnerDocumentsScreen(description, texts) {}
};
template <const ui::ScreenSpec& description, const PartnerDocumentWords& texts>
struct EntryOf : PartnerEntryScreen {
  EntryOf() : PartnerEntryScreen(description, texts) {}
};
using TF_Yskdj = ListOf<kYskdj, kReceivable>;
using TF_Ysksk = ListOf<kYsksk, kReceipt>;
using TF_Yfkdj = ListOf<kYfkdj, kPayable>;
using TF_Yfkfk = ListOf<kYfkfk, kPayment>;
using TF_Yskdj_Sele = EntryOf<kYskdjSele, kReceivable>;
using TF_Ysksk_Sele = EntryOf<kYskskSele, kReceipt>;
using TF_Yfkdj_Sele = EntryOf<kYfkdjSele, kPayable>;
using TF_Yfkfk_Sele = EntryOf<kYfkfkSele, kPayment>;

const ui::Registered<TF_Yskdj> kRegisteredYskdj{"F_Yskdj"};
const ui::Registered<TF_Ysksk> kRegisteredYsksk{"F_Ysksk"};
const ui::Registered<TF_Yfkdj> kRegisteredYfkdj{"F_Yfkdj"};
const ui::Registered<TF_Yfkfk> kRegisteredYfkfk{"F_Yfkfk"};
const ui::Registered<TF_Yskdj_Sele> kRegisteredYskdjSele{"F_Yskdj_Sele"};
const ui::Registered<TF_Ysksk_Sele> kRegisteredYskskSele{"F_Ysksk_Sele"};
const ui::Registered<TF_Yfkdj_Sele> kRegisteredYfkdjSele{"F_Yfkdj_Sele"};
const ui::Registered<TF_Yfkfk_Sele> kRegisteredYfkfkSele{"F_Yfkfk_Sele"};

}  // namespace partner_document_screens_detail

// ---- list --------------------------------------------------------------------------------------------------------

PartnerDocumentsScreen::PartnerDocumentsScreen(const ui::ScreenSpec& spec, const PartnerDocumentWords& words)
    : Screen(spec), list(grid("gridList")), words_(words) {
  panel()
      .row("tdate1 tdate2 btnDate tKhName tkey btnSearch1 |")
      .grid("gridList")
      .buttons("btnAdd btnModi btnDele btn_ChaKan btn_Dydj btn_Prin btn_Export | btnPreview btn_Check btnCancel");
  list.setCaption("name", jxc::words(words_.side->noun));
  tKhName.setLabel(jxc::words(words_.side->noun) + u"："_qs);
  tKhName.onPick(words_.pickPartner);
  tkey.onEnter([this] {
    refresh();
    return true;
  });
  for (ui::Field* each : {&tdate1, &tdate2, &tKhName})
    each->onChanged([this] { refresh(); });
  ui::addPeriodMenu(command("btnDate"), tdate1, tdate2, [this] { refresh(); });
  on(command("btnSearch1"), [this] { refresh(); });
  on(command("btnAdd"), [this] { add(); });
  on(command("btnModi"), [this] { modify(); });
  on(command("btnDele"), [this] { remove(); });
  list.onActivated([this] { modify(); });
  on(command("btn_Check"), [this] {
    ui::refreshAfter([this] { partner_books::auditAll(*words_.side, words_.kind, list.rows(), prompt()); },
                     [this] { refresh(); });
  });
  on(command("btnPreview"), [this] { preview(); });
  on(command("btn_ChaKan"), [this] { bringToPaper(PrintWay::Preview); });
  on(command("btn_Dydj"), [this] { bringToPaper(PrintWay::Ask); });
  on(command("btn_Prin"), [this] { printList(); });
  bindMenu();
  list.setRowLook([](const Row& row) { return row.flag("k_check") ? ui::RowLook::Normal : ui::RowLook::Warning; });
}

void PartnerDocumentsScreen::bindMenu() {
  for (const char* each : {"btnModi", "btnDele", "btn_ChaKan", "btn_Dydj"})
    list.addMenuCommand(command(each).text(), [this, each] { command(each).click(); });
  QAction* audit = list.addMenuCommand(QStringLiteral("审核(&Z)"), [this] { auditOrCancel(); });
  list.onCurrentChanged([this, audit] {
    audit->setText(isCurrentAudited() ? QStringLiteral("取消审核(&Z)") : QStringLiteral("审核(&Z)"));
    audit->setEnabled(command("btn_Check").isEnabled());
  });
  list.addMenuCommand(command("btnPreview").text(), [this] { command("btnPreview").click(); });
}

void PartnerDocumentsScreen::activate() {
  tdate1.setText(clock::month() + u"-01"_qs);
  tdate2.setText(clock::today());
  tKhName.clear();
  tkey.clear();
  for (const char* each : {"btn_Check", "btnPreview"})
    command(each).setEnabled(hasRight("wlzk", words_.auditRight));
  refresh();
}

QString PartnerDocumentsScreen::partner() const {
  return tKhName.isEmpty() ? QString() : tKhName.key();
}

bool PartnerDocumentsScreen::isCurrentAudited() const {
  const auto row = list.current();
  return row && row->flag("k_check");
}

void PartnerDocumentsScreen::refresh() {
  const std::int64_t id = list.currentId();
  list.loadQuery(partner_books::documentList(*words_.side, words_.kind,
                                             {tdate1.text(), tdate2.text(), partner(), tkey.trimmed()}));
  if (id != 0) list.selectId(id);
}

void PartnerDocumentsScreen::add() {
  if (!partner_books::isPartnerChosen(*words_.side, partner(), prompt())) return tKhName.focus();
  partner_books::Draft draft;
  draft.partner = partner();
  draft.date = clock::today();
  if (ui::screenAs<PartnerEntryScreen>(words_.entryScreen).edit(draft)) refresh();
}

void PartnerDocumentsScreen::modify() {
  if (list.isEmpty()) return;
  const auto draft = partner_books::openDocument(*words_.side, words_.kind, list.currentId(), prompt());
  if (!draft || ui::screenAs<PartnerEntryScreen>(words_.entryScreen).edit(*draft)) refresh();
}

void PartnerDocumentsScreen::remove() {
  if (list.isEmpty()) return;
  partner_books::deleteDocument(*words_.side, words_.kind, list.currentId(), prompt());
  refresh();
}

/// What the audit of the current document, or its cancel, would change.
void PartnerDocumentsScreen::preview() {
  if (list.isEmpty()) return;
  const QString number = list.currentText("gl_djh");
  const bool cancels = isCurrentAudited();
  showWhatIf((cancels ? u"取消审核单据"_qs : u"审核单据"_qs) + number, number, [&](Prompt& agreeing) {
    return cancels ? partner_books::unCheck(*words_.side, words_.kind, number, agreeing)
                   : partner_books::auditOne(*words_.side, words_.kind, number, agreeing);
  });
}

void PartnerDocumentsScreen::auditOrCancel() {
  if (list.isEmpty()) return;
  const QString number = list.currentText("gl_djh");
  if (isCurrentAudited())
    partner_books::unCheck(*words_.side, words_.kind, number, prompt());
  else
    partner_books::auditOne(*words_.side, words_.kind, number, prompt());
  refresh();  // also when another station was quicker: then the list shows what it did
}

void PartnerDocumentsScreen::bringToPaper(PrintWay way) {
  if (list.isEmpty()) return;
  const QString number = list.currentText("gl_djh");
  sendToPaper(partnerDocumentReport(*words_.side, words_.kind, number), way, this, number);
}

void PartnerDocumentsScreen::printList() {
  const auto name = words_.side->isCustomer() ? u"ysksk" : u"yfkfk";
  sendToPaper(listReport(name, list.rows(), tdate1.text(), tdate2.text()), PrintWay::Preview, this, windowTitle());
}

// ---- entry -------------------------------------------------------------------------------------------------------

PartnerEntryScreen::PartnerEntryScreen(const ui::ScreenSpec& spec, const PartnerDocumentWords& words)
    : Screen(spec), words_(words) {
  const bool payment = words_.kind == partner_books::Kind::Payment;
  auto area = panel();
  if (payment)
    area.form({"tdjh dateCg", "tname", "kh_ye comYhzh", "tgsj tmlje", "comUser chkPrin", "tnote"});
  else
    area.form({"tdjh dateCg", "tname", "kh_ye tgsj", "comUser chkPrin", "tnote"});
  area.buttons("| btnOK btnCancel");
  tname.setLabel(jxc::words(words_.side->noun) + u"："_qs);
  tgsj.setLabel(partner_books::wordOf(*words_.side, words_.kind) + u"："_qs);
  on(command("btnOK"), [this] { save(); });
  // The number belongs to the day; a document that stands keeps its own.
  dateCg.onChanged([this] {
    if (draft_.id == 0 && !dateCg.isEmpty())
      tdjh.setText(partner_books::previewNumber(*words_.side, words_.kind, dateCg.text()));
  });
}

bool PartnerEntryScreen::edit(const partner_books::Draft& draft) {
  draft_ = draft;
  const bool done = showModal();
  draft_ = {};
  return done;
}

void PartnerEntryScreen::activate() {
  const bool isNew = draft_.id == 0;
  const QString word = partner_books::wordOf(*words_.side, words_.kind);
  setWindowTitle((isNew ? QStringLiteral("增加") : QStringLiteral("修改")) + word);
  if (draft_.date.isEmpty()) draft_.date = clock::today();
  dateCg.load(draft_.date);
  tdjh.setText(isNew ? partner_books::previewNumber(*words_.side, words_.kind, draft_.date) : draft_.number);
  tname.setText(partnerName(*words_.side, draft_.partner));
  kh_ye.setNumber(ysyfkBalanceNow(draft_.partner, words_.side->which));
  tgsj.load(draft_.amount);
  tnote.load(draft_.note);
  comUser.setItems(fillEmployees());
  comUser.setKey(isNew ? keyToPropose(comUser.items(), defaultEmployeeSn()) : draft_.employee);
  if (words_.kind != partner_books::Kind::Payment) return;
  ui::Field& comYhzh = field("comYhzh");
  comYhzh.setItems(cash::fillAccounts());
  if (!isNew) comYhzh.setKey(draft_.account);
  field("tmlje").load(draft_.rounding);
}

void PartnerEntryScreen::save() {
  if (!checkFields()) return;
  partner_books::Draft draft = draft_;
  draft.date = dateCg.text();
  draft.amount = tgsj.number();
  draft.employee = comUser.key();
  draft.note = tnote.trimmed();
  if (words_.kind == partner_books::Kind::Payment) {
    draft.account = field("comYhzh").key();
    draft.rounding = field("tmlje").number();
  }
  const auto number = partner_books::saveDocument(*words_.side, words_.kind, draft, prompt());
  if (!number) return;
  accept();
  // It is saved, and audited where that is done at once: the paper says so.
  if (field("chkPrin").isChecked())
    sendToPaper(partnerDocumentReport(*words_.side, words_.kind, *number), PrintWay::Preview, parentWidget(), *number);
}

}  // namespace jxc
