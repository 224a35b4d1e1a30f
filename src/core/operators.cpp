#include "core/operators.h"

#include "core/deletion.h"
#include "core/log.h"
#include "core/mentions.h"
#include "core/numbers.h"
#include "core/password_hash.h"
#include "core/passwords.h"
#include "core/refusal.h"
#include "core/rights.h"
#include "core/roles.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/warehouse_binding.h"

namespace jxc {
namespace operators_detail {

constexpr int kNameWidth = 32;
constexpr char16_t kOnlyAdministrators[] = u"只有系统管理员才能修改系统管理员！";

bool hasOperatorRight() {
  return hasRight("qtcz", 6);
}

bool isBuiltIn(const QString& number) {
  return number == QStringView(builtInSn);
}

/// Name and password through their checks, in the order in which the operator sees them; the name as it is stored.
std::optional<QString> checkedName(const OperatorDraft& draft, Prompt& prompt) {
  const QString name = sanitizeKeyword(draft.name.trimmed());
  if (refused({{draft.name.trimmed().isEmpty(), u"用户名称必须填写！"_qs, Subject::Name},
               {passwordIn(draft.password) != passwordIn(draft.passwordAgain), u"两次密码输入不一致！"_qs,
                Subject::PasswordAgain},
               {exists("select a_name from jxc_admin where a_name=? and id<>?", name, draft.id),
                u"用户名称不能重复！"_qs, Subject::Name}},
              prompt))
    return {};
  return name;
}

/// An administrator is made by administrators.
bool mayGiveRole(const QString& roleKey, Prompt& prompt) {
  return !refused(
      {{isBuiltIn(roleKey) && !isAdministratorNow(), u"只有系统管理员才能设置系统管理员角色！"_qs, Subject::Role}},
      prompt);
}

bool hasRole(const OperatorDraft& draft, Prompt& prompt) {
  return !refused({{draft.roleKey.isEmpty(), u"请选择角色！"_qs, Subject::Role}}, prompt);
}

/// Everybody could come in by Enter: that shall be meant.
bool mayDoWithoutPassword(const QString& name, const QString& password, Prompt& prompt) {
  return !passwordIn(password).isEmpty() ||
         prompt.ask(QStringLiteral("操作员“%1”没有密码，任何人都可以用这个名称登录，确认不设密码吗？").arg(name));
}

std::optional<Hindrance> hindrance(const Row& row) {
  static constexpr KeyColumn business[] = {{"jxc_jhd", "a_name"}, {"jxc_lsxsd", "a_name"}};
  const QString holder = firstMention(business, row.text("a_name"));
  if (!holder.isEmpty()) return Hindrance{u"该操作员已发生过业务，不能删除！"_qs, holder, orDisable(u"停用")};
  if (isBuiltIn(row.text("a_sn"))) return Hindrance{u"内置系统管理员不能删除！"_qs, {}, {}};
  if (isBuiltIn(row.text("r_sn")) && !isAdministratorNow())
    return Hindrance{QString::fromUtf16(kOnlyAdministrators), {}, {}};
  return {};
}

/// Where operators are bound to warehouses, one without any has no right at all.
bool mayDoWithoutWarehouse(const OperatorDraft& draft, const QString& name, Prompt& prompt) {
  if (session().cs_cgyh != u"1" || draft.roleKey == QStringView(builtInSn)) return true;
  if (!draft.warehouses || !draft.warehouses->isEmpty() || !mayOpenWarehouses()) return true;
  return prompt.ask(QStringLiteral("没有给操作员“%1”选择仓库，他将没有任何权限，确认吗？").arg(name));
}

/// As the log tells it. A hash says that a password was set.
QString inWords(const QString& name, const QString& role, const QString& hash, bool isDisabled = false) {
  QString text = name + u'（' + lookupValue("select r_name from jxc_role where r_sn=?", role);
  if (isDisabled) text += QStringLiteral("，停用");
  if (!hash.isEmpty()) text += QStringLiteral("，设置密码");
  return text + u'）';
}

/// A new operator, under a number that nobody had before: his own settings at the stations are kept by it. The number.
QString write(const OperatorCopy& made, bool isHeadCashier, const QString& hash) {
  const std::int64_t id = insertRow("jxc_admin", {{"a_name", made.name},
                                                  {"r_sn", made.roleKey},
                                                  {"a_zreoje", made.mostRoundOff},
                                                  {"a_pwd", u""},
                                                  {"a_pos", isHeadCashier},
                                                  {"a_jy", 0},
                                                  {"a_jyt", 0}});
  const QString number = serialOfNewRow("jxc_admin", "a_sn", id);
  updateRow("jxc_admin", id, {{"a_sn", number}});
  keepPassword(number, hash);
  logChange("jxc_admin", {}, inWords(made.name, made.roleKey, hash));
  return number;
}

/// Warehouses are opened and closed by who may set them up.
Refusal bind(const OperatorDraft& draft, const QString& number, const QString& name) {
  if (!draft.warehouses || !mayOpenWarehouses()) return {};
  return openWarehousesTo(number, name, *draft.warehouses);
}

}  // namespace operators_detail

bool mayOpenWarehouses() {
  return hasRight("qtcz", 5);
}

bool mayManageOperators(Prompt& prompt) {
  if (operators_detail::hasOperatorRight()) return true;
  dispMsg(prompt, QStringLiteral("操作员设置！"));
  return false;
}

bool mayChangeOperator(std::int64_t id, Prompt& prompt) {
  if (!mayManageOperators(prompt)) return false;
  if (!operators_detail::isBuiltIn(lookupValue("select r_sn from jxc_admin where id=?", id)) || isAdministratorNow())
    return true;
  prompt.notice(QString::fromUtf16(operators_detail::kOnlyAdministrators));
  return false;
}

OperatorDraft newOperator() {
  OperatorDraft draft;
  draft.warehouses.emplace();
  const auto numbers = openSelect("select ck_sn from jxc_ckxx order by id");
  if (session().cs_cgyh == u"1" && numbers.rowCount() > 1) return draft;
  for (const Row row : numbers)
    *draft.warehouses << row.text("ck_sn");
  return draft;
}

OperatorDraft readOperator(std::int64_t id) {
  const RowSet rows =
      operators_detail::hasOperatorRight() ? openSelect("select * from jxc_admin where id=?", id) : RowSet();
  if (rows.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("该操作员已被其他操作员删除，请刷新列表！"));
  const Row row = rows.front();
  OperatorDraft draft;
  draft.id = id;
  draft.number = row.text("a_sn");
  draft.name = row.text("a_name");
  draft.roleKey = row.text("r_sn");
  draft.mostRoundOff = row.number("a_zreoje");
  draft.isHeadCashier = row.flag("a_pos");
  draft.isDisabled = row.flag("a_jy");
  draft.warehouses = warehousesOpenTo(draft.number);
  return draft;
}

std::optional<QString> addOperator(const OperatorDraft& draft, Prompt& prompt) {
  if (!mayManageOperators(prompt)) return {};
  const auto name = operators_detail::checkedName(draft, prompt);
  if (!name || !operators_detail::hasRole(draft, prompt)) return {};
  if (!operators_detail::mayGiveRole(draft.roleKey, prompt)) return {};
  if (!operators_detail::mayDoWithoutPassword(*name, draft.password, prompt)) return {};
  if (!operators_detail::mayDoWithoutWarehouse(draft, *name, prompt)) return {};

  const QString hash = passwordHash(draft.password);
  Refusal refusal;
  QString number;
  {
    Transaction transaction(accountDb());
    number =
        operators_detail::write({.name = *name, .roleKey = roleOf(draft.roleKey), .mostRoundOff = draft.mostRoundOff},
                                draft.isHeadCashier, hash);
    refusal = operators_detail::bind(draft, number, *name);
    if (!refusal) transaction.commit();
  }
  if (isRefused(refusal, prompt)) return {};
  return number;
}

bool modifyOperator(const OperatorDraft& draft, Prompt& prompt) {
  if (!mayChangeOperator(draft.id, prompt)) return false;
  const auto name = operators_detail::checkedName(draft, prompt);
  if (!name || !operators_detail::hasRole(draft, prompt)) return false;
  if (!operators_detail::mayGiveRole(draft.roleKey, prompt)) return false;
  if (!operators_detail::mayDoWithoutWarehouse(draft, *name, prompt)) return false;

  const QString hash = passwordHash(draft.password);
  OperatorDraft before;
  Refusal refusal;
  {
    Transaction transaction(accountDb());
    before = readOperator(draft.id);
    const bool isBuiltIn = operators_detail::isBuiltIn(before.number);
    // Another station may have made him administrator meanwhile.
    if (operators_detail::isBuiltIn(before.roleKey) && !isAdministratorNow())
      refusal = QString::fromUtf16(operators_detail::kOnlyAdministrators);
    updateRow("jxc_admin", draft.id,
              {{"a_name", *name}, {"a_zreoje", draft.mostRoundOff}, {"a_pos", draft.isHeadCashier}});
    if (!hash.isEmpty()) keepPassword(before.number, hash);
    logChange("jxc_admin", operators_detail::inWords(before.name, before.roleKey, {}, before.isDisabled),
              operators_detail::inWords(*name, isBuiltIn ? before.roleKey : roleOf(draft.roleKey), hash,
                                        !isBuiltIn && draft.isDisabled));
    // Somebody must always be able to log in and change everything.
    if (!isBuiltIn) {
      updateRow("jxc_admin", draft.id,
                {{"r_sn", roleOf(draft.roleKey)}, {"a_jy", draft.isDisabled}, {"a_jyt", draft.isDisabled ? 1 : 0}});
    }
    if (!refusal && before.name != *name) refusal = renameInBindings(before.name, *name);
    if (!refusal) refusal = operators_detail::bind(draft, before.number, *name);
    if (!refusal) transaction.commit();
  }
  if (isRefused(refusal, prompt)) return false;
  // His own new name holds from now on: under the old one the screen lock would never open again.
  if (before.number == session().a_sn) session().a_name = *name;
  return true;
}

bool deleteOperator(std::int64_t id, Prompt& prompt) {
  if (!mayManageOperators(prompt)) return false;
  return deleteAsking({.table = "jxc_admin",
                       .question = QStringLiteral("您确定要删除当前操作员吗！"),
                       .hindrance = operators_detail::hindrance,
                       // A warehouse must not name somebody who is gone.
                       .alsoDelete =
                           [](const Row& row) {
                             removeFromBindings(row.text("a_sn"), row.text("a_name"));
                             forgetPassword(row.text("a_sn"));
                             logChange("jxc_admin", row.text("a_name"), {});
                           }},
                      id, prompt);
}

std::optional<OperatorCopy> copyOperator(std::int64_t id, Prompt& prompt) {
  if (!mayManageOperators(prompt)) return {};
  const OperatorDraft draft = readOperator(id);
  return OperatorCopy{draft.name, draft.roleKey, draft.mostRoundOff};
}

bool pasteOperator(const OperatorCopy& copy, Prompt& prompt) {
  if (!mayManageOperators(prompt) || !operators_detail::mayGiveRole(copy.roleKey, prompt)) return false;
  const QString name = (QStringLiteral("复制 ") + copy.name).left(operators_detail::kNameWidth);
  if (!operators_detail::mayDoWithoutPassword(name, {}, prompt)) return false;
  Transaction transaction(accountDb());
  OperatorCopy another = copy;
  another.name = name;
  operators_detail::write(another, false, {});
  transaction.commit();
  return true;
}

Sql operatorListStatement(const QString& typed) {
  Filter filter;
  if (!operators_detail::hasOperatorRight()) filter.add("1=2");
  const QString key = QStringLiteral("%") + sanitizeKeyword(typed) + QStringLiteral("%");
  if (!typed.isEmpty()) filter.add("(a.a_name like ? or a.a_sn like ?)", key, key);
  return Sql("select a.id,a.a_sn,a.a_name,a.r_sn,a.a_zreoje,a.a_pos,a.a_jy,"
             "(select top 1 b.r_name from jxc_role b where b.r_sn=a.r_sn) as r_name from jxc_admin a")
      .where(filter)
      .add(" order by a.id");
}

bool changeOwnPassword(const QString& old, const QString& password, const QString& again, Prompt& prompt) {
  const QString number = session().a_sn;
  if (refused({{passwordIn(password) != passwordIn(again), u"两次密码输入不一致，不能修改密码！"_qs,
                Subject::PasswordAgain},
               {!isEnabledOperator(), QStringLiteral("操作员“%1”已停用，不能修改密码！").arg(session().a_name)}},
              prompt))
    return false;
  if (!admits(number, old, {u"当前密码错误，不能修改密码！"_qs, Subject::OldPassword}, prompt)) return false;
  const QString hash = passwordHash(password);
  Transaction transaction(accountDb());
  keepPassword(number, hash);
  writeLog(hash.isEmpty() ? QStringLiteral("取消自己的密码") : QStringLiteral("修改自己的密码"));
  transaction.commit();
  prompt.notice(QStringLiteral("密码修改成功！"));
  return true;
}

}  // namespace jxc
