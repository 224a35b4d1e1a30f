// 建立连接: the way to the server, encrypted and verified wherever it leaves this machine.
#pragma once

#include "engine/postgres/native.h"

#include <string>

namespace jxc::postgres {

/// Connects within ten seconds for each server of the address, or as long as its `connect_timeout` says. To another
/// machine only over TLS whose certificate is verified with its name (`sslmode=verify-full`), unless the address or its
/// service says otherwise: whoever answers in the place of the server must not be told a password, nor what a shop
/// sells. Throws ConnectionLost when nobody answers, DbError(File) when the server cannot be verified.
/// A user and password that are given go before those of the address.
ConnectionHandle connectTo(const std::string& address, const std::string& user = {}, const std::string& password = {});

}  // namespace jxc::postgres
