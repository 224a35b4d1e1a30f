// 本机: address of this machine, place of the data of its user.
#pragma once

#include <QString>

namespace jxc {

/// First IPv4 address of a network card that is up; "127.0.0.1" without a network.
QString localIpAddress();
/// What this process makes from now on may be written by its group, and is for nobody else.
void makeFilesOfGroup();
/// Whether this machine has anything to show a page with.
bool hasBrowser();
/// Where an installed program keeps the data of this user.
QString userDataDirectory();

}  // namespace jxc
