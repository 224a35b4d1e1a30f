#include "members/member_ledger.h"

#include "core/clock.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"

#include <QDate>

#include <cmath>

namespace jxc {
namespace member_ledger_detail {

/// Stored value that is released to a member in parts, one a month or a day, on the first sale in it.
struct Release {
  int source, released;     // hs_zsfs of the deposit that gives, and of the line that a release wrote
  const char* released_by;  // values: released, month or day of the sale, member
  const char* sales;        // of the member in the month or on the day; values: day, member
  const char* giveBack;     // values: new date, source, day, member
  int dateLength;           // of "yyyy-MM" or "yyyy-MM-dd"
};
constexpr Release releases[] = {
    {2, -2, "select id,xf_je from jxc_hyxf where hs_zsfs=? and left(xf_zsrq,7)=? and hy_sn=? order by id",
     "select count(*) as num from jxc_posxsd where datediff('m',pos_xsrq,?)=0 and hy_sn=?",
     "update jxc_hyxf set xf_zsrq=?,hs_zsje=hs_zsje+hs_myje where hs_zsfs=? and datediff('m',xf_zsrq,?)=0 and hy_sn=?",
     7},
    {4, -4, "select id,xf_je from jxc_hyxf where hs_zsfs=? and left(xf_zsrq,10)=? and hy_sn=? order by id",
     "select count(*) as num from jxc_posxsd where datediff('d',pos_xsrq,?)=0 and hy_sn=?",
     "update jxc_hyxf set xf_zsrq=?,hs_zsje=hs_zsje+hs_myje where hs_zsfs=? and datediff('d',xf_zsrq,?)=0 and hy_sn=?",
     10},
};

/// With the only sale gone the release should not have been: it leaves the card, and as long as the month (the day)
/// lasts the next sale may bring it again.
void takeReleaseBack(const Release& release, const QString& day, const QString& member) {
  const QString period = day.left(release.dateLength);
  const RowSet lines = openSelect(release.released_by, release.released, period, member);
  if (lines.isEmpty() || lookupNumber(release.sales, day, member) != 1) return;
  execSql("delete from jxc_hyxf where id=?", lines.integer(0, 0));
  execSql("update jxc_hyxx set hy_zhje=hy_zhje-(?) where hy_sn=?", lines.number(0, 1), member);
  const QString today = clock::today();
  if (period != today.left(release.dateLength)) return;
  const QDate now = QDate::fromString(today, Qt::ISODate);
  const QDate before = release.dateLength == 7 ? now.addMonths(-1) : now.addDays(-1);
  execSql(release.giveBack, before.toString(Qt::ISODate), release.source, day, member);
}

void followGrade(const QString& member) {
  const double points = std::trunc(lookupNumber("select hy_zjf from jxc_hyxx where hy_sn=?", member));
  if (points == 0) return;
  QString grade = lookupValue("select hl_sn from jxc_hyfl where hl_jfxx<=? and hl_jfsx>=? order by id", points, points);
  if (grade.isEmpty()) grade = words(builtInSn);
  execSql("update jxc_hyxx set hl_sn=? where hy_sn=?", grade, member);
}

/// What the last whole point left over of the money spent, where it is carried into the next sale.
void followRemainder(const QString& member) {
  const auto moneyAPoint = static_cast<std::int64_t>(session().jf_mfje.toDouble());
  if (!strIsTrue(session().jf_yelj) || moneyAPoint == 0) return;
  const auto spent = static_cast<std::int64_t>(lookupNumber("select hy_zje from jxc_hyxx where hy_sn=?", member));
  execSql("update jxc_hyxx set hy_ye=? where hy_sn=?", spent % moneyAPoint, member);
}

}  // namespace member_ledger_detail

void applyHySale(const QString& number, const QString& member, HySaleMode mode) {
  using namespace member_ledger_detail;
  const RowSet heads =
      openSelect("select pos_bcjf,pos_yfje,pos_czk,pos_jfye,pos_xsrq from jxc_posxsd where gl_djh=?", number);
  if (heads.isEmpty()) return;
  const Row head = heads.front();
  const double points = head.number("pos_bcjf"), due = head.number("pos_yfje");
  // Paid from the card, and money that the document brought onto it. Figures of a return are negative.
  const double fromCard = head.number("pos_czk"), ontoCard = head.number("pos_jfye");
  const bool sale = mode == HySaleMode::UnXS;
  execSql(
      "update jxc_hyxx set hy_zjf=hy_zjf-(?),hy_jf=hy_jf-(?),hy_zje=hy_zje-(?),hy_cs=hy_cs+(?),"
      "hy_zhje=hy_zhje+(?) where hy_sn=?",
      points, points, due, sale ? -1 : 1, sale ? fromCard - ontoCard : ontoCard - fromCard, member);
  if (sale)
    for (const Release& release : releases)
      takeReleaseBack(release, head.text("pos_xsrq").left(10), member);
  followGrade(member);
  followRemainder(member);
}

}  // namespace jxc
