// 登录: who may log in, the login itself, the screen lock and the change of operator.
#pragma once

#include "core/fillers.h"
#include "core/prompt.h"

#include <QString>

#include <functional>
#include <vector>

namespace jxc {

/// Operators who are not disabled, in entry order, keyed by `a_sn`.
std::vector<ListItem> loginOperators();
/// "初始密码为空" for an operator without a password, as long as nothing was entered into the set; otherwise empty.
QString initialPasswordHint(const QString& name);

/// Who logged in last at this workstation, of those operators; nobody yet: empty.
QString lastOperatorHere();
/// Keeps the operator of the session for that.
void rememberOperatorHere();

/// Logs an operator in: schema brought up to date, session filled, log written, hooks run. A wrong password is told and
/// false comes back, and who fails too often waits (core/passwords.h); so is a disabled operator, and an upgrade that
/// failed. Other failures are thrown, and the session is as it was before.
bool login(const QString& name, const QString& password, Prompt& prompt);
/// A login inside the running process (the screens set `editMode` "hb" for it), followed by `loadSession`. When it is
/// refused or fails the old operator stays.
bool changeOperator(const QString& name, const QString& password, Prompt& prompt);
/// Opens the screen lock of the operator who is logged in, unless he is disabled meanwhile; a wrong password is told.
bool unlock(const QString& password, Prompt& prompt);

/// Whether a command is in the middle of its work: the lock does not come up by itself then.
bool isCommandAtWork();

/// What other subsystems do at each login, after the schema upgrade, in the order of registration.
using LoginHook = std::function<void()>;
std::vector<LoginHook>& loginHooks();

/// Look-and-feel before the login: that of the first row; empty when there is none.
QString startupSkin();
/// Look-and-feel of the operator; a row with the usual one is made for him when he has none.
QString operatorSkin();

}  // namespace jxc
