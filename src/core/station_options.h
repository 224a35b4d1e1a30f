// 本机选项: what a workstation keeps for itself, whoever works at it and whatever the account set.
#pragma once

#include <QStringView>

namespace jxc {

/// False until it was set. Without a program directory (a test) it holds as long as the program runs.
bool stationOption(QStringView name);
/// Throws DbError(File) when it cannot be kept.
void setStationOption(QStringView name, bool on);

}  // namespace jxc
