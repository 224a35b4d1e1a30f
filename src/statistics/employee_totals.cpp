#include "statistics/employee_totals.h"

#include "accounts/partner_ledger.h"
#include "stock/document_list.h"

namespace jxc {
namespace employee_totals_detail {

Filter received(const Criteria& criteria) {
  Filter filter;
  filter.add("x.k_type=?", partnerTypeText(PartnerType::Customer)).add("x.k_djlx='SK'").add("x.k_sfje<>0");
  addPeriod(filter, criteria, "x.k_rq");
  addChoice(filter, "x.k_ghskh", criteria.partner);
  addEmployee(filter, "x.u_sn", criteria.employee);
  addKey(filter, criteria, {"x.gl_djh", "x.k_note"});
  return filter;
}

}  // namespace employee_totals_detail

Sql receipts(const Criteria& criteria) {
  return Sql(R"(select x.*,c.kh_name,a.u_name from ((jxc_ysyfk x left outer join jxc_khxx c on x.k_ghskh=c.kh_sn)
      left outer join jxc_user a on x.u_sn=a.u_sn))")
      .where(employee_totals_detail::received(criteria))
      .add(" order by x.k_rq desc,x.id desc");
}

Sql receiptsByEmployee(const Criteria& criteria) {
  return Sql(R"(select iif(a.u_sn is null,'其他',a.u_sn) as u_sn,iif(a.u_sn is null,'其他',max(a.u_name)) as u_name,
      sum(b.bs) as bs,sum(b.sfje) as sfje from
      ((select x.u_sn,count(*) as bs,sum(x.k_sfje) as sfje from jxc_ysyfk x)")
      .where(employee_totals_detail::received(criteria))
      .add(" group by x.u_sn) b left outer join jxc_user a on b.u_sn=a.u_sn) group by a.u_sn order by 1");
}

Sql purchasesByEmployee(const Criteria& criteria, const Warehouses& warehouses) {
  constexpr const DocumentFamily* kPurchases[] = {&families::purchaseReceipt, &families::purchaseReturn};
  const DocumentListing withEmployee{.columns = [](const DocumentFamily&) { return std::string(",a.u_sn"); }};
  return Sql(R"(select iif(a.u_sn is null,'其他',a.u_sn) as u_sn,iif(a.u_sn is null,'其他',max(a.u_name)) as u_name,
      count(*) as djs,sum(z.yfje) as yfje,sum(z.sfje) as sfje,sum(z.yhje) as yhje,sum(z.hkje) as hkje,
      sum(z.wfje) as wfje from (()")
      .add(listedDocuments(kPurchases, criteria, warehouses, withEmployee))
      .add(") z left outer join jxc_user a on z.u_sn=a.u_sn) group by a.u_sn order by 1");
}

}  // namespace jxc
