#include "stock/screens/head_screen.h"

#include "core/fillers.h"
#include "core/reading.h"
#include "core/session.h"
#include "core/text.h"
#include "masterdata/screens/partner_picker.h"
#include "ui/known_parts.h"

namespace jxc {
namespace head_screen_detail {

constexpr std::string_view kParts[] = {"dateCg", "comCk", "comUser", "tfpno", "tfpje",
                                       "tyf",    "tbzf",  "chkYf",   "btnOK", "btnCancel"};

}  // namespace head_screen_detail

HeadScreen::HeadScreen(const HeadScreenSpec& spec) : Screen(spec.screen), description_(spec) {
  const std::string_view own[] = {spec.partner};
  ui::refuseUnknownParts(spec.screen, {head_screen_detail::kParts, own});
  if (auto* input = partner()) input->onPick(spec.pickPartner);
  on(command("btnOK"), [this] { saveValue(); });
}

QString HeadScreen::change(const DocumentFamily& family, const QString& number) {
  family_ = &family;
  number_ = number;
  result_.clear();
  showModal();
  return result_;
}

void HeadScreen::activate() {
  Filter bound;
  addWarehouseBinding(bound);
  comCk.setItems(fillWarehouseCombo({}, bound));
  comUser.setItems(fillEmployees(description_.employeeFlag));
  if (!family_) return;  // opened by its name alone: nothing to change
  const RowSet heads =
      openSelect(compose("select * from {} where {}=? order by id", {family_->head, family_->number}), number_);
  if (heads.isEmpty()) return;
  const Row head = heads.front();
  if (auto* input = partner()) {
    const QString code = head.text(family_->partner);
    input->setPicked({partnerName(partnerSide(family_->side), code), code});
  }
  dateCg.setText(head.text(family_->date).left(10));  // sales may carry the time of day
  comCk.setKey(head.text(family_->warehouse));
  comUser.setKey(head.text("u_sn"));
  const bool invoices = strIsTrue(session().cs_kp);
  const auto show = [&](std::string_view name, std::string_view column, bool on) {
    if (!hasField(name)) return;
    field(name).setVisible(on && !column.empty());
    if (!column.empty()) field(name).setValue(head.value(column));
  };
  show("tfpno", family_->invoiceNumber, invoices);
  show("tfpje", family_->invoiceAmount, invoices);
  show("tyf", family_->freight, true);
  show("tbzf", family_->packing, true);
  if (hasField("tfpje") && !family_->invoiceAmount.empty())
    field("tfpje").setNumber(family_->headSign * head.number(family_->invoiceAmount));
  if (hasField("chkYf")) {
    field("chkYf").setVisible(!family_->freightPayer.empty());
    if (!family_->freightPayer.empty()) field("chkYf").setChecked(head.text(family_->freightPayer) == wePayText);
  }
}

void HeadScreen::saveValue() {
  if (!family_) return reject();
  const QString date = dateCg.text();
  if (!confirmDocumentDate(date, prompt())) return dateCg.focus();
  HeadEdit edit{.date = date, .warehouse = comCk.key(), .salesperson = comUser.key()};
  if (auto* input = partner()) edit.partner = input->key();
  const auto shown = [this](std::string_view name) { return hasField(name) && field(name).isVisible(); };
  if (shown("tfpno")) edit.invoiceNumber = field("tfpno").trimmed();
  if (shown("tfpje")) edit.invoiceAmount = field("tfpje").number();
  if (shown("tyf")) edit.freight = field("tyf").number();
  if (shown("tbzf")) edit.packing = field("tbzf").number();
  if (shown("chkYf")) edit.wePayFreight = field("chkYf").isChecked();
  if (refused({{edit.partner && edit.partner->isEmpty(),
                u"请选择%1！"_qs.arg(QString::fromUtf16(partnerSide(family_->side).noun)), Subject::Partner},
               {edit.salesperson->isEmpty(), u"请选择经办人！"_qs, Subject::Employee},
               {edit.warehouse->isEmpty(), u"请选择仓库！"_qs, Subject::Warehouse}},
              prompt()))
    return;
  result_ = changeWaitingHead(*family_, number_, edit, prompt());
  if (!result_.isEmpty()) accept();
}

}  // namespace jxc
