#include "accounts/partner_overview.h"

#include "accounts/partner_documents.h"
#include "accounts/partner_ledger.h"
#include "core/fillers.h"
#include "core/statements.h"
#include "core/text.h"

namespace jxc::partner_books {
namespace partner_overview_detail {

bool isAll(const QString& employee) {
  return employee.isEmpty() || employee == QStringView(allKey);
}

QString endOf(const OverviewFilter& filter) {
  return filter.to + u" 23:59:59"_qs;
}

/// Ids of each partner's last line before (or up to) a moment, in brackets.
void addLastLines(Sql& sql, const QString& type, const char* comparison, const QString& date) {
  sql.add(R"((select max(x.id) as rowid from jxc_ysyfk x,
      (select max(k_rq) as rq,k_ghskh from jxc_ysyfk where k_type=? and k_rq)",
          type)
      .add(comparison)
      .add(R"(? group by k_ghskh) y
      where x.k_type=? and x.k_ghskh=y.k_ghskh and x.k_rq=y.rq group by x.k_ghskh))",
           date, type);
}

/// Conditions on the period's lines, with the ledger as `a`.
void addPeriod(Sql& sql, const QString& type, const OverviewFilter& filter) {
  sql.add("a.k_type=? and a.k_rq>=? and a.k_rq<=?", type, filter.from, endOf(filter));
  if (!isAll(filter.employee)) sql.add(" and a.u_sn=?", filter.employee);
  if (!filter.partner.isEmpty()) sql.add(" and a.k_ghskh=?", filter.partner);
  if (const QString key = filter.key.trimmed(); !key.isEmpty()) {
    const QString like = u"%"_qs + sanitizeKeyword(key) + u"%"_qs;
    sql.add(" and (a.gl_djh like ? or a.k_note like ?)", like, like);
  }
}

void addOpeningRows(Sql& sql, const PartnerSide& side, const OverviewFilter& filter) {
  const QString type = words(side.type);
  const QString opening = words(side.openingWord).left(4);  // 期初应收, 期初应付
  sql.add(compose(R"(select a.id,a.k_ghskh,b.{} as name,? as k_rq,'' as gl_djh,? as k_fkfs,? as k_djlx,? as k_djtxt,
      a.k_ljje as k_qcje,0 as k_yfje,0 as k_sfje,a.k_ljje,'' as gl_djh2,'' as k_note,'' as u_name,'' as a_name,
      1 as dsort
    from jxc_ysyfk a,{} b where a.k_ghskh=b.{} and b.{}=0 and a.id in )",
                  {side.name, side.table, side.sn, side.forbidden}),
          filter.from, opening, opening, opening);
  addLastLines(sql, type, "<", filter.from);
  if (!filter.partner.isEmpty()) sql.add(" and a.k_ghskh=?", filter.partner);
  if (filter.hideZero) sql.add(" and a.k_ljje<>0");
}

void addPeriodRows(Sql& sql, const PartnerSide& side, const OverviewFilter& filter) {
  const QString type = words(side.type);
  sql.add(compose(R"(select a.id,a.k_ghskh,b.{} as name,a.k_rq,a.gl_djh,a.k_fkfs,a.k_djlx,a.k_djtxt,
      a.k_qcje,a.k_yfje,a.k_sfje,a.k_ljje,a.gl_djh2,a.k_note,c.u_name,a.a_name,2 as dsort
    from (jxc_ysyfk a inner join {} b on a.k_ghskh=b.{}) left outer join jxc_user c on a.u_sn=c.u_sn
    where b.{}=0 and )",
                  {side.name, side.table, side.sn, side.forbidden}));
  addPeriod(sql, type, filter);
  if (!filter.hideZero) return;
  sql.add(" and a.k_ghskh in (select k_ghskh from jxc_ysyfk where k_ljje<>0 and id in ");
  addLastLines(sql, type, "<=", endOf(filter));
  sql.add(")");
}

