#include "stock/prepayment.h"

#include "accounts/partner_ledger.h"
#include "core/prompt.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"

namespace jxc {

bool mayGoOnAccount(const QString& customer, double open, Prompt& prompt) {
  if (!strIsTrue(session().cs_cs001)) return true;
  // What a customer has paid in advance stands as a balance below zero.
  const double prepaid = roundMoney(-ysyfkBalanceAt(customer, PartnerType::Customer, allDates));
  if (prepaid >= roundMoney(open)) return true;
  return prompt.ask(u"该客户当前的预付款余额为："_qs + numberText(prepaid) +
                    u"，\r\n\r\n不足以支付本单的金额。\r\n\r\n继续保存吗？"_qs);
}

bool mayAuditOnAccount(const Row& head, Prompt& prompt) {
  const bool onAccount = head.integer("ls_jsfs") == 1;
  return !onAccount || mayGoOnAccount(head.text("kh_sn"), head.number("ls_yfje") - head.number("ls_sfje"), prompt);
}

}  // namespace jxc
