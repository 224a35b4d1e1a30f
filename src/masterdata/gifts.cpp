#include "masterdata/gifts.h"

#include "core/deletion.h"
#include "core/period_lock.h"
#include "core/pinyin.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/document_rules.h"

namespace jxc::gifts {
namespace gifts_detail {

constexpr char kUsed[] = "select zp_sn from jxc_zpjh where zp_sn=?";

/// Goods of the catalogue that are gifts, by whether they are in use.
Sql goods(const Criteria& criteria, std::string_view inUse) {
  Filter filter;
  filter.add("g_jy=0").add("g_sn<>'00000000'").add("g_iszp<>0").add(inUse);
  addKey(filter, criteria, {"g_sn", "g_name", "g_jm", "g_sptm"});
  return Sql("select id,g_sn,g_name,gg_name,color_name,dw_name,g_kc,g_sj,g_zpjf from jxc_goods")
      .where(filter)
      .add(" order by g_sn");
}

/// One of the sources of movements; `select` ends in its joins.
void addSource(Sql& all, const Criteria& criteria, std::string select, std::string_view item, std::string_view date) {
  Filter filter;
  addChoice(filter, item, criteria.kind);
  addPeriod(filter, criteria, date);
  all.add(select).andWhere(filter);
}

bool moved(const QString& number) {
  return exists(gifts_detail::kUsed, number) || exists("select top 1 id from jxc_dhzp where g_sn=?", number) ||
         exists("select top 1 id from jxc_zszp where zp_sn=?", number);
}

}  // namespace gifts_detail

Sql goodsInUse(const Criteria& criteria) {
  return gifts_detail::goods(criteria, "g_sy<>0");
}

Sql goodsNotInUse(const Criteria& criteria) {
  return gifts_detail::goods(criteria, "g_sy=0");
}

bool use(std::int64_t id, double points, Prompt& prompt) {
  if (refused({{points < 0, u"积分不能为负数！"_qs, Subject::Points}}, prompt) ||
      isTooMany(points, prompt, Subject::Points))
    return false;
  updateRow("jxc_goods", id, {{"g_zpjf", points}, {"g_sy", 1}});
  return true;
}

void stopUsing(std::int64_t id) {
  updateRow("jxc_goods", id, {{"g_sy", 0}});
}

Sql redemptions(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  addPeriod(filter, criteria, "b.dh_dhrq");
  addKey(filter, criteria, {"a.gl_djh", "c.hy_bh", "c.hy_name", "a.g_sn", "d.g_name", "e.zp_name"});
  warehouses.restrict(filter, "b.ck_sn");
  return Sql("select a.id,b.dh_dhrq as rq,a.gl_djh,c.hy_bh,c.hy_name,a.g_sn,iif(d.g_name is null,e.zp_name,d.g_name) "
             "as spmc,a.dh_sl,a.dh_zpjf,a.dh_jf,b.dh_note,b.a_name from (((jxc_dhzp a inner join jxc_dhd b on "
             "a.gl_djh=b.gl_djh) left join jxc_hyxx c on b.hy_sn=c.hy_sn) left join jxc_goods d on a.g_sn=d.g_sn) left "
             "join jxc_zpxx e on a.g_sn=e.zp_sn")
      .where(filter)
      .add(" order by a.id desc");
}

Item read(std::int64_t id) {
  const RowSet found = openSelect("select zp_sn,zp_name,zp_sl,zp_jf from jxc_zpxx where id=?", id);
  if (found.isEmpty()) return {};
  const Row row = found.front();
  return {id, row.text("zp_sn"), row.text("zp_name"), row.number("zp_sl"), row.number("zp_jf")};
}

Sql items(const Criteria& criteria) {
  Filter filter;
  addKey(filter, criteria, {"zp_sn", "zp_name", "zp_jm"});
  return Sql("select * from jxc_zpxx").where(filter).add(" order by id desc");
}

bool save(const Item& typed, const Item& shown, Prompt& prompt) {
  using namespace gifts_detail;
  const QString number = sanitizeKeyword(typed.number.trimmed()), name = sanitizeKeyword(typed.name.trimmed());
  const auto isTaken = [&] {
    return exists("select top 1 id from jxc_zpxx where zp_sn=? and id<>?", number, typed.id);
  };
  if (refused({{number.isEmpty(), u"赠品编号必须填写！"_qs, Subject::Number},
               {name.isEmpty(), u"赠品名称必须填写！"_qs, Subject::Name},
               {typed.quantity < 0, u"赠品数量不能为负数！"_qs, Subject::Quantity},
               {typed.points < 0, u"兑换积分不能为负数！"_qs, Subject::Points},
               {isTaken(), u"赠品编号已经存在，请重新输入！"_qs, Subject::Number},
               // What was received and redeemed stands under its number.
               {typed.id != 0 && number != shown.number && moved(shown.number),
                u"该赠品已经发生过业务，不能修改赠品编号！"_qs, Subject::Number}},
              prompt) ||
      isTooMany(typed.quantity, prompt) || isTooMany(typed.points, prompt, Subject::Points))
    return false;
  Transaction transaction(accountDb());
  if (isTaken()) throw DbError(DbError::Kind::Other, u"赠品编号已经存在，请重新输入！"_qs);
  const QString letters = makeJm(name).left(32);
  if (typed.id == 0) {
    insertRow(
        "jxc_zpxx",
        {{"zp_sn", number}, {"zp_name", name}, {"zp_jm", letters}, {"zp_sl", typed.quantity}, {"zp_jf", typed.points}});
  } else {
    updateRow("jxc_zpxx", typed.id,
              {{"zp_sn", number}, {"zp_name", name}, {"zp_jm", letters}, {"zp_jf", typed.points}});
    execSql("update jxc_zpxx set zp_sl=zp_sl+(?) where id=?", typed.quantity - shown.quantity, typed.id);
  }
  transaction.commit();
  return true;
}

bool remove(std::int64_t id, Prompt& prompt) {
  const auto hindrance = [](const Row& row) -> std::optional<Hindrance> {
    if (!exists(gifts_detail::kUsed, row.text("zp_sn"))) return {};
    return Hindrance{u"该赠品已经发生过业务，不能删除！"_qs, {}, orRename()};
  };
  return deleteAsking({.table = "jxc_zpxx", .question = u"您确定要删除该赠品信息吗？"_qs, .hindrance = hindrance}, id,
                      prompt);
}

bool receive(std::int64_t id, const Receipt& receipt, Prompt& prompt) {
  if (refused({{receipt.date.isEmpty(), u"进货日期必须填写！"_qs, Subject::Date},
               lockedOn(receipt.date),
               {receipt.quantity < 0, u"进货数量不能为负数！"_qs, Subject::Quantity}},
              prompt) ||
      isTooMany(receipt.quantity, prompt))
    return false;
  Transaction transaction(accountDb());
  PeriodLock().demandOpen(receipt.date);
  const QString number = lookupValue("select zp_sn from jxc_zpxx where id=?", id);
  if (number.isEmpty()) throw DbError(DbError::Kind::Other, u"该赠品已被删除！"_qs);
  insertRow("jxc_zpjh", {{"zp_sn", number},
                         {"zp_jhrq", receipt.date},
                         {"zp_sl", receipt.quantity},
                         {"zp_note", sanitizeKeyword(receipt.note).left(200)},
                         {"a_name", session().a_name}});
  execSql("update jxc_zpxx set zp_sl=zp_sl+(?) where id=?", receipt.quantity, id);
  transaction.commit();
  return true;
}

Sql movements(const Criteria& criteria) {
  using gifts_detail::addSource;
  Sql all("select * from (");
  addSource(all, criteria,
            "select a.id,'1-' & a.id as rowkey,a.zp_sn,c.zp_name,a.zp_jhrq as rq,a.zp_sl as sl,'' as djh,a.zp_note as "
            "note,a.a_name,'赠品进货' as lx,1 as dsort from jxc_zpjh a,jxc_zpxx c where a.zp_sn=c.zp_sn",
            "a.zp_sn", "a.zp_jhrq");
  addSource(all, criteria,
            " union all select a.id,'2-' & a.id as rowkey,a.g_sn as zp_sn,c.zp_name,b.dh_dhrq as rq,-1*a.dh_sl as sl,"
            "a.gl_djh as djh,b.dh_note as note,a.a_name,'积分兑换' as lx,2 as dsort from jxc_dhzp a,jxc_dhd b,jxc_zpxx "
            "c where a.gl_djh=b.gl_djh and a.g_sn=c.zp_sn",
            "a.g_sn", "b.dh_dhrq");
  addSource(
      all, criteria,
      " union all select a.id,'3-' & a.id as rowkey,a.zp_sn,c.zp_name,b.zp_zsrq as rq,-1*a.zp_sl as sl,b.gl_xsdjh "
      "as djh,b.zp_note as note,a.a_name,'销售赠送' as lx,3 as dsort from jxc_zszp a,jxc_zsd b,jxc_zpxx c where "
      "a.gl_djh=b.gl_djh and a.zp_sn=c.zp_sn",
      "a.zp_sn", "b.zp_zsrq");
  return all.add(") DERIVEDTBL order by dsort,id desc");
}

}  // namespace jxc::gifts
