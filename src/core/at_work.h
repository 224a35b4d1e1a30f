// 在用: which stations work on the account set in use, and how a command gets the set for itself.
#pragma once

#include "core/prompt.h"
#include "engine/database.h"
#include "engine/presence.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace jxc {

/// What a command needs the set for itself for.
enum class AloneFor : int { Restore = 1, Reset, Closing };
/// "恢复数据", "数据清理", "数据结算".
QString wordsOf(AloneFor what);

/// This program comes to work on the account set in use, as the operator of the session; called at every login, and
/// before it, without one, where the tables are brought up to date first. Words
/// for the operator while somebody else has the set for himself ("张三正在恢复数据，请等它完成后再登录。"): it has not
/// come in then. Nothing when it has, also where nobody else can be (a set in memory).
std::optional<QString> comeToWork();
/// Said now and then by whoever is at work: others see it again where its connection broke. Those words when somebody
/// has taken the set for himself since.
std::optional<QString> stayAtWork();
/// It does not work on it any more: at the login, and before the set is closed.
void leaveWork();
/// Those words, without coming in; asked about once a second by whoever waits at the login.
std::optional<QString> whyToWait();
/// The names of those who work on it besides this program: operators, "jxcctl" for a console.
QStringList othersAtWork();

/// For a console, which has no operator: waits as long as somebody has the set of `database` for himself, told once in
/// words, and is at work until the object ends. Null where nobody else can be.
class ConsoleAtWork;
std::shared_ptr<ConsoleAtWork> comeToWorkAtConsole(Database& database,
                                                   const std::function<void(const QString& why)>& waits);

/// While it lives nobody else comes to work on the account set.
class SetForOneself {
 public:
  ~SetForOneself();
  SetForOneself(const SetForOneself&) = delete;
  SetForOneself& operator=(const SetForOneself&) = delete;

 private:
  friend std::unique_ptr<SetForOneself> takeForOneself(Database& set, AloneFor what, Prompt& prompt);
  SetForOneself(bool given, std::unique_ptr<Presence> other) : given_(given), other_(std::move(other)) {}
  bool given_;
  std::unique_ptr<Presence> other_;  // at a set that is not the one in use
};

/// A set for one command. Null after it was refused with the names of those who are at work. Taken before the question
/// of the command, so that nobody comes in while it stands. Throws DbError.
std::unique_ptr<SetForOneself> takeForOneself(Database& set, AloneFor what, Prompt& prompt);
/// The set in use.
std::unique_ptr<SetForOneself> takeForOneself(AloneFor what, Prompt& prompt);

}  // namespace jxc
