#include "accounts/balance_sheet.h"

#include "accounts/partner_overview.h"
#include "core/rights.h"
#include "core/text.h"
#include "stock/stock_enquiry.h"

#include <string>

namespace jxc {
namespace balance_sheet_detail {

const QString kTill = QStringLiteral("现金");

constexpr char kStock[] = "select sum(kc_sl*kc_cbj) as je from jxc_kcsp";

/// Of each partner `b` his last line `q` up to the end of a day, sought by the index: it does not matter how long the
/// ledger is.
Sql lastLines(const PartnerSide& side, const QString& day) {
  return Sql(compose("{} b inner join jxc_ysyfk q on q.id=(select top 1 e.id from jxc_ysyfk e where e.k_ghskh=b.{} "
                     "and e.k_type=? and e.k_rq<=? order by e.k_rq desc,e.id desc)",
                     {side.table, side.sn}),
             words(side.type), partner_books::endOf(day));
}

Sql owedAt(const PartnerSide& side, const QString& day) {
  return Sql("select sum(q.k_ljje) as je from ").add(lastLines(side, day));
}

Sql assetsAt(const QString& day) {
  return {"select sum(zc_je) as je from jxc_gdzc where zc_rq<=?", partner_books::endOf(day)};
}

Sql cashAt(const QString& account, const QString& day) {
  return {
      "select top 1 xj_ljje as je from jxc_xjyh where xj_kmmc=? and xj_chk='1' and xj_rq<=? "
      "order by xj_rq desc,id desc",
      account, partner_books::endOf(day)};
}

/// The one figure of a statement; 0 where there is none.
double figure(EnquiryReader& reader, const Sql& statement) {
  const RowSet rows = reader.select(statement);
  return rows.isEmpty() ? 0 : rows.number(0, 0);
}

class Sheet {
 public:
  void add(const char* code, const QString& label, double amount, const QString& account = {}, bool aside = false) {
    const QString place = QString::fromLatin1(code);
    const bool below = !account.isEmpty() && account != kTill;
    const QString number = below ? place + QStringLiteral("%1").arg(++accounts_, 3, 10, QLatin1Char('0')) : place;
    const QString key = place + u'|' + account;
    for (const QString& text : {key, number, label})
      rows_.addText(text.toStdString());
    rows_.addReal(amount);
    rows_.addText(code);
    rows_.addText(account.toStdString());
    rows_.addInteger(aside);
  }
  RowSet rows() const { return rows_; }

