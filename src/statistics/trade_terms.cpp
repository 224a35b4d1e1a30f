#include "statistics/trade_terms.h"

#include "stock/document_list.h"

namespace jxc {

std::string tradeKind(std::string_view flag) {
  std::string kind = "''";
  for (const DocumentFamily* family :
       {&families::saleReturn, &families::sale, &families::purchaseReturn, &families::purchaseReceipt})
    kind = compose("iif({}='", {flag}) + std::string(family->flag) + "','" + kindWord(*family).toStdString() + "'," +
           kind + ")";
  return kind;
}

std::string percentOf(std::string_view part, std::string_view whole) {
  const std::string of(whole);
  return "iif(" + of + "<>0,round(" + std::string(part) + "*100/" + of + ",2),0)";
}

void addGoods(Filter& filter, const Criteria& criteria, std::initializer_list<std::string_view> columns) {
  Filter goods;
  addClass(goods, criteria, "gc_sn");
  addKey(goods, criteria, columns);
  if (!goods.isEmpty()) filter.add(Sql("x.g_sn in (select g_sn from jxc_goods").where(goods).add(")"));
}

}  // namespace jxc
