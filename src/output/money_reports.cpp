#include "output/money_reports.h"

#include "accounts/partner_ledger.h"
#include "accounts/partner_statement.h"
#include "core/file_names.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/partner_side.h"
#include "output/print_vars.h"
#include "output/templates.h"
#include "stock/document_family.h"

#include <QDir>

#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_map>

namespace jxc {
namespace money_reports_detail {

using partner_books::Kind;

QString templateOf(const PartnerSide& side, Kind kind) {
  const bool customer = side.isCustomer();
  if (kind == Kind::Due) return customer ? QStringLiteral("ysyfysk") : QStringLiteral("ysyfyfk");
  return customer ? QStringLiteral("ysyfskd") : QStringLiteral("ysyffkd");
}

RowSet documentOf(const PartnerSide& side, const QString& number) {
  return openSelect(
      compose("select a.*,b.u_name,c.{} as name,c.{} as lxr,c.{} as tele from jxc_ysyfk_dj a,jxc_user b,{} c where "
              "a.u_sn=b.u_sn and a.k_ghskh=c.{} and a.gl_djh=?",
              {side.name, side.contact, side.phone, side.table, side.sn}),
      number);
}

void setDocument(report::Report& report, const PartnerSide& side, Kind kind, const Row& row) {
  const double amount = row.number(kind == Kind::Due ? "k_yfje" : "k_sfje");
  for (const auto& [name, field] : {std::pair{u"djh", "gl_djh"},
                                    {u"rq", "k_rq"},
                                    {u"name", "name"},
                                    {u"lxr", "lxr"},
                                    {u"tele", "tele"},
                                    {u"fkfs", "k_fkfs"},
                                    {u"note", "k_note"},
                                    {u"uName", "u_name"},
                                    {u"aName", "a_name"},
                                    {u"checker", "k_checker"},
                                    {u"djh2", "gl_djh2"}})
    report.setText(QStringView(name), row.text(field));
  report.setText(u"je", printedMoney(amount));
  report.setText(u"mlje", printedMoney(row.number("k_mlje")));
  report.setText(u"yf", printedCapitals(amount));
  double balance = ysyfkBalanceNow(row.text("k_ghskh"), side.which);
  // The paper is handed over before the audit: it names what will be owed then.
  if (kind == Kind::Due && !row.flag("k_check")) balance += amount;
  report.setText(u"ysyfje", printedMoney(balance));
}

/// Amounts of a sale, purchase or return by its number; a row without columns of that name has none.
RowSet settledDocument(const QString& number) {
  const DocumentFamily* const family = findFamily(number);
  if (!family || !family->hasMoney()) return RowSet();
  const std::string discount = family->discount.empty() ? std::string() : compose("+{}", {family->discount});
  return openSelect(
      compose("select {} as due,{}", {family->due, family->paid}) + discount +
          compose(" as paid,{} as collected from {} where {}=?", {family->collected, family->head, family->number}),
      number);
}

QString slipTitle(cash::Movement movement) {
  switch (movement) {
    case cash::Movement::In:
      return QStringLiteral("现金银行收款单");
    case cash::Movement::Out:
      return QStringLiteral("现金银行付款单");
    case cash::Movement::Transfer:
      break;
  }
  return QStringLiteral("现金银行转账单");
}

cash::LineDraft lineOf(const RowSet& rows) {
  cash::LineDraft draft;
  if (rows.isEmpty()) return draft;
  const Row first = rows.front();
  const QString number = first.text("gl_djh");
  draft.movement = number.startsWith(u"XZ")   ? cash::Movement::Transfer
                   : number.startsWith(u"XC") ? cash::Movement::Out
                                              : cash::Movement::In;
  draft.date = first.text("xj_rq");
  draft.account = first.text("xj_kmmc");
  draft.amount = draft.movement == cash::Movement::In ? first.number("xj_je") : -first.number("xj_je");
  draft.employee = first.text("u_name");
  draft.note = first.text("xj_note");
  if (draft.movement == cash::Movement::Transfer && rows.rowCount() > 1) draft.target = rows[1].text("xj_kmmc");
  return draft;
}

report::Report slip(const cash::LineDraft& draft, const QString& number, const QString& enteredBy) {
  report::Report report = openReport(templateInUse(u"xjyhd"));
  setCompanyVars(report);
  report.setText(u"title", slipTitle(draft.movement));
  report.setText(u"djh", number);
  report.setText(u"rq", draft.date);
  report.setText(u"kmmc", draft.account);
  report.setText(u"kmmc2", draft.target);
  report.setText(u"je", printedMoney(draft.amount));
  report.setText(u"yf", printedCapitals(draft.amount));
  report.setText(u"uName", draft.employee);
  report.setText(u"note", draft.note);
  report.setText(u"aName", enteredBy);
  return report;
}

report::Report expenseSlip(const expenses::Draft& draft, const QString& number, const QString& enteredBy) {
  report::Report report = openReport(templateInUse(u"fysrd"));
  setCompanyVars(report);
  report.setText(u"title", expenses::wordOf(draft.side) + u'单');
  report.setText(u"djh", number);
  report.setText(u"rq", draft.date);
  report.setText(u"lx", draft.type);
  report.setText(u"bm", lookupValue("select de_name from jxc_dept where de_sn=?", draft.department));
  report.setText(u"kmmc", draft.account);
  report.setText(u"je", printedMoney(draft.amount));
  report.setText(u"yf", printedCapitals(draft.amount));
  report.setText(u"uName", lookupValue("select u_name from jxc_user where u_sn=?", draft.employee));
  report.setText(u"note", draft.note);
  report.setText(u"aName", enteredBy);
  return report;
}

/// The articles in the order in which they were marked, with the company's short name; asked for in portions of one
/// statement. What another station has deleted since is left out.
RowSet goodsInOrder(std::span<const std::int64_t> ids) {
  constexpr std::size_t portion = 100;
  RowSet rows;
  for (std::size_t begin = 0; begin < ids.size(); begin += portion) {
    Sql sql("select a.*,? as company from jxc_goods a where a.id in (", session().c_jc);
    for (std::size_t i = 0; i < portion; ++i)
      sql.add(i == 0 ? "?" : ",?", static_cast<long long>(ids[std::min(begin + i, ids.size() - 1)]));
    const RowSet found = openSelect(sql.add(")"));
    if (begin == 0) rows = RowSet(found.columns());
    std::unordered_map<std::int64_t, int> places;
    for (const Row row : found)
      places.emplace(row.integer("id"), row.index());
    for (std::size_t i = begin; i < std::min(begin + portion, ids.size()); ++i)
      if (const auto place = places.find(ids[i]); place != places.end()) rows.addRow(found, place->second);
  }
  return rows;
}

}  // namespace money_reports_detail

report::Report partnerDocumentReport(const PartnerSide& side, partner_books::Kind kind, const QString& number) {
  using namespace money_reports_detail;
  report::Report report = openReport(templateInUse(templateOf(side, kind)));
  setCompanyVars(report);
  const RowSet rows = documentOf(side, number);
  if (!rows.isEmpty()) setDocument(report, side, kind, rows.front());
  return report;
}

report::Report settlementReport(const PartnerSide& side, const QString& settled) {
  using namespace money_reports_detail;
  report::Report report = openReport(templateInUse(side.isCustomer() ? u"khsk" : u"ghsfukuan"));
  setCompanyVars(report);
  const QString number = lookupValue("select top 1 gl_djh from jxc_ysyfk_dj where gl_djh2=? order by id desc", settled);
  const RowSet rows = documentOf(side, number);
  if (!rows.isEmpty()) setDocument(report, side, Kind::Payment, rows.front());
  const RowSet documents = settledDocument(settled);
  report.setText(u"djh2", settled);
  if (documents.isEmpty()) return report;
  const Row document = documents.front();
  const double due = document.number("due"), paid = document.number("paid"), collected = document.number("collected");
  report.setText(u"djyf", printedMoney(due));
  report.setText(u"djsf", printedMoney(paid));
  report.setText(u"djhk", printedMoney(collected));
  report.setText(u"djwf", printedMoney(due - paid - collected));
  return report;
}

report::Report cashSlipReport(const QString& number) {
  using namespace money_reports_detail;
  const RowSet rows = openSelect("select * from jxc_xjyh where gl_djh=? order by id", number);
  return slip(lineOf(rows), number, rows.isEmpty() ? QString() : rows.front().text("a_name"));
}

report::Report cashSlipReport(const cash::LineDraft& draft) {
  const QString number =
      draft.id == 0 ? QString() : lookupValue("select gl_djh from jxc_xjyh where id=?", static_cast<double>(draft.id));
  return money_reports_detail::slip(draft, number, session().a_name);
}

report::Report expenseSlipReport(const QString& number) {
  const RowSet rows = openSelect("select * from jxc_yyfy where gl_djh=? order by id", number);
  if (rows.isEmpty()) return money_reports_detail::expenseSlip({}, number, {});
  return money_reports_detail::expenseSlip(expenses::draftOf(rows.front()), number, rows.front().text("a_name"));
}

report::Report expenseSlipReport(const expenses::Draft& draft) {
  const QString number = lookupValue("select gl_djh from jxc_yyfy where id=?", static_cast<double>(draft.id));
  return money_reports_detail::expenseSlip(draft, number, session().a_name);
}

report::Report listReport(QStringView name, RowSet rows, const QString& from, const QString& to) {
  report::Report report = openReport(templateInUse(name));
  setCompanyVars(report);
  report.setText(u"date1", from);
  report.setText(u"date2", to);
  report.setText(u"aName", session().a_name);
  report.setRows(std::move(rows));
  return report;
}

report::Report statementReport(const PartnerSide& side, const Criteria& criteria) {
  const Sql documents = partner_books::statementDocuments(side, criteria, Warehouses(criteria));
  report::Report report =
      listReport(words(statementPaper(side.which)), openSelect(documents), criteria.from, criteria.to);
  for (const auto& [name, text] : partner_books::statementWords(side, criteria))
    report.setText(name, text);
  return report;
}

int writeStatements(const PartnerSide& side, const RowSet& partners, const Criteria& criteria, const QString& folder,
                    const std::function<bool(int)>& progress) {
  int written = 0;
  for (const Row partner : partners) {
    if (progress && !progress(100 * written / partners.rowCount())) break;
    Criteria one = criteria;
    one.partner = partner.text("sn");
    const QString file = words(side.noun) + u"对账单-"_qs + one.partner + u'-' + partner.text("name") + u'-' +
                         criteria.from + u'至' + criteria.to + u".pdf"_qs;
    statementReport(side, one).prepare().writePdf(QDir(folder).filePath(asFileName(file)));
    ++written;
  }
  return written;
}

report::Report priceLabelReport(std::span<const std::int64_t> goodsIds) {
  report::Report report = openReport(templateInUse(u"goodsprice"));
  setCompanyVars(report);
  report.setRows(money_reports_detail::goodsInOrder(goodsIds));
  return report;
}

}  // namespace jxc
