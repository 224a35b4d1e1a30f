#include "sales/loan_enquiry.h"

#include "core/clock.h"
#include "core/text.h"
#include "stock/loans.h"
#include "stock/partial_movement.h"

namespace jxc::loan_enquiry {
namespace loan_enquiry_detail {

/// Lines `b` with heads `a`, goods `g`, and the names of whom they tell of; who is gone leaves the line where it is.
constexpr char kTables[] =
    "((((jxc_khjh a inner join jxc_khjhsp b on a.gl_djh=b.gl_djh) left join jxc_goods g on b.g_sn=g.g_sn) left join "
    "jxc_khxx k on a.kh_sn=k.kh_sn) left join jxc_ckxx d on a.ck_sn=d.ck_sn) left join jxc_user e on a.u_sn=e.u_sn";
constexpr char kNames[] =
    "b.id as lid,a.gl_djh & '-' & b.id as rowkey,a.gl_djh,a.gl_djh as djh,a.jh_rq,a.jh_rq as rq,"
    "iif(k.kh_name is null,a.kh_sn,k.kh_name) as kh_name,d.ck_name,e.u_name,b.g_sn,g.g_name,g.gg_name,g.color_name,"
    "g.dw_name,b.jh_zj,b.jh_kmmc,b.jh_dj,b.jh_zje,a.jh_note as dnote,";

Filter conditions(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add("a.jh_status=1");
  addChoice(filter, "a.gl_djh", criteria.document);
  addChoice(filter, "a.kh_sn", criteria.partner);
  addChoice(filter, "b.jh_kmmc", criteria.account);
  addEmployee(filter, "a.u_sn", criteria.employee);
  addClass(filter, criteria, "g.gc_sn");
  addKey(filter, {.key = criteria.group}, {"g.g_sn", "g.g_name", "g.g_jm", "g.g_sptm"});
  addKey(filter, criteria,
         {"a.gl_djh", "a.jh_note", "b.g_sn", "g.g_name", "g.g_jm", "k.kh_sn", "k.kh_name", "k.kh_jm"});
  warehouses.restrict(filter, "a.ck_sn");
  return filter;
}

std::string sumOf(const char* column, const char* as) {
  return compose(",(select sum(y.{}) from jxc_khjhsp y where y.gl_djh=a.gl_djh) as {}", {column, as});
}
std::string moneyOf(const DocumentFamily& family) {
  // What a return had to go by is no deposit of its own.
  const bool isLoan = &family == &families::loan;
  return (isLoan ? sumOf("jh_yj", "yj") : std::string(",null as yj")) + sumOf("jh_zzj", "zzj") +
         sumOf("jh_thyj", "thyj");
}

}  // namespace loan_enquiry_detail

Sql Documents::documents(const Criteria& criteria, const Warehouses& warehouses) {
  return listedDocuments(families, criteria, warehouses, {.columns = loan_enquiry_detail::moneyOf});
}

Sql lines(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace loan_enquiry_detail;
  Filter filter = conditions(criteria, warehouses);
  const bool byAudit = criteria.order == QStringView(kByAudit);
  const std::string_view day = byAudit ? "a.jh_chkrq" : "a.jh_rq";
  if (!isDocumentNumber(criteria.key.trimmed().toUpper())) addPeriod(filter, criteria, day);
  if (!criteria.kind.isEmpty()) filter.add("a.gl_djh like ?", criteria.kind + u'%');
  const std::string down = criteria.descending ? " desc" : "";
  return Sql("select " + std::string(kNames) +
             "iif(a.jh_flag='jh',b.jh_yj,null) as jh_yj,1 as status,iif(a.jh_flag='jh','客户借货','客户还货') as "
             "gtype,iif(a.jh_flag='jh',b.jh_sl,"
             "iif(b.jh_flag='销售',b.jh_xssl,b.jh_hhsl)) as jh_sl,iif(a.jh_flag='jh',b.jh_hhsl,null) as jh_hhsl,"
             "iif(a.jh_flag='jh',b.jh_xssl,null) as jh_xssl,iif(a.jh_flag='jh'," +
             partial::openPieces(partial::lending, "b") +
             ",null) as opensl,b.jh_ts,b.jh_zzj,b.jh_thyj,b.gl_djh2,b.jh_flag as dflag from " + kTables)
      .where(filter)
      .add(compose(" order by {}", {day}) + down + ",a.gl_djh" + down + ",b.id");
}

Sql open(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace loan_enquiry_detail;
  Filter filter = conditions(criteria, warehouses);
  filter.add("a.jh_flag='jh'");
  return Sql("select x.*,iif(x.days<1,1,x.days) as jcts,x.jh_zj*iif(x.days<1,1,x.days)*x.opensl as "
             "ysje,iif(x.leftyj>0,x.leftyj,0) as heldyj from (select " +
                 std::string(kNames) + "b.jh_yj,b.jh_sl,b.jh_hhsl,b.jh_xssl,b.jh_yj2," +
                 partial::openPieces(partial::lending, "b") + " as opensl," + loans::depositLeft("b") +
                 " as leftyj,datediff('d',left(a.jh_rq,10),?)+1 as days from " + kTables,
             clock::today())
      .where(filter)
      .add(") x where x.opensl>0 or x.leftyj>0 order by x.jh_rq,x.gl_djh,x.lid");
}

Sql deposits(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace loan_enquiry_detail;
  Filter filter = conditions(criteria, warehouses);
  filter.add("a.jh_flag='jh'");
  return Sql("select x.jh_kmmc,count(*) as num,sum(x.leftyj) as heldyj,sum(iif(x.opensl>0,0,x.leftyj)) as hqyj from "
             "(select b.jh_kmmc," +
             partial::openPieces(partial::lending, "b") + " as opensl," + loans::depositLeft("b") + " as leftyj from " +
             kTables)
      .where(filter)
      .add(") x where x.leftyj>0 group by x.jh_kmmc order by x.jh_kmmc");
}

}  // namespace jxc::loan_enquiry
