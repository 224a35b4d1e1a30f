// 在场的两端: how an engine keeps who is at work; `openPresence` chooses.
#pragma once

#include "engine/presence.h"

#include <QString>

#include <memory>
#include <string>

namespace jxc::sqlite {

/// A place in a small file beside the account file, of its name with ".stations" behind, held by a lock that ends with
/// the process. The file stands there as long as somebody is at work.
std::unique_ptr<Presence> presenceBeside(const QString& accountFile);

}  // namespace jxc::sqlite

namespace jxc::postgres {

/// Locks of a connection of its own.
std::unique_ptr<Presence> presenceOnServer(const std::string& address, const std::string& user);

}  // namespace jxc::postgres
