#include "accounts/settling.h"

#include "accounts/partner_documents.h"
#include "accounts/partner_ledger.h"
#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/rounding.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "stock/document_list.h"

#include <string>

namespace jxc::partner_books {
namespace settling_detail {

/// The family of a document that can be settled with this side; null: it is none.
const DocumentFamily* settledFamily(const PartnerSide& side, const QString& number) {
  const DocumentFamily* const family = findFamily(number);
  return family && family->hasMoney() && family->side == side.which ? family : nullptr;
}

RowSet headOf(const DocumentFamily& family, const QString& number) {
  return openSelect(compose("select {} as partner,{} as due,{} as paid,{} as collected,{} as account,u_sn,{} as note,"
                            "{} as state from {} where {}=?",
                            {family.partner, family.due, family.paid, family.collected, family.account, family.note,
                             family.status, family.head, family.number}),
                    number);
}

/// Returns hold negative amounts. Their open sum has to be positive all the same: one is settled here only once more
/// was given back than was due. Settling an ordinary return is the business of the return itself.
bool leavesOpen(const DocumentFamily& family, const OverviewLine& line) {
  const bool lineOpen = family.headSign < 0 ? line.paid > line.due : line.paid < line.due;
  return lineOpen &&
         lookupNumber("select " + openAmount(family) + compose(" from {} a where a.{}=?", {family.head, family.number}),
                      line.number) > 0;
}

QString kindsWords(const PartnerSide& side) {
  return side.isCustomer() ? QStringLiteral("销售单或退货单") : QStringLiteral("采购单或采购退货单");
}

/// The sentence that the document's note gets.
QString noteSentence(const PartnerSide& side, const SettlementDraft& draft, const QString& receipt) {
  const QString word = words(side.paymentWord);
  const QString amount = numberText(draft.amount);
  if (draft.writeOff) return u"  单据清款:"_qs + amount + u"，清款日期："_qs + draft.date + u' ' + draft.note;
  return u"  "_qs + word + u':' + receipt + u"金额:"_qs + amount + u"，"_qs + word + u"日期："_qs + draft.date + u' ' +
         draft.note;
}

/// Whether the document was settled further, or cancelled, while the form stood open.
bool isOvertaken(const RowSet& head, const SettlementDraft& draft) {
  if (head.isEmpty() || head.front().text("state") == u"0") return true;
  const Row now = head.front();
  const double open = now.number("due") - now.number("paid") - now.number("collected");
  return draft.shownOpen && roundEps(open - *draft.shownOpen, 6) != 0;
}

/// Receipt, collected amount and note; the number of the receipt, none when it is written off.
QString settle(const PartnerSide& side, const DocumentFamily& family, const Row& head, const SettlementDraft& draft) {
  QString receipt;
  if (!draft.writeOff) {
    const QString note = u"单据【"_qs + draft.number + u"】"_qs + words(side.paymentWord) + u' ' + draft.note;
    receipt = addPayment(side,
                         {.partner = head.text("partner"),
                          .date = draft.date,
                          .amount = draft.amount,
                          .account = draft.account,
                          .employee = draft.employee,
                          .note = note.left(200),
                          .settles = draft.number},
                         u"单据"_qs + words(side.paymentWord));
  }
  const QString note = (head.text("note") + noteSentence(side, draft, receipt)).left(200);
  execSql(compose("update {} set {}={}+(?),{}=? where {}=?",
                  {family.head, family.collected, family.collected, family.note, family.number}),
          draft.amount, note, draft.number);
  return receipt;
}

}  // namespace settling_detail

std::optional<Settlement> openSettlement(const PartnerSide& side, const OverviewLine& line, Prompt& prompt) {
  namespace detail = settling_detail;
  const QString word = words(side.paymentWord);
  const DocumentFamily* const family = detail::settledFamily(side, line.number);
  if (!family) {
    prompt.notice(u"只能对"_qs + detail::kindsWords(side) + u"进行"_qs + word + u"！"_qs);
    return {};
  }
  if (!detail::leavesOpen(*family, line)) {
    prompt.notice(u"该单据不欠款，不需要"_qs + word + u"！"_qs);
    return {};
  }
  const RowSet rows = detail::headOf(*family, line.number);
  if (rows.isEmpty()) return {};
  const Row head = rows.front();
  Settlement settlement{.number = line.number,
                        .partner = head.text("partner"),
                        .partnerName = partnerName(side, head.text("partner")),
                        .due = head.number("due"),
                        .paid = head.number("paid"),
                        .collected = head.number("collected"),
                        .account = head.text("account"),
                        .employee = head.text("u_sn")};
  settlement.proposed = settlement.due - settlement.paid - settlement.collected;
  settlement.balance = ysyfkBalanceNow(settlement.partner, side.which);
  return settlement;
}

std::optional<Settlement> openSettlement(const PartnerSide& side, const QString& number, Prompt& prompt) {
  OverviewLine line{.number = number};
  if (const DocumentFamily* const family = settling_detail::settledFamily(side, number)) {
    const RowSet rows = settling_detail::headOf(*family, number);
    if (!rows.isEmpty()) {
      line.due = rows.front().number("due");
      line.paid = rows.front().number("paid");
    }
  }
  return openSettlement(side, line, prompt);
}

bool settleDocument(const PartnerSide& side, const SettlementDraft& typed, Prompt& prompt) {
  namespace detail = settling_detail;
  const DocumentFamily* const family = detail::settledFamily(side, typed.number);
  if (!family) return false;
  // One form for both sides, with the customers' words.
  if (refused({lockedOn(typed.date),
               {typed.amount == 0, u"收款不能为0！"_qs, Subject::Amount},
               {typed.employee.isEmpty(), u"经办人不能为空！"_qs, Subject::Employee}},
              prompt))
    return false;
  SettlementDraft draft = typed;
  draft.note = sanitizeText(typed.note.trimmed());

  {
    Transaction transaction(accountDb());
    PeriodLock().demandOpen(draft.date);
    const RowSet rows = detail::headOf(*family, draft.number);
    if (!detail::isOvertaken(rows, draft)) {
      const QString receipt = detail::settle(side, *family, rows.front(), draft);
      transaction.commit();
      prompt.say(receipt.isEmpty() ? u"单据 "_qs + draft.number + u" 已清款"_qs
                                   : words(side.paymentWord) + u"单 "_qs + receipt + stateAfterSaving());
      return true;
    }
  }
  prompt.notice(u"单据 "_qs + draft.number + u" 已被其他操作员"_qs + words(side.paymentWord) +
                u"或取消审核，请关闭本窗口，刷新列表后再试！"_qs);
  return false;
}

}  // namespace jxc::partner_books
