// 帐套所有者: what an account set on a server lets only its owner do.
#pragma once

#include "core/prompt.h"

#include <functional>

namespace jxc {

/// Does what makes tables anew or takes rows out of the log. Where stations have a user of their own on the server, who
/// may neither, the owner's password is asked for and the work runs over a connection of his, which ends with it; the
/// password is kept nowhere. Otherwise it just runs. False when nobody gave the password, or a wrong one: nothing was
/// done, and a notice says why. `what` names the command. Not inside a transaction.
bool asOwner(Prompt& prompt, const QString& what, const std::function<void()>& work);

}  // namespace jxc