 private:
  RowSet rows_{{"rowkey", "g_sn", "ts_note", "ts_zje", "code", "account", "aside"}};
  int accounts_ = 0;
};

struct Asked {
  QString day;
  bool stockOfTheDay = false;
  bool price = hasRight(kSeesPrice), cost = hasRight(kSeesCost), worth = hasRight(kSeesStockCost);
};

RowSet sheetOf(const Asked& asked, EnquiryReader& reader) {
  const QString& day = asked.day;
  const double stock = asked.worth ? figure(reader, {kStock}) : 0;
  reader.progress(30);
  const double assets = figure(reader, assetsAt(day)), till = figure(reader, cashAt(kTill, day));
  std::vector<std::pair<QString, double>> banks;
  double inBanks = 0;
  for (const Row row : reader.select({"select yh_name from jxc_yhzh order by id"}))
    if (const QString name = row.text("yh_name"); name != kTill) {
      banks.emplace_back(name, figure(reader, cashAt(name, day)));
      inBanks += banks.back().second;
    }
  const double due = asked.price ? figure(reader, owedAt(customerSide, day)) : 0;
  reader.progress(60);
  const double owed = asked.cost ? figure(reader, owedAt(supplierSide, day)) : 0;
  const double all = stock + assets + till + inBanks + due;
  const bool whole = asked.price && asked.cost && asked.worth;

  Sheet sheet;
  if (whole) sheet.add("100", u"[资产合计]"_qs, all);
  if (asked.worth) sheet.add("101", u"  库存商品总值（当前库存）"_qs, stock);
  double then = 0;
  if (asked.worth && asked.stockOfTheDay) {
    then = figure(reader, stockValueAt(day));
    sheet.add("101d", u"    其中截至 %1 的库存总值（不计入合计）"_qs.arg(day), then, {}, true);
  }
  sheet.add("102", u"  固定资产总值"_qs, assets);
  sheet.add("103", u"  现金"_qs, till, kTill);
  sheet.add("104", u"  全部银行合计"_qs, inBanks);
  for (const auto& [name, balance] : banks)
    sheet.add("104", u"    "_qs + name, balance, name);
  if (asked.price) sheet.add("109", u"  应收款合计"_qs, due);
  if (asked.cost) {
    sheet.add("200", u"[负债合计]"_qs, owed);
    sheet.add("201", u"  应付款合计"_qs, owed);
  }
  if (whole) {
    sheet.add("300", u"[净资产]"_qs, all - owed);
    if (asked.stockOfTheDay)
      sheet.add("300d", u"  按截至 %1 的库存计算"_qs.arg(day), all - owed - stock + then, {}, true);
  }
  return sheet.rows();
}

Sql partnerBalances(const PartnerSide& side, const QString& day) {
  return Sql(compose("select b.id,q.k_rq as rq,b.{} as gl_djh,? as lx,b.{} as dnote,q.k_ljje as je from ",
                     {side.sn, side.name}),
             words(side.noun))
      .add(lastLines(side, day))
      .add(" where q.k_ljje<>0 order by je desc,gl_djh");
}

bool mayLook(const PartnerSide& side) {
  return hasRight(moneyRight(side.which));
}

}  // namespace balance_sheet_detail

Computation balanceSheet(const Criteria& criteria) {
  using namespace balance_sheet_detail;
  return [asked = Asked{.day = criteria.to, .stockOfTheDay = criteria.has(kStockOfTheDay)}](EnquiryReader& reader) {
    return sheetOf(asked, reader);
  };
}

Sql balanceLines(const Criteria& criteria) {
  using namespace balance_sheet_detail;
  const QString& code = criteria.kind;
  const QString until = partner_books::endOf(criteria.to);
  if (code == u"101" && hasRight(kSeesStockCost))
    return {
        "select a.id,'' as rq,a.g_sn as gl_djh,c.ck_name as lx,b.g_name as dnote,a.kc_sl*a.kc_cbj as je "
        "from (jxc_kcsp a left outer join jxc_goods b on a.g_sn=b.g_sn) left outer join jxc_ckxx c on "
        "a.ck_sn=c.ck_sn where a.kc_sl*a.kc_cbj<>0 order by je desc,gl_djh"};
  if (code == u"101d" && hasRight(kSeesStockCost)) return stockValuesAt(criteria.to);
  if (code == u"102")
    return {
        "select id,zc_rq as rq,zc_bh as gl_djh,zc_lx as lx,zc_mc as dnote,zc_je as je from jxc_gdzc where zc_rq<=? "
        "order by id desc",
        until};
  if (code == u"103" || code == u"104") {
    Filter filter;
    filter.add("xj_chk='1'").add("xj_rq<=?", until);
    if (criteria.account.isEmpty())
      filter.add("xj_kmmc<>?", kTill).add("xj_kmmc in (select yh_name from jxc_yhzh)");
    else
      filter.add("xj_kmmc=?", criteria.account);
    return Sql("select id,xj_rq as rq,gl_djh,xj_dlx as lx,xj_note as dnote,xj_je as je from jxc_xjyh")
        .where(filter)
        .add(" order by rq desc,id desc");
  }
  for (const PartnerSide* side : {&customerSide, &supplierSide}) {
    const bool asked = side->isCustomer() ? code == u"109" : code.startsWith(u'2');
    if (asked && mayLook(*side)) return partnerBalances(*side, criteria.to);
  }
  return {"select id,'' as rq,gl_djh,'' as lx,'' as dnote,0 as je from jxc_xjyh where id<0 order by id"};
}

Sql partnersOwing(const Criteria& criteria) {
  using namespace balance_sheet_detail;
  Sql all;
  for (const PartnerSide* side : {&customerSide, &supplierSide}) {
    Filter filter;
    filter.add(compose("({}=0 or {}<>0)", {side->forbidden, side->balance}));
    if (criteria.has(kOwingOnly)) filter.add(compose("{}<>0", {side->balance}));
    if (!mayLook(*side)) filter.add("id<0");
    addKey(filter, criteria, {side->sn, side->name, side->jm, side->contact, side->phone});
    const std::string amount = side->isCustomer() ? compose("{} as ys,0 as yf", {side->balance})
                                                  : compose("0 as ys,{} as yf", {side->balance});
    if (!all.isEmpty()) all.add(" union all ");
    const std::string type = "'" + std::string(side->type) + "'";
    all.add("select " + type + "+" + std::string(side->sn) + " as rowkey," + type + " as side,? as lx," +
                compose("{} as sn,{} as name,{} as lxr,{} as tele,",
                        {side->sn, side->name, side->contact, side->phone}) +
                amount + " from " + std::string(side->table),
            words(side->noun))
        .where(filter);
  }
  return all.add(" order by side desc,sn");
}

Sql owedLines(const Criteria& criteria) {
  const PartnerSide& side = criteria.group == u"kh" ? customerSide : supplierSide;
  Filter filter;
  filter.add("a.k_type=?", words(side.type)).add("a.k_ghskh=?", criteria.partner);
  addPeriod(filter, criteria, "a.k_rq");
  if (criteria.kind == u"1") filter.add("a.k_yfje-a.k_sfje<>0");
  if (criteria.kind == u"2") filter.add("a.k_yfje-a.k_sfje=0");
  if (!balance_sheet_detail::mayLook(side)) filter.add("a.id<0");
  return Sql("select a.id,a.gl_djh as djh,a.k_rq as rq,a.k_yfje as yfje,a.k_sfje as sfje,a.k_yfje-a.k_sfje as wfje,"
             "a.k_ljje as ljje,a.k_djtxt as zflx,a.k_note as dnote,a.a_name,c.u_name from jxc_ysyfk a left outer join "
             "jxc_user c on a.u_sn=c.u_sn")
      .where(filter)
      .add(" order by a.k_rq desc,a.id desc");
}

std::vector<ListItem> fillOpenOrSettled() {
  return {{u"全部单据"_qs, words(allKey)}, {u"仅欠款单据"_qs, u"1"_qs}, {u"不欠款的单据"_qs, u"2"_qs}};
}

}  // namespace jxc
