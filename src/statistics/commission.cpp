#include "statistics/commission.h"

#include "accounts/partner_ledger.h"
#include "core/rights.h"
#include "sales/sale.h"
#include "statistics/trade_terms.h"
#include "stock/document_family.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

namespace jxc {
namespace commission_detail {

constexpr int kBySales = 0, kByProfit = 1;  // u_tcfs
constexpr double kLeast = 0.0000005;        // yuan; amounts are kept with six digits
constexpr double kPercent = 0.01;

// Each of these is what counts towards commissions, " from … where …", over the employee `y` and what he did, `x`.

/// Employees with such a commission. Of the rows they are asked for twice: in the list, so that those of others are
/// passed over before anything is looked up for them.
Filter employees(int way, const Criteria& criteria, std::string_view row, std::string_view column) {
  Filter filter;
  filter.add("y.u_tcfs=?", way).add("y.u_tc>0");
  addChoice(filter, "y.u_sn", criteria.employee);
  Filter all = filter;
  all.add(Sql(compose("{}.{} in (select y.{} from jxc_user y", {row, column, column})).where(filter).add(")"));
  return all.add(compose("{}.{}=y.{}", {row, column, column}));
}

/// Lines of the customers' ledger. A sale or return belongs to its document's warehouse, other receipts to none.
Sql takenIn(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter = employees(kBySales, criteria, "x", "u_sn");
  filter.add("x.k_type=?", partnerTypeText(PartnerType::Customer));
  filter.add("x.k_djlx in ('XS','XT','YS','SK')");
  addPeriod(filter, criteria, "x.k_rq");
  if (!warehouses.areAll()) {
    const auto where = [&](std::string_view column) {
      Filter own;
      warehouses.restrict(own, column);
      return own;
    };
    const auto in = [&](const DocumentFamily& family) {
      return Sql(compose("x.gl_djh in (select {} from {}", {family.number, family.head}))
          .where(where(family.warehouse))
          .add(")");
    };
    filter.add(Sql("(")
                   .add(in(families::sale))
                   .add(" or ")
                   .add(in(families::saleReturn))
                   .add(" or x.k_djlx in ('YS','SK') and exists (select id from jxc_ckxx")
                   .where(where("ck_sn"))
                   .add("))"));
  }
  return Sql(" from jxc_ysyfk x,jxc_user y").where(filter);
}

/// Lines of documents whose goods have a commission of their own.
Sql ofOwnCommission(const DocumentFamily& family, const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter = employees(kBySales, criteria, "v", "u_sn");
  filter.add(compose("x.{}=v.{}", {family.number, family.number})).add(compose("v.{}=1", {family.status}));
  filter.add("x.g_sn in (select g_sn from jxc_goods where g_tclb<>0)");
  if (!family.line.gift.empty())
    filter.add(compose("(x.{} is null or x.{}<>?)", {family.line.gift, family.line.gift}),
               QString::fromUtf16(sale::giftMark));
  addPeriod(filter, criteria, compose("v.{}", {family.date}));
  warehouses.restrict(filter, compose("v.{}", {family.warehouse}));
  return Sql(compose(" from {} x,{} v,jxc_user y", {family.lines, family.head})).where(filter);
}

/// Rows of the stock ledger that earn something; the ledger knows employees by name.
Sql profitable(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter = employees(kByProfit, criteria, "x", "u_name");
  filter.add("x.gl_flag in " + std::string(tradeFlags(PartnerType::Customer)));
  // Which lines earn beyond a threshold would tell what their goods cost.
  filter.add(hasRight(kSeesCost) ? "(y.u_zdlr=0 or x.gl_dj-x.gl_cbj>y.u_zdlr)" : "y.u_zdlr=0");
  filter.add("x.g_sn not in (select g_sn from jxc_goods where g_tclb<>0)");
  static_assert(std::size(sale::giftMark) == 4 + 1);
  filter.add("(x.g_name is null or right(x.g_name,4)<>?)", QString::fromUtf16(sale::giftMark));
  addPeriod(filter, criteria, "x.gl_kdrq");
  warehouses.restrict(filter, "x.ck_sn");
  return Sql(" from jxc_goodslist x,jxc_user y").where(filter);
}

constexpr const char* kBeyond = "(x.gl_dj*x.gl_dzl-x.gl_cbj-y.u_zdlr)*x.gl_sl";

std::string total(const DocumentFamily& family, const char* sign) {
  return sign + compose("x.{}", {family.line.columns->total});
}
/// What is taken out of the base is added to it again by a return, whose lines hold positive amounts.
struct OwnCommission {
  const DocumentFamily& family;
  const char* sign;
};
const OwnCommission kOwnCommissions[] = {{families::sale, "-1*"}, {families::saleReturn, ""}};

Sql totalsBySales(const Criteria& criteria, const Warehouses& warehouses) {
  Sql all(
      "select a.u_sn,a.u_name,a.u_tc,sum(b.yfje) as yfje,sum(b.sfje) as sfje from jxc_user a,"
      "(select y.u_sn,sum(x.k_yfje) as yfje,sum(x.k_sfje) as sfje");
  all.add(takenIn(criteria, warehouses)).add(" group by y.u_sn");
  for (const auto& [family, sign] : kOwnCommissions) {
    const std::string sum = "sum(" + total(family, sign) + ")";
    all.add(" union all select y.u_sn," + sum + " as yfje," + sum + " as sfje")
        .add(ofOwnCommission(family, criteria, warehouses))
        .add(" group by y.u_sn");
  }
  return all.add(") b where a.u_sn=b.u_sn group by a.u_sn,a.u_name,a.u_tc order by a.u_sn");
}

Sql totalsByProfit(const Criteria& criteria, const Warehouses& warehouses) {
  return Sql("select a.u_sn,a.u_name,a.u_tc,a.u_zdlr,b.lr,b.cglr from jxc_user a,(select y.u_sn,sum(x.gl_lr) as "
             "lr,sum(" +
             std::string(kBeyond) + ") as cglr")
      .add(profitable(criteria, warehouses))
      .add(" group by y.u_sn) b where a.u_sn=b.u_sn order by a.u_sn");
}

struct Earned {
  std::string number, name;
  const char16_t* flag = nullptr;
  double rate = 0, due = 0, received = 0, profit = 0, beyond = 0, threshold = 0;

