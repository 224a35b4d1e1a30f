#include "output/print_vars.h"

#include "accounts/partner_ledger.h"
#include "core/capitals.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "masterdata/partner_side.h"
#include "output/printed_documents.h"
#include "stock/trading_document.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>
#include <string_view>

namespace jxc {
namespace print_vars_detail {

enum class As : char { Text, Money };
/// A field of the statement under the name of a variable.
struct Variable {
  std::string_view field;
  std::u16string_view name;
  As as = As::Text;
};

/// Amounts due and paid of a head, as its table names them.
struct Amounts {
  std::string_view due, paid;
  std::string_view status = {}, settlement = {};  // of customers' documents: what the balance depends on
  int sign = 1;                                   // returns store minus what their paper says
};

struct Kind {
  std::u16string_view kind;
  std::string_view statement;  // with the number as its value
  std::span<const Variable> variables;
  Amounts amounts = {};
  const PartnerSide* side = nullptr;
};

constexpr Variable kReceipt[] = {
    {"ck_name", u"ckName"}, {"j_jhrq", u"jhDate"},     {"u_name", u"uName"},           {"j_kmmc", u"Kmmc"},
    {"j_note", u"Note"},    {"j_sn2", u"gldjh2"},      {"j_yf", u"yunfei", As::Money}, {"j_bzf", u"baozfei", As::Money},
    {"j_fpno", u"fpno"},    {"j_checker", u"checker"}, {"j_chkrq", u"chkrq"},          {"j_yhje", u"xxyh", As::Money},
    {"a_name", u"aName"},
};
constexpr Variable kPurchaseReturn[] = {
    {"ck_name", u"ckName"}, {"th_thrq", u"jhDate"},     {"u_name", u"uName"},   {"th_kmmc", u"Kmmc"},
    {"th_note", u"Note"},   {"th_checker", u"checker"}, {"th_chkrq", u"chkrq"}, {"a_name", u"aName"},
};
constexpr Variable kSale[] = {
    {"ck_name", u"ckName"},
    {"ls_xsrq", u"jhDate"},
    {"ls_note", u"Note"},
    {"gl_djh2", u"gldjh2"},
    {"ls_yf", u"yunfei", As::Money},
    {"ls_bzf", u"baozfei", As::Money},
    {"ls_fpno", u"fpno"},
    {"ls_checker", u"checker"},
    {"ls_chkrq", u"chkrq"},
    {"u_name", u"uName"},
    {"ls_kmmc", u"Kmmc"},
    {"ls_yhje", u"xxyh", As::Money},
    {"a_name", u"aName"},
};
constexpr Variable kSaleReturn[] = {
    {"ck_name", u"ckName"}, {"th_xsrq", u"jhDate"},     {"th_note", u"Note"},   {"u_name", u"uName"},
    {"th_kmmc", u"Kmmc"},   {"th_checker", u"checker"}, {"th_chkrq", u"chkrq"}, {"a_name", u"aName"},
};
constexpr Variable kTransfer[] = {
    {"db_dbrq", u"jhDate"}, {"u_name", u"uName"},       {"dcck", u"ckOut"},     {"drck", u"ckIn"},
    {"db_note", u"Note"},   {"db_checker", u"checker"}, {"db_chkrq", u"chkrq"}, {"a_name", u"aName"},
};
constexpr Variable kSplit[] = {
    {"cf_cfrq", u"jhDate"},       {"a_name", u"aName"},
    {"ck_name", u"ckName"},       {"u_name", u"uName"},
    {"g_name", u"gName"},         {"g_sn", u"gSn"},
    {"dw_name", u"dwName"},       {"gg_name", u"ggName"},
    {"color_name", u"colorName"}, {"cf_cbj", u"cfCbj", As::Money},
    {"cf_sl", u"cfSl"},           {"zje", u"cfZje", As::Money},
    {"cf_note", u"cfNote"},
};
constexpr Variable kBundle[] = {
    {"kb_kbrq", u"jhDate"},       {"a_name", u"aName"},
    {"ck_name", u"ckName"},       {"u_name", u"uName"},
    {"g_name", u"gName"},         {"g_sn", u"gSn"},
    {"dw_name", u"dwName"},       {"gg_name", u"ggName"},
    {"color_name", u"colorName"}, {"kb_cbj", u"cfCbj", As::Money},
    {"kb_sl", u"cfSl"},           {"zje", u"cfZje", As::Money},
    {"kb_note", u"cfNote"},
};
constexpr Variable kLoss[] = {
    {"bs_bsrq", u"jhDate"}, {"a_name", u"aName"}, {"ck_name", u"ckName"}, {"u_name", u"uName"}, {"bs_note", u"dNote"}};
constexpr Variable kOverflow[] = {
    {"by_byrq", u"jhDate"}, {"a_name", u"aName"}, {"ck_name", u"ckName"}, {"u_name", u"uName"}, {"by_note", u"dNote"}};
constexpr Variable kStocktake[] = {{"pd_rq", u"jhDate"},   {"pd_note", u"Note"},       {"a_name", u"aName"},
                                   {"ck_name", u"ckName"}, {"pd_checker", u"checker"}, {"u_name", u"uName"}};
constexpr Variable kLoan[] = {
    {"ck_name", u"ckName"}, {"jh_rq", u"jhDate"},       {"jh_note", u"Note"},   {"u_name", u"uName"},
    {"kh_name", u"khName"}, {"kh_lxr", u"khLxr"},       {"kh_tele", u"khTele"}, {"kh_address", u"khAddress"},
    {"a_name", u"aName"},   {"jh_checker", u"checker"}, {"jh_chkrq", u"chkrq"},
};

// Orders (`cgd`, `spdd`) have no tables in this system and the exchange (`xshh`) no head of its own: their papers know
// the company only.
const Kind kKinds[] = {
    {u"cgjh",
     "select a.*,b.ck_name,c.u_name from jxc_jhd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and "
     "a.u_sn=c.u_sn and a.j_sn=?",
     kReceipt,
     {"j_yfje", "j_sfje"},
     &supplierSide},
    {u"cgth",
     "select a.*,b.ck_name,c.u_name from jxc_thd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and "
     "a.u_sn=c.u_sn and a.gl_djh=?",
     kPurchaseReturn,
     {"th_yfje", "th_sfje", {}, {}, -1},
     &supplierSide},
    {u"spxs",
     "select a.*,b.ck_name,c.u_name from jxc_lsxsd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and "
     "a.u_sn=c.u_sn and a.gl_djh=?",
     kSale,
     {"ls_yfje", "ls_sfje", "ls_status", "ls_jsfs"},
     &customerSide},
    {u"xsth",
     "select a.*,b.ck_name,c.u_name from jxc_xsthd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and "
     "a.u_sn=c.u_sn and a.gl_djh=?",
     kSaleReturn,
     {"th_yfje", "th_sfje", "th_status", "th_jsfs", -1},
     &customerSide},
    {u"kcdb",
     "select b.ck_name as dcck,c.ck_name as drck,d.u_name,a.* from jxc_kcdbd a,jxc_ckxx b,jxc_ckxx c,jxc_user d "
     "where a.ck_out=b.ck_sn and a.ck_in=c.ck_sn and a.u_sn=d.u_sn and a.gl_djh=?",
     kTransfer},
    {u"spcf",
     "select a.*,b.g_name,b.dw_name,b.gg_name,b.color_name,c.ck_name,d.u_name,a.cf_cbj*a.cf_sl as zje from "
     "jxc_cfd a,jxc_goods b,jxc_ckxx c,jxc_user d where a.g_sn=b.g_sn and a.ck_sn=c.ck_sn and a.u_sn=d.u_sn and "
     "a.gl_djh=? order by a.id desc",
     kSplit},
    {u"spkb",
     "select a.*,b.g_name,b.dw_name,b.gg_name,b.color_name,c.ck_name,d.u_name,a.kb_cbj*a.kb_sl as zje from "
     "jxc_kbd a,jxc_goods b,jxc_ckxx c,jxc_user d where a.g_sn=b.g_sn and a.ck_sn=c.ck_sn and a.u_sn=d.u_sn and "
     "a.gl_djh=? order by a.id desc",
     kBundle},
    {u"spbs",
     "select a.*,b.ck_name,c.u_name from jxc_bsd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and "
     "a.u_sn=c.u_sn and a.gl_djh=?",
     kLoss},
    {u"spby",
     "select a.*,b.ck_name,c.u_name from jxc_byd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and "
     "a.u_sn=c.u_sn and a.gl_djh=?",
     kOverflow},
    // Counts of older account sets know no warehouse and no employee.
    {u"kcpd",
     "select a.*,b.ck_name,c.u_name from (jxc_kcpd a left join jxc_ckxx b on a.ck_sn=b.ck_sn) left join "
     "jxc_user c on a.u_sn=c.u_sn where a.gl_djh=?",
     kStocktake},
    {u"khjh",
     "select a.*,b.ck_name,c.u_name,d.kh_name,d.kh_lxr,d.kh_tele,d.kh_address from jxc_khjh a,jxc_ckxx b,"
     "jxc_user c,jxc_khxx d where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.kh_sn=d.kh_sn and a.gl_djh=?",
     kLoan},
};

const Kind* kindNamed(QStringView name) {
  const auto* found = std::ranges::find_if(kKinds, [&](const Kind& each) { return name == QStringView(each.kind); });
  return found == std::end(kKinds) ? nullptr : found;
}

void setPartnerVars(report::Report& report, const PartnerSide& side, const QString& partner) {
  const bool customer = &side == &customerSide;
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

void setHead(report::Report& report, const Row& head, const Kind& kind) {
  for (const Variable& each : kind.variables)
    report.setText(QStringView(each.name),
                   each.as == As::Money ? printedMoney(head.number(each.field)) : head.text(each.field));
  if (kind.amounts.due.empty()) return;
  const Amounts& amounts = kind.amounts;
  const double due = head.number(amounts.due), paid = head.number(amounts.paid);
  setAmounts(report, amounts.sign * due, amounts.sign * paid);
  const QString partner = head.text(kind.side->sn);
  setPartnerVars(report, *kind.side, partner);
  if (amounts.status.empty()) return;
  setBalances(report, partner, due, paid, head.integer(amounts.status) == 1, head.integer(amounts.settlement) == 1);
}

/// A transfer goes from one shop to the other at what its goods sell for.
double valueAtSellingPrice(const QString& number) {
  return lookupNumber(
      "select sum(a.db_sl*b.g_sj) as zje from jxc_dbsp a,jxc_goods b where a.g_sn=b.g_sn and a.gl_djh=?", number);
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

void fillPrintVars(report::Report& report, const QString& number, QStringView kindName) {
  using namespace print_vars_detail;
  setCompanyVars(report);
  const Kind* kind = kindNamed(kindName);
  if (!kind) return;
  report.setText(u"djh", number);
  report.setNumber(u"seesCost", session().canSeeCost ? 1 : 0);
  if (kindName == u"spbs") report.setText(u"title", u"商品报损单");
  if (kindName == u"spby") report.setText(u"title", u"商品报溢单");
  if (kindName == u"khjh") report.setText(u"djName", number.startsWith(u"HH") ? u"还货" : u"借货");
  const RowSet rows = openSelect(kind->statement, number);
  if (rows.isEmpty()) return;
  setHead(report, rows.front(), *kind);
  if (kindName == u"kcdb") report.setText(u"yf", printedCapitals(valueAtSellingPrice(number)));
}

void fillDraftVars(report::Report& report, const TradingDraft& draft, const PrintedDocument& document) {
  using namespace print_vars_detail;
  setCompanyVars(report);
  const Kind* kind = kindNamed(QStringView(document.kind));
  report.setText(u"djh", draft.number);
  report.setText(u"jhDate", draft.date);
  report.setText(u"ckName", lookupValue("select ck_name from jxc_ckxx where ck_sn=?", draft.warehouse));
  report.setText(u"uName", lookupValue("select u_name from jxc_user where u_sn=?", draft.salesperson));
  report.setText(u"aName", session().a_name);
  report.setText(u"Note", draft.note);
  report.setText(u"gldjh2", draft.originalNumber);
  report.setText(u"fpno", draft.invoiceNumber);
  report.setText(u"yunfei", printedMoney(draft.freight));
  report.setText(u"baozfei", printedMoney(draft.packing));
  report.setText(u"Kmmc", draft.account);
  report.setText(u"xxyh", printedMoney(0));
  setAmounts(report, draft.payable, draft.paid);
  setPartnerVars(report, *kind->side, draft.partner);
  if (kind->amounts.status.empty()) return;
  const int sign = kind->amounts.sign;
  setBalances(report, draft.partner, sign * draft.payable, sign * draft.paid, false,
              draft.settlement == Settlement::RestOnAccount);
}

}  // namespace jxc
