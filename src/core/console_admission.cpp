#include "core/console_admission.h"

#include "core/passwords.h"
#include "core/session.h"
#include "core/wiping.h"
#include "platform/terminal.h"

#include <array>
#include <chrono>
#include <thread>

namespace jxc {
namespace console_admission_detail {

constexpr auto kAfterFailure = std::chrono::seconds(1);  // nobody tries a list of words here

std::optional<QString> typedPassword(const Console& console, const QString& name) {
  if (console.passwordDescriptor >= 0) return readLineFrom(console.passwordDescriptor);
  return askOnTerminal(QStringLiteral("操作员“%1”的密码：").arg(name));
}

}  // namespace console_admission_detail

void admitToConsole(const Console& console, Database& database, ConsoleAccess access) {
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
  auto typed = console_admission_detail::typedPassword(console, name);
  if (!typed)
    throw ConsoleRefusal(QStringLiteral("需要系统管理员“%1”的密码：在终端上输入，或用 --password-fd 给出。").arg(name));
  const WipedText password(std::move(*typed));
  if (isHisPassword(database, number, password)) return;
  std::this_thread::sleep_for(console_admission_detail::kAfterFailure);
  throw ConsoleRefusal(QStringLiteral("用户密码不正确！"));
}

}  // namespace jxc
