#include "core/rights.h"

#include "core/session.h"
#include "core/statements.h"

namespace jxc::rights_detail {

bool isGranted(const QString& rights, int position) {
  return position >= 1 && position <= rights.size() && rights[position - 1] == u'1';
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
  const Session& s = session();
  if (!isEnabledOperator()) return false;
  if (isWarehouseBound()) {
    const QString own = QStringLiteral("%") + s.a_sn + QStringLiteral("%");
    if (!exists("select ck_sn from jxc_ckxx where ck_asn like ?", own)) return false;
  }
  const QString rights = lookupValue(compose("select {} from jxc_role where r_sn=?", {group}), s.r_sn);
  return rights_detail::isGranted(rights, position);
}

bool hasRightOf(std::string_view group, int position, const QString& operatorName) {
  const std::string sql =
      compose("select a.{} from jxc_role a,jxc_admin b where a.r_sn=b.r_sn and b.a_name=?", {group});
  return rights_detail::isGranted(lookupValue(sql, operatorName), position);
}

QString noRightText(const QString& text) {
  return QStringLiteral("您没有权限进行") + text;
}

void dispMsg(Prompt& prompt, const QString& text) {
  prompt.notice(noRightText(text));
}

}  // namespace jxc
