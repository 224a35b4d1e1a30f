#include "core/login.h"

#include "core/account_copy.h"
#include "core/account_place.h"
#include "core/at_work.h"
#include "core/backup.h"
#include "core/log.h"
#include "core/owner.h"
#include "core/passwords.h"
#include "core/program_directory.h"
#include "core/refusal.h"
#include "core/rights.h"
#include "core/schema/schema.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/station_options.h"
#include "engine/bulk.h"
#include "platform/machine.h"

namespace jxc::login_detail {

inline constexpr const char16_t* usualSkin = u"iMaginary";
inline constexpr const char16_t* lastOperator = u"lastOperator";

/// The session as it was, unless the login came to its end: a failure half-way must not leave one operator's name with
/// another's rights.
class SessionGuard {
 public:
  SessionGuard() : before_(session()) {}
  ~SessionGuard() {
    if (isKept_) return;
    session() = std::move(before_);
    if (session().a_sn.isEmpty()) leaveWork();  // nobody is logged in here
  }
  SessionGuard(const SessionGuard&) = delete;
  SessionGuard& operator=(const SessionGuard&) = delete;
  void keep() { isKept_ = true; }

 private:
  Session before_;
  bool isKept_ = false;
};

/// The operator of this name becomes that of the session, when he is admitted. A name may stand twice in a list of
/// copied operators: then the one whose password it is.
bool fillOperator(const QString& name, const QString& password, Prompt& prompt) {
  const Refusal wrong{u"用户密码不正确，请重新输入！"_qs, Subject::Password};
  const RowSet rows = openSelect("select a_name,a_sn,r_sn from jxc_admin where a_name=? and a_jyt=0 order by id", name);
  if (rows.isEmpty()) {
    const bool isThere = exists("select id from jxc_admin where a_name=?", name);
    prompt.refuse(isThere ? Refusal(QStringLiteral("操作员“%1”已停用，不能登录！").arg(name)) : wrong);
    return false;
  }
  Row found = rows.front();
  for (const Row row : rows) {
    if (rows.rowCount() == 1 || !isHisPassword(accountDb(), row.text("a_sn"), password)) continue;
    found = row;
    break;
  }
  if (!admits(found.text("a_sn"), password, wrong, prompt)) return false;
  Session& s = session();
  s.localIp = localIpAddress();
  s.a_name = found.text("a_name");
  s.a_sn = found.text("a_sn");
  s.r_sn = found.text("r_sn");
  return true;
}

/// The file is copied away before its first change. A server has its own backups; a set in memory has nothing to lose.
CopyBefore copyBefore() {
  const bool isInMemory = !accountDb().readerOpener();
  if (isInMemory || !addressIn(programPath(QStringLiteral("data/") + session().dbName)).isEmpty()) return {};
  return [] { return backupAccountSet(); };
}

}  // namespace jxc::login_detail

namespace jxc {

std::vector<ListItem> loginOperators() {
  std::vector<ListItem> items;
  for (const Row row : openSelect("select * from jxc_admin where a_jyt=0 order by id")) {
    items.push_back({row.text("a_name"), row.text("a_sn")});
  }
  return items;
}

QString lastOperatorHere() {
  const QString last = stationText(login_detail::lastOperator);
  const auto operators = loginOperators();
  const bool isThere =
      std::any_of(operators.begin(), operators.end(), [&](const ListItem& item) { return item.key == last; });
  return isThere ? last : QString();
}

void rememberOperatorHere() {
  try {
    keepStationText(login_detail::lastOperator, session().a_sn);
  } catch (const DbError&) {
    // A folder that cannot be written to is no reason to keep anybody out.
  }
}

QString initialPasswordHint(const QString& name) {
  // Later it would tell a thief with which name he needs none.
  if (holdsWork(accountDb())) return {};
  const QString number = lookupValue("select a_sn from jxc_admin where a_name=?", name);
  return hasPassword(accountDb(), number) ? QString() : QStringLiteral("初始密码为空");
}

bool login(const QString& name, const QString& password, Prompt& prompt) {
  login_detail::SessionGuard guard;
  session().dbName = QStringLiteral("jxc.mdb");
  try {
    // First of all: what is kept of passwords and failures is of this build then.
    const auto upgrade = [] { upgradeSchema(accountDb(), login_detail::copyBefore()); };
    if (!session().posLogin) {
      if (isSchemaCurrent(accountDb())) {
        upgrade();
      } else {
        // Whoever has the set for himself restores or closes tables of the older build: at work before they are
        // touched.
        if (const auto why = comeToWork()) {
          prompt.notice(*why);
          return false;
        }
        if (!asOwner(prompt, QStringLiteral("帐套升级"), upgrade)) return false;
      }
    }
  } catch (const UpgradeFailed& failure) {  // not to the handler of failures: it would change the name of the copy
    prompt.notice(failure.message());
    return false;
  }
  if (!login_detail::fillOperator(name, password, prompt)) return false;
  if (const auto why = comeToWork()) {
    prompt.notice(*why);
    return false;
  }
  if (!session().posLogin) {
    writeLog(QStringLiteral("登录系统"));
    loadSession();
  }
  for (const LoginHook& hook : loginHooks())
    hook();
  guard.keep();
  return true;
}

bool changeOperator(const QString& name, const QString& password, Prompt& prompt) {
  login_detail::SessionGuard guard;
  if (!login(name, password, prompt)) return false;
  loadSession();
  guard.keep();
  return true;
}

bool unlock(const QString& password, Prompt& prompt) {
  if (refused({{!isEnabledOperator(), QStringLiteral("操作员“%1”已停用，不能解锁！").arg(session().a_name)}}, prompt))
    return false;
  return admits(session().a_sn, password, {u"用户密码错误，请重新输入！"_qs, Subject::Password}, prompt);
}

bool isCommandAtWork() {
  return accountDb().inTransaction() || isReplacingAccountSet() || isGivingRoomBack();
}

std::vector<LoginHook>& loginHooks() {
  static std::vector<LoginHook> hooks;
  return hooks;
}

QString startupSkin() {
  return lookupValue("select top 1 skin_name from jxc_skin order by id");
}

QString operatorSkin() {
  const RowSet rows = openSelect("select skin_name from jxc_skin where a_name=?", session().a_name);
  if (!rows.isEmpty()) return rows.text(0, 0);
  const QString skin = QString::fromUtf16(login_detail::usualSkin);
  insertRow("jxc_skin", {{"skin_name", skin}, {"a_name", session().a_name}});
  return skin;
}

}  // namespace jxc
