#include "stock/stocktake.h"

#include "core/refusal.h"
#include "core/statements.h"

namespace jxc::stock_count {
namespace stock_count_detail {

QString endOfDay(const QString& date) {
  return date.left(10) + u" 23:59:59"_qs;
}

struct Count {
  QString warehouse, date;
};
Count countOf(const QString& number) {
  const RowSet head = openSelect("select ck_sn,pd_rq from jxc_kcpd where gl_djh=? order by pd_status desc,id", number);
  return head.isEmpty() ? Count{} : Count{head.text(0, 0), head.text(0, 1)};
}

}  // namespace stock_count_detail

std::optional<QString> tooLateToSave(const QString& number, const QString& warehouse, const QString& date) {
  const QString later =
      lookupValue("select top 1 pd_rq from jxc_kcpd where ck_sn=? and pd_rq>? order by pd_rq", warehouse, date);
  if (!later.isEmpty()) return u"在【"_qs + later + u"】日期之后已有盘点单，不能再次盘点！"_qs;
  const QString moved = lookupValue(
      "select top 1 gl_kdrq from jxc_goodslist where ck_sn=? and gl_kdrq>? and g_sn in "
      "(select distinct g_sn from jxc_kcpdsp where gl_djh=?) order by id",
      warehouse, stock_count_detail::endOfDay(date), number);
  if (!moved.isEmpty()) return u"在【"_qs + moved + u"】日期之后盘点的商品已发生业务，不能盘点！"_qs;
  return {};
}

std::optional<QString> overtaken(const QString& number) {
  const auto [warehouse, date] = stock_count_detail::countOf(number);
  const QString hit = lookupValue(
      "select top 1 gl_djh from jxc_goodslist where gl_djh<>'' and ck_sn=? and gl_kdrq>? and g_sn in "
      "(select distinct g_sn from jxc_kcpdsp where gl_djh=?) order by id",
      warehouse, stock_count_detail::endOfDay(date), number);
  if (hit.isEmpty()) return {};
  return u"在【"_qs + date + u"】日期之后盘点商品已发生业务，\r\n\r\n单号为：【"_qs + hit +
         u"】，\r\n\r\n不能盘点，该盘点单 "_qs + number + u" 已作废！"_qs;
}

std::optional<QString> movedSinceAudit(const QString& number) {
  const auto [warehouse, date] = stock_count_detail::countOf(number);
  const std::int64_t last = lookupValue("select max(id) as rid from jxc_goodslist where gl_djh=?", number).toLongLong();
  const QString hit = lookupValue(
      "select top 1 gl_djh from jxc_goodslist where ck_sn=? and gl_kdrq>=? and id>? and g_sn in "
      "(select distinct g_sn from jxc_kcpdsp where gl_djh=?) order by id",
      warehouse, stock_count_detail::endOfDay(date), last, number);
  if (hit.isEmpty()) return {};
  return u"在【"_qs + date + u"】日期之后盘点商品已发生业务，\r\n\r\n单号为：【"_qs + hit +
         u"】，\r\n\r\n该盘点单 "_qs + number + u" 不能撤销！"_qs;
}

std::optional<int> auditAll(const std::vector<ListedDocument>& documents, Prompt& prompt) {
  return auditEach(
      {.question = u"您的操作将审核当前所有未审核的单据，确认吗？\r\n\r\n（如需审核某个单据，请按右键！）"_qs,
       .waiting = documents,
       .audit =
           [](const ListedDocument& document, Prompt& collecting) {
             return !isRefused(overtaken(document.number), collecting) &&
                    auditDocument(families::stocktake, document.number, document.date, collecting) ==
                        AuditOutcome::Audited;
           }},
      prompt);
}

}  // namespace jxc::stock_count
