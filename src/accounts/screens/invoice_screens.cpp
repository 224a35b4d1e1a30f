#include "accounts/screens/invoice_screens.h"

#include "core/clock.h"
#include "core/defaults.h"
#include "core/fillers.h"
#include "core/text.h"
#include "masterdata/partners.h"

namespace jxc {
namespace invoice_screens_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kEntryFields[] = {
    {"tdjh", "单据号：", FieldKind::Text, "jxc_fpdjb.gl_djh", 0, ui::ReadOnly},
    {"dateCg", "日期：", FieldKind::Date},
    {"tname", "往来单位：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"kh_ye", "未开票余额：", FieldKind::Total, "", 0, ui::ReadOnly},
    {"tje", "开票金额：", FieldKind::Money},
    {"tfpno", "发票号码：", FieldKind::Text, "jxc_fpdjb.fp_no"},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tnote", "备注：", FieldKind::Text, "jxc_fpdjb.fp_note", 0, ui::OffersRemarks},
};
constexpr ui::FieldSpec kRegistrationFields[] = {
    {"tdjh", "单据号：", FieldKind::Text, "jxc_fpdjb.gl_djh", 0, ui::ReadOnly},
    {"tname", "往来单位：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"tyfje", "单据应开：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tykje", "已开金额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"twkje", "未开金额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tje", "开票金额：", FieldKind::Money},
    {"tfpno", "发票号码：", FieldKind::Text, "jxc_fpdjb.fp_no"},
    {"dateCg", "开票日期：", FieldKind::Date},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tnote", "备注：", FieldKind::Text, "jxc_fpdjb.fp_note", 0, ui::OffersRemarks},
};
constexpr ui::CommandSpec kSaveCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

ui::ScreenSpec specOf(std::string_view name, std::string_view title, std::span<const ui::FieldSpec> fields) {
  return {.name = name, .title = title, .fields = fields, .commands = kSaveCommands, .focus = "tje"};
}

struct TF_Fpxs_Sele : InvoiceEntryScreen {
  TF_Fpxs_Sele() : InvoiceEntryScreen("F_Fpxs_Sele", "增加销售发票", customerSide) {}
};
struct TF_Fpcg_Sele : InvoiceEntryScreen {
  TF_Fpcg_Sele() : InvoiceEntryScreen("F_Fpcg_Sele", "增加进货发票", supplierSide) {}
};
struct TF_Fpxs_Sele2 : InvoiceRegistrationScreen {
  TF_Fpxs_Sele2() : InvoiceRegistrationScreen("F_Fpxs_Sele2", "销售发票登记", customerSide) {}
};
struct TF_Fpcg_Sele2 : InvoiceRegistrationScreen {
  TF_Fpcg_Sele2() : InvoiceRegistrationScreen("F_Fpcg_Sele2", "进货发票登记", supplierSide) {}
};

const ui::Registered<TF_Fpxs_Sele> kRegisteredFpxsSele{"F_Fpxs_Sele"};
const ui::Registered<TF_Fpcg_Sele> kRegisteredFpcgSele{"F_Fpcg_Sele"};
const ui::Registered<TF_Fpxs_Sele2> kRegisteredFpxsSele2{"F_Fpxs_Sele2"};
const ui::Registered<TF_Fpcg_Sele2> kRegisteredFpcgSele2{"F_Fpcg_Sele2"};

}  // namespace invoice_screens_detail

// ---- by hand -----------------------------------------------------------------------------------------------------

InvoiceEntryScreen::InvoiceEntryScreen(std::string_view name, std::string_view title, const PartnerSide& side)
    : Screen(invoice_screens_detail::specOf(name, title, invoice_screens_detail::kEntryFields)), side_(side) {
  panel().form({"tdjh dateCg", "tname", "kh_ye tje", "tfpno comUser", "tnote"}).buttons("| btnOK btnCancel");
  field("tname").setLabel(words(side_.noun) + u"："_qs);
  on(command("btnOK"), [this] { save(); });
  // The number belongs to the day; an invoice that stands keeps its own.
  field("dateCg").onChanged([this] {
    if (draft_.id == 0 && !field("dateCg").isEmpty())
      field("tdjh").setText(invoices::previewNumber(side_, field("dateCg").text()));
  });
}

bool InvoiceEntryScreen::edit(const invoices::Draft& draft) {
  draft_ = draft;
  const bool done = showModal();
  draft_ = {};
  return done;
}

void InvoiceEntryScreen::activate() {
  const bool isNew = draft_.id == 0;
  QString title = words(spec().title);
  if (!isNew) title.replace(u"增加"_qs, u"修改"_qs);
  setWindowTitle(title);
  if (draft_.date.isEmpty()) draft_.date = clock::today();
  field("dateCg").load(draft_.date);
  field("tdjh").setText(isNew ? invoices::previewNumber(side_, draft_.date) : draft_.number);
  field("tname").setText(partnerName(side_, draft_.partner));
  field("kh_ye").setNumber(fpBalanceAt(draft_.partner, side_.which, allDates));
  field("tje").load(draft_.amount);
  field("tfpno").load(draft_.invoice);
  field("tnote").load(draft_.note);
  ui::Field& comUser = field("comUser");
  comUser.setItems(fillEmployees());
  comUser.setKey(isNew ? keyToPropose(comUser.items(), defaultEmployeeSn()) : draft_.employee);
}

void InvoiceEntryScreen::save() {
  if (!checkFields()) return;
  invoices::Draft draft = draft_;
  draft.date = field("dateCg").text();
  draft.amount = field("tje").number();
  draft.invoice = field("tfpno").trimmed();
  draft.employee = field("comUser").key();
  draft.note = field("tnote").trimmed();
  if (invoices::saveInvoice(side_, draft, prompt())) accept();
}

// ---- registration ------------------------------------------------------------------------------------------------

InvoiceRegistrationScreen::InvoiceRegistrationScreen(std::string_view name, std::string_view title,
                                                     const PartnerSide& side)
    : Screen(invoice_screens_detail::specOf(name, title, invoice_screens_detail::kRegistrationFields)), side_(side) {
  panel()
      .form({"tdjh tname", "tyfje tykje", "tje twkje", "tfpno dateCg", "comUser", "tnote"})
      .text(u"注：开票金额是本单据到现在为止一共开出的金额，保存后代替已开金额；\n分几次开票时请填写各次合计。"_qs)
      .buttons("| btnOK btnCancel");
  field("tname").setLabel(words(side_.noun) + u"："_qs);
  on(command("btnOK"), [this] { save(); });
  field("tje").onChanged([this] { tellOpen(); });
}

bool InvoiceRegistrationScreen::edit(const invoices::Registration& registration) {
  registration_ = registration;
  return showModal();
}

void InvoiceRegistrationScreen::activate() {
  field("tdjh").setText(registration_.line.number);
  field("tname").setText(registration_.partnerName);
  field("tyfje").setNumber(registration_.due);
  field("tykje").setNumber(registration_.invoiced);
  field("tje").load(registration_.amount);
  field("tfpno").load(registration_.invoice);
  field("dateCg").load(registration_.date);
  field("tnote").load(registration_.note);
  ui::Field& comUser = field("comUser");
  comUser.setItems(fillEmployees());
  comUser.setKey(registration_.employee);
  tellOpen();
}

void InvoiceRegistrationScreen::tellOpen() {
  field("twkje").setNumber(registration_.due - field("tje").number());
}

void InvoiceRegistrationScreen::save() {
  if (!checkFields()) return;
  invoices::Registration typed = registration_;
  typed.amount = field("tje").number();
  typed.invoice = field("tfpno").trimmed();
  typed.date = field("dateCg").text();
  typed.employee = field("comUser").key();
  typed.note = field("tnote").trimmed();
  if (invoices::registerInvoice(side_, typed, prompt())) accept();
}

}  // namespace jxc
