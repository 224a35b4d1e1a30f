// 本机: address of this machine, place of the data of its user.
#pragma once

#include <QString>

namespace jxc {

/// First IPv4 address of a network card that is up; "127.0.0.1" without a network.
QString localIpAddress();
/// What this process makes from now on may be written by its group, and is for nobody else.
void makeFilesOfGroup();
/// Makes a folder that is missing, and those above it, for its owner alone: what lies in it are the books. In a folder
/// that a group shares it is the group's as well. False when it is not there and cannot be made.
bool makePrivateFolder(const QString& path);
/// Whether this machine has anything to show a page with.
bool hasBrowser();
/// From now on the calling thread works only while nobody who is waited for wants the processor.
void giveWayToOthers();
/// Where an installed program keeps the data of this user.
QString userDataDirectory();

}  // namespace jxc
