#include "accounts/partner_statement.h"

#include "accounts/partner_overview.h"
#include "core/clock.h"
#include "core/rights.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "stock/document_list.h"

#include <algorithm>
#include <array>
#include <string>

namespace jxc::partner_books {
namespace partner_statement_detail {

/// A payer that nobody chose.
constexpr const char16_t* kNoPayer = u"未指定";

Families familiesOf(const PartnerSide& side) {
  return side.isCustomer() ? Families(DocumentSet<families::sale, families::saleReturn>::families)
                           : Families(DocumentSet<families::purchaseReceipt, families::purchaseReturn>::families);
}
/// The kind that carries freight.
const DocumentFamily& tradeOf(const PartnerSide& side) {
  return *familiesOf(side).front();
}

std::string columnsOfPaper(const DocumentFamily& family) {
  const bool isReturn = family.headSign < 0;
  if (family.side == PartnerType::Supplier) return isReturn ? ",'退货还款' as zflx" : ",'进货支付' as zflx";
  return std::string(",b.kh_name,a.kh_sn,") + (isReturn ? "'销售退货支出'" : "'商品销售付款'") + " as fktype";
}
constexpr DocumentListing kListing{.byRight = false, .columns = columnsOfPaper};

std::string ofHead(std::string_view column, const char* otherwise = "0") {
  return column.empty() ? otherwise : compose("a.{}", {column});
}

/// The name of the partner of a head `a`, joined as `b`.
std::string nameColumn(const PartnerSide& side, const DocumentFamily& family) {
  return compose("iif(b.{} is null,a.{},b.{}) as ghs_name", {side.name, family.partner, side.name});
}
std::string headsWithPartner(const PartnerSide& side, const DocumentFamily& family) {
  return compose("{} a left outer join {} b on a.{}=b.{}", {family.head, side.table, family.partner, side.sn});
}

Filter audited(const DocumentFamily& family, const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add(compose("a.{}=1", {family.status}));
  addChoice(filter, compose("a.{}", {family.partner}), criteria.partner);
  warehouses.restrict(filter, compose("a.{}", {family.warehouse}));
  return filter;
}

/// What each document of a kind leaves open.
Sql openAmounts(const DocumentFamily& family, const Criteria& criteria, const Warehouses& warehouses) {
  const std::string open = openAmount(family);
  Filter filter = audited(family, criteria, warehouses);
  filter.add(open + "<>0");
  return Sql(compose("select a.{} as ghs_sn,a.{} as rq,", {family.partner, family.date}) + open + " as wf from " +
             std::string(family.head) + " a")
      .where(filter);
}

Sql charged(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses) {
  const DocumentFamily& f = tradeOf(side);
  const std::string payer = ofHead(f.freightPayer);
  Filter filter = audited(f, criteria, warehouses);
  filter.add(compose("(a.{}>0 or a.{}>0)", {f.freight, f.packing}));
  addPeriod(filter, criteria, ofHead(f.date));
  addKey(filter, criteria, {compose("b.{}", {side.sn}), compose("b.{}", {side.jm}), compose("b.{}", {side.name})});
  if (criteria.group == kNoPayer)
    filter.add("(" + payer + " is null or " + payer + "='')");
  else
    addChoice(filter, payer, criteria.group);
  return Sql("select " + ofHead(f.number) + " as djh," + ofHead(f.date) + " as rq," + ofHead(f.partner) +
                 " as ghs_sn," + nameColumn(side, f) + ",iif(" + payer + " is null or " + payer + "='',?," + payer +
                 ") as yffs," + ofHead(f.due) + " as yfje," + ofHead(f.paid) + " as sfje," + ofHead(f.discount) +
                 " as yhje," + ofHead(f.freight) + " as yf," + ofHead(f.packing) + " as bzf," +
                 compose("(select sum(x.{}) from {} x where x.{}=a.{}) as sl from ",
                         {f.line.columns->quantity, f.lines, f.number, f.number}) +
                 headsWithPartner(side, f),
             kNoPayer)
      .where(filter);
}

QString daysAgo(int days) {
  return clock::now().date().addDays(-days).toString(Qt::ISODate);
}

}  // namespace partner_statement_detail

Sql statementPartners(const PartnerSide& side) {
  Filter filter;
  addListBinding(filter, "a.ck_sn");
  return Sql("select '' as sn,? as name,'' as jm,'' as tele,null as ye,0 as forbid,0 as dsort,0 as place",
             QStringLiteral("全部") + words(side.noun))
      .add(compose(" union all select a.{},a.{},a.{},a.{},a.{},a.{},1,a.id from {} a",
                   {side.sn, side.name, side.jm, side.phone, side.balance, side.forbidden, side.table}))
      .where(filter)
      .add(" order by dsort,forbid,place");
}

Sql statementDocuments(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses) {
  using namespace partner_statement_detail;
  Criteria listed = criteria;
  listed.descending = criteria.order == u"desc";
  listed.order.clear();
  return listedDocuments(familiesOf(side), listed, warehouses, kListing);
}

std::vector<ListItem> statementKinds(const PartnerSide& side) {
  using namespace partner_statement_detail;
  return listedKinds(familiesOf(side), kListing);
}

Sql statementGoods(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses) {
  using namespace partner_statement_detail;
  return listedLines(familiesOf(side), criteria, warehouses, kListing);
}

double statementBalance(const PartnerSide& side, const QString& partner, const QString& day) {
  if (!partner.isEmpty()) return ysyfkBalanceAt(partner, side.which, endOf(day));
  return lookupNumber(Sql("select sum(k_ljje) from jxc_ysyfk where id in ").add(lastLines(owedLedger, side, day)));
}

std::vector<std::pair<QString, QString>> statementWords(const PartnerSide& side, const Criteria& criteria) {
  const QString name = criteria.partner.isEmpty() ? QStringLiteral("所有") : partnerName(side, criteria.partner);
  const bool seesAmounts = hasRight(moneyRight(side.which));
  return {
      {u"bTitle"_qs, words(side.noun) + u"对账单'"_qs + name + u'\''},
      {u"sLjjeAll"_qs, seesAmounts ? numberText(statementBalance(side, criteria.partner, criteria.to)) : QString()}};
}

RowSet partnersOfStatements(const PartnerSide& side, const Criteria& criteria) {
  using namespace partner_statement_detail;
  const Warehouses warehouses(criteria);
  Filter told;
  addListBinding(told, "b.ck_sn");
  Sql any("(");
  for (const DocumentFamily* family : familiesOf(side)) {
    Filter filter = audited(*family, {}, warehouses);
    addPeriod(filter, criteria, compose("a.{}", {family->date}));
    any.add(compose("b.{} in (select a.{} from {} a", {side.sn, family->partner, family->head}))
        .where(filter)
        .add(") or ");
  }
  any.add(compose("b.{} in (select k_ghskh from jxc_ysyfk where k_ljje<>0 and id in ", {side.sn}))
      .add(lastLines(owedLedger, side, criteria.to))
      .add("))");
  told.add(any);
  return openSelect(Sql(compose("select b.{} as sn,b.{} as name from {} b", {side.sn, side.name, side.table}))
                        .where(told)
                        .add(" order by b.id"));
}

Sql chargedDocuments(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses) {
  return partner_statement_detail::charged(side, criteria, warehouses).add(" order by rq,djh");
}

Sql chargeTotals(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses) {
  return Sql(R"(select m.ghs_sn,m.yffs,max(m.ghs_name) as ghs_name,sum(m.yfje) as yfje,sum(m.sfje) as sfje,
      sum(m.yhje) as yhje,sum(m.yf) as yf,sum(m.bzf) as bzf,sum(m.sl) as sl,m.ghs_sn+'/'+m.yffs as rowkey from ()")
      .add(partner_statement_detail::charged(side, criteria, warehouses))
      .add(") m group by m.ghs_sn,m.yffs order by m.ghs_sn,m.yffs");
}

Sql openByAge(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses) {
  using namespace partner_statement_detail;
  const QString d30 = daysAgo(30), d60 = daysAgo(60), d90 = daysAgo(90);
  Sql open;
  for (const DocumentFamily* family : familiesOf(side)) {
    if (!open.isEmpty()) open.add(" union all ");
    open.add(openAmounts(*family, criteria, warehouses));
  }
  Filter searched;
  addKey(searched, criteria, {compose("b.{}", {side.sn}), compose("b.{}", {side.jm}), compose("b.{}", {side.name})});
  return Sql(compose("select m.*,iif(b.{} is null,m.ghs_sn,b.{}) as ghs_name,b.{} as lxr,b.{} as tele,b.{} as "
                     "ye,b.{}-m.wfje as qt from ",
                     {side.name, side.name, side.contact, side.phone, side.balance, side.balance}))
      .add(R"((select x.ghs_sn,sum(iif(x.rq>=?,x.wf,0)) as w30,sum(iif(x.rq>=? and x.rq<?,x.wf,0)) as w60,
      sum(iif(x.rq>=? and x.rq<?,x.wf,0)) as w90,sum(iif(x.rq<?,x.wf,0)) as wmore,sum(x.wf) as wfje,count(*) as num,
      left(min(x.rq),10) as rq from ()",
           d30, d60, d30, d90, d60, d90)
      .add(open)
      .add(compose(") x group by x.ghs_sn) m left outer join {} b on m.ghs_sn=b.{}", {side.table, side.sn}))
      .where(searched)
      // The order would tell who owes more.
      .add(hasRight(moneyRight(side.which)) ? " order by m.wfje desc,m.ghs_sn" : " order by m.ghs_sn");
}

Sql openDocuments(const PartnerSide& side, const Criteria& criteria, const Warehouses& warehouses) {
  Criteria open{.warehouse = criteria.warehouse, .partner = criteria.partner, .boxes = kOpenOnly};
  return statementDocuments(side, open, warehouses);
}

Sql dormantCustomers(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace partner_statement_detail;
  constexpr double kMostDays = 100000;
  const bool alsoNever = criteria.has(kNeverBought);
  Filter bought, customers;
  bought.add("x.gl_flag in ('xs','xt')");
  addChoice(bought, "x.ghs_sn", criteria.partner);
  warehouses.restrict(bought, "x.ck_sn");
  customers.add(alsoNever ? "(b.rq is null or b.rq<?)" : "b.rq<?",
                daysAgo(static_cast<int>(std::clamp(criteria.amount, 0.0, kMostDays))));
  addChoice(customers, "a.kh_sn", criteria.partner);
  addKey(customers, criteria, {"a.kh_sn", "a.kh_jm", "a.kh_name", "a.kh_tele"});
  const auto sum = [](const std::string& name) { return "iif(b." + name + " is null,0,b." + name + ") as " + name; };
  return Sql("select a.kh_sn,a.kh_name,a.kt_name,a.z_name,a.kh_lxr,a.kh_tele,left(b.rq,10) as rq,"
             "iif(b.rq is null,null,datediff('d',left(b.rq,10),?)) as days," +
                 sum("sl") + "," + sum("je") + "," + sum("zje") + "," + sum("lr") + " from jxc_khxx a " +
                 (alsoNever ? "left outer" : "inner") + " join (",
             clock::today())
      .add(R"(select x.ghs_sn,max(x.gl_kdrq) as rq,sum(x.gl_sl) as sl,sum(x.gl_je) as je,sum(x.gl_zje) as zje,
      sum(x.gl_lr) as lr from jxc_goodslist x)")
      .where(bought)
      .add(" group by x.ghs_sn) b on a.kh_sn=b.ghs_sn")
      .where(customers)
      .add(" order by b.rq,a.kh_sn");
}

}  // namespace jxc::partner_books
