#include "core/console_admission.h"

#include "core/data_module.h"
#include "core/passwords.h"
#include "core/schema/schema.h"
#include "core/session.h"
#include "core/wiping.h"
#include "platform/terminal.h"

#include <array>
#include <chrono>
#include <thread>
#include <utility>

namespace jxc {
namespace console_admission_detail {

constexpr auto kAfterFailure = std::chrono::seconds(1);  // nobody tries a list of words here
constexpr char16_t kWrong[] = u"用户密码不正确！";

std::optional<QString> typedPassword(const Console& console, const QString& name) {
  if (console.passwordDescriptor >= 0) return readLineFrom(console.passwordDescriptor);
  return askOnTerminal(QStringLiteral("操作员“%1”的密码：").arg(name));
}

/// While it lives the account set is the program's own, as the door of the window knows it.
class AsOwnSet {
 public:
  explicit AsOwnSet(std::unique_ptr<Database>& account) : account_(account) { swap(); }
  ~AsOwnSet() { swap(); }
  AsOwnSet(const AsOwnSet&) = delete;
  AsOwnSet& operator=(const AsOwnSet&) = delete;

 private:
  void swap() { account_ = dataModule().installAccountDb(std::move(account_)); }
  std::unique_ptr<Database>& account_;
};

class Refusing final : public Prompt {
 public:
  void notice(const QString& text) override { throw ConsoleRefusal(text); }
  bool ask(const QString&) override { return false; }
  Answer askOrCancel(const QString&) override { return Answer::Cancel; }
};

/// Where no failure can be counted: in a set of an older build, and in one that can only be read.
void compareAlone(Database& database, const QString& number, const QString& password) {
  if (isHisPassword(database, number, password)) return;
  std::this_thread::sleep_for(kAfterFailure);
  throw ConsoleRefusal(QString::fromUtf16(kWrong));
}

}  // namespace console_admission_detail

void admitToConsole(const Console& console, std::unique_ptr<Database>& account, ConsoleAccess access) {
  using namespace console_admission_detail;
  Database& database = *account;
  if (!hasAnyPassword(database)) return;
  if (console.isOwner && access == ConsoleAccess::OwnerToo) {
    if (ownsFile(console.file)) return;
    throw ConsoleRefusal(QStringLiteral("--as-owner 只用于自己所有的帐套文件：") + console.file);
  }
  const QString administrators = QString::fromUtf16(builtInSn);
  QString name = console.operatorName;
  if (name.isEmpty()) {
    const std::array<Value, 1> builtIn{Value(administrators)};
    name = database.lookup("select a_name from jxc_admin where a_sn=?", builtIn).text();
  }
  const std::array<Value, 2> who{Value(name), Value(administrators)};
  const RowSet found = database.select("select a_sn from jxc_admin where a_name=? and r_sn=? and a_jyt=0", who);
  if (found.isEmpty()) throw ConsoleRefusal(QStringLiteral("“%1”不是系统管理员。").arg(name));
  const QString number = found.text(0, 0);
  if (!hasPassword(database, number)) return;
  auto typed = typedPassword(console, name);
  if (!typed)
    throw ConsoleRefusal(QStringLiteral("需要系统管理员“%1”的密码：在终端上输入，或用 --password-fd 给出。").arg(name));
  const WipedText password(std::move(*typed));
  if (!isSchemaCurrent(database)) return compareAlone(database, number, password);
  try {
    const AsOwnSet own(account);
    Refusing prompt;
    admits(number, password, Refusal(QString::fromUtf16(kWrong)), prompt);
  } catch (const DbError& failure) {
    if (failure.kind() != DbError::Kind::File) throw;
    compareAlone(database, number, password);
  }
}

}  // namespace jxc
