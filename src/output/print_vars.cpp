#include "output/print_vars.h"

#include "accounts/partner_ledger.h"
#include "core/capitals.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "engine/number_text.h"
#include "masterdata/partner_side.h"
#include "stock/conversion.h"
#include "stock/document_family.h"
#include "stock/partial_rules.h"
#include "stock/trading_document.h"

#include <cmath>
#include <string_view>

namespace jxc {
namespace print_vars_detail {

/// The family of a document; of a kind that two families print under, the number tells which.
const DocumentFamily* familyOf(QStringView kind, const QString& number) {
  const DocumentFamily* found = nullptr;
  for (const DocumentFamily& family : documentFamilies()) {
    if (kind != QStringView(family.paper.kind)) continue;
    if (!found || number.startsWith(QStringView(family.prefix))) found = &family;
  }
  return found;
}

/// The head with what its paper names. Warehouse and employee are looked up loosely: counts of older account sets know
/// neither.
std::string headOf(const DocumentFamily& family) {
  std::string columns = "select a.*,b.ck_name,c.u_name";
  std::string tables = compose("({} a left join jxc_ckxx b on a.{}=b.ck_sn) left join jxc_user c on a.u_sn=c.u_sn",
                               {family.head, family.warehouse});
  if (!family.into.empty()) {
    columns += ",d.ck_name as into_name";
    tables = "(" + tables + compose(") left join jxc_ckxx d on a.{}=d.ck_sn", {family.into});
  }
  if (const HeadGoods& whole = family.whole; !whole.goods.empty()) {
    columns += compose(",e.g_name,e.dw_name,e.gg_name,e.color_name,a.{}*a.{} as zje", {whole.cost, whole.quantity});
    tables = "(" + tables + compose(") left join jxc_goods e on a.{}=e.g_sn", {whole.goods});
  }
  return columns + " from " + tables + compose(" where a.{}=? order by a.{} desc,a.id", {family.number, family.status});
}

void setPartnerVars(report::Report& report, PartnerType type, const QString& partner) {
  const bool customer = type == PartnerType::Customer;
  const PartnerSide& side = customer ? customerSide : supplierSide;
  const QString prefix = customer ? QStringLiteral("kh") : QStringLiteral("ghs");
  const RowSet rows =
      openSelect(compose("select {},{},{},{},{} from {} where {}=?",
                         {side.name, side.contact, side.phone, side.address, side.note, side.table, side.sn}),
                 partner);
  if (rows.isEmpty()) return;
  const Row row = rows.front();
  report.setText(prefix + u"Name"_qs, row.text(side.name));
  report.setText(prefix + u"Lxr"_qs, row.text(side.contact));
  report.setText(prefix + u"Tele"_qs, row.text(side.phone));
  report.setText(prefix + u"Address"_qs, row.text(side.address));
  report.setText(prefix + u"Note"_qs, row.text(side.note));
}

/// Amounts as the paper says them: digits and capitals.
void setAmounts(report::Report& report, double due, double paid) {
  report.setText(u"xxyf", printedMoney(due));
  report.setText(u"xxsf", printedMoney(paid));
  report.setText(u"yf", printedCapitals(due));
  report.setText(u"sf", printedCapitals(paid));
}

/// What the customer owes before (khqk) and after (ljqkje) a document. `due` and `paid` move the balance as they stand
/// in the head.
void setBalances(report::Report& report, const QString& customer, double due, double paid, bool audited,
                 bool onAccount) {
  const double balance = ysyfkBalanceNow(customer, PartnerType::Customer);
  const double moved = onAccount ? due - paid : 0;
  report.setText(u"khqk", printedMoney(audited ? balance - moved : balance));
  report.setText(u"ljqkje", printedMoney(audited ? balance : balance + moved));
}

/// What is taken apart or made.
void setGoods(report::Report& report, const Row& goods) {
  report.setText(u"gName", goods.text("g_name"));
  report.setText(u"dwName", goods.text("dw_name"));
  report.setText(u"ggName", goods.text("gg_name"));
  report.setText(u"colorName", goods.text("color_name"));
}

void setHead(report::Report& report, const Row& head, const DocumentFamily& family) {
  const auto text = [&](std::u16string_view name, std::string_view field) {
    if (!field.empty()) report.setText(QStringView(name), head.text(field));
  };
  const auto money = [&](std::u16string_view name, std::string_view field) {
    if (!field.empty()) report.setText(QStringView(name), printedMoney(head.number(field)));
  };
  text(family.into.empty() ? u"ckName" : u"ckOut", "ck_name");
  if (!family.into.empty()) text(u"ckIn", "into_name");
  text(u"jhDate", family.date);
  text(u"uName", "u_name");
  text(u"aName", "a_name");
  text(family.paper.noteAs, family.note);
  text(u"checker", family.checker);
  text(u"chkrq", family.checkDate);
  text(u"Kmmc", family.account);
  text(u"gldjh2", family.originalNumber);
  text(u"fpno", family.invoiceNumber);
  money(u"yunfei", family.freight);
  money(u"baozfei", family.packing);
  money(u"xxyh", family.discount);
  if (const HeadGoods& whole = family.whole; !whole.goods.empty()) {
    text(u"gSn", whole.goods);
    setGoods(report, head);
    text(u"cfSl", whole.quantity);
    money(u"cfCbj", whole.cost);
    money(u"cfZje", "zje");
  }
  if (!family.partner.empty()) setPartnerVars(report, family.side, head.text(family.partner));
  if (!family.hasMoney()) return;
  const double due = head.number(family.due), paid = head.number(family.paid);
  setAmounts(report, family.headSign * due, family.headSign * paid);
  if (family.side == PartnerType::Customer)
    setBalances(report, head.text(family.partner), due, paid, head.integer(family.status) == 1,
                head.integer(family.settlement) == 1);
}

}  // namespace print_vars_detail

QString printedMoney(double amount) {
  const double rounded = roundEps(amount, 2);
  QString text = QString::number(std::abs(rounded), 'f', 2);
  if (text.startsWith(u"0.")) text.remove(0, 1);
  return rounded < 0 ? u'-' + text : text;
}

QString printedCapitals(double amount) {
  return moneyInCapitals(printedMoney(amount));
}

void setCompanyVars(report::Report& report) {
  report.setText(u"comName", session().c_name);
  report.setText(u"comTele", session().c_tele);
  report.setText(u"comLxr", session().c_lxr);
  report.setText(u"comAddress", session().c_address);
}

void fillPrintVars(report::Report& report, const QString& number, QStringView kind) {
  using namespace print_vars_detail;
  setCompanyVars(report);
  const DocumentFamily* const family = familyOf(kind, number);
  if (!family) return;
  const DocumentPaper& paper = family->paper;
  report.setText(u"djh", number);
  report.setNumber(u"seesCost", session().canSeeCost ? 1 : 0);
  if (!paper.ownVariable.empty()) report.setText(QStringView(paper.ownVariable), words(paper.ownText));
  const RowSet rows = openSelect(headOf(*family), number);
  if (rows.isEmpty()) return;
  setHead(report, rows.front(), *family);
  if (!paper.inCapitals.empty()) report.setText(u"yf", printedCapitals(lookupNumber(paper.inCapitals, number)));
}

void fillDraftVars(report::Report& report, const DocumentDraft& draft, const DocumentFamily& family) {
  setCompanyVars(report);
  report.setText(u"djh", draft.number);
  report.setNumber(u"seesCost", session().canSeeCost ? 1 : 0);
  report.setText(u"jhDate", draft.date);
  report.setText(u"ckName", lookupValue("select ck_name from jxc_ckxx where ck_sn=?", draft.warehouse));
  report.setText(u"uName", lookupValue("select u_name from jxc_user where u_sn=?", draft.salesperson));
  report.setText(u"aName", session().a_name);
  report.setText(QStringView(family.paper.noteAs), draft.note);
  if (const DocumentPaper& paper = family.paper; !paper.ownVariable.empty())
    report.setText(QStringView(paper.ownVariable), words(paper.ownText));
}

void fillDraftVars(report::Report& report, const DraftOfPartner& draft, const DocumentFamily& family) {
  const DocumentDraft& head = draft;
  fillDraftVars(report, head, family);
  print_vars_detail::setPartnerVars(report, family.side, draft.partner);
}

void fillDraftVars(report::Report& report, const ConversionDraft& draft, const ConversionFigures& figures,
                   const DocumentFamily& family) {
  const DocumentDraft& head = draft;
  fillDraftVars(report, head, family);
  report.setText(u"gSn", draft.goods);
  const RowSet goods = openSelect("select g_name,dw_name,gg_name,color_name from jxc_goods where g_sn=?", draft.goods);
  if (!goods.isEmpty()) print_vars_detail::setGoods(report, goods.front());
  report.setText(u"cfSl", numberText(draft.quantity));
  report.setText(u"cfCbj", printedMoney(figures.cost));
  report.setText(u"cfZje", printedMoney(figures.value));
}

void fillDraftVars(report::Report& report, const TradingDraft& draft, const DocumentFamily& family) {
  using namespace print_vars_detail;
  const DocumentDraft& head = draft;
  fillDraftVars(report, head, family);
  report.setText(u"gldjh2", draft.originalNumber);
  report.setText(u"fpno", draft.invoiceNumber);
  report.setText(u"yunfei", printedMoney(draft.freight));
  report.setText(u"baozfei", printedMoney(draft.packing));
  report.setText(u"Kmmc", draft.account);
  report.setText(u"xxyh", printedMoney(0));
  setAmounts(report, draft.payable, draft.paid);
  setPartnerVars(report, family.side, draft.partner);
  if (family.side != PartnerType::Customer) return;
  const int sign = family.headSign;
  setBalances(report, draft.partner, sign * draft.payable, sign * draft.paid, false,
              draft.settlement == Settlement::RestOnAccount);
}

}  // namespace jxc
