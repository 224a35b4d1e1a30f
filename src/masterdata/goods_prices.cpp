#include "masterdata/goods_prices.h"

#include "core/log.h"
#include "core/refusal.h"
#include "core/statements.h"

namespace jxc {

const std::vector<PriceColumn>& bulkPriceTargets() {
  static const std::vector<PriceColumn> all = {
      {u"一级批发价", "g_sj1"}, {u"二级批发价", "g_sj2"}, {u"三级批发价", "g_sj3"}, {u"四级批发价", "g_sj4"},
      {u"五级批发价", "g_sj5"}, {u"零售价", "g_lsj"},     {u"预设售价", "g_sj"}};
  return all;
}

const std::vector<PriceColumn>& bulkPriceSources() {
  static const std::vector<PriceColumn> all = {{u"预设售价", "g_sj"},         {u"一级批发价", "g_sj1"},
                                               {u"二级批发价", "g_sj2"},      {u"三级批发价", "g_sj3"},
                                               {u"四级批发价", "g_sj4"},      {u"五级批发价", "g_sj5"},
                                               {u"零售价", "g_lsj"},          {u"预设进价", "g_jj", true},
                                               {u"上次进价", "g_scjj", true}, {u"成本均价", "g_pjjj", true}};
  return all;
}

std::int64_t countGoods(const BulkGoods& goods) {
  if (goods.ids) return static_cast<std::int64_t>(goods.ids->size());
  return goods.classNumber ? count(Sql("select id from jxc_goods where gc_sn=?", *goods.classNumber))
                           : count(Sql("select id from jxc_goods"));
}

std::int64_t setBulkPrice(const BulkPrice& price, const BulkGoods& goods) {
  Sql value = price.source ? Sql(compose("{}*?", {price.source->column}), price.factor) : Sql("?", price.factor);
  if (price.step > 0) value = Sql("round((").add(value).add(")/?+0.000000001,0)*?", price.step, price.step);
  const Sql update = Sql(compose("update jxc_goods set {}=", {price.target.column})).add(value);
  Transaction transaction(accountDb());
  std::int64_t changed = 0;
  if (goods.ids)
    for (const std::int64_t id : *goods.ids)
      changed += execSql(Sql(update).add(" where id=?", id));
  else
    changed = execSql(goods.classNumber ? Sql(update).add(" where gc_sn=?", *goods.classNumber) : update);
  if (changed > 0)
    writeLog(
        QStringLiteral("批量修改%1，共%2种商品：%3%4")
            .arg(QString::fromUtf16(price.target.name))
            .arg(changed)
            .arg(price.source ? QString::fromUtf16(price.source->name) + u'×' : QString(), numberText(price.factor)));
  transaction.commit();
  return changed;
}

PosCommissions readPosCommissions(const QString& goods) {
  const RowSet rows =
      openSelect("select g_ygtc,g_jgtc,g_xsytc,g_ygtc2,g_jgtc2,g_xsytc2 from jxc_goods where g_sn=?", goods);
  if (rows.isEmpty()) return {};
  const Row row = rows.front();
  return {.optometrist = {row.number("g_ygtc"), row.flag("g_ygtc2")},
          .workshop = {row.number("g_jgtc"), row.flag("g_jgtc2")},
          .salesman = {row.number("g_xsytc"), row.flag("g_xsytc2")}};
}

bool savePosCommissions(const QString& goods, const PosCommissions& commissions, Prompt& prompt) {
  const auto& [optometrist, workshop, salesman] = commissions;
  const QString negative = u"提成不能小于0！"_qs;
  if (refused({{optometrist.value < 0, negative, Subject::OptometristsShare},
               {workshop.value < 0, negative, Subject::WorkshopsShare},
               {salesman.value < 0, negative, Subject::SalesmansShare}},
              prompt))
    return false;
  execSql("update jxc_goods set g_ygtc=?,g_jgtc=?,g_xsytc=?,g_ygtc2=?,g_jgtc2=?,g_xsytc2=? where g_sn=?",
          optometrist.value, workshop.value, salesman.value, optometrist.yuan, workshop.yuan, salesman.yuan, goods);
  return true;
}

}  // namespace jxc
