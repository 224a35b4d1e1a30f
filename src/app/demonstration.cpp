#include "app/demonstration.h"

#include "core/clock.h"
#include "core/data_module.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "maintenance/demo_shop.h"
#include "stock/document.h"
#include "stock/document_family.h"

#include <string>

namespace jxc {
namespace demonstration_detail {

constexpr int kManyGoods = 20000;

/// Every column of a table but its id, as a list; one of them written otherwise.
std::string columnsOf(std::string_view table, std::string_view column = {}, const std::string& instead = {}) {
  std::string list;
  for (const std::string& each : openSelect(Sql("select top 1 * from " + std::string(table))).columns())
    if (each != "id") list += (list.empty() ? "" : ",") + (each == column ? instead : each);
  return list;
}

void lengthen(std::string_view table, std::string_view column, const QString& words, const std::string& only = {}) {
  execSql(
      Sql(compose("update {} set {}={}", {table, column, column})).add("+?", words).add(" where id mod 2=0" + only));
}

/// Copies of the catalogue under other numbers until there are so many.
void fillCatalogue() {
  const auto first = static_cast<int>(lookupNumber("select count(*) from jxc_goods"));
  const auto last = lookupValue("select max(id) from jxc_goods").toLongLong();
  const std::string all = columnsOf("jxc_goods");
  for (int series = 1; first * (series + 1) <= kManyGoods + first; ++series) {
    const std::string copied = columnsOf("jxc_goods", "g_sn", "'" + std::to_string(10 + series) + "'+g_sn");
    execSql(Sql("insert into jxc_goods (" + all + ") select " + copied + " from jxc_goods")
                .add(" where id<=?", static_cast<double>(last)));
  }
}

/// The longest document of the kind once more, as one that the operator has not saved yet.
void beginDraft(const DocumentFamily& family) {
  const std::string lines(family.lines), number(family.number);
  const QString longest = lookupValue(
      Sql("select top 1 " + number + " from " + lines + " group by " + number + " order by count(*) desc," + number));
  if (longest.isEmpty()) return;
  const QString fresh = newDocumentNumber(family, clock::today());
  const std::string all = columnsOf(family.lines), copied = columnsOf(family.lines, number, "?");
  execSql(Sql("insert into " + lines + " (" + all + ")")
              .add(" select " + copied + " from " + lines, fresh)
              .add(" where " + number + "=?", longest));
  execSql(Sql("update " + lines).add(" set a_name=?", session().a_name).add(" where " + number + "=?", fresh));
}

void makeLarge() {
  fillCatalogue();
  const QString words = u"进口超薄非球面防蓝光双面复合膜变色偏光渐进多焦点（带防伪标识）"_qs;
  // The powers stand behind the name of the product, however long that is.
  execSql(Sql("update jxc_goods set g_name=g_qc")
              .add("+?", words)
              .add("+mid(g_name,len(g_qc)+1) where id mod 2=0 and g_isjp<>0"));
  lengthen("jxc_goods", "g_qc", words, " and g_isjp<>0");
  lengthen("jxc_goods", "g_name", words, " and g_isjp=0");
  lengthen("jxc_goods", "gg_name", u" 加宽加厚 52□18-145"_qs);
  lengthen("jxc_goods", "color_name", u"渐变玳瑁色"_qs);
  lengthen("jxc_khxx", "kh_name", u"（浙江省杭州市上城区中河路第一分店）"_qs);
  lengthen("jxc_ghsxx", "ghs_name", u"（华东区总经销，江苏省丹阳市眼镜城）"_qs);
  lengthen("jxc_ckxx", "ck_name", u"（二楼左侧贵重商品专柜）"_qs);
  for (const DocumentFamily& family : documentFamilies())
    beginDraft(family);
}

}  // namespace demonstration_detail

void openDemonstration(Demonstration size) {
  dataModule().installAccountDb(openSqlite(QStringLiteral(":memory:")));
  DemoPlan plan;
  plan.months = 2;
  plan.goods = 320;
  plan.documentsADay = 16;
  plan.lastDay = QDate(2021, 5, 3);
  buildDemoShop(plan);
  if (size == Demonstration::Large) demonstration_detail::makeLarge();
  // In the middle of the last day, as if it were today.
  clock::setFixed(QDateTime(plan.lastDay, QTime(14, 30)));
}

}  // namespace jxc
