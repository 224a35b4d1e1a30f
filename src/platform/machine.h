// 本机: address, disk space and file rights of this machine.
#pragma once

#include <QString>

#include <cstdint>

namespace jxc {

/// First IPv4 address of a network card that is up; "127.0.0.1" without a network.
QString localIpAddress();
/// Bytes that this user may still write below the folder; -1 when it is not there.
std::int64_t freeDiskBytes(const QString& folder);
/// Leaves a file readable and writable for its owner alone: the database holds passwords.
bool restrictToOwner(const QString& file);
/// Where an installed program keeps the data of this user.
QString userDataDirectory();

}  // namespace jxc