/// " left outer join (balances before the period) n on a.kh_sn=n.k_ghskh where …", with the partners as `a`.
void addOpeningJoin(Sql& sql, const PartnerSide& side, const OverviewFilter& filter) {
  sql.add(" left outer join (select k_ghskh,k_ljje as qcje from jxc_ysyfk where id in ");
  addLastLines(sql, words(side.type), "<", filter.from);
  sql.add(compose(") n on a.{}=n.k_ghskh where a.{}=0", {side.sn, side.forbidden}));
}

void addMovedPartners(Sql& sql, const PartnerSide& side, const OverviewFilter& filter) {
  const std::string closing = "iif(n.qcje is null,m.yfje-m.sfje,m.yfje+n.qcje-m.sfje)";
  sql.add(compose("select a.{} as k_ghskh,a.{} as name,iif(n.qcje is null,0,n.qcje) as qcje,m.yfje,m.sfje,",
                  {side.sn, side.name}))
      .add(closing)
      .add(compose(R"( as wfje from ({} a inner join
      (select a.k_ghskh,sum(a.k_yfje) as yfje,sum(a.k_sfje) as sfje from jxc_ysyfk a where )",
                   {side.table}));
  addPeriod(sql, words(side.type), filter);
  sql.add(compose(" group by a.k_ghskh) m on a.{}=m.k_ghskh)", {side.sn}));
  addOpeningJoin(sql, side, filter);
  if (filter.hideZero) sql.add(" and ").add(closing).add("<>0");
}

void addIdlePartners(Sql& sql, const PartnerSide& side, const OverviewFilter& filter) {
  const std::string carried = "iif(n.qcje is null,0,n.qcje)";
  sql.add(compose(" union all select a.{} as k_ghskh,a.{} as name,", {side.sn, side.name}))
      .add(carried)
      .add(" as qcje,0 as yfje,0 as sfje,")
      .add(carried)
      .add(compose(" as wfje from {} a", {side.table}));
  addOpeningJoin(sql, side, filter);
  sql.add(compose(" and a.{} not in (select k_ghskh from jxc_ysyfk where k_type=? and k_rq>=? and k_rq<=?)", {side.sn}),
          words(side.type), filter.from, endOf(filter));
  if (!filter.partner.isEmpty()) sql.add(compose(" and a.{}=?", {side.sn}), filter.partner);
  if (filter.hideZero) sql.add(" and ").add(carried).add("<>0");
}

}  // namespace partner_overview_detail

Sql overviewDetail(const PartnerSide& side, const OverviewFilter& filter) {
  namespace detail = partner_overview_detail;
  Sql sql;
  if (detail::isAll(filter.employee)) {
    detail::addOpeningRows(sql, side, filter);
    sql.add(" union all ");
  }
  detail::addPeriodRows(sql, side, filter);
  sql.add(" order by k_ghskh,k_rq,dsort,id");
  return sql;
}

Sql overviewSummary(const PartnerSide& side, const OverviewFilter& filter) {
  namespace detail = partner_overview_detail;
  Sql sql;
  detail::addMovedPartners(sql, side, filter);
  if (filter.allPartners && detail::isAll(filter.employee)) detail::addIdlePartners(sql, side, filter);
  sql.add(" order by k_ghskh");
  return sql;
}

Sql documentGoods(const QString& number) {
  return {"select * from jxc_goodslist where gl_djh=? order by id", number};
}

bool recomputePartners(const PartnerSide& side, const QString& partner, const QString& from, Prompt& prompt) {
  // The words are those of the supplier side on both.
  if (!prompt.ask(QStringLiteral("重新计算可能会修改期末应付金额，\r\n\r\n并且不可恢复。现在是否重新计算？")))
    return false;
  {
    Transaction transaction(accountDb());
    Filter filter;
    if (!partner.isEmpty()) filter.add(compose("{}=?", {side.sn}), partner);
    const RowSet partners =
        openSelect(Sql(compose("select {} as sn from {}", {side.sn, side.table})).where(filter).add(" order by id"));
    for (const Row row : partners)
      recomputeYsyfk(row.text("sn"), typeOf(side), from);
    transaction.commit();
  }
  prompt.notice(QStringLiteral("重新计算完成！"));
  return true;
}

}  // namespace jxc::partner_books
