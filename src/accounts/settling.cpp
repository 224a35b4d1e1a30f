#include "accounts/settling.h"

#include "accounts/partner_documents.h"
#include "accounts/partner_ledger.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/partners.h"

#include <array>

namespace jxc::partner_books {
namespace settling_detail {

/// A kind of document that can be settled: where its sums stand.
struct Settled {
  const PartnerSide* side;
  const char16_t* prefix;
  bool isReturn;
  const char* head;     // partner, due, paid, collected, account, employee, note of a number
  const char* open;     // what is still open, by number
  const char* collect;  // amount, note, number
};
constexpr std::array kSettled{
    Settled{&customerSide, u"XS", false,
            "select kh_sn as partner,ls_yfje as due,ls_sfje as paid,ls_hkje as collected,ls_kmmc as account,u_sn,"
            "ls_note as note from jxc_lsxsd where gl_djh=?",
            "select ls_yfje-ls_sfje-ls_yhje-ls_hkje from jxc_lsxsd where gl_djh=?",
            "update jxc_lsxsd set ls_hkje=ls_hkje+(?),ls_note=? where gl_djh=?"},
    Settled{&customerSide, u"XT", true,
            "select kh_sn as partner,th_yfje as due,th_sfje as paid,th_hkje as collected,th_kmmc as account,u_sn,"
            "th_note as note from jxc_xsthd where gl_djh=?",
            "select th_yfje-th_sfje-th_hkje from jxc_xsthd where gl_djh=?",
            "update jxc_xsthd set th_hkje=th_hkje+(?),th_note=? where gl_djh=?"},
    Settled{&supplierSide, u"CJ", false,
            "select ghs_sn as partner,j_yfje as due,j_sfje as paid,j_hkje as collected,j_kmmc as account,u_sn,"
            "j_note as note from jxc_jhd where j_sn=?",
            "select j_yfje-j_sfje-j_yhje-j_hkje from jxc_jhd where j_sn=?",
            "update jxc_jhd set j_hkje=j_hkje+(?),j_note=? where j_sn=?"},
    Settled{&supplierSide, u"CT", true,
            "select ghs_sn as partner,th_yfje as due,th_sfje as paid,th_hkje as collected,th_kmmc as account,u_sn,"
            "th_note as note from jxc_thd where gl_djh=?",
            "select th_yfje-th_sfje-th_hkje from jxc_thd where gl_djh=?",
            "update jxc_thd set th_hkje=th_hkje+(?),th_note=? where gl_djh=?"},
};

const Settled* settledKind(const PartnerSide& side, const QString& number) {
  for (const Settled& each : kSettled)
    if (each.side == &side && number.startsWith(words(each.prefix))) return &each;
  return nullptr;
}

/// Returns hold negative amounts. Their open sum has to be positive all the same: one is settled here only once more
/// was given back than was due. Settling an ordinary return is the business of the return itself.
bool leavesOpen(const Settled& kind, const OverviewLine& line) {
  const bool lineOpen = kind.isReturn ? line.paid > line.due : line.paid < line.due;
  return lineOpen && lookupNumber(kind.open, line.number) > 0;
}

QString kindsWords(const PartnerSide& side) {
  return &side == &customerSide ? QStringLiteral("销售单或退货单") : QStringLiteral("采购单或采购退货单");
}

/// The sentence that the document's note gets.
QString noteSentence(const PartnerSide& side, const SettlementDraft& draft, const QString& receipt) {
  const QString word = words(side.paymentWord);
  const QString amount = numberText(draft.amount);
  if (draft.writeOff) return u"  单据清款:"_qs + amount + u"，清款日期："_qs + draft.date + u' ' + draft.note;
  return u"  "_qs + word + u':' + receipt + u"金额:"_qs + amount + u"，"_qs + word + u"日期："_qs + draft.date + u' ' +
         draft.note;
}

}  // namespace settling_detail

std::optional<Settlement> openSettlement(const PartnerSide& side, const OverviewLine& line, Prompt& prompt) {
  namespace detail = settling_detail;
  const QString word = words(side.paymentWord);
  const detail::Settled* kind = detail::settledKind(side, line.number);
  if (!kind) {
    prompt.notice(u"只能对"_qs + detail::kindsWords(side) + u"进行"_qs + word + u"！"_qs);
    return {};
  }
  if (!detail::leavesOpen(*kind, line)) {
    prompt.notice(u"该单据不欠款，不需要"_qs + word + u"！"_qs);
    return {};
  }
  const RowSet rows = openSelect(kind->head, line.number);
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
  settlement.balance = ysyfkBalanceNow(settlement.partner, typeOf(side));
  return settlement;
}

bool settleDocument(const PartnerSide& side, const SettlementDraft& typed, Prompt& prompt) {
  namespace detail = settling_detail;
  const detail::Settled* kind = detail::settledKind(side, typed.number);
  if (!kind) return false;
  if (typed.amount == 0) {
    prompt.notice(QStringLiteral("收款不能为0！"));  // one form for both sides, with the customers' words
    return false;
  }
  if (typed.employee.isEmpty()) {
    prompt.notice(QStringLiteral("经办人不能为空！"));
    return false;
  }
  SettlementDraft draft = typed;
  draft.note = sanitizeText(typed.note.trimmed());

  Transaction transaction(accountDb());
  const RowSet rows = openSelect(kind->head, draft.number);
  if (rows.isEmpty()) return false;
  const Row head = rows.front();
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
  const QString note = (head.text("note") + detail::noteSentence(side, draft, receipt)).left(200);
  execSql(kind->collect, draft.amount, note, draft.number);
  transaction.commit();
  return true;
}

}  // namespace jxc::partner_books
