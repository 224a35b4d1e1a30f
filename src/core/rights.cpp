#include "core/rights.h"

#include "core/rights_now.h"
#include "core/session.h"
#include "core/statements.h"

namespace jxc::rights_detail {

bool isGranted(const QString& rights, int position) {
  return position >= 1 && position <= rights.size() && rights[position - 1] == u'1';
}

/// In one question: whether he is still there, enabled, and bound to any warehouse where operators are.
Sql ofOperator(const std::string& columns) {
  const Session& s = session();
  Sql rights("select " + columns + " from jxc_role a,jxc_admin b where a.r_sn=? and b.a_sn=? and b.a_jyt=0", s.r_sn,
             s.a_sn);
  if (isWarehouseBound())
    rights.add(" and exists (select w.ck_sn from jxc_ckxx w where w.ck_asn like ?)",
               QStringLiteral("%") + s.a_sn + QStringLiteral("%"));
  return rights;
}

}  // namespace jxc::rights_detail

namespace jxc {

bool isEnabledOperator() {
  return exists("select id from jxc_admin where a_sn=? and a_jyt=0", session().a_sn);
}

bool isAdministratorNow() {
  return isAdministrator() &&
         exists("select id from jxc_admin where a_sn=? and r_sn=? and a_jyt=0", session().a_sn, session().r_sn);
}

bool isAllowedToAdministrators(Prompt& prompt) {
  if (isAdministratorNow()) return true;
  prompt.notice(QStringLiteral("只有系统管理员才能使用此功能！"));
  return false;
}

bool hasRight(std::string_view group, int position) {
  const RowSet rights = openSelect(rights_detail::ofOperator(compose("a.{}", {group})));
  return !rights.isEmpty() && rights_detail::isGranted(rights.text(0, 0), position);
}

RightsNow::RightsNow()
    : rights_(openSelect(rights_detail::ofOperator("a.cggl,a.xsgl,a.kcgl,a.wlzk,a.tjgl,a.rcgl,a.qtcz"))) {}

bool RightsNow::has(const Right& right) const {
  if (right.andCost && !has(kSeesCost)) return false;
  if (!right.isGuarded()) return true;
  return !rights_.isEmpty() && rights_detail::isGranted(rights_.front().text(right.group), right.position);
}

bool hasRightOf(std::string_view group, int position, const QString& operatorName) {
  const std::string sql =
      compose("select a.{} from jxc_role a,jxc_admin b where a.r_sn=b.r_sn and b.a_name=? and b.a_jyt=0", {group});
  return rights_detail::isGranted(lookupValue(sql, operatorName), position);
}

QString noRightText(const QString& text) {
  return QStringLiteral("您没有权限进行") + text;
}

void dispMsg(Prompt& prompt, const QString& text) {
  prompt.notice(noRightText(text));
}

}  // namespace jxc
