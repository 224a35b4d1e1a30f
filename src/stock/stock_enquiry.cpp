#include "stock/stock_enquiry.h"

#include "core/fillers.h"
#include "core/rounding.h"
#include "core/text.h"

#include <array>
#include <stdexcept>

namespace jxc {
namespace stock_enquiry_detail {

std::string rounded(const std::string& expression, int digits) {
  return "round(" + expression + "+0.000000001," + std::to_string(digits) + ")";
}

/// Only these six become part of the statement; the quantity is bound.
std::string_view comparisonSign(const QString& typed) {
  static constexpr std::array<std::string_view, 6> signs{"=", ">=", "<=", "<>", ">", "<"};
  for (const std::string_view sign : signs) {
    if (typed == QLatin1String(sign.data(), qsizetype(sign.size()))) return sign;
  }
  throw std::invalid_argument("unknown comparison of stock");
}

bool isAll(const QString& warehouse) {
  return warehouse.isEmpty() || warehouse == QStringView(allKey);
}

/// Stock by goods, of one warehouse or summed over those that the operator may see.
Sql balances(const QString& warehouse) {
  Filter filter;
  if (!isAll(warehouse)) {
    filter.add("ck_sn=?", warehouse);
    return Sql("select g_sn,kc_sl as kcsl,kc_zsl as kczsl,kc_xssl as xssl," + rounded("kc_cbj", moneyDigits()) +
               " as ckcb,0 as zje from jxc_kcsp")
        .where(filter);
  }
  filter.add("x.ck_sn=y.ck_sn").add("g_sn<>'00000000'");
  addWarehouseBinding(filter, "y.ck_asn");
  return Sql(R"(select g_sn,sum(kc_sl) as kcsl,sum(kc_zsl) as kczsl,sum(kc_xssl) as xssl,0 as ckcb,
      sum(kc_zsl*kc_cbj) as zje from jxc_kcsp x,jxc_ckxx y)")
      .where(filter)
      .add(" group by g_sn");
}

void addKey(Filter& filter, const QString& key) {
  if (key.isEmpty()) return;
  const QString like = QLatin1Char('%') + sanitizeKeyword(key).toUpper() + QLatin1Char('%');
  filter.add(R"((a.g_sn like ? or a.g_jm like ? or a.g_name like ? or a.g_sccs like ? or a.gg_name like ?
      or a.g_sptm like ? or a.color_name like ?))",
             like, like, like, like, like, like, like);
}

Filter conditions(const StockFilter& wanted) {
  Filter filter;
  filter.add("a.g_sn=b.g_sn").add("a.g_sn<>'00000000'").add("a.gc_sn=c.gc_sn");
  if (!wanted.classNumber.isEmpty()) filter.add("a.gc_sn like ?", wanted.classNumber + QLatin1Char('%'));
  addKey(filter, wanted.key);
  if (wanted.hideZero) filter.add("b.kcsl<>0");
  if (!wanted.withDisabled) filter.add("a.g_jy=0");
  if (!wanted.supplier.isEmpty()) filter.add("a.ghs_sn=?", wanted.supplier);
  if (wanted.comparison) {
    filter.add("b.kcsl" + std::string(comparisonSign(wanted.comparison->sign)) + "?", wanted.comparison->quantity);
  }
  return filter;
}

}  // namespace stock_enquiry_detail

Sql currentStockStatement(const StockFilter& wanted) {
  using namespace stock_enquiry_detail;
  // Over all warehouses the cost is weighted by book stock; goods without any keep the catalogue's average.
  const std::string cost = isAll(wanted.warehouse)
                               ? "iif(b.kczsl<>0,abs(" + rounded("b.zje/b.kczsl", moneyDigits()) + "),a.g_pjjj)"
                               : "b.ckcb";
  return Sql("select a.*,c.gc_name,b.kcsl,b.kczsl,b.xssl," + cost + " as cbjj," +
             rounded("b.kcsl/a.g_zhxs", quantityDigits()) + " as fzkc," + rounded("cbjj*b.kcsl", moneyDigits()) +
             " as kczje,a.g_sj*b.kcsl as xszje from jxc_goods a,jxc_goodsclass c,(")
      .add(balances(wanted.warehouse))
      .add(") b")
      .where(conditions(wanted))
      .add(" order by a.g_sn");
}

}  // namespace jxc
