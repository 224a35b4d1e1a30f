#include "stock/loans.h"

#include "core/sql.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "stock/document_family.h"

#include <QDate>

#include <algorithm>

namespace jxc::loans {
namespace loans_detail {

/// Lines `b` of audited loans `a`; which of them, the caller says. The state as a range: SQLite counts nothing
/// beforehand, takes an equality of it for as good as one of the number, and would walk through all audited loans.
std::string select(std::string_view which) {
  return "select a.jh_rq,a.kh_sn,a.ck_sn,a.u_sn,b.*," + depositLeft("b") +
         compose(
             " as leftyj from jxc_khjh a,jxc_khjhsp b where a.gl_djh=b.gl_djh and a.jh_status>0 and a.jh_flag='jh' and "
             "{}=?",
             {which});
}

LoanLine read(const Row& row) {
  LoanLine line{.id = row.integer("id"),
                .loan = row.text("gl_djh"),
                .date = row.text("jh_rq").left(10),
                .goods = row.text("g_sn"),
                .partner = row.text("kh_sn"),
                .warehouse = row.text("ck_sn"),
                .salesperson = row.text("u_sn"),
                .account = row.text("jh_kmmc"),
                .lent = row.number("jh_sl"),
                .back = row.number("jh_hhsl"),
                .sold = row.number("jh_xssl"),
                .cost = row.number("jh_dj"),
                .rent = row.number("jh_zj"),
                .deposit = row.number("jh_yj"),
                .rentUsed = row.number("jh_yj2")};
  line.refund = line.deposit - line.rentUsed - row.number("leftyj");
  return line;
}

}  // namespace loans_detail

std::string depositLeft(std::string_view line) {
  const std::string a(line);
  return compose(
      "({}.jh_yj-{}.jh_yj2-(select iif(sum(back.jh_thyj) is null,0,sum(back.jh_thyj)) from jxc_khjhsp back "
      "where back.id2={}.id and back.id<>{}.id))",
      {a, a, a, a});
}

double LoanLine::open() const {
  return toSixDecimals(lent - back - sold);
}
double LoanLine::held() const {
  return std::max(0.0, toSixDecimals(deposit - rentUsed - refund));
}
int LoanLine::daysUntil(const QString& day) const {
  const QDate from = QDate::fromString(date.left(10), Qt::ISODate), to = QDate::fromString(day.left(10), Qt::ISODate);
  return std::max(1, static_cast<int>(from.daysTo(to)) + 1);
}

std::optional<LoanLine> loanLine(std::int64_t id) {
  const RowSet rows = openSelect(loans_detail::select("b.id"), id);
  if (rows.isEmpty()) return {};
  return loans_detail::read(rows.front());
}

std::map<std::int64_t, LoanLine> linesOf(const QString& loan) {
  std::map<std::int64_t, LoanLine> lines;
  for (const Row row : openSelect(loans_detail::select("b.gl_djh"), loan))
    lines.emplace(row.integer("id"), loans_detail::read(row));
  return lines;
}

std::optional<QString> returnedBy(const QString& loan) {
  const QString back = lookupValue(
      "select top 1 b.gl_djh from jxc_khjhsp a,jxc_khjhsp b where b.id2=a.id and b.id<>a.id and a.gl_djh=? order by "
      "b.id",
      loan);
  if (back.isEmpty()) return {};
  return u"借货单"_qs + loan + u"已经有还货，不能取消审核！\r\n\r\n请先取消审核还货单："_qs + back +
         u"，\r\n\r\n然后再取消审核！"_qs;
}

QString saleOf(const QString& back) {
  return lookupValue(
      "select top 1 b.gl_djh from jxc_khjhsp a,jxc_lsxssp b where a.g_sn=b.g_sn and b.gl_djh2=a.gl_djh and a.gl_djh=? "
      "and a.jh_flag='销售' order by b.id",
      back);
}

QString conversionOf(const QString& sale) {
  return lookupValue(
      "select top 1 a.gl_djh from jxc_khjhsp a,jxc_lsxssp b where a.g_sn=b.g_sn and a.gl_djh=b.gl_djh2 and b.gl_djh=? "
      "and a.jh_flag='销售' order by b.id",
      sale);
}

std::optional<QString> piecesStay(std::int64_t saleLine) {
  const QString back = lookupValue(
      "select top 1 a.gl_djh from jxc_khjhsp a,jxc_lsxssp b where a.g_sn=b.g_sn and a.gl_djh=b.gl_djh2 and b.id=? and "
      "a.jh_flag='销售'",
      saleLine);
  if (back.isEmpty()) return {};
  return u"该商品由借转销售产生，数量与还货单 "_qs + back + u" 一致，不能修改！"_qs;
}

std::optional<QString> soldBy(const QString& back) {
  const QString sale = saleOf(back);
  if (sale.isEmpty() || !exists("select id from jxc_lsxsd where ls_status=1 and gl_djh=?", sale)) return {};
  return u"还货单"_qs + back + u"由借货转销售产生，不能取消审核！\r\n\r\n请先取消审核销售单："_qs + sale +
         u"，\r\n\r\n然后再取消审核！"_qs;
}

std::optional<QString> saleStays(const QString& sale) {
  const QString back = conversionOf(sale);
  if (back.isEmpty()) return {};
  return u"销售单"_qs + sale + u"由借货转销售产生，不能单独删除！\r\n\r\n取消审核还货单 "_qs + back +
         u" 时，会一并删除该销售单。"_qs;
}

}  // namespace jxc::loans
