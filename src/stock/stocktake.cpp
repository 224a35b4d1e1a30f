#include "stock/stocktake.h"

#include "core/each_prompt.h"
#include "core/posting.h"
#include "core/refusal.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"

namespace jxc::stock_count {
namespace stock_count_detail {

QString endOfDay(const QString& date) {
  return date.left(10) + u" 23:59:59"_qs;
}

/// A count is mostly of the last day that anything moved: one look at the dates answers then for all its goods.
bool isLastDay(const QString& date) {
  return lookupValue("select top 1 id from jxc_goodslist where gl_kdrq>?", endOfDay(date)).isEmpty();
}

struct Count {
  QString warehouse, date;
  bool isAudited = false;
};
Count countOf(const QString& number) {
  const RowSet head =
      openSelect("select ck_sn,pd_rq,pd_status from jxc_kcpd where gl_djh=? order by pd_status desc,id", number);
  return head.isEmpty() ? Count{} : Count{head.text(0, 0), head.text(0, 1), head.integer(0, 2) == 1};
}

}  // namespace stock_count_detail

double valueOf(double difference, double cost) {
  const double value = difference * cost;
  return value < 0 ? -roundTotalIfSeparate(-value) : roundTotalIfSeparate(value);
}

std::string valueExpression(std::string_view difference, std::string_view cost) {
  const std::string value = std::string("(").append(difference).append(")*").append(cost);
  if (!strIsTrue(session().cs_zjews)) return value;
  return "iif(" + value + "<0,-1,1)*" + roundedExpression("abs(" + value + ")", totalDigits());
}

std::optional<QString> tooLateToSave(const QString& number, const QString& warehouse, const QString& date) {
  const QString later =
      lookupValue("select top 1 pd_rq from jxc_kcpd where ck_sn=? and pd_rq>? order by pd_rq", warehouse, date);
  if (!later.isEmpty()) return u"在【"_qs + later + u"】日期之后已有盘点单，不能再次盘点！"_qs;
  if (stock_count_detail::isLastDay(date)) return {};
  const QString moved = lookupValue(
      "select top 1 gl_kdrq from jxc_goodslist where ck_sn=? and gl_kdrq>? and g_sn in "
      "(select distinct g_sn from jxc_kcpdsp where gl_djh=?) order by id",
      warehouse, stock_count_detail::endOfDay(date), number);
  if (!moved.isEmpty()) return u"在【"_qs + moved + u"】日期之后盘点的商品已发生业务，不能盘点！"_qs;
  return {};
}

std::optional<QString> overtaken(const QString& number) {
  const stock_count_detail::Count count = stock_count_detail::countOf(number);
  if (stock_count_detail::isLastDay(count.date)) return {};
  const QString hit = lookupValue(
      "select top 1 gl_djh from jxc_goodslist where gl_djh<>'' and ck_sn=? and gl_kdrq>? and g_sn in "
      "(select distinct g_sn from jxc_kcpdsp where gl_djh=?) order by id",
      count.warehouse, stock_count_detail::endOfDay(count.date), number);
  if (hit.isEmpty()) return {};
  return u"在【"_qs + count.date + u"】日期之后盘点商品已发生业务，\r\n\r\n单号为：【"_qs + hit +
         u"】，\r\n\r\n不能盘点，该盘点单 "_qs + number + u" 已作废！"_qs;
}

std::optional<QString> movedSinceAudit(const QString& number) {
  const stock_count_detail::Count count = stock_count_detail::countOf(number);
  const std::int64_t last = lookupValue("select max(id) as rid from jxc_goodslist where gl_djh=?", number).toLongLong();
  const QString hit = lookupValue(
      "select top 1 gl_djh from jxc_goodslist where ck_sn=? and gl_kdrq>=? and id>? and g_sn in "
      "(select distinct g_sn from jxc_kcpdsp where gl_djh=?) order by id",
      count.warehouse, stock_count_detail::endOfDay(count.date), last, number);
  if (hit.isEmpty()) return {};
  return u"在【"_qs + count.date + u"】日期之后盘点商品已发生业务，\r\n\r\n单号为：【"_qs + hit +
         u"】，\r\n\r\n该盘点单 "_qs + number + u" 不能撤销！"_qs;
}

// ---- moved meanwhile ---------------------------------------------------------------------------------------------

namespace stock_count_detail {

std::vector<MovedLine> movedLines(const QString& number) {
  std::vector<MovedLine> moved;
  for (const Row row : openSelect(
           "select a.id,a.g_sn,b.g_name,a.pd_sl,a.kc_sl,c.kc_sl as nowsl,c.kc_zsl as nowzsl from (jxc_kcpdsp a inner "
           "join jxc_goods b on a.g_sn=b.g_sn) left outer join (select g_sn,kc_sl,kc_zsl from jxc_kcsp where ck_sn=?) "
           "c on a.g_sn=c.g_sn where a.gl_djh=? and abs(iif(isnull(c.kc_sl),0,c.kc_sl)-a.kc_sl)>=0.0000005 order by "
           "a.id",
           countOf(number).warehouse, number)) {
    moved.push_back({.id = row.integer("id"),
                     .goods = row.text("g_sn"),
                     .name = row.text("g_name"),
                     .counted = row.number("pd_sl"),
                     .recorded = row.number("kc_sl"),
                     .shelf = row.number("nowsl"),
                     .book = row.number("nowzsl")});
  }
  return moved;
}

EachQuestion questionOf(const QString& number, const std::vector<MovedLine>& lines) {
  EachQuestion question{
      .text = u"盘点单 "_qs + number +
              u" 录入之后，下列商品的库存已变动。\r\n\r\n变动在清点之前（单据补录）：按现在的库存计算盈亏；"
              "\r\n变动在清点之后：盈亏不变，库存按盈亏增减。"_qs,
      .headings = {u"商品编号"_qs, u"商品名称"_qs, u"盘点数量"_qs, u"录入时库存"_qs, u"现在库存"_qs},
      .first = u"清点之前"_qs,
      .second = u"清点之后"_qs};
  for (const MovedLine& line : lines)
    question.items.push_back(
        {line.goods, line.name, numberText(line.counted), numberText(line.recorded), numberText(line.shelf)});
  return question;
}

std::optional<QString> leftToAsk(const QString& number) {
  const std::vector<MovedLine> lines = movedLines(number);
  if (lines.empty()) return {};
  return u"盘点单 "_qs + number + u" 录入之后，有 %1 种商品的库存已变动（"_qs.arg(lines.size()) + lines.front().goods +
         u' ' + lines.front().name + u"），\r\n\r\n请单独审核该单据！"_qs;
}

}  // namespace stock_count_detail

std::optional<Recount> Recount::ask(const QString& number, Prompt& prompt) {
  using namespace stock_count_detail;
  if (isRefused(overtaken(number), prompt)) return {};
  Recount recount;
  recount.lines_ = movedLines(number);
  if (recount.lines_.empty()) return recount;
  const auto answers = askEach(prompt, questionOf(number, recount.lines_));
  if (!answers) return {};
  for (const EachAnswer answer : *answers)
    recount.late_.push_back(answer == EachAnswer::First);
  return recount;
}

bool Recount::takeUp(const QString& number) const {
  if (overtaken(number) || stock_count_detail::movedLines(number) != lines_) return false;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (!late_[i]) continue;
    const MovedLine& line = lines_[i];
    const double cost = lookupNumber("select pd_dj from jxc_kcpdsp where id=?", line.id);
    postSql("update jxc_kcpdsp set kc_sl=?,kc_zsl=?,pd_zje=? where id=?", line.shelf, line.book,
            valueOf(line.counted - line.shelf, cost), line.id);
  }
  if (!lines_.empty()) refreshWaitingTotals(families::stocktake, number);
  return true;
}

std::optional<QString> passedOver(const QString& number) {
  if (stock_count_detail::countOf(number).isAudited) return {};  // the audit tells that
  const auto dead = overtaken(number);
  return dead ? dead : stock_count_detail::leftToAsk(number);
}

std::optional<int> auditAll(const std::vector<ListedDocument>& documents, Prompt& prompt,
                            const AuditProgress& progress) {
  return auditEach(
      {.question = u"您的操作将审核当前所有未审核的单据，确认吗？\r\n\r\n（如需审核某个单据，请按右键！）"_qs,
       .waiting = documents,
       .audit =
           [](const ListedDocument& document, Prompt& collecting) {
             return !isRefused(passedOver(document.number), collecting) &&
                    checkDj(families::stocktake, document.number, collecting) == AuditOutcome::Audited;
           },
       .progress = progress},
      prompt);
}

}  // namespace jxc::stock_count
