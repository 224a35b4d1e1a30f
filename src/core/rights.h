// 权限: what the operator's role allows.
#pragma once

#include "core/prompt.h"
#include "core/right.h"

#include <QString>

#include <string_view>

namespace jxc {

/// Whether the operator of the session is there and not disabled, as it stands in the database now.
bool isEnabledOperator();
/// Whether he is of the administrator's role, as it stands there now: what makes administrators asks this one.
bool isAdministratorNow();
/// Told when he is not.
bool isAllowedToAdministrators(Prompt& prompt);

/// Whether the operator has right `position` (from 1) of `group`, a column of `jxc_role`: "cggl", "xsgl", "kcgl",
/// "wlzk", "tjgl", "rcgl", "qtcz". Read from the database at each call, so that a change of the role applies at once.
/// A disabled operator has none any more, and with warehouse binding on one of no warehouse has none at all. Positions
/// beyond the end of a role: no.
bool hasRight(std::string_view group, int position);
inline bool hasRight(const Right& right) {
  if (right.andCost && !hasRight(kSeesCost.group, kSeesCost.position)) return false;
  return !right.isGuarded() || hasRight(right.group, right.position);
}
/// The same of another operator by name, who authorises a step; warehouse binding is not asked, but he must not be
/// disabled.
bool hasRightOf(std::string_view group, int position, const QString& operatorName);

/// "您没有权限进行" + text.
QString noRightText(const QString& text);
/// Tells that the right is missing: "您没有权限进行" + text. The text ends with "！".
void dispMsg(Prompt& prompt, const QString& text);

}  // namespace jxc
