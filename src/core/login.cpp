#include "core/login.h"

#include "core/account_place.h"
#include "core/backup.h"
#include "core/log.h"
#include "core/owner.h"
#include "core/program_directory.h"
#include "core/refusal.h"
#include "core/schema/schema.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/station_options.h"
#include "core/text.h"
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
    if (!isKept_) session() = std::move(before_);
  }
  SessionGuard(const SessionGuard&) = delete;
  SessionGuard& operator=(const SessionGuard&) = delete;
  void keep() { isKept_ = true; }

 private:
  Session before_;
  bool isKept_ = false;
};

void fillOperator(const Row& row) {
  Session& s = session();
  s.localIp = localIpAddress();
  s.a_name = row.text("a_name");
  s.a_sn = row.text("a_sn");
  s.r_sn = row.text("r_sn");
  s.dbName = QStringLiteral("jxc.mdb");
}

void loadSessionIfPossible() {
  try {
    loadSession();
  } catch (const std::exception&) {
    // A database older than this build lacks columns until the upgrade has added them. The main window loads the
    // session again on the upgraded database.
  }
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
  const QString password = lookupValue("select a_pwd from jxc_admin where a_name=?", name);
  return password.isEmpty() ? QStringLiteral("初始密码为空") : QString();
}

bool login(const QString& name, const QString& password, Prompt& prompt) {
  // Passwords are stored through sanitizeKeyword and compared through sanitizeText, which changes more characters: one
  // with brackets, + - or / never matches. Registers in the shops behave the same, so it stays.
  const RowSet rows = openSelect("select a_name,a_sn,r_sn from jxc_admin where a_name=? and a_pwd=?", name,
                                 sanitizeText(password.trimmed()));
  if (refused({{rows.isEmpty(), u"用户密码不正确，请重新输入！"_qs, Subject::Password}}, prompt)) return false;
  login_detail::SessionGuard guard;
  login_detail::fillOperator(rows.front());
  if (!session().posLogin) {
    writeLog(QStringLiteral("登录系统"));
    login_detail::loadSessionIfPossible();
    try {
      const auto upgrade = [] { upgradeSchema(accountDb(), login_detail::copyBefore()); };
      if (isSchemaCurrent(accountDb()))
        upgrade();
      else if (!asOwner(prompt, QStringLiteral("帐套升级"), upgrade))
        return false;
    } catch (const UpgradeFailed& failure) {  // not to the handler of failures: it would change the name of the copy
      prompt.notice(failure.message());
      return false;
    }
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
  const RowSet rows =
      openSelect("select a_name from jxc_admin where a_name=? and a_pwd=?", session().a_name, password.trimmed());
  return !refused({{rows.isEmpty(), u"用户密码错误，请重新输入！"_qs, Subject::Password}}, prompt);
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
