// 演示账套的发票: what was sold and bought in the last fortnight, with its invoices: whole, in part, none yet, wrong.
#include "accounts/invoices.h"
#include "core/session.h"
#include "core/text.h"
#include "maintenance/demo_trade.h"

#include <stdexcept>

namespace jxc::demo {

void Trade::keepInvoices() {
  execSql("update jxc_xtcs set cs_kp=1");
  loadSession();
}

void Trade::writeInvoices() {
  workAs(staff_.manager);
  // By turns and not by chance: what the shop draws elsewhere stays what it was without invoices.
  enum Fate : int { Whole, None, Half, AlsoNone, Wrong, kFates };
  int at = 0;
  for (const PartnerSide* side : {&customerSide, &supplierSide}) {
    const QString trade = side->isCustomer() ? QStringLiteral("XS") : QStringLiteral("CJ");
    for (const Row row : openSelect("select id,gl_djh,fp_yfje from jxc_fpdjb where fp_type=? and fp_djlx=? order by id",
                                    words(side->type), trade)) {
      const int fate = at++ % kFates;
      if (fate == None || fate == AlsoNone || row.number("fp_yfje") <= 0) continue;
      const invoices::Line line{row.integer("id"), row.text("gl_djh")};
      if (fate == Wrong) {
        invoices::exclude(*side, line, prompt_);
        continue;
      }
      auto form = invoices::openRegistration(*side, line, prompt_);
      form->amount = wholeFen(fate == Half ? form->due / 2 : form->due);
      form->invoice = QStringLiteral("%1").arg(24500000 + at, 8);
      invoices::registerInvoice(*side, *form, prompt_);
    }
    const auto number = invoices::saveInvoice(
        *side,
        {.partner = side->isCustomer() ? staff_.institutions.front() : staff_.suppliers.front(),
         .date = today(),
         .amount = side->isCustomer() ? 260.0 : 180.0,
         .invoice = QStringLiteral("24600001"),
         .employee = staff_.employees[0],
         .note = side->isCustomer() ? QStringLiteral("上门验光服务费") : QStringLiteral("加急加工费")},
        prompt_);
    if (!number) throw std::logic_error("demonstration: no invoice");
    if (side->isCustomer()) invoices::checkDj(*side, lookupValue("select max(id) from jxc_fpdjb").toLongLong());
  }
}

}  // namespace jxc::demo
