// 帐套所有者: what an account set on a server lets only its owner do.
#pragma once

#include "core/prompt.h"
#include "engine/database.h"

#include <functional>
#include <memory>

namespace jxc {

/// Does what makes tables anew or takes rows out of the log. Where stations have a user of their own on the server, who
/// may neither, the owner's password is asked for and the work runs over a connection of his, which ends with it; the
/// password is kept nowhere. Otherwise it just runs. False when nobody gave the password, or a wrong one: nothing was
/// done, and a notice says why. `what` names the command. Not inside a transaction.
bool asOwner(Prompt& prompt, const QString& what, const std::function<void()>& work);
/// The same at another set than the one in use. `work` gets the owner's connection; null: that of `set` does.
bool asOwnerOf(Database& set, Prompt& prompt, const QString& what,
               const std::function<void(std::unique_ptr<Database> his)>& work);

}  // namespace jxc
