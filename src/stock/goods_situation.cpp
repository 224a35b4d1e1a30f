#include "stock/goods_situation.h"

#include "core/rounding.h"
#include "stock/document_list.h"
#include "stock/goods_words.h"
#include "stock/partial_movement.h"

namespace jxc {
namespace goods_situation_detail {

/// Pieces of goods in warehouses by where they come from: a row of each source holds its own figure and zeros.
Sql pieces(const Criteria& criteria, const Warehouses& warehouses) {
  Filter balance;
  balance.add("x.g_sn<>'00000000'");
  addChoice(balance, "x.g_sn", criteria.goods);
  warehouses.restrict(balance, "x.ck_sn");
  Sql all = Sql("select x.g_sn,x.ck_sn,x.kc_sl as kcsl,x.kc_zsl as kczsl,x.kc_xssl as xssl,x.kc_cbj as cbj,0 as ztsl,"
                "0 as dcsl,0 as jcsl from jxc_kcsp x")
                .where(balance);
  struct Open {
    const PartialMovement& movement;
    const char *before, *behind;  // the other figures
  };
  const Open open[] = {{partial::putaway, "", ",0,0"}, {partial::issue, "0,", ",0"}, {partial::lending, "0,0,", ""}};
  for (const auto& [movement, before, behind] : open)
    all.add(std::string(" union all select b.g_sn,c.ck_sn,0,0,0,0,") + before + partial::openPieces(movement, "b") +
            behind + " from ")
        .add(partial::openOf(movement, criteria, warehouses));
  return all;
}

constexpr const char* kSums =
    "sum(kcsl) as kcsl,sum(kczsl) as kczsl,sum(xssl) as xssl,sum(ztsl) as ztsl,sum(dcsl) as "
    "dcsl,sum(jcsl) as jcsl,sum(kcsl)-sum(dcsl) as kysl,";

std::string valueOf(const std::string& amount) {
  return roundedExpression(amount, moneyDigits()) + " as kczje";
}

}  // namespace goods_situation_detail

Sql goodsSituation(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace goods_situation_detail;
  Filter filter;
  filter.add("a.g_sn<>'00000000'");
  addGoodsKey(filter, criteria, {"a.g_sn", "a.g_jm", "a.g_name", "a.g_sccs", "a.gg_name", "a.g_sptm", "a.color_name"});
  return Sql("select a.id,a.g_sn,a.g_name,a.g_qgd,a.g_sgd,a.gg_name,a.color_name,a.dw_name,a.g_sptm,a.g_scjj,a.g_sj,"
             "a.g_zdkc,iif(a.g_jy=0,'','禁用') as zt,f.kcsl,f.kczsl,f.ztsl,f.dcsl,f.jcsl,f.kysl," +
             valueOf("f.je") + " from jxc_goods a inner join (select g_sn," + kSums + "sum(kcsl*cbj) as je from (")
      .add(pieces(criteria, warehouses))
      .add(") p group by g_sn) f on a.g_sn=f.g_sn")
      .where(filter)
      .add(" order by a.g_sn");
}

Sql situationByWarehouse(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace goods_situation_detail;
  return Sql("select f.ck_sn,w.ck_name,f.kcsl,f.kczsl,f.xssl,f.ztsl,f.dcsl,f.jcsl,f.kysl," +
             roundedExpression("f.cbj", moneyDigits()) + " as cbjj," + valueOf("f.cbj*f.kcsl") +
             " from (select ck_sn," + kSums + "max(cbj) as cbj from (")
      .add(pieces(criteria, warehouses))
      .add(") p group by ck_sn) f left outer join jxc_ckxx w on f.ck_sn=w.ck_sn order by f.ck_sn");
}

Sql lastPrices(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add("x.gl_flag in ('cj','ct','xs','xt')");
  addChoice(filter, "x.g_sn", criteria.goods);
  warehouses.restrict(filter, "x.ck_sn");
  const auto kind = [](const DocumentFamily& family) { return "'" + kindWord(family).toStdString() + "'"; };
  return Sql("select top 100 x.id,x.gl_kdrq,iif(x.gl_flag='cj'," + kind(families::purchaseReceipt) +
             ",iif(x.gl_flag='ct'," + kind(families::purchaseReturn) + ",iif(x.gl_flag='xs'," + kind(families::sale) +
             "," + kind(families::saleReturn) +
             "))) as dnote,x.gl_djh,x.ghs_name,x.ck_name,x.gl_sl,iif(x.gl_flag in ('cj','ct'),x.gl_dj,null) as jj,"
             "iif(x.gl_flag in ('xs','xt'),x.gl_dj,null) as sj from jxc_goodslist x")
      .where(filter)
      .add(" order by x.gl_kdrq desc,x.id desc");
}

Sql waitingWithGoods(const Criteria& criteria, const Warehouses& warehouses) {
  const Criteria waiting{.goods = criteria.goods, .boxes = kWaitingOnly};
  return listedLines(EveryDocument::families, waiting, warehouses);
}

}  // namespace jxc