  /// Yuan.
  double commission() const { return (flag == kEarnedByProfit ? beyond : received) * rate * kPercent; }
  QString kind() const {
    return flag == kEarnedByProfit  ? QStringLiteral("业务员按利润提成")
           : flag == kEarnedBySales ? QStringLiteral("业务员按销售额提成")
                                    : QStringLiteral("业务员按销售额提成欠款");
  }
};

RowSet rowsOf(const std::vector<Earned>& all) {
  RowSet rows({"g_sn", "hz_txt1", "hz_txt2", "hz_flag", "hz_kc", "hz_kczje", "hz_rksl", "hz_rkzje", "hz_cksl",
               "hz_ckzje", "hz_glkc", "hz_glkczje", "xstc", "lrtc", "rowkey"});
  for (const Earned& each : all) {
    const std::string flag = QString::fromUtf16(each.flag).toStdString();
    rows.addText(each.number);
    rows.addText(each.name);
    rows.addText(each.kind().toStdString());
    rows.addText(flag);
    const double commission = each.commission();
    const bool byProfit = each.flag == kEarnedByProfit;
    for (const double figure : {each.due, each.received, each.profit, each.beyond, 0.0, commission, each.threshold,
                                each.rate, byProfit ? 0 : commission, byProfit ? commission : 0})
      rows.addReal(figure);
    rows.addText(each.number + '-' + flag);
  }
  return rows;
}

}  // namespace commission_detail

Computation commissions(const Criteria& criteria, const Warehouses& warehouses) {
  namespace detail = commission_detail;
  using detail::Earned;
  return [bySales = detail::totalsBySales(criteria, warehouses),
          byProfit = detail::totalsByProfit(criteria, warehouses)](EnquiryReader& reader) {
    std::vector<Earned> all;
    for (const Row row : reader.select(bySales)) {
      const Earned earned{.number = row.text("u_sn").toStdString(),
                          .name = row.text("u_name").toStdString(),
                          .flag = kEarnedBySales,
                          .rate = row.number("u_tc"),
                          .due = row.number("yfje"),
                          .received = row.number("sfje")};
      Earned owed = earned;
      owed.flag = kNotYetEarned;
      owed.due = 0;
      owed.received = earned.received - earned.due;
      all.push_back(earned);
      if (std::abs(owed.commission()) > detail::kLeast) all.push_back(owed);
    }
    reader.progress(50);
    for (const Row row : reader.select(byProfit))
      all.push_back({.number = row.text("u_sn").toStdString(),
                     .name = row.text("u_name").toStdString(),
                     .flag = kEarnedByProfit,
                     .rate = row.number("u_tc"),
                     .profit = row.number("lr"),
                     .beyond = row.number("cglr"),
                     .threshold = row.number("u_zdlr")});
    std::ranges::stable_sort(all, {}, &Earned::number);
    return detail::rowsOf(all);
  };
}

Sql commissionLines(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace commission_detail;
  // Ids of four tables are kept apart.
  Sql all(R"(select b.*,c.kh_name as dwmc,b.wz & w.g_name as zy from ((select x.id*4 as id,y.u_sn,y.u_name,
      x.k_rq as rq,x.gl_djh as djh,x.k_ghskh as khsn,x.k_djtxt as wz,'' as gsn,0 as sl,x.k_yfje as yfje,x.k_sfje as sfje,0 as lr,0 as cglr,
      x.k_sfje*y.u_tc*0.01 as xstc,0 as lrtc)");
  all.add(takenIn(criteria, warehouses));
  int table = 1;
  for (const auto& [family, sign] : kOwnCommissions) {
    const std::string net = total(family, sign);
    all.add(" union all select x.id*4+" + std::to_string(table++) +
            compose(" as id,y.u_sn,y.u_name,v.{} as rq,v.{} as djh,v.{} as khsn,'单独提成的商品：' as wz,x.g_sn as gsn,"
                    "x.{} as sl,",
                    {family.date, family.number, family.partner, family.line.columns->quantity}) +
            net + " as yfje," + net + " as sfje,0 as lr,0 as cglr," + net + "*y.u_tc*0.01 as xstc,0 as lrtc")
        .add(ofOwnCommission(family, criteria, warehouses));
  }
  const std::string beyond = kBeyond;
  all.add(
         " union all select x.id*4+3 as id,y.u_sn,y.u_name,x.gl_kdrq as rq,x.gl_djh as djh,x.ghs_sn as khsn,"
         "x.g_name as wz,'' as gsn,x.gl_sl as sl,0 as yfje,0 as sfje,x.gl_lr as lr," +
         beyond + " as cglr,0 as xstc," + beyond + "*y.u_tc*0.01 as lrtc")
      .add(profitable(criteria, warehouses));
  return all.add(
      ") b left outer join jxc_khxx c on b.khsn=c.kh_sn) left outer join jxc_goods w on b.gsn=w.g_sn order by b.rq "
      "desc,b.id desc");
}

}  // namespace jxc
