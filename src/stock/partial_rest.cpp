#include "stock/partial_rest.h"

#include "accounts/partner_ledger.h"
#include "core/clock.h"
#include "core/numbers.h"
#include "core/posting.h"
#include "core/refusal.h"
#include "core/rights.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/cancel_checks.h"
#include "stock/document.h"
#include "stock/document_rules.h"
#include "stock/failing_command.h"
#include "stock/ledger.h"
#include "stock/line_amounts.h"
#include "stock/trading_document.h"

#include <vector>

namespace jxc::partial {
namespace partial_rest_detail {

/// The open lines of a source, and what is open of each.
struct Parts {
  RowSet lines;
  std::vector<LineFigures> figures;  // in step
};

/// The open part of a line. One of which nothing has moved goes back as it stands, to the cent, however its amounts
/// came about; a gift gives nothing back.
LineFigures openPart(const PartialMovement& m, const Row& row, const AmountRules& rules) {
  const DocumentFamily& s = *m.source;
  LineFigures part = readFigures(row, *s.line.columns);
  const double pieces = row.number(m.quantity()) - row.number(m.moved()) - row.number(m.cancelled());
  const bool isWhole = row.number(m.moved()) == 0 && row.number(m.cancelled()) == 0;
  part.quantity = pieces;
  if (!s.line.gift.empty() && !row.text(s.line.gift).isEmpty()) {
    part.price = part.taxedPrice = part.net = part.taxAmount = part.total = 0;
    part.costAmount = roundEps(part.cost * pieces, rules.amountDigits());
    return part;
  }
  if (!isWhole) settle(part, LineRounding::Cell, rules);
  for (double* amount : {&part.net, &part.taxAmount, &part.total, &part.costAmount})
    *amount = roundEps(*amount, rules.amountDigits());
  return part;
}

Parts openPartsOf(const PartialMovement& m, const QString& source) {
  const DocumentFamily& s = *m.source;
  const AmountRules rules = AmountRules::current();
  Parts parts{.lines = openSelect(compose("select b.* from {} b where b.{}=? and ", {s.lines, s.number}) +
                                      isOpen(m, "b") + " order by b.id",
                                  source),
              .figures = {}};
  for (const Row row : parts.lines)
    parts.figures.push_back(openPart(m, row, rules));
  return parts;
}

RowSet headOf(const PartialMovement& m, const QString& source) {
  const DocumentFamily& s = *m.source;
  return openSelect(compose("select * from {} where {}=1 and {}=? order by id", {s.head, s.status, s.number}), source);
}

/// Where the money of a closed rest goes: back through the account, or onto the partner's. In yuan.
struct RestMoney {
  double due = 0;      // of the open pieces, with tax
  double payable = 0;  // of it what was paid for the source: no more can come back in cash
  // The source was settled as paid: its rest goes back as cash unless the operator wills otherwise.
  bool follows = true;
  QString account;
  bool operator==(const RestMoney&) const = default;
};
RestMoney restMoney(const PartialMovement& m, const Row& head, const Parts& parts) {
  const DocumentFamily& s = *m.source;
  RestMoney rest;
  double due = 0;
  for (const LineFigures& each : parts.figures)
    due += each.total;
  rest.due = roundEps(due, AmountRules::current().amountDigits());
  rest.payable = backAtMost(rest.due, head.number(s.paid) + head.number(s.collected));
  rest.follows = head.integer(s.settlement) == static_cast<int>(Settlement::AtPaidAmount);
  rest.account = head.text(s.account);
  return rest;
}

/// All that closing it goes by, as it stands now; without a head it is no audited document any more.
struct Rest {
  RowSet heads;
  Parts parts;
  RestMoney money;
  Refusal shortage;  // of the books, when the goods were sold already
  bool isThere() const { return !heads.isEmpty() && !parts.figures.empty(); }
};
Rest restOf(const PartialMovement& m, const QString& source) {
  Rest rest{.heads = headOf(m, source), .parts = openPartsOf(m, source), .money = {}, .shortage = {}};
  if (!rest.isThere()) return rest;
  rest.money = restMoney(m, rest.heads.front(), rest.parts);
  rest.shortage = cancel_checks::shortWhenClosed(m, source);
  return rest;
}

QString money(double yuan) {
  return QString::number(roundEps(yuan, AmountRules::current().amountDigits()), 'f',
                         AmountRules::current().amountDigits());
}

enum class Way : char { Cash, Account };

/// What is asked, and the way that the operator chose; nothing: he left it.
std::optional<Way> askWay(const PartialMovement& m, const RestMoney& rest, Prompt& prompt) {
  const QString doing = words(m.doing);
  QString text = u"您的操作将取消当前单据所有未"_qs + doing + u"的商品，\r\n\r\n未"_qs + doing +
                 u"的商品数量将不再"_qs + doing + u"，\r\n\r\n将会自动生成一个新的"_qs + words(m.back->name) +
                 u"。\r\n\r\n"_qs;
  const bool buys = m.source->side == PartnerType::Supplier;
  const QString toAccount = buys ? u"记入应付帐款"_qs : u"记入应收帐款"_qs;
  const QString toCash = u"退回账户“%1”"_qs.arg(rest.account);
  const bool seen = seesAmounts(*m.source);
  const auto figure = [&](double yuan) { return seen ? u" "_qs + money(yuan) + u' ' : QString(); };
  if (rest.due == 0)
    return prompt.ask(text + u"没有退货金额，确认吗？"_qs) ? std::optional(Way::Account) : std::nullopt;
  if (rest.payable == 0) {
    text +=
        u"退货金额"_qs + figure(rest.due) + (rest.follows ? u"没有付过款，不退款"_qs : toAccount) + u"，确认吗？"_qs;
    if (!prompt.ask(text)) return {};
    return rest.follows ? Way::Cash : Way::Account;
  }
  const Way usual = rest.follows ? Way::Cash : Way::Account, other = rest.follows ? Way::Account : Way::Cash;
  const auto wordsOf = [&](Way way) {
    return way == Way::Cash ? figure(rest.payable) + toCash : figure(rest.due) + toAccount;
  };
  text += u"按原单的结算方式，退货金额"_qs + wordsOf(usual) + u"。\r\n\r\n选【是】"_qs + wordsOf(usual) +
          u"，\r\n\r\n选【否】"_qs + wordsOf(other) + u"，\r\n\r\n选【取消】不做任何改动。"_qs;
  switch (prompt.askOrCancel(text)) {
    case Answer::Yes:
      return usual;
    case Answer::No:
      return other;
    default:
      return {};
  }
}

/// The return under a number of today, as it stands before its audit. Its number.
QString writeReturn(const PartialMovement& m, const Row& head, const Parts& parts, const RestMoney& rest, Way way) {
  const DocumentFamily &s = *m.source, &back = *m.back;
  const LineColumns& c = *back.line.columns;
  const QString source = head.text(s.number), date = clock::today();
  const QString number = nextDocNoOn(back.lines, back.number, words(back.prefix), date);
  for (int i = 0; i < parts.lines.rowCount(); ++i) {
    const Row line = parts.lines[i];
    const LineFigures& figures = parts.figures[static_cast<std::size_t>(i)];
    const std::int64_t id =
        insertRow(back.lines, {{back.number, number},
                               {"g_sn", line.text("g_sn")},
                               {"a_name", session().a_name},
                               {back.line.link, line.integer(s.line.link)},
                               {back.line.note, line.text(s.line.note).left(back.line.noteWidth)},
                               {back.line.retail, back.line.retail.empty() ? 0.0 : line.number(s.line.retail)},
                               {back.line.entryTotal, figures.total},
                               {"t_ph", line.text("t_ph")},
                               {"t_scrq", line.text("t_scrq")},
                               {"t_yxq", line.text("t_yxq")}});
    writeFigures(c, id, figures);
  }
  const DocumentDraft draft{.number = number,
                            .date = date,
                            .warehouse = head.text(s.warehouse),
                            .salesperson = head.text("u_sn"),
                            .note = u"单据"_qs + source + u"取消"_qs + words(m.doing)};
  const std::int64_t id = insertWaitingHead(back, draft, number);
  const bool isSettled = way == Way::Cash && rest.follows;
  updateRow(back.head, id,
            {{back.partner, head.text(s.partner)},
             {back.due, back.headSign * rest.due},
             {back.paid, way == Way::Cash ? back.headSign * rest.payable : 0.0},
             {back.collected, 0.0},
             {back.settlement, static_cast<int>(isSettled ? Settlement::AtPaidAmount : Settlement::RestOnAccount)},
             {back.account, rest.account},
             {back.invoiceNumber, QString()},
             {back.invoiceAmount, 0.0},
             {"th_qk", false}});
  return number;
}

void closeLines(const PartialMovement& m, const QString& source) {
  const DocumentFamily& s = *m.source;
  postSql(compose("update {} set {}={}-{} where {}=? and {}>{}+{}",
                  {s.lines, m.cancelled(), m.quantity(), m.moved(), s.number, m.quantity(), m.moved(), m.cancelled()}),
          source);
  postSql(compose("update {} set {}=1 where {}=?", {s.head, s.allMoved, s.number}), source);
}

}  // namespace partial_rest_detail

std::optional<QString> closeRest(const PartialMovement& m, const QString& source, Prompt& prompt) {
  using namespace partial_rest_detail;
  const DocumentFamily& back = *m.back;
  const QString doing = words(m.doing);
  const Rest agreed = restOf(m, source);
  if (refused({{!hasRight(m.family->audit), u"您没有取消"_qs + doing + u"的权限！"_qs},
               {agreed.heads.isEmpty(), changedMeanwhile(source)},
               auditGate(source, clock::today()),
               {!agreed.isThere(), u"单据"_qs + source + u"没有待"_qs + doing + u"的商品！"_qs}},
              prompt))
    return {};
  const std::optional<Way> way = askWay(m, agreed.money, prompt);
  if (!way || !mayGoShort(agreed.shortage, prompt)) return {};

  Refusal changed;
  QString number;
  onDocument(source, u"取消"_qs + doing, [&] {
    Transaction transaction(accountDb());
    // Goods may have come, gone or been sold while the questions stood: what was agreed to is no longer what would be.
    const Rest now = restOf(m, source);
    if (!now.isThere() || now.money != agreed.money)
      changed = changedMeanwhile(source);
    else if (now.shortage != agreed.shortage)
      changed = now.shortage ? now.shortage : Refusal(changedMeanwhile(source));
    if (changed) return;
    number = writeReturn(m, now.heads.front(), now.parts, now.money, *way);
    closeLines(m, source);
    // What its audit derives is settled already.
    if (auditInside(back, number, [](std::int64_t) {}) != AuditOutcome::Audited)
      throw std::runtime_error("退货单没有审核。");
    transaction.commit();
  });
  if (isRefused(changed, prompt)) return {};
  return number;
}

QString restReturnOf(const PartialMovement& m, const QString& source) {
  const DocumentFamily &s = *m.source, &back = *m.back;
  return lookupValue(
      compose("select top 1 c.{} from {} a,{} b,{} c where a.{}=b.{} and a.g_sn=b.g_sn and b.{}=c.{} and c.{}=1 and "
              "a.{}>0 and a.{}=? order by a.id",
              {back.number, s.lines, back.lines, back.head, s.line.link, back.line.link, back.number, back.number,
               back.status, m.cancelled(), s.number}),
      source);
}

double restPaidBack(const DocumentFamily& source, const QString& number) {
  const PartialMovement* const m = behind(source);
  const QString back = m ? restReturnOf(*m, number) : QString();
  if (back.isEmpty()) return 0;
  return m->back->headSign * lookupNumber(compose("select {} from {} where {}=1 and {}=?",
                                                  {m->back->paid, m->back->head, m->back->status, m->back->number}),
                                          back);
}

bool closesRest(const DocumentFamily& back, const QString& number) {
  return exists(compose("select top 1 id from {} where {}<>0 and {}=?", {back.lines, back.line.link, back.number}),
                number);
}

std::optional<QString> openRefusal(const DocumentFamily& source, const QString& number) {
  const PartialMovement* const m = behind(source);
  if (!m ||
      !exists(compose("select top 1 b.id from {} b where b.{}=? and ", {source.lines, source.number}) + isOpen(*m, "b"),
              number))
    return {};
  const QString doing = words(m->doing);
  return u"单据"_qs + number + u"还有没"_qs + doing + u"的商品，不能整单退货！\r\n\r\n请先在“商品"_qs + doing +
         u"”中用“取消"_qs + doing + u"”取消没"_qs + doing + u"的数量，\r\n\r\n或者全部"_qs + doing + u"后再退货！"_qs;
}

}  // namespace jxc::partial
